// The text message page: exact bytes on the wire, the length limit, both
// flag layouts and the description; the preset text manager.
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/messaging/deal_text.h"
#include "pages/messaging/send_text.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

using fixture::T;
using namespace sendtext;

namespace {

const char* kFleet = R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001"}]},
  {"name":"B","devices":[{"id":2,"idno":"91002","attrs":{"80":1}}]}]})";

class SendTextTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(kFleet));
    ASSERT_TRUE(page.CreateDlg(&host));
    page.ResultList = &host.list;
    page.ShowWindow(plat::SW_SHOW);
    UseDevice(1);
  }
  void UseDevice(int devId) {
    SharedDeviceCaps().LoadShared(devId);
    page.ProtocolUpdatePending = TRUE;
    page.AttachToHost();
  }
  // Types the text, presses send, returns the parameter text sent ("" when nothing went out).
  std::string Send(const std::string& text) {
    hostref::net::ClearSent();
    page.Item<plat::Edit>(kTextEdit)->SetWindowText(text);
    page.Item<plat::Button>(ctl::Set)->Click();
    EXPECT_TRUE(Settle());
    return hostref::net::Sent().empty() ? "" : hostref::net::Sent()[0].param;
  }
  void Click(int id) { page.Item<plat::Button>(id)->Click(); }
  TestHost host;
  CDlgSendText page;
};

std::string Param(int flag, const std::string& text, int type = 1) {
  return "{\"Flag\":" + std::to_string(flag) + ",\"TextInfo\":\"" + text + "\",\"TextType\":" + std::to_string(type) + "}";
}

TEST_F(SendTextTest, TextBytesOnTheWire) {
  const std::pair<std::string, std::string> cases[] = {
      {"中文", "\xD6\xD0\xCE\xC4"},
      {"50 %", "50+%25"},
      {"50 a", "50 a"},
      {"a\r\nb", "a\\r\\nb"},  // raw 0D 0A in the value, escaped in the JSON text
      {"a+\r\nb", "a%2B%0D%0Ab"},
      {"", ""},
  };
  for (const auto& [typed, wire] : cases) EXPECT_EQ(Send(typed), Param(0, wire)) << typed;
}

TEST_F(SendTextTest, LimitIsOnEncodedBytes) {
  std::string chinese1023 = "a";  // 1 + 511 x 2 bytes
  for (int i = 0; i < 511; ++i) chinese1023 += "中";
  EXPECT_NE(Send(chinese1023), "");
  EXPECT_EQ(Send(chinese1023 + "a"), "");
  EXPECT_EQ(TipTexts().back(), "(1024>=1024)" + T(12956));
  EXPECT_EQ(Send(std::string(342, '%')), "") << "342 percent signs take 1026 bytes once encoded";
}

TEST_F(SendTextTest, FlagLayoutsOfBothEditions) {
  EXPECT_FALSE(page.GetDlgItem(kRadioService)->IsShown());
  EXPECT_TRUE(page.GetDlgItem(kCheckUrgent)->IsShown());
  Click(kCheckUrgent);
  Click(kCheckAdScreen);
  Click(kCheckTts);
  EXPECT_EQ(Send("x"), Param(0x19, "x"));
  EXPECT_EQ(host.list.GetItemText(0, 5),
            FormatChineseColon(T(13115), T(13116)) + "，" +
                FormatChineseColon(T(12954), T(12950) + "，" + T(12952) + "，" + T(12953)) + "，" +
                FormatChineseColon(T(12955), "x"));

  UseDevice(2);
  EXPECT_TRUE(page.GetDlgItem(kRadioService)->IsShown());
  EXPECT_FALSE(page.GetDlgItem(kCheckUrgent)->IsShown());
  EXPECT_TRUE(page.GetDlgItem(kTypeService)->IsWindowEnabled());
  Click(kCheckTts);  // off again
  EXPECT_EQ(Send("y"), Param(0, "y")) << "2019 edition, none checked";
  EXPECT_EQ(host.list.GetItemText(0, 5).find(FormatChineseColon(T(12954), T(15203))) != std::string::npos, true);
  Click(kRadioUrgent);
  Click(kRadioCanFault);
  Click(kTypeService);
  EXPECT_EQ(Send("z"), Param(0x22, "z", 2));
  EXPECT_EQ(host.list.GetItemText(0, 5),
            FormatChineseColon(T(13115), T(13117)) + "，" + FormatChineseColon(T(12954), T(15201) + "，" + T(15206)) +
                "，" + FormatChineseColon(T(15204), T(15200)) + "，" + FormatChineseColon(T(12955), "z"));

  UseDevice(1);  // back to 2013: the hidden CAN fault choice still counts
  EXPECT_FALSE(page.GetDlgItem(kTypeService)->IsWindowEnabled());
  EXPECT_EQ(Send("w"), Param(0x31, "w", 2));
}

class PresetTextTest : public PageWorld {
 protected:
  // Runs the manager with queued user actions.
  void RunManager(std::function<void(plat::Dialog&)> action) {
    plat::modal::Push(std::move(action));
    CDlgSetDealText().DoModal(nullptr);
  }
  static void TypeAndConfirm(const std::string& text) {
    plat::modal::Push([text](plat::Dialog& editor) {
      editor.Item<plat::Edit>(CDlgADealText::kEdit)->UserType(text);
      editor.Item<plat::Button>(CDlgADealText::kOk)->Click();
    });
  }
};

TEST_F(PresetTextTest, ManagerAddsIntoFreeSlotsAndDeletesByText) {
  presettext::Write(3, "three");
  presettext::Write(7, "seven");
  presettext::Write(9, "three");
  RunManager([](plat::Dialog& manager) {
    auto* list = manager.Item<plat::ListView>(CDlgSetDealText::kList);
    ASSERT_EQ(list->GetItemCount(), 3);
    EXPECT_EQ(list->GetItemData(1), 7u);
    TypeAndConfirm("new");
    manager.Item<plat::Button>(CDlgSetDealText::kAdd)->Click();
    EXPECT_EQ(list->GetItemData(3), 0u) << "the first free slot";
    list->UserClick(2);  // the second "three", slot 9
    manager.Item<plat::Button>(CDlgSetDealText::kDelete)->Click();
    EXPECT_EQ(list->GetItemCount(), 3);
  });
  EXPECT_EQ(presettext::Read(0), "new");
  EXPECT_EQ(presettext::Read(3), "") << "the first entry with the text goes";
  EXPECT_EQ(presettext::Read(9), "three");
}

TEST_F(PresetTextTest, RefusesA21stAndAnEmptyText) {
  for (int i = 0; i < presettext::kSlots; ++i) presettext::Write(i, "t" + std::to_string(i));
  RunManager([](plat::Dialog& manager) { manager.Item<plat::Button>(CDlgSetDealText::kAdd)->Click(); });
  EXPECT_EQ(TipTexts().back(), T(20303));
  EXPECT_EQ(plat::modal::Pending(), 0u);

  presettext::Write(0, "");
  plat::modal::Push([](plat::Dialog& manager) { manager.Item<plat::Button>(CDlgSetDealText::kAdd)->Click(); });
  plat::modal::Push([](plat::Dialog& editor) {
    editor.Item<plat::Button>(CDlgADealText::kOk)->Click();
    EXPECT_TRUE(editor.IsModalRunning()) << "an empty text keeps the editor open";
    editor.Item<plat::Edit>(CDlgADealText::kEdit)->UserType(std::string(300, 'x'));
    EXPECT_EQ(editor.GetItemText(CDlgADealText::kCounter), "(255/255)");
    editor.Item<plat::Button>(CDlgADealText::kCancelButton)->Click();
  });
  CDlgSetDealText().DoModal(nullptr);
  EXPECT_EQ(TipTexts().back(), T(20302));
  EXPECT_EQ(presettext::Read(0), "");
}

}  // namespace
