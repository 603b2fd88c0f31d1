// Times a page reads from its date and time pickers.
#pragma once

#include <string>

#include "platform/dialog.h"

// The date of one picker with the time of day of another (seconds kept, milliseconds 0).
SYSTEMTIME PickedTime(const plat::Dialog& page, int datePicker, int timePicker);
// The same as a request's time text, "YYYY-MM-DD hh:mm:ss".
std::string PickedTimeText(const plat::Dialog& page, int datePicker, int timePicker);
