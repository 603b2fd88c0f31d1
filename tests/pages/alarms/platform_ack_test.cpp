// The pages that answer the superior platform: their 600-byte records, the
// outcome of an answer, and the supervision page's walk through its alarms.
#include <algorithm>

#include "command/device_caps.h"
#include "platform/loop.h"
#include "host/ref/hostref.h"
#include "pages/alarms/alarm_fixture.h"
#include "pages/alarms/alarm_supervise.h"
#include "pages/alarms/handle_report.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using P = CPlatformAckPage;
namespace net = hostref::net;

namespace {

class PlatformAckTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    net::ClearAlarmRequests();
  }
  std::vector<std::vector<uint8_t>> Send(PageHarness& page) {
    net::ClearAlarmRequests();
    page.Click(ctl::Set);
    EXPECT_TRUE(Settle());
    std::vector<std::vector<uint8_t>> records;
    for (const auto& request : net::AlarmRequests()) records.push_back(request.record);
    return records;
  }
  static size_t Count(const TestHost& host, UINT message) {
    return static_cast<size_t>(std::count(host.messages.begin(), host.messages.end(), message));
  }
  // The page's own device, as the host's message 9 loads it.
  static void UseOwnDevice(PageHarness& page, int devId) { page.Page().LoadOwnCaps(devId); }
  AlarmList alarms;
};

TEST_F(PlatformAckTest, HandlingReportRecord) {
  Json::Value alarm = Alarm("ignored", "guid-report");
  alarm["text"] = "SBAC=PC-7,more";
  alarm["msgId"] = 321;
  alarm["type"] = 4;
  alarm["type2"] = 4;  // the same type: the first stands
  alarms.Add(alarm);
  PageHarness page(CDlgAlarmHandleReport::kFunctionType);
  alarms.GiveTo(page.Page());
  UseOwnDevice(page, 2);
  page.Page().ShowContextData();
  EXPECT_EQ(page.Text(P::kMessageId), "321");
  page.Select(P::kResultCombo, 2);
  const auto records = Send(page);
  ASSERT_EQ(records.size(), 1u);
  const auto& r = records[0];
  ASSERT_EQ(r.size(), kAck809RecordSize);
  EXPECT_EQ(TextAt(r, 0, 36), "91002");
  EXPECT_EQ(U16At(r, 36), 0);
  EXPECT_EQ(U16At(r, 38), 4);
  EXPECT_EQ(U32At(r, 40), 321u);
  EXPECT_EQ(TextAt(r, 436, 40), "PC-7");
  EXPECT_EQ(TextAt(r, 520, 36), "guid-report");
  EXPECT_EQ(U32At(r, 556), 3u);
  EXPECT_EQ(U32At(r, 560), 2u);
  EXPECT_EQ(U32At(r, 588), 0u);
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(11008)});
  EXPECT_EQ(Count(page.Host(), msg::ClosePage), 1u) << "closes on success";
}

TEST_F(PlatformAckTest, ReportOutcomes) {
  struct Case {
    const char* what;
    bool withAlarm;
    const char* reply;  // of the page's device, null: default
    std::string tip;
    size_t closes;
  };
  const Case cases[] = {
      {"no alarm", false, nullptr, P::kNoAlarmTip, 0},
      {"failed", true, R"({"result":3})", IDIRErrorString(3), 0},
      {"succeeded", true, nullptr, T(11008), 1},
  };
  for (const Case& c : cases) {
    hostref::ClearTips();
    net::Reset();
    if (c.reply) net::SetReply("91001", c.reply);
    PageHarness page(CDlgAlarmHandleReport::kFunctionType);
    AlarmList list;
    if (c.withAlarm) list.Add(Alarm("91001", "g"));
    list.GiveTo(page.Page());
    UseOwnDevice(page, 1);
    Send(page);
    EXPECT_EQ(TipTexts(), std::vector<std::string>{c.tip}) << c.what;
    EXPECT_EQ(Count(page.Host(), msg::ClosePage), c.closes) << c.what;
    EXPECT_TRUE(page.Enabled(P::kResultCombo)) << c.what;
  }
  PageHarness plain(CDlgAlarmHandleReport::kFunctionType);
  EXPECT_FALSE(plain.Shown(CHandleReportPage::kMeasureCombo));
}

TEST_F(PlatformAckTest, SecondFormCombinesItsTwoLists) {
  alarms.Add(Alarm("91003", "guid-sb"));
  PageHarness page(CDlgAlarmHandleReportSb::kFunctionType);
  alarms.GiveTo(page.Page());
  page.Page().ShowContextData();
  EXPECT_EQ(page.Text(P::kMessageIdLabel), T(CDlgAlarmHandleReportSb::kTextGuid));
  EXPECT_EQ(page.Text(P::kMessageId), "guid-sb");
  page.Type(P::kMessageId, "guid-sb-typed");
  page.Select(P::kResultCombo, 1);
  page.Select(CHandleReportPage::kMeasureCombo, 3);
  UseOwnDevice(page, 3);
  const auto records = Send(page);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(TextAt(records[0], 0, 36), "91003");
  EXPECT_EQ(TextAt(records[0], 520, 36), "guid-sb-typed");
  EXPECT_EQ(U32At(records[0], 556), 4u);
  EXPECT_EQ(U32At(records[0], 560), (3u << 16) | 1u);
  EXPECT_EQ(U16At(records[0], 38), 0) << "the type is the first form's";
}

TEST_F(PlatformAckTest, SupervisionAnswersEveryAlarmInTurn) {
  struct Alarmed {
    const char* text;
    uint16_t number;
    uint32_t time;
  };
  const Alarmed cases[] = {{"head|b;7", 7, 0}, {"head|b;7;c", 7, 0x5566}, {"no bar;9", 0, 0}, {"", 0, 0}};
  for (const Alarmed& c : cases) {
    Json::Value alarm = Alarm("91004", "sup");
    alarm["text"] = c.text;
    alarm["info"] = 0x1301;
    alarm["time"] = 0x5566;
    alarms.Add(alarm);
  }
  PageHarness page(CDlgAlarmSupervise::kFunctionType);
  alarms.GiveTo(page.Page());
  page.Page().ShowContextData();
  EXPECT_EQ(page.Text(P::kContent), GetJT809AlarmDesc(&alarms[0]));
  page.Select(P::kResultCombo, 1);
  const auto records = Send(page);
  ASSERT_EQ(records.size(), 4u) << "one after the other";
  for (size_t i = 0; i < 4; ++i) {
    const auto& r = records[i];
    EXPECT_EQ(TextAt(r, 0, 36), "91004") << cases[i].text;
    EXPECT_EQ(U16At(r, 36), cases[i].number) << cases[i].text;
    EXPECT_EQ(U32At(r, 40), 0x1301u) << cases[i].text;
    EXPECT_EQ(U32At(r, 556), 2u) << cases[i].text;
    EXPECT_EQ(U32At(r, 560), 1u) << cases[i].text;
    EXPECT_EQ(U32At(r, 588), cases[i].time) << cases[i].text;
  }
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(11008)}) << "one tip at the end";
  EXPECT_EQ(Count(page.Host(), msg::SupervisionAnswered), 1u);
  EXPECT_EQ(Count(page.Host(), msg::ClosePage), 0u);
}

TEST_F(PlatformAckTest, SupervisionReportsOnlyTheLastAnswer) {
  alarms.Add(Alarm("91001", "a")).Add(Alarm("91002", "b"));
  net::SetStatus("91001", 101);
  PageHarness page(CDlgAlarmSupervise::kFunctionType);
  alarms.GiveTo(page.Page());
  EXPECT_EQ(Send(page).size(), 2u);
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(11008)}) << "the first failure is not shown";
  net::SetStatus("91002", 110);
  hostref::ClearTips();
  Send(page);
  EXPECT_EQ(TipTexts(), std::vector<std::string>{IDIRErrorString(110)});
  EXPECT_TRUE(page.Enabled(ctl::Set));
}

TEST_F(PlatformAckTest, DestroyedWhileAnAnswerIsOutstanding) {
  alarms.Add(Alarm("91001", "a"));
  net::SetHeld(true);
  {
    PageHarness page(CDlgAlarmSupervise::kFunctionType);
    alarms.GiveTo(page.Page());
    page.Click(ctl::Set);
    plat::MessageLoop::Instance().RunPending();
    ASSERT_EQ(net::HeldCount(), 1u);
  }
  EXPECT_EQ(net::HeldCount(), 0u);
}

}  // namespace
