#include "text/datetime.h"

#include <cstdio>

namespace txt {

std::string FormatRequestTime(const SYSTEMTIME& t) {
  char text[64];
  std::snprintf(text, sizeof text, "%04u-%02u-%02u %02u:%02u:%02u", t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute,
                t.wSecond);
  return text;
}

std::optional<SYSTEMTIME> ParseDateTimeText(std::string_view text) {
  const std::string owned(text);
  int f[6] = {};
  const int read = std::sscanf(owned.c_str(), "%d%*[^0-9]%d%*[^0-9]%d%*[^0-9]%d%*[^0-9]%d%*[^0-9]%d", &f[0], &f[1],
                               &f[2], &f[3], &f[4], &f[5]);
  const auto [year, month, day, hour, minute, second] = f;
  if (read < 3 || year == 0 || month < 1 || month > 12 || day < 1 || day > 31 || hour > 23 || minute > 59 ||
      second > 59 || year < 0 || hour < 0 || minute < 0 || second < 0) {
    return std::nullopt;
  }
  SYSTEMTIME time;
  time.wYear = static_cast<WORD>(year >= 1 && year <= 98 ? year + 2000 : year);
  time.wMonth = static_cast<WORD>(month);
  time.wDay = static_cast<WORD>(day);
  time.wHour = static_cast<WORD>(hour);
  time.wMinute = static_cast<WORD>(minute);
  time.wSecond = static_cast<WORD>(second);
  return time;
}

}  // namespace txt
