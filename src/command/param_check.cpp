#include "command/param_check.h"

#include "host/hostcore.h"
#include "lang/language.h"

std::string RangeTip(int label, int64_t min, int64_t max) {
  return LanguageText(label) + "(" + std::to_string(min) + "~" + std::to_string(max) + ")";
}

ParamCheck& ParamCheck::Fail(const std::string& tip, int focus) {
  failed_ = true;
  ShowMsgTipEx(tip, "", 0);
  if (focus != kNoFocus) {
    if (plat::Window* control = page_.GetDlgItem(focus)) control->SetFocus();
  }
  return *this;
}

ParamCheck& ParamCheck::Filled(int control, int label) { return Filled(page_.GetItemText(control), label, control); }

ParamCheck& ParamCheck::Filled(const std::string& value, int label, int focus) {
  if (failed_ || !value.empty()) return *this;
  return Fail(LanguageText(label) + LanguageText(kTextMustBeFilled), focus);
}

ParamCheck& ParamCheck::AtMost(int64_t value, int64_t max, int label, int focus) {
  if (failed_ || value <= max) return *this;
  return Fail(RangeTip(label, 0, max), focus);
}

ParamCheck& ParamCheck::InRange(int64_t value, int64_t min, int64_t max, int label, int focus) {
  if (failed_ || (value >= min && value <= max)) return *this;
  return Fail(RangeTip(label, min, max), focus);
}

ParamCheck& ParamCheck::That(bool ok, int text, int focus) {
  if (failed_ || ok) return *this;
  return Fail(LanguageText(text), focus);
}

ParamCheck& ParamCheck::That(bool ok, const std::string& tip, int focus) {
  if (failed_ || ok) return *this;
  return Fail(tip, focus);
}
