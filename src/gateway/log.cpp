#include "gateway/log.h"

#include <atomic>
#include <cstdio>
#include <mutex>

namespace gw {
namespace {
constexpr const char* kLevelNames[] = {"error", "warn", "info", "debug"};
std::atomic<int> g_level{static_cast<int>(LogLevel::Info)};
std::mutex g_sinkMutex;
std::function<void(const std::string&)> g_sink;
}  // namespace

std::optional<LogLevel> ParseLogLevel(std::string_view text) {
  for (int i = 0; i < 4; ++i) {
    if (text == kLevelNames[i]) return static_cast<LogLevel>(i);
  }
  return std::nullopt;
}

const char* LevelName(LogLevel level) { return kLevelNames[static_cast<int>(level)]; }

void SetLogLevel(LogLevel level) { g_level = static_cast<int>(level); }

bool Logging(LogLevel level) { return static_cast<int>(level) <= g_level; }

void SetLogSink(std::function<void(const std::string&)> sink) {
  std::lock_guard lock(g_sinkMutex);
  g_sink = std::move(sink);
}

void Log(LogLevel level, std::string_view where, std::string_view text) {
  if (!Logging(level)) return;
  std::string line = LevelName(level);
  line.append(" ").append(where).append(": ").append(text);
  std::lock_guard lock(g_sinkMutex);
  if (g_sink) {
    g_sink(line);
    return;
  }
  line.push_back('\n');
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace gw
