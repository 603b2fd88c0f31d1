// Time ranges of areas and routes.
#include "pages/areas/area_time.h"

#include <cstdio>
#include <tuple>

#include "command/time_text.h"
#include "platform/clock.h"

namespace area {
namespace {
constexpr const char* kDateFormat = "yyyy'-'MM'-'dd";
constexpr const char* kTimeFormat = "HH':'mm':'ss";
constexpr WORD kLastHour = 23, kLastMinute = 59;
}  // namespace

void InitTimePickers(plat::Dialog& page, const TimePickers& p) {
  SYSTEMTIME today = plat::GetLocalTime();
  today.wHour = today.wMinute = today.wSecond = today.wMilliseconds = 0;
  SYSTEMTIME last = today;
  last.wHour = kLastHour, last.wMinute = kLastMinute, last.wSecond = kLastMinute;
  for (auto [id, time, format] : {std::tuple{p.startDate, today, kDateFormat}, std::tuple{p.startTime, today, kTimeFormat},
                                  std::tuple{p.endDate, last, kDateFormat}, std::tuple{p.endTime, last, kTimeFormat}}) {
    if (auto* picker = page.Item<plat::DateTimePicker>(id)) {
      picker->SetTime(time);
      picker->SetFormat(format);
    }
  }
}

SYSTEMTIME ReadTime(const plat::Dialog& page, int datePicker, int timePicker, bool everyDay) {
  SYSTEMTIME time = PickedTime(page, datePicker, timePicker);
  if (everyDay) time.wYear = time.wMonth = time.wDay = time.wDayOfWeek = 0;
  return time;
}

bool Earlier(const SYSTEMTIME& a, const SYSTEMTIME& b) {
  return std::tie(a.wYear, a.wMonth, a.wDay, a.wHour, a.wMinute, a.wSecond) <
         std::tie(b.wYear, b.wMonth, b.wDay, b.wHour, b.wMinute, b.wSecond);
}

std::string TimeText(const SYSTEMTIME& t) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d%02d%02d%02d%02d%02d", t.wYear % 100, t.wMonth, t.wDay, t.wHour, t.wMinute,
                t.wSecond);
  return text;
}

}  // namespace area
