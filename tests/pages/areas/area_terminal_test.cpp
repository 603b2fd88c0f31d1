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

constexpr int kCircles = 0x8600, kRectangles = 0x8602, kPolygon = 0x8604, kRoute = 0x8606;
constexpr int kDeleteCircles = 0x8601, kDeleteRoutes = 0x8607, kQuery = 0x8608, kList = 0x86FE;

class AreaTerminals : public TerminalWorld {
 protected:
  void SetUp() override {
    TerminalWorld::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001"}]},
      {"name":"B","devices":[{"id":2,"idno":"91002","attrs":{"80":1}}]}]})"));
  }
  // The "result" a device answers to a command with a parameter text.
  int Ask(const std::string& dev, int command, const std::string& param) {
    Json::Value value = Reply(dev, command, param);
    return txt::JsonMemberInt(value, "result", -1);
  }
  Json::Value Reply(const std::string& dev, int command, const std::string& param) {
    return TerminalWorld::Ask(dev, command, param);
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

TEST_F(AreaTerminals, DeleteByIdOrAll) {
  ASSERT_EQ(Ask("91001", kCircles, Circles(0, {{1, 1}, {2, 2}, {3, 3}})), 0);
  ASSERT_EQ(Ask("91001", kRoute, R"({"ID":9,"PCT":0})"), 0);
  EXPECT_EQ(Ask("91001", kDeleteCircles, R"({"Count":2,"Item":[{"ID":3},{"ID":7}]})"), 0);
  EXPECT_EQ(Ids("91001", kCircles), "1:1 2:2 ") << "an id not held is no fault";
  EXPECT_EQ(Ask("91001", kDeleteCircles, R"({"Item":[]})"), 2) << "no count";
  EXPECT_EQ(Ask("91001", kDeleteCircles, R"({"Count":0})"), 0);
  EXPECT_EQ(Ids("91001", kCircles), "");
  EXPECT_EQ(hostref::terminals::StoredAreas("91001", kRoute).size(), 1u) << "routes are another kind";
  EXPECT_EQ(Ask("91001", kDeleteRoutes, R"({"Count":1,"Item":[{"ID":9}]})"), 0);
  EXPECT_TRUE(hostref::terminals::StoredAreas("91001", kRoute).empty());
}

TEST_F(AreaTerminals, QueryAnswersFromWhatIsHeld) {
  std::initializer_list<std::pair<int, int>> twelve = {{1, 1}, {2, 1}, {3, 1}, {4, 1}, {5, 1}, {6, 1},
                                                       {7, 1}, {8, 1}, {9, 1}, {10, 1}, {11, 1}, {12, 1}};
  ASSERT_EQ(Ask("91002", kCircles, Circles(0, twelve)), 0);
  ASSERT_EQ(Ask("91002", kCircles, R"({"Setup":1,"Item":[{"ID":20,"BTM":"260501080000","ETM":"000000183000"}]})"), 0);
  const Json::Value all = Reply("91002", kQuery, R"({"ATPYE":1,"IDS":""})");
  EXPECT_EQ(all["ATPYE"].asInt(), 1);
  ASSERT_EQ(all["Count"].asInt(), 2) << "ten circles to a packet";
  EXPECT_EQ(all["Item"][0]["Count"].asInt(), 10);
  EXPECT_EQ(all["Item"][1]["Count"].asInt(), 3);
  EXPECT_EQ(all["Item"][1]["Item"][2]["BTM"].asString(), "2026-05-01 08:00:00");
  EXPECT_EQ(all["Item"][1]["Item"][2]["ETM"].asString(), "2000-00-00 18:30:00");
  const Json::Value some = Reply("91002", kQuery, R"({"ATPYE":1,"IDS":"20,3,99,x"})");
  ASSERT_EQ(some["Count"].asInt(), 1);
  EXPECT_EQ(some["Item"][0]["Item"][0]["ID"].asInt(), 20);
  EXPECT_EQ(some["Item"][0]["Item"][1]["ID"].asInt(), 3);
  EXPECT_EQ(Reply("91002", kQuery, R"({"ATPYE":4,"IDS":""})")["Count"].asInt(), 0);
  EXPECT_EQ(Ask("91002", kQuery, R"({"ATPYE":5})"), 2);
  EXPECT_EQ(Ask("91001", kQuery, R"({"ATPYE":1})"), 3) << "a 2013 terminal does not know the query";
}

TEST_F(AreaTerminals, StoredListOfEveryKind) {
  ASSERT_EQ(Ask("91001", kCircles, Circles(0, {{1, 1}})), 0);
  ASSERT_EQ(Ask("91001", kPolygon, R"({"ID":4})"), 0);
  ASSERT_EQ(Ask("91001", kRoute, R"({"ID":4})"), 0);
  const Json::Value list = Reply("91001", kList, "");
  EXPECT_EQ(txt::WriteCompactJson(list["Item"]), R"([{"ID":1,"Type":1},{"ID":4,"Type":3},{"ID":4,"Type":4}])");
}

}  // namespace
