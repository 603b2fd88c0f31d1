// What the benchmarks share: the world they run in (the UI loop on a manual
// clock, the English language file, a fleet of generated devices numbered from
// kFirstDevice), a hosting window with a result list, and a reporter that
// keeps each run's time per item for the summary lines.
#pragma once

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "command/base_dlg.h"
#include "host/ref/run/settle.h"

#include "host/ref/hostref.h"
#include "lang/language.h"
#include "platform/clock.h"
#include "platform/loop.h"
#include "ui/xlist_ctrl.h"

namespace bench {
constexpr int kFirstDevice = 100001;
constexpr int kResultColumns = 8;
constexpr int kLogErrorsOnly = 2;

struct World {
  plat::ManualClock clock;
  std::vector<int> devices;
  explicit World(int deviceCount) {
    plat::MessageLoop::Instance().SetClock(&clock);
    hostref::OpenDataDir("");
    hostref::SetLogDir("");
    // The host logs errors only, as a deployed host does: the plug-in's
    // detail and information lines per request are then never formatted.
    // FC_BENCH_LOG_LEVEL=0 measures them too.
    const char* level = std::getenv("FC_BENCH_LOG_LEVEL");
    hostref::SetLogLevel(level ? std::atoi(level) : kLogErrorsOnly);
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
// Times a send from a page to every device of the world, through the device
// picker, until every reply is a row: open makes the page inside the host
// (untimed), press starts the send (timed with everything after it).
inline void SendToEveryDevice(benchmark::State& state, const World& world,
                              const std::function<std::unique_ptr<CBaseDlg>(Host&)>& open,
                              const std::function<void(CBaseDlg&)>& press) {
  const int devices = static_cast<int>(world.devices.size());
  for (auto _ : state) {
    state.PauseTiming();
    Host host;
    std::unique_ptr<CBaseDlg> page = open(host);
    page->PickerMode = TRUE;
    hostref::SetPickerAnswer(world.devices);
    hostref::net::ClearSent();
    hostref::ClearLog();
    state.ResumeTiming();

    press(*page);
    hostref::RunUntilSettled(60 * 60 * 1000);

    state.PauseTiming();
    if (host.list.GetItemCount() != devices) state.SkipWithError("not every device answered");
    page.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * devices);
}

// Registers a benchmark of process CPU time in milliseconds that runs for
// minTime seconds, or exactly FC_BENCH_ITERATIONS times when that is set (to
// count instructions under callgrind, where time means nothing).
inline benchmark::internal::Benchmark* Add(const char* name, void (*fn)(benchmark::State&), double minTime,
                                           bool processCpu = true) {
  auto* b = benchmark::RegisterBenchmark(name, fn)->Unit(benchmark::kMillisecond);
  if (processCpu) b->MeasureProcessCPUTime();
  const char* fixed = std::getenv("FC_BENCH_ITERATIONS");
  const int iterations = fixed ? std::atoi(fixed) : 0;
  if (iterations > 0) {
    b->Iterations(iterations);
  } else {
    b->MinTime(minTime);
  }
  return b;
}

// The console table, and the microseconds per item of every run, by name
// ("BM_ResultRows/1000").
class PerItemReporter : public benchmark::ConsoleReporter {
 public:
  PerItemReporter() : ConsoleReporter(OO_Tabular) {}
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      auto items = run.counters.find("items_per_second");
      if (items == run.counters.end() || items->second.value <= 0) continue;
      const std::string& args = run.run_name.args;
      perItemUs_[run.run_name.function_name + (args.empty() ? "" : "/" + args)] = 1e6 / items->second.value;
    }
  }
  // 0 when the run did not happen.
  double PerItemUs(const std::string& name) const {
    auto it = perItemUs_.find(name);
    return it == perItemUs_.end() ? 0.0 : it->second;
  }

 private:
  std::map<std::string, double> perItemUs_;
};
}  // namespace bench
