// The one-step alarm handling page: the 512-byte record of each alarm, the
// checks in their order, devices served once, the host's messages and log.
#include "host/ref/hostref.h"
#include "platform/menu.h"
#include "pages/alarms/new_alarm_deal.h"
#include "pages/alarms/alarm_fixture.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using C = CDlgNewAlarmDeal;
namespace net = hostref::net;

namespace {

class NewAlarmDealTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    hostref::SetLayout(true, true, false, true);
    net::ClearAlarmRequests();
    page = std::make_unique<PageHarness>(C::kFunctionType);
    ASSERT_TRUE(page->IsOpen());
    Json::Value first = Alarm("91001", "guid-1");
    first["text"] = "SB809AC=CODE9,rest";
    first["msgId"] = 0x4321;
    first["time"] = 1000;
    first["type"] = 2;
    first["time2"] = 2000;
    first["type2"] = 7;
    alarms.Add(first).Add(Alarm("91001", "guid-2")).Add(Alarm("91002", "guid-3"));
    alarms.GiveTo(page->Page());
  }
  void TearDown() override {
    page.reset();
    hostref::SetLayout(false, false, false, false);
    hostref::SetSBUploadAlarm(false);
    PageWorld::TearDown();
  }
  // Only these operation boxes checked.
  void CheckOperations(std::initializer_list<int> boxes) {
    for (int box : {C::kSendCheck, C::kHandleCheck, C::kReportCheck, C::kClearCheck}) page->Page().SetChecked(box, false);
    for (int box : boxes) page->Page().SetChecked(box, true);
  }
  std::vector<std::vector<uint8_t>> Run(int button) {
    net::ClearAlarmRequests();
    page->Click(button);
    EXPECT_TRUE(Settle());
    std::vector<std::vector<uint8_t>> records;
    for (const auto& request : net::AlarmRequests()) records.push_back(request.record);
    return records;
  }
  int WayIndex(int way) { return page->Page().Item<plat::ComboBox>(C::kWayCombo)->FindItemData(way); }
  std::unique_ptr<PageHarness> page;
  AlarmList alarms;
};

TEST_F(NewAlarmDealTest, TheHandlingRecordByteForByte) {
  hostref::SetSBUploadAlarm(true);
  page->Type(C::kTextEdit, "处理完毕");
  page->Page().SetChecked(C::kTts, true);
  page->Page().SetChecked(C::kUrgent, true);
  page->Select(C::kWayCombo, WayIndex(3));
  page->Select(C::kReportCombo, 2);
  const auto records = Run(C::kHandleButton);
  ASSERT_EQ(records.size(), 3u) << "one request per alarm";
  const auto& r = records[0];
  ASSERT_EQ(r.size(), kAlarmHandleRecordSize);
  EXPECT_EQ(U32At(r, 0), C::kOpHandle);
  EXPECT_EQ(U32At(r, 4), 0u);
  EXPECT_EQ(U32At(r, 8), 0u) << "the report kind only when reporting";
  EXPECT_EQ(U32At(r, 12), 1u | 8u);
  EXPECT_EQ(TextAt(r, 16, 256), "处理完毕");
  EXPECT_EQ(U32At(r, 272), 3u);
  EXPECT_EQ(TextAt(r, 276, 40), "guid-1");
  EXPECT_EQ(TextAt(r, 316, 32), "91001");
  EXPECT_EQ(U32At(r, 348), 2000u) << "the second type's time";
  EXPECT_EQ(U32At(r, 352), 7u) << "the second type, set and different";
  EXPECT_EQ(U32At(r, 356), 0x4321u);
  EXPECT_EQ(TextAt(r, 360, 40), "CODE9");
  EXPECT_EQ(TextAt(r, 400, 40), "");
  for (size_t i = 440; i < 512; ++i) ASSERT_EQ(r[i], 0) << i;
  EXPECT_EQ(TextAt(records[2], 276, 40), "guid-3");
  EXPECT_EQ(U32At(records[2], 352), 0u);
}

TEST_F(NewAlarmDealTest, ChecksInTheirOrder) {
  struct Case {
    const char* what;
    int button;
    std::string text;
    int way, report;  // data to select, -1: none
    std::string tip;
  };
  const Case cases[] = {
      {"no text for a message", C::kSendButton, "", -1, -1, T(C::kTextNoText)},
      {"a bar in the text", C::kHandleButton, "a|b", -1, -1, T(C::kTextBar)},
      {"no handling way", C::kHandleButton, "ok", -1, -1, T(C::kTextNoWay)},
      {"no report kind", C::kReportButton, "", -1, -1, T(C::kTextNoReport)},
      {"clearing needs nothing", C::kClearButton, "", -1, -1, T(11008)},
  };
  for (const Case& c : cases) {
    hostref::ClearTips();
    page->Page().SetItemText(C::kTextEdit, c.text);
    page->Page().Item<plat::ComboBox>(C::kWayCombo)->SetCurSel(-1);
    page->Page().Item<plat::ComboBox>(C::kReportCombo)->SetCurSel(-1);
    const auto records = Run(c.button);
    EXPECT_EQ(TipTexts(), std::vector<std::string>{c.tip}) << c.what;
    EXPECT_EQ(records.empty(), c.tip != T(11008)) << c.what;
  }
  CheckOperations({});
  hostref::ClearTips();
  EXPECT_TRUE(Run(C::kOneKeyButton).empty());
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(C::kTextNoOperation)});
}

TEST_F(NewAlarmDealTest, MessagesAndClearingGoOncePerDevice) {
  struct Case {
    const char* what;
    std::initializer_list<int> boxes;
    std::vector<uint32_t> masks;  // of the requests made
  };
  const Case cases[] = {
      {"message and handling: the second alarm of a device is handled only", {C::kSendCheck, C::kHandleCheck}, {3, 2, 3}},
      {"message alone: no request for the second alarm", {C::kSendCheck}, {1, 1}},
      {"handling and report: every alarm", {C::kHandleCheck, C::kReportCheck}, {6, 6, 6}},
      {"everything", {C::kSendCheck, C::kHandleCheck, C::kReportCheck, C::kClearCheck}, {15, 6, 15}},
  };
  page->Type(C::kTextEdit, "text");
  page->Select(C::kWayCombo, 0);
  page->Select(C::kReportCombo, 1);
  for (const Case& c : cases) {
    CheckOperations(c.boxes);
    std::vector<uint32_t> masks;
    for (const auto& r : Run(C::kOneKeyButton)) masks.push_back(U32At(r, 0));
    EXPECT_EQ(masks, c.masks) << c.what;
    EXPECT_EQ(page->As<C>().AlarmIndex(), 3u) << c.what;
    EXPECT_TRUE(page->Enabled(C::kOneKeyButton)) << c.what;
  }
}

TEST_F(NewAlarmDealTest, TextAndReasonLimits) {
  page->Select(C::kWayCombo, WayIndex(C::kFalseAlarmWay));
  EXPECT_TRUE(page->Shown(C::kReasonCombo)) << "false alarm with reasons supported";
  page->Select(C::kReasonCombo, 1);
  const std::string exact(255, 'x');
  page->Type(C::kTextEdit, exact);
  auto records = Run(C::kHandleButton);
  ASSERT_FALSE(records.empty());
  EXPECT_EQ(TextAt(records[0], 16, 256), exact) << "255 bytes go whole";
  EXPECT_EQ(TextAt(records[0], 400, 40), "badweather");

  std::string mixed(86, 'x');
  for (int i = 0; i < 60; ++i) mixed += "中";
  page->Page().SetItemText(C::kTextEdit, mixed);
  records = Run(C::kHandleButton);
  const std::string sent = TextAt(records[0], 16, 256);
  EXPECT_EQ(sent.size(), 254u) << "cut before the character that does not fit";

  page->Select(C::kWayCombo, WayIndex(2));
  EXPECT_FALSE(page->Shown(C::kReasonCombo));
  records = Run(C::kHandleButton);
  EXPECT_EQ(TextAt(records[0], 400, 40), "") << "a reason only for a false alarm";
}

TEST_F(NewAlarmDealTest, WaysFollowTheLayoutAndReportDefaultsFollowTheServer) {
  std::vector<uint32_t> ways;
  const auto* combo = page->Page().Item<plat::ComboBox>(C::kWayCombo);
  for (int i = 0; i < combo->GetCount(); ++i) ways.push_back(combo->GetItemData(i));
  EXPECT_EQ(ways, (std::vector<uint32_t>{2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(combo->GetLBText(0), FormatStringMgr::FormatAlarmHandleStr(2));
  EXPECT_EQ(C::DefaultReportIndex(" Report.Platform.LOCAL "), 1);
  EXPECT_EQ(C::DefaultReportIndex("10.0.0.8"), 0);
  EXPECT_EQ(page->Page().Item<plat::ComboBox>(C::kReportCombo)->GetCurSel(), 0);
}

TEST_F(NewAlarmDealTest, SelectAllCoversClearingOnlyWithTheSwitch) {
  CheckOperations({});
  page->Click(C::kAllCheck);
  EXPECT_TRUE(page->Checked(C::kSendCheck) && page->Checked(C::kReportCheck));
  EXPECT_FALSE(page->Checked(C::kClearCheck));
  CConfigKestrelINI::WriteIniInt(C::kRightHandling, 1);
  page->Click(C::kAllCheck);
  page->Click(C::kAllCheck);
  EXPECT_TRUE(page->Checked(C::kClearCheck));
}

TEST_F(NewAlarmDealTest, TheHostHearsOfEachHandledAlarmAndTheLogKeepsTheRun) {
  page->Type(C::kTextEdit, "checked");
  page->Select(C::kWayCombo, WayIndex(4));
  net::SetStatus("91002", 101);
  auto& host = page->Host();
  host.messages.clear();
  host.lparams.clear();
  Run(C::kHandleButton);
  std::vector<UINT> told;
  std::vector<bool> withAnswer;
  for (size_t i = 0; i < host.messages.size(); ++i) {
    if (host.messages[i] == msg::AlarmHandled || host.messages[i] == msg::HandlingLogged) {
      told.push_back(host.messages[i]);
      withAnswer.push_back(host.lparams[i] != 0);
    }
  }
  // Before and after each alarm, then the log entry, then the end.
  EXPECT_EQ(told, (std::vector<UINT>{13318, 13318, 13318, 13318, 13318, 13318, 13319, 13318}));
  EXPECT_EQ(withAnswer, (std::vector<bool>{false, true, false, true, false, true, false, true}));
  const auto log = hostref::HandleLog();
  ASSERT_FALSE(log.empty());
  EXPECT_EQ(log.back().text, "checked");
  EXPECT_EQ(log.back().way, 4);
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(11008)});
}

TEST_F(NewAlarmDealTest, AnswersHeldArriveOneAtATime) {
  net::SetHeld(true);
  page->Type(C::kTextEdit, "x");
  CheckOperations({C::kSendCheck});
  page->Click(C::kOneKeyButton);
  plat::MessageLoop::Instance().RunPending();
  EXPECT_EQ(net::HeldCount(), 1u) << "one request at a time";
  EXPECT_FALSE(page->Enabled(C::kOneKeyButton));
  ASSERT_TRUE(net::ReleaseNext());
  plat::MessageLoop::Instance().RunPending();
  EXPECT_EQ(net::HeldCount(), 1u) << "the second alarm of 91001 made no request; the third did";
  net::SetHeld(false);
  net::ReleaseAll();
  ASSERT_TRUE(Settle());
  EXPECT_TRUE(page->Enabled(C::kOneKeyButton));
}

TEST_F(NewAlarmDealTest, WithoutAlarmsTheRunStopsAtOnce) {
  PageHarness empty(C::kFunctionType);
  empty.Type(C::kTextEdit, "x");
  empty.Click(C::kSendButton);
  ASSERT_TRUE(Settle());
  EXPECT_EQ(TipTexts(), std::vector<std::string>{C::kNoAlarmsTip});
  EXPECT_TRUE(empty.Enabled(C::kSendButton));
}

TEST_F(NewAlarmDealTest, APresetReplacesTheTextWithRealLineBreaks) {
  CConfigKestrelINI::WriteIniStrEx(718, 3, "line1\\r\\nline2");
  plat::menu::PushChoice(C::kFirstPreset + 3);
  page->Click(C::kPresetButton);
  EXPECT_EQ(page->Text(C::kTextEdit), "line1\r\nline2");
}

TEST_F(NewAlarmDealTest, DestroyedWhileAnAnswerIsOutstanding) {
  net::SetHeld(true);
  page->Type(C::kTextEdit, "x");
  page->Click(C::kSendButton);
  plat::MessageLoop::Instance().RunPending();
  ASSERT_EQ(net::HeldCount(), 1u);
  page.reset();
  EXPECT_EQ(net::HeldCount(), 0u) << "the handle was released";
}

}  // namespace
