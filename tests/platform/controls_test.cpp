// Controls as users drive them, dialogs from templates, modal dialogs.
#include <gtest/gtest.h>

#include "platform/dialog.h"
#include "platform/loop.h"

namespace {
using plat::ControlKind;
namespace style = plat::style;

constexpr int kTemplate = 7000;
const plat::DialogTemplate kForm{
    kTemplate, "form", {300, 200},
    {{1, ControlKind::RadioButton, "a", {}, style::Group | style::Checked},
     {2, ControlKind::RadioButton, "b"},
     {3, ControlKind::RadioButton, "c", {}, style::Group | style::Checked},
     {4, ControlKind::RadioButton, "d"},
     {5, ControlKind::Edit, "", {}, style::Number, 3, 0, 255},
     {6, ControlKind::Edit, "", {}, style::AsciiOnly, 4},
     {7, ControlKind::Edit, "", {}, style::Multiline | style::WantReturn},
     {8, ControlKind::Edit, ""},
     {9, ControlKind::Spin, "", {}, 0, 0, 0, 100, 8},
     {10, ControlKind::Edit, "", {}, style::Disabled},
     {IDOK, ControlKind::PushButton, "ok"}}};
const plat::templates::Registration kReg{kForm};

class Form : public plat::Dialog {
 public:
  Form() : plat::Dialog(kTemplate) {
    Bind(5, EN_CHANGE, [this] { ++changes; });
  }
  int changes = 0;
};

TEST(Controls, RadioGroupsAreIndependent) {
  Form form;
  ASSERT_TRUE(form.CreateDlg(nullptr));
  form.ShowWindow(plat::SW_SHOW);
  EXPECT_TRUE(form.Item<plat::Button>(2)->Click());
  EXPECT_FALSE(form.IsChecked(1));
  EXPECT_TRUE(form.IsChecked(2));
  EXPECT_TRUE(form.IsChecked(3)) << "the second group is left alone";
  form.Item<plat::Button>(4)->Click();
  EXPECT_FALSE(form.IsChecked(3));
  EXPECT_TRUE(form.IsChecked(2));
}

TEST(Controls, EditFilters) {
  Form form;
  ASSERT_TRUE(form.CreateDlg(nullptr));
  form.ShowWindow(plat::SW_SHOW);
  auto edit = [&](int id) { return form.Item<plat::Edit>(id); };
  EXPECT_TRUE(edit(5)->UserType("1a2"));
  EXPECT_EQ(form.GetItemText(5), "12");
  EXPECT_FALSE(edit(5)->UserType("256")) << "out of the bounded range";
  EXPECT_EQ(form.GetItemText(5), "12");
  EXPECT_EQ(form.changes, 1);
  edit(6)->UserType("ab中cdef");
  EXPECT_EQ(form.GetItemText(6), "abcd");
  edit(7)->UserType("x\ny\r\nz");
  EXPECT_EQ(form.GetItemText(7), "x\r\ny\r\nz");
  edit(8)->UserType("x\ny");
  EXPECT_EQ(form.GetItemText(8), "xy");
  EXPECT_FALSE(edit(10)->UserType("no")) << "disabled";
  form.Item<plat::Spin>(9)->SetRange32(0, 10);
  form.Item<plat::Spin>(9)->UserDelta(50);
  EXPECT_EQ(form.GetItemText(8), "10");
}

TEST(Controls, ListsTreesCombosAndPickers) {
  plat::ListView list;
  list.InsertColumn(0, "#", 40);
  for (int i = 0; i < 3; ++i) {
    list.InsertItem(0, std::to_string(i));
    list.SetItemData(0, static_cast<uintptr_t>(i));
  }
  EXPECT_EQ(list.GetItemText(0, 0), "2");
  EXPECT_EQ(list.GetItemData(2), 0u);
  list.SetItemCountEx(1000, [](int row, int col) { return std::to_string(row * 10 + col); });
  EXPECT_EQ(list.GetItemCount(), 1000);
  EXPECT_EQ(list.GetItemText(99, 3), "993");

  plat::ComboBox combo;
  combo.AddString("a");
  combo.InsertString(0, "b");
  combo.SetItemData(1, 7);
  EXPECT_EQ(combo.FindItemData(7), 1);
  EXPECT_EQ(combo.SetCurSel(5), -1);

  plat::TreeView tree;
  const auto root = tree.InsertItem("root", 1, 0);
  const auto a = tree.InsertItem("a", 0, 1, root);
  const auto b = tree.InsertItem("b", 0, 2, root);
  const auto c = tree.InsertItem("c", 0, 3, a);
  EXPECT_EQ(tree.Walk(), (std::vector<plat::HTREEITEM>{root, a, c, b}));
  EXPECT_EQ(tree.GetNextSiblingItem(a), b);
  EXPECT_EQ(tree.GetParentItem(c), a);
  EXPECT_EQ(tree.Depth(c), 2);

  SYSTEMTIME st{2024, 3, 0, 5, 7, 8, 9, 0};
  EXPECT_EQ(plat::FormatPickerTime(st, "yyyy'-'MM'-'dd"), "2024-03-05");
  EXPECT_EQ(plat::FormatPickerTime(st, "HH':'mm':'ss"), "07:08:09");
}

TEST(Dialogs, ModalActionsRunInOrder) {
  plat::modal::Clear();
  EXPECT_EQ(Form().DoModal(nullptr), IDCANCEL) << "nothing queued: the user cancels";
  std::vector<int> order;
  plat::modal::Push([&](plat::Dialog& outer) {
    order.push_back(1);
    EXPECT_EQ(Form().DoModal(&outer), IDOK);
    outer.EndDialog(7);
  });
  plat::modal::Push([&](plat::Dialog& inner) {
    order.push_back(2);
    inner.Item<plat::Button>(IDOK)->Click();
  });
  EXPECT_EQ(Form().DoModal(nullptr), 7);
  EXPECT_EQ(order, (std::vector<int>{1, 2}));
}

}  // namespace
