// The check-post answer page and the inspection settings pages.
#include <algorithm>
#include <filesystem>
#include <fstream>

#include "host/hostcore.h"
#include "text/encoding.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "pages/alarms/alarm_fixture.h"
#include "pages/regional/check_post_answer.h"
#include "pages/regional/platform_check.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using C = CDlgInspection;
namespace net = hostref::net;

namespace {

class InspectionTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    net::ClearAlarmRequests();
  }
  std::vector<uint8_t> Answer(PageHarness& page, const std::string& answer) {
    net::ClearAlarmRequests();
    page.Page().SetItemText(C::kAnswer, answer);
    page.Click(ctl::Set);
    EXPECT_TRUE(Settle());
    const auto requests = net::AlarmRequests();
    return requests.empty() ? std::vector<uint8_t>{} : requests[0].record;
  }
  static Json::Value Inquiry(const std::string& text, int info) {
    Json::Value alarm = Alarm("91001", "inq-guid");
    alarm["text"] = text;
    alarm["info"] = info;
    alarm["time"] = 0x7788;
    alarm["flag"] = 0x5A;
    alarm["value"] = 0x33;
    return alarm;
  }
};

TEST_F(InspectionTest, TheRecordFromTheInquiry) {
  struct Case {
    const char* text;
    int info;
    std::string head;
    uint16_t number;
    uint32_t time, extra, kind;
  };
  const Case cases[] = {
      {"A|B;7;x;y;9", 3, "A", 7, 0x7788, 9, 7},
      {"no bar at all, long", 0, "no bar at all,", 0, 0, 0, 4},
      {"A|B;7", 1, "A", 7, 0, 0, 5},
  };
  for (const Case& c : cases) {
    AlarmList inquiry;
    inquiry.Add(Inquiry(c.text, c.info));
    PageHarness page(C::kFunctionType);
    inquiry.GiveTo(page.Page());
    const auto r = Answer(page, "张三 在岗");
    ASSERT_EQ(r.size(), kAck809RecordSize) << c.text;
    EXPECT_EQ(TextAt(r, 44, 366), txt::Utf8ToGbk("张三 在岗")) << c.text;
    EXPECT_EQ(U32At(r, 556), c.kind) << c.text;
    EXPECT_EQ(r[564], 0x5A) << c.text;
    EXPECT_EQ(TextAt(r, 565, 15), c.head) << c.text;
    EXPECT_EQ(U32At(r, 40), static_cast<uint32_t>(c.info)) << c.text;
    EXPECT_EQ(TextAt(r, 520, 36), "inq-guid") << c.text;
    EXPECT_EQ(U32At(r, 584), 0x33u) << c.text;
    EXPECT_EQ(U16At(r, 36), c.number) << c.text;
    EXPECT_EQ(U32At(r, 588), c.time) << c.text;
    EXPECT_EQ(U32At(r, 592), c.extra) << c.text;
  }
}

TEST_F(InspectionTest, WithoutAnInquiryOnlyTheAnswerAndKind) {
  PageHarness page(C::kFunctionType);
  const auto r = Answer(page, "ok");
  ASSERT_EQ(r.size(), kAck809RecordSize);
  std::vector<uint8_t> expected(kAck809RecordSize, 0);
  expected[44] = 'o';
  expected[45] = 'k';
  expected[556] = 4;
  EXPECT_EQ(r, expected);
}

TEST_F(InspectionTest, ChecksTheAnswer) {
  PageHarness page(C::kFunctionType);
  const std::pair<std::string, std::string> cases[] = {
      {"", T(12703)}, {"a|b", T(12943)}, {std::string(256, 'a'), T(12943)}};
  for (const auto& [answer, tip] : cases) {
    hostref::ClearTips();
    EXPECT_TRUE(Answer(page, answer).empty()) << answer.size();
    EXPECT_EQ(TipTexts(), std::vector<std::string>{tip}) << answer.size();
    EXPECT_EQ(page.Text(C::kAnswer), answer) << "the answer stays";
  }
  EXPECT_FALSE(Answer(page, std::string(255, 'a')).empty());
}

TEST_F(InspectionTest, OutcomeAndRememberedAnswer) {
  net::SetReply("", R"({"result":2})");
  {
    PageHarness page(C::kFunctionType);
    Answer(page, "first");
    EXPECT_EQ(TipTexts(), std::vector<std::string>{IDIRErrorString(2)});
    EXPECT_TRUE(page.Enabled(C::kAnswer)) << "open to send again";
    net::Reset();
    hostref::ClearTips();
    Answer(page, "second");
    EXPECT_EQ(TipTexts(), std::vector<std::string>{T(11008)});
    EXPECT_EQ(std::count(page.Host().messages.begin(), page.Host().messages.end(), UINT{msg::ClosePage}), 1);
  }
  PageHarness again(C::kFunctionType);
  EXPECT_EQ(again.Text(C::kAnswer), "second");
  EXPECT_EQ(again.Text(ctl::Set), T(C::kTextOk));
}

TEST_F(InspectionTest, TheContentLosesALeadingTypeName) {
  const auto texts = std::filesystem::temp_directory_path() / "fleetcmd-inspection-texts.ini";
  std::ofstream(texts) << "[FUNCTION]\n71=查岗\n[ALARM]\nInfo.2=查岗\nInfo.1=催办\n";
  ASSERT_TRUE(hostref::LoadHostTexts(texts.string()));
  struct Case {
    int info;
    std::string content;
  };
  const Case cases[] = {{2, "A\r\nB"}, {1, "催办\r\nA\r\nB"}};
  for (const Case& c : cases) {
    AlarmList inquiry;
    inquiry.Add(Inquiry("A|B", c.info));
    PageHarness page(C::kFunctionType);
    inquiry.GiveTo(page.Page());
    page.Page().ShowContextData();
    EXPECT_EQ(page.Text(CPlatformAckPage::kContent), c.content) << c.info;
  }
  hostref::LoadHostTexts(fixture::LanguageFile());
  std::filesystem::remove(texts);
}

class InspectionSettingsTest : public TerminalWorld {
 protected:
};

TEST_F(InspectionSettingsTest, EachChoiceItsCommand) {
  PageHarness page(CDlgSetHeibInspection::kFunctionType);
  page.UseDevice(2);
  struct Case {
    int radio;
    std::string param;
    std::string command;
    int text;
  };
  const Case cases[] = {{CInspectionSettingsPage::kVehicle, R"({"Type":0})", "38688", 13800},
                        {CInspectionSettingsPage::kDriver, R"({"Type":1})", "38688", 13801},
                        {CInspectionSettingsPage::kIdentity, "", "38662", 13802}};
  for (const Case& c : cases) {
    for (int radio : {CInspectionSettingsPage::kVehicle, CInspectionSettingsPage::kDriver, CInspectionSettingsPage::kIdentity})
      page.Page().SetChecked(radio, radio == c.radio);
    EXPECT_EQ(page.Send(ctl::Set), c.param) << c.text;
    EXPECT_NE(hostref::net::Sent()[0].envelope.find("\"Command\":" + c.command), std::string::npos) << c.text;
    EXPECT_EQ(page.Cell(0, kColDescription), T(c.text));
  }
  const auto kept = hostref::terminals::Inspection("91002");
  EXPECT_EQ(kept.type, 1) << "the last inspection type set";
  EXPECT_EQ(kept.identityRequests, 1);
}

TEST_F(InspectionSettingsTest, TheRegionalFormAsksForTheIdentityOfPickedDevices) {
  PageHarness page(CDlgSetCbInspection::kFunctionType);
  EXPECT_FALSE(page.Shown(CInspectionSettingsPage::kVehicle));
  hostref::SetPickerAnswer(std::vector<int>{1, 3});
  hostref::net::ClearSent();
  page.Click(CInspectionSettingsPage::kToSeveral);
  ASSERT_TRUE(Settle());
  const auto sent = hostref::net::Sent();
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(sent[1].devIdno, "91003");
  EXPECT_EQ(sent[0].param, "");
  const auto param = hostref::LastPickerParam();
  ASSERT_GE(param.size(), 212u);
  EXPECT_EQ(param[200 + 4], 122) << "the regional form's column after 113";
}

}  // namespace
