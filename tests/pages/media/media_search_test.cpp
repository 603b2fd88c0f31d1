// The media search: the filter sent, the reply decoded into the page's list
// and the table text of the description, the detailed position text of
// check mode, replies that are no list, several devices, and the export.
#include <filesystem>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/media/media_search.h"
#include "host/ref/run/settle.h"
#include "platform/menu.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using C = CDlgMediaSearch;

namespace {

constexpr const char* kTab = "\t";

class MediaSearchTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    page = std::make_unique<PageHarness>(C::kFunctionType);
    ASSERT_TRUE(page->IsOpen());
    page->UseDevice(1);
  }
  void TearDown() override {
    page.reset();
    PageWorld::TearDown();
  }
  plat::ListView& List() const { return *page->Page().Item<plat::ListView>(C::kList); }
  // The list's rows, cells joined by tabs.
  std::vector<std::string> ListRows() const {
    std::vector<std::string> rows;
    for (int r = 0; r < List().GetItemCount(); ++r) {
      std::string row;
      for (int c = 0; c < C::kColumns; ++c) row += (c ? kTab : "") + List().GetItemText(r, c);
      rows.push_back(row);
    }
    return rows;
  }
  // Device 1 answers the reply to a click of get.
  void Answer(const std::string& reply) {
    hostref::net::SetReply("91001", reply);
    page->Send(ctl::Get);
  }
  void SetTime(int picker, SYSTEMTIME time) { page->Page().Item<plat::DateTimePicker>(picker)->UserSetTime(time); }
  std::unique_ptr<PageHarness> page;
};

std::string Titles() {
  return T(11010) + kTab + T(14000) + kTab + T(13450) + kTab + T(13451) + kTab + T(13452) + kTab + T(13431) + kTab + T(13486);
}

TEST_F(MediaSearchTest, SendsTheFilterWithTwelveDigitTimes) {
  EXPECT_EQ(page->Send(ctl::Get), R"({"BTM":"261123000000","CHID":1,"ETM":"261123235959","EVCO":0,"METY":0})");
  page->Type(C::kChannelEdit, "0");
  page->Select(C::kTypeCombo, 3);
  page->Select(C::kEventCombo, 7);
  SetTime(C::kStartDate, {2024, 1, 0, 31, 0, 0, 0, 0});
  SetTime(C::kStartTime, {2000, 1, 0, 1, 23, 59, 59, 0});
  SetTime(C::kEndDate, {2024, 1, 0, 31, 0, 0, 0, 0});
  SetTime(C::kEndTime, {2000, 1, 0, 1, 23, 59, 59, 0});
  // Equal start and end times are a valid search.
  EXPECT_EQ(page->Send(ctl::Get), R"({"BTM":"240131235959","CHID":0,"ETM":"240131235959","EVCO":7,"METY":3})");
  page->Type(C::kChannelEdit, "");
  EXPECT_EQ(page->Send(ctl::Get), "");
  EXPECT_EQ(TipTexts().back(), T(13450) + T(12703));
}

TEST_F(MediaSearchTest, ItemsBecomeRowsAndTableLines) {
  Answer(R"({"Error":0,"result":0,"Item":[
      {"MDID":17,"CHID":2,"METY":1,"EVCO":3,"JD":114057000,"WD":22543000,"DTM":"2026-11-23 06:00:00"},
      {"MDID":"18","CHID":1,"METY":9,"EVCO":8,"JD":-1500,"WD":-90000000},
      {}]})");
  const std::vector<std::string> rows = {
      std::string("1\t17\t2\t") + T(13457) + kTab + T(13462) + "\t2026-11-23 06:00:00\t114.057000,22.543000",
      "2\t18\t1\t\t\t\t-0.001500,-90.000000",  // unknown type and event: no text
      "3\t0\t0\t" + T(13456) + kTab + T(13459) + "\t\t0.000000,0.000000"};
  EXPECT_EQ(ListRows(), rows);
  EXPECT_EQ(page->Cell(0, kColResult), T(11011));
  EXPECT_EQ(page->Cell(0, kColDescription),
            "\r\n" + T(13454) + "：\r\n，" + T(13450) + "：1，" + T(13451) + "：" + T(13456) + "，" + T(13452) + "：" +
                T(13459) + "，" + T(13453) + "：2026-11-23 00:00:00，" + T(12409) + "：2026-11-23 23:59:59\r\n" +
                T(13449) + "：\r\n" + Titles() + "\r\n" + rows[0] + "\r\n" + rows[1] + "\r\n" + rows[2]);
}

TEST_F(MediaSearchTest, CheckModeShowsTheDetailedPosition) {
  hostref::SetCheckMode(true);
  Answer(R"({"Item":[{"MDID":1,"Flag":3,"STA":3,"JD":114057000,"WD":22543000,"GAODU":41,"SPD":605,"HS":270}]})");
  const std::string status =
      "ACC开，定位，北纬，东经，运营状态，经纬度未经保密插件加密，车辆油路正常，车辆电路正常，车门解锁，门1关，门2关，"
      "门3关，门4关，门5关，未使用GPS卫星进行定位，未使用北斗卫星进行定位，未使用GLONASS卫星进行定位，"
      "未使用Galileo卫星进行定位，车辆处于停止状态";
  EXPECT_EQ(List().GetItemText(0, C::kColPosition),
            "报警标志：" + CMgrJTT::Instance().GetAlarmMaskString(3) + "，状态：" + status +
                "，纬度：22.543000，经度：114.057000，高程：41 (m)，速度：60.5(km/h)，方向：270");
  EXPECT_EQ(CMgrJTT::Instance().GetAlarmMaskString(3), "Emergency alarm,Overspeed");
}

TEST_F(MediaSearchTest, StatusBitsSetAndClear) {
  const struct {
    uint32_t status;
    std::vector<std::string> present, absent;
  } cases[] = {
      {0, {"ACC关", "未定位", "北纬", "东经", "运营状态", "车辆处于停止状态"}, {"车道偏移预警"}},
      {(1u << 2) | (1u << 3) | (1u << 6) | (1u << 7) | (1u << 13) | (1u << 22),
       {"南纬", "西经", "紧急刹车系统采集的前撞预警", "车道偏移预警", "门1开（前门）", "车辆处于行驶状态"}, {"北纬", "门1关"}},
      {1u << 23, {"ACC关"}, {}},  // bits beyond 22 show nothing of their own
  };
  hostref::SetCheckMode(true);
  for (const auto& c : cases) {
    Answer(R"({"Item":[{"STA":)" + std::to_string(c.status) + "}]}");
    const std::string text = List().GetItemText(0, C::kColPosition);
    for (const std::string& s : c.present) EXPECT_NE(text.find(s), std::string::npos) << c.status << " " << s;
    for (const std::string& s : c.absent) EXPECT_EQ(text.find(s), std::string::npos) << c.status << " " << s;
    EXPECT_EQ(text.find("，，"), std::string::npos) << c.status;
  }
}

TEST_F(MediaSearchTest, RepliesWithoutAListLeaveItEmpty) {
  const struct {
    const char* reply;
    std::string table;
  } cases[] = {
      {"not json", ""},
      {R"({"Error":0,"result":0})", ""},
      {R"({"Error":0,"result":2,"Item":[{"MDID":1}]})", ""},
      {R"({"Item":5})", "\r\n" + Titles()},
      {R"({"Item":[]})", "\r\n" + Titles()},
  };
  for (const auto& c : cases) {
    Answer(R"({"Item":[{"MDID":1}]})");
    Answer(c.reply);
    EXPECT_EQ(List().GetItemCount(), 0) << c.reply;
    const std::string description = page->Cell(0, kColDescription);
    EXPECT_EQ(description.substr(description.rfind(T(13449) + "：") + T(13449).size() + 3), c.table) << c.reply;
  }
}

TEST_F(MediaSearchTest, EachDevicesRowsGoInFront) {
  hostref::net::SetReply("91001", R"({"Item":[{"MDID":11},{"MDID":12}]})");
  hostref::net::SetReply("91002", R"({"Item":[{"MDID":21},{"MDID":22},{"MDID":23}]})");
  page->Pick({1, 2});
  hostref::net::SetHeld(true);
  page->Click(ctl::Get);
  hostref::RunFor(CBaseDlg::kFirstSendDelayMs);
  hostref::net::ReleaseAll();
  ASSERT_TRUE(Settle());
  std::vector<std::string> ids;
  for (int r = 0; r < List().GetItemCount(); ++r) ids.push_back(List().GetItemText(r, C::kColNumber) + ":" + List().GetItemText(r, C::kColId));
  EXPECT_EQ(ids, (std::vector<std::string>{"1:21", "2:22", "3:23", "1:11", "2:12"}));
  // The second row's table holds the second reply only; a new get empties the list first.
  EXPECT_EQ(page->Cell(0, kColDescription).find("\t11\t"), std::string::npos);
  page->Page().PickerMode = FALSE;
  hostref::net::SetHeld(false);
  Answer(R"({"Item":[{"MDID":5}]})");
  EXPECT_EQ(List().GetItemCount(), 1);
}

TEST_F(MediaSearchTest, ExportWritesTheSevenColumns) {
  auto entries = [](UINT* shown) {
    plat::menu::SetObserver([shown](const std::vector<plat::menu::Entry>& e) { *shown = e.size() == 1 && e[0].enabled ? e[0].command : 0; });
  };
  UINT shown = 1;
  entries(&shown);
  plat::menu::PushChoice(C::kCmdExport);
  List().UserRightClick(-1);
  EXPECT_EQ(shown, 0u);  // an empty list: the entry is grayed and nothing is written
  EXPECT_TRUE(TipTexts().empty());

  Answer(R"({"Item":[{"MDID":1,"DTM":"2026-11-23 06:00:00"},{"MDID":2}]})");
  const auto file = std::filesystem::temp_directory_path() / ("media-export-" + std::to_string(::getpid()) + ".xlsx");
  std::filesystem::remove(file);
  plat::modal::Push([&](plat::Dialog& dialog) {
    dialog.Item<plat::Edit>(1152)->SetWindowText(file.string());
    dialog.Item<plat::Button>(IDOK)->Click();
  });
  plat::menu::PushChoice(C::kCmdExport);
  List().UserRightClick(0);
  plat::menu::SetObserver(nullptr);
  EXPECT_EQ(shown, C::kCmdExport);
  EXPECT_TRUE(std::filesystem::exists(file));
  ASSERT_FALSE(TipTexts().empty());
  EXPECT_NE(TipTexts().back().find(file.string()), std::string::npos);
  std::filesystem::remove(file);
}

}  // namespace
