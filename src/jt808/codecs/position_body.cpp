#include "jt808/codecs/position_body.h"

#include <algorithm>
#include <string>

#include "text/json.h"

namespace jt808::position {
namespace {
constexpr uint32_t kMaxByte = 0xFF, kMaxWord = 0xFFFF, kMaxDword = 0xFFFFFFFF;
constexpr size_t kTimeBytes = 6;
constexpr uint16_t kSignBit = 0x8000;

// Additional item ids.
enum : uint8_t {
  kIdMileage = 0x01, kIdFuel = 0x02, kIdRecorderSpeed = 0x03, kIdAlarmEvent = 0x04, kIdTyrePressure = 0x05,
  kIdCabinTemperature = 0x06, kIdOverspeed = 0x11, kIdCrossing = 0x12, kIdSectionTime = 0x13,
  kIdSignalStatus = 0x25, kIdIoStatus = 0x2A, kIdAnalog = 0x2B, kIdSignalStrength = 0x30, kIdSatellites = 0x31,
};
constexpr size_t kTyres = 30;
// The overspeed place: no particular place, or the kind of area or route followed by its id.
constexpr uint32_t kNoPlace = 0;
constexpr size_t kPlaceSize = 5, kCrossingSize = 6, kSectionSize = 7;

// Items that hold one unsigned number of 1, 2 or 4 bytes.
struct NumberItem {
  uint8_t id;
  const char* key;
  size_t size;
};
constexpr NumberItem kNumbers[] = {
    {kIdMileage, kMileage, 4},         {kIdFuel, kFuel, 2},         {kIdRecorderSpeed, kRecorderSpeed, 2},
    {kIdAlarmEvent, kAlarmEvent, 2},   {kIdSignalStatus, kSignalStatus, 4}, {kIdIoStatus, kIoStatus, 2},
    {kIdAnalog, kAnalog, 4},           {kIdSignalStrength, kSignalStrength, 1}, {kIdSatellites, kSatellites, 1},
};

uint32_t MaxOf(size_t size) { return size == 1 ? kMaxByte : size == 2 ? kMaxWord : kMaxDword; }

void PutNumber(Writer& w, uint32_t value, size_t size) {
  if (size == 1) w.U8(value);
  else if (size == 2) w.U16(value);
  else w.U32(value);
}

uint32_t TakeNumber(Reader& r, size_t size) { return size == 1 ? r.U8() : size == 2 ? r.U16() : r.U32(); }

// An item's header; its value follows in w.
size_t BeginItem(Writer& w, uint8_t id) {
  w.U8(id).U8(0);
  return w.Size();
}
void EndItem(Writer& w, size_t start) {
  const size_t size = w.Size() - start;
  if (size > kMaxByte) throw BodyError("additional item of " + std::to_string(size) + " bytes");
  w.PatchU8(start - 1, static_cast<uint32_t>(size));
}

const Json::Value* Member(const Json::Value& object, const char* key) {
  return object.isObject() ? object.find(key, key + std::char_traits<char>::length(key)) : nullptr;
}

int32_t Signed16(const Json::Value& object, const char* key) {
  const Json::Value* member = Member(object, key);
  const std::optional<int64_t> value = member ? txt::JsonToInt(*member) : std::nullopt;
  if (!value || *value < -int64_t{kMaxWord >> 1} || *value > int64_t{kMaxWord >> 1})
    throw BodyError(std::string("no temperature in ") + key);
  return static_cast<int32_t>(*value);
}

// The known items in the order they go out.
constexpr uint8_t kWriteOrder[] = {kIdMileage,        kIdFuel,           kIdRecorderSpeed, kIdAlarmEvent,
                                   kIdTyrePressure,   kIdCabinTemperature, kIdOverspeed,   kIdCrossing,
                                   kIdSectionTime,    kIdSignalStatus,   kIdIoStatus,      kIdAnalog,
                                   kIdSignalStrength, kIdSatellites};

const char* KeyOf(uint8_t id) {
  for (const NumberItem& item : kNumbers) {
    if (item.id == id) return item.key;
  }
  switch (id) {
    case kIdTyrePressure: return kTyrePressure;
    case kIdCabinTemperature: return kCabinTemperature;
    case kIdOverspeed: return kOverspeed;
    case kIdCrossing: return kCrossing;
    default: return kSectionTime;
  }
}

void WriteValue(Writer& w, uint8_t id, const Json::Value& report, const Json::Value& value) {
  for (const NumberItem& item : kNumbers) {
    if (item.id == id) return PutNumber(w, Unsigned(report, item.key, MaxOf(item.size)), item.size);
  }
  switch (id) {
    case kIdTyrePressure:
      if (!value.isArray() || value.size() != kTyres) throw BodyError("tyre pressures are not 30 values");
      for (const Json::Value& tyre : value) {
        const std::optional<int64_t> pressure = txt::JsonToInt(tyre);
        if (!pressure || *pressure < 0 || *pressure > kMaxByte) throw BodyError("a tyre pressure beyond a byte");
        w.U8(static_cast<uint32_t>(*pressure));
      }
      return;
    case kIdCabinTemperature: {
      const int32_t degrees = Signed16(report, kCabinTemperature);
      w.U16(degrees < 0 ? kSignBit | static_cast<uint32_t>(-degrees) : static_cast<uint32_t>(degrees));
      return;
    }
    case kIdOverspeed: {
      const uint32_t type = Unsigned(value, kPartType, kMaxByte, std::nullopt);
      w.U8(type);
      if (type != kNoPlace) w.U32(Unsigned(value, kPartId, kMaxDword, std::nullopt));
      return;
    }
    case kIdCrossing:
      w.U8(Unsigned(value, kPartType, kMaxByte, std::nullopt))
          .U32(Unsigned(value, kPartId, kMaxDword, std::nullopt))
          .U8(Unsigned(value, kPartDirection, kMaxByte, std::nullopt));
      return;
    default:  // the route section's driving time
      w.U32(Unsigned(value, kPartId, kMaxDword, std::nullopt))
          .U16(Unsigned(value, kPartTime, kMaxWord, std::nullopt))
          .U8(Unsigned(value, kPartResult, kMaxByte, std::nullopt));
  }
}

void WriteNamedItems(Writer& w, const Json::Value& report) {
  for (uint8_t id : kWriteOrder) {
    const Json::Value* value = Member(report, KeyOf(id));
    if (!value) continue;
    const size_t start = BeginItem(w, id);
    WriteValue(w, id, report, *value);
    EndItem(w, start);
  }
}

void WriteOtherItems(Writer& w, const Json::Value& report) {
  const Json::Value* items = Member(report, kItems);
  if (!items) return;
  if (!items->isArray()) throw BodyError("additional items are no list");
  for (const Json::Value& item : *items) {
    const size_t start = BeginItem(w, static_cast<uint8_t>(Unsigned(item, kPartId, kMaxByte, std::nullopt)));
    w.Raw(FromHex(txt::JsonMemberString(item, kPartData)));
    EndItem(w, start);
  }
}

// A known item of its own size to its member; false when the size is not its own.
bool ReadNamedItem(uint8_t id, ByteView value, Json::Value& report) {
  Reader r(value);
  for (const NumberItem& item : kNumbers) {
    if (item.id != id) continue;
    if (value.size() != item.size) return false;
    report[item.key] = TakeNumber(r, item.size);
    return true;
  }
  Json::Value parts(Json::objectValue);
  switch (id) {
    case kIdTyrePressure: {
      if (value.size() != kTyres) return false;
      Json::Value& tyres = report[kTyrePressure] = Json::Value(Json::arrayValue);
      for (uint8_t tyre : value) tyres.append(tyre);
      return true;
    }
    case kIdCabinTemperature: {
      if (value.size() != 2) return false;
      const uint16_t word = r.U16();
      const int magnitude = word & ~kSignBit;
      report[kCabinTemperature] = (word & kSignBit) ? -magnitude : magnitude;
      return true;
    }
    case kIdOverspeed:
      if (value.size() != (!value.empty() && value[0] == kNoPlace ? 1 : kPlaceSize)) return false;
      parts[kPartType] = r.U8();
      if (!r.AtEnd()) parts[kPartId] = r.U32();
      report[kOverspeed] = parts;
      return true;
    case kIdCrossing:
      if (value.size() != kCrossingSize) return false;
      parts[kPartType] = r.U8();
      parts[kPartId] = r.U32();
      parts[kPartDirection] = r.U8();
      report[kCrossing] = parts;
      return true;
    case kIdSectionTime:
      if (value.size() != kSectionSize) return false;
      parts[kPartId] = r.U32();
      parts[kPartTime] = r.U16();
      parts[kPartResult] = r.U8();
      report[kSectionTime] = parts;
      return true;
    default:
      return false;
  }
}
}  // namespace

void Write(Writer& w, const Json::Value& report) {
  w.U32(Unsigned(report, kAlarm, kMaxDword))
      .U32(Unsigned(report, kStatus, kMaxDword))
      .U32(Unsigned(report, kLat, kMaxDword))
      .U32(Unsigned(report, kLng, kMaxDword))
      .U16(Unsigned(report, kAltitude, kMaxWord))
      .U16(Unsigned(report, kSpeed, kMaxWord))
      .U16(Unsigned(report, kDirection, kMaxWord));
  if (Member(report, kTime)) {
    w.BcdTime(txt::JsonMemberString(report, kTime));
  } else {
    w.Raw(Bytes(kTimeBytes, 0));
  }
  WriteNamedItems(w, report);
  WriteOtherItems(w, report);
}

void Read(Reader& r, Json::Value& report) {
  if (!report.isObject()) report = Json::Value(Json::objectValue);
  report[kAlarm] = r.U32();
  report[kStatus] = r.U32();
  report[kLat] = r.U32();
  report[kLng] = r.U32();
  report[kAltitude] = r.U16();
  report[kSpeed] = r.U16();
  report[kDirection] = r.U16();
  const ByteView time = r.Raw(kTimeBytes);
  if (std::any_of(time.begin(), time.end(), [](uint8_t byte) { return byte != 0; })) {
    report[kTime] = Reader(time).BcdTime();
  }
  while (!r.AtEnd()) {
    const uint8_t id = r.U8();
    const ByteView value = r.Raw(r.U8());
    if (ReadNamedItem(id, value, report)) continue;
    Json::Value item(Json::objectValue);
    item[kPartId] = id;
    item[kPartData] = Hex(value);
    report[kItems].append(item);
  }
}

}  // namespace jt808::position
