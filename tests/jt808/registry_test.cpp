// The codec registry as every family fills it: one codec per number, and a
// general reply for whatever a command's own answer cannot carry.
#include <gtest/gtest.h>

#include "jt808/codec.h"
#include "text/json.h"

namespace jt808 {
namespace {

TEST(CodecRegistry, EachNumberHasOneCodec) { EXPECT_TRUE(DuplicateCodecs().empty()); }

TEST(CodecRegistry, EveryCommandNamesAnAnswerThatIsRegistered) {
  for (int command : Commands()) {
    const CommandCodec* codec = FindCommand(command);
    ASSERT_NE(codec, nullptr) << command;
    EXPECT_NE(FindAnswer(codec->answer), nullptr) << "command " << command << " waits for answer " << codec->answer;
  }
}

TEST(CodecRegistry, AFailedReplyTravelsAsAGeneralReply) {
  struct Case {
    const char* what;
    const char* reply;
    const char* body;
  } cases[] = {
      {"success", R"({"Error":0,"result":0})", "00 07 83 00 00"},
      {"failure", R"({"Error":0,"result":1})", "00 07 83 00 01"},
      {"not supported", R"({"Error":0,"result":3})", "00 07 83 00 03"},
      {"a result beyond a byte reads as failure", R"({"Error":0,"result":300})", "00 07 83 00 01"},
  };
  for (const Case& c : cases) {
    Json::Value reply;
    ASSERT_TRUE(txt::ParseJson(c.reply, reply)) << c.what;
    const AnswerContext context{7, 0x8300, 0x8300, Edition::k2013};
    const Message answer = EncodeAnswer(reply, context);
    EXPECT_EQ(answer.id, kGeneralReply) << c.what;
    EXPECT_EQ(Hex(answer.body), c.body) << c.what;
    EXPECT_EQ(AnsweredSerial(answer), 7) << c.what;
    EXPECT_EQ(DecodeAnswer(answer, context)["result"].asInt(), reply["result"].asInt() > 255 ? 1 : reply["result"].asInt())
        << c.what;
  }
}

TEST(CodecRegistry, AReplyItsOwnAnswerCannotGiveIsAcknowledged) {
  // A question sent without answers gets no driver's choice back.
  const AnswerContext context{9, 0x8302, 0x8302, Edition::k2013};
  const Message answer = EncodeAnswer(Json::Value(Json::objectValue), context);
  EXPECT_EQ(answer.id, kGeneralReply);
  EXPECT_EQ(Hex(answer.body), "00 09 83 02 00");
}

TEST(CodecRegistry, ThePlatformsOwnNumbersHaveNoTerminalMessage) {
  EXPECT_THROW(EncodeCommand(0x86FE, Json::Value(Json::objectValue), Edition::k2013), BodyError);
}

}  // namespace
}  // namespace jt808
