// The host's log: every line goes to an in-memory list (the last
// kMaxLines lines, for the reference host and tests) and, when a log
// directory is set, is appended with a timestamp to <dir>/<module>.log.
#include <chrono>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <deque>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "host/hostlog.h"
#include "host/ref/hostref.h"

namespace {

constexpr size_t kMaxLines = 100000;
constexpr size_t kInlineText = 512;

struct LogSink {
  std::mutex mutex;
  std::deque<std::string> lines;
  std::string dir;
  std::map<std::string, std::FILE*> files;  // module -> open log file
  std::shared_ptr<const hostref::LogObserver> observer;

  void CloseFiles() {
    for (auto& [module, file] : files)
      if (file) std::fclose(file);
    files.clear();
  }
  ~LogSink() { CloseFiles(); }

  // The module's file, opened on first use; null when it cannot be opened.
  std::FILE* FileOf(const std::string& module) {
    auto it = files.find(module);
    if (it != files.end()) return it->second;
    std::string name = module.empty() ? "host" : module;
    for (char& c : name)
      if (c == '/' || c == '\\') c = '_';
    std::FILE* file = std::fopen((std::filesystem::path(dir) / (name + ".log")).string().c_str(), "ab");
    files.emplace(module, file);
    return file;
  }
};

LogSink& Sink() {
  static LogSink sink;
  return sink;
}

std::string Timestamp() {
  using namespace std::chrono;
  const auto now = system_clock::now();
  const std::time_t seconds = system_clock::to_time_t(now);
  const int millis = static_cast<int>(duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000);
  std::tm local{};
  localtime_r(&seconds, &local);
  char text[40];
  const size_t length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
  std::snprintf(text + length, sizeof text - length, ".%03d", millis);
  return text;
}

// printf into a string of any length.
std::string Format(const char* format, va_list args) {
  if (!format) return "";
  char inlineText[kInlineText];
  va_list copy;
  va_copy(copy, args);
  const int length = std::vsnprintf(inlineText, sizeof inlineText, format, copy);
  va_end(copy);
  if (length < 0) return "";
  if (static_cast<size_t>(length) < sizeof inlineText) return std::string(inlineText, length);
  std::string text(static_cast<size_t>(length), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, args);
  return text;
}

}  // namespace

CLogFile2::CLogFile2(std::string moduleName) : module_(std::move(moduleName)) {}

void CLogFile2::WriteStrInfoEx(int level, const char* format, ...) {
  va_list args;
  va_start(args, format);
  std::string text = Format(format, args);
  va_end(args);
  std::string line = std::to_string(level) + "|" + module_ + "|" + text;

  LogSink& sink = Sink();
  std::shared_ptr<const hostref::LogObserver> observer;
  {
    std::lock_guard lock(sink.mutex);
    if (!sink.dir.empty()) {
      if (std::FILE* file = sink.FileOf(module_)) {
        std::fprintf(file, "%s [%d] %s\n", Timestamp().c_str(), level, text.c_str());
        std::fflush(file);
      }
    }
    if (sink.lines.size() >= kMaxLines) sink.lines.pop_front();
    sink.lines.push_back(std::move(line));
    observer = sink.observer;
  }
  if (observer && *observer) (*observer)(level, module_, text);
}

namespace hostref {

std::vector<std::string> LogLines() {
  std::lock_guard lock(Sink().mutex);
  return {Sink().lines.begin(), Sink().lines.end()};
}

void ClearLog() {
  std::lock_guard lock(Sink().mutex);
  Sink().lines.clear();
}

void SetLogObserver(LogObserver observer) {
  auto shared = observer ? std::make_shared<const LogObserver>(std::move(observer)) : nullptr;
  std::lock_guard lock(Sink().mutex);
  Sink().observer = std::move(shared);
}

void SetLogDir(const std::string& dir) {
  LogSink& sink = Sink();
  std::lock_guard lock(sink.mutex);
  sink.CloseFiles();
  sink.dir = dir;
  if (!dir.empty()) {
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
  }
}

}  // namespace hostref
