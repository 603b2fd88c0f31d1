// The marker pickers as a user meets them from the area pages: the markers
// of the page's shape, the fence filter over a check map that survives it,
// select all, GpsFix, and OK with nothing checked.
#include "area_support.h"
#include "host/hostcore.h"
#include "pages/areas/marker_picker.h"
#include "pages/areas/setup_circle.h"
#include "pages/areas/setup_edge.h"
#include "pages/areas/setup_poligon.h"
#include "platform/dialog.h"

using fixture::T;
using A = CAreaPageBase;
using P = CDlgAreaBase;

namespace {

// The cells of a list, a row per line, cells joined by '|'.
std::string Cells(const plat::ListView& list) {
  std::string text;
  for (int row = 0; row < list.GetItemCount(); ++row) {
    for (int column = 0; column < list.GetColumnCount(); ++column) {
      text += (column ? "|" : "") + list.GetItemText(row, column) + (list.GetCheck(row) && column == 0 ? "*" : "");
    }
    text += "\n";
  }
  return text;
}

class MarkerPickers : public AreaPageTest {
 protected:
  // Runs the page's picker with an action and returns what the action saw.
  std::string Inside(std::function<std::string(plat::Dialog&)> look) {
    std::string seen;
    plat::modal::Push([&](plat::Dialog& dialog) { seen = look(dialog); });
    page->Click(A::kPickButton);
    return seen;
  }
  static plat::ListView& List(plat::Dialog& d) { return *d.Item<plat::ListView>(P::kList); }
};

TEST_F(MarkerPickers, EachShapeListsItsMarkersAndColumns) {
  const struct {
    int type;
    std::string columns;
    std::string rows;  // the first rows
  } cases[] = {
      {CDlgSetupCircle::kFunctionType, T(12001) + "|" + T(12621) + "|" + T(12101) + "|" + T(12102) + "|" + T(12510) +
                                           "(" + T(12511) + ")",
       "1|C1|22.533000|113.930000|500\n2|C2|-33.5|151.2|70000\n3|C3|0.0000009|-0.0000001|1\n"},
      {CDlgSetupEdge::kFunctionType,
       T(12001) + "|" + T(12621) + "|" + T(11005) + T(12101) + "|" + T(11005) + T(12102) + "|" + T(11006) + T(12101) +
           "|" + T(11006) + T(12102),
       "4|R1|-10|20|-12|22\n5|R2|10|20|-12|22\n6|R3|6|5||\n"},
      {CDlgSetupPoligon::kFunctionType, T(12001) + "|" + T(12621) + "|" + T(12410) + "|" + T(12101) + "|" + T(12102),
       "7|P1|4|5,6,7,8,9|-1,2,3,4\n8|P2|3|-0.000020,0.000040,0.000060|0.000010,0.000030,0.000050\n"},
  };
  for (const auto& c : cases) {
    Open(c.type);
    const std::string seen = Inside([](plat::Dialog& d) {
      std::string titles;
      for (int i = 0; i < List(d).GetColumnCount(); ++i) titles += (i ? "|" : "") + List(d).GetColumn(i).caption;
      return titles + "\n" + Cells(List(d));
    });
    EXPECT_EQ(seen.substr(0, c.columns.size() + 1 + c.rows.size()), c.columns + "\n" + c.rows) << c.type;
  }
}

TEST_F(MarkerPickers, FenceFilterKeepsChecksOfHiddenMarkers) {
  CConfigKestrelINI::WriteIniInt(1103, 1);
  Open(CDlgSetupCircle::kFunctionType);
  // Check C2 (fence class 3, level two) and C3 (class 4, level three), show level three only,
  // all again (C2 still checked), level three again, and OK.
  const std::string seen = Inside([](plat::Dialog& d) {
    auto& combo = *d.Item<plat::ComboBox>(P::kFenceCombo);
    std::string entries;
    for (int i = 0; i < combo.GetCount(); ++i) entries += combo.GetLBText(i) + ";";
    List(d).UserClick(1), List(d).UserClick(2);
    combo.UserSelect(4);
    const std::string filtered = Cells(List(d)) + d.GetItemText(P::kCount);
    combo.UserSelect(0);
    const std::string all = Cells(List(d)).substr(0, 20);
    combo.UserSelect(4);
    d.Item<plat::Button>(P::kOk)->Click();
    return entries + "\n" + filtered + "\n" + all;
  });
  EXPECT_EQ(seen, "所有围栏(=一般围栏);一般围栏;一级围栏;二级围栏;三级围栏;绿色围栏;\n3*|C3|0.0000009|-0.0000001|1\n" +
                      FormatChineseColon(T(12656), "1") + "\n1|C1|22.533000|113.9");
  EXPECT_EQ(Page().Selected(), std::vector<int>{3}) << "C2 is checked but hidden: not returned";
  EXPECT_EQ(Page().FenceLevel(), 3);

  // Opened again with the level kept; back to all fences, C2 is still checked.
  const std::string again = Inside([](plat::Dialog& d) {
    const int entry = d.Item<plat::ComboBox>(P::kFenceCombo)->GetCurSel();
    d.Item<plat::ComboBox>(P::kFenceCombo)->UserSelect(0);
    return std::to_string(entry) + "\n" + Cells(List(d));
  });
  EXPECT_EQ(again.substr(0, 2), "4\n");
  EXPECT_NE(again.find("3*|C3"), std::string::npos);
  EXPECT_EQ(Page().Selected(), std::vector<int>{3}) << "cancel keeps the selection";
}

TEST_F(MarkerPickers, LevelFiltersByFenceClass) {
  CConfigKestrelINI::WriteIniInt(1103, 1);
  Open(CDlgSetupEdge::kFunctionType);
  // R1 and R3 are general (class 0), R2 is level one (class 2).
  const struct {
    int entry;
    const char* ids;
  } cases[] = {{0, "4,5,6,"}, {1, "4,6,"}, {2, "5,"}, {3, ""}, {5, ""}};
  for (const auto& c : cases) {
    const std::string ids = Inside([&](plat::Dialog& d) {
      d.Item<plat::ComboBox>(P::kFenceCombo)->UserSelect(c.entry);
      std::string list;
      for (int row = 0; row < List(d).GetItemCount(); ++row) list += List(d).GetItemText(row, 0) + ",";
      return list;
    });
    EXPECT_EQ(ids, c.ids) << "entry " << c.entry;
  }
}

TEST_F(MarkerPickers, WithoutLevelsOneEntryAndEveryMarker) {
  Open(CDlgSetupCircle::kFunctionType);
  const std::string seen = Inside([](plat::Dialog& d) {
    const auto& combo = *d.Item<plat::ComboBox>(P::kFenceCombo);
    return std::to_string(combo.GetCount()) + combo.GetLBText(0) + std::to_string(List(d).GetItemCount()) +
           (d.GetDlgItem(P::kCount)->IsShown() ? " count shown" : "");
  });
  EXPECT_EQ(seen, "1所有围栏(=一般围栏)" + std::to_string(3 + areatest::kBatchCircles));
}

TEST_F(MarkerPickers, OkWithNothingCheckedKeepsThePagesSelection) {
  Open(CDlgSetupCircle::kFunctionType);
  PickMarkers({1, 2});
  ASSERT_EQ(Page().Selected(), (std::vector<int>{1, 2}));
  PickMarkers({1, 2});  // both start checked: the clicks clear them
  EXPECT_EQ(Page().Selected(), (std::vector<int>{1, 2}));
  EXPECT_EQ(page->Text(A::kIdEdit), T(12100));
}

TEST_F(MarkerPickers, SelectAllChecksEveryShownMarker) {
  Open(CDlgSetupCircle::kFunctionType);
  Inside([](plat::Dialog& d) {
    d.Item<plat::Button>(P::kSelectAll)->Click();
    List(d).UserClick(0);  // and one off again
    d.Item<plat::Button>(P::kOk)->Click();
    return std::string();
  });
  EXPECT_EQ(Page().Selected().size(), 2u + areatest::kBatchCircles);
  EXPECT_EQ(Page().Selected().front(), 2);
}

TEST_F(MarkerPickers, GpsFixShowsGpsCoordinatesAndIsRemembered) {
  Open(CDlgSetupCircle::kFunctionType);
  const std::string seen = Inside([](plat::Dialog& d) {
    const std::string own = List(d).GetItemText(2, 2) + "," + List(d).GetItemText(2, 3);
    d.Item<plat::Button>(P::kGpsFix)->Click();
    const std::string gps = List(d).GetItemText(2, 2) + "," + List(d).GetItemText(2, 3);
    List(d).UserClick(2);
    d.Item<plat::Button>(P::kOk)->Click();
    return own + " " + gps;
  });
  EXPECT_EQ(seen, "0.0000009,-0.0000001 -0.000499,-0.000500") << "C3 is in map type 1";
  EXPECT_EQ(CConfigKestrelINI::ReadIniInt(CDlgAreaBase::kSettingGpsFix), 1);
  EXPECT_EQ(Inside([](plat::Dialog& d) { return std::string(d.IsChecked(P::kGpsFix) ? "on" : "off"); }), "on");
}

TEST_F(MarkerPickers, PolygonChosenAloneFillsTheEdits) {
  Open(CDlgSetupPoligon::kFunctionType);
  page->Type(A::kIdEdit, "42");
  PickMarkers({8});
  EXPECT_EQ(page->Text(A::kIdEdit), "8");
  EXPECT_EQ(page->Text(A::kProgress), "0 / 1");
  EXPECT_TRUE(page->Enabled(A::kIdEdit));
}

}  // namespace
