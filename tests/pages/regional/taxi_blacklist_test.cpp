// The taxi IC card blacklist: cards split at commas, 75 to a request, clear all, descriptions.
#include <algorithm>

#include "host/hostcore.h"
#include "text/json.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "pages/regional/taxi_blacklist.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using C = CDlgTaxiIcBlacklist;

namespace {

std::string Cards(int n) {
  std::string text;
  for (int i = 1; i <= n; ++i) text += (i > 1 ? "," : "") + std::to_string(i);
  return text;
}

class TaxiBlacklistTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    hostref::terminals::Clear();
    hostref::terminals::Install();
    page = std::make_unique<PageHarness>(C::kFunctionType);
    ASSERT_TRUE(page->IsOpen());
    page->UseDevice(1);
  }
  void TearDown() override {
    page.reset();
    hostref::terminals::Uninstall();
    PageWorld::TearDown();
  }
  std::unique_ptr<PageHarness> page;
};

TEST_F(TaxiBlacklistTest, CardsOnTheWire) {
  struct Case {
    const char* what;
    std::string typed;
    std::string param;
  };
  const Case cases[] = {
      {"two commas in a row", "A1,,B2", R"({"Count":2,"icItem":["A1","B2"]})"},
      {"full-width commas, no trimming", "A1，B2 ,", R"({"Count":2,"icItem":["A1","B2 "]})"},
      {"one card", "X", R"({"Count":1,"icItem":["X"]})"},
  };
  for (const Case& c : cases) {
    page->Page().SetItemText(C::kCards, c.typed);
    EXPECT_EQ(page->Send(ctl::Set), c.param) << c.what;
  }
}

TEST_F(TaxiBlacklistTest, SeventyFiveCardsARequest) {
  struct Case {
    int cards;
    std::vector<size_t> counts;
  };
  const Case cases[] = {{75, {75}}, {76, {75, 1}}, {160, {75, 75, 10}}};
  for (const Case& c : cases) {
    page->Page().SetItemText(C::kCards, Cards(c.cards));
    page->Send(ctl::Set);
    std::vector<size_t> counts;
    for (const std::string& param : page->Params()) {
      Json::Value value;
      ASSERT_TRUE(txt::ParseJson(param, value));
      counts.push_back(value["icItem"].size());
      EXPECT_EQ(value["Count"].asUInt(), value["icItem"].size());
    }
    EXPECT_EQ(counts, c.counts) << c.cards;
  }
  EXPECT_EQ(hostref::terminals::Blacklist("91001").size(), 75u + 76u + 160u) << "the terminal keeps every card";
  // Each row describes its own batch: the three of the last send, in the order their answers came.
  std::vector<std::string> rows;
  for (int row = 0; row < 3; ++row) rows.push_back(page->Cell(row, kColDescription));
  EXPECT_NE(std::find(rows.begin(), rows.end(), FormatChineseColon(T(C::kTextCards), "151152153154155156157158159160")),
            rows.end());
}

TEST_F(TaxiBlacklistTest, ClearAllAndTheEmptyList) {
  page->Page().SetItemText(C::kCards, ",，,");
  EXPECT_EQ(page->Send(ctl::Set), "");
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(C::kTextCards) + T(12703)});
  page->Page().SetItemText(C::kCards, "A1");
  page->Send(ctl::Set);
  page->Click(C::kClearAll);
  EXPECT_FALSE(page->Enabled(C::kCards));
  EXPECT_EQ(page->Send(ctl::Set), R"({"Count":0,"icItem":[]})");
  EXPECT_EQ(page->Cell(0, kColDescription), T(C::kTextClearAll));
  EXPECT_TRUE(hostref::terminals::Blacklist("91001").empty()) << "cleared on the terminal";
  EXPECT_FALSE(page->Enabled(C::kCards)) << "stays disabled after the send while clear all is checked";
}

}  // namespace
