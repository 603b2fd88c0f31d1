// The stored area list: the rows and description of an answer, deleting the
// checked rows a hundred ids of one kind to a request with each request's
// own command, deleting everything, and the choose-first tip.
#include <set>

#include "area_support.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/areas/query_area_info.h"

using areatest::Parse;
using fixture::T;
using I = CDlgQueryAreaInfo;

namespace {

class QueryAreaInfo : public AreaPageTest {
 protected:
  void SetUp() override {
    AreaPageTest::SetUp();
    Open(I::kFunctionType);
  }
  plat::ListView& List() { return *page->Page().Item<plat::ListView>(I::kList); }
  // The device answers the list query with these (id, type) items.
  void Listed(const std::vector<std::pair<int, int>>& items) {
    std::string list;
    for (auto [id, type] : items)
      list += (list.empty() ? "" : ",") + std::string("{\"ID\":") + std::to_string(id) + ",\"Type\":" + std::to_string(type) + "}";
    hostref::net::SetReply("91001", "{\"Item\":[" + list + "]}");
    page->Send(ctl::Get);
  }
  // The command of each request sent since the last send.
  static std::vector<int> Commands() {
    std::vector<int> commands;
    for (const auto& sent : hostref::net::Sent()) commands.push_back(Parse(sent.envelope)["Command"].asInt());
    return commands;
  }
};

TEST_F(QueryAreaInfo, AnswerBecomesRowsAndDescription) {
  Listed({{5, 1}, {4294967, 3}, {7, 4}, {8, 9}});
  EXPECT_EQ(hostref::net::Sent().at(0).param, "") << "the query has no parameters";
  ASSERT_EQ(List().GetItemCount(), 4);
  const std::string rows[][3] = {{"1", "5", T(12651)}, {"2", "4294967", T(12653)}, {"3", "7", T(12654)}, {"4", "8", ""}};
  for (int r = 0; r < 4; ++r) {
    for (int c = 0; c < 3; ++c) EXPECT_EQ(List().GetItemText(r, c), rows[r][c]) << r << "," << c;
  }
  EXPECT_EQ(page->Cell(0, kColDescription), "数量:4;ID1:5,Type1:1;ID2:4294967,Type2:3;ID3:7,Type3:4;ID4:8,Type4:9");
  Listed({{1, 2}});
  EXPECT_EQ(List().GetItemCount(), 1) << "a new query empties the list";
}

TEST_F(QueryAreaInfo, ChosenRowsAHundredOfAKindToARequest) {
  std::vector<std::pair<int, int>> items;
  for (int i = 0; i < 10; ++i) items.push_back({900 + i, 4});
  for (int i = 0; i < 250; ++i) items.push_back({i, 1});
  items.push_back({77, 2});  // not checked
  Listed(items);
  for (int row = 0; row < 260; ++row) List().UserClick(row);
  List().UserClick(3), List().UserClick(3);  // twice: checked again
  page->Pick({1});
  page->Send(ctl::Set);
  EXPECT_EQ(Commands(), (std::vector<int>{0x8601, 0x8601, 0x8601, 0x8607}));
  const auto params = page->Params();
  ASSERT_EQ(params.size(), 4u);
  const int counts[] = {100, 100, 50, 10};
  for (size_t i = 0; i < 4; ++i) EXPECT_EQ(Parse(params[i])["Count"].asInt(), counts[i]) << i;
  EXPECT_EQ(Parse(params[1])["Item"][0]["ID"].asInt(), 100);
  EXPECT_EQ(Parse(params[3])["Item"][9]["ID"].asInt(), 909);
  std::set<std::string> rows;
  for (int row = 0; row < 4; ++row) rows.insert(page->Cell(row, kColDescription));  // above the query's row
  EXPECT_EQ(rows.size(), 4u);
  EXPECT_EQ(rows.count("删除指定区域,类型=" + T(12654) + ",ID=900,901,902,903,904,905,906,907,908,909"), 1u);
  EXPECT_EQ(hostref::Tips().at(0).text, "是否删除选中的 260 个区域?\r\n" + FormatChineseColon(T(12651), "250") + "\r\n" +
                                            FormatChineseColon(T(12654), "10"));
}

TEST_F(QueryAreaInfo, DeleteAllSendsEachKindWithCountZero) {
  Listed({{1, 1}});
  page->Click(I::kDeleteAll);
  page->Pick({1});
  page->Send(ctl::Set);
  EXPECT_EQ(Commands(), (std::vector<int>{0x8601, 0x8603, 0x8605, 0x8607}));
  EXPECT_EQ(page->Params(), std::vector<std::string>(4, R"({"Count":0})"));
  std::set<std::string> rows;
  for (int row = 0; row < 4; ++row) rows.insert(page->Cell(row, kColDescription));  // above the query's row
  EXPECT_EQ(rows, (std::set<std::string>{"删除全部区域,类型=" + T(12651), "删除全部区域,类型=" + T(12652),
                                         "删除全部区域,类型=" + T(12653), "删除全部区域,类型=" + T(12654)}));
}

TEST_F(QueryAreaInfo, NothingCheckedNothingSent) {
  Listed({{1, 1}, {2, 2}});
  hostref::ClearTips();
  page->Pick({1});
  page->Send(ctl::Set);
  EXPECT_TRUE(page->Params().empty());
  EXPECT_EQ(TipTexts(), std::vector<std::string>{"请先选择需要删除的区域!"});
}

}  // namespace
