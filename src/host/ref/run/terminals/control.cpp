// Vehicle control terminals: door, oil and circuit control, the regional
// control, terminal control words, wake-up, alarm control, oil and power
// cut-off, data pass-through, the platform's RSA key, link checks, driver
// identity reports and temporary position tracking. Each terminal checks the
// values as it would decode them and keeps what it was told; the vehicle
// control answers with the status word that follows from it.
#include <json/value.h>

#include <optional>
#include <string>
#include <vector>

#include "host/ref/run/terminals.h"
#include "text/datetime.h"
#include "text/encoding.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kVehicleControl = 0x8500, kRegionalControl = 0x8F00, kTerminalControl = 0x8105,
              kAlarmControlOn = 0x8B0A, kAlarmControlOff = 0x8B0B, kOilAndPower = 0xA006, kPassThrough = 0x8900,
              kRsaKey = 0x8A00, kLinkCheck = 0x8204, kDriverReport = 0x8702, kPositionTracking = 0x8202;

// Terminal control words: 1 upgrade, 2 connect to a server, 3 switch off ... 8 wake up.
constexpr int kFirstControlWord = 1, kLastControlWord = 8;
constexpr int kMaxByte = 0xFF, kMaxWord = 0xFFFF;
constexpr int kCutNormally = 1, kCutAtOnce = 0x55;
// Status word bits of the answer to a vehicle control: oil cut, circuit cut, doors locked.
constexpr int kStatusOilCut = 1 << 10, kStatusCircuitCut = 1 << 11, kStatusDoorLocked = 1 << 12;

struct ControlState {
  int status = 0;            // the status word bits above
  bool regionalControl = false;
  int lastControlWord = 0;
  int wakeSeconds = 0;
  bool alarmControl = false;
  int oilState = 0;
  std::string oilValidUntil;
  std::vector<std::pair<int, std::string>> passThrough;  // type, content (UTF-8)
  Json::Int64 rsaExponent = 0;
  std::string rsaModulus;
  int trackInterval = 0, trackValidity = 0, trackAttr = 0;
};
DeviceState<ControlState> g_states;

// An integer member within [min, max]; nullopt when absent, unreadable or out of range.
std::optional<int64_t> Value(const Json::Value& param, const char* key, int64_t min, int64_t max) {
  if (!param.isObject()) return std::nullopt;
  const Json::Value* member = param.find(key, key + std::char_traits<char>::length(key));
  const std::optional<int64_t> value = member ? txt::JsonToInt(*member) : std::nullopt;
  if (!value || *value < min || *value > max) return std::nullopt;
  return value;
}

// The door, oil and circuit of a vehicle: type 0 oil, 1 circuit, 2 doors, 3 all (the 2013 form has doors only).
Answer VehicleControl(const TerminalRequest& r) {
  const auto flag = Value(r.param, "CTLA", 0, 1);
  const bool typed = r.param.isObject() && r.param.isMember("Type");
  const auto type = typed ? Value(r.param, "Type", 0, 3) : std::optional<int64_t>(2);
  if (!flag || !type) return Reply({}, kResultMessageError);
  int& status = g_states[r.devIdno].status;
  const int bits[] = {kStatusOilCut, kStatusCircuitCut, kStatusDoorLocked,
                      kStatusOilCut | kStatusCircuitCut | kStatusDoorLocked};
  status = *flag ? status | bits[*type] : status & ~bits[*type];
  Json::Value body;
  body["Status"] = status;
  return Reply(body);
}

Answer RegionalControl(const TerminalRequest& r) {
  const auto flag = Value(r.param, "CTLA", 1, 2);
  if (!flag) return Reply({}, kResultMessageError);
  g_states[r.devIdno].regionalControl = *flag == 1;
  return Reply({});
}

Answer TerminalControl(const TerminalRequest& r) {
  const auto word = Value(r.param, "Command", kFirstControlWord, kLastControlWord);
  if (!word) return Reply({}, kResultMessageError);
  const bool hasFlag = r.param.isMember("Flag");
  const auto seconds = hasFlag ? Value(r.param, "Flag", 1, kMaxWord) : std::optional<int64_t>(0);
  if (!seconds) return Reply({}, kResultMessageError);
  ControlState& state = g_states[r.devIdno];
  state.lastControlWord = static_cast<int>(*word);
  if (*word == kLastControlWord) state.wakeSeconds = static_cast<int>(*seconds);
  return Reply({});
}

Answer AlarmControl(const TerminalRequest& r, bool on) {
  if (!r.param.isNull()) return Reply({}, kResultMessageError);
  g_states[r.devIdno].alarmControl = on;
  return Reply({});
}

Answer OilAndPower(const TerminalRequest& r) {
  const auto state = Value(r.param, "STA", 0, kMaxByte);
  const std::string until = txt::JsonMemberString(r.param, "DTM");
  if (!state || !txt::ParseDateTimeText(until)) return Reply({}, kResultMessageError);
  ControlState& s = g_states[r.devIdno];
  s.oilState = static_cast<int>(*state);
  s.oilValidUntil = until;
  const bool cut = *state == kCutNormally || *state == kCutAtOnce;
  s.status = cut ? s.status | kStatusOilCut | kStatusCircuitCut : s.status & ~(kStatusOilCut | kStatusCircuitCut);
  return Reply({});
}

// Transparent data: the plain form (a type and its content), or the provincial one (a sub-type and its fields).
Answer PassThrough(const TerminalRequest& r) {
  if (r.param.isObject() && r.param.isMember("SCTYPE")) return ProvincialTransparentData(r);
  const auto type = Value(r.param, "CMT", 0, kMaxByte);
  if (!type) return Reply({}, kResultMessageError);
  g_states[r.devIdno].passThrough.emplace_back(static_cast<int>(*type), TypedText(r.param, "CMC"));
  return Reply({});
}

// The key's modulus is at most 128 bytes, written as hexadecimal digits.
Answer RsaKey(const TerminalRequest& r) {
  const auto exponent = Value(r.param, "E", 0, 0xFFFFFFFFLL);
  const std::string modulus = FormDecode(txt::JsonMemberString(r.param, "N_S"));
  if (!exponent || modulus.empty() || modulus.size() > 256) return Reply({}, kResultMessageError);
  ControlState& s = g_states[r.devIdno];
  s.rsaExponent = *exponent;
  s.rsaModulus = modulus;
  return Reply({});
}

Answer NoParameters(const TerminalRequest& r) {
  return r.param.isNull() ? Reply({}) : Reply({}, kResultMessageError);
}

// The driver's identity as the card reader gives it: inserted card, read successfully.
Answer DriverReport(const TerminalRequest& r) {
  if (!r.param.isNull()) return Reply({}, kResultMessageError);
  Json::Value body;
  body["STA"] = 1;
  body["DTM"] = "2026-01-04 07:02:11";
  body["ICRST"] = 0;
  body["DRNAME"] = txt::Utf8ToGbk("张伟");
  body["QUACODE"] = "44030119850315" + r.devIdno.substr(0, 4);
  body["ORGNAME"] = txt::Utf8ToGbk("深圳市交通运输局");
  body["EXPDATE"] = "2029-06-30";
  return Reply(body);
}

Answer PositionTracking(const TerminalRequest& r) {
  const auto interval = Value(r.param, "TIBT", 0, kMaxWord);
  const auto validity = Value(r.param, "POTR", 0, 0xFFFFFFFFLL);
  const bool hasAttr = r.param.isObject() && r.param.isMember("ATTR");
  const auto attr = hasAttr ? Value(r.param, "ATTR", 0, kMaxByte) : std::optional<int64_t>(0);
  if (!interval || !validity || !attr) return Reply({}, kResultMessageError);
  ControlState& s = g_states[r.devIdno];
  s.trackInterval = static_cast<int>(*interval);
  s.trackValidity = static_cast<int>(*validity);
  s.trackAttr = static_cast<int>(*attr);
  return Reply({});
}

const RegisterResponder kResponders[] = {
    {kVehicleControl, VehicleControl},
    {kRegionalControl, RegionalControl},
    {kTerminalControl, TerminalControl},
    {kAlarmControlOn, [](const TerminalRequest& r) { return AlarmControl(r, true); }},
    {kAlarmControlOff, [](const TerminalRequest& r) { return AlarmControl(r, false); }},
    {kOilAndPower, OilAndPower},
    {kPassThrough, PassThrough},
    {kRsaKey, RsaKey},
    {kLinkCheck, NoParameters},
    {kDriverReport, DriverReport},
    {kPositionTracking, PositionTracking},
};
}  // namespace
}  // namespace hostref::terminals
