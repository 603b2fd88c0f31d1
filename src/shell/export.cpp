// Spreadsheet export of a result list: the file name (preset, or proposed
// from the local time in a save-file dialog), the split into worksheets, the
// columns taken from the list's header, and the workbook writer.
#include "shell/export.h"

#include <xlsxwriter.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

#include "command/plugin_log.h"
#include "platform/clock.h"
#include "platform/dialog.h"
#include "text/encoding.h"

namespace {

using namespace exportfile;

constexpr const char* kExtension = ".xlsx";
constexpr int kLogError = 2;

// What the writer accepts: worksheet names of at most 31 characters without
// any of []:*?/\ and not starting or ending with an apostrophe, and cell
// strings of at most 32,767 characters. Longer names and texts are cut,
// refused name characters become underscores.
constexpr size_t kMaxSheetNameChars = 31;
constexpr size_t kMaxCellChars = 32767;
constexpr std::string_view kRefusedSheetChars = "[]:*?/\\";

const plat::DialogTemplate kSaveFileTemplate = [] {
  using plat::ControlKind;
  return plat::DialogTemplate{
      kSaveTemplate, "另存为", {420, 110},
      {{kFileNameLabel, ControlKind::Static, "文件名:", {10, 14, 70, 34}, 0, 0, 0, 0, 0, 1},
       {kFileNameEdit, ControlKind::Edit, "", {76, 10, 410, 34}, 0, 0, 0, 0, 0, 1},
       {kFilterText, ControlKind::Static, "*.xlsx", {76, 40, 410, 60}, 0, 0, 0, 0, 0, 2},
       {IDOK, ControlKind::PushButton, "保存", {240, 70, 320, 98}, plat::style::DefaultButton, 0, 0, 0, 0, 3},
       {IDCANCEL, ControlKind::PushButton, "取消", {330, 70, 410, 98}, 0, 0, 0, 0, 0, 3}}};
}();
const plat::templates::Registration kRegistration{kSaveFileTemplate};

// The save-file dialog: shows the proposed name and keeps what the user types.
class SaveFileDialog : public plat::Dialog {
 public:
  explicit SaveFileDialog(std::string proposed) : Dialog(kSaveTemplate), name_(std::move(proposed)) {
    Bind(kFileNameEdit, EN_CHANGE, [this] { name_ = GetItemText(kFileNameEdit); });
  }
  const std::string& Name() const { return name_; }

 protected:
  BOOL OnInitDialog() override {
    SetItemText(kFileNameEdit, name_);
    return TRUE;
  }

 private:
  std::string name_;
};

// "YYYYMMDDhhmmss.xlsx" of the local time.
std::string ProposedFileName() {
  const SYSTEMTIME t = plat::GetLocalTime();
  char name[40];
  std::snprintf(name, sizeof name, "%04d%02d%02d%02d%02d%02d", t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute,
                t.wSecond);
  return name + std::string(kExtension);
}

// The file the user chose; nullopt when the dialog was cancelled.
std::optional<std::string> AskForPath() {
  SaveFileDialog dialog(ProposedFileName());
  if (dialog.DoModal(nullptr) != IDOK || dialog.Name().empty()) return std::nullopt;
  return dialog.Name();
}

void CreateParentDirectories(const std::string& path) {
  const std::filesystem::path dir = std::filesystem::path(path).parent_path();
  std::error_code error;
  if (!dir.empty() && !std::filesystem::create_directories(dir, error) && error) {
    PluginLog().WriteStrInfoEx(kLogError, "Export CreateDirectory Path:%s Error:%s", dir.c_str(),
                               error.message().c_str());
  }
}

// The worksheet name of the title with a suffix ("" or "_N").
std::string SheetName(const std::string& title, const std::string& suffix) {
  std::string base = title;
  for (char& c : base) {
    if (c == ' ' || c == '-' || kRefusedSheetChars.find(c) != std::string_view::npos) c = '_';
  }
  base = txt::Utf8Left(base, kMaxSheetNameChars - suffix.size());
  if (!base.empty() && base.front() == '\'') base.front() = '_';
  if (!suffix.empty()) return base + suffix;
  if (!base.empty() && base.back() == '\'') base.back() = '_';
  return base;
}

struct Sheet {
  std::string name;
  int first = 0;  // first row of the list
  int end = 0;    // one past the last row
};

// One sheet named after the title, or numbered sheets of kRowsPerSheet rows
// and one more for the rows left over (never an empty one).
std::vector<Sheet> SplitRows(const std::string& title, int rowCount) {
  if (rowCount <= kRowsPerSheet) return {{SheetName(title, ""), 0, rowCount}};
  std::vector<Sheet> sheets;
  for (int first = 0, number = 1; first < rowCount; first += kRowsPerSheet, ++number) {
    sheets.push_back({SheetName(title, "_" + std::to_string(number)), first, std::min(first + kRowsPerSheet, rowCount)});
  }
  return sheets;
}

// Header columns except the trailing ones left out, those with a width above 0.
std::vector<int> ExportedColumns(const plat::ListView& list, int trailingColumnsLeftOut) {
  std::vector<int> columns;
  for (int c = 0; c < list.GetColumnCount() - trailingColumnsLeftOut; ++c) {
    if (list.GetColumn(c).width > 0) columns.push_back(c);
  }
  return columns;
}

// Apostrophes in cell texts become blanks. An empty text leaves the cell empty.
bool WriteCell(lxw_worksheet* sheet, int row, size_t column, std::string text) {
  std::replace(text.begin(), text.end(), '\'', ' ');
  text = txt::Utf8Left(text, kMaxCellChars);
  return worksheet_write_string(sheet, static_cast<lxw_row_t>(row), static_cast<lxw_col_t>(column), text.c_str(),
                                nullptr) == LXW_NO_ERROR;
}

// The header row of captions, then the list's rows [first, end).
bool WriteSheet(lxw_worksheet* sheet, const plat::ListView& list, const std::vector<int>& columns, int first,
                int end) {
  bool ok = true;
  for (size_t i = 0; i < columns.size(); ++i) {
    ok = WriteCell(sheet, 0, i, list.GetColumn(columns[i]).caption) && ok;
  }
  for (int row = first; row < end; ++row) {
    for (size_t i = 0; i < columns.size(); ++i) {
      ok = WriteCell(sheet, row - first + 1, i, list.GetItemText(row, columns[i])) && ok;
    }
  }
  return ok;
}

bool WriteWorkbook(const std::string& path, const std::string& title, const plat::ListView& list,
                   int trailingColumnsLeftOut) {
  lxw_workbook_options options{};
  options.constant_memory = LXW_TRUE;  // rows go to disk as they are written: a full sheet stays small in memory
  lxw_workbook* book = workbook_new_opt(path.c_str(), &options);
  if (!book) return false;
  const std::vector<int> columns = ExportedColumns(list, trailingColumnsLeftOut);
  bool ok = true;
  for (const Sheet& sheet : SplitRows(title, list.GetItemCount())) {
    // An empty title leaves the writer's default name.
    lxw_worksheet* worksheet = workbook_add_worksheet(book, sheet.name.empty() ? nullptr : sheet.name.c_str());
    if (!worksheet) {
      ok = false;
      break;
    }
    ok = WriteSheet(worksheet, list, columns, sheet.first, sheet.end) && ok;
  }
  const lxw_error closed = workbook_close(book);
  if (closed != LXW_NO_ERROR) {
    PluginLog().WriteStrInfoEx(kLogError, "Export WriteWorkbook Path:%s Error:%s", path.c_str(),
                               lxw_strerror(closed));
  }
  return ok && closed == LXW_NO_ERROR;
}

}  // namespace

// The writer is part of the plug-in, so the export object's "no spreadsheet
// writer" message never applies; a failed write is logged and still reported
// as finished with the path, as the user asked for that file.
void Export(CExportData& exporter, const std::string& title, const plat::ListView& list,
            int trailingColumnsLeftOut) {
  try {
    if (list.GetItemCount() <= 0) return;
    if (exporter.m_strPath.empty()) {
      std::optional<std::string> chosen = AskForPath();
      if (!chosen) return;
      exporter.m_strPath = *chosen;
    }
    const std::string path = exporter.m_strPath;
    CreateParentDirectories(path);
    if (!WriteWorkbook(path, title, list, trailingColumnsLeftOut)) {
      PluginLog().WriteStrInfoEx(kLogError, "Export Path:%s not written completely", path.c_str());
    }
    exporter.ShowMessage(exporter.GetMessageText(CExportData::kMsgFinished) + path + "!");
  } catch (const std::exception& e) {
    PluginLog().WriteStrInfoEx(kLogError, "Export Error:%s", e.what());
  }
}
