// The preset text manager and its editor, driven as a user inside the popups.
#include "host/ref/hostref.h"
#include "pages/messaging/deal_text.h"
#include "support/page_fixture.h"

using fixture::T;

namespace {

class PresetTextTest : public PageWorld {
 protected:
  // Runs the manager; the action is what the user does in it.
  static void RunManager(std::function<void(plat::Dialog&, plat::ListView&)> action) {
    plat::modal::Push([action](plat::Dialog& manager) {
      action(manager, *manager.Item<plat::ListView>(CDlgSetDealText::kList));
    });
    CDlgSetDealText().DoModal(nullptr);
  }
  static void Click(plat::Dialog& dialog, int id) { dialog.Item<plat::Button>(id)->Click(); }
};

TEST_F(PresetTextTest, RowsCarryTheirSlotsAddFillsSlot0DeleteGoesByText) {
  for (int slot : {3, 7}) presettext::Write(slot, "same");
  RunManager([](plat::Dialog& manager, plat::ListView& list) {
    ASSERT_EQ(list.GetItemCount(), 2);
    plat::modal::Push([](plat::Dialog& editor) {
      editor.Item<plat::Edit>(CDlgADealText::kEdit)->UserType("new");
      Click(editor, CDlgADealText::kOk);
    });
    Click(manager, CDlgSetDealText::kAdd);
    ASSERT_EQ(list.GetItemCount(), 3);
    EXPECT_EQ(std::vector<uintptr_t>({list.GetItemData(0), list.GetItemData(1), list.GetItemData(2)}),
              std::vector<uintptr_t>({3, 7, 0}));
    EXPECT_EQ(list.GetFirstSelected(), 2) << "the added row is selected";
    list.UserClick(1);  // the row of slot 7
    Click(manager, CDlgSetDealText::kDelete);
    EXPECT_EQ(list.GetItemCount(), 2);
    EXPECT_EQ(list.GetFirstSelected(), 1) << "the row that took the deleted one's place";
  });
  EXPECT_EQ(presettext::Read(0), "new");
  EXPECT_EQ(presettext::Read(3), "") << "the first entry with the row's text is cleared";
  EXPECT_EQ(presettext::Read(7), "same");
}

TEST_F(PresetTextTest, RefusesA21stTextAndAnEmptyOne) {
  for (int i = 0; i < presettext::kSlots; ++i) presettext::Write(i, "t" + std::to_string(i));
  RunManager([](plat::Dialog& manager, plat::ListView&) { Click(manager, CDlgSetDealText::kAdd); });
  EXPECT_EQ(TipTexts().back(), T(20303));
  EXPECT_EQ(plat::modal::Pending(), 0u) << "no editor opened";

  presettext::Write(0, "");
  RunManager([](plat::Dialog& manager, plat::ListView&) {
    plat::modal::Push([](plat::Dialog& editor) {
      Click(editor, CDlgADealText::kOk);
      EXPECT_TRUE(editor.IsModalRunning()) << "an empty text keeps the editor open";
      editor.Item<plat::Edit>(CDlgADealText::kEdit)->UserType(std::string(300, 'x'));
      EXPECT_EQ(editor.GetItemText(CDlgADealText::kCounter), "(255/255)");
      Click(editor, CDlgADealText::kCancelButton);
    });
    Click(manager, CDlgSetDealText::kAdd);
  });
  EXPECT_EQ(TipTexts().back(), T(20302));
  EXPECT_EQ(presettext::Read(0), "");
  EXPECT_EQ(CDlgADealText().DoModal(nullptr), CDlgADealText::kRejected) << "closed without OK";
}

}  // namespace
