// A page's input checks, in their order: the first failure shows its one tip
// (the host's tip box, empty title), puts the focus where it names, and the
// checks after it are skipped.
//
//   BOOL CheckParam() override {
//     return ParamCheck(*this)
//         .Filled(kEditDriver, kTextDriverCode)          // "<label><12703>"
//         .AtMost(coefficient_, 16777215, kTextCoefficient, kEditCoefficient)  // "<label>(0~16777215)"
//         .That(begin_ < end_, kTextTimeOrder)           // the text alone
//         .Ok();
//   }
#pragma once

#include <cstdint>
#include <string>

#include "platform/dialog.h"

class ParamCheck {
 public:
  static constexpr int kTextMustBeFilled = 12703;  // appended to a label: the field must be filled in
  static constexpr int kNoFocus = 0;

  explicit ParamCheck(plat::Dialog& page) : page_(page) {}

  // The control's text must not be empty: tip label + 12703, focus on the control.
  ParamCheck& Filled(int control, int label);
  // A value read from the page must not be empty: tip label + 12703.
  ParamCheck& Filled(const std::string& value, int label, int focus = kNoFocus);
  // value <= max: tip label + "(0~max)".
  ParamCheck& AtMost(int64_t value, int64_t max, int label, int focus = kNoFocus);
  // min <= value <= max: tip label + "(min~max)".
  ParamCheck& InRange(int64_t value, int64_t min, int64_t max, int label, int focus = kNoFocus);
  // A condition with a tip of its own: a language text, or a text as it stands.
  ParamCheck& That(bool ok, int text, int focus = kNoFocus);
  ParamCheck& That(bool ok, const std::string& tip, int focus = kNoFocus);

  bool Failed() const { return failed_; }
  BOOL Ok() const { return failed_ ? FALSE : TRUE; }

 private:
  ParamCheck& Fail(const std::string& tip, int focus);
  plat::Dialog& page_;
  bool failed_ = false;
};

// "label" + "(min~max)", the range note of a field.
std::string RangeTip(int label, int64_t min, int64_t max);
