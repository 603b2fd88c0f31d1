// Spreadsheet export, checked in the written file: worksheets, rows, the save dialog, the menu.
#include <minizip/unzip.h>

#include "platform/dialog.h"
#include "platform/menu.h"
#include "shell/export.h"
#include "shell/result_list.h"
#include "support/page_fixture.h"
#include "ui/xlist_ctrl.h"

namespace {
namespace fs = std::filesystem;
using Texts = std::vector<std::string>;

std::string ReadEntry(const std::string& zipPath, const std::string& entry) {
  std::string data;
  char buffer[1 << 16];
  unzFile zip = unzOpen64(zipPath.c_str());
  if (zip && unzLocateFile(zip, entry.c_str(), 0) == UNZ_OK && unzOpenCurrentFile(zip) == UNZ_OK) {
    for (int n; (n = unzReadCurrentFile(zip, buffer, sizeof buffer)) > 0;) data.append(buffer, static_cast<size_t>(n));
  }
  if (zip) unzCloseCurrentFile(zip), unzClose(zip);
  return data;
}

// Per `<element>`, the texts from `open` up to `close` inside it.
std::vector<Texts> Elements(const std::string& xml, const std::string& element, const std::string& open, char close) {
  std::vector<Texts> all;
  for (size_t at = xml.find("<" + element); at != std::string::npos; at = xml.find("<" + element, at + 1)) {
    const size_t end = xml.find("</" + element + ">", at);
    all.emplace_back();
    for (size_t t = xml.find(open, at); t < end; t = xml.find(open, t + 1)) {
      all.back().push_back(xml.substr(t + open.size(), xml.find(close, t + open.size()) - t - open.size()));
    }
  }
  return all;
}

class ExportTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    fs::remove_all(dir);
    for (auto [caption, width] : {std::pair{"#", 45}, {"Car", 90}, {"Hidden", 0}, {"Result", 80}, {"", 10}, {"state", 10}})
      list.InsertColumn(list.GetColumnCount(), caption, width);
  }
  void TearDown() override { fs::remove_all(dir), PageWorld::TearDown(); }
  void Fill(int rows) { list.SetItemCountEx(rows, [](int r, int c) { return std::to_string(r) + "c" + std::to_string(c); }); }
  std::vector<Texts> Sheet(const std::string& path, int n) {  // the rows of worksheet n (from 1), header row first
    return Elements(ReadEntry(path, "xl/worksheets/sheet" + std::to_string(n) + ".xml"), "row", "<t>", '<');
  }
  Texts SheetNames(const std::string& path) { return Elements(ReadEntry(path, "xl/workbook.xml"), "sheets", "name=\"", '"').at(0); }

  const fs::path dir = fs::temp_directory_path() / ("fleetcmd-export-" + std::to_string(::getpid()));
  CXListCtrl list;
  CExportData exporter;
};

TEST_F(ExportTest, SplitsRowsIntoNumberedWorksheetsOfFiftyThousand) {
  struct Case { int rows; std::string title; Texts names; std::vector<size_t> dataRows; };
  const std::string cut = "a_1_" + std::string(25, 'x');  // 31 characters with "_N", refused characters replaced
  const Case cases[] = {{50000, "T", {"T"}, {50000}},
                        {50001, "T", {"T_1", "T_2"}, {50000, 1}},
                        {100000, "a[1]" + std::string(40, 'x'), {cut + "_1", cut + "_2"}, {50000, 50000}}};
  for (const Case& c : cases) {
    Fill(c.rows);
    exporter.m_strPath = (dir / (std::to_string(c.rows) + ".xlsx")).string();
    Export(exporter, c.title, list);
    EXPECT_EQ(SheetNames(exporter.m_strPath), c.names) << c.rows;
    for (size_t s = 0; s < c.dataRows.size(); ++s) {
      const std::vector<Texts> rows = Sheet(exporter.m_strPath, static_cast<int>(s) + 1);
      ASSERT_EQ(rows.size(), c.dataRows[s] + 1) << c.rows << " rows, sheet " << s + 1;
      EXPECT_EQ(rows[1].at(0), std::to_string(s * exportfile::kRowsPerSheet) + "c0") << c.rows;
    }
  }
}

TEST_F(ExportTest, WritesVisibleColumnsCleansTitleAndApostrophesAndReportsThePath) {
  list.InsertItem(0, "1");
  list.SetItemText(0, 1, "driver's seat");
  const std::string path = exporter.m_strPath = (dir / "a" / "b" / "t.xlsx").string();  // directories made on the way
  Export(exporter, "A B-C", list);
  EXPECT_EQ(SheetNames(path), Texts{"A_B_C"});
  EXPECT_EQ(Sheet(path, 1), (std::vector<Texts>{{"#", "Car", "Result"}, {"1", "driver s seat"}}));
  exporter.m_strPath = dir.string();  // a directory: the writer fails, the path is still reported
  Export(exporter, "T", list);
  EXPECT_EQ(TipTexts(), (Texts{"Export finished: " + path + "!", "Export finished: " + dir.string() + "!"}));
}

// A list without hidden trailing columns (a page's own list) keeps its last two.
TEST_F(ExportTest, ListOfVisibleColumnsOnlyKeepsItsLastColumns) {
  list.InsertItem(0, "1");
  list.SetItemText(0, 5, "last");
  const std::string path = exporter.m_strPath = (dir / "v.xlsx").string();
  Export(exporter, "T", list, 0);
  EXPECT_EQ(Sheet(path, 1), (std::vector<Texts>{{"#", "Car", "Result", "state"}, {"1", "last"}}));
}

TEST_F(ExportTest, MenuExportProposesTheTimeAndWritesTheChosenFile) {
  std::string proposed;
  const std::string path = (dir / "menu.xlsx").string();
  plat::modal::Push([&](plat::Dialog& d) { proposed = d.GetItemText(exportfile::kFileNameEdit), d.PostClick(IDCANCEL); });
  plat::modal::Push([&](plat::Dialog& d) { d.Item<plat::Edit>(exportfile::kFileNameEdit)->UserType(path), d.PostClick(IDOK); });
  Export(exporter, "T", list);
  EXPECT_EQ(plat::modal::Pending(), 2u);  // no dialog for an empty list
  Fill(3);
  plat::Window owner;
  for (int run = 0; run < 2; ++run) plat::menu::PushChoice(resultlist::kCmdExport), resultlist::OnRightClick(owner, list);
  EXPECT_EQ(proposed, "20261123083005.xlsx");  // the fixture's local time; cancelled, so never written
  EXPECT_FALSE(fs::exists(proposed));
  EXPECT_EQ(SheetNames(path), Texts{"&lt;11030&gt;"});  // "<11030>", as XML writes it
  EXPECT_EQ(TipTexts(), Texts{"Export finished: " + path + "!"});
}

}  // namespace
