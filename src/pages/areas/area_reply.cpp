// Query replies of areas and routes as text.
#include "pages/areas/area_reply.h"

#include <cctype>
#include <cstdio>
#include <vector>

#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/areas/area_keys.h"
#include "text/encoding.h"
#include "text/json.h"

namespace area {
namespace {
enum Text : int {
  kTextFirst = 11005, kTextSecond = 11006, kTextId = 12001, kTextLat = 12101, kTextLng = 12102, kTextPointId = 12200,
  kTextSegmentId = 12201, kTextWidth = 12202, kTextSegmentAttr = 12203, kTextShortThreshold = 12204,
  kTextLongThreshold = 12305, kTextDuration = 12307, kTextSpeedLimit = 12309, kTextByTime = 12401,
  kTextRouteEnterDriver = 12403, kTextRouteEnterPlatform = 12402, kTextRouteLeaveDriver = 12405,
  kTextRouteLeavePlatform = 12404, kTextStart = 12408, kTextEnd = 12409, kTextPoints = 12410, kTextSetup = 12500,
  kTextAttributes = 12504, kTextRadius = 12510, kTextMaxSpeed = 12512, kTextSouth = 12515, kTextWest = 12616,
  kTextNightSpeed = 12620, kTextEveryDay = 12622, kTextKind = 12650, kTextPackets = 12655, kTextAreas = 12656,
};
constexpr const char* kPacketSeparator = "\r\n\t    ";
constexpr const char* kLine = "\r\n";
constexpr int kTextBytes = 64;
// Years of a time that means every day: none, or the year the platform writes for none.
constexpr int kNoYear = 0, kPlatformNoYear = 2000;

// The bits of a route's word and of a route segment's attribute, with their texts.
struct BitText {
  int bit;
  int text;
};
constexpr BitText kRouteBits[] = {{0x01, kTextByTime},           {0x04, kTextRouteEnterDriver},
                                  {0x08, kTextRouteEnterPlatform}, {0x10, kTextRouteLeaveDriver},
                                  {0x20, kTextRouteLeavePlatform}};
constexpr BitText kSegmentBits[] = {{0x01, kTextByTime}, {0x02, kTextSpeedLimit}, {0x04, kTextSouth}, {0x08, kTextWest}};

template <size_t N>
std::string BitTexts(int word, const BitText (&bits)[N]) {
  std::string text;
  for (const BitText& b : bits) {
    if (word & b.bit) AddChineseStringStatus(text, LanguageText(b.text));
  }
  return text;
}

int Int(const Json::Value& object, const char* key) { return txt::JsonMemberInt(object, key, 0); }

std::string Line(int label, const std::string& value) { return FormatChineseColon(LanguageText(label), value) + kLine; }
std::string Line(int label, int value) { return Line(label, std::to_string(value)); }
std::string Line(int first, int second, int value) {
  return FormatChineseColon(LanguageText(first) + LanguageText(second), std::to_string(value)) + kLine;
}

// Six numbers of a time text, separated by anything but digits; missing ones are 0.
SYSTEMTIME TimeOf(const Json::Value& area, const char* key) {
  const std::string text = txt::JsonMemberString(area, key).substr(0, kTextBytes);
  int fields[6] = {};
  size_t n = 0;
  for (size_t i = 0; i < text.size() && n < 6;) {
    if (!std::isdigit(static_cast<unsigned char>(text[i]))) {
      ++i;
      continue;
    }
    int value = 0;
    while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])) && value < 100000)
      value = value * 10 + (text[i++] - '0');
    while (i < text.size() && std::isdigit(static_cast<unsigned char>(text[i]))) ++i;
    fields[n++] = value;
  }
  SYSTEMTIME t{};
  t.wYear = static_cast<WORD>(fields[0]), t.wMonth = static_cast<WORD>(fields[1]), t.wDay = static_cast<WORD>(fields[2]);
  t.wHour = static_cast<WORD>(fields[3]), t.wMinute = static_cast<WORD>(fields[4]), t.wSecond = static_cast<WORD>(fields[5]);
  return t;
}

std::string TimeLines(const Json::Value& area) {
  if (!(Int(area, areakey::kAttr) & kBitByTime)) return {};
  const SYSTEMTIME start = TimeOf(area, areakey::kStart), end = TimeOf(area, areakey::kEnd);
  const auto dated = [](const SYSTEMTIME& t) { return t.wYear != kNoYear && t.wYear != kPlatformNoYear; };
  if (dated(start) && dated(end)) {
    return Line(kTextStart, FormatSystemTime(start)) + Line(kTextEnd, FormatSystemTime(end));
  }
  const auto daily = [](const SYSTEMTIME& t) {
    return LanguageText(kTextEveryDay) + " " + FormatSecond(t.wHour * 3600 + t.wMinute * 60 + t.wSecond);
  };
  return Line(kTextStart, daily(start)) + Line(kTextEnd, daily(end));
}

std::string SpeedLines(const Json::Value& area) {
  if (!(Int(area, areakey::kAttr) & kBitSpeedLimit)) return {};
  return Line(kTextMaxSpeed, Int(area, areakey::kMaxSpeed)) + Line(kTextDuration, Int(area, areakey::kDuration)) +
         Line(kTextNightSpeed, Int(area, areakey::kNightSpeed));
}

std::string NameLine(const Json::Value& area) {
  const std::string name = txt::SanitizeUtf8(txt::JsonMemberString(area, areakey::kName));
  return name.empty() ? name : name + kLine;
}

std::string HeadLines(const Json::Value& area, Kind kind, const RegionalView& regional) {
  const int word = Int(area, areakey::kAttr);
  const std::string text = kind == kRoute ? BitTexts(word, kRouteBits) : AttributeText(static_cast<uint16_t>(word), regional);
  char attr[32];
  std::snprintf(attr, sizeof attr, "(%d)", word);
  return Line(kTextId, Int(area, areakey::kId)) + Line(kTextAttributes, attr + text);
}

std::string PointLines(const Json::Value& area, Kind kind) {
  std::string text = Line(kTextPoints, Int(area, areakey::kPointCount));
  for (const Json::Value& point : area[areakey::kPoints]) {
    if (!point.isObject()) continue;
    if (kind == kPolygon) {
      text += FormatChineseColon(LanguageText(kTextLat), std::to_string(Int(point, areakey::kLat))) + "    " +
              FormatChineseColon(LanguageText(kTextLng), std::to_string(Int(point, areakey::kLng))) + kLine;
      continue;
    }
    const int attr = Int(point, "LDA");
    text += Line(kTextPointId, Int(point, "PID")) + Line(kTextSegmentId, Int(point, "LID")) +
            Line(kTextLat, Int(point, areakey::kLat)) + Line(kTextLng, Int(point, areakey::kLng)) +
            Line(kTextWidth, Int(point, "LW")) +
            Line(kTextSegmentAttr, "(" + std::to_string(attr) + ")" + BitTexts(attr, kSegmentBits)) +
            Line(kTextLongThreshold, Int(point, "DOR")) + Line(kTextShortThreshold, Int(point, "DLS")) +
            Line(kTextMaxSpeed, Int(point, areakey::kMaxSpeed)) + Line(kTextDuration, Int(point, "LST")) +
            Line(kTextNightSpeed, Int(point, areakey::kNightSpeed));
  }
  return text;
}

std::string AreaLines(const Json::Value& area, Kind kind, const RegionalView& regional) {
  std::string text = HeadLines(area, kind, regional);
  switch (kind) {
    case kCircle:
      text += Line(kTextLat, Int(area, areakey::kLat)) + Line(kTextLng, Int(area, areakey::kLng)) +
              Line(kTextRadius, Int(area, areakey::kRadius)) + TimeLines(area) + SpeedLines(area);
      break;
    case kRectangle:
      text += Line(kTextFirst, kTextLat, Int(area, areakey::kLeftLat)) +
              Line(kTextFirst, kTextLng, Int(area, areakey::kLeftLng)) +
              Line(kTextSecond, kTextLat, Int(area, areakey::kRightLat)) +
              Line(kTextSecond, kTextLng, Int(area, areakey::kRightLng)) + TimeLines(area) + SpeedLines(area);
      break;
    case kPolygon:
      text += TimeLines(area) + SpeedLines(area) + PointLines(area, kind);
      break;
    case kRoute:
      text += TimeLines(area) + PointLines(area, kind);
      break;
  }
  return text + NameLine(area);
}
}  // namespace

std::string ReplyText(const Json::Value& reply, Kind kind, const RegionalView& regional) {
  const int packets = Int(reply, areakey::kCount);
  std::string text = Line(kTextKind, LanguageText(KindText(kind))) + Line(kTextPackets, packets);
  const Json::Value& list = reply[areakey::kItem];
  for (int i = 0; i < packets && list.isArray() && i < static_cast<int>(list.size()); ++i) {
    const Json::Value& packet = list[static_cast<Json::ArrayIndex>(i)];
    if (!packet.isObject()) continue;
    const int areas = Int(packet, areakey::kCount);
    const Json::Value& items = packet[areakey::kItem];
    std::string block;
    if (kind == kCircle || kind == kRectangle) block += Line(kTextSetup, Int(packet, areakey::kSetup));
    block += Line(kTextAreas, areas);
    for (int j = 0; j < areas && items.isArray() && j < static_cast<int>(items.size()); ++j) {
      const Json::Value& area = items[static_cast<Json::ArrayIndex>(j)];
      if (area.isObject()) block += AreaLines(area, kind, regional);
    }
    AddStringStatus(text, block, kPacketSeparator);
  }
  return text;
}

}  // namespace area
