// The tachograph parameter pages: the words and values they send, what they
// read back from the simulated recorder, their fallbacks and their checks.
#include <gtest/gtest.h>

#include <functional>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/settings/recorder_numbers.h"
#include "pages/settings/recorder_time.h"
#include "pages/settings/settings_world.h"
#include "pages/settings/setup_driver.h"
#include "pages/settings/setup_vin.h"
#include "pages/settings/status_signal.h"

using fixture::T;

namespace {
using Fill = std::function<void(PageHarness&)>;

class RecorderPagesTest : public SettingsWorld {
 protected:
  // Opens a page of the function page window for device 1.
  static PageHarness Open(int type) { return PageHarness(type, PageHost::kFunctionPage); }
  static void PickMarch5(PageHarness& p) {
    Pick(p, CRecorderTimePage::kDatePicker, Time(2024, 3, 5));
    Pick(p, CRecorderTimePage::kTimePicker, Time(1999, 1, 1, 7, 8, 9));
  }
};

std::string Field(int label, const std::string& value) { return FormatChineseColon(T(label), value); }
std::string Fields(std::initializer_list<std::pair<int, std::string>> items) {
  std::string text;
  for (const auto& [label, value] : items) AddChineseStringStatus(text, Field(label, value));
  return text;
}
// The status signal page's description: one item per signal, its label made from text 20138 and its number.
std::string SignalNames(const std::vector<std::string>& names) {
  std::string text;
  for (size_t i = 0; i < names.size(); ++i) {
    AddChineseStringStatus(text, FormatChineseColon(FormatStringInt(T(20138), static_cast<int>(i)), names[i]));
  }
  return text;
}

TEST_F(RecorderPagesTest, SetSendsTheWriteWordAndTheTypedValues) {
  using S = CDlgSetupStatusSignal;
  struct Case {
    const char* what;
    int type;
    Fill fill;
    std::string param;
  };
  const Case cases[] = {
      {"clock", CDlgSetupTime::kFunctionType, PickMarch5,
       R"({"CDID":194,"DAY":5,"HOUR":7,"MIN":8,"MONTH":3,"SEC":9,"YEAR":2024})"},
      {"clock, 2012 group", CDlgSetupTime::kFunctionType2012, PickMarch5,
       R"({"CDID":194,"DAY":5,"HOUR":7,"MIN":8,"MONTH":3,"SEC":9,"YEAR":2024})"},
      {"installation date", CDlgSetupInstallTime::kFunctionType, PickMarch5,
       R"({"CDID":131,"DAY":5,"HOUR":7,"MIN":8,"MONTH":3,"SEC":9,"YEAR":2024})"},
      {"vehicle in code page 936", CDlgSetupVIN::kFunctionType,
       [](PageHarness& p) {
         p.Type(CDlgSetupVIN::kVinEdit, "LSV123");
         p.Type(CDlgSetupVIN::kPlateEdit, "苏E12345");
         p.Type(CDlgSetupVIN::kClassEdit, "A1");
       },
       "{\"CARID\":\"\xCB\xD5" "E12345\",\"CDID\":130,\"SORT\":\"A1\",\"VIN\":\"LSV123\"}"},
      {"vehicle, 2012 writes with the same word", CDlgSetupVIN::kFunctionType2012,
       [](PageHarness& p) { p.Type(CDlgSetupVIN::kVinEdit, "V"); }, R"({"CARID":"","CDID":130,"SORT":"","VIN":"V"})"},
      {"driver", CDlgSetupDerID::kFunctionType,
       [](PageHarness& p) {
         p.Type(CDlgSetupDerID::kDriverEdit, "16777215");
         p.Type(CDlgSetupDerID::kLicenceEdit, "X1");
       },
       R"({"CDID":129,"GCP":"X1","GDI":16777215})"},
      {"coefficient, 2003", CDlgFeature::kFunctionType, [](PageHarness& p) { p.Type(CDlgFeature::kEdit, "77"); },
       R"({"CDID":195,"FEA":77,"VER":2003})"},
      {"empty coefficient is 0", CDlgFeature::kFunctionType, [](PageHarness& p) { p.Type(CDlgFeature::kEdit, ""); },
       R"({"CDID":195,"FEA":0,"VER":2003})"},
      {"mileage padded to 8", CDlgSetupInitialMileage::kFunctionType,
       [](PageHarness& p) { p.Type(CDlgSetupInitialMileage::kEdit, "1234"); }, R"({"CDID":196,"INITMILE":"00001234"})"},
      {"mileage 0", CDlgSetupInitialMileage::kFunctionType,
       [](PageHarness& p) { p.Type(CDlgSetupInitialMileage::kEdit, "0"); }, R"({"CDID":196,"INITMILE":"00000000"})"},
      {"mileage of 9 digits unchanged", CDlgSetupInitialMileage::kFunctionType,
       [](PageHarness& p) { p.Type(CDlgSetupInitialMileage::kEdit, "123456789"); },
       R"({"CDID":196,"INITMILE":"123456789"})"},
      {"pulse coefficient with the recorder time", CDlgSetupPulseCoefficient::kFunctionType,
       [](PageHarness& p) {
         PickMarch5(p);
         p.Type(CDlgSetupPulseCoefficient::kEdit, "500");
       },
       R"({"CDID":195,"FEA":500,"RDTM":"240305070809","VER":2012})"},
      {"signal names, form-encoded only with + or %", S::kFunctionType,
       [](PageHarness& p) {
         p.Type(S::Edit(0), "a+b");
         p.Type(S::Edit(1), "a b");
         p.Type(S::Edit(7), "50%");
       },
       R"({"CDID":132,"SINNM0":"a%2Bb","SINNM1":"a b","SINNM2":"","SINNM3":"","SINNM4":"","SINNM5":"","SINNM6":"",)"
       R"("SINNM7":"50%25"})"},
  };
  for (const Case& c : cases) {
    PageHarness page = Open(c.type);
    ASSERT_TRUE(page.IsOpen()) << c.what;
    page.UseDevice(1);
    c.fill(page);
    EXPECT_EQ(page.Send(ctl::Set), c.param) << c.what;
    EXPECT_EQ(page.Cell(0, kColResult), T(11008)) << c.what;
  }
}

TEST_F(RecorderPagesTest, GetSendsTheReadWordOfTheEdition) {
  const std::pair<int, int> cases[] = {{CDlgSetupVIN::kFunctionType, 6},     {CDlgSetupVIN::kFunctionType2012, 5},
                                       {CDlgSetupDerID::kFunctionType, 1},   {CDlgFeature::kFunctionType, 4},
                                       {CDlgSetupInstallTime::kFunctionType, 3},
                                       {CDlgSetupInitialMileage::kFunctionType, 3},
                                       {CDlgSetupPulseCoefficient::kFunctionType, 4},
                                       {CDlgSetupStatusSignal::kFunctionType, 6}};
  for (auto [type, word] : cases) {
    PageHarness page = Open(type);
    page.UseDevice(1);
    EXPECT_EQ(page.Send(ctl::Get), "{\"CDID\":" + std::to_string(word) + "}") << "type " << type;
  }
  // The clock page only sets.
  PageHarness clock = Open(CDlgSetupTime::kFunctionType);
  EXPECT_FALSE(clock.Page().HasItem(ctl::Get));
}

TEST_F(RecorderPagesTest, AGetShowsWhatASetStored) {
  using S = CDlgSetupStatusSignal;
  struct Case {
    const char* what;
    int type;
    Fill fill;
    int shown;  // a control that shows the read-back value
    std::string value;
    std::string description;
  };
  const Case cases[] = {
      {"vehicle, 2012", CDlgSetupVIN::kFunctionType2012,
       [](PageHarness& p) {
         p.Type(CDlgSetupVIN::kVinEdit, "LSV12345678901234");
         p.Type(CDlgSetupVIN::kPlateEdit, "苏E12345");
         p.Type(CDlgSetupVIN::kClassEdit, "大型");
       },
       CDlgSetupVIN::kPlateEdit, "苏E12345",
       Fields({{13420, "LSV12345678901234"}, {13422, "大型"}, {13421, "苏E12345"}})},
      {"driver", CDlgSetupDerID::kFunctionType,
       [](PageHarness& p) {
         p.Type(CDlgSetupDerID::kDriverEdit, "4567");
         p.Type(CDlgSetupDerID::kLicenceEdit, "320501");
       },
       CDlgSetupDerID::kDriverEdit, "4567", Fields({{13426, "4567"}, {13427, "320501"}})},
      {"coefficient", CDlgFeature::kFunctionType, [](PageHarness& p) { p.Type(CDlgFeature::kEdit, "4321"); },
       CDlgFeature::kEdit, "4321", Fields({{13425, "4321"}})},
      {"installation date", CDlgSetupInstallTime::kFunctionType, PickMarch5, CRecorderTimePage::kDatePicker, "2024-03-05",
       Fields({{20105, "2024-03-05 07:08:09"}})},
      {"initial mileage", CDlgSetupInitialMileage::kFunctionType,
       [](PageHarness& p) { p.Type(CDlgSetupInitialMileage::kEdit, "1234"); }, CDlgSetupInitialMileage::kEdit, "1234",
       Fields({{20106, "1234"}})},
      {"pulse coefficient and recorder time", CDlgSetupPulseCoefficient::kFunctionType,
       [](PageHarness& p) {
         PickMarch5(p);
         p.Type(CDlgSetupPulseCoefficient::kEdit, "65535");
       },
       CDlgSetupPulseCoefficient::kTimePicker, "07:08:09", Fields({{13429, "2024-03-05 07:08:09"}, {20108, "65535"}})},
      {"status signal names", S::kFunctionType,
       [](PageHarness& p) {
         for (int i = 0; i < S::kSignals; ++i) p.Type(S::Edit(i), "门" + std::to_string(i));
         p.Type(S::Edit(3), "a+b%");
       },
       S::Edit(3), "a+b%", SignalNames({"门0", "门1", "门2", "a+b%", "门4", "门5", "门6", "门7"})},
  };
  for (const Case& c : cases) {
    PageHarness page = Open(c.type);
    page.UseDevice(1);
    c.fill(page);
    page.Send(ctl::Set);
    // Another page of the same kind reads the recorder back.
    PageHarness reader = Open(c.type);
    reader.UseDevice(1);
    reader.Send(ctl::Get);
    EXPECT_EQ(reader.Cell(0, kColResult), T(11011)) << c.what;
    EXPECT_EQ(reader.Text(c.shown), c.value) << c.what;
    EXPECT_EQ(reader.Cell(0, kColDescription), c.description) << c.what;
  }
}

TEST_F(RecorderPagesTest, RepliesThatDoNotAnswerLeaveTheValuesEmpty) {
  using S = CDlgSetupStatusSignal;
  const std::string emptySignals = SignalNames({"", "", "", "", "", "", "", ""});
  struct Case {
    const char* what;
    int type;
    std::string reply;
    std::string description;
  };
  const Case cases[] = {
      {"installation date without VER", CDlgSetupInstallTime::kFunctionType, R"({"IDTM":"2024-03-05 07:08:09"})",
       Field(20105, "")},
      {"installation date of 2003", CDlgSetupInstallTime::kFunctionType,
       R"({"VER":2003,"IDTM":"2024-03-05 07:08:09"})", Field(20105, "")},
      {"installation date in short form", CDlgSetupInstallTime::kFunctionType,
       R"({"VER":2012,"IDTM":"24-3-5 7:8:9"})", Field(20105, "2024-03-05 07:08:09")},
      {"installation date, three fields", CDlgSetupInstallTime::kFunctionType, R"({"VER":"2012","IDTM":"2024/03/05"})",
       Field(20105, "2024-03-05 00:00:00")},
      {"installation date, month 13", CDlgSetupInstallTime::kFunctionType, R"({"VER":2012,"IDTM":"2024-13-01"})",
       Field(20105, "")},
      {"installation date longer than 31 bytes is cut", CDlgSetupInstallTime::kFunctionType,
       R"({"VER":2012,"IDTM":"2024-03-05                     07:08:09"})", Field(20105, "2024-03-05 00:00:00")},
      {"mileage of 2003", CDlgSetupInitialMileage::kFunctionType, R"({"VER":2003,"INITMILE":5})", Field(20106, "")},
      {"mileage not a number", CDlgSetupInitialMileage::kFunctionType, R"({"VER":2012,"INITMILE":"x"})",
       Field(20106, "")},
      {"driver code as text, licence in code page 936", CDlgSetupDerID::kFunctionType,
       "{\"GDI\":\"12\",\"GCP\":\"\xD6\xD0\"}", Fields({{13426, "12"}, {13427, "中"}})},
      {"pulse without VER", CDlgSetupPulseCoefficient::kFunctionType, R"({"DTM":"2024-01-01 00:00:00","FEA":9})",
       Fields({{13429, ""}, {20108, ""}})},
      {"error result", CDlgFeature::kFunctionType, R"({"Error":0,"result":3,"FEA":9})", Field(13425, "")},
      {"not JSON", CDlgSetupVIN::kFunctionType, "{\"VIN\":", Fields({{13420, ""}, {13422, ""}, {13421, ""}})},
      {"signals without Item", S::kFunctionType, R"({"VER":2012,"SINNM0":"a"})", emptySignals},
      {"signals with Item not an array", S::kFunctionType, R"({"VER":2012,"Item":{"SINNM0":"a"}})", emptySignals},
      {"signals of 2003", S::kFunctionType, R"({"VER":2003,"Item":[{"SINNM0":"a"}]})", emptySignals},
      {"signals from the first item only", S::kFunctionType,
       R"({"VER":2012,"Item":[{"SINNM0":"a","SINNM7":"h"},{"SINNM1":"b"}]})",
       SignalNames({"a", "", "", "", "", "", "", "h"})},
  };
  for (const Case& c : cases) {
    PageHarness page = Open(c.type);
    page.UseDevice(1);
    hostref::net::SetReply(kDevice1, c.reply);
    page.Send(ctl::Get);
    EXPECT_EQ(page.Cell(0, kColDescription), c.description) << c.what;
  }
}

TEST_F(RecorderPagesTest, AFailedGetEmptiesWhatTheLastOneRead) {
  PageHarness page = Open(CDlgSetupDerID::kFunctionType);
  page.UseDevice(1);
  page.Send(ctl::Get);
  EXPECT_NE(page.Text(CDlgSetupDerID::kLicenceEdit), "");
  hostref::net::SetStatus(kDevice1, 101);
  page.Send(ctl::Get);
  EXPECT_EQ(page.Text(CDlgSetupDerID::kLicenceEdit), "");
  EXPECT_EQ(page.Cell(0, kColDescription), Fields({{13426, ""}, {13427, ""}}));
}

TEST_F(RecorderPagesTest, DriverChecksRefuseEmptyFieldsOnSetOnly) {
  using D = CDlgSetupDerID;
  PageHarness page = Open(D::kFunctionType);
  page.UseDevice(1);
  EXPECT_EQ(page.Text(D::kDriverEdit), "0");
  page.Type(D::kDriverEdit, "");
  page.Type(D::kLicenceEdit, "");
  EXPECT_EQ(page.Send(ctl::Set), "");
  page.Type(D::kDriverEdit, "5");
  EXPECT_EQ(page.Send(ctl::Set), "");
  EXPECT_EQ(TipTexts(), (std::vector<std::string>{T(13426) + T(12703), T(13427) + T(12703)}));
  // A get reads whatever the boxes hold.
  page.Type(D::kDriverEdit, "");
  EXPECT_EQ(page.Send(ctl::Get), R"({"CDID":1})");
}

TEST_F(RecorderPagesTest, SignalNamesAreAtMostTenBytesInCodePage936) {
  using S = CDlgSetupStatusSignal;
  PageHarness page = Open(S::kFunctionType);
  page.UseDevice(1);
  page.Type(S::Edit(0), "1234567890");
  page.Type(S::Edit(5), "中文中文中");  // ten bytes
  EXPECT_NE(page.Send(ctl::Set), "");
  page.Type(S::Edit(2), "中文中文中a");
  page.Type(S::Edit(6), "12345678901");
  EXPECT_EQ(page.Send(ctl::Set), "");
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(20137)});
  EXPECT_EQ(plat::Window::GetFocus(), page.Page().GetDlgItem(S::Edit(2)));
}

TEST_F(RecorderPagesTest, PagesShowTheirEditionAndHideTheirFrameInTheFunctionPageWindow) {
  PageHarness vin2003 = Open(CDlgSetupVIN::kFunctionType), vin2012 = Open(CDlgSetupVIN::kFunctionType2012);
  EXPECT_EQ(vin2003.Text(CRecorderPage::kFrame), T(20140));
  EXPECT_EQ(vin2012.Text(CRecorderPage::kFrame), T(20141));
  vin2012.Page().HideSendButtons();
  EXPECT_FALSE(vin2012.Shown(CRecorderPage::kFrame));
  EXPECT_FALSE(vin2012.Shown(ctl::Get));
  // The status signal page keeps its frame; its labels name their signal.
  PageHarness signals = Open(CDlgSetupStatusSignal::kFunctionType);
  signals.Page().HideSendButtons();
  EXPECT_TRUE(signals.Shown(CRecorderPage::kFrame));
  EXPECT_EQ(signals.Text(CDlgSetupStatusSignal::Label(7)), FormatStringInt(T(20138), 7));
  // No control of the page takes the id of the hosting windows' result list.
  EXPECT_FALSE(signals.Page().HasItem(4399));
  // The pickers open at the current time in their formats.
  PageHarness clock = Open(CDlgSetupTime::kFunctionType);
  EXPECT_EQ(clock.Text(CRecorderTimePage::kDatePicker), "2026-11-23");
  EXPECT_EQ(clock.Text(CRecorderTimePage::kTimePicker), "08:30:05");
}

TEST_F(RecorderPagesTest, EachWindowOffersItsTypes) {
  for (int type : {59, 60, 61, 62, 64, 65, 66, 67, 68, 69}) {
    EXPECT_NE(pages::Find(type, PageHost::kFunctionPage), nullptr) << type;
    EXPECT_EQ(pages::Find(type, PageHost::kVehicleWindow), nullptr) << type;
  }
  EXPECT_EQ(pages::Find(49, PageHost::kFunctionPage), nullptr);
  PageHarness signals(CDlgSetupStatusSignal::kFunctionTypeVehicle);
  ASSERT_TRUE(signals.IsOpen());
  EXPECT_EQ(signals.Page().GetDeviceKindMask(), 4u);
}

}  // namespace
