// Spreadsheet export of a result list: one workbook, one worksheet per table
// of at most 50,000 rows, every cell written as a string. Without a path on
// the export object the user picks the file in the save-file dialog below.
#pragma once

#include <string>

#include "command/result_columns.h"
#include "host/hostcore.h"
#include "platform/controls.h"

namespace exportfile {
// Rows of one worksheet, below its header row of column captions.
constexpr int kRowsPerSheet = 50000;
// The result lists' trailing columns the user does not see (an empty one, the status word).
constexpr int kResultListHidden = kColumnCount - kVisibleColumns;
// The save-file dialog: the file name edit (holding the proposed name) and OK / Cancel.
constexpr int kSaveTemplate = 9034;
constexpr int kFileNameLabel = 1090;
constexpr int kFileNameEdit = 1152;
constexpr int kFilterText = 1089;
}  // namespace exportfile

// Writes the rows of the list to the export object's path (asking for one
// when it has none), then shows the export object's "finished" message with
// the path, also when the writer failed. Nothing happens for an empty list or
// a cancelled dialog. Worksheets are named after the title: blanks and hyphens
// become underscores; tables beyond one are numbered "title_1", "title_2" ...
// The result lists end in two columns the user does not see, left out by
// default; a list of visible columns only passes 0.
void Export(CExportData& exporter, const std::string& title, const plat::ListView& list,
            int trailingColumnsLeftOut = exportfile::kResultListHidden);
