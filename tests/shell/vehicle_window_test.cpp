// The vehicle function window and the point-query pages.
#include "command/page_registry.h"
#include "host/ref/hostref.h"
#include "shell/call_name.h"
#include "shell/dlg_main.h"
#include "shell/function_page.h"
#include "shell/plugin_callbacks.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

namespace {

constexpr int kListType = 9201, kHiddenListType = 9202, kNoListType = 9203;
const PageRegistration kTestPages[] = {
    {{kListType}, PageHost::kVehicleWindow, [](int) { return std::make_unique<TestPage>(); }},
    {{kHiddenListType}, PageHost::kVehicleWindow, [](int) {
       auto page = std::make_unique<TestPage>();
       page->HideResultList = TRUE;
       return page;
     }},
    {{kNoListType}, PageHost::kVehicleWindow, [](int) { return std::make_unique<TestPage>(); }, true}};

class VehicleWindowTest : public PageWorld {};

TEST_F(VehicleWindowTest, PageListAndForwarding) {
  TestHost host;
  CDlgMain window(kListType);
  ASSERT_TRUE(window.CreateDlg(&host));
  window.ShowWindow(plat::SW_SHOW);
  ASSERT_NE(window.Page(), nullptr);
  EXPECT_TRUE(window.GetDlgItem(4399)->IsShown());
  EXPECT_EQ(window.Page()->GetResultList(), window.ResultList());
  EXPECT_EQ(window.Page()->GetItemText(ctl::Set), fixture::T(11004)) << "the page's own buttons are used here";

  window.SendMessage(msg::HandlingLogged, 0, 0);
  window.SendMessage(msg::HandlingLogged, 5, 0);
  window.SendMessage(msg::ReservedForward2, 1, 2);
  window.Page()->Item<plat::Button>(ctl::Cancel)->Click();
  plat::MessageLoop::Instance().RunPending();
  EXPECT_EQ(host.messages, (std::vector<UINT>{msg::HandlingLogged, msg::ReservedForward2, WM_CLOSE}));

  window.FitIntoParent();
  EXPECT_EQ(window.GetRect(), (RECT{1, plat::t(30), 799, 592}));
  EXPECT_EQ(host.RedrawCount(), 1);
}

TEST_F(VehicleWindowTest, HiddenOrNoResultList) {
  TestHost host;
  CDlgMain hidden(kHiddenListType), noList(kNoListType), empty(70001);
  ASSERT_TRUE(hidden.CreateDlg(&host) && noList.CreateDlg(&host) && empty.CreateDlg(&host));
  EXPECT_FALSE(hidden.GetDlgItem(4399)->IsShown() || hidden.GetDlgItem(4400)->IsShown());
  EXPECT_EQ(noList.Page()->GetResultList(), nullptr);
  EXPECT_EQ(empty.Page(), nullptr);
}

struct Answer {
  int32_t result;
  std::string devIdno, reply;
};
std::vector<Answer> g_answers;
// As a host declares it: the request is a record that starts with the device number.
void CALLBACK OnPointQuery(int32_t result, void* record, uintptr_t context) {
  EXPECT_EQ(context, 77u);
  const auto* request = static_cast<const CommandRequest*>(record);
  g_answers.push_back({result, static_cast<const char*>(record), request->reply});
}

TEST_F(VehicleWindowTest, QueuedPointQueriesGoOutInOneSend) {
  g_answers.clear();
  PointQueryResultCallback() = {&OnPointQuery, 77};
  hostref::net::SetReply("91002", R"({"Error":101})");
  CDlgCallName window;
  ASSERT_TRUE(window.CreateDlg(nullptr));
  for (const char* dev : {"91001", "91002", "91003"}) window.CallName(dev);
  ASSERT_TRUE(Settle());
  ASSERT_EQ(hostref::net::Sent().size(), 3u);
  for (const auto& sent : hostref::net::Sent()) {
    EXPECT_EQ(sent.param, "");
    EXPECT_NE(sent.envelope.find("\"Command\":33281"), std::string::npos);
  }
  ASSERT_EQ(g_answers.size(), 3u);
  std::sort(g_answers.begin(), g_answers.end(), [](const Answer& a, const Answer& b) { return a.devIdno < b.devIdno; });
  EXPECT_EQ(g_answers[1].result, 101);
  EXPECT_EQ(g_answers[1].reply, R"({"Error":101})");
  EXPECT_EQ(g_answers[2].devIdno, "91003");
  PointQueryResultCallback() = {};
}

TEST_F(VehicleWindowTest, FunctionPagePointQueryTellsTheHostOfTheLastAnswer) {
  TestHost host;
  CDlg808FunctionPage window;
  ASSERT_TRUE(window.CreateDlg(&host));
  window.ShowWindow(plat::SW_SHOW);
  window.ShowFunction(57);
  EXPECT_TRUE(window.NoParamPanel()->IsShown());
  hostref::SetPickerAnswer(std::vector<int>{1, 2});
  window.Item<plat::Button>(ctl::Cancel)->Click();
  ASSERT_TRUE(Settle());
  std::vector<LPARAM> last;
  for (size_t i = 0; i < host.messages.size(); ++i) {
    if (host.messages[i] == msg::PointQueryAnswer) last.push_back(host.lparams[i]);
  }
  EXPECT_EQ(last, (std::vector<LPARAM>{0, 1}));
  EXPECT_EQ(window.ResultList()->GetItemCount(), 2);
}

}  // namespace

namespace {

// A page that records what the host asks of it.
class HostDrivenPage : public TestPage {
 public:
  HostDrivenPage() { Bind(ctl::Set, BN_CLICKED, [this] { ++setClicks; }); }
  void UpdateProtocolControls() override { ++protocolUpdates; }
  void ShowContextData() override { ++contextShows; }
  int setClicks = 0, protocolUpdates = 0, contextShows = 0;
};

constexpr int kConfirmType = 54, kAlarmType = 100, kNewAlarmType = 103, kHostDrivenType = 9204;
const PageRegistration kHostDriven{{kHostDrivenType}, PageHost::kVehicleWindow,
                                   [](int) { return std::make_unique<HostDrivenPage>(); }};

TEST_F(VehicleWindowTest, AlarmMessagesPressThePagesButtons) {
  TestHost host;
  struct Case {
    const char* what;
    int type;
    uint32_t message;
    bool newLayout;
    std::vector<std::string> tips;  // what pressing the page's button shows with nothing filled in
  };
  const Case cases[] = {
      {"7 presses the confirmation's send: no device, no target", kConfirmType, 7, false, {fixture::T(12812)}},
      {"7 is for the confirmation page only", kAlarmType, 7, false, {}},
      {"5 presses the handling page's send: no text", kAlarmType, 5, false, {fixture::T(12944)}},
      {"5 is for the handling pages only", kConfirmType, 5, false, {}},
      {"5 on the newer layout runs the one-key send", kNewAlarmType, 5, true, {fixture::T(12944)}},
      {"103 before the newer layout is no handling page", kNewAlarmType, 5, false, {}},
  };
  for (const Case& c : cases) {
    hostref::SetLayout(c.newLayout, false, false, false);
    hostref::ClearTips();
    CDlgMain window(c.type);
    ASSERT_TRUE(window.CreateDlg(&host)) << c.what;
    window.ShowWindow(plat::SW_SHOW);
    window.OnHostMessage(c.message, 0, 0);
    plat::MessageLoop::Instance().RunPending();
    EXPECT_EQ(TipTexts(), c.tips) << c.what;
  }
  hostref::SetLayout(false, false, false, false);
}

TEST_F(VehicleWindowTest, HostMessagesReachThePage) {
  ASSERT_TRUE(hostref::LoadFleet(R"({"vehicles":[{"name":"N","devices":[{"id":2,"idno":"91002","attrs":{"80":1}}]}]})"));
  TestHost host;
  CDlgMain window(kHostDrivenType);
  ASSERT_TRUE(window.CreateDlg(&host));
  auto* page = static_cast<HostDrivenPage*>(window.Page());
  window.OnHostMessage(1, 0x1234, 3);
  EXPECT_EQ(page->contextPointer, 0x1234u);
  EXPECT_EQ(page->contextCount, 3u);
  window.OnHostMessage(9, 0, 2);
  EXPECT_TRUE(page->Caps().bProtocol2019) << "the page loads its own record for the device";
  EXPECT_EQ(page->protocolUpdates, 2) << "once when attached, once for message 9";
  window.OnHostMessage(65535, 0, 0);
  EXPECT_EQ(page->contextShows, 1);
  window.OnHostMessage(2, plat::SW_HIDE, 0);
  EXPECT_FALSE(window.IsShown());

  // The handling text reaches the handling page's text box.
  CDlgMain alarmWindow(kAlarmType);
  ASSERT_TRUE(alarmWindow.CreateDlg(&host));
  const std::u16string text = u"报警处理";
  alarmWindow.OnHostMessage(4, reinterpret_cast<uintptr_t>(text.c_str()), 0);
  EXPECT_EQ(alarmWindow.Page()->GetItemText(4161), "报警处理");
  window.OnHostMessage(4, reinterpret_cast<uintptr_t>(text.c_str()), 0);
  EXPECT_EQ(page->GetItemText(4161), "") << "another page's window ignores the text";
}

}  // namespace
