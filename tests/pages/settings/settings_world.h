// A page world whose devices answer through the simulated terminals, and the
// user's actions on date and time pickers.
#pragma once

#include <string>

#include "host/ref/run/terminals.h"
#include "platform/controls.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

class SettingsWorld : public TerminalWorld {
 protected:
  // The user picks a time in a date or time picker.
  static bool Pick(PageHarness& page, int picker, const SYSTEMTIME& time) {
    auto* control = page.Page().Item<plat::DateTimePicker>(picker);
    return control && control->UserSetTime(time);
  }
  static SYSTEMTIME PickerTime(PageHarness& page, int picker) {
    auto* control = page.Page().Item<plat::DateTimePicker>(picker);
    return control ? control->GetTime() : SYSTEMTIME{};
  }
  static SYSTEMTIME Time(WORD y, WORD mo, WORD d, WORD h = 0, WORD mi = 0, WORD s = 0) {
    return SYSTEMTIME{y, mo, 0, d, h, mi, s, 0};
  }
  // The first device's number in the page world's fleet.
  static constexpr const char* kDevice1 = "91001";
};
