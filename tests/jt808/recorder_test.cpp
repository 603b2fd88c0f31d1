// The recorder messages: data collection with the recorder's frames in both
// editions of its standard, the answers' data blocks read back by the
// edition their length tells, the parameter download, and the driver
// identity report. Layouts: the messages' tables in JT/T 808-2013 and -2019
// (0x0702 grows the identity card number in 2019); the data blocks follow
// GB/T 19056-2003 and -2012.
#include <gtest/gtest.h>

#include "golden.h"
#include "jt808/codecs/recorder_blocks.h"
#include "text/json.h"

namespace jt808 {
namespace {
using golden::AnswerCase;
using golden::CommandCase;
using golden::Refusal;

TEST(RecorderCodecs, CollectionCarriesTheEditionItAsksFor) {
  const CommandCase cases[] = {
      {"0x8700 of the 2003 edition: the command word alone", 0x8700, Edition::k2013, R"({"CDID":1,"VER":2003})", "01"},
      {"0x8700 2003 record word: its range does not travel", 0x8700, Edition::k2013,
       R"({"CDID":8,"LEN":1,"TIMB":"2026-01-15 00:00:00","TIME":"2026-01-15 09:30:00","VER":2003})", "08",
       R"({"CDID":8,"VER":2003})"},
      {"0x8700 2012 record word: frame AA 75 with begin, end and block count", 0x8700, Edition::k2013,
       R"({"CDID":18,"LEN":3,"TIMB":"2026-01-12 00:00:00","TIME":"2026-01-14 23:59:59","VER":2012})",
       "12 aa 75 12 00 0e 00 26 01 12 00 00 00 26 01 14 23 59 59 00 03 e5"},
      {"0x8700 without an edition: an empty 2012 frame, the edition unsaid", 0x8700, Edition::k2019, R"({"CDID":4})",
       "04 aa 75 04 00 00 00 db"},
      {"0x8700 2012 word the 2003 edition lacks", 0x8700, Edition::k2013, R"({"CDID":0,"VER":2012})",
       "00 aa 75 00 00 00 00 df"},
  };
  for (const CommandCase& c : cases) golden::Check(c);
}

TEST(RecorderCodecs, AnswersCarryTheRecorderFrame) {
  const char* ask2003 = R"({"CDID":1,"VER":2003})";
  const AnswerCase cases[] = {
      {"0x0700 2003 word 01: driver code (3 bytes), licence (18)", 0x0700, Edition::k2013, 0x0102, ask2003,
       R"({"GCP":"440301198503154219","GDI":634219,"VER":2003})",
       "01 02 01 55 7a 01 00 15 00 09 ad 6b 34 34 30 33 30 31 31 39 38 35 30 33 31 35 34 32 31 39 fa"},
      {"0x0700 2003 word 03: time, mileage (3 BCD bytes)", 0x0700, Edition::k2013, 7, R"({"CDID":3,"VER":2003})",
       R"({"DTM":"2026-01-15 09:30:00","MILE":2653,"VER":2003})",
       "00 07 03 55 7a 03 00 09 00 26 01 15 09 30 00 00 26 53 5b"},
      {"0x0700 2003 word 07: time, speed and status per sample", 0x0700, Edition::k2013, 7, R"({"CDID":7,"VER":2003})",
       R"({"DTM":"2026-01-14 17:38:00","Item":[{"SIN":17,"SPD":0},{"SIN":19,"SPD":2}],"VER":2003})",
       "00 07 07 55 7a 07 00 0a 00 26 01 14 17 38 00 00 11 02 13 3e"},
      {"0x0700 2003 word 11: driver code, begin and end per overtime", 0x0700, Edition::k2013, 7,
       R"({"CDID":17,"VER":2003})",
       R"({"GDI":634219,"Item":[{"BTM":"2026-01-14 07:10:00","ETM":"2026-01-14 11:25:00"}],"VER":2003})",
       "00 07 11 55 7a 11 00 0f 00 09 ad 6b 26 01 14 07 10 00 26 01 14 11 25 00 dd"},
      {"0x0700 2003 word 06: VIN, plate and class", 0x0700, Edition::k2013, 7, R"({"CDID":6,"VER":2003})",
       "{\"CARID\":\"\xCB\xD5" "E12345\",\"SORT\":\"\xB4\xF3\xD0\xCD\xBF\xCD\xB3\xB5\",\"VER\":2003,"
       "\"VIN\":\"LSVAG2180E2100001\"}",
       "00 07 06 55 7a 06 00 29 00 4c 53 56 41 47 32 31 38 30 45 32 31 30 30 30 30 31 cb d5 45 31 32 33 34 35 00 00 "
       "00 00 b4 f3 d0 cd bf cd b3 b5 00 00 00 00 77"},
      {"0x0700 2012 word 00: year and modification in BCD", 0x0700, Edition::k2019, 7, R"({"CDID":0,"VER":2012})",
       R"({"MODNUM":0,"VER":2012,"YEAR":12})", "00 07 00 55 7a 00 00 02 00 12 00 3f"},
      {"0x0700 2012 word 04 asked without an edition: time and pulse coefficient", 0x0700, Edition::k2013, 7,
       R"({"CDID":4})", R"({"DTM":"2024-03-05 07:08:09","FEA":3600,"VER":2012})",
       "00 07 04 55 7a 04 00 08 00 24 03 05 07 08 09 0e 10 19"},
      {"0x0700 2012 word 06: time, status byte, eight names of 10 bytes", 0x0700, Edition::k2013, 7,
       R"({"CDID":6,"VER":2012})",
       "{\"DTM\":\"2026-01-15 09:30:00\",\"Item\":[{\"SINNM0\":\"\xB3\xB5\xC3\xC5\",\"SINNM1\":\"a+b\",\"SINNM2\":\"\","
       "\"SINNM3\":\"\",\"SINNM4\":\"\",\"SINNM5\":\"\",\"SINNM6\":\"\",\"SINNM7\":\"\"}],\"SIN\":0,\"VER\":2012}",
       "00 07 06 55 7a 06 00 57 00 26 01 15 09 30 00 00 b3 b5 c3 c5 00 00 00 00 00 00 61 2b 62 00 00 00 00 00 00 00 "
       "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
       "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 5d"},
      {"0x0700 2012 word 12: time, licence, event per record", 0x0700, Edition::k2013, 7,
       R"({"CDID":18,"VER":2012,"LEN":1,"TIMB":"2026-01-12 00:00:00","TIME":"2026-01-14 23:59:59"})",
       R"({"Item":[{"DTM":"2026-01-14 17:41:00","GCP":"440301198503154219","STA":2}],"VER":2012})",
       "00 07 12 55 7a 12 00 19 00 26 01 14 17 41 00 34 34 30 33 30 31 31 39 38 35 30 33 31 35 34 32 31 39 02 4d"},
      {"0x0700 2012 word 13: time, event", 0x0700, Edition::k2013, 7, R"({"CDID":19,"VER":2012})",
       R"({"Item":[{"DTM":"2026-01-14 17:51:00","STA":2}],"VER":2012})",
       "00 07 13 55 7a 13 00 07 00 26 01 14 17 51 00 02 4c"},
  };
  for (const AnswerCase& c : cases) golden::Check(c);
}

// A record of positions ends at the minute the trip ended: the slots after it
// hold the end marker, and reading stops after the first one.
TEST(RecorderCodecs, PositionRecordsEndAtTheirMarker) {
  const Json::Value reply = golden::Parse(
      R"({"VER":2012,"Item":[{"DTM":"2026-01-14 08:00:00","POS":[{"JD":-1,"WD":-1,"GAODU":0,"SPD":0},)"
      R"({"JD":68443953,"WD":13525425,"GAODU":40,"SPD":50},{"JD":-1,"WD":-1,"GAODU":65535,"SPD":255}]}]})");
  const Bytes data = recorder::WriteAnswer(0x09, recorder::Standard::k2012, reply);
  ASSERT_EQ(data.size(), 666u);
  EXPECT_EQ(Hex(ByteView(data).subspan(6, 22)), "ff ff ff ff ff ff ff ff 00 00 00 04 14 5f 31 00 ce 61 b1 00 28 32");
  EXPECT_EQ(recorder::DataStandard(0x09, data.size(), 0), recorder::Standard::k2012);
  EXPECT_EQ(txt::WriteCompactJson(recorder::ReadAnswer(0x09, recorder::Standard::k2012, data)),
            txt::WriteCompactJson(reply));
}

TEST(RecorderCodecs, TheLengthTellsTheEditionOfAnAnswer) {
  struct Case {
    int word;
    size_t size;
    int requested;
    recorder::Standard expected;
  } cases[] = {
      {0x01, 21, 0, recorder::Standard::k2003},    {0x01, 18, 2012, recorder::Standard::k2012},
      {0x03, 20, 2003, recorder::Standard::k2012}, {0x04, 3, 0, recorder::Standard::k2003},
      {0x05, 41, 0, recorder::Standard::k2012},    {0x05, 41, 2003, recorder::Standard::k2003},
      {0x06, 41, 2012, recorder::Standard::k2003}, {0x07, 206, 0, recorder::Standard::k2003},
      {0x08, 9, 0, recorder::Standard::k2003},     {0x08, 252, 2003, recorder::Standard::k2012},
      {0x11, 27, 0, recorder::Standard::k2003},    {0x11, 100, 0, recorder::Standard::k2012},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(recorder::DataStandard(c.word, c.size, c.requested), c.expected)
        << "word " << c.word << ", " << c.size << " bytes, asked " << c.requested;
  }
}

// A terminal asked without an edition answers in the edition its reply says.
TEST(RecorderCodecs, TheReplyTellsTheEditionItIsWrittenIn) {
  struct Case {
    const char* what;
    int word;
    const char* reply;
    recorder::Standard expected;
  } cases[] = {
      {"a driver without an edition", 0x01, R"({"GCP":"1","GDI":2})", recorder::Standard::k2003},
      {"a coefficient of the 2012 edition", 0x04, R"({"VER":2012,"FEA":1})", recorder::Standard::k2012},
      {"word 6 in both meanings: the vehicle goes", 0x06, R"({"VER":2012,"VIN":"L","Item":[{}]})",
       recorder::Standard::k2003},
      {"word 6 with the signals alone", 0x06, R"({"VER":2012,"Item":[{}]})", recorder::Standard::k2012},
      {"a record word only 2012 has", 0x13, R"({"Item":[]})", recorder::Standard::k2012},
  };
  for (const Case& c : cases) EXPECT_EQ(recorder::ReplyStandard(c.word, golden::Parse(c.reply)), c.expected) << c.what;
}

TEST(RecorderCodecs, ParametersTravelInTheRecorderFrame) {
  const CommandCase cases[] = {
      {"0x8701 word 81: driver code (3 bytes), licence", 0x8701, Edition::k2013,
       R"({"CDID":129,"GCP":"320501198001010011","GDI":123})",
       "81 aa 75 81 00 15 00 00 00 7b 33 32 30 35 30 31 31 39 38 30 30 31 30 31 30 30 31 31 35"},
      {"0x8701 word 82: VIN (17), plate (12), class (12)", 0x8701, Edition::k2019,
       R"({"CARID":"AB12345","CDID":130,"SORT":"BUS","VIN":"LSVAG2180E2100001"})",
       "82 aa 75 82 00 29 00 4c 53 56 41 47 32 31 38 30 45 32 31 30 30 30 30 31 41 42 31 32 33 34 35 00 00 00 00 00 "
       "42 55 53 00 00 00 00 00 00 00 00 00 31"},
      {"0x8701 word C2: the clock in BCD", 0x8701, Edition::k2013,
       R"({"CDID":194,"DAY":5,"HOUR":7,"MIN":8,"MONTH":3,"SEC":9,"YEAR":2024})",
       "c2 aa 75 c2 00 06 00 24 03 05 07 08 09 3f"},
      {"0x8701 word C3 of 2003: coefficient in 3 bytes", 0x8701, Edition::k2013, R"({"CDID":195,"FEA":4321,"VER":2003})",
       "c3 aa 75 c3 00 03 00 00 10 e1 ee"},
      {"0x8701 word C3 of 2012: recorder time and pulse coefficient", 0x8701, Edition::k2013,
       R"({"CDID":195,"FEA":3600,"RDTM":"240305070809","VER":2012})",
       "c3 aa 75 c3 00 08 00 24 03 05 07 08 09 0e 10 2e"},
      {"0x8701 word C4: initial mileage in 4 BCD bytes", 0x8701, Edition::k2013, R"({"CDID":196,"INITMILE":"00001234"})",
       "c4 aa 75 c4 00 04 00 00 00 12 34 39"},
      {"0x8701 word 84: eight names of 10 bytes, form-decoded", 0x8701, Edition::k2013,
       R"({"CDID":132,"SINNM0":"door","SINNM1":"a%2Bb","SINNM2":"","SINNM3":"","SINNM4":"","SINNM5":"","SINNM6":"","SINNM7":""})",
       "84 aa 75 84 00 50 00 64 6f 6f 72 00 00 00 00 00 00 61 2b 62 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
       "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 "
       "00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 35"},
  };
  for (const CommandCase& c : cases) golden::Check(c);
}

TEST(RecorderCodecs, DriverIdentityReport) {
  const char* inserted =
      R"({"DRNAME":"ZhangWei","DTM":"2026-01-04 07:02:11","EXPDATE":"2029-06-30","ICRST":0,"ORGNAME":"SZ",)"
      R"("QUACODE":"440301198503151000","STA":1})";
  const char* base =
      "01 26 01 04 07 02 11 00 08 5a 68 61 6e 67 57 65 69 34 34 30 33 30 31 31 39 38 35 30 33 31 35 31 30 30 30 00 00 "
      "02 53 5a 20 29 06 30";
  const std::string with2019 = std::string(base) + " 34 34 30 33 30 31 31 39 38 35 30 33 31 35 31 32 33 34 00 00";
  std::string reply2019 = inserted;
  reply2019.insert(1, R"("IDCARD":"440301198503151234",)");
  const AnswerCase cases[] = {
      {"0x0702 2013: state, time, read result, name, qualification (20), authority, expiry", 0x0702, Edition::k2013, 0,
       nullptr, inserted, base},
      {"0x0702 2019: the identity card number (20) follows", 0x0702, Edition::k2019, 0, nullptr, reply2019.c_str(),
       with2019.c_str()},
      {"0x0702 card taken out: state and time", 0x0702, Edition::k2019, 0, nullptr,
       R"({"DTM":"2026-01-04 18:00:00","STA":2})", "02 26 01 04 18 00 00"},
      {"0x0702 card not read: the reader's result ends it", 0x0702, Edition::k2013, 0, nullptr,
       R"({"DTM":"2026-01-04 18:00:00","ICRST":2,"STA":1})", "01 26 01 04 18 00 00 02"},
  };
  for (const AnswerCase& c : cases) golden::Check(c);
  EXPECT_FALSE(FindAnswer(0x0702)->leadsWithSerial);
  EXPECT_TRUE(golden::Encode(0x8702, nullptr).empty());
}

TEST(RecorderCodecs, RefusesWhatTheFieldsCannotHold) {
  const Refusal cases[] = {
      {"a block count over a word",
       [] { golden::Encode(0x8700, R"({"CDID":8,"LEN":70000,"TIMB":"2026-01-12 00:00:00","TIME":"2026-01-14 23:59:59"})"); }},
      {"a 2012 record word without its range", [] { golden::Encode(0x8700, R"({"CDID":16,"VER":2012})"); }},
      {"a VIN of 18 characters", [] { golden::Encode(0x8701, R"({"CDID":130,"VIN":"LSVAG2180E21000012"})"); }},
      {"a year outside the century", [] { golden::Encode(0x8701, R"({"CDID":194,"YEAR":1999,"MONTH":1,"DAY":1})"); }},
      {"a 2012 coefficient over a word", [] { golden::Encode(0x8701, R"({"CDID":195,"FEA":70000,"RDTM":"240305070809","VER":2012})"); }},
      {"an initial mileage that is no digits", [] { golden::Encode(0x8701, R"({"CDID":196,"INITMILE":"12a4"})"); }},
      {"a command frame with a wrong check byte", [] { golden::DecodeCommand(0x8700, "04 aa 75 04 00 00 00 dc"); }},
      {"a command frame of another word", [] { golden::DecodeCommand(0x8700, "04 aa 75 05 00 00 00 da"); }},
      {"an answer frame cut short", [] { golden::DecodeAnswer(0x0700, nullptr, "00 07 13 55 7a 13 00 07 00 26 01"); }},
      {"2012 records that are not whole",
       [] { golden::DecodeAnswer(0x0700, nullptr, "00 07 13 55 7a 13 00 06 00 26 01 14 17 51 00 4f"); }},
      {"a driver report whose name runs past the body", [] { golden::DecodeAnswer(0x0702, nullptr, "01 26 01 04 07 02 11 00 08 5a"); }},
      {"a 2012 serial number that is no number",
       [] {
         recorder::WriteAnswer(0x07, recorder::Standard::k2012,
                               golden::Parse(R"({"CCCCODE":"C000118","MODE":"M","YEAR":2024,"MONTH":3,"DAY":1,"SERNM":"S123"})"));
       }},
  };
  for (const Refusal& c : cases) golden::Check(c);
}

}  // namespace
}  // namespace jt808
