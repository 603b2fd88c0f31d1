// The time range of an area or a route: the date and time pickers' defaults
// (today from 00:00:00 to 23:59:59), the range read with the every-day box
// (no date), its order, and its text in a request ("YYMMDDhhmmss").
#pragma once

#include <string>

#include "platform/dialog.h"

namespace area {

struct TimePickers {
  int startDate, startTime, endDate, endTime;
};
// Today 00:00:00 to 23:59:59, with the pickers' display formats.
void InitTimePickers(plat::Dialog& page, const TimePickers& pickers);
// A date picker's date with a time picker's time; no date (year, month, day 0) every day.
SYSTEMTIME ReadTime(const plat::Dialog& page, int datePicker, int timePicker, bool everyDay);
// Whether a is earlier than b, by year, month, day, hour, minute and second.
bool Earlier(const SYSTEMTIME& a, const SYSTEMTIME& b);
// A start that must come before its end: every day (year 0) or earlier.
inline bool InOrder(const SYSTEMTIME& start, const SYSTEMTIME& end) { return start.wYear == 0 || Earlier(start, end); }
// "YYMMDDhhmmss" (year modulo 100).
std::string TimeText(const SYSTEMTIME& time);

}  // namespace area
