// Recorder answers as text: one decoder per edition and command word, each
// writing "label：value" items with the labels from the language table.
#include "pages/control/recorder_decode.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <cstdlib>
#include <cstring>

#include "host/hostcore.h"
#include "lang/language.h"
#include "text/datetime.h"
#include "text/encoding.h"
#include "text/json.h"

namespace recorder {
namespace {

constexpr const char* kCrLf = "\r\n";

// Reply members.
namespace key {
constexpr const char *kVersion = "VER", *kItems = "Item", *kTime = "DTM", *kDriverCode = "GDI", *kLicence = "GCP",
                      *kMileage = "MILE", *kCoefficient = "FEA", *kSpeed = "SPD", *kVin = "VIN", *kPlate = "CARID",
                      *kPlateClass = "SORT", *kStatus = "SIN", *kBegin = "BTM", *kEnd = "ETM", *kYear = "YEAR",
                      *kModification = "MODNUM", *kRecorderTime = "RDTM", *kInstallTime = "IDTM",
                      *kInitialMileage = "INITMILE", *kSignalName = "SINNM", *kCertificate = "CCCCODE",
                      *kModel = "MODE", *kMonth = "MONTH", *kDay = "DAY", *kSerial = "SERNM",
                      *kSamples = "SPDSGN", *kPositions = "POS", *kLongitude = "JD", *kLatitude = "WD",
                      *kAltitude = "GAODU", *kEvent = "STA";
}  // namespace key

// Language texts of the decoded lines.
namespace text {
enum : int {
  kLongitude = 12102, kLatitude = 12101, kUnknown = 12103, kLogin = 12104, kLogout = 12105, kStartTime = 12408,
  kAllWords = 13313, kTime = 13431, kDriverCode = 13426,
  kLicence2003 = 20000, kRecorderTime = 20001, kMileage = 20002, kCoefficient = 20003, kSpeed = 20004, kPlate = 20005,
  kPlateClass = 20006, kVin = 20007, kStatus = 20008, kDriver = 20009, kBegin2003 = 20010, kEnd2003 = 20011,
  kKilometres = 20012, kAltitude = 20013,
  kOtherEdition2003 = 20101, kOtherEdition2012 = 20102, kStandardYear = 20103, kModification = 20104,
  kInstallTime = 20105, kInitialMileage = 20106, kTotalMileage = 20107, kPulseCoefficient = 20108,
  kStatusByte = 20109, kCertificate = 20111, kModel = 20112, kProductionDate = 20113, kSerial = 20114,
  kStopTime = 20115, kLastPosition = 20117, kBegin = 20118, kEnd = 20119, kBeginPosition = 20120,
  kEndPosition = 20121, kEventTime = 20122, kEvent = 20123, kPowerOn = 20124, kPowerOff = 20125,
  kRecordedSpeed = 20126, kReferenceSpeed = 20127, kSpeedStatus = 20128, kSpeedNormal = 20129,
  kSpeedAbnormal = 20130, kStatusBegin = 20131, kStatusEnd = 20132,
  kSignalTitle = 20200, kSpeedRecord = 20201, kPositionRecord = 20202, kAccidentTitle = 20203,
  kAccidentSpeed = 20204, kAccidentStatus = 20205, kOvertimeTitle = 20206, kDriverRecord = 20207,
  kPowerRecord = 20208, kParameterRecord = 20209, kSpeedStatusRecord = 20210,
};
}  // namespace text

constexpr int kWords2003[] = {0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09, 0x11};
constexpr int kWords2012[] = {0x00, 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07,
                              0x08, 0x09, 0x10, 0x11, 0x12, 0x13, 0x14, 0x15};
// The name text of each word, in the order of the word lists.
constexpr int kNames2003[] = {13301, 13302, 13303, 13304, 13305, 13306, 13307, 13308, 13309, 13310};
constexpr int kNames2012[] = {13320, 13321, 13322, 13323, 13324, 13325, 13326, 13327,
                              13328, 13329, 13330, 13331, 13332, 13333, 13334, 13335};
static_assert(std::size(kNames2003) == std::size(kWords2003) && std::size(kNames2012) == std::size(kWords2012));

// A recorded sample: speed in the high byte, status in the low byte; this value ends a record's samples.
constexpr int kSampleEnd = 0xFFFF;
constexpr int kMaxPositions = 60;
constexpr int kUnknownCoordinate = -1, kUnknownSpeed = 0xFF;
constexpr int kLoginEvent = 1, kLogoutEvent = 2, kPowerOnEvent = 1, kPowerOffEvent = 2, kNormalSpeed = 1,
              kAbnormalSpeed = 2;
constexpr double kAccidentInterval = 0.2;  // seconds between the samples before a stop
constexpr int kSignals = 8, kSignalsPerLine = 4;
constexpr int kMileageTenths = 10;
constexpr int kVersion2012 = 2012;
// Names of the parameters whose change the recorder logs.
constexpr std::pair<int, int> kParameterNames[] = {{0x82, 20144}, {0x83, 20145}, {0x84, 20146},
                                                   {0xC2, 20147}, {0xC3, 20148}, {0xC4, 20149}};

std::string L(int id) { return LanguageText(id); }

std::string Printf(const char* format, auto... values) {
  char buffer[64];
  const int n = std::snprintf(buffer, sizeof buffer, format, values...);
  return std::string(buffer, n < 0 ? 0 : std::min<size_t>(static_cast<size_t>(n), sizeof buffer - 1));
}

const Json::Value& Member(const Json::Value& object, const char* name) {
  static const Json::Value kNull;
  if (!object.isObject()) return kNull;
  const Json::Value* found = object.find(name, name + std::strlen(name));
  return found ? *found : kNull;
}
int Int(const Json::Value& object, const char* name) { return txt::JsonMemberInt(object, name, 0); }
int Int(const Json::Value& value) { return static_cast<int>(txt::JsonToInt(value).value_or(0)); }
// A text of the terminal (code page 936).
std::string Str(const Json::Value& object, const char* name) {
  return txt::GbkToUtf8(txt::JsonMemberString(object, name));
}
// A date-time text of the recorder, written the host's way; kept as it came when it does not read as one.
std::string Time(const Json::Value& object, const char* name) {
  const std::string raw = txt::JsonMemberString(object, name);
  if (auto time = txt::ParseDateTimeText(raw)) return FormatSystemTime(*time);
  return txt::GbkToUtf8(raw);
}
// An array member; the empty array when it is none.
const Json::Value& Array(const Json::Value& object, const char* name) {
  static const Json::Value kEmpty(Json::arrayValue);
  const Json::Value& value = Member(object, name);
  return value.isArray() ? value : kEmpty;
}

// "label：value".
std::string Item(int label, const std::string& value) { return FormatChineseColon(L(label), value); }
std::string Line(int label, const std::string& value) { return Item(label, value) + kCrLf; }

std::string Hex(int value) { return Printf("%02X", value & 0xFF); }
std::string Mileage(int tenths, const char* format) { return Printf(format, tenths / static_cast<double>(kMileageTenths)) + " " + L(text::kKilometres); }
std::string Coordinate(int value, const std::string& unknown) {
  return value == kUnknownCoordinate ? unknown : Degrees(value);
}

// ---- 2003 edition ----------------------------------------------------------------

std::string Driver2003(const Json::Value& a) {
  return Line(text::kDriverCode, Printf("%d", Int(a, key::kDriverCode))) + Line(text::kLicence2003, Str(a, key::kLicence));
}
std::string Clock(const Json::Value& a) { return Line(text::kRecorderTime, Time(a, key::kTime)); }
std::string Mileage2003(const Json::Value& a) {
  return Line(text::kRecorderTime, Time(a, key::kTime)) + Line(text::kMileage, Mileage(Int(a, key::kMileage), "%0.1lf"));
}
std::string Coefficient2003(const Json::Value& a) { return Line(text::kCoefficient, Printf("%d", Int(a, key::kCoefficient))); }
std::string Vehicle(const Json::Value& a) {
  return Line(text::kVin, Str(a, key::kVin)) + Line(text::kPlate, Str(a, key::kPlate)) +
         Line(text::kPlateClass, Str(a, key::kPlateClass));
}
// One line a minute: its number and the speed.
std::string Speeds2003(const Json::Value& a) {
  std::string out = Line(text::kRecorderTime, Time(a, key::kTime));
  const Json::Value& items = Array(a, key::kItems);
  for (Json::ArrayIndex i = 0; i < items.size(); ++i) {
    out += Printf("%03u", i + 1) + "\t\t" + Printf("%d", Int(items[i], key::kSpeed)) + " km/h \r\n";
  }
  return out;
}
// The samples before a stop: running number with the status, and the speed.
std::string Accident2003(const Json::Value& a) {
  std::string out = Line(text::kRecorderTime, Time(a, key::kTime));
  const std::string speed = L(text::kSpeed), status = L(text::kStatus);
  const Json::Value& items = Array(a, key::kItems);
  for (Json::ArrayIndex i = 0; i < items.size(); ++i) {
    out += Printf("%03u", i + 1) + " " + FormatChineseColon(status, Hex(Int(items[i], key::kStatus))) + "\t\t" +
           FormatChineseColon(speed, Printf("%d", Int(items[i], key::kSpeed))) + " km/h \r\n";
  }
  return out;
}
std::string DaySpeeds2003(const Json::Value& a) {
  std::string out = Line(text::kRecorderTime, Time(a, key::kTime));
  const std::string speed = L(text::kSpeed);
  const Json::Value& items = Array(a, key::kItems);
  for (Json::ArrayIndex i = 0; i < items.size(); ++i) {
    out += Printf("%2u", i + 1) + "\t" + speed + "\t\t" + Printf("%d", Int(items[i], key::kSpeed)) + " km\\h \r\n";
  }
  return out;
}
std::string Overtime2003(const Json::Value& a) {
  std::string out = Line(text::kDriver, Printf("%d", Int(a, key::kDriverCode)));
  const Json::Value& items = Array(a, key::kItems);
  for (const Json::Value& item : items) {
    out += Item(text::kBegin2003, Time(item, key::kBegin)) + "\t\t" + Item(text::kEnd2003, Time(item, key::kEnd)) + kCrLf;
  }
  return out;
}

// ---- 2012 edition ----------------------------------------------------------------

std::string Standard(const Json::Value& a) {
  return Line(text::kStandardYear, Printf("%d", Int(a, key::kYear))) +
         Line(text::kModification, Printf("%d", Int(a, key::kModification)));
}
std::string Driver2012(const Json::Value& a) { return Line(text::kDriver, Str(a, key::kLicence)); }
std::string Mileage2012(const Json::Value& a) {
  return Line(text::kRecorderTime, Time(a, key::kRecorderTime)) + Line(text::kInstallTime, Time(a, key::kInstallTime)) +
         Line(text::kInitialMileage, Mileage(Int(a, key::kInitialMileage), "%.1lf")) +
         Line(text::kTotalMileage, Mileage(Int(a, key::kMileage), "%.1lf"));
}
std::string Coefficient2012(const Json::Value& a) {
  return Line(text::kRecorderTime, Time(a, key::kTime)) +
         Line(text::kPulseCoefficient, Printf("%d", Int(a, key::kCoefficient)));
}
// The status byte, then the eight signal names from D7 down to D0, four a line.
std::string Signals(const Json::Value& a) {
  std::string out = Line(text::kRecorderTime, Time(a, key::kTime)) + Line(text::kStatusByte, Hex(Int(a, key::kStatus)));
  const Json::Value& items = Array(a, key::kItems);
  const Json::Value& names = items.empty() ? Member(items, "") : items[0];
  out += L(text::kSignalTitle) + kCrLf;
  for (int bit = kSignals - 1; bit >= 0; --bit) {
    const std::string name = key::kSignalName + std::to_string(bit);
    out += "D" + std::to_string(bit) + "=" + Str(names, name.c_str());
    out += bit % kSignalsPerLine == 0 ? kCrLf : "\t";
  }
  return out;
}
std::string Identity(const Json::Value& a) {
  return Line(text::kCertificate, Str(a, key::kCertificate)) + Line(text::kModel, Str(a, key::kModel)) +
         Line(text::kProductionDate,
              Printf("%d-%d-%d", Int(a, key::kYear), Int(a, key::kMonth), Int(a, key::kDay))) +
         Line(text::kSerial, Str(a, key::kSerial));
}

// Per record: its numbered title, its start time and one line a second.
std::string SpeedRecords(const Json::Value& a) {
  const std::string title = L(text::kSpeedRecord), status = L(text::kStatus), speed = L(text::kSpeed);
  std::string out;
  int number = 0;
  for (const Json::Value& record : Array(a, key::kItems)) {
    if (!record.isObject()) continue;
    out += FormatStringInt(title, ++number) + kCrLf + Item(text::kStartTime, Time(record, key::kTime)) + kCrLf;
    const Json::Value& samples = Array(record, key::kSamples);
    for (Json::ArrayIndex i = 0; i < samples.size(); ++i) {
      const int sample = Int(samples[i]);
      if (sample == kSampleEnd) break;
      out += Printf("%u\t", i + 1) + FormatChineseColon(status, Hex(sample)) + "\t" +
             FormatChineseColon(speed, Printf("%d", (sample >> 8) & 0xFF)) + kCrLf;
    }
    out += kCrLf;
  }
  return out;
}

bool IsPositionEnd(int longitude, int latitude, int altitude, int speed) {
  return longitude == kUnknownCoordinate && latitude == kUnknownCoordinate && (altitude & 0xFFFF) == 0xFFFF &&
         (speed & 0xFF) == kUnknownSpeed;
}

// Per record: its numbered title, its start time, the column heads and one line a minute.
std::string PositionRecords(const Json::Value& a) {
  const std::string title = L(text::kPositionRecord), unknown = L(text::kUnknown);
  const std::string heads = L(text::kLongitude) + "\t" + L(text::kLatitude) + "\t" + L(text::kAltitude) + "\t" +
                            L(text::kSpeed) + kCrLf;
  std::string out;
  int number = 0;
  for (const Json::Value& record : Array(a, key::kItems)) {
    if (!record.isObject()) continue;
    out += FormatStringInt(title, ++number) + kCrLf + Item(text::kStartTime, Time(record, key::kTime)) + kCrLf + heads;
    const Json::Value& positions = Array(record, key::kPositions);
    const Json::ArrayIndex count = std::min<Json::ArrayIndex>(positions.size(), kMaxPositions);
    for (Json::ArrayIndex i = 0; i < count; ++i) {
      const Json::Value& p = positions[i];
      const int longitude = Int(p, key::kLongitude), latitude = Int(p, key::kLatitude);
      const int altitude = Int(p, key::kAltitude), speed = Int(p, key::kSpeed);
      if (IsPositionEnd(longitude, latitude, altitude, speed)) break;
      out += Coordinate(longitude, unknown);
      out += '\t';
      out += Coordinate(latitude, unknown);
      out += '\t';
      out += Printf("%d\t", static_cast<int16_t>(altitude));
      out += (speed & 0xFF) == kUnknownSpeed ? unknown : Printf("%d", speed);
      out += kCrLf;
    }
  }
  return out;
}

// "longitude\tlatitude\taltitude" of a position's members.
std::string Position(const Json::Value& p, const char* separator, const std::string& unknown, bool labelled) {
  std::string lon = Coordinate(Int(p, key::kLongitude), unknown), lat = Coordinate(Int(p, key::kLatitude), unknown);
  std::string alt = Printf("%d", static_cast<int16_t>(Int(p, key::kAltitude)));
  if (labelled) lon = Item(text::kLongitude, lon), lat = Item(text::kLatitude, lat), alt = Item(text::kAltitude, alt);
  return lon + separator + lat + separator + alt;
}

// The 0.2 s samples before each stop, then the last valid position.
std::string Accidents(const Json::Value& a) {
  const std::string speed = L(text::kAccidentSpeed), status = L(text::kAccidentStatus), unknown = L(text::kUnknown);
  std::string out = L(text::kAccidentTitle) + kCrLf;
  for (const Json::Value& record : Array(a, key::kItems)) {
    if (!record.isObject()) continue;
    out += Line(text::kStopTime, Time(record, key::kEnd)) + Line(text::kDriver, Str(record, key::kLicence));
    const Json::Value& samples = Array(record, key::kSamples);
    for (Json::ArrayIndex i = 0; i < samples.size(); ++i) {
      const int sample = Int(samples[i]);
      out += Printf("%u\t", i) + Printf("%.1lf", i * kAccidentInterval) + "\t" +
             FormatChineseColon(speed, Printf("%d", (sample >> 8) & 0xFF)) + "\t" +
             FormatChineseColon(status, Hex(sample)) + kCrLf;
    }
    out += Item(text::kLastPosition, Position(record, "\t", unknown, false)) + kCrLf + kCrLf;
  }
  return out;
}

std::string Overtime2012(const Json::Value& a) {
  const std::string unknown = L(text::kUnknown), begin = L(text::kBeginPosition), end = L(text::kEndPosition);
  std::string out = L(text::kOvertimeTitle) + kCrLf;
  for (const Json::Value& record : Array(a, key::kItems)) {
    if (!record.isObject()) continue;
    const Json::Value& positions = Array(record, key::kPositions);
    const Json::Value& first = positions.empty() ? Member(positions, "") : positions[0];
    const Json::Value& last = positions.size() < 2 ? Member(positions, "") : positions[1];
    out += Line(text::kDriver, Str(record, key::kLicence)) + Line(text::kBegin, Time(record, key::kBegin)) +
           Line(text::kEnd, Time(record, key::kEnd));
    out += begin + " " + Position(first, "  ", unknown, true) + kCrLf;
    out += end + " " + Position(last, "  ", unknown, true) + kCrLf + kCrLf;
  }
  return out;
}

// Numbered event records: title, time, the record's own lines, the event.
template <class EventText, class Extra>
std::string Events(const Json::Value& a, int titleText, EventText event, Extra extra) {
  const std::string title = L(titleText);
  std::string out;
  int number = 0;
  for (const Json::Value& record : Array(a, key::kItems)) {
    if (!record.isObject()) continue;
    out += FormatStringInt(title, ++number) + kCrLf + Line(text::kEventTime, Time(record, key::kTime)) + extra(record) +
           Line(text::kEvent, event(Int(record, key::kEvent))) + kCrLf;
  }
  return out;
}
std::string TwoStateText(int value, int first, int firstText, int second, int secondText) {
  return value == first ? L(firstText) : value == second ? L(secondText) : Hex(value);
}
std::string NoLines(const Json::Value&) { return {}; }

std::string Logins(const Json::Value& a) {
  return Events(
      a, text::kDriverRecord,
      [](int v) { return TwoStateText(v, kLoginEvent, text::kLogin, kLogoutEvent, text::kLogout); },
      [](const Json::Value& r) { return Line(text::kDriver, Str(r, key::kLicence)); });
}
std::string Power(const Json::Value& a) {
  return Events(
      a, text::kPowerRecord,
      [](int v) { return TwoStateText(v, kPowerOnEvent, text::kPowerOn, kPowerOffEvent, text::kPowerOff); }, NoLines);
}
std::string Parameters(const Json::Value& a) {
  return Events(
      a, text::kParameterRecord,
      [](int v) {
        std::string event = Hex(v);
        for (auto [word, name] : kParameterNames) {
          if (word == (v & 0xFF)) event += " " + L(name);
        }
        return event;
      },
      NoLines);
}

// Per record: the status, its minute and one line a second of recorded and reference speed.
std::string SpeedStatus(const Json::Value& a) {
  const std::string title = L(text::kSpeedStatusRecord);
  const std::string heads = L(text::kTime) + "\t" + L(text::kRecordedSpeed) + "\t" + L(text::kReferenceSpeed) + kCrLf;
  std::string out;
  int number = 0;
  for (const Json::Value& record : Array(a, key::kItems)) {
    if (!record.isObject()) continue;
    out += FormatStringInt(title, ++number) + kCrLf +
           Line(text::kSpeedStatus, TwoStateText(Int(record, key::kEvent), kNormalSpeed, text::kSpeedNormal,
                                                 kAbnormalSpeed, text::kSpeedAbnormal)) +
           Line(text::kStatusBegin, Time(record, key::kBegin)) + Line(text::kStatusEnd, Time(record, key::kEnd)) + heads;
    const Json::Value& speeds = Array(record, key::kSpeed);
    for (Json::ArrayIndex i = 0; i < speeds.size(); ++i) {
      const int value = Int(speeds[i]);
      out += Printf("%02u\t%d\t%d\r\n", i, (value >> 8) & 0xFF, value & 0xFF);
    }
    out += kCrLf;
  }
  return out;
}

using Decoder = std::string (*)(const Json::Value&);
struct Entry {
  int word;
  Decoder decode;
};
constexpr Entry kDecoders2003[] = {{0x01, Driver2003},   {0x02, Clock},    {0x03, Mileage2003},
                                   {0x04, Coefficient2003}, {0x05, Speeds2003}, {0x06, Vehicle},
                                   {0x07, Accident2003}, {0x08, Mileage2003}, {0x09, DaySpeeds2003},
                                   {0x11, Overtime2003}};
constexpr Entry kDecoders2012[] = {{0x00, Standard},     {0x01, Driver2012},    {0x02, Clock},
                                   {0x03, Mileage2012},  {0x04, Coefficient2012}, {0x05, Vehicle},
                                   {0x06, Signals},      {0x07, Identity},      {0x08, SpeedRecords},
                                   {0x09, PositionRecords}, {0x10, Accidents},  {0x11, Overtime2012},
                                   {0x12, Logins},       {0x13, Power},         {0x14, Parameters},
                                   {0x15, SpeedStatus}};

constexpr int kWordClock = 0x02;
}  // namespace

std::span<const int> Words(Edition edition) {
  return edition == Edition::k2012 ? std::span<const int>(kWords2012) : std::span<const int>(kWords2003);
}

bool IsRecordWord(int word) { return word == 0x08 || word == 0x09 || (word >= 0x10 && word <= 0x15) || word == kAllWords; }

std::string WordName(Edition edition, int word) {
  if (word == kAllWords) return L(text::kAllWords);
  const auto words = Words(edition);
  const auto found = std::find(words.begin(), words.end(), word);
  if (found == words.end()) return {};
  const int* names = edition == Edition::k2003 ? kNames2003 : kNames2012;
  return L(names[found - words.begin()]) + Printf("(%02XH)", word);
}

std::string Degrees(int64_t value) {
  // 600000 units a degree; four decimals are 60 units each.
  constexpr int64_t kPerDegree = 600000, kPerDecimal = 60;
  const uint64_t magnitude = static_cast<uint64_t>(value < 0 ? -value : value);
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%s%llu.%04llu", value < 0 ? "-" : "",
                static_cast<unsigned long long>(magnitude / kPerDegree),
                static_cast<unsigned long long>(magnitude % kPerDegree / kPerDecimal));
  return buffer;
}

std::string Decode(Edition edition, int word, const Json::Value& answer) {
  const std::span<const Entry> decoders =
      edition == Edition::k2012 ? std::span<const Entry>(kDecoders2012) : std::span<const Entry>(kDecoders2003);
  for (const Entry& entry : decoders) {
    if (entry.word == word) return entry.decode(answer);
  }
  return {};
}

std::string DecodeAnswer(Edition edition, int word, const Json::Value& answer) {
  if (word != kWordClock) {
    const bool is2012 = Int(answer, key::kVersion) == kVersion2012;
    if (edition == Edition::k2012 && !is2012) return L(text::kOtherEdition2012);
    if (edition == Edition::k2003 && is2012) return L(text::kOtherEdition2003);
  }
  return Decode(edition, word, answer);
}

}  // namespace recorder
