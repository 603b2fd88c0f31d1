// Reading markers and coordinates for the area pages and pickers.
#include "pages/areas/area_marker.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "text/numbers.h"

namespace area {
namespace {
constexpr double kMicroPerDegree = 1000000.0;
constexpr double kMaxMicro = 4294967295.0;
}  // namespace

Coordinate ParseCoordinate(std::string_view text) {
  text = txt::TrimBlanks(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  double degrees = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), degrees);
  if (error != std::errc() || !std::isfinite(degrees)) return {};
  (void)end;
  // A terminal's coordinate is a 32-bit unsigned number.
  const double micro = std::min(std::fabs(degrees) * kMicroPerDegree, kMaxMicro);
  return {static_cast<int64_t>(micro), degrees < 0};
}

std::vector<std::string> SplitList(std::string_view list) {
  std::vector<std::string> items;
  size_t start = 0;
  while (true) {
    const size_t comma = list.find(',', start);
    items.emplace_back(list.substr(start, comma == std::string_view::npos ? std::string_view::npos : comma - start));
    if (comma == std::string_view::npos) return items;
    start = comma + 1;
  }
}

std::string ListItem(const std::vector<std::string>& list, size_t i) { return i < list.size() ? list[i] : std::string(); }

std::optional<Marker> Marker::Find(int id) {
  _tagGPSMapMarkerEx record{};
  if (!CVMgrMyMapInfomation::FindMapMarkerEx(id, &record)) return std::nullopt;
  return Marker(record);
}

std::string Marker::LngText() const {
  if (record_.nType == kMarkerOutOfLine) return record_.pJingDu ? record_.pJingDu : "";
  return std::string(record_.szJingDu, strnlen(record_.szJingDu, sizeof record_.szJingDu));
}

std::string Marker::LatText() const {
  if (record_.nType == kMarkerOutOfLine) return record_.pWeiDu ? record_.pWeiDu : "";
  return std::string(record_.szWeiDu, strnlen(record_.szWeiDu, sizeof record_.szWeiDu));
}

}  // namespace area
