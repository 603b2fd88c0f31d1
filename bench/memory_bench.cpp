// Heap bytes a send holds: per device waiting in a page's queue, and per
// request out on the network, the plug-in's own and the reference host's
// apart. Every operator new and delete of the program is counted (live bytes,
// by the allocator's usable size), and each figure is the change in live
// bytes across one step divided by the items it added.
//
//   queued device         the page has taken the picker's 10,000 devices and not sent yet
//   outstanding request   100 requests out, their answers held: the plug-in's request
//                         records against the host's channels and its record of what was sent
//   host per request      the same channels opened directly through the host's functions

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "bench_support.h"
#include "command/base_dlg.h"
#include "command/ids.h"
#include "host/hostnet.h"
#include "host/ref/hostref.h"
#include "platform/dialog.h"
#include "support/heap_count.h"

namespace {

constexpr int kDevices = 10000;
constexpr int kTemplate = 9102;
constexpr double kTargetQueuedBytes = 400;

const plat::DialogTemplate kBenchTemplate{kTemplate, "memory", {400, 200}, {{ctl::Set, plat::ControlKind::PushButton, ""}}};
const plat::templates::Registration kRegistration{kBenchTemplate};

class BenchPage : public CBaseDlg {
 public:
  BenchPage() : CBaseDlg(kTemplate) {}
  void Send() { StartSend(Mode::kSet, 0x8300); }
  Json::Value GetParam() override {
    Json::Value param;
    param["Flag"] = 12;
    param["TextType"] = 1;
    param["TextInfo"] = "Depot closes at 18:00";
    return param;
  }
};

void CALLBACK Ignore(int32_t, const char*, void*) {}

}  // namespace

int main() {
  bench::World world(kDevices);
  hostref::SetLogLevel(2);
  hostref::net::SetHeld(true);
  hostref::net::ClearSent();

  // The plug-in's queue: what StartSend keeps for the picked devices.
  double queued = 0, outstanding = 0;
  {
    bench::Host host;
    BenchPage page;
    page.CreateDlg(&host);
    HostPage(page, &host.list, -1, PageButtons::kWindow);
    page.PickerMode = TRUE;
    const long long beforeAnswer = heapcount::Live();
    hostref::SetPickerAnswer(world.devices);
    const long long answer = heapcount::Live() - beforeAnswer;  // the host's copy, freed when the picker answers
    const long long beforeQueue = heapcount::Live();
    page.Send();  // fills the queue; the first round leaves a second later
    queued = static_cast<double>(heapcount::Live() - beforeQueue + answer) / kDevices;

    // The first round: kMaxOutstanding requests out, every answer held.
    const long long beforeSend = heapcount::Live();
    world.clock.Advance(CBaseDlg::kFirstSendDelayMs);
    plat::MessageLoop::Instance().RunPending();
    const long long afterSend = heapcount::Live();
    const size_t out = page.OutstandingCount();
    if (out == 0) {
      std::printf("no request went out\n");
      return 1;
    }
    // The queue gave up one entry per request sent.
    outstanding = static_cast<double>(afterSend - beforeSend) / static_cast<double>(out) + queued;
    hostref::net::SetHeld(false);
    hostref::net::ReleaseAll();
    page.DestroyWindow();
  }
  hostref::net::ClearSent();

  // The host's own share: the same channels, opened directly.
  constexpr int kChannels = static_cast<int>(CBaseDlg::kMaxOutstanding);
  hostref::net::SetHeld(true);
  const std::string envelope = R"({"Command":33536,"DevIDNO":"100001","Session":"5f2c9a01d3e84b7690a1c2e3f4a5b6c7"})";
  const std::string param = R"({"Flag":12,"TextInfo":"Depot closes at 18:00","TextType":1})";
  std::vector<NETHANDLE> handles(kChannels);
  const long long beforeHost = heapcount::Live();
  for (int i = 0; i < kChannels; ++i) {
    const std::string devIdno = std::to_string(bench::kFirstDevice + i);
    NETCLIENT_MNOpenNormalCmd(&handles[i], devIdno.c_str(), envelope.c_str(), param.c_str());
    NETCLIENT_MNSetNormalCmdCB(handles[i], nullptr, &Ignore);
    NETCLIENT_MNStartNormalCmd(handles[i]);
  }
  const long long afterHost = heapcount::Live();
  const double host = static_cast<double>(afterHost - beforeHost) / kChannels;
  for (NETHANDLE handle : handles) NETCLIENT_MNCloseNormalCmd(handle);
  hostref::net::SetHeld(false);
  hostref::net::ClearSent();

  const double plugin = outstanding - host;
  std::printf("plug-in: %.0f bytes per queued device (target <= %.0f), %.0f bytes per outstanding request\n", queued,
              kTargetQueuedBytes, plugin);
  std::printf("reference host: %.0f bytes per outstanding request (channel, held answer, record of what was sent)\n",
              host);
  return queued <= kTargetQueuedBytes ? 0 : 1;
}
