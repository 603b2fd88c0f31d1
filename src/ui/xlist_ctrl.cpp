#include "ui/xlist_ctrl.h"

COLORREF CXListCtrl::RowColor(int row) const {
  const std::string status = GetItemText(row, kStatusColumn);
  if (status == kOnline) return kOnlineColor;
  if (status == kWarning) return kWarningColor;
  return kDefaultColor;
}
