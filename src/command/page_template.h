// A page's dialog template written as data: each row names its control, its
// Chinese default caption, its rectangle and the language id the dialog shows
// instead of the caption (CDialogBase applies the texts when it initialises).
// Rows come in sections, one per row or block of a form; a section's number
// is its place in the list.
//
//   plat::DialogTemplate CDlgSendText::Layout() {
//     using namespace row;
//     return PageTemplate(kTemplate, {600, 440}, {
//         {Box(kFlagGroup, "标志", {10, 10, 590, 120}, kTextFlag),
//          Check(kCheckTts, "终端TTS播读", {210, 60, 380, 80}, kTextTts)},
//         {SetButton({400, 405, 490, 433}), CancelButton({500, 405, 590, 433})}});
//   }
#pragma once

#include <cstdint>
#include <initializer_list>
#include <vector>

#include "command/ids.h"
#include "platform/dialog.h"

namespace row {
using plat::ControlEntry;

// Buttons, check boxes, radio buttons, statics and group boxes: a caption and its language id.
ControlEntry Static(int id, const char* caption, RECT rect, int text = 0, uint32_t styles = 0);
ControlEntry Box(int id, const char* caption, RECT rect, int text = 0, uint32_t styles = 0);
ControlEntry Button(int id, const char* caption, RECT rect, int text = 0, uint32_t styles = 0);
ControlEntry Check(int id, const char* caption, RECT rect, int text = 0, uint32_t styles = 0);
ControlEntry Radio(int id, const char* caption, RECT rect, int text = 0, uint32_t styles = 0);

// An edit: its character limit, styles, and (when max > min) the range a typed number must keep.
struct EditOptions {
  int limit = 0;
  uint32_t styles = 0;
  int64_t min = 0;
  int64_t max = 0;
};
ControlEntry Edit(int id, RECT rect, EditOptions options = {});
// A digits-only edit whose typed value stays in [min, max], as many characters as max has.
ControlEntry Number(int id, RECT rect, int64_t min, int64_t max, uint32_t styles = 0);

ControlEntry Combo(int id, RECT rect, uint32_t styles = 0);
ControlEntry List(int id, RECT rect, uint32_t styles = 0);
ControlEntry Tree(int id, RECT rect, uint32_t styles = 0);
ControlEntry Date(int id, RECT rect, uint32_t styles = 0);
ControlEntry Time(int id, RECT rect, uint32_t styles = 0);
ControlEntry Spin(int id, RECT rect, int buddy, int64_t min, int64_t max);

// The page's own send buttons; the base writes their texts when it attaches the page.
ControlEntry SetButton(RECT rect);
ControlEntry GetButton(RECT rect);
ControlEntry CancelButton(RECT rect);
}  // namespace row

using TemplateSection = std::initializer_list<plat::ControlEntry>;
// The template of a dialog: its size and its sections in display order.
plat::DialogTemplate PageTemplate(int id, SIZE size, std::initializer_list<TemplateSection> sections);
// The same from sections put together in code (shared rows, rows a page has only sometimes).
using TemplateRows = std::vector<plat::ControlEntry>;
plat::DialogTemplate PageTemplate(int id, SIZE size, const std::vector<TemplateRows>& sections);

// The page area of the hosting windows: a page's template fits in it.
constexpr SIZE kPageArea{600, 500};
// A template drawn larger than the page area, scaled down to fit it (the
// proportions of every rectangle kept); one that fits is returned unchanged.
plat::DialogTemplate FitToPageArea(plat::DialogTemplate dialog);
