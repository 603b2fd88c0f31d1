// Attribute words of areas as text.
#include "pages/areas/area_attr.h"

#include "host/hostcore.h"
#include "lang/language.h"

namespace area {
namespace {
enum Text : int {
  kTextByTime = 12401, kTextSpeedLimit = 12309, kTextEnterDriver = 12506, kTextEnterPlatform = 12505,
  kTextLeaveDriver = 12508, kTextLeavePlatform = 12507, kTextSouth = 12515, kTextWest = 12616,
  kTextNoDoors = 12617, kTextCommOff = 12618, kTextGnss = 12619, kTextBan = 12623, kTextDrivingSpeed = 12625,
  kTextDrivingTime = 12626,
};

// Every bit the text names, in bit order.
struct BitText {
  uint16_t bit;
  int text;
};
constexpr BitText kNamedBits[] = {
    {kBitByTime, kTextByTime},         {kBitSpeedLimit, kTextSpeedLimit},       {kBitEnterDriver, kTextEnterDriver},
    {kBitEnterPlatform, kTextEnterPlatform}, {kBitLeaveDriver, kTextLeaveDriver}, {kBitLeavePlatform, kTextLeavePlatform},
    {kBitSouth, kTextSouth},           {kBitWest, kTextWest},                   {kBitNoDoors, kTextNoDoors},
    {kBitCommOff, kTextCommOff},       {kBitGnssDetail, kTextGnss},
};

constexpr const char* kFenceLevels[] = {"所有围栏(=一般围栏)", "一般围栏", "一级围栏", "二级围栏", "三级围栏", "绿色围栏"};
constexpr const char* kAreaTypes[kAreaTypeCount] = {"无定义", "路线", "工地", "消纳场", "限速圈", "停车场", "禁区"};
constexpr const char* kUnloadTypes[kUnloadTypeCount] = {"无定义", "该区域禁止卸载", "该区域允许倾倒", "保留"};
constexpr const char *kAreaTypeLabel = "区域类型", *kUnloadTypeLabel = "卸载类型";

template <size_t N>
std::string NameAt(const char* const (&names)[N], int index) {
  return index >= 0 && index < static_cast<int>(N) ? names[index] : "";
}
}  // namespace

const AttrCheck kAttrChecks[9] = {
    {kBitByTime, 3005, kTextByTime},           {kBitSpeedLimit, 3011, kTextSpeedLimit},
    {kBitEnterDriver, 3010, kTextEnterDriver}, {kBitEnterPlatform, 3008, kTextEnterPlatform},
    {kBitLeaveDriver, 3007, kTextLeaveDriver}, {kBitLeavePlatform, 3009, kTextLeavePlatform},
    {kBitNoDoors, 3044, kTextNoDoors},         {kBitCommOff, 3016, kTextCommOff},
    {kBitGnssDetail, 3034, kTextGnss},
};

const char* const kOverspeedControlText = "超速管制开启";

std::string FenceLevelName(int level) { return NameAt(kFenceLevels, level + 1); }
std::string AreaTypeName(int index) { return NameAt(kAreaTypes, index); }
std::string UnloadTypeName(int index) { return NameAt(kUnloadTypes, index); }

RegionalView ReadSwitches() {
  RegionalView view;
  view.overspeedControl = CConfigKestrelINI::ReadIniInt(kSwitchOverspeedControl) != 0;
  view.mountainRoad = CConfigKestrelINI::ReadIniInt(kSwitchMountainRoad) != 0;
  view.areaTypes = CConfigKestrelINI::ReadIniInt(kSwitchAreaTypes) != 0;
  return view;
}

std::string AttributeText(uint16_t word, const RegionalView& view) {
  std::string text;
  for (const BitText& b : kNamedBits) {
    if (word & b.bit) AddChineseStringStatus(text, LanguageText(b.text));
  }
  if (view.overspeedControl) {
    AddChineseStringStatus(text, FenceLevelName(view.fenceLevel));
    if (word & kBitBanOrControl) AddChineseStringStatus(text, kOverspeedControlText);
    return text;
  }
  if (view.mountainRoad) {
    if (word & kBitBanOrControl) AddChineseStringStatus(text, LanguageText(kTextBan));
    AddChineseStringStatus(text, FormatChineseColon(LanguageText(kTextDrivingSpeed), view.drivingSpeed));
    AddChineseStringStatus(text, FormatChineseColon(LanguageText(kTextDrivingTime), view.drivingTime));
  }
  if (view.areaTypes) {
    AddChineseStringStatus(text, std::string(kAreaTypeLabel) + ":" + AreaTypeName((word >> kRegionalShift) & kRegionalMask) +
                                     "," + kUnloadTypeLabel + ":" +
                                     UnloadTypeName((word >> kUnloadShift) & kUnloadMask));
  }
  return text;
}

}  // namespace area
