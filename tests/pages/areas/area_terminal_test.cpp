// Simulated terminals keep each device's areas by id: update replaces the
// kind, append adds or replaces, modify replaces only ids held; a polygon
// set adds or replaces one; a 2013 terminal keeps no 2019 keys; what is no
// area is a message error.
#include <json/json.h>

#include "host/hostnet.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "support/page_fixture.h"
#include "text/json.h"

namespace {

constexpr int kCircles = 0x8600, kRectangles = 0x8602, kPolygon = 0x8604;

class AreaTerminals : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001"}]},
      {"name":"B","devices":[{"id":2,"idno":"91002","attrs":{"80":1}}]}]})"));
    hostref::terminals::Clear();
    hostref::terminals::Install();
  }
  void TearDown() override {
    hostref::terminals::Uninstall();
    PageWorld::TearDown();
  }
  // The "result" a device answers to a command with a parameter text.
  int Ask(const std::string& dev, int command, const std::string& param) {
    std::string reply;
    auto callback = [](int32_t, const char* text, void* user) { *static_cast<std::string*>(user) = text ? text : ""; };
    NETHANDLE handle = 0;
    const std::string envelope = "{\"Command\":" + std::to_string(command) + ",\"DevIDNO\":\"" + dev + "\",\"Session\":\"s\"}";
    NETCLIENT_MNOpenNormalCmd(&handle, dev.c_str(), envelope.c_str(), param.c_str());
    NETCLIENT_MNSetNormalCmdCB(handle, &reply, callback);
    NETCLIENT_MNStartNormalCmd(handle);
    hostref::net::WaitIdle();
    NETCLIENT_MNCloseNormalCmd(handle);
    Json::Value value;
    EXPECT_TRUE(txt::ParseJson(reply, value)) << reply;
    return txt::JsonMemberInt(value, "result", -1);
  }
  static std::string Ids(const std::string& dev, int command) {
    std::string ids;
    for (const auto& [id, area] : hostref::terminals::StoredAreas(dev, command))
      ids += std::to_string(id) + ":" + std::to_string(txt::JsonMemberInt(area, "Radius", 0)) + " ";
    return ids;
  }
};

std::string Circles(int setup, std::initializer_list<std::pair<int, int>> idRadius) {
  std::string items;
  for (auto [id, radius] : idRadius)
    items += std::string(items.empty() ? "" : ",") + "{\"ID\":" + std::to_string(id) + ",\"Radius\":" +
             std::to_string(radius) + ",\"NMSPD\":50,\"ANAME\":\"n\"}";
  return "{\"Count\":" + std::to_string(idRadius.size()) + ",\"Item\":[" + items + "],\"Setup\":" +
         std::to_string(setup) + "}";
}

// Steps on one device, in order: each reads back what the steps before left.
TEST_F(AreaTerminals, UpdateAppendModify) {
  const struct {
    const char* what;
    int command;
    std::string param;
    int result;
    std::string circles;
  } steps[] = {
      {"update stores", kCircles, Circles(0, {{1, 100}, {2, 200}}), 0, "1:100 2:200 "},
      {"append adds and replaces", kCircles, Circles(1, {{2, 250}, {3, 300}}), 0, "1:100 2:250 3:300 "},
      {"modify replaces held ids only", kCircles, Circles(2, {{3, 350}, {4, 400}}), 0, "1:100 2:250 3:350 "},
      {"rectangles are another kind", kRectangles, Circles(0, {{9, 0}}), 0, "1:100 2:250 3:350 "},
      {"update replaces the kind", kCircles, Circles(0, {{5, 500}}), 0, "5:500 "},
      {"no items: update empties", kCircles, R"({"Count":1,"Setup":0})", 0, ""},
      {"unknown setup", kCircles, Circles(3, {{6, 1}}), 2, ""},
      {"an item without id", kCircles, R"({"Count":1,"Item":[{"Radius":5}],"Setup":1})", 2, ""},
      {"not an object", kCircles, "", 2, ""},
  };
  for (const auto& s : steps) {
    EXPECT_EQ(Ask("91001", s.command, s.param), s.result) << s.what;
    EXPECT_EQ(Ids("91001", kCircles), s.circles) << s.what;
  }
  EXPECT_EQ(Ids("91001", kRectangles), "9:0 ");
  EXPECT_EQ(Ids("91002", kCircles), "") << "each device keeps its own";
}

TEST_F(AreaTerminals, EditionKeysKeptOnlyBy2019Terminals) {
  for (const char* dev : {"91001", "91002"}) {
    ASSERT_EQ(Ask(dev, kCircles, Circles(0, {{1, 100}})), 0);
    const Json::Value area = hostref::terminals::StoredAreas(dev, kCircles).at(1);
    EXPECT_EQ(area.isMember("NMSPD") && area.isMember("ANAME"), std::string(dev) == "91002") << dev;
  }
}

TEST_F(AreaTerminals, PolygonsAddOrReplaceOneById) {
  EXPECT_EQ(Ask("91001", kPolygon, R"({"ID":7,"PCT":1,"PAR":[{"WD":1,"JD":2}]})"), 0);
  EXPECT_EQ(Ask("91001", kPolygon, R"({"ID":8,"PCT":0})"), 0);
  EXPECT_EQ(Ask("91001", kPolygon, R"({"ID":7,"PCT":0})"), 0);
  EXPECT_EQ(Ask("91001", kPolygon, R"({"PCT":0})"), 2) << "a polygon without id";
  const auto stored = hostref::terminals::StoredAreas("91001", kPolygon);
  ASSERT_EQ(stored.size(), 2u);
  EXPECT_EQ(stored.at(7)["PCT"].asInt(), 0);
}

}  // namespace
