// JSON keys of the area commands (set, and their query replies).
#pragma once

namespace areakey {
constexpr const char *kSetup = "Setup", *kCount = "Count", *kItem = "Item", *kId = "ID", *kAttr = "ATTR",
                     *kLat = "WD", *kLng = "JD", *kRadius = "Radius", *kName = "ANAME", *kStart = "BTM",
                     *kEnd = "ETM", *kMaxSpeed = "MSPD", *kDuration = "OSTM", *kNightSpeed = "NMSPD",
                     *kDrivingSpeed = "SPEEDEX", *kDrivingTime = "TIMEEX", *kLeftLat = "LWD", *kLeftLng = "LJD",
                     *kRightLat = "RWD", *kRightLng = "RJD", *kPointCount = "PCT", *kPoints = "PAR";
}  // namespace areakey
