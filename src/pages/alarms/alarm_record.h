// The alarms a host hands a page (its context: an array of the host's alarm
// records and their count), read by field, and the fixed binary records the
// alarm pages hand the host's alarm service, written by field.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "host/hostcore.h"

// One alarm record of the host, read by offset.
class AlarmView {
 public:
  explicit AlarmView(const _GPSVehicleAlarm& record) : record_(record) {}
  const _GPSVehicleAlarm* Record() const { return &record_; }

  std::string DevIdno() const { return Text(kDevIdno, kDevIdnoBytes); }
  std::string Guid() const { return Text(kGuid, kGuidBytes); }
  std::string AlarmText() const { return Text(kText, kTextBytes); }
  uint16_t MessageId() const { return U16(kMessageId); }
  uint32_t Time() const { return U32(kTime); }
  uint16_t Type() const { return U16(kType); }
  uint32_t InfoType() const { return U32(kInfoType); }
  uint16_t SecondType() const { return U16(kSecondType); }
  uint32_t SecondTime() const { return U32(kSecondTime); }
  // The second type when it is set and differs from the first, with its time; else the first.
  bool UsesSecondType() const { return SecondType() != 0 && SecondType() != Type(); }
  uint16_t EffectiveType() const { return UsesSecondType() ? SecondType() : Type(); }
  uint32_t EffectiveTime() const { return UsesSecondType() ? SecondTime() : Time(); }
  // The code after `prefix` (compared without case) up to the first comma, when the text starts with it.
  std::string CodeAfter(std::string_view prefix) const;

  static constexpr size_t kDevIdno = 0, kDevIdnoBytes = 32, kGuid = 32, kGuidBytes = 40, kMessageId = 106,
                          kTime = 140, kType = 144, kInfoType = 152, kText = 164, kTextBytes = 260, kSecondTime = 424,
                          kSecondType = 684;

 private:
  std::string Text(size_t offset, size_t size) const;
  uint16_t U16(size_t offset) const;
  uint32_t U32(size_t offset) const;
  const _GPSVehicleAlarm& record_;
};

// The alarms of a page's context: a pointer to an array of records and their count.
class AlarmContext {
 public:
  AlarmContext(uintptr_t pointer, uint32_t count)
      : records_(reinterpret_cast<const _GPSVehicleAlarm*>(pointer)), count_(pointer ? count : 0) {}
  bool Empty() const { return count_ == 0; }
  uint32_t Count() const { return count_; }
  AlarmView At(uint32_t index) const { return AlarmView(records_[index]); }

 private:
  const _GPSVehicleAlarm* records_;
  uint32_t count_;
};

// A zero-filled record written by offset, little-endian; texts are cut to
// leave room for their terminating zero.
class RecordWriter {
 public:
  explicit RecordWriter(size_t size) : bytes_(size, 0) {}
  void Clear() { std::fill(bytes_.begin(), bytes_.end(), 0); }
  void PutU8(size_t offset, uint8_t value) { Put(offset, value, 1); }
  void PutU16(size_t offset, uint16_t value) { Put(offset, value, 2); }
  void PutU32(size_t offset, uint32_t value) { Put(offset, value, 4); }
  // At most size - 1 bytes of the text, never splitting a UTF-8 character.
  void PutText(size_t offset, size_t size, std::string_view text);
  uint32_t U32(size_t offset) const;
  const uint8_t* Data() const { return bytes_.data(); }
  const std::vector<uint8_t>& Bytes() const { return bytes_; }

 private:
  void Put(size_t offset, uint32_t value, size_t width);
  std::vector<uint8_t> bytes_;
};

// Splits a text at every separator; an empty text gives one empty part.
std::vector<std::string> SplitText(const std::string& text, char separator);
