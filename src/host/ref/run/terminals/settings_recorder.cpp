// Settings terminals: the recorder (tachograph) parameters. A write stores the
// values as the terminal received them (texts in code page 936); a read of the
// matching word answers them back. Words that mean different things in the
// two editions of the recorder standard follow the request's "VER"; a read
// without "VER" of word 0x06 answers both meanings (VIN and signal names).
#include <json/value.h>

#include <cstdio>
#include <string>

#include "host/ref/run/terminals.h"
#include "host/ref/run/terminals/recorder_params.h"
#include "platform/clock.h"
#include "text/datetime.h"
#include "text/encoding.h"
#include "text/json.h"
#include "text/numbers.h"

namespace hostref::terminals {
namespace {
constexpr int kParameters = 0x8701;
constexpr int kEdition2003 = 2003, kEdition2012 = 2012;

// Recorder command words: reads and writes.
enum Word : int {
  kReadDriver = 0x01, kReadClock = 0x02, kReadMileage = 0x03, kReadCoefficient = 0x04, kReadVehicle2012 = 0x05,
  kReadWord6 = 0x06,  // 2003: vehicle; 2012: status signals
  kWriteDriver = 0x81, kWriteVehicle = 0x82, kWriteInstallTime = 0x83, kWriteSignals = 0x84, kWriteClock = 0xC2,
  kWriteCoefficient = 0xC3, kWriteMileage = 0xC4,
};

namespace key {
constexpr const char *kWord = "CDID", *kEdition = "VER", *kDriver = "GDI", *kLicence = "GCP", *kVin = "VIN",
                     *kPlate = "CARID", *kClass = "SORT", *kTime = "DTM", *kRecorderTime = "RDTM",
                     *kInstallTime = "IDTM", *kInitialMileage = "INITMILE", *kMileage = "MILE",
                     *kCoefficient = "FEA", *kSignalState = "SIN", *kItems = "Item", *kSignalName = "SINNM";
}  // namespace key

constexpr int kSignals = kRecorderSignals;
constexpr int kDrivenSinceInstall = 1234;  // 0.1 km the vehicle has run beyond the initial mileage
using Recorder = RecorderParameters;

DeviceState<Recorder> g_recorders;

}  // namespace

RecorderParameters& RecorderParametersOf(const std::string& idno) {
  Recorder& r = g_recorders[idno];
  if (r.vin.empty() && r.licence.empty()) {
    // A fresh recorder: set up at installation for its vehicle and driver, its clock on time.
    uint32_t seed = 7;
    for (unsigned char c : idno) seed = seed * 31 + c;
    const std::string digits = (idno + "00000").substr(0, 5);
    r.driverCode = 100000 + static_cast<int>(seed % 900000);
    r.licence = "44030119850315" + std::to_string(1000 + seed % 9000);
    r.vin = "LFWSRXRJ0N1" + std::to_string(100000 + seed % 900000);
    r.plate = txt::Utf8ToGbk("粤B" + digits);
    r.plateClass = txt::Utf8ToGbk("大型货车");
    r.clock = plat::GetLocalTime();
    r.clock.wMilliseconds = 0;
    r.installed = SYSTEMTIME{2024, 3, 5, 15, 9, 0, 0, 0};
    r.initialMileage = 1200 + static_cast<int>(seed % 500);
    r.coefficient = 3600 + static_cast<int>(seed % 100);
    const char* names[] = {"近光", "远光", "右转向", "左转向", "制动", "倒车", "示廓灯", "车门"};
    for (int i = 0; i < kSignals; ++i) r.signalNames[i] = txt::Utf8ToGbk(names[i]);
  }
  return r;
}

namespace {
Recorder& RecorderOf(const std::string& idno) { return RecorderParametersOf(idno); }

std::string SignalKey(int index) { return key::kSignalName + std::to_string(index); }

// A time from "YEAR" ... "SEC"; nullopt when a field is missing or out of range.
std::optional<SYSTEMTIME> TimeFields(const Json::Value& p) {
  int f[6];
  const char* keys[6] = {"YEAR", "MONTH", "DAY", "HOUR", "MIN", "SEC"};
  for (int i = 0; i < 6; ++i) {
    f[i] = txt::JsonMemberInt(p, keys[i], -1);
    if (f[i] < 0) return std::nullopt;
  }
  char text[64];
  std::snprintf(text, sizeof text, "%d-%d-%d %d:%d:%d", f[0], f[1], f[2], f[3], f[4], f[5]);
  return txt::ParseDateTimeText(text);
}

// "YYMMDDhhmmss", the recorder time of a 2012 coefficient write.
std::optional<SYSTEMTIME> ShortTime(const std::string& digits) {
  if (digits.size() != 12 || digits.find_first_not_of("0123456789") != std::string::npos) return std::nullopt;
  std::string text;
  for (size_t i = 0; i < digits.size(); i += 2) text += digits.substr(i, 2) + " ";
  return txt::ParseDateTimeText(text);
}

Answer Write(const TerminalRequest& r) {
  if (!r.param.isObject()) return Reply({}, kResultMessageError);
  const Json::Value& p = r.param;
  Recorder& rec = RecorderOf(r.devIdno);
  switch (txt::JsonMemberInt(p, key::kWord, -1)) {
    case kWriteDriver:
      rec.driverCode = txt::JsonMemberInt(p, key::kDriver, 0);
      rec.licence = txt::JsonMemberString(p, key::kLicence);
      return Reply({});
    case kWriteVehicle:
      rec.vin = txt::JsonMemberString(p, key::kVin);
      rec.plate = txt::JsonMemberString(p, key::kPlate);
      rec.plateClass = txt::JsonMemberString(p, key::kClass);
      return Reply({});
    case kWriteClock:
    case kWriteInstallTime: {
      const auto time = TimeFields(p);
      if (!time) return Reply({}, kResultFailed);
      (txt::JsonMemberInt(p, key::kWord, 0) == kWriteClock ? rec.clock : rec.installed) = *time;
      return Reply({});
    }
    case kWriteCoefficient:
      if (txt::JsonMemberInt(p, key::kEdition, 0) == kEdition2012) {
        const auto time = ShortTime(txt::JsonMemberString(p, key::kRecorderTime));
        if (!time) return Reply({}, kResultFailed);
        rec.clock = *time;
      }
      rec.coefficient = txt::JsonMemberInt(p, key::kCoefficient, 0);
      return Reply({});
    case kWriteMileage: {
      const std::string digits = txt::JsonMemberString(p, key::kInitialMileage);
      if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
        return Reply({}, kResultFailed);
      }
      rec.initialMileage = txt::WToI(digits);
      return Reply({});
    }
    case kWriteSignals:
      for (int i = 0; i < kSignals; ++i) rec.signalNames[i] = FormDecode(txt::JsonMemberString(p, SignalKey(i).c_str()));
      return Reply({});
    default:
      return Reply({}, kResultUnsupported);
  }
}

void PutVehicle(Json::Value& reply, const Recorder& rec) {
  reply[key::kVin] = rec.vin;
  reply[key::kPlate] = rec.plate;
  reply[key::kClass] = rec.plateClass;
}

void PutSignals(Json::Value& reply, const Recorder& rec) {
  reply[key::kEdition] = kEdition2012;
  reply[key::kTime] = txt::FormatRequestTime(rec.clock);
  reply[key::kSignalState] = 0;
  Json::Value names(Json::objectValue);
  for (int i = 0; i < kSignals; ++i) names[SignalKey(i)] = rec.signalNames[i];
  reply[key::kItems].append(names);
}

// Reads (0x8700) are the record collection's, which hands parameter words here.
const RegisterResponder kWrite{kParameters, Write};
}  // namespace

std::optional<Answer> ReadRecorderParameters(const TerminalRequest& r) {
  const Recorder& rec = RecorderOf(r.devIdno);
  const int edition = txt::JsonMemberInt(r.param, key::kEdition, 0);
  const bool only2003 = edition == kEdition2003, only2012 = edition == kEdition2012;
  Json::Value reply(Json::objectValue);
  switch (txt::JsonMemberInt(r.param, key::kWord, -1)) {
    case kReadDriver:
      reply[key::kDriver] = rec.driverCode;
      reply[key::kLicence] = rec.licence;
      break;
    case kReadClock:
      reply[key::kTime] = txt::FormatRequestTime(rec.clock);
      break;
    case kReadMileage:
      if (only2003) {
        reply[key::kTime] = txt::FormatRequestTime(rec.clock);
      } else {
        reply[key::kEdition] = kEdition2012;
        reply[key::kRecorderTime] = txt::FormatRequestTime(rec.clock);
        reply[key::kInstallTime] = txt::FormatRequestTime(rec.installed);
        reply[key::kInitialMileage] = rec.initialMileage;
      }
      reply[key::kMileage] = rec.initialMileage + kDrivenSinceInstall;
      break;
    case kReadCoefficient:
      if (!only2003) {
        reply[key::kEdition] = kEdition2012;
        reply[key::kTime] = txt::FormatRequestTime(rec.clock);
      }
      reply[key::kCoefficient] = rec.coefficient;
      break;
    case kReadVehicle2012:
      if (only2003) return std::nullopt;  // the 2003 word 0x05 is a speed record
      reply[key::kEdition] = kEdition2012;
      PutVehicle(reply, rec);
      break;
    case kReadWord6:
      if (!only2012) PutVehicle(reply, rec);
      if (!only2003) PutSignals(reply, rec);
      break;
    default:
      return std::nullopt;
  }
  return Reply(reply);
}

}  // namespace hostref::terminals
