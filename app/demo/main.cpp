// fleetcmd demo: one command page sends a text to 250 simulated devices
// through the device picker; a few devices are offline or answer with an
// error. The result rows are printed as they stand in the result list.
#include <cstdio>
#include <string>
#include <vector>

#include "command/base_dlg.h"
#include "command/ids.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"
#include "lang/language.h"
#include "platform/clock.h"
#include "platform/dialog.h"
#include "platform/loop.h"
#include "ui/xlist_ctrl.h"

namespace {

constexpr int kDemoTemplate = 9001;
constexpr int kTextEdit = 9002;
constexpr int kDevices = 250;
constexpr int kFunctionTextMessage = 12;
constexpr int kFirstIdno = 20001;
constexpr int kResultColumns = 8;
constexpr uint64_t kLimitMs = 10 * 60 * 1000;

const plat::DialogTemplate kTemplate{kDemoTemplate, "demo", {400, 200},
                                     {{ctl::Set, plat::ControlKind::PushButton, "send"},
                                      {kTextEdit, plat::ControlKind::Edit, "", {}, 0, 1023}}};
const plat::templates::Registration kRegistration{kTemplate};

// A page that sends its edit's text as a text message.
class DemoPage : public CBaseDlg {
 public:
  DemoPage() : CBaseDlg(kDemoTemplate) { Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); }); }
  void EnableParamControls(BOOL enable) override { EnableItem(kTextEdit, enable != FALSE); }
  Json::Value& GetParam(Json::Value& param) override {
    param["Flag"] = 12;
    param["TextType"] = 1;
    param["TextInfo"] = GetItemText(kTextEdit);
    return param;
  }
  std::string& GetParamDescription(std::string& description) override {
    description = GetItemText(kTextEdit);
    return description;
  }

 private:
  void OnSend() {
    QueryMode = FALSE;
    StartSend(0x8300);
  }
};

class DemoHost : public plat::Window {
 public:
  DemoHost() {
    Create(nullptr, 0, "fleetcmd demo", RECT{0, 0, 900, 815});
    list.Create(this, 4399, "", RECT{0, 500, 900, 815});
    for (int c = 0; c < kResultColumns; ++c) list.InsertColumn(c, std::to_string(c), 100);
  }
  CXListCtrl list;
};

}  // namespace

int main(int argc, char** argv) {
  const std::string language = argc > 1 ? argv[1] : FC_DATA_DIR "/lang/en.ini";
  plat::ManualClock clock;
  plat::MessageLoop::Instance().SetClock(&clock);
  hostref::OpenDataDir("");
  CLanguage::Instance().SetPath(language);
  hostref::LoadHostTexts(language);
  hostref::LoadFleet(R"({"rights":"all","vehicles":[]})");
  const std::vector<int> devices = hostref::AddGeneratedDevices(kDevices, kFirstIdno);
  hostref::SetTipSink([](const hostref::Tip& tip) { std::printf("TIP %s\n", tip.text.c_str()); });

  // A few devices are offline, one answers with a terminal error code.
  hostref::net::SetStatus("20007", 101);
  hostref::net::SetStatus("20099", 110);
  hostref::net::SetReply("20150", R"({"Error":0,"result":2})");
  hostref::net::SetDelayMs(2);

  DemoHost host;
  DemoPage page;
  if (!page.CreateDlg(&host)) return 1;
  page.ResultList = &host.list;
  page.AttachToHost();
  page.FunctionType = kFunctionTextMessage;
  page.ShowWindow(plat::SW_SHOW);
  page.Item<plat::Edit>(kTextEdit)->UserType("Depot closes at 18:00");
  page.PickerMode = TRUE;
  hostref::SetPickerAnswer(devices);
  page.Item<plat::Button>(ctl::Set)->Click();

  const uint64_t start = clock.NowMs();
  const bool settled = hostref::RunUntilSettled(kLimitMs);
  const int rows = host.list.GetItemCount();
  for (int row = rows - 1; row >= 0; --row) {
    std::string line = "ROW ";
    for (int c = 0; c < kResultColumns; ++c) line += (c ? "|" : "") + host.list.GetItemText(row, c);
    std::printf("%s\n", line.c_str());
  }
  std::printf("%d devices, %d rows, %zu requests sent, send over after %llu ms of clock time%s\n", kDevices, rows,
              hostref::net::Sent().size(), static_cast<unsigned long long>(clock.NowMs() - start),
              settled ? "" : " (not settled)");
  page.DestroyWindow();
  plat::MessageLoop::Instance().SetClock(nullptr);
  return settled && rows == kDevices ? 0 : 1;
}
