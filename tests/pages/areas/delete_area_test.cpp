// Deleting areas and routes: the ids as typed, a hundred to a request, delete
// all, the route texts, the empty-list tip and the descriptions.
#include "area_support.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/areas/delete_area.h"

using areatest::Parse;
using fixture::T;
using D = CDlgDeleteArea;

namespace {

TEST(AreaIds, ParsedAsTyped) {
  const struct {
    const char* text;
    std::vector<int32_t> ids;
  } cases[] = {
      {"3，1,2,,2", {1, 2, 2, 3}}, {"", {}}, {",,", {}}, {"x,5", {0, 5}}, {" 7 ,-1", {-1, 7}}, {"12，，9", {9, 12}},
  };
  for (const auto& c : cases) EXPECT_EQ(ParseAreaIds(c.text), c.ids) << c.text;
}

std::string Ids(int from, int to) {
  std::string text;
  for (int id = from; id <= to; ++id) text += std::to_string(id) + ",";
  return text;
}

using DeleteArea = AreaPageTest;

TEST_F(DeleteArea, AHundredIdsToARequest) {
  const struct {
    int ids;
    std::vector<int> counts;  // per device
  } cases[] = {{4, {4}}, {100, {100}}, {101, {100, 1}}, {250, {100, 100, 50}}};
  for (const auto& c : cases) {
    Open(D::kTypeCircles);
    page->Type(D::kIdEdit, Ids(1, c.ids));
    const auto sent = SendTo({1, 3});
    ASSERT_EQ(sent.size(), 2 * c.counts.size()) << c.ids;
    for (size_t i = 0; i < sent.size(); ++i) {
      const Json::Value param = Parse(sent[i]);
      const int count = c.counts[i % c.counts.size()];
      EXPECT_EQ(param["Count"].asInt(), count) << c.ids << " request " << i;
      ASSERT_EQ(static_cast<int>(param["Item"].size()), count) << c.ids << " request " << i;
      EXPECT_EQ(param["Item"][0]["ID"].asInt(), 1 + 100 * static_cast<int>(i % c.counts.size())) << c.ids;
    }
    EXPECT_EQ(page->Rows(), 2 * static_cast<int>(c.counts.size())) << "a row per request";
  }
}

TEST_F(DeleteArea, EachFunctionDeletesItsKind) {
  const struct {
    int type;
    int32_t command;
    int idLabel, allText;
  } cases[] = {{D::kTypeCircles, 0x8601, 12001, 12804}, {D::kTypeRectangles, 0x8603, 12001, 12804},
               {D::kTypePolygons, 0x8605, 12001, 12804}, {D::kTypeRoutes, 0x8607, 12000, 12805}};
  for (const auto& c : cases) {
    Open(c.type);
    EXPECT_EQ(page->Text(D::kIdLabel), T(c.idLabel)) << c.type;
    EXPECT_EQ(page->Text(D::kDeleteAll), T(c.allText)) << c.type;
    page->Type(D::kIdEdit, "9,8");
    ASSERT_EQ(SendTo({1}), std::vector<std::string>{R"({"Count":2,"Item":[{"ID":8},{"ID":9}]})"}) << c.type;
    EXPECT_EQ(hostref::net::Sent()[0].envelope.find("\"Command\":" + std::to_string(c.command)) != std::string::npos,
              true)
        << c.type;
    EXPECT_EQ(page->Cell(0, kColDescription), FormatChineseColon(T(c.idLabel), "8,9")) << c.type;
    // Delete all: no ids, whatever the edit holds, and the edit disabled.
    page->Click(D::kDeleteAll);
    EXPECT_FALSE(page->Enabled(D::kIdEdit));
    EXPECT_EQ(SendTo({1, 3}), (std::vector<std::string>{R"({"Count":0})", R"({"Count":0})"})) << c.type;
    EXPECT_EQ(page->Cell(0, kColDescription), T(c.allText)) << c.type;
    EXPECT_FALSE(page->Enabled(D::kIdEdit)) << "still disabled after the send";
  }
}

TEST_F(DeleteArea, NoIdsNoSend) {
  for (int type : {D::kTypePolygons, D::kTypeRoutes}) {
    Open(type);
    hostref::ClearTips();
    page->Type(D::kIdEdit, ",，,");
    EXPECT_TRUE(SendTo({1}).empty()) << type;
    EXPECT_EQ(TipTexts(), std::vector<std::string>{T(type == D::kTypeRoutes ? 12000 : 12001) + T(12703)}) << type;
  }
}

}  // namespace
