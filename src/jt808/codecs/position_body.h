// The position report that position answers, vehicle control answers and
// media records carry: the basic information (alarm flags, status word,
// latitude, longitude, altitude, speed, direction, time) and the additional
// items after it, between the body and the reply members the pages read.
//
// Latitude and longitude are the wire's magnitudes in millionths of a degree;
// the status word's bits kStatusSouth and kStatusWest give their hemispheres.
// Speed counts in tenths of km/h, altitude in metres, direction in degrees.
// A report without "Time" carries six zero bytes, which read back as no time.
// Additional items the reader knows become members of their own; any other
// item (and a known one of the wrong length) is kept under "Items" as
// {"Id", "Data" (hexadecimal)} so it travels back unchanged.
#pragma once

#include <cstdint>
#include <optional>

#include <json/value.h>

#include "jt808/bytes.h"
#include "jt808/codecs/fields.h"

namespace jt808::position {

// The basic information.
inline constexpr const char *kAlarm = "Alarm", *kStatus = "Status", *kLat = "Lat", *kLng = "Lng",
                            *kAltitude = "Altitude", *kSpeed = "Speed", *kDirection = "Direction", *kTime = "Time";
// Additional items with one number.
inline constexpr const char *kMileage = "Mileage", *kFuel = "Fuel", *kRecorderSpeed = "RecorderSpeed",
                            *kAlarmEvent = "AlarmEventId", *kSignalStatus = "SignalStatus", *kIoStatus = "IoStatus",
                            *kAnalog = "Analog", *kSignalStrength = "SignalStrength", *kSatellites = "Satellites",
                            *kCabinTemperature = "CabinTemperature";
// Additional items with parts: the tyre pressures (an array of bytes), the
// overspeed place {"Type", "Id"}, the area or route crossing {"Type", "Id",
// "Direction"} and the route section's driving time {"Id", "Time", "Result"}.
inline constexpr const char *kTyrePressure = "TyrePressure", *kOverspeed = "Overspeed", *kCrossing = "Crossing",
                            *kSectionTime = "SectionTime";
inline constexpr const char *kPartType = "Type", *kPartId = "Id", *kPartDirection = "Direction", *kPartTime = "Time",
                            *kPartResult = "Result", *kPartData = "Data";
// Items the reader does not know: [{"Id", "Data"}].
inline constexpr const char* kItems = "Items";

inline constexpr uint32_t kStatusSouth = 1u << 2, kStatusWest = 1u << 3;
inline constexpr size_t kBasicSize = 28;

// The basic information and the additional items of a report object;
// throws BodyError for a value that does not fit its field.
void Write(Writer& w, const Json::Value& report);
// The basic information and the additional items to the end of the body,
// added to report; throws BodyError on a short body or an item running past it.
void Read(Reader& r, Json::Value& report);

using fields::Unsigned;

}  // namespace jt808::position
