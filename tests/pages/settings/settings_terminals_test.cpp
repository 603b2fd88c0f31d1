// The simulated recorder and rule keepers: what a terminal answers to each
// read word and edition, and the writes it refuses.
#include <gtest/gtest.h>
#include <json/json.h>

#include "host/hostnet.h"
#include "host/ref/hostref.h"
#include "pages/settings/settings_world.h"
#include "text/json.h"

namespace {

class SettingsTerminalsTest : public SettingsWorld {
 protected:
  // The reply device 1 gives to a command with a parameter text.
  static std::string Ask(int command, const std::string& param) { return AskText(kDevice1, command, param); }
  // The member names of a reply in key order, "Error" and "result" left out, then the result.
  static std::string Keys(const std::string& reply) {
    Json::Value value;
    if (!txt::ParseJson(reply, value) || !value.isObject()) return "not an object: " + reply;
    std::string keys;
    for (const auto& name : value.getMemberNames()) {
      if (name != "Error" && name != "result") keys += name + " ";
    }
    return keys + "result=" + std::to_string(txt::JsonMemberInt(value, "result", -1));
  }
};

TEST_F(SettingsTerminalsTest, ReadsAnswerTheKeysOfTheirWordAndEdition) {
  struct Case {
    const char* param;
    const char* keys;
  };
  const Case cases[] = {
      {R"({"CDID":1})", "GCP GDI result=0"},
      {R"({"CDID":2})", "DTM result=0"},
      {R"({"CDID":3})", "IDTM INITMILE MILE RDTM VER result=0"},
      {R"({"CDID":3,"VER":2003})", "DTM MILE result=0"},
      {R"({"CDID":4})", "DTM FEA VER result=0"},
      {R"({"CDID":4,"VER":2003})", "FEA result=0"},
      {R"({"CDID":5})", "CARID SORT VER VIN result=0"},
      {R"({"CDID":5,"VER":2003})", "DTM Item VER result=0"},  // the 2003 word 0x05 is a speed record
      {R"({"CDID":6})", "CARID DTM Item SIN SORT VER VIN result=0"},
      {R"({"CDID":6,"VER":2003})", "CARID SORT VIN result=0"},
      {R"({"CDID":6,"VER":2012})", "DTM Item SIN VER result=0"},
      {R"({"CDID":32})", "result=3"},
  };
  for (const Case& c : cases) EXPECT_EQ(Keys(Ask(0x8700, c.param)), c.keys) << c.param;
  EXPECT_EQ(Keys(Ask(0x8700, "")), "result=2");
}

TEST_F(SettingsTerminalsTest, WritesWithBadValuesFail) {
  struct Case {
    const char* param;
    int result;
  };
  const Case cases[] = {
      {R"({"CDID":194,"YEAR":2024,"MONTH":2,"DAY":30,"HOUR":1,"MIN":0,"SEC":0})", 0},
      {R"({"CDID":194,"YEAR":2024,"MONTH":13,"DAY":1,"HOUR":1,"MIN":0,"SEC":0})", 1},
      {R"({"CDID":131,"YEAR":2024,"MONTH":1,"DAY":1})", 1},
      {R"({"CDID":195,"VER":2012,"RDTM":"2403050708","FEA":1})", 1},
      {R"({"CDID":195,"VER":2003,"FEA":1})", 0},
      {R"({"CDID":196,"INITMILE":"12a"})", 1},
      {R"({"CDID":200})", 3},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Keys(Ask(0x8701, c.param)), "result=" + std::to_string(c.result)) << c.param;
  }
}

TEST_F(SettingsTerminalsTest, RulesAreKeptPerKind) {
  EXPECT_EQ(Ask(0xA043, ""), R"({"BTM":"0000-00-00 00:00:00","ETM":"0000-00-00 00:00:00","Error":0,"SEC":0,"SPD":0,"result":0})");
  EXPECT_EQ(Keys(Ask(0xA041, R"({"BTM":"a","ETM":"b","SEC":60})")), "result=2");
  EXPECT_EQ(Keys(Ask(0xA041, R"({"BTM":"a","ETM":"b","SEC":60,"SPD":5})")), "result=0");
  EXPECT_EQ(Ask(0xA043, ""), R"({"BTM":"a","ETM":"b","Error":0,"SEC":60,"SPD":5,"result":0})");
  EXPECT_EQ(Ask(0xA042, ""), R"({"BTM":"0000-00-00 00:00:00","ETM":"0000-00-00 00:00:00","Error":0,"LMT":0,"PCT":0,"result":0})");
}

}  // namespace
