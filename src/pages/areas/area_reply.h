// The text of an area or route query reply: a header with the kind and the
// number of packets, then a block per packet with its areas, each area's
// lines by kind, its time range when it goes by time and its speeds when it
// limits speed.
#pragma once

#include <json/value.h>

#include <string>

#include "pages/areas/area_attr.h"

namespace area {

enum Kind : int { kCircle = 1, kRectangle = 2, kPolygon = 3, kRoute = 4 };
constexpr bool IsKind(int kind) { return kind >= kCircle && kind <= kRoute; }
// The language id of a kind's name (12651-12654): 12650 + kind.
constexpr int KindText(int kind) { return 12650 + kind; }

// The reply's text; regional is what the attribute texts need beside the word.
std::string ReplyText(const Json::Value& reply, Kind kind, const RegionalView& regional);

}  // namespace area
