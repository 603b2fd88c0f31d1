// Events, questions, the information menu and service, call-back and phone
// book as their bodies carry them. Layouts: JT/T 808-2013 tables of 0x8301
// (event setting, event item), 0x8302 and 0x0302 (question and its answer),
// 0x8303 (menu setting, menu item), 0x8304, 0x8400 and 0x8401 (phone book,
// contact item). The 2019 edition keeps 0x8400 and 0x8401 as they are and no
// longer lists the others; its terminals get the same bodies.
#include <gtest/gtest.h>

#include "body_table.h"

namespace jt808 {
namespace {
using bodies::Body;
using bodies::HexOf;
using bodies::Refusal;

TEST(MessagingCodecs, CarryThePagesParameters) {
  const Body cases[] = {
      {"0x8301 append: type, count, per event its id, a byte of length and the text", 0x8301,
       R"({"SETP":2,"EVIT":[{"EVID":7,"TEXT":"Brake check"},{"EVID":9,"TEXT":"%B5%BD%D5%BE+5%25"}],"Count":2})",
       "02 02 07 0b " + HexOf("Brake check") + " 09 07 b5 bd d5 be 20 35 25"},
      {"0x8301 delete all: the type alone, rows left in the boxes stay behind", 0x8301,
       R"({"SETP":0,"EVIT":[{"EVID":7,"TEXT":"Brake check"}],"Count":1})", "00", R"({"SETP":0,"Count":0})"},
      {"0x8301 delete given events: ids without their texts", 0x8301,
       R"({"SETP":4,"EVIT":[{"EVID":7,"TEXT":"Brake check"}],"Count":1})", "04 01 07 00",
       R"({"SETP":4,"EVIT":[{"EVID":7,"TEXT":""}],"Count":1})"},
      {"0x8303 append: per item its type, a word of length and the name", 0x8303,
       R"({"SETP":2,"EVIT":[{"INTY":1,"TEXT":"Weather"},{"INTY":2,"TEXT":"News"}]})",
       "02 02 01 00 07 " + HexOf("Weather") + " 02 00 04 " + HexOf("News")},
      {"0x8303 delete all: no items", 0x8303, R"({"SETP":0,"EVIT":[{"INTY":1,"TEXT":"Weather"}]})", "00 00",
       R"({"SETP":0})"},
      {"0x8302: flag, question with a byte of length, answers with a word of length", 0x8302,
       R"({"Flag":9,"QS":"Are you at the depot?","ANSL":[{"ASR":0,"TEXT":"Yes"},{"ASR":1,"TEXT":"Not+yet+10%25"}]})",
       "09 15 " + HexOf("Are you at the depot?") + " 00 00 03 " + HexOf("Yes") + " 01 00 0b " + HexOf("Not yet 10%")},
      {"0x8304: type and the text with a word of length", 0x8304, R"({"INTY":255,"TextInfo":"Road closed\nDetour"})",
       "ff 00 12 " + HexOf("Road closed\nDetour")},
      {"0x8400: flag and the number to the end", 0x8400, R"({"Flag":1,"PHONE":"13800138000"})",
       "01 " + HexOf("13800138000")},
      {"0x8401 append: per contact flag, number and name, each with a byte of length", 0x8401,
       R"({"SETP":2,"PHIT":[{"Flag":3,"PHONE":"02088886666","LIMN":"Office"},{"Flag":131,"PHONE":"95128","LIMN":"A%2BB"}]})",
       "02 02 03 0b " + HexOf("02088886666") + " 06 " + HexOf("Office") + " 83 05 " + HexOf("95128") + " 03 " +
           HexOf("A+B")},
      {"0x8401 delete all: no contacts", 0x8401, R"({"SETP":0,"PHIT":[{"Flag":1,"PHONE":"1","LIMN":"X"}]})", "00 00",
       R"({"SETP":0})"},
  };
  for (const Body& c : cases) bodies::Check(c);
}

TEST(MessagingCodecs, TheDriversAnswerSettlesTheQuestion) {
  ASSERT_NE(FindCommand(0x8302), nullptr);
  EXPECT_EQ(FindCommand(0x8302)->answer, 0x0302);
  const AnswerContext context{0x1234, 0x8302, 0x8302, Edition::k2013};
  Json::Value reply;
  ASSERT_TRUE(txt::ParseJson(R"({"ASR":1,"Error":0,"result":0})", reply));
  const Message answer = EncodeAnswer(reply, context);
  EXPECT_EQ(answer.id, 0x0302);
  EXPECT_EQ(Hex(answer.body), "12 34 01") << "0x0302: the question's serial number and the answer id";
  EXPECT_EQ(AnsweredSerial(answer), 0x1234);
  EXPECT_EQ(txt::WriteCompactJson(DecodeAnswer(answer, context)), R"({"ASR":1,"Error":0,"result":0})");
}

TEST(MessagingCodecs, RefuseWhatTheBodiesCannotCarry) {
  const Refusal cases[] = {
      {"event id above a byte", 0x8301, R"({"SETP":1,"EVIT":[{"EVID":256,"TEXT":"x"}],"Count":1})"},
      {"event text above 255 bytes", 0x8301,
       R"({"SETP":1,"EVIT":[{"EVID":1,"TEXT":")" + std::string(256, 'a') + R"("}],"Count":1})"},
      {"no setting type", 0x8303, R"({"EVIT":[{"INTY":1,"TEXT":"x"}]})"},
      {"question flag above a byte", 0x8302, R"({"Flag":256,"QS":"x"})"},
      {"a number to call of 21 digits", 0x8400, R"({"Flag":0,"PHONE":"123456789012345678901"})"},
      {"an event text shorter than its length", 0x8301, "", "01 01 07 03 41"},
      {"a question without its length", 0x8302, "", "09"},
      {"a contact without its name", 0x8401, "", "02 01 01 01 31"},
  };
  for (const Refusal& c : cases) bodies::Check(c);

  const AnswerCodec* answer = FindAnswer(0x0302);
  ASSERT_NE(answer, nullptr);
  const AnswerContext context{1, 0x8302, 0x8302, Edition::k2013};
  EXPECT_THROW(answer->decode(FromHex("00 01"), context), BodyError) << "an answer without its id";
}

}  // namespace
}  // namespace jt808
