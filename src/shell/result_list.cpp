#include "shell/result_list.h"

#include <iterator>
#include <string>

#include "command/result_columns.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "platform/menu.h"
#include "shell/export.h"
#include "ui/xlist_ctrl.h"

namespace resultlist {
namespace {
ExportHandler g_export = nullptr;  // replaces the export below when set

struct ColumnSpec {
  int textId;  // 0: the caption is "#" (or empty for the hidden columns)
  int width;
};
// Captions of the visible columns.
enum Text : int { kTextVehicle = 13421, kTextTime = 13431, kTextFunction = 13022, kTextResult = 12957, kTextDescription = 13008 };
constexpr ColumnSpec kColumns[] = {{0, 45},           {kTextVehicle, 90},  {kTextTime, 115},
                                   {kTextFunction, 115}, {kTextResult, 80}, {kTextDescription, 250}};
static_assert(std::size(kColumns) == kVisibleColumns);
constexpr int kHiddenColumns = kColumnCount - kVisibleColumns;

// The export of the menu: a fresh export object, the result frame's caption as the title.
void ExportList(const CXListCtrl& list) {
  CExportData exporter;
  Export(exporter, LanguageText(kFrameTextId), list);
}
}  // namespace

void SetupColumns(CXListCtrl& list) {
  list.SetExtendedStyle(kExtendedStyle);
  int index = 0;
  for (const ColumnSpec& column : kColumns) {
    list.InsertColumn(index++, column.textId ? LanguageText(column.textId) : "#", column.width);
  }
  for (int i = 0; i < kHiddenColumns; ++i) list.InsertColumn(index++, "", 0);
}

void OnRightClick(plat::Window& owner, CXListCtrl& list) {
  const bool any = list.GetItemCount() > 0;
  const UINT command = plat::menu::Track(owner, {{kCmdExport, LanguageText(kExportTextId), any},
                                                 {kCmdClear, LanguageText(kClearTextId), any}});
  if (command == kCmdClear) {
    list.DeleteAllItems();
  } else if (command == kCmdExport) {
    if (g_export) {
      g_export(owner, list);
    } else {
      ExportList(list);
    }
  }
}

void OnDoubleClick(CXListCtrl& list, int row) {
  if (row < 0 || row >= list.GetItemCount()) return;
  std::string text;
  // The visible columns only: the hidden ones hold no text for the user.
  for (int c = 0; c < kVisibleColumns && c < list.GetColumnCount(); ++c) {
    text += FormatChineseColon(list.GetColumn(c).caption, list.GetItemText(row, c)) + "\r\n";
  }
  ShowMsgTipEx(text, "", 0);
}

void SetExportHandler(ExportHandler handler) { g_export = handler; }
}  // namespace resultlist

CResultListWindow::CResultListWindow(int templateId) : CDlgChildBase(templateId) {
  using namespace resultlist;
  BindNotify(kListId, LVN_RCLICK, [this](const plat::NMITEM&) { OnRightClick(*this, *ResultList()); });
  BindNotify(kListId, LVN_DBLCLK, [this](const plat::NMITEM& nm) { OnDoubleClick(*ResultList(), nm.item); });
}

CXListCtrl* CResultListWindow::ResultList() const { return Item<CXListCtrl>(resultlist::kListId); }

std::unique_ptr<plat::Control> CResultListWindow::MakeControl(const plat::ControlEntry& entry) {
  if (entry.id == resultlist::kListId) return std::make_unique<CXListCtrl>();
  return CDlgChildBase::MakeControl(entry);
}

BOOL CResultListWindow::OnInitDialog() {
  CDlgChildBase::OnInitDialog();
  SetItemText(resultlist::kFrameId, LanguageText(resultlist::kFrameTextId));
  resultlist::SetupColumns(*ResultList());
  return TRUE;
}
