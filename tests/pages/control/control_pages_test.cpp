// The vehicle control pages and position tracking: what each sends for what
// the user chose, the row's description, the refused inputs with their tips,
// and the controls that follow the device's kind.
#include <set>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "pages/control/car_ctrl.h"
#include "pages/control/choice_pages.h"
#include "pages/control/dormant.h"
#include "pages/control/no_param_pages.h"
#include "pages/control/oil_elec.h"
#include "pages/control/pos_track.h"
#include "pages/control/text_pages.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;

namespace {

// Device 1 a plain 2013 terminal, 2 of the 2019 edition, 3 of the extended kind (attribute 76).
const char* kFleet = R"({"vehicles":[{"name":"V1","devices":[{"id":1,"idno":"91001"}]},
  {"name":"V2","devices":[{"id":2,"idno":"91002","attrs":{"80":1}}]},
  {"name":"V3","devices":[{"id":3,"idno":"91003","attrs":{"76":1}}]}]})";
constexpr int kPlain = 1, kEdition2019 = 2, kExtended = 3;

// What the user does before pressing set: type into an edit, click a button, or pick a list entry.
struct Action {
  enum Kind { kType, kClick, kSelect } kind;
  int control;
  std::string text = {};
  int index = 0;
};
Action Type(int control, std::string text) { return {Action::kType, control, std::move(text)}; }
Action Click(int control) { return {Action::kClick, control}; }
Action Select(int control, int index) { return {Action::kSelect, control, {}, index}; }

std::string Fields(std::initializer_list<std::pair<int, std::string>> fields) {
  std::string text;
  for (const auto& [label, value] : fields) AddChineseStringStatus(text, FormatChineseColon(T(label), value));
  return text;
}

class ControlPagesTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(kFleet));
    hostref::terminals::Clear();
    hostref::terminals::Install();
  }
  void TearDown() override {
    PageWorld::TearDown();
    hostref::terminals::Uninstall();
  }
  // Opens the page for the device, does the actions and presses set; the parameter text sent.
  std::string Run(PageHarness& page, int device, const std::vector<Action>& actions) {
    page.UseDevice(device);
    for (const Action& a : actions) {
      const bool done = a.kind == Action::kType    ? page.Type(a.control, a.text)
                        : a.kind == Action::kClick ? page.Click(a.control)
                                                   : page.Select(a.control, a.index);
      EXPECT_TRUE(done) << "control " << a.control;
    }
    return page.Send(ctl::Set);
  }
};

TEST_F(ControlPagesTest, SendsTheChosenValuesAndDescribesThem) {
  struct Case {
    const char* what;
    int functionType, device;
    std::vector<Action> actions;
    std::string param, description;
  };
  const Case cases[] = {
      {"door lock, 2013", 19, kPlain, {Select(4207, 1)}, R"({"CTLA":1})", Fields({{20570, T(13111)}})},
      {"door unlock, 2019", 19, kEdition2019, {Select(4207, 0)}, R"({"CTLA":0})", Fields({{20570, T(13114)}})},
      {"vehicle lock, extended: type in the high byte", 19, kExtended, {Select(4207, 7)}, R"({"CTLA":1,"Type":3})",
       Fields({{20570, T(13123)}})},
      {"circuit restore, extended", 19, kExtended, {Select(4207, 2)}, R"({"CTLA":0,"Type":1})", Fields({{20570, T(13120)}})},
      {"regional control, first button", 46, kPlain, {}, R"({"CTLA":1})", Fields({{20570, T(20571)}})},
      {"regional release", 46, kPlain, {Click(4375)}, R"({"CTLA":2})", Fields({{20570, T(20572)}})},
      {"switch off by default", 10, kPlain, {}, R"({"Command":3})", Fields({{20578, T(20573)}})},
      {"factory settings", 10, kPlain, {Click(4150)}, R"({"Command":5})", Fields({{20578, T(20575)}})},
      {"close wireless", 10, kPlain, {Click(4152)}, R"({"Command":7})", Fields({{20578, T(20577)}})},
      {"wake for the fixed time ignores the edit", 106, kPlain, {Type(4332, "70000")}, R"({"Command":8})",
       Fields({{20593, T(20579)}})},
      {"wake for 0 seconds sends no flag", 106, kPlain, {Click(4473), Type(4332, "0")}, R"({"Command":8})",
       Fields({{20593, T(20580)}, {20581, "0"}})},
      {"wake for 120 seconds", 106, kPlain, {Click(4473), Type(4332, "120")}, R"({"Command":8,"Flag":120})",
       Fields({{20593, T(20580)}, {20581, "120"}})},
      {"cut oil and power normally", 39, kPlain, {Click(4364)}, R"({"DTM":"2026-11-23 08:30:05","STA":1})",
       Fields({{13000, T(13501)}, {13503, "2026-11-23 08:30:05"}, {13421, "V1"}})},
      {"cut at once", 39, kPlain, {Click(4365)}, R"({"DTM":"2026-11-23 08:30:05","STA":85})",
       Fields({{13000, T(13502)}, {13503, "2026-11-23 08:30:05"}, {13421, "V1"}})},
      {"restore", 39, kPlain, {}, R"({"DTM":"2026-11-23 08:30:05","STA":0})",
       Fields({{13000, T(13500)}, {13503, "2026-11-23 08:30:05"}, {13421, "V1"}})},
      {"pass-through content form-encoded", 31, kPlain, {Type(4301, "12"), Type(4302, "a+b 中")},
       R"({"CMC":"a%2Bb+%D6%D0","CMT":12})", Fields({{13480, "12"}, {20587, "a+b 中"}})},
      {"RSA key as typed", 21, kPlain, {Type(4219, "65537"), Type(4220, "C0FFEE01")}, R"({"E":65537,"N_S":"C0FFEE01"})",
       FormatChineseColon("E", "65537") + GetChineseChar(",") + FormatChineseColon("N", "C0FFEE01")},
      {"tracking without attribute", 22, kPlain, {Type(4213, "30"), Type(4216, "3600")}, R"({"POTR":3600,"TIBT":30})",
       FormatChineseColon(T(13400), "30") + FormatChineseColon(T(13401), "3600")},
      {"an interval of 0 stops tracking", 22, kPlain, {Type(4213, "0"), Type(4216, "60")}, R"({"POTR":60,"TIBT":0})",
       FormatChineseColon(T(13400), "0") + FormatChineseColon(T(13401), "60")},
      {"stop tracking with empty fields", 22, kExtended, {Select(4432, 4)}, R"({"ATTR":255,"POTR":0,"TIBT":0})",
       FormatChineseColon(T(13400), "") + FormatChineseColon(T(13401), "")},
      {"tracking by distance", 22, kExtended, {Select(4432, 1), Type(4213, "500"), Type(4216, "20000")},
       R"({"ATTR":17,"POTR":20000,"TIBT":500})",
       FormatChineseColon(T(13400), "500") + FormatChineseColon(T(13401), "20000")},
  };
  for (const Case& c : cases) {
    PageHarness page(c.functionType, c.functionType == 106 ? PageHost::kFunctionPage : PageHost::kVehicleWindow);
    ASSERT_TRUE(page.IsOpen()) << c.what;
    EXPECT_EQ(Run(page, c.device, c.actions), c.param) << c.what;
    EXPECT_EQ(page.Cell(0, kColDescription), c.description) << c.what;
    EXPECT_EQ(page.Cell(0, kColResult), T(11008)) << c.what;
  }
}

TEST_F(ControlPagesTest, RefusedInputShowsItsTipAndSendsNothing) {
  struct Case {
    const char* what;
    int functionType, device;
    std::vector<Action> actions;
    std::vector<std::string> tips;
  };
  const Case cases[] = {
      {"wake time above 65535", 106, kPlain, {Click(4473), Type(4332, "70000")}, {T(12702) + "0-65535"}},
      {"pass-through without type", 31, kPlain, {Type(4302, "x")}, {T(13480) + T(12703)}},
      {"RSA without modulus: N first", 21, kPlain, {}, {"N " + T(12703)}},
      {"RSA without exponent", 21, kPlain, {Type(4220, "AB")}, {"E " + T(12703)}},
      {"tracking without interval", 22, kPlain, {Type(4216, "5")}, {T(13400) + T(12703)}},
      {"tracking without validity", 22, kPlain, {Type(4213, "5")}, {T(13401) + T(12703)}},
      {"distance interval missing", 22, kExtended, {Select(4432, 1)}, {T(13404) + T(12703)}},
      {"time interval missing, attribute 1", 22, kExtended, {Select(4432, 2), Type(4216, "5")}, {T(13400) + T(12703)}},
      {"time validity missing, attribute 16", 22, kExtended, {Select(4432, 3), Type(4213, "5")}, {T(13405) + T(12703)}},
      {"distance validity missing, attribute 17", 22, kExtended, {Select(4432, 1), Type(4213, "5")},
       {T(13406) + T(12703)}},
      {"alarm control with no button chosen: nothing, no tip", 56, kPlain, {}, {}},
  };
  for (const Case& c : cases) {
    hostref::ClearTips();
    PageHarness page(c.functionType, c.functionType == 106 ? PageHost::kFunctionPage : PageHost::kVehicleWindow);
    ASSERT_TRUE(page.IsOpen()) << c.what;
    EXPECT_EQ(Run(page, c.device, c.actions), "") << c.what;
    EXPECT_TRUE(hostref::net::Sent().empty()) << c.what;
    EXPECT_EQ(TipTexts(), c.tips) << c.what;
  }
}

// The alarm control's radio button chooses the command; the request has no parameters.
TEST_F(ControlPagesTest, AlarmControlCommandFollowsTheButton) {
  PageHarness page(CDlgSetupAlarmCtrl::kFunctionType);
  for (auto [radio, command] : {std::pair{4463, "35594"}, std::pair{4464, "35595"}}) {
    EXPECT_EQ(Run(page, kPlain, {Click(radio)}), "");
    ASSERT_EQ(hostref::net::Sent().size(), 1u) << radio;
    EXPECT_TRUE(hostref::net::Sent()[0].envelope.starts_with(std::string("{\"Command\":") + command + ","));
    EXPECT_EQ(page.Cell(0, kColResult), T(11008));
  }
}

TEST_F(ControlPagesTest, ControlListFollowsTheDevice) {
  PageHarness page(CDlgCarCtrl::kFunctionType);
  auto* list = page.Page().Item<plat::ComboBox>(CDlgCarCtrl::kFlagList);
  const auto entries = [&] {
    std::vector<std::string> texts;
    for (int i = 0; i < list->GetCount(); ++i) texts.push_back(list->GetLBText(i));
    return texts;
  };
  page.UseDevice(kPlain);
  EXPECT_EQ(entries(), (std::vector<std::string>{T(13112), T(13111)}));
  page.Select(CDlgCarCtrl::kFlagList, 1);
  page.UseDevice(kExtended);
  EXPECT_EQ(entries(), (std::vector<std::string>{T(13118), T(13119), T(13120), T(13121), T(13112), T(13111), T(13122),
                                                 T(13123)}));
  EXPECT_EQ(list->GetCurSel(), 1) << "the position chosen before is chosen again";
  page.Select(CDlgCarCtrl::kFlagList, 6);
  page.UseDevice(kEdition2019);
  EXPECT_EQ(entries(), (std::vector<std::string>{T(13114), T(13113)}));
  EXPECT_EQ(list->GetCurSel(), 0) << "a position beyond the shorter list falls back to the first";
}

TEST_F(ControlPagesTest, TrackingCaptionsFollowTheAttribute) {
  using C = CDlgPosTrack;
  PageHarness page(C::kFunctionType);
  page.UseDevice(kPlain);
  EXPECT_FALSE(page.Shown(C::kAttrList));
  page.UseDevice(kExtended);
  EXPECT_TRUE(page.Shown(C::kAttrList));
  struct Case { int index; int interval, intervalHint, validity, validityHint; bool intervalEnabled; };
  const Case cases[] = {{0, 13400, 13407, 13405, 13409, true},  {1, 13404, 13408, 13406, 13410, true},
                        {2, 13400, 13407, 13406, 13410, true},  {3, 13404, 13408, 13405, 13409, true},
                        {4, 13400, 13407, 13405, 13409, false}};
  for (const Case& c : cases) {
    page.Select(C::kAttrList, c.index);
    EXPECT_EQ(std::make_tuple(page.Text(C::kIntervalLabel), page.Text(C::kIntervalHint), page.Text(C::kValidityLabel),
                              page.Text(C::kValidityHint), page.Enabled(C::kIntervalEdit)),
              std::make_tuple(T(c.interval), T(c.intervalHint), T(c.validity), T(c.validityHint), c.intervalEnabled))
        << "entry " << c.index;
  }
  page.UseDevice(kPlain);
  EXPECT_EQ(page.Text(C::kIntervalLabel), T(13400));
  EXPECT_TRUE(page.Enabled(C::kIntervalEdit));
}

// The link check and the driver report: no parameters, the picker's devices, query rows.
TEST_F(ControlPagesTest, NoParameterQueriesGoToThePickedDevices) {
  for (auto [type, command] : {std::pair{CDlgLinkCheck::kFunctionType, "33284"},
                               std::pair{CDlgReportingDriver::kFunctionType, "34562"}}) {
    PageHarness page(type);
    ASSERT_TRUE(page.IsOpen()) << type;
    EXPECT_TRUE(page.Page().UsesNoParamPanel) << type;
    hostref::SetPickerAnswer(std::vector<int>{1, 3});
    EXPECT_EQ(page.Send(ctl::Set), "") << type;
    ASSERT_EQ(hostref::net::Sent().size(), 2u) << type;
    for (const auto& sent : hostref::net::Sent()) {
      EXPECT_TRUE(sent.envelope.starts_with(std::string("{\"Command\":") + command + ",") && sent.param.empty()) << type;
    }
    EXPECT_EQ(page.Cell(0, kColResult), T(11011)) << type;
    EXPECT_EQ(page.Cell(1, kColResult), T(11011)) << type;
  }
}

// The oil and power page's second button picks the devices for its send alone.
TEST_F(ControlPagesTest, OilAndPowerToSeveralDevices) {
  PageHarness page(CDlgOilAndElec::kFunctionType);
  page.UseDevice(kPlain);
  hostref::SetPickerAnswer(std::vector<int>{2, 3});
  page.Send(CDlgOilAndElec::kSetSeveral);
  EXPECT_EQ(hostref::net::Sent().size(), 2u);
  // Each row names its own device's vehicle, whatever order the answers came in.
  std::set<std::string> vehicles;
  for (int row = 0; row < 2; ++row) {
    const std::string description = page.Cell(row, kColDescription);
    vehicles.insert(description.substr(description.rfind(T(13421))));
  }
  EXPECT_EQ(vehicles, (std::set<std::string>{FormatChineseColon(T(13421), "V2"), FormatChineseColon(T(13421), "V3")}));
  page.Send(ctl::Set);
  ASSERT_EQ(hostref::net::Sent().size(), 1u);
  EXPECT_EQ(hostref::net::Sent()[0].devIdno, "91001");
}

}  // namespace
