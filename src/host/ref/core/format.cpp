// Formatting of standard values: labels with colons, status lists, numbers in
// texts, times, full-width characters, and the host's names of functions,
// groups and result codes (from a language file, with built-in fallbacks).
#include <cstdio>
#include <cstring>
#include <iterator>
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
constexpr const char* kSectionTerminal905 = "TERMINAL905";
// The taxi device types the host knows, by number; empty numbers are reserved.
constexpr const char* kTerminalTypes905[] = {
    "智能终端", "计价器", "安全模块", "LED顶灯", "LED广告屏", "", "服务评价器", "", "摄像装置", "",
    "卫星定位模块", "", "通讯模块", "", "", "车载视频终端", "", "", "紧急报警装置"};
constexpr const char* kSectionHost = "HOST";
constexpr int kTextVehicle = 1;
constexpr const char* kSectionAlarm = "ALARM";
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
  constexpr size_t kColonBytes = std::char_traits<char>::length(kFullWidthColon);
  std::string text;
  text.reserve(label.size() + kColonBytes + value.size());
  text.append(label).append(kFullWidthColon, kColonBytes).append(value);
  return text;
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

std::string GetLanguageStr(int id) {
  return Texts().Get(kSectionHost, std::to_string(id), id == kTextVehicle ? "Vehicle" : "");
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

std::string FormatStringMgr::GetTerminalType905(int type) {
  if (type < 0 || type >= static_cast<int>(std::size(kTerminalTypes905))) return {};
  const char* builtIn = kTerminalTypes905[type];
  // A reserved number stays empty; the language file may rename the others.
  return *builtIn ? Texts().Get(kSectionTerminal905, std::to_string(type), builtIn) : std::string();
}

namespace {
constexpr int kMillionths = 1000000;

// The names of the alarm bits of a position report, by bit; "" for the reserved bits.
constexpr const char* kAlarmNames[32] = {
    "Emergency alarm", "Overspeed", "Fatigue driving", "Dangerous driving warning", "GNSS module fault",
    "GNSS antenna disconnected", "GNSS antenna short-circuited", "Main power undervoltage", "Main power off",
    "Display fault", "TTS module fault", "Camera fault", "IC card module fault", "Overspeed warning",
    "Fatigue driving warning", "Driving violation warning", "", "", "Driving time exceeded today",
    "Parked too long", "Entering or leaving an area", "Entering or leaving a route", "Route driving time wrong",
    "Off the route", "Vehicle speed sensor fault", "Fuel level abnormal", "Vehicle stolen", "Illegal ignition",
    "Illegal displacement", "Collision warning", "Rollover warning", "Door opened illegally"};
}  // namespace

// Whole degrees and six decimals from the integer, so no rounding creeps in.
std::string GetLat(int millionths) {
  const int64_t value = millionths;
  const int64_t magnitude = value < 0 ? -value : value;
  char text[32];
  std::snprintf(text, sizeof text, "%s%lld.%06lld", value < 0 ? "-" : "", static_cast<long long>(magnitude / kMillionths),
                static_cast<long long>(magnitude % kMillionths));
  return text;
}

std::string FormatSpeedToString(float kmh) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f", static_cast<double>(kmh));
  return text;
}

std::string FormatGPSToStrEx(int longitude, int latitude) { return GetLat(longitude) + "," + GetLat(latitude); }

CMgrJTT& CMgrJTT::Instance() {
  static CMgrJTT manager;
  return manager;
}

std::string CMgrJTT::GetAlarmMaskString(uint32_t flags) const {
  std::string text;
  for (int bit = 0; bit < 32; ++bit) {
    if (!((flags >> bit) & 1u)) continue;
    const std::string fallback = *kAlarmNames[bit] ? kAlarmNames[bit] : FormatStringInt("Alarm bit %d", bit);
    AddStringStatus(text, Texts().Get(kSectionAlarm, std::to_string(bit), fallback), ",");
  }
  return text;
}

// ---- alarm texts: section ALARM, keys "<kind>.<number>", English without a file ----

namespace {
std::string AlarmText(const char* kind, int number, const char* const* fallbacks, int count, const char* other) {
  const std::string fallback =
      number >= 0 && number < count ? fallbacks[number] : FormatStringInt(std::string(other) + " %d", number);
  return Texts().Get(kSectionAlarm, std::string(kind) + "." + std::to_string(number), fallback);
}

constexpr const char* kHandleWays[] = {"",
                                       "Recorded",
                                       "Handled",
                                       "Being handled",
                                       "Dealt with by the driver",
                                       "False alarm",
                                       "Closed",
                                       "Passed to the police",
                                       "Passed to the transport office",
                                       "Called the driver",
                                       "Sent a message",
                                       "Took a photo",
                                       "Watched the video",
                                       "Other"};
constexpr const char* kReportKinds[] = {"Do not report", "Report to the platform", "Report to the superior platform",
                                        "Report to both"};
constexpr const char* kFalseReasons[] = {"Equipment failure", "Bad weather"};
constexpr const char* kHandleResults[] = {"Handling", "Handled", "No action", "Will handle later"};
constexpr const char* kInfoTypes[] = {"Alarm supervision", "Alarm urging", "Inspection"};

constexpr size_t kAlarmInfoType = 152, kAlarmText = 164, kAlarmTextBytes = 260;

std::string RecordText(const _GPSVehicleAlarm& alarm, size_t offset, size_t size) {
  const char* text = reinterpret_cast<const char*>(alarm.bytes + offset);
  size_t n = 0;
  while (n < size && text[n]) ++n;
  return std::string(text, n);
}
}  // namespace

std::string FormatStringMgr::FormatAlarmHandleStr(int way) {
  return AlarmText("Handle", way, kHandleWays, static_cast<int>(std::size(kHandleWays)), "Handling way");
}
std::string FormatStringMgr::FormatAlarmHandleReportStr(int kind) {
  return AlarmText("Report", kind, kReportKinds, static_cast<int>(std::size(kReportKinds)), "Report kind");
}
std::string FormatStringMgr::FormatAlarmFalseReasonStr(int reason) {
  return AlarmText("FalseReason", reason, kFalseReasons, static_cast<int>(std::size(kFalseReasons)), "Reason");
}
std::string FormatStringMgr::GetHandleResult(int result) {
  return AlarmText("Result", result, kHandleResults, static_cast<int>(std::size(kHandleResults)), "Result");
}

// "<kind of request>\r\n<the request's text, one part a line>".
std::string GetJT809AlarmDesc(const _GPSVehicleAlarm* alarm) {
  if (!alarm) return "";
  uint32_t infoType = 0;
  std::memcpy(&infoType, alarm->bytes + kAlarmInfoType, sizeof infoType);
  std::string desc =
      AlarmText("Info", static_cast<int>(infoType), kInfoTypes, static_cast<int>(std::size(kInfoTypes)), "Request");
  std::string text = RecordText(*alarm, kAlarmText, kAlarmTextBytes);
  for (size_t at = text.find('|'); at != std::string::npos; at = text.find('|', at + 2)) text.replace(at, 1, "\r\n");
  if (!text.empty()) desc += "\r\n" + text;
  return desc;
}

namespace hostref {
bool LoadHostTexts(const std::string& languageFile) {
  LoadExportTexts(languageFile);
  return Texts().Load(languageFile);
}
}  // namespace hostref
