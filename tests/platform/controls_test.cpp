// Controls as users drive them: radio groups, edit filters, combo box, list
// view, tree view, picker formats and spin boxes.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>

#include "platform/controls.h"
#include "recorder.h"

namespace {
namespace style = plat::style;

class ControlsTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(parent.Create(nullptr, 0, "form", RECT{0, 0, 300, 200})); }
  // Makes a control of the given style as the next child of the form.
  template <class T, class... Args>
  std::unique_ptr<T> Make(uint32_t styles, Args... args) {
    auto control = std::make_unique<T>(args...);
    control->SetStyle(styles);
    control->Create(&parent, ++lastId, "", RECT{});
    return control;
  }
  size_t Count(UINT code) const {
    size_t n = 0;
    for (const Seen& s : parent.seen) n += s.msg == WM_COMMAND && HIWORD(s.wParam) == code;
    return n;
  }
  Recorder parent;
  int lastId = 0;
};

TEST_F(ControlsTest, RadioGroupsSideBySideClearOnlyTheirOwn) {
  std::unique_ptr<plat::Button> radios[4];
  const uint32_t styles[4] = {style::Group, 0, style::Group, 0};
  for (int i = 0; i < 4; ++i) radios[i] = Make<plat::Button>(styles[i], plat::ControlKind::RadioButton);
  radios[0]->SetCheck(1), radios[2]->SetCheck(1);
  struct Step {
    int click;
    int checks[4];
  };
  const Step steps[] = {{1, {0, 1, 1, 0}}, {3, {0, 1, 0, 1}}, {0, {1, 0, 0, 1}}};
  for (const Step& step : steps) {
    EXPECT_TRUE(radios[step.click]->Click());
    for (int i = 0; i < 4; ++i) EXPECT_EQ(radios[i]->GetCheck(), step.checks[i]) << "click " << step.click << ", radio " << i;
  }
  EXPECT_EQ(Count(BN_CLICKED), 3u);
}

TEST_F(ControlsTest, EditFiltersWhatTheUserTypes) {
  struct Case {
    const char* what;
    uint32_t styles;
    size_t limit;
    int64_t max;  // range 0..max when not 0
    const char* typed;
    bool accepted;
    const char* text;
  };
  const Case cases[] = {
      {"digits only", style::Number, 0, 0, "1a2-3", true, "123"},
      {"ascii only", style::AsciiOnly, 0, 0, "ab中c\td", true, "abcd"},
      {"limit counts characters", 0, 3, 0, "中文字符", true, "中文字"},
      {"range refuses above max", style::Number, 0, 255, "256", false, ""},
      {"range takes its bound", style::Number, 0, 255, "255", true, "255"},
      {"multi-line want-return", style::Multiline | style::WantReturn, 0, 0, "a\nb\r\nc", true, "a\r\nb\r\nc"},
      {"a break counts two", style::Multiline | style::WantReturn, 2, 0, "a\nb", true, "a"},
      {"single-line drops breaks", 0, 0, 0, "a\nb\r\n", true, "ab"},
      {"read-only refuses", style::ReadOnly, 0, 0, "x", false, ""},
      {"disabled refuses", style::Disabled, 0, 0, "x", false, ""},
  };
  for (const Case& c : cases) {
    auto edit = Make<plat::Edit>(c.styles);
    edit->EnableWindow(!(c.styles & style::Disabled));
    edit->SetLimitText(c.limit);
    if (c.max) edit->SetRange(0, c.max);
    const size_t changes = Count(EN_CHANGE);
    EXPECT_EQ(edit->UserType(c.typed), c.accepted) << c.what;
    EXPECT_EQ(edit->GetWindowText(), c.text) << c.what;
    EXPECT_EQ(Count(EN_CHANGE) - changes, c.accepted ? 1u : 0u) << c.what;
  }
}

TEST_F(ControlsTest, ComboBoxKeepsDataAndSelectionWithItsItems) {
  auto combo = Make<plat::ComboBox>(0);
  combo->AddString("a"), combo->AddString("b");
  combo->SetItemData(1, 0xB0000001u);
  combo->SetCurSel(1);
  combo->InsertString(0, "z");
  EXPECT_EQ(combo->GetCurSel(), 2);
  EXPECT_EQ(combo->GetWindowText(), "b");
  EXPECT_EQ(combo->FindItemData(0xB0000001u), 2);
  combo->DeleteString(2);
  EXPECT_EQ(combo->GetCurSel(), -1) << "deleting the selected entry clears the selection";
  EXPECT_EQ(combo->SetCurSel(5), -1);
  EXPECT_TRUE(combo->UserSelect(1));
  EXPECT_EQ(Count(CBN_SELCHANGE), 1u) << "only the user's choice is told";
}

TEST_F(ControlsTest, ListViewRowsAtTheTopAndVirtualRows) {
  auto list = Make<plat::ListView>(0);
  list->InsertColumn(0, "#", 40);
  for (int i = 0; i < 3; ++i) {
    list->InsertItem(0, std::to_string(i));
    list->SetItemData(0, static_cast<uintptr_t>(10 + i));
    list->SetCheck(0, i == 1);
  }
  for (int row = 0; row < 3; ++row) {
    EXPECT_EQ(list->GetItemText(row, 0), std::to_string(2 - row));
    EXPECT_EQ(list->GetItemData(row), static_cast<uintptr_t>(12 - row));
    EXPECT_EQ(list->GetCheck(row), row == 1);
  }
  EXPECT_TRUE(list->UserClick(7));
  ASSERT_EQ(parent.notes.size(), 1u);
  EXPECT_EQ(parent.notes[0].item, -1) << "a click below the rows is on no row";
  EXPECT_EQ(list->GetFirstSelected(), -1);

  list->SetItemCountEx(100000, [](int row, int col) { return std::to_string(row) + "/" + std::to_string(col); });
  EXPECT_EQ(list->GetItemCount(), 100000);
  EXPECT_EQ(list->GetItemText(99999, 2), "99999/2");
  EXPECT_EQ(list->GetItemText(100000, 0), "");
}

TEST_F(ControlsTest, TreeViewWalksNavigatesAndTellsWhoSelected) {
  auto tree = Make<plat::TreeView>(0);
  const auto root = tree->InsertItem("root", 1, 100);
  const auto a = tree->InsertItem("a", 0, 1, root);
  const auto b = tree->InsertItem("b", 0, 2, root);
  const auto c = tree->InsertItem("c", 0, 3, a);
  const auto root2 = tree->InsertItem("root2", 1, 200);
  EXPECT_EQ(tree->Walk(), (std::vector<plat::HTREEITEM>{root, a, c, b, root2}));
  EXPECT_EQ(tree->GetRootItem(), root);
  EXPECT_EQ(tree->GetNextSiblingItem(root), root2);
  EXPECT_EQ(tree->GetNextSiblingItem(a), b);
  EXPECT_EQ(tree->GetNextSiblingItem(b), 0);
  EXPECT_EQ(tree->GetChildItem(a), c);
  EXPECT_EQ(tree->GetParentItem(c), a);
  EXPECT_EQ(tree->GetParentItem(root), 0);
  EXPECT_EQ(tree->GetItemData(root2), 200u);

  tree->SelectItem(a);
  tree->UserSelect(c);
  tree->UserSelect(c);  // no change, nothing told
  ASSERT_EQ(parent.notes.size(), 2u);
  EXPECT_EQ(parent.notes[0].code, TVN_SELCHANGED);
  EXPECT_EQ(std::make_pair(parent.notes[0].item, parent.notes[0].byUser), std::make_pair(a, false));
  EXPECT_EQ(std::make_pair(parent.notes[1].item, parent.notes[1].byUser), std::make_pair(c, true));
}

// A view hears of every change of a model it shows: one case per kind of change.
TEST_F(ControlsTest, ChangesReachTheViewObserver) {
  auto edit = Make<plat::Edit>(0);
  auto combo = Make<plat::ComboBox>(0);
  auto list = Make<plat::ListView>(0);
  auto tree = Make<plat::TreeView>(0);
  auto radio = Make<plat::Button>(0, plat::ControlKind::RadioButton);
  auto picker = Make<plat::DateTimePicker>(0, plat::ControlKind::DatePicker);
  auto spin = Make<plat::Spin>(0);
  struct Case {
    const char* what;
    plat::Window* window;
    std::function<void()> change;
  };
  const Case cases[] = {
      {"caption", edit.get(), [&] { edit->SetWindowText("x"); }},
      {"typed", edit.get(), [&] { edit->UserType("y"); }},
      {"shown", edit.get(), [&] { edit->ShowWindow(plat::SW_HIDE); }},
      {"enabled", combo.get(), [&] { combo->EnableWindow(false); }},
      {"moved", combo.get(), [&] { combo->MoveWindow({1, 2, 3, 4}); }},
      {"focus", combo.get(), [&] { combo->SetFocus(); }},
      {"style", edit.get(), [&] { edit->SetReadOnly(true); }},
      {"limit", edit.get(), [&] { edit->SetLimitText(4); }},
      {"combo item", combo.get(), [&] { combo->AddString("a"); }},
      {"combo selection", combo.get(), [&] { combo->SetCurSel(0); }},
      {"list column", list.get(), [&] { list->InsertColumn(0, "c", 10); }},
      {"list row", list.get(), [&] { list->InsertItem(0, "r"); }},
      {"list cell", list.get(), [&] { list->SetItemText(0, 0, "s"); }},
      {"list check", list.get(), [&] { list->SetCheck(0, true); }},
      {"list virtual rows", list.get(), [&] { list->SetItemCountEx(5, nullptr); }},
      {"list cleared", list.get(), [&] { list->DeleteAllItems(); }},
      {"tree item", tree.get(), [&] { tree->InsertItem("t", 0, 0); }},
      {"tree selection", tree.get(), [&] { tree->SelectItem(1); }},
      {"radio", radio.get(), [&] { radio->SetCheck(1); }},
      {"picker", picker.get(), [&] { picker->SetTime({2026, 1, 0, 2}); }},
      {"spin range", spin.get(), [&] { spin->SetRange32(0, 9); }},
  };
  for (const Case& c : cases) {
    std::vector<std::pair<plat::Window*, plat::Change>> heard;
    plat::SetChangeObserver([&](plat::Window& w, plat::Change change) { heard.emplace_back(&w, change); });
    c.change();
    plat::SetChangeObserver(nullptr);
    EXPECT_NE(std::find(heard.begin(), heard.end(), std::pair{c.window, plat::Change::Changed}), heard.end()) << c.what;
  }
}

TEST_F(ControlsTest, ViewObserverHearsCreationAndDestructionOfChildrenFirst) {
  std::vector<std::pair<int, plat::Change>> heard;
  plat::SetChangeObserver([&](plat::Window& w, plat::Change c) {
    if (c != plat::Change::Changed) heard.emplace_back(w.GetDlgCtrlID(), c);
  });
  plat::Window box, child;
  box.Create(&parent, 1, "", {});
  child.Create(&box, 2, "", {});
  box.DestroyWindow();
  plat::SetChangeObserver(nullptr);
  using C = plat::Change;
  EXPECT_EQ(heard, (std::vector<std::pair<int, C>>{{1, C::Created}, {2, C::Created}, {2, C::Destroyed}, {1, C::Destroyed}}));
}

TEST(Pickers, FormatWithPictureLetters) {
  const SYSTEMTIME st{2024, 3, 0, 5, 19, 8, 9, 0};
  const std::pair<const char*, const char*> cases[] = {
      {"yyyy'-'MM'-'dd", "2024-03-05"}, {"HH':'mm':'ss", "19:08:09"}, {"yy/M/d h:mm", "24/3/5 7:08"}};
  for (const auto& [format, text] : cases) EXPECT_EQ(plat::FormatPickerTime(st, format), text) << format;
}

TEST_F(ControlsTest, SpinClampsIntoItsRangeThroughTheBuddy) {
  auto buddy = Make<plat::Edit>(style::Number);
  auto spin = Make<plat::Spin>(0);
  spin->SetRange32(0, 10);
  spin->SetBuddy(buddy.get());
  buddy->UserType("8");
  const std::pair<int, const char*> steps[] = {{5, "10"}, {-3, "7"}, {-50, "0"}};
  for (const auto& [delta, text] : steps) {
    EXPECT_TRUE(spin->UserDelta(delta));
    EXPECT_EQ(buddy->GetWindowText(), text) << delta;
  }
  EXPECT_EQ(spin->GetPos(), 0);
}

}  // namespace
