// Decoding a recorder answer against parsing it, measured in the same run.
//
// The answer is the largest the record page asks for: 99 position records of
// the 2012 edition, each with sixty positions. Parse: jsoncpp alone reading
// the reply text into a value (what the page kit does once per reply).
// Decode: that value turned into the page's text. The summary line gives the
// decode's cost against the parse's.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>

#include <json/json.h>

#include "lang/language.h"
#include "pages/control/recorder_decode.h"
#include "text/json.h"

namespace {

constexpr int kBlocks = 99, kPositions = 60;
constexpr int kPositionWord = 0x09;

// 99 hourly records of a vehicle driving east, with the stops a real recorder writes.
std::string FullAnswer() {
  Json::Value answer;
  answer["VER"] = 2012;
  answer["Error"] = 0;
  answer["result"] = 0;
  for (int block = 0; block < kBlocks; ++block) {
    Json::Value record;
    char time[32];
    std::snprintf(time, sizeof time, "2026-11-%02d %02d:00:00", 22 - block / 10, 17 - block % 10);
    record["DTM"] = time;
    for (int m = 0; m < kPositions; ++m) {
      Json::Value p;
      const bool parked = block % 7 == 0 && m < 12;
      p["JD"] = parked ? -1 : 68430000 + block * 9000 + m * 150;
      p["WD"] = parked ? -1 : 13524000 + block * 400 + m * 7;
      p["GAODU"] = parked ? 0 : 30 + m % 40;
      p["SPD"] = parked ? 0 : 40 + (block + m) % 45;
      record["POS"].append(p);
    }
    answer["Item"].append(record);
  }
  return txt::WriteCompactJson(answer);
}

const std::string& Answer() {
  static const std::string text = [] {
    CLanguage::Instance().SetPath(FC_DATA_DIR "/lang/en.ini");
    return FullAnswer();
  }();
  return text;
}

void BM_Parse(benchmark::State& state) {
  const std::string& text = Answer();
  Json::CharReaderBuilder builder;
  std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  for (auto _ : state) {
    Json::Value reply;
    std::string errors;
    reader->parse(text.data(), text.data() + text.size(), &reply, &errors);
    benchmark::DoNotOptimize(reply);
  }
  state.SetItemsProcessed(state.iterations());
}

void BM_Decode(benchmark::State& state) {
  Json::Value reply;
  if (!txt::ParseJson(Answer(), reply)) state.SkipWithError("the answer does not parse");
  size_t bytes = 0;
  for (auto _ : state) {
    const std::string decoded = recorder::DecodeAnswer(recorder::Edition::k2012, kPositionWord, reply);
    bytes = decoded.size();
    benchmark::DoNotOptimize(decoded.data());
  }
  state.counters["text_bytes"] = static_cast<double>(bytes);
  state.SetItemsProcessed(state.iterations());
}

BENCHMARK(BM_Parse)->Unit(benchmark::kMillisecond)->MinTime(1.0);
BENCHMARK(BM_Decode)->Unit(benchmark::kMillisecond)->MinTime(1.0);

class SummaryReporter : public benchmark::ConsoleReporter {
 public:
  SummaryReporter() : ConsoleReporter(OO_Tabular) {}
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      auto items = run.counters.find("items_per_second");
      if (items != run.counters.end() && items->second.value > 0) perItemUs[run.run_name.function_name] = 1e6 / items->second.value;
    }
  }
  std::map<std::string, double> perItemUs;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  SummaryReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  const double parse = reporter.perItemUs["BM_Parse"], decode = reporter.perItemUs["BM_Decode"];
  if (parse > 0 && decode > 0) {
    std::printf("recorder answer of %d blocks (%zu bytes): parse %.0f us, decode %.0f us; decode/parse %.2f, "
                "(parse+decode)/parse %.2f (target <= 2)\n",
                kBlocks, Answer().size(), parse, decode, decode / parse, (parse + decode) / parse);
  }
  benchmark::Shutdown();
  return 0;
}
