// Area and route bodies both ways: each case is the parameter object a page
// sends, the body in the layout of the message in the published protocol
// (JT/T 808-2013, and -2019 where it differs), and what a terminal reads back
// when the body cannot carry every key sent.
#include <gtest/gtest.h>

#include "jt808/codec.h"
#include "text/json.h"

namespace jt808 {
namespace {

Json::Value Parse(const char* text) {
  Json::Value value;
  EXPECT_TRUE(txt::ParseJson(text, value)) << text;
  return value;
}

struct CommandCase {
  const char* what;  // the message and where its layout comes from
  int command;
  Edition edition;
  const char* param;
  const char* body;
  const char* read = nullptr;  // what the body gives back, when not param
};

const CommandCase kCommands[] = {
    {"circles, 808-2013 0x8600: setup, count; id, attribute (time, speed), centre, radius, times, speed, duration",
     0x8600, Edition::k2013,
     R"({"Setup":1,"Count":1,"Item":[{"ID":6,"ATTR":3,"WD":33500000,"JD":151200000,"Radius":800,
         "BTM":"260115000000","ETM":"260115235959","MSPD":80,"OSTM":10}]})",
     "01 01  00 00 00 06  00 03  01 ff 2b 60  09 03 21 00  00 00 03 20"
     "  26 01 15 00 00 00  26 01 15 23 59 59  00 50  0a"},
    {"circles, 808-2019 0x8600: the night speed after the duration, the name after its length", 0x8600,
     Edition::k2019,
     R"({"Setup":0,"Count":1,"Item":[{"ID":1,"ATTR":2,"WD":22533000,"JD":113930000,"Radius":500,
         "BTM":"260115000000","ETM":"260115235959","MSPD":80,"OSTM":10,"NMSPD":60,"ANAME":"港区"}]})",
     "00 01  00 00 00 01  00 02  01 57 d3 88  06 ca 6f 10  00 00 01 f4  00 50  0a  00 3c  00 04 b8 db c7 f8",
     R"({"Setup":0,"Count":1,"Item":[{"ID":1,"ATTR":2,"WD":22533000,"JD":113930000,"Radius":500,
         "MSPD":80,"OSTM":10,"NMSPD":60,"ANAME":"港区"}]})"},
    {"rectangles, 808-2013 0x8602: corners; every-day times; no speed without its bit", 0x8602, Edition::k2013,
     R"({"Setup":2,"Count":1,"Item":[{"ID":801,"ATTR":1603,"LWD":10000000,"LJD":20000000,"RWD":12000000,
         "RJD":22000000,"BTM":"000000073000","ETM":"000000190000","MSPD":60,"OSTM":5}]})",
     "02 01  00 00 03 21  06 43  00 98 96 80  01 31 2d 00  00 b7 1b 00  01 4f b1 80"
     "  00 00 00 07 30 00  00 00 00 19 00 00  00 3c  05"},
    {"a polygon, 808-2019 0x8604: the night speed and the name after the vertices", 0x8604, Edition::k2019,
     R"({"ID":11,"ATTR":130,"MSPD":70,"OSTM":15,"NMSPD":40,"ANAME":"盐田","PCT":2,
         "PAR":[{"WD":38700000,"JD":9150000},{"WD":22580000,"JD":114230000}]})",
     "00 00 00 0b  00 82  00 46  0f  00 02  02 4e 83 e0  00 8b 9e 30  01 58 8b 20  06 cf 02 f0  00 28"
     "  00 04 d1 ce cc ef"},
    {"a route, 808-2019 0x8606: times; points plain, with thresholds, with a speed limit (night speed after "
     "its duration); the name last",
     0x8606, Edition::k2019,
     R"({"ID":102,"ATTR":41,"BTM":"260201000000","ETM":"260301235959","PCT":2,"ANAME":"盐田",
         "PAR":[{"PID":1,"LID":1,"WD":22560000,"JD":114020000,"LW":30,"LDA":0,"MSPD":90},
                {"PID":2,"LID":2,"WD":22630000,"JD":113820000,"LW":12,"LDA":3,"DOR":600,"DLS":60,
                 "MSPD":90,"LST":10,"NMSPD":50}]})",
     "00 00 00 66  00 29  26 02 01 00 00 00  26 03 01 23 59 59  00 02"
     "  00 00 00 01  00 00 00 01  01 58 3d 00  06 cb ce a0  1e  00"
     "  00 00 00 02  00 00 00 02  01 59 4e 70  06 c8 c1 60  0c  03  02 58  00 3c  00 5a  0a  00 32"
     "  00 04 d1 ce cc ef",
     R"({"ID":102,"ATTR":41,"BTM":"260201000000","ETM":"260301235959","PCT":2,"ANAME":"盐田",
         "PAR":[{"PID":1,"LID":1,"WD":22560000,"JD":114020000,"LW":30,"LDA":0},
                {"PID":2,"LID":2,"WD":22630000,"JD":113820000,"LW":12,"LDA":3,"DOR":600,"DLS":60,
                 "MSPD":90,"LST":10,"NMSPD":50}]})"},
    {"deleting circles, 808-2013 0x8601: count and ids", 0x8601, Edition::k2013,
     R"({"Count":2,"Item":[{"ID":6},{"ID":801}]})", "02  00 00 00 06  00 00 03 21"},
    {"deleting every route, 808-2013 0x8607: count 0", 0x8607, Edition::k2019, R"({"Count":0})", "00"},
    {"querying every circle, 808-2019 0x8608: kind and no ids", 0x8608, Edition::k2019,
     R"({"ATPYE":1,"IDS":""})", "01  00 00 00 00"},
    {"querying routes by id, 808-2019 0x8608: blanks and empty pieces passed over", 0x8608, Edition::k2019,
     R"({"ATPYE":4,"IDS":"101, 7,"})", "04  00 00 00 02  00 00 00 65  00 00 00 07",
     R"({"ATPYE":4,"IDS":"101,7"})"},
};

TEST(AreaCodecs, CommandBodiesBothWays) {
  for (const CommandCase& c : kCommands) {
    const CommandCodec* codec = FindCommand(c.command);
    ASSERT_NE(codec, nullptr) << c.what;
    EXPECT_EQ(codec->message, c.command) << c.what;
    const Json::Value param = Parse(c.param);
    EXPECT_EQ(Hex(codec->encode(param, c.edition)), Hex(FromHex(c.body))) << c.what;
    const Json::Value read = codec->decode(FromHex(c.body), c.edition);
    const Json::Value expected = c.read ? Parse(c.read) : param;
    EXPECT_EQ(txt::WriteCompactJson(read), txt::WriteCompactJson(expected)) << c.what;
  }
}

struct AnswerCase {
  const char* what;
  Edition edition;
  const char* reply;
  const char* body;
};

// The query's answer (808-2019 0x0608): kind, count, then each area as its set command's body.
const AnswerCase kQueryAnswers[] = {
    {"a packet of circles, with written times", Edition::k2019,
     R"({"ATPYE":1,"Count":1,"Item":[{"Setup":0,"Count":1,"Item":[{"ID":1,"ATTR":3,"WD":22533000,
         "JD":113930000,"Radius":500,"BTM":"2026-01-15 00:00:00","ETM":"2000-00-00 23:59:59","MSPD":80,"OSTM":10,
         "NMSPD":0,"ANAME":"港区"}]}]})",
     "01  00 00 00 01  00 01  00 00 00 01  00 03  01 57 d3 88  06 ca 6f 10  00 00 01 f4"
     "  26 01 15 00 00 00  00 00 00 23 59 59  00 50  0a  00 00  00 04 b8 db c7 f8"},
    {"two polygons, one to a packet", Edition::k2019,
     R"({"ATPYE":3,"Count":2,"Item":[{"Count":1,"Item":[{"ID":4,"ATTR":0,"PCT":0,"PAR":[],"ANAME":""}]},
         {"Count":1,"Item":[{"ID":5,"ATTR":0,"PCT":0,"PAR":[],"ANAME":""}]}]})",
     "03  00 00 00 02  00 00 00 04  00 00  00 00  00 00  00 00 00 05  00 00  00 00  00 00"},
};

TEST(AreaCodecs, QueryAnswerBothWays) {
  const CommandCodec* query = FindCommand(0x8608);
  ASSERT_NE(query, nullptr);
  const AnswerCodec* answer = FindAnswer(query->answer);
  ASSERT_NE(answer, nullptr);
  EXPECT_EQ(query->answer, 0x0608);
  EXPECT_FALSE(answer->leadsWithSerial);
  for (const AnswerCase& c : kQueryAnswers) {
    const AnswerContext context{7, 0x8608, 0x8608, c.edition};
    const Json::Value reply = Parse(c.reply);
    EXPECT_EQ(Hex(answer->encode(reply, context)), Hex(FromHex(c.body))) << c.what;
    const Json::Value read = answer->decode(FromHex(c.body), context);
    EXPECT_EQ(txt::WriteCompactJson(read), txt::WriteCompactJson(reply)) << c.what;
  }
}

// Parameters a body cannot carry, and bodies a terminal cannot read.
TEST(AreaCodecs, Refusals) {
  struct Case {
    const char* what;
    int command;
    const char* param;  // encoded when given, else the body is read
    const char* body = nullptr;
  } cases[] = {
      {"a radius below zero", 0x8600, R"({"Setup":0,"Item":[{"ID":1,"ATTR":0,"Radius":-1}]})"},
      {"a time range that is no time", 0x8604, R"({"ID":1,"ATTR":1,"BTM":"today","ETM":"260115235959"})"},
      {"a segment width beyond a byte", 0x8606, R"({"ID":1,"ATTR":0,"PAR":[{"PID":1,"LW":300}]})"},
      {"a delete that lost its ids (it would delete all)", 0x8601, R"({"Count":3})"},
      {"an id list without one id", 0x8608, R"({"ATPYE":1,"IDS":"abc，"})"},
      {"a circle cut short", 0x8600, nullptr, "00 01  00 00 00 01  00 00  01 57"},
      {"bytes after a delete's ids", 0x8605, nullptr, "01  00 00 00 01  ff"},
  };
  for (const Case& c : cases) {
    const CommandCodec* codec = FindCommand(c.command);
    if (c.param) {
      EXPECT_THROW(codec->encode(Parse(c.param), Edition::k2019), BodyError) << c.what;
    } else {
      EXPECT_THROW(codec->decode(FromHex(c.body), Edition::k2019), BodyError) << c.what;
    }
  }
  const AnswerContext context{1, 0x8608, 0x8608, Edition::k2019};
  EXPECT_THROW(FindAnswer(0x0608)->decode(FromHex("09 00 00 00 00"), context), BodyError) << "an unknown kind";
  EXPECT_THROW(FindAnswer(0x0608)->decode(FromHex("01 00 00 00 02  00 00"), context), BodyError)
      << "fewer bodies than counted";
}

}  // namespace
}  // namespace jt808
