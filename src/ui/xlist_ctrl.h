// The widget library's list control: a report list whose rows are drawn in
// the colour of their status word (column 7).
#pragma once

#include <string>

#include "platform/controls.h"

class CXListCtrl : public plat::ListView {
 public:
  static constexpr int kStatusColumn = 7;
  static constexpr COLORREF kOnlineColor = 0x009900;
  static constexpr COLORREF kWarningColor = 0x0000FF;
  static constexpr COLORREF kDefaultColor = 0x000000;
  static constexpr const char* kOnline = "Online";
  static constexpr const char* kWarning = "Warning";

  // The text colour of a row, from its status word.
  COLORREF RowColor(int row) const;
};
