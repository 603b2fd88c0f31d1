// Reading a stored media item and writing its position text.
#include "pages/media/media_position.h"

#include "host/hostcore.h"
#include "text/json.h"

namespace media {
namespace {
namespace key {
constexpr const char *kId = "MDID", *kChannel = "CHID", *kType = "METY", *kEvent = "EVCO", *kAlarms = "Flag",
                      *kStatus = "STA", *kLongitude = "JD", *kLatitude = "WD", *kAltitude = "GAODU", *kSpeed = "SPD",
                      *kDirection = "HS", *kTime = "DTM";
}  // namespace key

// The texts of a status bit when set and when clear ("" shows nothing).
struct StatusBit {
  const char* set;
  const char* clear;
};
constexpr StatusBit kStatusBits[] = {
    {"ACC开", "ACC关"},
    {"定位", "未定位"},
    {"南纬", "北纬"},
    {"西经", "东经"},
    {"停运状态", "运营状态"},
    {"经纬度已经保密插件加密", "经纬度未经保密插件加密"},
    {"紧急刹车系统采集的前撞预警", ""},
    {"车道偏移预警", ""},
    {"", ""},
    {"", ""},
    {"车辆油路断开", "车辆油路正常"},
    {"车辆电路断开", "车辆电路正常"},
    {"车门加锁", "车门解锁"},
    {"门1开（前门）", "门1关"},
    {"门2开（中门）", "门2关"},
    {"门3开（后门）", "门3关"},
    {"门4开（驾驶席门）", "门4关"},
    {"门5开（自定义）", "门5关"},
    {"使用GPS卫星进行定位", "未使用GPS卫星进行定位"},
    {"使用北斗卫星进行定位", "未使用北斗卫星进行定位"},
    {"使用GLONASS卫星进行定位", "未使用GLONASS卫星进行定位"},
    {"使用Galileo卫星进行定位", "未使用Galileo卫星进行定位"},
    {"车辆处于行驶状态", "车辆处于停止状态"},
};

// The labels of the detailed position text.
constexpr const char *kLabelAlarms = "报警标志", *kLabelStatus = "状态", *kLabelLatitude = "纬度",
                      *kLabelLongitude = "经度", *kLabelAltitude = "高程", *kLabelSpeed = "速度", *kLabelDirection = "方向";
constexpr const char *kUnitAltitude = " (m)", *kUnitSpeed = "(km/h)";
constexpr float kSpeedTenths = 10.0f;

int Int(const Json::Value& item, const char* key) { return txt::JsonMemberInt(item, key, 0); }
}  // namespace

MediaItem ReadMediaItem(const Json::Value& item) {
  MediaItem m;
  m.id = Int(item, key::kId);
  m.channel = Int(item, key::kChannel);
  m.type = Int(item, key::kType);
  m.event = Int(item, key::kEvent);
  m.alarms = static_cast<uint32_t>(Int(item, key::kAlarms));
  m.status = static_cast<uint32_t>(Int(item, key::kStatus));
  m.longitude = Int(item, key::kLongitude);
  m.latitude = Int(item, key::kLatitude);
  m.altitude = Int(item, key::kAltitude);
  m.speed = Int(item, key::kSpeed);
  m.direction = Int(item, key::kDirection);
  m.time = txt::JsonMemberString(item, key::kTime);
  return m;
}

std::string StatusText(uint32_t status) {
  std::string text;
  for (size_t bit = 0; bit < std::size(kStatusBits); ++bit) {
    const char* state = (status >> bit) & 1u ? kStatusBits[bit].set : kStatusBits[bit].clear;
    if (*state) AddChineseStringStatus(text, state);
  }
  return text;
}

std::string PositionText(const MediaItem& item, bool detailed) {
  if (!detailed) return FormatGPSToStrEx(item.longitude, item.latitude);
  std::string text;
  AddChineseStringStatus(text, FormatChineseColon(kLabelAlarms, CMgrJTT::Instance().GetAlarmMaskString(item.alarms)));
  AddChineseStringStatus(text, FormatChineseColon(kLabelStatus, StatusText(item.status)));
  AddChineseStringStatus(text, FormatChineseColon(kLabelLatitude, GetLat(item.latitude)));
  AddChineseStringStatus(text, FormatChineseColon(kLabelLongitude, GetLat(item.longitude)));
  AddChineseStringStatus(text, FormatChineseColon(kLabelAltitude, std::to_string(item.altitude)) + kUnitAltitude);
  AddChineseStringStatus(text, FormatChineseColon(kLabelSpeed, FormatSpeedToString(item.speed / kSpeedTenths)) + kUnitSpeed);
  AddChineseStringStatus(text, FormatChineseColon(kLabelDirection, std::to_string(item.direction)));
  return text;
}
}  // namespace media
