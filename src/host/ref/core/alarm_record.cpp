// Alarm records of the reference host, made from JSON (the fleet's "alarms",
// or a test's own): the fields the plug-in reads, at their offsets.
#include <algorithm>
#include <cstring>

#include "host/hostcore.h"
#include "host/ref/hostref.h"

namespace hostref {
namespace {

struct TextField {
  const char* key;
  size_t offset;
  size_t size;  // including the terminating NUL
};
struct NumberField {
  const char* key;
  size_t offset;
  size_t bytes;
};

constexpr TextField kTexts[] = {{"devIdno", 0, 32}, {"guid", 32, 40}, {"text", 164, 260}};
constexpr NumberField kNumbers[] = {{"msgId", 106, 2}, {"time", 140, 4}, {"type", 144, 2},  {"flag", 148, 1},
                                    {"info", 152, 4},  {"value", 156, 4}, {"time2", 424, 4}, {"type2", 684, 2}};

void PutNumber(std::vector<uint8_t>& record, size_t offset, size_t bytes, uint64_t value) {
  for (size_t i = 0; i < bytes; ++i) record[offset + i] = static_cast<uint8_t>(value >> (8 * i));
}

}  // namespace

std::optional<std::vector<uint8_t>> MakeAlarmRecord(const Json::Value& alarm, std::string* error) {
  const auto fail = [&](const std::string& why) -> std::optional<std::vector<uint8_t>> {
    if (error) *error = why;
    return std::nullopt;
  };
  if (!alarm.isObject()) return fail("expected an object");
  std::vector<uint8_t> record(sizeof(_GPSVehicleAlarm), 0);
  for (const TextField& f : kTexts) {
    if (!alarm.isMember(f.key)) continue;
    if (!alarm[f.key].isString()) return fail(std::string(f.key) + ": expected a string");
    const std::string text = alarm[f.key].asString();
    std::memcpy(record.data() + f.offset, text.data(), std::min(text.size(), f.size - 1));
  }
  for (const NumberField& f : kNumbers) {
    if (!alarm.isMember(f.key)) continue;
    if (!alarm[f.key].isIntegral()) return fail(std::string(f.key) + ": expected an integer");
    const Json::Value& v = alarm[f.key];
    PutNumber(record, f.offset, f.bytes, v.isUInt64() ? v.asUInt64() : static_cast<uint64_t>(v.asInt64()));
  }
  return record;
}

}  // namespace hostref
