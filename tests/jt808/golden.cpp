#include "golden.h"

#include <gtest/gtest.h>

#include "text/json.h"

namespace jt808::golden {

Json::Value Parse(const char* json) {
  Json::Value value;
  if (json && !txt::ParseJson(json, value)) ADD_FAILURE() << "not JSON: " << json;
  return value;
}

Bytes Encode(int command, const char* param, Edition edition) {
  return EncodeCommand(command, Parse(param), edition).body;
}

Json::Value DecodeCommand(int command, const char* hex, Edition edition) {
  const CommandCodec* codec = FindCommand(command);
  if (!codec) throw BodyError("no codec");
  return codec->decode(FromHex(hex), edition);
}

Json::Value DecodeAnswer(uint16_t answer, const char* request, const char* hex, Edition edition) {
  const Json::Value param = Parse(request);
  AnswerContext context{0, 0, 0, edition, &param};
  const AnswerCodec* codec = FindAnswer(answer);
  if (!codec) throw BodyError("no codec");
  return codec->decode(FromHex(hex), context);
}

void Check(const CommandCase& c) {
  SCOPED_TRACE(c.what);
  const CommandCodec* codec = FindCommand(c.command);
  ASSERT_NE(codec, nullptr);
  const Message message = EncodeCommand(c.command, Parse(c.param), c.edition);
  EXPECT_EQ(message.id, c.command);
  EXPECT_EQ(Hex(message.body), c.hex);
  const Json::Value back = codec->decode(FromHex(c.hex), c.edition);
  EXPECT_EQ(txt::WriteCompactJson(back), txt::WriteCompactJson(Parse(c.decoded ? c.decoded : c.param)));
}

void Check(const AnswerCase& c) {
  SCOPED_TRACE(c.what);
  const AnswerCodec* codec = FindAnswer(c.answer);
  ASSERT_NE(codec, nullptr);
  const Json::Value request = Parse(c.request);
  const AnswerContext context{c.serial, 0, 0, c.edition, &request};
  EXPECT_EQ(Hex(codec->encode(Parse(c.reply), context)), c.hex);
  const Json::Value back = codec->decode(FromHex(c.hex), context);
  EXPECT_EQ(txt::WriteCompactJson(back), txt::WriteCompactJson(Parse(c.reply)));
}

void Check(const Refusal& c) { EXPECT_THROW(c.run(), BodyError) << c.what; }

}  // namespace jt808::golden
