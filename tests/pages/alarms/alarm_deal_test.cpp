// The handling-text page: its checks, its record for each alarm, its two modes.
#include "host/ref/hostref.h"
#include "pages/alarms/alarm_deal.h"
#include "pages/alarms/alarm_fixture.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using C = CDlgAlarmDeal;
namespace net = hostref::net;

namespace {

class AlarmDealTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    net::ClearAlarmRequests();
    Json::Value first = Alarm("91001", "g-1");
    first["type"] = 5;
    first["type2"] = 9;
    first["time"] = 0x100;
    first["time2"] = 0x240;  // low six bits clear: the first time stands in
    Json::Value second = Alarm("91002", "g-2");
    second["time"] = 0x100;
    second["time2"] = 0x241;
    alarms.Add(first).Add(second);
  }
  std::vector<std::vector<uint8_t>> Send(PageHarness& page, const std::string& text) {
    net::ClearAlarmRequests();
    page.Page().SetItemText(C::kTextEdit, text);
    page.Click(ctl::Set);
    EXPECT_TRUE(Settle());
    std::vector<std::vector<uint8_t>> records;
    for (const auto& request : net::AlarmRequests()) records.push_back(request.record);
    return records;
  }
  AlarmList alarms;
};

TEST_F(AlarmDealTest, RefusesABarBeforeAnEmptyText) {
  PageHarness page(C::kFunctionType);
  alarms.GiveTo(page.Page());
  const std::pair<std::string, std::string> cases[] = {{"", T(12944)}, {"a|", T(12943)}, {"|", T(12943)}};
  for (const auto& [text, tip] : cases) {
    hostref::ClearTips();
    EXPECT_TRUE(Send(page, text).empty()) << text;
    EXPECT_EQ(TipTexts(), std::vector<std::string>{tip}) << text;
    EXPECT_TRUE(page.Enabled(ctl::Set)) << text;
  }
}

TEST_F(AlarmDealTest, OneRecordPerAlarmWithTheDefaultWay) {
  PageHarness page(C::kFunctionType);
  alarms.GiveTo(page.Page());
  const auto records = Send(page, "已处理");
  ASSERT_EQ(records.size(), 2u);
  const auto& r = records[0];
  ASSERT_EQ(r.size(), kDevHandleRecordSize);
  EXPECT_EQ(TextAt(r, C::kRecText, C::kRecTextBytes), "已处理");
  EXPECT_EQ(U32At(r, C::kRecWay), 1u) << "nothing selected: way 1";
  EXPECT_EQ(TextAt(r, C::kRecGuid, 40), "g-1");
  EXPECT_EQ(TextAt(r, C::kRecDevIdno, 32), "91001");
  EXPECT_EQ(U16At(r, C::kRecType), 5);
  EXPECT_EQ(U16At(r, C::kRecSecondType), 9);
  EXPECT_EQ(U32At(r, C::kRecTime), 0x100u);
  EXPECT_EQ(U32At(r, C::kRecSecondTime), 0x100u) << "low six bits clear";
  EXPECT_EQ(U32At(records[1], C::kRecSecondTime), 0x241u);
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(11008)});
  EXPECT_EQ(hostref::HandleLog().back().text, "已处理");
  EXPECT_EQ(page.Rows(), 0) << "no result list";
}

TEST_F(AlarmDealTest, TheSecondModeOffersTheWay) {
  PageHarness single(C::kFunctionType);
  EXPECT_FALSE(single.Shown(C::kWayCombo));
  PageHarness batch(C::kFunctionTypeBatch);
  ASSERT_TRUE(batch.As<C>().SecondMode());
  EXPECT_TRUE(batch.Shown(C::kWayCombo));
  alarms.GiveTo(batch.Page());
  batch.Select(C::kWayCombo, 4);
  const auto records = Send(batch, "x");
  ASSERT_FALSE(records.empty());
  EXPECT_EQ(U32At(records[0], C::kRecWay), 5u);
}

TEST_F(AlarmDealTest, AFailedAnswerStillEndsTheRun) {
  PageHarness page(C::kFunctionType);
  alarms.GiveTo(page.Page());
  net::SetStatus("91001", 110);
  EXPECT_EQ(Send(page, "x").size(), 2u) << "the next alarm still goes";
  EXPECT_TRUE(page.Enabled(ctl::Set));
}

}  // namespace
