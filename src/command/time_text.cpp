#include "command/time_text.h"

#include "text/datetime.h"

SYSTEMTIME PickedTime(const plat::Dialog& page, int datePicker, int timePicker) {
  SYSTEMTIME result{};
  if (const auto* date = page.Item<plat::DateTimePicker>(datePicker)) {
    const SYSTEMTIME d = date->GetTime();
    result.wYear = d.wYear, result.wMonth = d.wMonth, result.wDay = d.wDay, result.wDayOfWeek = d.wDayOfWeek;
  }
  if (const auto* time = page.Item<plat::DateTimePicker>(timePicker)) {
    const SYSTEMTIME t = time->GetTime();
    result.wHour = t.wHour, result.wMinute = t.wMinute, result.wSecond = t.wSecond;
  }
  return result;
}

std::string PickedTimeText(const plat::Dialog& page, int datePicker, int timePicker) {
  return txt::FormatRequestTime(PickedTime(page, datePicker, timePicker));
}
