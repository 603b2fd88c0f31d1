// The route page and its popups: the route chosen in the chooser, points
// edited in the editor with their ranges, the point limit, the time range,
// the checks and the description.
#include "area_support.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/areas/route_picker.h"
#include "pages/areas/setup_thread.h"
#include "platform/dialog.h"

using areatest::Parse;
using fixture::T;
using R = CDlgSetupThread;
using S = CDlgThreadSelect;
using E = CDlgThreadInfo;

namespace {

class SetupThread : public AreaPageTest {
 protected:
  void SetUp() override {
    AreaPageTest::SetUp();
    Open(R::kFunctionType);
  }
  // The user chooses the line of a row; edit (when set) runs in the point editor first.
  void ChooseRoute(int row, std::function<void(plat::Dialog&)> edit = nullptr, bool gpsFix = false) {
    plat::modal::Push([=](plat::Dialog& d) {
      if (gpsFix) d.Item<plat::Button>(S::kGpsFix)->Click();
      d.Item<plat::ListView>(S::kList)->UserClick(row);
      if (edit) d.Item<plat::Button>(S::kEdit)->Click();
      d.Item<plat::Button>(S::kOk)->Click();
    });
    if (edit) plat::modal::Push([=](plat::Dialog& d) { edit(d); });
    page->Click(R::kPickButton);
  }
};

TEST_F(SetupThread, ChosenLineFillsThePage) {
  ChooseRoute(1);
  EXPECT_EQ(page->Page().Item<plat::Button>(R::kPickButton)->GetWindowText(), "West");
  EXPECT_EQ(page->Text(R::kIdEdit), "202");
  EXPECT_EQ(page->Text(R::kNameEdit), "West");
  page->Type(R::kNameEdit, "W2");
  const Json::Value param = Parse(SendTo({1}).at(0));
  EXPECT_EQ(param["PCT"].asInt(), 2);
  // South and west go into each segment's attribute; coordinates are |degrees| x 10^6.
  EXPECT_EQ(areatest::Parse(SendTo({1}).at(0))["PAR"][0].toStyledString(),
            Parse(R"({"PID":1,"LID":1,"WD":1250000,"JD":9500000,"LW":20,"LDA":12,"DOR":0,"DLS":0,"MSPD":0,"LST":0,"NMSPD":0})")
                .toStyledString());
  EXPECT_EQ(param["PAR"][1]["LDA"].asInt(), 8);
  EXPECT_EQ(param["ANAME"].asString(), "W2");
  EXPECT_EQ(page->Cell(0, kColDescription),
            FormatChineseColon(T(12400), "") + "，" + FormatChineseColon(T(12000), "202") + "，" +
                FormatChineseColon(T(12509), "West") + "，" + FormatChineseColon(T(12408), "2026-11-23 00:00:00") +
                "，" + FormatChineseColon(T(12409), "2026-11-23 23:59:59") + "，" + FormatChineseColon(T(12621), "W2"));
}

TEST_F(SetupThread, FifteenPointsOrAThousandWithControl) {
  ChooseRoute(0);
  EXPECT_EQ(Parse(SendTo({1}).at(0))["PCT"].asInt(), 15);
  CConfigKestrelINI::WriteIniInt(1103, 1);
  const Json::Value param = Parse(SendTo({1}).at(0));
  EXPECT_EQ(param["PCT"].asInt(), 20);
  EXPECT_EQ(param["PAR"][19]["PID"].asInt(), 20);
  EXPECT_EQ(param["PAR"][19]["LW"].asInt(), 255) << "a 300 m line is as wide as a segment can be";
}

TEST_F(SetupThread, EditorKeepsValuesInRangeAndRefusesOthers) {
  const struct {
    int field;  // 0-10, in column order
    const char* typed;
    int tip;  // 0: taken
  } cases[] = {
      {1, "255", 0}, {1, "256", 12701}, {2, "180", 0},  {2, "180.5", 12702}, {3, "-1", 12702},
      {8, "300", 0}, {8, "301", 12701}, {9, "x", 12701}, {6, "65535", 0},   {0, "4294967295", 0},
  };
  for (const auto& c : cases) {
    Open(R::kFunctionType);
    hostref::ClearTips();
    ChooseRoute(1, [&](plat::Dialog& d) {
      d.Item<plat::ListView>(E::kList)->UserClick(1);
      d.Item<plat::Edit>(E::kFirstEdit + c.field)->SetWindowText(c.typed);
      d.Item<plat::Button>(E::kApply)->Click();
      d.Item<plat::Button>(E::kOk)->Click();
    });
    // A coordinate's tip carries the degrees it may take.
    const std::string tip = c.tip ? T(c.tip) + (c.tip == E::kTextCoordinateRange ? E::kCoordinateRange : "") : "";
    EXPECT_EQ(TipTexts(), c.tip ? std::vector<std::string>{tip} : std::vector<std::string>{}) << c.typed;
    const auto& points = page->As<R>().Points();
    ASSERT_EQ(points.size(), 2u);
    const auto original = area::RouteFromLine([] {
      _tagGPSMapLineEx line;
      CVMgrMyMapInfomation::FindMapLine(areatest::kWestLine, &line);
      return line;
    }(), false);
    EXPECT_EQ(points[0], original[0]) << c.typed;
    EXPECT_EQ(points[1] == original[1], c.tip != 0) << c.typed;
  }
}

TEST_F(SetupThread, GpsFixTakesTheLineToGps) {
  ChooseRoute(1, nullptr, true);
  // Map type 1 lies 0.0005 degrees east and north of GPS.
  EXPECT_EQ(page->As<R>().Points()[0].lat, 1250500);
  EXPECT_EQ(page->As<R>().Points()[0].lng, 9500500);
  EXPECT_EQ(CConfigKestrelINI::ReadIniInt(S::kSettingGpsFix), 1);
}

TEST_F(SetupThread, ChecksAndTimeRange) {
  hostref::ClearTips();
  EXPECT_TRUE(SendTo({1}).empty());
  page->Type(R::kIdEdit, "5");
  EXPECT_TRUE(SendTo({1}).empty());
  ChooseRoute(0);
  page->Click(R::kCheckByTime);
  auto* end = page->Page().Item<plat::DateTimePicker>(R::kEndTime);
  SYSTEMTIME t = end->GetTime();
  t.wHour = t.wMinute = t.wSecond = 0;
  end->UserSetTime(t);
  EXPECT_TRUE(SendTo({1}).empty());
  EXPECT_EQ(TipTexts(), (std::vector<std::string>{T(12000) + T(12703), T(12704), T(12411)}));
  page->Click(R::kEveryDay);
  EXPECT_FALSE(page->Enabled(R::kStartDate));
  const Json::Value param = Parse(SendTo({1}).at(0));
  EXPECT_EQ(param["BTM"].asString() + "-" + param["ETM"].asString(), "000000000000-000000000000");
  EXPECT_EQ(param["ATTR"].asInt(), 1);
}

TEST_F(SetupThread, CancelKeepsTheRoute) {
  ChooseRoute(1);
  plat::modal::Push([](plat::Dialog& d) { d.Item<plat::ListView>(S::kList)->UserClick(0); });
  page->Click(R::kPickButton);
  EXPECT_EQ(page->As<R>().LineId(), areatest::kWestLine);
}

}  // namespace
