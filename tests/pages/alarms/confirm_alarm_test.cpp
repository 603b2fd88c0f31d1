// The alarm confirmation page: type bits, serial number, targets, description, the host's message.
#include <algorithm>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "command/device_caps.h"
#include "host/ref/run/terminals.h"
#include "pages/alarms/confirm_alarm.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using C = CDlgConfirmAlarm;

namespace {

class ConfirmAlarmTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    page = std::make_unique<PageHarness>(C::kFunctionType, PageHost::kFunctionPage);
    ASSERT_TRUE(page->IsOpen());
    page->UseDevice(1);
  }
  void TearDown() override {
    page.reset();
    PageWorld::TearDown();
  }
  std::unique_ptr<PageHarness> page;
};

TEST_F(ConfirmAlarmTest, CheckedTypesAndSerialOnTheWire) {
  struct Case {
    const char* what;
    std::vector<int> checked;
    std::string serial;
    std::string param;
  };
  const Case cases[] = {
      {"the urgent box alone, as the page starts", {C::kUrgent}, "0", R"({"ALTY":1,"MSGID":0})"},
      {"all seven", {C::kUrgent, C::kDanger, C::kArea, C::kRoute, C::kSection, C::kIgnition, C::kDisplacement},
       "99999", R"({"ALTY":409993225,"MSGID":99999})"},
      {"none checked, empty serial", {}, "", R"({"ALTY":0,"MSGID":0})"},
      {"danger and displacement", {C::kDanger, C::kDisplacement}, "12", R"({"ALTY":268435464,"MSGID":12})"},
  };
  for (const Case& c : cases) {
    for (int box : {C::kUrgent, C::kDanger, C::kArea, C::kRoute, C::kSection, C::kIgnition, C::kDisplacement})
      page->Page().SetChecked(box, false);
    for (int box : c.checked) page->Page().SetChecked(box, true);
    page->Page().SetItemText(C::kSerialEdit, c.serial);
    EXPECT_EQ(page->Send(ctl::Set), c.param) << c.what;
  }
  page->Type(C::kSerialEdit, "123456");
  EXPECT_EQ(page->Text(C::kSerialEdit), "12345") << "five digits at most";
}

TEST_F(ConfirmAlarmTest, StartsWithUrgentCheckedAndSerialZero) {
  EXPECT_TRUE(page->Checked(C::kUrgent));
  EXPECT_FALSE(page->Checked(C::kDanger));
  EXPECT_EQ(page->Text(C::kSerialEdit), "0");
  EXPECT_EQ(page->Text(C::kTypeGroup), T(C::kTextTypes));
}

TEST_F(ConfirmAlarmTest, DescribesSerialAndTypesAndTheTerminalKeepsThem) {
  hostref::terminals::Clear();
  hostref::terminals::Install();
  page->Page().SetChecked(C::kArea, true);
  page->Page().SetItemText(C::kSerialEdit, "7");
  page->Send(ctl::Set);
  ASSERT_EQ(page->Rows(), 1);
  EXPECT_EQ(page->Cell(0, kColDescription),
            FormatChineseColon(T(C::kTextSerial), "7") + "，" +
                FormatChineseColon(T(C::kTextTypes), T(C::kTextUrgent) + "\r\n\t    " + T(C::kTextArea)));
  const auto kept = hostref::terminals::AlarmConfirmations("91001");
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_EQ(kept[0].serial, 7);
  EXPECT_EQ(kept[0].types, (1u << 0) | (1u << 20));
  hostref::terminals::Uninstall();
}

TEST_F(ConfirmAlarmTest, EachAnswerGoesToTheHostWithItsResult) {
  hostref::net::SetStatus("91001", 101);
  page->Send(ctl::Set);
  auto& host = page->Host();
  ASSERT_EQ(std::count(host.messages.begin(), host.messages.end(), UINT{msg::AlarmConfirmed}), 1);
  const auto at = std::find(host.messages.begin(), host.messages.end(), UINT{msg::AlarmConfirmed});
  EXPECT_EQ(host.lparams[at - host.messages.begin()], 101);
}

// In the vehicle function window the host names the device in the page's context.
TEST_F(ConfirmAlarmTest, TheContextDeviceIsTheTarget) {
  PageHarness window(C::kFunctionType);
  SharedDeviceCaps() = DeviceCaps{};
  const std::string device = "91003";
  window.Page().contextPointer = reinterpret_cast<uintptr_t>(device.c_str());
  hostref::net::ClearSent();
  window.Click(ctl::Set);
  ASSERT_TRUE(Settle());
  const auto sent = hostref::net::Sent();
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_EQ(sent[0].devIdno, "91003");
  EXPECT_EQ(window.Rows(), 0) << "no result rows in the vehicle function window";

  window.Page().contextPointer = 0;
  window.Click(ctl::Set);
  ASSERT_TRUE(Settle());
  EXPECT_EQ(TipTexts().back(), T(12812)) << "no device of its own the second time";
}

}  // namespace
