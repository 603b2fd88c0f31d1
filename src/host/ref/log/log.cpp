// The host's log: every line goes to an in-memory list (the newest lines, at
// most kMaxLines of them and kMaxMemoryBytes in all, for the reference host
// and tests) and, when a log directory is set, is appended with a timestamp
// to <dir>/<module>.log. Memory and disk stay bounded whatever is logged: an
// entry longer than kMaxEntryBytes is cut (and says so), and a file that
// reaches kMaxFileBytes becomes <module>.log.1, replacing the previous one.
#include <algorithm>
#include <atomic>
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
constexpr size_t kMaxMemoryBytes = size_t{32} << 20;
constexpr size_t kInlineText = 512;
constexpr const char* kCutMark = " ...[cut, %zu bytes]";
constexpr const char* kOldSuffix = ".1";

struct LogFile {
  std::string path;
  std::FILE* file = nullptr;
  size_t size = 0;  // bytes in the file
};

struct LogSink {
  std::mutex mutex;
  std::deque<std::string> lines;
  size_t lineBytes = 0;  // the bytes of the lines kept
  std::string dir;
  std::map<std::string, LogFile> files;  // module -> its log file
  std::shared_ptr<const hostref::LogObserver> observer;
  std::atomic<int> minLevel{0};

  void CloseFiles() {
    for (auto& [module, log] : files)
      if (log.file) std::fclose(log.file);
    files.clear();
  }
  ~LogSink() { CloseFiles(); }

  // The module's file, opened on first use; null when it cannot be opened.
  LogFile& FileOf(const std::string& module) {
    auto it = files.find(module);
    if (it != files.end()) return it->second;
    std::string name = module.empty() ? "host" : module;
    for (char& c : name)
      if (c == '/' || c == '\\') c = '_';
    LogFile log;
    log.path = (std::filesystem::path(dir) / (name + ".log")).string();
    Open(log);
    return files.emplace(module, std::move(log)).first->second;
  }

  static void Open(LogFile& log) {
    log.file = std::fopen(log.path.c_str(), "ab");
    if (!log.file) return;
    std::fseek(log.file, 0, SEEK_END);
    const long at = std::ftell(log.file);
    log.size = at > 0 ? static_cast<size_t>(at) : 0;
  }

  // A file that would grow past the limit starts afresh; the full one is kept beside it.
  static void Rotate(LogFile& log, size_t adding) {
    if (!log.file || log.size == 0 || log.size + adding <= hostref::kMaxLogFileBytes) return;
    std::fclose(log.file);
    std::error_code ec;
    std::filesystem::rename(log.path, log.path + kOldSuffix, ec);
    Open(log);
  }

  void Keep(std::string line) {
    lineBytes += line.size();
    lines.push_back(std::move(line));
    while (lines.size() > kMaxLines || (lineBytes > kMaxMemoryBytes && lines.size() > 1)) {
      lineBytes -= lines.front().size();
      lines.pop_front();
    }
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

// printf into a string of at most kMaxLogEntryBytes; a longer text is cut
// (at a character's start) and marked with its full length. A long argument
// is never copied whole.
std::string Format(const char* format, va_list args) {
  if (!format) return "";
  char inlineText[kInlineText];
  va_list copy;
  va_copy(copy, args);
  const int length = std::vsnprintf(inlineText, sizeof inlineText, format, copy);
  va_end(copy);
  if (length < 0) return "";
  const size_t full = static_cast<size_t>(length);
  if (full < sizeof inlineText) return std::string(inlineText, full);
  std::string text(std::min(full, hostref::kMaxLogEntryBytes), '\0');
  std::vsnprintf(text.data(), text.size() + 1, format, args);
  if (full > text.size()) {
    // A character the cut split goes whole.
    size_t end = text.size(), lead = end;
    while (lead > 0 && (static_cast<unsigned char>(text[lead - 1]) & 0xC0) == 0x80) --lead;
    if (lead > 0) {
      const unsigned char first = static_cast<unsigned char>(text[lead - 1]);
      const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : first >= 0xC0 ? 2 : 1;
      if (lead - 1 + length > end) end = lead - 1;
    }
    text.resize(end);
    char mark[48];
    std::snprintf(mark, sizeof mark, kCutMark, full);
    text += mark;
  }
  return text;
}

}  // namespace

CLogFile2::CLogFile2(std::string moduleName) : module_(std::move(moduleName)) {}

void CLogFile2::WriteStrInfoEx(int level, const char* format, ...) {
  // A line below the log's level costs nothing: it is not even formatted.
  if (level < Sink().minLevel.load(std::memory_order_relaxed)) return;
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
      LogFile& log = sink.FileOf(module_);
      const std::string stamp = Timestamp();
      LogSink::Rotate(log, stamp.size() + text.size() + 8);
      if (log.file) {
        const int written = std::fprintf(log.file, "%s [%d] %s\n", stamp.c_str(), level, text.c_str());
        if (written > 0) log.size += static_cast<size_t>(written);
        std::fflush(log.file);
      }
    }
    sink.Keep(std::move(line));
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
  Sink().lineBytes = 0;
}

void SetLogObserver(LogObserver observer) {
  auto shared = observer ? std::make_shared<const LogObserver>(std::move(observer)) : nullptr;
  std::lock_guard lock(Sink().mutex);
  Sink().observer = std::move(shared);
}

void SetLogLevel(int level) { Sink().minLevel.store(level, std::memory_order_relaxed); }

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
