// The result list both hosting windows show under their pages: its columns,
// its context menu (export, clear) and the tip a double click shows.
#pragma once

#include <memory>

#include "command/dialog_base.h"
#include "platform/wintypes.h"

class CXListCtrl;

namespace resultlist {
constexpr int kListId = 4399;
constexpr int kFrameId = 4400;
constexpr int kFrameTextId = 11030;
constexpr UINT kCmdExport = 32771;
constexpr UINT kCmdClear = 32772;
constexpr int kExportTextId = 11028;
constexpr int kClearTextId = 11029;
// Extended list style: grid lines, sub-item images, full-row selection, one-click activation.
constexpr uint32_t kExtendedStyle = 0x63;

// The visible columns, then the two the rows fill but the user does not see
// (column 6, empty, and column 7, the status word that colours the row).
void SetupColumns(CXListCtrl& list);
// The context menu on a right click: export and clear, both disabled when the list is empty.
void OnRightClick(plat::Window& owner, CXListCtrl& list);
// A double click shows the row in a tip, one "caption: text" line per visible column.
void OnDoubleClick(CXListCtrl& list, int row);
// Replaces the built-in export of a list (menu command 32771) when set.
using ExportHandler = void (*)(plat::Window& owner, CXListCtrl& list);
void SetExportHandler(ExportHandler handler);
}  // namespace resultlist

// A hosting window with the result list under its pages: the list widget on
// control 4399 in frame 4400, its columns and caption, its menu and double click.
class CResultListWindow : public CDlgChildBase {
 public:
  explicit CResultListWindow(int templateId);
  CXListCtrl* ResultList() const;

 protected:
  BOOL OnInitDialog() override;
  std::unique_ptr<plat::Control> MakeControl(const plat::ControlEntry& entry) override;
};
