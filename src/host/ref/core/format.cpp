// Formatting of standard values: labels with colons, status lists, numbers in
// texts, times, full-width characters, and the host's names of functions,
// groups and result codes (from a language file, with built-in fallbacks).
#include <cstdio>
#include <mutex>
#include <optional>
#include <string>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "text/encoding.h"
#include "text/profile.h"

namespace {

constexpr const char* kFullWidthColon = "\xEF\xBC\x9A";  // U+FF1A
constexpr const char* kFullWidthComma = "\xEF\xBC\x8C";  // U+FF0C
constexpr const char* kIdeographicSpace = "\xE3\x80\x80";  // U+3000
constexpr char kFirstPrintable = '!', kLastPrintable = '~';
constexpr char32_t kFullWidthFirst = 0xFF01;  // the full-width form of '!'

constexpr const char* kSectionFunction = "FUNCTION";
constexpr const char* kSectionGroup = "GROUP";
constexpr const char* kSectionError = "ERROR";
constexpr int kRootGroup = -1;
constexpr int kStatusOffline = 101, kStatusTimeout = 110;

// The language file's host sections; empty until LoadHostTexts succeeds.
class HostTexts {
 public:
  bool Load(const std::string& path) {
    auto file = txt::ProfileFile::Load(path);
    std::lock_guard lock(mutex_);
    file_ = std::move(file);
    return file_.has_value();
  }
  std::string Get(const char* section, const std::string& key, const std::string& fallback) {
    std::lock_guard lock(mutex_);
    if (file_) {
      if (auto text = file_->Find(section, key)) return *text;
    }
    return fallback;
  }

 private:
  std::mutex mutex_;
  std::optional<txt::ProfileFile> file_;
};

HostTexts& Texts() {
  static HostTexts texts;
  return texts;
}

}  // namespace

std::string FormatChineseColon(const std::string& label, const std::string& value) {
  return label + kFullWidthColon + value;
}

void AddStringStatus(std::string& status, const std::string& item, const std::string& separator) {
  if (!status.empty()) status += separator;
  status += item;
}

void AddChineseStringStatus(std::string& status, const std::string& item) {
  AddStringStatus(status, item, kFullWidthComma);
}

std::string FormatStringInt(const std::string& format, int number) {
  std::string text = format;
  const size_t at = text.find("%d");
  if (at != std::string::npos) text.replace(at, 2, std::to_string(number));
  return text;
}

std::string FormatSystemTime(const SYSTEMTIME& time) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.wYear, time.wMonth, time.wDay, time.wHour,
                time.wMinute, time.wSecond);
  return text;
}

std::string FormatSecond(int seconds) {
  if (seconds < 0) seconds = 0;
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d:%02d", seconds / 3600, seconds / 60 % 60, seconds % 60);
  return text;
}

std::string GetChineseChar(const std::string& ascii) {
  std::string out;
  out.reserve(ascii.size() * 3);
  for (char c : ascii) {
    if (c == ' ')
      out += kIdeographicSpace;
    else if (c >= kFirstPrintable && c <= kLastPrintable)
      out += txt::Utf16ToUtf8(std::u16string(1, static_cast<char16_t>(kFullWidthFirst + (c - kFirstPrintable))));
    else
      out += c;
  }
  return out;
}

std::string IDIRErrorString(int code) {
  std::string fallback;
  if (code == kStatusOffline)
    fallback = "Device offline";
  else if (code == kStatusTimeout)
    fallback = "Request timed out";
  else
    fallback = FormatStringInt("Error %d", code);
  return Texts().Get(kSectionError, std::to_string(code), fallback);
}

std::string FormatStringMgr::Format808FunctionType(int functionType, int /*flag*/) {
  return Texts().Get(kSectionFunction, std::to_string(functionType), FormatStringInt("Function %d", functionType));
}

std::string FormatStringMgr::Format808FunctionGroup(int group, int flag) {
  // The root's name depends on the protocol family: key "-1.808" or "-1.905".
  std::string key = std::to_string(group);
  if (group == kRootGroup) key += "." + std::to_string(flag);
  return Texts().Get(kSectionGroup, key, "Group " + key);
}

namespace hostref {
bool LoadHostTexts(const std::string& languageFile) {
  LoadExportTexts(languageFile);
  return Texts().Load(languageFile);
}
}  // namespace hostref
