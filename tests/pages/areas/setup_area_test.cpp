// The circle, rectangle and polygon area pages: what reaches the terminal for
// markers picked alone or several, batches and progress, south and west
// bits, checks in each shape's order, the regional word, the 2019 keys and
// the rows' descriptions.
#include "area_support.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"
#include "pages/areas/setup_circle.h"
#include "pages/areas/setup_edge.h"
#include "pages/areas/setup_poligon.h"

using areatest::Parse;
using fixture::T;
using A = CAreaPageBase;

namespace {

constexpr int kCircle = CDlgSetupCircle::kFunctionType, kRect = CDlgSetupEdge::kFunctionType,
              kPolygon = CDlgSetupPoligon::kFunctionType;

std::vector<int> BatchCircles(int n) {
  std::vector<int> ids;
  for (int i = 0; i < n; ++i) ids.push_back(areatest::kFirstBatchCircle + i);
  return ids;
}

using AreaPages = AreaPageTest;

TEST_F(AreaPages, CircleAloneTakesIdRadiusAndNameFromTheEdits) {
  Open(kCircle, areatest::kDevice2019);
  PickMarkers({2});
  EXPECT_EQ(page->Text(A::kIdEdit), "2");
  EXPECT_EQ(page->Text(A::kRadiusEdit), "70000");
  EXPECT_EQ(page->Text(A::kNameEdit), "C2");
  page->Type(A::kRadiusEdit, "500");
  page->Type(A::kIdEdit, "77");
  page->Type(A::kNameEdit, "Quay");
  FillSpeeds();
  const auto sent = SendTo({areatest::kDevice2019});
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_EQ(sent[0], R"({"Count":1,"Item":[{"ANAME":"Quay","ATTR":66,"BTM":"261123000000","ETM":"261123235959",)"
                     R"("ID":77,"JD":151200000,"MSPD":80,"NMSPD":0,"OSTM":10,"Radius":500,"WD":33500000}],"Setup":0})");
  EXPECT_EQ(page->Cell(0, kColDescription),
            FormatChineseColon(T(12500), T(12501)) + "，" + FormatChineseColon(T(12504), T(12309) + "，" + T(12515)) +
                "，" + FormatChineseColon(T(12001), "2") + "，" + FormatChineseColon(T(12510), "500") + "，" +
                FormatChineseColon(T(12408), "2026-11-23 00:00:00") + "，" +
                FormatChineseColon(T(12409), "2026-11-23 23:59:59") + "，" + FormatChineseColon(T(12512), "80") + "，" +
                FormatChineseColon(T(12307), "10") + "，" + FormatChineseColon(T(12620), "") + "，" +
                FormatChineseColon(T(12621), "Quay"));
}

TEST_F(AreaPages, SeveralCirclesCarryTheirOwnIdRadiusAndName) {
  Open(kCircle, areatest::kDevice2019);
  PickMarkers({1, 3});
  for (int edit : {A::kIdEdit, A::kRadiusEdit, A::kNameEdit}) {
    EXPECT_EQ(page->Text(edit), T(12100)) << edit;
    EXPECT_FALSE(page->Enabled(edit)) << edit;
  }
  FillSpeeds();
  const Json::Value items = Parse(SendTo({areatest::kDevice2019}).at(0))["Item"];
  ASSERT_EQ(items.size(), 2u);
  const struct {
    int id, radius, lat, lng, attr;
    const char* name;
  } expected[] = {{1, 500, 22533000, 113930000, 0x02, "C1"}, {3, 1, 0, 0, 0x02 | 0x80, "C3"}};
  for (Json::ArrayIndex i = 0; i < 2; ++i) {
    const auto& e = expected[i];
    EXPECT_EQ(items[i]["ID"].asInt(), e.id);
    EXPECT_EQ(items[i]["Radius"].asInt(), e.radius);
    EXPECT_EQ(items[i]["WD"].asInt(), e.lat) << "0.0000009 truncates to 0";
    EXPECT_EQ(items[i]["JD"].asInt(), e.lng);
    EXPECT_EQ(items[i]["ATTR"].asInt(), e.attr) << "-0.0000001 still sets the west bit";
    EXPECT_EQ(items[i]["ANAME"].asString(), e.name);
  }
  // One row per area, the newest first; each describes its own marker.
  EXPECT_EQ(page->Rows(), 2);
  EXPECT_NE(page->Cell(0, kColDescription).find(FormatChineseColon(T(12001), "3")), std::string::npos);
  EXPECT_NE(page->Cell(0, kColDescription).find(FormatChineseColon(T(12510), "1")), std::string::npos);
}

TEST_F(AreaPages, CirclesGoTenToARequestWithProgress) {
  const struct {
    int markers;
    std::vector<int> counts;
  } cases[] = {{11, {10, 1}}, {25, {10, 10, 5}}, {10, {10}}};
  for (const auto& c : cases) {
    Open(kCircle);
    PickMarkers(BatchCircles(c.markers));
    EXPECT_EQ(page->Text(A::kProgress), "0 / " + std::to_string(c.markers));
    FillSpeeds();
    const auto sent = SendTo({1, 3});
    ASSERT_EQ(sent.size(), 2 * c.counts.size()) << c.markers;
    for (size_t i = 0; i < sent.size(); ++i) {
      const Json::Value param = Parse(sent[i]);
      const int count = c.counts[i % c.counts.size()];
      EXPECT_EQ(param["Count"].asInt(), count) << c.markers << " request " << i;
      EXPECT_EQ(static_cast<int>(param["Item"].size()), count) << c.markers << " request " << i;
      EXPECT_EQ(param["Item"][0]["ID"].asInt(), areatest::kFirstBatchCircle + 10 * static_cast<int>(i % c.counts.size()));
    }
    EXPECT_EQ(page->Rows(), 2 * c.markers) << "a row per area and device";
  }
}

// A round sends at most 100 requests: the progress shows where the round stopped.
TEST_F(AreaPages, ProgressShowsWhereTheRoundStopped) {
  const std::vector<int> devices = hostref::AddGeneratedDevices(40, 95000);
  Open(kCircle);
  PickMarkers(BatchCircles(25));
  FillSpeeds();
  hostref::net::SetHeld(true);
  page->Pick(devices);
  page->Click(ctl::Set);
  hostref::RunFor(CBaseDlg::kFirstSendDelayMs);
  EXPECT_EQ(hostref::net::HeldCount(), 100u);
  EXPECT_EQ(page->Text(A::kProgress), "10 / 25") << "33 devices done, the 34th at its second batch";
  hostref::net::SetHeld(false);
  hostref::net::ReleaseAll();
  EXPECT_TRUE(Settle());
  EXPECT_EQ(page->Rows(), 40 * 25);
}

TEST_F(AreaPages, MarkersGoneFromTheHostAreLeftOutSilently) {
  Open(kCircle);
  PickMarkers({1, 2, 3});
  FillSpeeds();
  ASSERT_TRUE(hostref::LoadFleet(areatest::Fleet({2})));
  const Json::Value param = Parse(SendTo({1}).at(0));
  EXPECT_EQ(param["Count"].asInt(), 3) << "the batch still declares its size";
  ASSERT_EQ(param["Item"].size(), 2u);
  EXPECT_EQ(param["Item"][1]["ID"].asInt(), 3);
  EXPECT_TRUE(TipTexts().empty());
}

TEST_F(AreaPages, AMarkerChosenAloneAndGoneSendsNoItems) {
  for (int type : {kCircle, kRect}) {
    Open(type);
    PickMarkers({type == kCircle ? 1 : 4});
    FillSpeeds();
    ASSERT_TRUE(hostref::LoadFleet(areatest::Fleet({1, 4})));
    EXPECT_EQ(SendTo({1}).at(0), R"({"Count":1,"Setup":0})") << type;
    ASSERT_TRUE(hostref::LoadFleet(areatest::Fleet()));
  }
  Open(kPolygon, areatest::kDevice2019);
  PickMarkers({7});
  page->Type(A::kNameEdit, "Edited");
  FillSpeeds();
  ASSERT_TRUE(hostref::LoadFleet(areatest::Fleet({7})));
  EXPECT_EQ(SendTo({2}).at(0), R"({"ANAME":"Edited","ATTR":2,"BTM":"261123000000","ETM":"261123235959","MSPD":80,)"
                               R"("NMSPD":0,"OSTM":10,"PCT":0})");
}

TEST_F(AreaPages, RectangleSouthAndWestBits) {
  const struct {
    const char* what;
    std::vector<int> markers;
    int attr;  // south and west bits of the first marker named
  } cases[] = {
      {"(-10, 20)-(-12, 22) alone: both corners south", {4}, 0x40},
      {"(10, 20)-(-12, 22) alone: one corner south", {5}, 0},
      {"(10, 20)-(-12, 22) with another: the first corner decides", {5, 4}, 0},
      {"(-10, 20)-(-12, 22) with another: the first corner decides", {4, 5}, 0x40},
  };
  for (const auto& c : cases) {
    Open(kRect);
    PickMarkers(c.markers);
    FillSpeeds();
    const Json::Value items = Parse(SendTo({1}).at(0))["Item"];
    for (const Json::Value& item : items) {
      if (item["ID"].asInt() == c.markers[0]) {
        EXPECT_EQ(item["ATTR"].asInt() & 0xC0, c.attr) << c.what;
      }
    }
  }
}

TEST_F(AreaPages, RectangleCornersAndOneElementLists) {
  Open(kRect);
  PickMarkers({4, 6});
  EXPECT_EQ(page->Text(A::kIdEdit), T(12100));
  FillSpeeds();
  const Json::Value items = Parse(SendTo({1}).at(0))["Item"];
  ASSERT_EQ(items.size(), 2u);
  EXPECT_EQ(items[0]["LWD"].asInt(), 10000000);
  EXPECT_EQ(items[0]["LJD"].asInt(), 20000000);
  EXPECT_EQ(items[0]["RWD"].asInt(), 12000000);
  EXPECT_EQ(items[0]["RJD"].asInt(), 22000000);
  EXPECT_EQ(items[1]["LWD"].asInt(), 6000000);
  EXPECT_EQ(items[1]["RWD"].asInt(), 0) << "a missing corner counts as 0";
  EXPECT_EQ(items[1]["RJD"].asInt(), 0);
  EXPECT_FALSE(items[1].isMember("ANAME")) << "a 2013 current device gets no name";
}

TEST_F(AreaPages, PolygonsOneToARequestInSelectionOrder) {
  Open(kPolygon);
  PickMarkers({8, 7});
  FillSpeeds();
  const auto sent = SendTo({1});
  ASSERT_EQ(sent.size(), 2u);
  // In list order, whatever the order of the clicks.
  EXPECT_EQ(sent[0], R"({"ATTR":130,"BTM":"261123000000","ETM":"261123235959","ID":7,"MSPD":80,"OSTM":10,)"
                     R"("PAR":[{"JD":1000000,"WD":5000000},{"JD":2000000,"WD":6000000},{"JD":3000000,"WD":7000000},)"
                     R"({"JD":4000000,"WD":8000000}],"PCT":4})")
      << "5 latitudes and 4 longitudes make 4 points; the first vertex is west";
  const Json::Value outOfLine = Parse(sent[1]);
  EXPECT_EQ(outOfLine["ID"].asInt(), 8);
  EXPECT_EQ(outOfLine["PCT"].asInt(), 3);
  EXPECT_EQ(outOfLine["PAR"][0]["WD"].asInt(), 20) << "lists read through the out-of-line pointers";
  EXPECT_EQ(outOfLine["ATTR"].asInt(), 0x02 | 0x40);
}

TEST_F(AreaPages, PolygonAloneSendsTheEditedNameButItsOwnId) {
  Open(kPolygon, areatest::kDevice2019);
  PickMarkers({8});
  EXPECT_EQ(page->Text(A::kIdEdit), "8");
  page->Type(A::kIdEdit, "55");
  page->Type(A::kNameEdit, "Renamed");
  FillSpeeds();
  const Json::Value param = Parse(SendTo({2}).at(0));
  EXPECT_EQ(param["ID"].asInt(), 8);
  EXPECT_EQ(param["ANAME"].asString(), "Renamed");
}

// The first failing check gives its tip and nothing is sent.
TEST_F(AreaPages, ChecksInEachShapesOrder) {
  struct Case {
    const char* what;
    int type;
    std::vector<int> markers;
    const char *id, *radius, *speed, *duration;
    std::string tip;
  };
  const Case cases[] = {
      {"circle: no marker first", kCircle, {}, "", "", "", "", T(12704)},
      {"circle alone: id", kCircle, {1}, "", "5", "1", "1", T(12001) + T(12703)},
      {"circle alone: radius", kCircle, {1}, "3", "", "1", "1", T(12510) + T(12703)},
      {"circle alone: speed", kCircle, {1}, "3", "5", "", "1", T(12512) + T(12703)},
      {"circle alone: duration", kCircle, {1}, "3", "5", "1", "", T(12307) + T(12703)},
      {"rectangle: id before markers", kRect, {}, "", "", "", "", T(12001) + T(12703)},
      {"rectangle: no marker", kRect, {}, "7", "", "", "", T(12704)},
      {"rectangle: speed", kRect, {4}, "7", "", "", "1", T(12512) + T(12703)},
      {"polygon: id before markers", kPolygon, {}, "", "", "", "", T(12001) + T(12703)},
      {"polygon: no marker", kPolygon, {}, "7", "", "1", "1", T(12704)},
      {"polygon: duration", kPolygon, {7}, "7", "", "1", "", T(12307) + T(12703)},
  };
  for (const Case& c : cases) {
    Open(c.type);
    hostref::ClearTips();
    if (!c.markers.empty()) PickMarkers(c.markers);
    page->Type(A::kIdEdit, c.id);
    page->Type(A::kRadiusEdit, c.radius);
    page->Click(A::kCheckSpeedLimit);
    page->Type(A::kSpeedEdit, c.speed);
    page->Type(A::kDurationEdit, c.duration);
    page->Click(A::kCheckSpeedLimit);  // unchecked again: an empty speed still fails
    EXPECT_EQ(SendTo({1}), std::vector<std::string>{}) << c.what;
    EXPECT_EQ(TipTexts(), std::vector<std::string>{c.tip}) << c.what;
  }
}

TEST_F(AreaPages, TimeRangeAndEveryDay) {
  const struct {
    const char* what;
    bool byTime, everyDay;
    const char *startDate, *startTime, *endDate, *endTime;
    std::string btm, etm;  // "" : refused with 12411
  } cases[] = {
      {"defaults: today", false, false, nullptr, nullptr, nullptr, nullptr, "261123000000", "261123235959"},
      {"start equal to end", true, false, "2026-05-01", "08:00:00", "2026-05-01", "08:00:00", "", ""},
      {"start after end", true, false, "2026-05-02", "08:00:00", "2026-05-01", "09:00:00", "", ""},
      {"every day: no order check, no date", true, true, nullptr, "18:00:00", nullptr, "06:30:00", "000000180000",
       "000000063000"},
      {"year 2100 keeps two digits", true, false, "2100-01-02", "03:04:05", "2100-01-03", "00:00:00", "000102030405",
       "000103000000"},
  };
  for (const auto& c : cases) {
    Open(kPolygon);
    hostref::ClearTips();
    PickMarkers({7});
    page->Type(A::kIdEdit, "1");
    FillSpeeds();
    if (c.byTime) page->Click(A::kCheckByTime);
    if (c.everyDay) page->Click(A::kEveryDay);
    EXPECT_EQ(page->Enabled(A::kStartDate), c.byTime && !c.everyDay) << c.what;
    EXPECT_EQ(page->Enabled(A::kStartTime), c.byTime) << c.what;
    auto set = [&](int id, const char* value, bool date) {
      if (!value) return;
      auto* picker = Page().Item<plat::DateTimePicker>(id);
      SYSTEMTIME t = picker->GetTime();
      int a = 0, b = 0, d = 0;
      std::sscanf(value, date ? "%d-%d-%d" : "%d:%d:%d", &a, &b, &d);
      if (date) t.wYear = WORD(a), t.wMonth = WORD(b), t.wDay = WORD(d);
      else t.wHour = WORD(a), t.wMinute = WORD(b), t.wSecond = WORD(d);
      picker->UserSetTime(t);
    };
    set(A::kStartDate, c.startDate, true), set(A::kStartTime, c.startTime, false);
    set(A::kEndDate, c.endDate, true), set(A::kEndTime, c.endTime, false);
    const auto sent = SendTo({1});
    if (c.btm.empty()) {
      EXPECT_TRUE(sent.empty()) << c.what;
      EXPECT_EQ(TipTexts(), std::vector<std::string>{T(12411)}) << c.what;
      continue;
    }
    ASSERT_EQ(sent.size(), 1u) << c.what;
    EXPECT_EQ(Parse(sent[0])["BTM"].asString(), c.btm) << c.what;
    EXPECT_EQ(Parse(sent[0])["ETM"].asString(), c.etm) << c.what;
  }
}

TEST_F(AreaPages, CheckBoxesSetTheirBits) {
  Open(kPolygon);
  PickMarkers({7});
  page->Type(A::kIdEdit, "1");
  FillSpeeds();
  for (int box : {A::kCheckByTime, A::kCheckEnterDriver, A::kCheckEnterPlatform, A::kCheckLeaveDriver,
                  A::kCheckLeavePlatform, A::kCheckNoDoors, A::kCheckCommOff, A::kCheckGnss, A::kCheckSouth,
                  A::kCheckWest}) {
    page->Click(box);
  }
  // South and west come from the coordinates only (P1's first vertex is west): the boxes are not read.
  EXPECT_EQ(Parse(SendTo({1}).at(0))["ATTR"].asInt(), 0xC1BF);
}

// The regional part of the word, by the host's switches.
TEST_F(AreaPages, RegionalFieldsBySwitches) {
  struct Case {
    const char* what;
    int control, mountain, types;  // switches 1103, 170, 1100
    int marker;
    int fenceEntry;                 // picker entry (1103 on: entry n is level n - 1)
    std::vector<int> clicks;
    int areaType, unloadType;
    int attr;
    bool drivingKeys;
  };
  const Case cases[] = {
      {"control, level two", 1, 0, 0, 7, 3, {}, 0, 0, 0x02 | (2 << 9), false},
      {"control, level three, over-speed control on", 1, 1, 1, 8, 4, {A::kCheckOverspeed}, 0, 0, 0x02 | 0x0600 | 0x1000,
       false},
      {"control, all fences", 1, 0, 0, 7, 0, {}, 0, 0, 0x02, false},
      {"ban", 0, 1, 1, 7, -1, {A::kCheckBan}, 3, 2, 0x02 | 0x1000, true},
      {"no switch: no regional part", 0, 0, 0, 7, -1, {}, 5, 2, 0x02, false},
      {"area and unload types", 0, 1, 1, 7, -1, {}, 6, 3, 0x02 | (6 << 9) | (3 << 12), false},
  };
  for (const Case& c : cases) {
    CConfigKestrelINI::WriteIniInt(1103, c.control);
    CConfigKestrelINI::WriteIniInt(170, c.mountain);
    CConfigKestrelINI::WriteIniInt(1100, c.types);
    Open(kPolygon);
    EXPECT_EQ(page->Shown(A::kCheckOverspeed), c.control == 1) << c.what;
    EXPECT_EQ(page->Shown(A::kCheckBan), c.control == 0 && c.mountain == 1) << c.what;
    EXPECT_EQ(page->Shown(A::kAreaTypeCombo), c.control == 0 && c.types == 1) << c.what;
    PickMarkers({c.marker}, c.fenceEntry);
    page->Type(A::kIdEdit, "1");
    FillSpeeds();
    for (int box : c.clicks) Page().Item<plat::Button>(box)->Click();
    page->Type(A::kDrivingSpeedEdit, "40");
    page->Type(A::kDrivingTimeEdit, "30");
    Page().Item<plat::ComboBox>(A::kAreaTypeCombo)->SetCurSel(c.areaType);
    Page().Item<plat::ComboBox>(A::kUnloadTypeCombo)->SetCurSel(c.unloadType);
    const Json::Value param = Parse(SendTo({1}).at(0));
    EXPECT_EQ(param["ATTR"].asInt() & ~0xC0, c.attr) << c.what;
    EXPECT_EQ(param.isMember("SPEEDEX"), c.drivingKeys) << c.what;
    if (c.drivingKeys) {
      EXPECT_EQ(param["SPEEDEX"].asInt() * 1000 + param["TIMEEX"].asInt(), 40030) << c.what;
    }
  }
}

TEST_F(AreaPages, AttributeTextsOfTheDescription) {
  CConfigKestrelINI::WriteIniInt(170, 1);
  CConfigKestrelINI::WriteIniInt(1100, 1);
  Open(kPolygon);
  PickMarkers({8});
  FillSpeeds();
  page->Click(A::kCheckBan);
  page->Type(A::kDrivingSpeedEdit, "40");
  page->Type(A::kDrivingTimeEdit, "30");
  SendTo({1});
  const std::string attrs = T(12309) + "，" + T(12515) + "，" + T(12623) + "，" + FormatChineseColon(T(12625), "40") +
                            "，" + FormatChineseColon(T(12626), "30") + "，区域类型:无定义,卸载类型:该区域禁止卸载";
  EXPECT_EQ(page->Cell(0, kColDescription).substr(0, FormatChineseColon(T(12504), attrs).size()),
            FormatChineseColon(T(12504), attrs));
}

TEST_F(AreaPages, EditionKeysFollowTheCurrentDevice) {
  for (int device : {areatest::kDevice2013, areatest::kDevice2019}) {
    Open(kCircle, device);
    EXPECT_EQ(page->Shown(A::kNightEdit), device == areatest::kDevice2019);
    EXPECT_EQ(page->Shown(A::kNameEdit), device == areatest::kDevice2019);
    PickMarkers({1, 2});
    FillSpeeds();
    page->Type(A::kNightEdit, "60");
    const Json::Value item = Parse(SendTo({1, 2}).at(0))["Item"][0];
    EXPECT_EQ(item.isMember("NMSPD"), device == areatest::kDevice2019) << device;
    EXPECT_EQ(item.isMember("ANAME"), device == areatest::kDevice2019) << device;
  }
}

TEST_F(AreaPages, SetupRadiosAndTheMarkerShapeWhenAlone) {
  Open(kCircle);
  page->Click(A::kRadioModify);
  PickMarkers({1});
  FillSpeeds();
  EXPECT_EQ(Parse(SendTo({1}).at(0))["Setup"].asInt(), 2);
  page->Click(A::kRadioAppend);
  EXPECT_EQ(Parse(SendTo({1}).at(0))["Setup"].asInt(), 1);
}

TEST_F(AreaPages, SendingDisablesTheInputsAndRestoresTheirRules) {
  Open(kCircle);
  PickMarkers({1, 2});
  FillSpeeds();
  SendTo({1});
  EXPECT_TRUE(page->Enabled(A::kSpeedEdit));
  EXPECT_FALSE(page->Enabled(A::kIdEdit)) << "several areas keep the id edit disabled";
  EXPECT_FALSE(page->Enabled(A::kStartDate)) << "by time is off";
  EXPECT_TRUE(page->Enabled(A::kPickButton));
}

}  // namespace
