// The attribute queries' answers both ways, in the layouts of the terminal
// attributes answer (JT/T 808-2013 and -2019 0x0107: the model and the
// terminal id grew to 30 bytes) and the audio/video attributes answer
// (JT/T 1078 0x1003), and the queries' empty bodies.
#include <gtest/gtest.h>

#include "jt808/codec.h"
#include "text/json.h"

namespace jt808 {
namespace {

// A terminal's attribute reply, its SIM card as the terminal's raw bytes.
Json::Value Attributes(int type, const char* model, const char* id, const char* firmware) {
  Json::Value reply(Json::objectValue);
  reply["DTYPE"] = type;
  reply["MID"] = "FLEET";
  reply["DMODEL"] = model;
  reply["DID"] = id;
  reply["DSIM"] = std::string("\x89\x86\x10\x00\x80\x00\x00\x00\x00\x00", 10);
  reply["DHVER"] = "HW1.4";
  reply["DFVER"] = firmware;
  reply["GNSSA"] = 1;
  reply["COMMA"] = 0x21;
  return reply;
}

struct Case {
  const char* what;
  uint16_t answer;
  Edition edition;
  Json::Value reply;
  std::string body;
};

std::vector<Case> Cases() {
  Json::Value av(Json::objectValue);
  for (auto [key, value] : {std::pair{"ACODE", 19}, {"ACHN", 1}, {"ASR", 0}, {"ASB", 1}, {"AFL", 320}, {"AOUT", 1},
                            {"VCODE", 98}, {"ACHNN", 2}, {"VCHNN", 4}}) {
    av[key] = value;
  }
  return {
      {"terminal attributes, 2013: type, maker 5, model 20, id 7, ICCID 10, versions after a length byte, modules",
       0x0107, Edition::k2013, Attributes(6, "T13-B", "D10008", "FW3.2.7"),
       "00 06  46 4c 45 45 54  54 31 33 2d 42 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
       "  44 31 30 30 30 38 00  89 86 10 00 80 00 00 00 00 00  05 48 57 31 2e 34  07 46 57 33 2e 32 2e 37  01  21"},
      {"terminal attributes, 2019: model 30, id 30", 0x0107, Edition::k2019,
       Attributes(0x0105, "T19-A", "D10012", ""),
       "01 05  46 4c 45 45 54  54 31 39 2d 41 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
       "  00 00 00 00 00 00 00 00 00 00  44 31 30 30 31 32 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"
       "  00 00 00 00 00 00  89 86 10 00 80 00 00 00 00 00  05 48 57 31 2e 34  00  01  21"},
      {"audio/video attributes: coding, channels, rate, sample size, frame length (a word), output, video coding, "
       "channel counts",
       0x1003, Edition::k2013, av, "13 01 00 01 01 40 01 62 02 04"},
  };
}

TEST(SettingsCodecs, AnswersBothWays) {
  for (const Case& c : Cases()) {
    const AnswerCodec* codec = FindAnswer(c.answer);
    ASSERT_NE(codec, nullptr) << c.what;
    EXPECT_FALSE(codec->leadsWithSerial) << c.what;
    const AnswerContext context{3, 0, 0, c.edition};
    EXPECT_EQ(Hex(codec->encode(c.reply, context)), Hex(FromHex(c.body))) << c.what;
    const Json::Value read = codec->decode(FromHex(c.body), context);
    EXPECT_EQ(txt::WriteCompactJson(read), txt::WriteCompactJson(c.reply)) << c.what;
  }
}

TEST(SettingsCodecs, QueriesAreEmptyAndNameTheirAnswers) {
  for (auto [command, answer] : {std::pair{0x8107, 0x0107}, {0x9003, 0x1003}}) {
    const CommandCodec* codec = FindCommand(command);
    ASSERT_NE(codec, nullptr) << command;
    EXPECT_EQ(codec->answer, answer) << command;
    EXPECT_TRUE(codec->encode(Json::Value(), Edition::k2019).empty()) << command;
    EXPECT_THROW(codec->decode(FromHex("00"), Edition::k2019), BodyError) << command << ": a body where none belongs";
  }
}

TEST(SettingsCodecs, RefusesWhatTheAnswerCannotCarry) {
  const AnswerContext context{3, 0, 0, Edition::k2013};
  Json::Value longFrame(Json::objectValue);
  longFrame["AFL"] = 70000;
  EXPECT_THROW(FindAnswer(0x0107)->encode(Attributes(6, "T13-B", "D1000800", ""), context), BodyError)
      << "a 2013 terminal id of eight bytes";
  EXPECT_THROW(FindAnswer(0x1003)->encode(longFrame, context), BodyError) << "a frame length beyond a word";
  EXPECT_THROW(FindAnswer(0x1003)->decode(FromHex("13 01 00 01 01 40 01 62 02"), context), BodyError)
      << "an answer cut short";
}

// The stored area list and the driving rules are the platform's own numbers.
TEST(SettingsCodecs, ThePlatformsOwnNumbersHaveNoMessage) {
  for (int command : {0x86FE, 0xA040, 0xA041, 0xA042, 0xA043}) EXPECT_EQ(FindCommand(command), nullptr) << command;
}

}  // namespace
}  // namespace jt808
