// The send pipeline and the result list, measured against a floor taken in
// the same run.
//
// Pipeline: a page sends to 10,000 devices on the manual clock, the simulated
// terminals answer at once, every reply becomes a row. Floor: jsoncpp alone
// doing the pipeline's JSON work the pipeline's way (the same writer and
// reader settings, the parameter written once per send, an envelope per
// request, the reply parsed). Both are process CPU time (the network threads
// count), per request; FC_BENCH_ITERATIONS gives fixed runs for callgrind.
// Result list: rows added at the top of a list of 1,000 and of 100,000 rows.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <json/json.h>

#include "bench_support.h"
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

constexpr int kDevices = 10000;
constexpr int kTemplate = 9101;
constexpr const char* kReply = R"({"Error":0,"result":0})";
constexpr const char* kText = "Depot closes at 18:00";

const plat::DialogTemplate kBenchTemplate{kTemplate, "bench", {400, 200}, {{ctl::Set, plat::ControlKind::PushButton, ""}}};
const plat::templates::Registration kRegistration{kBenchTemplate};

class BenchPage : public CBaseDlg {
 public:
  BenchPage() : CBaseDlg(kTemplate) {}
  void Send(int32_t command) { StartSend(Mode::kSet, command); }
  Json::Value GetParam() override {
    Json::Value param;
    param["Flag"] = 12;
    param["TextType"] = 1;
    param["TextInfo"] = kText;
    return param;
  }
};

using BenchHost = bench::Host;
using World = bench::World;

World& TheWorld() {
  static World world(kDevices);
  return world;
}

// The JSON work of one request, done the way the pipeline does it: one
// writer and one output stream reused for every text, one parameter object
// shared by every device and written once per send, an envelope built (its
// keys static) and written per request, and the reply parsed by one reused
// reader.
void BM_Floor(benchmark::State& state) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "";
  builder["emitUTF8"] = true;
  std::unique_ptr<Json::StreamWriter> writer(builder.newStreamWriter());
  std::ostringstream out;
  const auto write = [&](const Json::Value& value) {
    out.str({});
    out.clear();
    writer->write(value, &out);
    return out.str();
  };
  Json::CharReaderBuilder readerBuilder;
  readerBuilder["failIfExtra"] = true;
  std::unique_ptr<Json::CharReader> reader(readerBuilder.newCharReader());
  const std::string replyText = kReply;
  Json::Value param;
  param["Flag"] = 12;
  param["TextType"] = 1;
  param["TextInfo"] = kText;
  const Json::StaticString session("Session"), devIdno("DevIDNO"), command("Command");
  for (auto _ : state) {
    const std::string paramText = write(param);
    for (int i = 0; i < kDevices; ++i) {
      Json::Value envelope(Json::objectValue);
      envelope[session] = "0123456789abcdef0123456789abcdef";
      envelope[devIdno] = std::to_string(bench::kFirstDevice + i);
      envelope[command] = 0x8300;
      const std::string envelopeText = write(envelope);
      Json::Value reply;
      std::string errors;
      reader->parse(replyText.data(), replyText.data() + replyText.size(), &reply, &errors);
      benchmark::DoNotOptimize(reply["Error"].asInt() + reply["result"].asInt());
      benchmark::DoNotOptimize(paramText.size() + envelopeText.size());
    }
  }
  state.SetItemsProcessed(state.iterations() * kDevices);
}

void BM_Pipeline(benchmark::State& state) {
  bench::SendToEveryDevice(
      state, TheWorld(),
      [](BenchHost& host) {
        auto page = std::make_unique<BenchPage>();
        page->CreateDlg(&host);
        HostPage(*page, &host.list, -1, PageButtons::kWindow);
        return page;
      },
      [](CBaseDlg& page) { static_cast<BenchPage&>(page).Send(0x8300); });
}

// Rows added at the top of a list that grows to state.range(0) rows.
void BM_ResultRows(benchmark::State& state) {
  TheWorld();
  const int rows = static_cast<int>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    auto host = std::make_unique<BenchHost>();
    BenchPage page;
    page.CreateDlg(host.get());
    HostPage(page, &host->list, -1, PageButtons::kWindow);
    CommandRequest request;
    request.SetDevIdno("100001");
    state.ResumeTiming();
    for (int i = 0; i < rows; ++i) page.AddResultRow(request);
    state.PauseTiming();
    page.DestroyWindow();
    host.reset();
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * rows);
}

void Register() {
  bench::Add("BM_Floor", BM_Floor, 0.5);
  bench::Add("BM_Pipeline", BM_Pipeline, 1.0);
  bench::Add("BM_ResultRows", BM_ResultRows, 0.5, false)->Arg(1000)->Arg(100000);
}

}  // namespace

int main(int argc, char** argv) {
  Register();
  benchmark::Initialize(&argc, argv);
  bench::PerItemReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  auto get = [&](const std::string& name) { return reporter.PerItemUs(name); };
  const double floor = get("BM_Floor"), pipeline = get("BM_Pipeline");
  const double rows1k = get("BM_ResultRows/1000"), rows100k = get("BM_ResultRows/100000");
  if (floor > 0 && pipeline > 0) {
    std::printf("pipeline: %.2f CPU us/request, floor %.2f us/request, ratio %.2f (target <= 2.5)\n", pipeline, floor,
                pipeline / floor);
  }
  if (rows1k > 0 && rows100k > 0) {
    std::printf("result rows: %.3f us/row at 1k, %.3f us/row at 100k, ratio %.2f (target <= 1.2)\n", rows1k, rows100k,
                rows100k / rows1k);
  }
  benchmark::Shutdown();
  return 0;
}
