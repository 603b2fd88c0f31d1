#include "command/page_template.h"

#include <string>

namespace row {
namespace {
using plat::ControlKind;

ControlEntry Captioned(ControlKind kind, int id, const char* caption, RECT rect, int text, uint32_t styles) {
  ControlEntry entry;
  entry.id = id;
  entry.kind = kind;
  entry.caption = caption;
  entry.rect = rect;
  entry.styles = styles;
  entry.textId = text;
  return entry;
}

ControlEntry Plain(ControlKind kind, int id, RECT rect, uint32_t styles) {
  return Captioned(kind, id, "", rect, 0, styles);
}

int Digits(int64_t value) { return static_cast<int>(std::to_string(value).size()); }
}  // namespace

ControlEntry Static(int id, const char* caption, RECT rect, int text, uint32_t styles) {
  return Captioned(ControlKind::Static, id, caption, rect, text, styles);
}
ControlEntry Box(int id, const char* caption, RECT rect, int text, uint32_t styles) {
  return Captioned(ControlKind::GroupBox, id, caption, rect, text, styles);
}
ControlEntry Button(int id, const char* caption, RECT rect, int text, uint32_t styles) {
  return Captioned(ControlKind::PushButton, id, caption, rect, text, styles);
}
ControlEntry Check(int id, const char* caption, RECT rect, int text, uint32_t styles) {
  return Captioned(ControlKind::CheckBox, id, caption, rect, text, styles);
}
ControlEntry Radio(int id, const char* caption, RECT rect, int text, uint32_t styles) {
  return Captioned(ControlKind::RadioButton, id, caption, rect, text, styles);
}

ControlEntry Edit(int id, RECT rect, EditOptions options) {
  ControlEntry entry = Plain(ControlKind::Edit, id, rect, options.styles);
  entry.limit = options.limit;
  entry.minValue = options.min;
  entry.maxValue = options.max;
  return entry;
}

ControlEntry Number(int id, RECT rect, int64_t min, int64_t max, uint32_t styles) {
  return Edit(id, rect, {Digits(max), styles | plat::style::Number, min, max});
}

ControlEntry Combo(int id, RECT rect, uint32_t styles) { return Plain(ControlKind::ComboBox, id, rect, styles); }
ControlEntry List(int id, RECT rect, uint32_t styles) { return Plain(ControlKind::ListView, id, rect, styles); }
ControlEntry Tree(int id, RECT rect, uint32_t styles) { return Plain(ControlKind::TreeView, id, rect, styles); }
ControlEntry Date(int id, RECT rect, uint32_t styles) { return Plain(ControlKind::DatePicker, id, rect, styles); }
ControlEntry Time(int id, RECT rect, uint32_t styles) { return Plain(ControlKind::TimePicker, id, rect, styles); }

ControlEntry Spin(int id, RECT rect, int buddy, int64_t min, int64_t max) {
  ControlEntry entry = Plain(ControlKind::Spin, id, rect, 0);
  entry.buddy = buddy;
  entry.minValue = min;
  entry.maxValue = max;
  return entry;
}

ControlEntry SetButton(RECT rect) { return Button(ctl::Set, "设置", rect); }
ControlEntry GetButton(RECT rect) { return Button(ctl::Get, "获取", rect); }
ControlEntry CancelButton(RECT rect) { return Button(ctl::Cancel, "取消", rect); }
}  // namespace row

plat::DialogTemplate FitToPageArea(plat::DialogTemplate dialog) {
  const double sx = dialog.size.cx > kPageArea.cx ? double(kPageArea.cx) / dialog.size.cx : 1.0;
  const double sy = dialog.size.cy > kPageArea.cy ? double(kPageArea.cy) / dialog.size.cy : 1.0;
  if (sx == 1.0 && sy == 1.0) return dialog;
  const auto x = [&](int v) { return static_cast<int>(v * sx); };
  const auto y = [&](int v) { return static_cast<int>(v * sy); };
  for (plat::ControlEntry& entry : dialog.controls) {
    entry.rect = {x(entry.rect.left), y(entry.rect.top), x(entry.rect.right), y(entry.rect.bottom)};
  }
  dialog.size = {x(dialog.size.cx), y(dialog.size.cy)};
  return dialog;
}

namespace {
template <class Sections>
plat::DialogTemplate Numbered(int id, SIZE size, const Sections& sections) {
  plat::DialogTemplate dialog{id, "", size, {}};
  int section = 0;
  for (const auto& rows : sections) {
    if (std::empty(rows)) continue;
    ++section;
    for (plat::ControlEntry entry : rows) {
      entry.layoutGroup = section;
      dialog.controls.push_back(std::move(entry));
    }
  }
  return dialog;
}
}  // namespace

plat::DialogTemplate PageTemplate(int id, SIZE size, std::initializer_list<TemplateSection> sections) {
  return Numbered(id, size, sections);
}

plat::DialogTemplate PageTemplate(int id, SIZE size, const std::vector<TemplateRows>& sections) {
  return Numbered(id, size, sections);
}
