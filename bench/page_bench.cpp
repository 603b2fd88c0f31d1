// Whole pages opened from the registry and sent to 10,000 picked devices
// whose simulated terminals answer at once: a text message beside the
// terminal attribute query, whose replies grow one text box. Process CPU time
// per device; the summary line gives the query's cost against the send's.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include "bench_support.h"
#include "command/base_dlg.h"
#include "command/ids.h"
#include "command/page_registry.h"
#include "host/ref/run/settle.h"
#include "host/ref/run/terminals.h"
#include "pages/messaging/send_text.h"
#include "pages/settings/query_device_attr.h"

namespace {
constexpr int kDevices = 10000;

bench::World& TheWorld() {
  static bench::World world(kDevices);
  return world;
}

// Opens the page of a function type as the vehicle function window does,
// types into its edit (when it has one) and presses its button.
void SendToAll(benchmark::State& state, int functionType, int button, int edit) {
  hostref::terminals::Install();
  hostref::terminals::Clear();
  bench::SendToEveryDevice(
      state, TheWorld(),
      [&](bench::Host& host) {
        std::unique_ptr<CBaseDlg> page = pages::Find(functionType, PageHost::kVehicleWindow)->make(functionType);
        page->CreateDlg(&host);
        page->ShowWindow(plat::SW_SHOW);
        HostPage(*page, &host.list, functionType, PageButtons::kOwn);
        if (edit) page->Item<plat::Edit>(edit)->UserType("Depot closes at 18:00");
        return page;
      },
      [&](CBaseDlg& page) { page.Item<plat::Button>(button)->Click(); });
}

void BM_TextSend(benchmark::State& state) {
  SendToAll(state, CDlgSendText::kFunctionType, ctl::Set, CDlgSendText::kTextEdit);
}
void BM_AttributeQuery(benchmark::State& state) { SendToAll(state, CDlgQueryDeviceAttr::kFunctionType, ctl::Get, 0); }

const bool kRegistered = [] {
  bench::Add("BM_TextSend", BM_TextSend, 1.0);
  bench::Add("BM_AttributeQuery", BM_AttributeQuery, 1.0);
  return true;
}();

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  bench::PerItemReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  const double send = reporter.PerItemUs("BM_TextSend"), query = reporter.PerItemUs("BM_AttributeQuery");
  if (send > 0 && query > 0) {
    std::printf("pages to %d devices: text send %.2f CPU us/device, attribute query %.2f, ratio %.2f (target <= 2)\n",
                kDevices, send, query, query / send);
  }
  benchmark::Shutdown();
  return 0;
}
