// Templates of the settings pages that are a column of labelled fields: one
// section per field (its caption, its input and an optional hint), laid out
// top to bottom, after the page's head rows and before its buttons.
#pragma once

#include <vector>

#include "command/page_template.h"

struct FormRow {
  int label;            // the caption's control id
  const char* caption;  // Chinese default caption
  int text;             // the caption's language id
  plat::ControlEntry input;  // made with the row makers; its rectangle is set by the layout
  int hint = 0;         // the hint's control id (0: none)
  const char* hintCaption = "";
  int hintText = 0;
};

// head: controls above the fields (a frame, radio buttons), already placed, in
// one section; buttons: the send buttons, placed below the fields.
plat::DialogTemplate FormTemplate(int id, const std::vector<plat::ControlEntry>& head, int firstTop,
                                  const std::vector<FormRow>& rows, std::vector<plat::ControlEntry> buttons);
