// The media search's answer of many items: decoded into list rows and the
// table text, measured per item at 1,000 and 10,000 items.
//
// Parse: jsoncpp reading the reply text (done on the network thread).
// Fill: the page turning the parsed reply into rows and table text (the UI
// thread's share, its thread CPU time), into an empty list, and in front of
// 10,000 rows already listed (what a second device's answer costs); plain
// and check-mode position texts.
// Search: the whole get, sent to one device whose terminal answers at once;
// process CPU time (the network thread counts).
#include <benchmark/benchmark.h>

#include <time.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include <json/json.h>

#include "command/base_dlg.h"
#include "command/device_caps.h"
#include "command/ids.h"
#include "command/page_registry.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"
#include "lang/language.h"
#include "pages/media/media_search.h"
#include "platform/clock.h"
#include "platform/loop.h"
#include "text/json.h"
#include "ui/xlist_ctrl.h"

namespace {

constexpr const char* kDevice = "100001";

// The UI thread's CPU time: what the fill costs it, whatever else the machine runs.
double ThreadCpuSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}
constexpr int kShownRows = 10000;

// The search page with its reply hook reachable.
class BenchSearch : public CDlgMediaSearch {
 public:
  using CDlgMediaSearch::OnAnswer;
  void Get() { Item<plat::Button>(ctl::Get)->Click(); }
  plat::ListView& List() { return *Item<plat::ListView>(kList); }
};

class BenchHost : public plat::Window {
 public:
  BenchHost() {
    Create(nullptr, 0, "bench", RECT{0, 0, 900, 800});
    list.Create(this, 4399, "", RECT{0, 400, 900, 800});
    for (int c = 0; c < 8; ++c) list.InsertColumn(c, std::to_string(c), 80);
  }
  CXListCtrl list;
};

// A reply of n items as a terminal sends it.
std::string ReplyText(int n) {
  Json::Value items(Json::arrayValue);
  for (int i = 0; i < n; ++i) {
    Json::Value item;
    item["MDID"] = i + 1;
    item["CHID"] = 1 + i % 4;
    item["METY"] = i % 3;
    item["EVCO"] = i % 8;
    item["Flag"] = i % 5 == 0 ? 1 : 0;
    item["STA"] = 0x40003;
    item["JD"] = 114057000 + i * 37;
    item["WD"] = 22543000 + i * 29;
    item["GAODU"] = 20 + i % 50;
    item["SPD"] = i % 900;
    item["HS"] = i % 360;
    char time[32];
    std::snprintf(time, sizeof time, "2026-11-23 %02d:%02d:%02d", i / 3600 % 24, i / 60 % 60, i % 60);
    item["DTM"] = time;
    items.append(item);
  }
  Json::Value reply;
  reply["Error"] = 0;
  reply["result"] = 0;
  reply["Item"] = items;
  return txt::WriteCompactJson(reply);
}

struct World {
  plat::ManualClock clock;
  World() {
    plat::MessageLoop::Instance().SetClock(&clock);
    hostref::OpenDataDir("");
    hostref::SetLogDir("");
    CLanguage::Instance().SetPath(FC_DATA_DIR "/lang/en.ini");
    hostref::LoadFleet(R"({"rights":"all","vehicles":[{"name":"A","devices":[{"id":1,"idno":"100001"}]}]})");
  }
};

World& TheWorld() {
  static World world;
  return world;
}

const std::string& Reply(int n) {
  static std::map<int, std::string> replies;
  auto& text = replies[n];
  if (text.empty()) text = ReplyText(n);
  return text;
}

Json::Value Parsed(int n) {
  Json::Value value;
  txt::ParseJson(Reply(n), value);
  return value;
}

void BM_Parse(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  const std::string& text = Reply(n);
  for (auto _ : state) {
    Json::Value value;
    benchmark::DoNotOptimize(txt::ParseJson(text, value));
  }
  state.SetItemsProcessed(state.iterations() * n);
}

// Decode and fill on the UI thread; `shown` rows are listed before the reply.
void Fill(benchmark::State& state, bool checkMode, int shown) {
  TheWorld();
  hostref::SetCheckMode(checkMode);
  const int n = static_cast<int>(state.range(0));
  const Json::Value reply = Parsed(n), before = shown ? Parsed(shown) : Json::Value();
  CommandRequest request;
  request.SetDevIdno(kDevice);
  for (auto _ : state) {
    BenchHost host;
    BenchSearch page;
    page.CreateDlg(&host);
    if (shown) page.OnAnswer(request, before);
    const double start = ThreadCpuSeconds();
    page.OnAnswer(request, reply);
    benchmark::DoNotOptimize(page.GetParamDescription().size());
    state.SetIterationTime(ThreadCpuSeconds() - start);
    const bool listed = page.List().GetItemCount() == n + shown;
    page.DestroyWindow();
    if (!listed) {
      state.SkipWithError("rows missing");
      break;
    }
  }
  hostref::SetCheckMode(false);
  state.SetItemsProcessed(state.iterations() * n);
}

void BM_Fill(benchmark::State& state) { Fill(state, false, 0); }
void BM_FillInFront(benchmark::State& state) { Fill(state, false, kShownRows); }
void BM_FillCheckMode(benchmark::State& state) { Fill(state, true, 0); }

void BM_Search(benchmark::State& state) {
  TheWorld();
  const int n = static_cast<int>(state.range(0));
  hostref::net::SetReply(kDevice, Reply(n));
  for (auto _ : state) {
    state.PauseTiming();
    BenchHost host;
    BenchSearch page;
    page.CreateDlg(&host);
    page.ShowWindow(plat::SW_SHOW);
    HostPage(page, &host.list, CDlgMediaSearch::kFunctionType, PageButtons::kOwn);
    SharedDeviceCaps().LoadShared(1);
    hostref::net::ClearSent();
    state.ResumeTiming();
    page.Get();
    hostref::RunUntilSettled(60 * 1000);
    state.PauseTiming();
    const bool listed = page.List().GetItemCount() == n;
    if (!listed) std::fprintf(stderr, "listed %d sent %zu\n", page.List().GetItemCount(), hostref::net::Sent().size());
    page.DestroyWindow();
    if (!listed) {
      state.SkipWithError("the reply was not listed");
      break;
    }
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * n);
}

BENCHMARK(BM_Parse)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->MinTime(0.5);
BENCHMARK(BM_Fill)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(0.5);
BENCHMARK(BM_FillInFront)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(0.5);
BENCHMARK(BM_FillCheckMode)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->UseManualTime()->MinTime(0.5);
BENCHMARK(BM_Search)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->MinTime(0.5);

// Collects the per-item time of each run, for the summary lines.
class SummaryReporter : public benchmark::ConsoleReporter {
 public:
  SummaryReporter() : ConsoleReporter(OO_Tabular) {}
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      auto items = run.counters.find("items_per_second");
      if (items == run.counters.end() || items->second.value <= 0) continue;
      perItemUs[run.run_name.function_name + "/" + run.run_name.args] = 1e6 / items->second.value;
    }
  }
  std::map<std::string, double> perItemUs;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  SummaryReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  for (const char* name : {"BM_Parse", "BM_Fill", "BM_FillInFront", "BM_FillCheckMode", "BM_Search"}) {
    const std::string base = name;
    const double at1k = reporter.perItemUs[base + "/1000"], at10k = reporter.perItemUs[base + "/10000"];
    if (at1k > 0 && at10k > 0) {
      std::printf("%-17s %.3f us/item at 1,000, %.3f us/item at 10,000, ratio %.2f\n", name, at1k, at10k, at10k / at1k);
    }
  }
  benchmark::Shutdown();
  return 0;
}
