// Remembered inputs: saved when a send starts, restored when the page opens,
// kept across a restart of the host's store.
#include <filesystem>

#include "host/ref/hostref.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

namespace {

class SavedInputsTest : public PageWorld {
 protected:
  std::unique_ptr<TestPage> OpenPage() {
    auto page = std::make_unique<TestPage>();
    page->SavedControls = TestPage::kSaved;
    EXPECT_TRUE(page->CreateDlg(&host));
    page->ShowWindow(plat::SW_SHOW);
    return page;
  }
  TestHost host;
};

TEST_F(SavedInputsTest, DefaultsWhenNothingIsStored) {
  auto page = OpenPage();
  EXPECT_EQ(page->Item<plat::ComboBox>(TestPage::kModeCombo)->GetCurSel(), 1);
  EXPECT_TRUE(page->IsChecked(TestPage::kFlagCheck));
  EXPECT_EQ(page->GetItemText(TestPage::kTextEdit), "");
}

TEST_F(SavedInputsTest, SurviveARestartOfTheStore) {
  const auto dir = std::filesystem::temp_directory_path() / ("fleetcmd-store-" + std::to_string(::getpid()));
  std::filesystem::remove_all(dir);
  ASSERT_TRUE(hostref::OpenDataDir(dir.string()));
  {
    auto page = OpenPage();
    page->Item<plat::Edit>(TestPage::kTextEdit)->UserType("粤B 12345");
    page->Item<plat::ComboBox>(TestPage::kModeCombo)->UserSelect(2);
    page->Item<plat::Button>(TestPage::kFlagCheck)->Click();
    SharedDeviceCaps().LoadShared(1);
    page->Send(false);
    ASSERT_TRUE(Settle());
  }
  ASSERT_TRUE(hostref::OpenDataDir(""));
  ASSERT_TRUE(hostref::OpenDataDir(dir.string()));
  auto page = OpenPage();
  EXPECT_EQ(page->GetItemText(TestPage::kTextEdit), "粤B 12345");
  EXPECT_EQ(page->Item<plat::ComboBox>(TestPage::kModeCombo)->GetCurSel(), 2);
  EXPECT_FALSE(page->IsChecked(TestPage::kFlagCheck));
  hostref::OpenDataDir("");
  std::filesystem::remove_all(dir);
}

}  // namespace
