// The world the benchmarks run in: the UI loop on a manual clock, the English
// language file, and a fleet of generated devices numbered from kFirstDevice.
#pragma once

#include <vector>

#include "host/ref/hostref.h"
#include "lang/language.h"
#include "platform/clock.h"
#include "platform/loop.h"
#include "ui/xlist_ctrl.h"

namespace bench {
constexpr int kFirstDevice = 100001;
constexpr int kResultColumns = 8;

struct World {
  plat::ManualClock clock;
  std::vector<int> devices;
  explicit World(int deviceCount) {
    plat::MessageLoop::Instance().SetClock(&clock);
    hostref::OpenDataDir("");
    hostref::SetLogDir("");
    CLanguage::Instance().SetPath(FC_DATA_DIR "/lang/en.ini");
    hostref::LoadFleet(R"({"rights":"all","vehicles":[]})");
    devices = hostref::AddGeneratedDevices(deviceCount, kFirstDevice);
  }
};

// A hosting window with a result list.
class Host : public plat::Window {
 public:
  Host() {
    Create(nullptr, 0, "bench", RECT{0, 0, 900, 800});
    list.Create(this, 4399, "", RECT{0, 400, 900, 800});
    for (int c = 0; c < kResultColumns; ++c) list.InsertColumn(c, std::to_string(c), 80);
  }
  CXListCtrl list;
};
}  // namespace bench
