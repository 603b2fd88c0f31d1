#include "pages/settings/pickers.h"

#include "platform/clock.h"
#include "platform/controls.h"

namespace pickers {

void Prepare(plat::Dialog& page, int datePicker, int timePicker) {
  const SYSTEMTIME now = plat::GetLocalTime();
  for (auto [id, format] : {std::pair{datePicker, kDateFormat}, std::pair{timePicker, kTimeFormat}}) {
    if (auto* picker = page.Item<plat::DateTimePicker>(id)) {
      picker->SetFormat(format);
      picker->SetTime(now);
    }
  }
}

void Set(plat::Dialog& page, int picker, const SYSTEMTIME& time) {
  if (auto* control = page.Item<plat::DateTimePicker>(picker)) control->SetTime(time);
}

void Show(plat::Dialog& page, int datePicker, int timePicker, const SYSTEMTIME& time) {
  Set(page, datePicker, time);
  Set(page, timePicker, time);
}

void TakeDate(const plat::Dialog& page, int datePicker, SYSTEMTIME& into) {
  if (const auto* picker = page.Item<plat::DateTimePicker>(datePicker)) {
    const SYSTEMTIME d = picker->GetTime();
    into.wYear = d.wYear, into.wMonth = d.wMonth, into.wDay = d.wDay;
  }
}

void TakeTimeOfDay(const plat::Dialog& page, int timePicker, SYSTEMTIME& into) {
  if (const auto* picker = page.Item<plat::DateTimePicker>(timePicker)) {
    const SYSTEMTIME t = picker->GetTime();
    into.wHour = t.wHour, into.wMinute = t.wMinute, into.wSecond = t.wSecond;
  }
}

}  // namespace pickers
