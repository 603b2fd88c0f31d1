// Date and time pickers of the settings pages: one display format for all,
// the current time when a page opens, and a read-back time shown in a pair.
#pragma once

#include "platform/dialog.h"

namespace pickers {
constexpr const char* kDateFormat = "yyyy'-'MM'-'dd";
constexpr const char* kTimeFormat = "HH':'mm':'ss";

// Gives a date and a time picker their formats and the current local time.
void Prepare(plat::Dialog& page, int datePicker, int timePicker);
// Shows a time in a picker (a date picker shows its date, a time picker its time of day).
void Set(plat::Dialog& page, int picker, const SYSTEMTIME& time);
// Shows a time in both pickers of a pair.
void Show(plat::Dialog& page, int datePicker, int timePicker, const SYSTEMTIME& time);
// The date part of a picker, or its time of day, into a time.
void TakeDate(const plat::Dialog& page, int datePicker, SYSTEMTIME& into);
void TakeTimeOfDay(const plat::Dialog& page, int timePicker, SYSTEMTIME& into);
}  // namespace pickers
