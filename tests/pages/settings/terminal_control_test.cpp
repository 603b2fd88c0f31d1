// The upgrade and server-connection pages: their requests, their checks in
// order, their descriptions and the taxi page's device list and fields.
#include <gtest/gtest.h>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/settings/connect_server.h"
#include "pages/settings/settings_world.h"
#include "pages/settings/setup_upgrade.h"
#include "pages/settings/setup_upgrade905.h"

using fixture::T;

namespace {
class TerminalControlTest : public SettingsWorld {};

std::string NoSemicolon(int label) { return FormatChineseColon(T(label), T(12710)); }

TEST_F(TerminalControlTest, UpgradeSendsElevenTextsInOrder) {
  using U = CDlgSetupUpGrade;
  PageHarness page(U::kFunctionType);
  page.UseDevice(1);
  EXPECT_EQ(page.Page().GetDeviceKindMask(), 0u);
  page.Type(U::kUrlEdit, "http://h/f?a=1%2");
  page.Type(U::kApnEdit, "cmnet");
  page.Type(U::kPasswordEdit, "p w");
  page.Type(U::kTcpEdit, "6608");
  page.Type(U::kMakerEdit, "12345678901");
  page.Type(U::kFirmwareEdit, "固件1");
  EXPECT_EQ(page.Send(ctl::Set),
            "{\"ADD\":\"\",\"Command\":1,\"DICT\":\"\",\"DINA\":\"cmnet\",\"DIPWD\":\"p w\",\"HAV\":\"\",\"LITI\":\"\","
            "\"PRID\":\"1234567890\",\"SOV\":\"\xB9\xCC\xBC\xFE" "1\",\"TCP\":\"6608\",\"UDP\":\"\","
            "\"URL\":\"http%3A%2F%2Fh%2Ff%3Fa%3D1%252\"}");
  EXPECT_EQ(page.Cell(0, kColResult), T(11008));
  std::string description;
  for (auto [label, value] : std::initializer_list<std::pair<int, const char*>>{
           {12900, "http://h/f?a=1%2"}, {12901, "cmnet"}, {12902, ""}, {12903, "p w"}, {12904, ""}, {12905, "6608"},
           {12906, ""}, {12907, "1234567890"}, {12908, ""}, {12909, "固件1"}, {12910, ""}}) {
    AddChineseStringStatus(description, FormatChineseColon(T(label), value));
  }
  EXPECT_EQ(page.Cell(0, kColDescription), description);
}

TEST_F(TerminalControlTest, UpgradeRefusesTheFirstFieldWithASemicolon) {
  using U = CDlgSetupUpGrade;
  PageHarness page(U::kFunctionType);
  page.UseDevice(1);
  page.Type(U::kFirmwareEdit, "a;b");
  page.Type(U::kApnEdit, "cm;net");
  EXPECT_EQ(page.Send(ctl::Set), "");
  EXPECT_EQ(TipTexts(), std::vector<std::string>{NoSemicolon(U::kTextApn)});
  EXPECT_EQ(plat::Window::GetFocus(), page.Page().GetDlgItem(U::kApnEdit));
}

TEST_F(TerminalControlTest, ConnectionChecksRunInOrderOnlyForTheDesignatedServer) {
  using C = CDlgSetupConSer;
  struct Step {
    int edit;
    const char* text;  // typed before the send
    std::string tip;   // the tip of the send after it ("" : sent)
  };
  const Step steps[] = {
      {C::kTcpEdit, "1", T(13154) + T(12703)},
      {C::kAuthEdit, "a;", NoSemicolon(13154)},
      {C::kAuthEdit, "auth", T(12904) + T(12703)},
      {C::kAddressEdit, "x;", NoSemicolon(12904)},
      {C::kAddressEdit, "10.0.0.1", T(12902) + T(12703)},
      {C::kUserEdit, "u", T(12901) + T(12703)},
      {C::kApnEdit, ";", NoSemicolon(12901)},
      {C::kApnEdit, "cmnet", T(12903) + T(12703)},
      {C::kPasswordEdit, "p;", NoSemicolon(12903)},
      {C::kPasswordEdit, "p", T(12906) + T(12703)},
      {C::kUdpEdit, "2", T(12910) + T(12703)},
      {C::kTimeLimitEdit, "30", ""},
  };
  PageHarness page(C::kFunctionType);
  page.UseDevice(1);
  EXPECT_EQ(page.Page().GetDeviceKindMask(), 4u);
  EXPECT_TRUE(page.Checked(C::kRadioDesignated));
  for (const Step& step : steps) {
    hostref::ClearTips();
    page.Type(step.edit, step.text);
    const std::string sent = page.Send(ctl::Set);
    const std::string where = std::string("after typing ") + step.text;
    if (step.tip.empty()) {
      EXPECT_EQ(sent, R"({"ADD":"10.0.0.1","AUT":"auth","COCT":0,"Command":2,"DICT":"u","DINA":"cmnet","DIPWD":"p",)"
                      R"("LITI":"30","TCP":"1","UDP":"2"})")
          << where;
      EXPECT_TRUE(TipTexts().empty()) << where;
    } else {
      EXPECT_EQ(sent, "") << where;
      EXPECT_EQ(TipTexts(), std::vector<std::string>{step.tip}) << where;
    }
  }
}

TEST_F(TerminalControlTest, BackToTheDefaultServerSendsEmptyFields) {
  using C = CDlgSetupConSer;
  PageHarness page(C::kFunctionType);
  page.UseDevice(1);
  page.Type(C::kAuthEdit, "中a");  // ASCII only: the Chinese character is dropped
  EXPECT_EQ(page.Text(C::kAuthEdit), "a");
  page.Type(C::kAuthEdit, "");
  page.Click(C::kRadioDefault);
  EXPECT_EQ(page.Send(ctl::Set),
            R"({"ADD":"","AUT":"","COCT":1,"Command":2,"DICT":"","DINA":"","DIPWD":"","LITI":"","TCP":"","UDP":""})");
  std::string description = FormatChineseColon(T(13150), T(13152));
  for (int label : {13154, 12901, 12902, 12903, 12904, 12905, 12906, 12910}) {
    AddChineseStringStatus(description, FormatChineseColon(T(label), ""));
  }
  EXPECT_EQ(page.Cell(0, kColDescription), description);
}

class Upgrade905Test : public TerminalControlTest {
 protected:
  void SetUp() override {
    TerminalControlTest::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001"}]},
      {"name":"B","devices":[{"id":2,"idno":"91002","attrs":{"76":1,"78":1}}]}]})"));
  }
};

TEST_F(Upgrade905Test, ListsTheHostsDeviceTypesAndSendsTheChosenOne) {
  using U = CDlgSetupUpGrade905;
  PageHarness page(U::kFunctionType);
  page.UseDevice(1);
  EXPECT_EQ(page.Page().GetDeviceKindMask(), 0x300u);
  const auto* list = page.Page().Item<plat::ComboBox>(U::kTypeList);
  std::vector<uint32_t> types;
  for (int i = 0; i < list->GetCount(); ++i) {
    EXPECT_EQ(list->GetLBText(i), FormatStringMgr::GetTerminalType905(static_cast<int>(list->GetItemData(i))));
    types.push_back(list->GetItemData(i));
  }
  EXPECT_EQ(types, (std::vector<uint32_t>{0, 1, 2, 3, 4, 6, 8, 10, 12, 15, 18}));
  EXPECT_EQ(list->GetCurSel(), 0);
  page.Select(U::kTypeList, 2);
  page.Type(U::kMakerEdit, "255");
  page.Type(U::kPortEdit, "65535");
  EXPECT_EQ(page.Send(ctl::Set),
            R"({"ADD":"","Command":1,"DICT":"","DINA":"","DIPWD":"","DTYPE":2,"FFN":"","FFS":"","FIV":"","HAV":"",)"
            R"("PRID":"255","PSW":"","SOV":"","TCP":"65535","URL":"","USR":""})");
  EXPECT_EQ(page.Cell(0, kColDescription).substr(0, FormatChineseColon(T(12911), "安全模块").size()),
            FormatChineseColon(T(12911), "安全模块"));
}

TEST_F(Upgrade905Test, NumbersAboveTheirRangeAreRefused) {
  using U = CDlgSetupUpGrade905;
  struct Case {
    const char* what;
    int edit;
    const char* text;
    std::string tip;
  };
  const Case cases[] = {
      {"maker 256", U::kMakerEdit, "256", T(12912) + "(0~255)"},
      {"hardware 100 is cut to 10 (limit 2)", U::kHardwareEdit, "100", ""},
      {"maker 999", U::kMakerEdit, "999", T(12912) + "(0~255)"},
      {"firmware 10000 (limit 4)", U::kFirmwareEdit, "10000", ""},
      {"port 65536", U::kPortEdit, "65536", T(12919) + "(0~65535)"},
  };
  for (const Case& c : cases) {
    PageHarness page(U::kFunctionType);
    page.UseDevice(1);
    hostref::ClearTips();
    page.Type(c.edit, c.text);
    EXPECT_EQ(page.Send(ctl::Set).empty(), !c.tip.empty()) << c.what;
    EXPECT_EQ(TipTexts(), c.tip.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.tip}) << c.what;
  }
}

TEST_F(Upgrade905Test, AccountAndFirmwareFieldsFollowTheDevice) {
  using U = CDlgSetupUpGrade905;
  PageHarness page(U::kFunctionType);
  page.UseDevice(2);
  EXPECT_TRUE(page.Shown(U::kFileNameEdit));
  page.Type(U::kFileNameEdit, "fw.bin");
  page.UseDevice(1);
  EXPECT_FALSE(page.Shown(U::kFileNameEdit));
  EXPECT_FALSE(page.Shown(U::kServerUserLabel));
  EXPECT_TRUE(page.Shown(U::kAddressEdit));
  // Hidden fields still go out with what they hold.
  EXPECT_NE(page.Send(ctl::Set).find(R"("FFN":"fw.bin")"), std::string::npos);
}

}  // namespace
