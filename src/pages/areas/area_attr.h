// The attribute word of an area and its readable text: the bits the check
// boxes set, the south and west bits the coordinates set, and the regional
// fields that the host's switches decide (fence level and over-speed control,
// or the mountain-road ban, or the area and unload types).
#pragma once

#include <cstdint>
#include <string>

namespace area {

enum AttrBit : uint16_t {
  kBitByTime = 0x0001,
  kBitSpeedLimit = 0x0002,
  kBitEnterDriver = 0x0004,
  kBitEnterPlatform = 0x0008,
  kBitLeaveDriver = 0x0010,
  kBitLeavePlatform = 0x0020,
  kBitSouth = 0x0040,
  kBitWest = 0x0080,
  kBitNoDoors = 0x0100,
  kBitBanOrControl = 0x1000,  // transport ban, or over-speed control
  kBitCommOff = 0x4000,
  kBitGnssDetail = 0x8000,
};
constexpr int kRegionalShift = 9;   // bits 9-11: fence level or area type
constexpr int kRegionalMask = 0x7;
constexpr int kUnloadShift = 12;    // bits 12-13: unload type
constexpr int kUnloadMask = 0x3;

// Host switches that decide the regional fields.
enum Switch : int {
  kSwitchOverspeedControl = 1103,
  kSwitchMountainRoad = 170,
  kSwitchAreaTypes = 1100,
};

// A bit the user sets with a check box, and the text that names it.
struct AttrCheck {
  uint16_t bit;
  int control;
  int text;
};
// The check boxes of the attribute word, in the order of the dialog.
extern const AttrCheck kAttrChecks[9];

constexpr int kAllFences = -1;
// The name of a fence level (-1 all, 0 general, 1-3 levels one to three, 4 green); "" beyond.
std::string FenceLevelName(int level);
constexpr int kAreaTypeCount = 7, kUnloadTypeCount = 4;
std::string AreaTypeName(int index);
std::string UnloadTypeName(int index);
// "超速管制开启": the over-speed control box and its description.
extern const char* const kOverspeedControlText;

// What the description of a word needs beside the word.
struct RegionalView {
  bool overspeedControl = false;  // switch 1103
  bool mountainRoad = false;      // switch 170
  bool areaTypes = false;         // switch 1100
  int fenceLevel = kAllFences;
  std::string drivingSpeed, drivingTime;
};
// The switches as the host has them now.
RegionalView ReadSwitches();

// The texts of the set bits among 0-8, 14 and 15 in bit order, then the
// regional part, joined the host's way.
std::string AttributeText(uint16_t word, const RegionalView& view);

}  // namespace area
