// Position commands and answers against their exact bodies, both ways, and
// what they refuse.
#include <gtest/gtest.h>

#include "jt808/codec.h"
#include "text/json.h"

namespace jt808 {
namespace {

Json::Value J(const char* text) {
  Json::Value value;
  if (*text && !txt::ParseJson(text, value)) ADD_FAILURE() << "not JSON: " << text;
  return value;
}

constexpr Edition k13 = Edition::k2013, k19 = Edition::k2019;

struct CommandCase {
  const char* what;  // and where the layout comes from
  int command;
  Edition edition;
  const char* param;
  const char* body;
  const char* decoded = nullptr;  // when the terminal reads back other than the page sent
};

const CommandCase kCommands[] = {
    {"0x8201 position query: empty body (JT/T 808-2013 and -2019)", 0x8201, k13, "", ""},
    {"0x8201 in 2019", 0x8201, k19, "", ""},
    {"0x8202: interval WORD, validity DWORD (JT/T 808 tracking control table)", 0x8202, k13,
     R"({"POTR":3600,"TIBT":30})", "00 1e 00 00 0e 10"},
    {"0x8202 extended: the body has no field for the tracking attribute", 0x8202, k13,
     R"({"ATTR":1,"POTR":20000,"TIBT":500})", "01 f4 00 00 4e 20", R"({"POTR":20000,"TIBT":500})"},
    {"0x8203: alarm serial WORD, alarm types DWORD (JT/T 808 manual confirmation table)", 0x8203, k19,
     R"({"ALTY":268435465,"MSGID":123})", "00 7b 10 00 00 09"},
    {"0x8204 link check (JT/T 808-2019): empty body", 0x8204, k19, "", ""},
    {"0x8204 goes to a 2013 terminal too (its general reply tells)", 0x8204, k13, "", ""},
    {"0x8500 2013: control flag byte, bit 0 locks the doors (JT/T 808-2013 vehicle control table)", 0x8500, k13,
     R"({"CTLA":1})", "01"},
    {"0x8500 2013 extended: doors are what the flag controls", 0x8500, k13, R"({"CTLA":1,"Type":2})", "01",
     R"({"CTLA":1})"},
    {"0x8500 2019: item count, door item 0x0001, its byte (JT/T 808-2019 control items)", 0x8500, k19, R"({"CTLA":0})",
     "00 01 00 01 00"},
    {"0x8500 2019 extended: oil as user item 0xF001", 0x8500, k19, R"({"CTLA":1,"Type":0})", "00 01 f0 01 01"},
    {"0x8500 2019 extended: doors are the list's own item", 0x8500, k19, R"({"CTLA":1,"Type":2})", "00 01 00 01 01",
     R"({"CTLA":1})"},
};

TEST(Position, CommandBodiesBothWays) {
  for (const CommandCase& c : kCommands) {
    const Message message = EncodeCommand(c.command, J(c.param), c.edition);
    EXPECT_EQ(message.id, c.command) << c.what;
    EXPECT_EQ(Hex(message.body), c.body) << c.what;
    const Json::Value back = FindCommand(c.command)->decode(FromHex(c.body), c.edition);
    EXPECT_EQ(txt::WriteCompactJson(back), txt::WriteCompactJson(J(c.decoded ? c.decoded : c.param))) << c.what;
  }
}

// Position basic information (JT/T 808 table of the basic information: alarm
// DWORD, status DWORD, latitude DWORD, longitude DWORD, altitude WORD, speed
// WORD, direction WORD, BCD[6] time) and additional items (id BYTE, length
// BYTE, value; the additional item table), after the answered serial number
// (the 0x0201 and 0x0500 tables).
struct AnswerCase {
  const char* what;
  int command;
  Edition edition;
  const char* reply;
  const char* body;
  const char* decoded;  // the reply members the pages get back
};

const AnswerCase kAnswers[] = {
    {"0x0201 as the simulated terminal answers: no time, no items", 0x8201, k13,
     R"({"Alarm":0,"Direction":0,"Lat":22543000,"Lng":114057000,"Speed":350,"Status":3})",
     "00 2a 00 00 00 00 00 00 00 03 01 57 fa 98 06 cc 5f 28 00 00 01 5e 00 00 00 00 00 00 00 00",
     R"({"Alarm":0,"Altitude":0,"Direction":0,"Lat":22543000,"Lng":114057000,"Speed":350,"Status":3})"},
    {"0x0201 with a time and every common item, an unknown one kept", 0x8201, k19,
     R"({"Alarm":1,"Status":3,"Lat":22543120,"Lng":114057090,"Altitude":52,"Speed":360,"Direction":15,
        "Time":"2026-01-15 09:30:00","Mileage":12345,"Fuel":500,"RecorderSpeed":355,"AlarmEventId":2,
        "Overspeed":{"Type":1,"Id":7},"Crossing":{"Type":2,"Id":9,"Direction":1},
        "SectionTime":{"Id":101,"Time":600,"Result":0},"SignalStatus":16,"IoStatus":3,"Analog":6553650,
        "SignalStrength":25,"Satellites":12,"Items":[{"Id":225,"Data":"ab cd"}]})",
     "00 07 00 00 00 01 00 00 00 03 01 57 fb 10 06 cc 5f 82 00 34 01 68 00 0f 26 01 15 09 30 00 01 04 00 00 30 39 02 02 "
     "01 f4 03 02 01 63 04 02 00 02 11 05 01 00 00 00 07 12 06 02 00 00 00 09 01 13 07 00 00 00 65 02 58 00 25 04 00 "
     "00 00 10 2a 02 00 03 2b 04 00 64 00 32 30 01 19 31 01 0c e1 02 ab cd",
     nullptr},
    {"0x0201 south and west (status bits 2 and 3), tyres and cabin temperature (2019 items), a mileage of the wrong "
     "length kept as it came",
     0x8201, k19,
     R"({"Alarm":0,"Status":12,"Lat":33500000,"Lng":151200000,"Altitude":0,"Speed":0,"Direction":0,
        "Time":"2026-12-31 23:59:59","TyrePressure":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,
        25,26,27,28,29],"CabinTemperature":-12,"Overspeed":{"Type":0},"Items":[{"Id":1,"Data":"00 05"}]})",
     "01 02 00 00 00 00 00 00 00 0c 01 ff 2b 60 09 03 21 00 00 00 00 00 00 00 26 12 31 23 59 59 05 1e 00 01 02 03 04 05 "
     "06 07 08 09 0a 0b 0c 0d 0e 0f 10 11 12 13 14 15 16 17 18 19 1a 1b 1c 1d 06 02 80 0c 11 01 00 01 02 00 05",
     nullptr},
    {"0x0500: the status word after the vehicle control (bit 12 doors locked)", 0x8500, k13, R"({"Status":4096})",
     "00 09 00 00 00 00 00 00 10 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00",
     R"({"Alarm":0,"Altitude":0,"Direction":0,"Lat":0,"Lng":0,"Speed":0,"Status":4096})"},
};

uint16_t SerialOf(const char* body) { return static_cast<uint16_t>(FromHex(body)[0] << 8 | FromHex(body)[1]); }

TEST(Position, AnswerBodiesBothWays) {
  for (const AnswerCase& c : kAnswers) {
    const CommandCodec* command = FindCommand(c.command);
    ASSERT_TRUE(command) << c.what;
    const AnswerContext context{SerialOf(c.body), command->message, c.command, c.edition};
    const Message answer = EncodeAnswer(J(c.reply), context);
    EXPECT_EQ(answer.id, command->answer) << c.what;
    EXPECT_EQ(Hex(answer.body), c.body) << c.what;
    EXPECT_EQ(AnsweredSerial(answer), context.serial) << c.what;
    Json::Value want = J(c.decoded ? c.decoded : c.reply);
    want["Error"] = 0;
    want["result"] = kResultOk;
    const Json::Value back = DecodeAnswer({command->answer, FromHex(c.body)}, context);
    EXPECT_EQ(txt::WriteCompactJson(back), txt::WriteCompactJson(want)) << c.what;
  }
}

TEST(Position, RefusesWhatCannotBeCarried) {
  const auto encode = [](int command, Edition edition, const char* param) {
    return [=] { EncodeCommand(command, J(param), edition); };
  };
  const auto decode = [](int command, Edition edition, const char* body) {
    return [=] { FindCommand(command)->decode(FromHex(body), edition); };
  };
  const auto answer = [](const char* body) {
    return [=] { DecodeAnswer({0x0201, FromHex(body)}, AnswerContext{}); };
  };
  const auto report = [](const char* reply) {
    return [=] { FindAnswer(0x0201)->encode(J(reply), AnswerContext{}); };
  };
  const struct {
    const char* what;
    std::function<void()> run;
  } cases[] = {
      {"an alarm serial beyond a word", encode(0x8203, k13, R"({"ALTY":1,"MSGID":70000})")},
      {"a confirmation without its types", encode(0x8203, k13, R"({"MSGID":1})")},
      {"an interval beyond a word", encode(0x8202, k13, R"({"POTR":1,"TIBT":65536})")},
      {"a negative validity", encode(0x8202, k13, R"({"POTR":-1,"TIBT":1})")},
      {"a control type the list has no item for", encode(0x8500, k19, R"({"CTLA":1,"Type":4})")},
      {"oil control to a 2013 terminal, whose flag would lock the doors", encode(0x8500, k13, R"({"CTLA":1,"Type":0})")},
      {"a control flag beyond a byte", encode(0x8500, k13, R"({"CTLA":256})")},
      {"a tracking body cut short", decode(0x8202, k13, "00 1e 00 00 0e")},
      {"a control list without items", decode(0x8500, k19, "00 00")},
      {"a control item nobody defined", decode(0x8500, k19, "00 01 00 02 01")},
      {"bytes after the confirmation", decode(0x8203, k13, "00 7b 10 00 00 09 00")},
      {"a position without its time", answer("00 01 00 00 00 00 00 00 00 03 01 57 fa 98 06 cc 5f 28 00 00 01 5e 00 00")},
      {"an item running past the end", answer("00 01 00 00 00 00 00 00 00 03 01 57 fa 98 06 cc 5f 28 00 00 01 5e 00 00 "
                                              "26 01 15 09 30 00 01 04 00 00 30")},
      {"a time that is no BCD", answer("00 01 00 00 00 00 00 00 00 03 01 57 fa 98 06 cc 5f 28 00 00 01 5e 00 00 "
                                       "26 01 1a 09 30 00")},
      {"a negative latitude", report(R"({"Lat":-1})")},
      {"a time without seconds", report(R"({"Time":"2026-01-15 09:30"})")},
      {"29 tyre pressures", report(R"({"TyrePressure":[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,
                                       24,25,26,27,28]})")},
      {"an overspeed place without its id", report(R"({"Overspeed":{"Type":1}})")},
  };
  for (const auto& c : cases) EXPECT_THROW(c.run(), BodyError) << c.what;
}

}  // namespace
}  // namespace jt808
