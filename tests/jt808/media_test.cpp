// The media messages: golden bodies of the shot, the recording, the search
// and the uploads, the answers that list what was taken and found, and the
// values their fields cannot hold. Layouts: each message's table in JT/T
// 808-2013, which the 2019 edition keeps unchanged for these messages.
#include <gtest/gtest.h>

#include "golden.h"

namespace jt808 {
namespace {
using golden::AnswerCase;
using golden::CommandCase;
using golden::Refusal;

TEST(MediaCodecs, CommandsTravelAsTheirTables) {
  const CommandCase cases[] = {
      {"0x8801 (shoot now): channel, command word, interval, save flag, resolution, quality, brightness, contrast, "
       "saturation, chroma",
       0x8801, Edition::k2013,
       R"({"BRI":128,"CHID":1,"COLOR":16,"CT":64,"HUE":32,"PIC":1,"PIX":8,"SALA":0,"SNBT":5,"SNOR":3})",
       "01 00 03 00 05 00 08 01 80 40 20 10"},
      {"0x8801 in the 2019 edition, a video until stopped", 0x8801, Edition::k2019,
       R"({"BRI":0,"CHID":4,"COLOR":0,"CT":0,"HUE":0,"PIC":10,"PIX":255,"SALA":1,"SNBT":0,"SNOR":65535})",
       "04 ff ff 00 00 01 ff 0a 00 00 00 00"},
      {"0x8804 (recording): command, time, save flag, sample rate", 0x8804, Edition::k2013,
       R"({"SALA":1,"SOOR":1,"SOTI":120,"VOICE":2})", "01 00 78 01 02"},
      {"0x8802 (search): type, channel, event, begin and end in BCD", 0x8802, Edition::k2013,
       R"({"BTM":"260115000000","CHID":1,"ETM":"260115235959","EVCO":3,"METY":2})",
       "02 01 03 26 01 15 00 00 00 26 01 15 23 59 59"},
      {"0x8802 without a time bound: zeros", 0x8802, Edition::k2019, R"({"BTM":"","CHID":0,"EVCO":0,"METY":3})",
       "03 00 00 00 00 00 00 00 00 00 00 00 00 00 00",
       R"({"BTM":"000000000000","CHID":0,"ETM":"000000000000","EVCO":0,"METY":3})"},
      {"0x8803 (upload by filter): the search's filter and the delete flag", 0x8803, Edition::k2013,
       R"({"BTM":"260115000000","CHID":1,"DELA":1,"ETM":"260115235959","EVCO":0,"METY":0})",
       "00 01 00 26 01 15 00 00 00 26 01 15 23 59 59 01"},
      {"0x8805 (upload one): media id, delete flag", 0x8805, Edition::k2013, R"({"DELA":1,"MDID":16909060})",
       "01 02 03 04 01"},
  };
  for (const CommandCase& c : cases) golden::Check(c);
}

TEST(MediaCodecs, AnswersTravelAsTheirTables) {
  const AnswerCase cases[] = {
      {"0x0805 (shot answer): serial, result, count, the ids", 0x0805, Edition::k2013, 0x1234, nullptr,
       R"({"MDID":[7,8]})", "12 34 00 00 02 00 00 00 07 00 00 00 08"},
      {"0x0802 (search answer): serial, count, per item id, type, channel, event and the 28-byte position block "
       "(alarms, status, latitude, longitude, altitude, speed, direction, time)",
       0x0802, Edition::k2013, 1, nullptr,
       R"({"Item":[{"CHID":2,"DTM":"2026-01-15 06:30:00","EVCO":1,"Flag":1,"GAODU":21,"HS":45,"JD":114057000,)"
       R"("MDID":1,"METY":0,"SPD":352,"STA":262147,"WD":22543000}]})",
       "00 01 00 01 00 00 00 01 00 02 01 00 00 00 01 00 04 00 03 01 57 fa 98 06 cc 5f 28 00 15 01 60 00 2d 26 01 15 "
       "06 30 00"},
      {"0x0802 finding nothing", 0x0802, Edition::k2019, 9, nullptr, R"({"Item":[]})", "00 09 00 00"},
  };
  for (const AnswerCase& c : cases) golden::Check(c);
}

TEST(MediaCodecs, AFailedShotAnswersItsResultAlone) {
  const Json::Value reply = golden::DecodeAnswer(0x0805, nullptr, "00 01 01");
  EXPECT_EQ(reply["result"].asInt(), 1);
  EXPECT_FALSE(reply.isMember("MDID"));
}

TEST(MediaCodecs, RefusesWhatTheFieldsCannotHold) {
  const AnswerContext context{};
  const Refusal cases[] = {
      {"a shot of 65536 pictures", [] { golden::Encode(0x8801, R"({"CHID":1,"SNOR":65536})"); }},
      {"a channel of 256", [] { golden::Encode(0x8802, R"({"CHID":256})"); }},
      {"a negative media id", [] { golden::Encode(0x8805, R"({"MDID":-1,"DELA":0})"); }},
      {"a delete flag that is text", [] { golden::Encode(0x8805, R"({"MDID":1,"DELA":"yes"})"); }},
      {"a search body cut short", [] { golden::DecodeCommand(0x8802, "02 01 03 26 01"); }},
      {"a search answer promising an item it lacks", [] { golden::DecodeAnswer(0x0802, nullptr, "00 01 00 01 00 00"); }},
      {"a search answer with a time that is no BCD",
       [] {
         golden::DecodeAnswer(0x0802, nullptr,
                              "00 01 00 01 00 00 00 01 00 02 01 00 00 00 01 00 04 00 03 01 57 fa 98 06 cc 5f 28 00 15 "
                              "01 60 00 2d 2a 01 15 06 30 00");
       }},
      {"a shot answer whose ids are no list",
       [&] { FindAnswer(0x0805)->encode(golden::Parse(R"({"MDID":5})"), context); }},
      {"an item whose latitude is negative",
       [&] { FindAnswer(0x0802)->encode(golden::Parse(R"({"Item":[{"WD":-1,"DTM":"2026-01-15 06:30:00"}]})"), context); }},
  };
  for (const Refusal& c : cases) golden::Check(c);
}

}  // namespace
}  // namespace jt808
