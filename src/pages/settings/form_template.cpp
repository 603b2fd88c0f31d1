#include "pages/settings/form_template.h"

namespace {
constexpr int kWidth = 600, kRowHeight = 30, kFieldHeight = 24, kButtonHeight = 28, kMargin = 10;
constexpr int kLabelLeft = 20, kLabelRight = 190, kInputLeft = 200, kInputRight = 430, kHintLeft = 440,
              kHintRight = 590;
}  // namespace

plat::DialogTemplate FormTemplate(int id, const std::vector<plat::ControlSpec>& head, int firstTop,
                                  const std::vector<FormRow>& rows, std::vector<plat::ControlSpec> buttons) {
  plat::DialogTemplate dialog{id, "", {}, {}};
  int section = 1;
  for (plat::ControlSpec entry : head) {
    entry.layoutGroup = section;
    dialog.controls.push_back(entry);
  }
  int top = firstTop;
  for (const FormRow& r : rows) {
    ++section;
    plat::ControlSpec label = row::Static(r.label, r.caption, {kLabelLeft, top + 2, kLabelRight, top + 22}, r.text);
    plat::ControlSpec input = r.input;
    input.rect = {kInputLeft, top, kInputRight, top + kFieldHeight};
    label.layoutGroup = input.layoutGroup = section;
    dialog.controls.push_back(label);
    dialog.controls.push_back(input);
    if (r.hint != 0) {
      plat::ControlSpec hint = row::Static(r.hint, r.hintCaption, {kHintLeft, top + 2, kHintRight, top + 22}, r.hintText);
      hint.layoutGroup = section;
      dialog.controls.push_back(hint);
    }
    top += kRowHeight;
  }
  ++section;
  top += kMargin;
  for (plat::ControlSpec& button : buttons) {
    const int width = button.rect.right - button.rect.left;
    button.rect.top = top, button.rect.bottom = top + kButtonHeight;
    button.rect.right = button.rect.left + width;
    button.layoutGroup = section;
    dialog.controls.push_back(button);
  }
  dialog.size = {kWidth, top + kButtonHeight + kMargin};
  return dialog;
}
