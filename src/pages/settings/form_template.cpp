#include "pages/settings/form_template.h"

namespace {
constexpr int kWidth = 600, kRowHeight = 30, kFieldHeight = 24, kButtonHeight = 28, kMargin = 10;
constexpr int kLabelLeft = 20, kLabelRight = 190, kInputLeft = 200, kInputRight = 430, kHintLeft = 440,
              kHintRight = 590;
}  // namespace

plat::DialogTemplate FormTemplate(int id, const std::vector<plat::ControlEntry>& head, int firstTop,
                                  const std::vector<FormRow>& rows, std::vector<plat::ControlEntry> buttons) {
  std::vector<TemplateRows> sections{head};
  int top = firstTop;
  for (const FormRow& r : rows) {
    TemplateRows& field = sections.emplace_back();
    field.push_back(row::Static(r.label, r.caption, {kLabelLeft, top + 2, kLabelRight, top + 22}, r.text));
    field.push_back(r.input);
    field.back().rect = {kInputLeft, top, kInputRight, top + kFieldHeight};
    if (r.hint != 0) {
      field.push_back(row::Static(r.hint, r.hintCaption, {kHintLeft, top + 2, kHintRight, top + 22}, r.hintText));
    }
    top += kRowHeight;
  }
  top += kMargin;
  for (plat::ControlEntry& button : buttons) {
    const int width = button.rect.right - button.rect.left;
    button.rect.top = top, button.rect.bottom = top + kButtonHeight;
    button.rect.right = button.rect.left + width;
  }
  sections.push_back(std::move(buttons));
  return PageTemplate(id, {kWidth, top + kButtonHeight + kMargin}, sections);
}
