// Alarms for the alarm pages' tests: host alarm records made from JSON, kept
// in one array as the host hands them over, and the pages' view of a record's bytes.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <json/value.h>

#include "command/base_dlg.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"

class AlarmList {
 public:
  // Adds an alarm: "devIdno", "guid", "text", "msgId", "time", "type", "info", "time2", "type2".
  AlarmList& Add(const Json::Value& alarm) {
    auto record = hostref::MakeAlarmRecord(alarm);
    _GPSVehicleAlarm copy{};
    if (record) std::memcpy(copy.bytes, record->data(), sizeof copy.bytes);
    records_.push_back(copy);
    return *this;
  }
  // Hands the alarms to a page as the host's message 1 does.
  void GiveTo(CBaseDlg& page) const {
    page.contextPointer = records_.empty() ? 0 : reinterpret_cast<uintptr_t>(records_.data());
    page.contextCount = static_cast<uint32_t>(records_.size());
  }
  const _GPSVehicleAlarm& operator[](size_t i) const { return records_[i]; }

 private:
  std::vector<_GPSVehicleAlarm> records_;
};

inline Json::Value Alarm(const std::string& dev, const std::string& guid) {
  Json::Value alarm;
  alarm["devIdno"] = dev;
  alarm["guid"] = guid;
  return alarm;
}

// Little-endian reads of a record handed to the alarm service.
inline uint32_t U32At(const std::vector<uint8_t>& r, size_t at) {
  return r[at] | (r[at + 1] << 8) | (r[at + 2] << 16) | (static_cast<uint32_t>(r[at + 3]) << 24);
}
inline uint16_t U16At(const std::vector<uint8_t>& r, size_t at) { return static_cast<uint16_t>(r[at] | (r[at + 1] << 8)); }
// The NUL-terminated text of a field; the rest of the field must be zero.
inline std::string TextAt(const std::vector<uint8_t>& r, size_t at, size_t size) {
  const std::string text(reinterpret_cast<const char*>(r.data() + at), strnlen(reinterpret_cast<const char*>(r.data() + at), size));
  for (size_t i = at + text.size(); i < at + size; ++i)
    if (r[i] != 0) return text + "<garbage after the text>";
  return text;
}
