#include "area_support.h"

#include <algorithm>

#include "host/ref/hostref.h"
#include "pages/areas/marker_picker.h"
#include "platform/dialog.h"
#include "text/json.h"

namespace areatest {

std::string Fleet(const std::vector<int>& without) {
  std::vector<std::pair<int, std::string>> markers = {
      {1, R"("name":"C1","shape":"circle","lng":113930000,"lat":22533000,"radius":500)"},
      {2, R"("name":"C2","shape":"circle","lng":"151.2","lat":"-33.5","radius":70000,"fence":3)"},
      {3, R"("name":"C3","shape":"circle","lng":"-0.0000001","lat":"0.0000009","radius":1,"fence":4,"map":1)"},
      {4, R"("name":"R1","shape":"rectangle","points":[["20","-10"],["22","-12"]])"},
      {5, R"("name":"R2","shape":"rectangle","points":[["20","10"],["22","-12"]],"fence":2)"},
      {6, R"("name":"R3","shape":"rectangle","lngText":"5","latText":"6")"},
      {7, R"("name":"P1","shape":"polygon","lngText":"-1,2,3,4","latText":"5,6,7,8,9","fence":3)"},
      {8, R"("name":"P2","shape":"polygon","outOfLine":true,"points":[[10,-20],[30,40],[50,60]],"fence":4)"},
      {9, R"("name":"Point","shape":"point","lng":1,"lat":2)"},
  };
  for (int i = 0; i < kBatchCircles; ++i) {
    markers.push_back({kFirstBatchCircle + i, R"("shape":"circle","lng":1000000,"lat":2000000,"radius":)" +
                                                  std::to_string(10 + i)});
  }
  std::string list;
  for (const auto& [id, rest] : markers) {
    if (std::find(without.begin(), without.end(), id) != without.end()) continue;
    list += (list.empty() ? "" : ",") + std::string(R"({"id":)") + std::to_string(id) + "," + rest + "}";
  }
  std::string points;
  for (int i = 0; i < 20; ++i) points += std::string(i ? "," : "") + "[" + std::to_string(114000000 + i) + ",22000000]";
  return R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001"}]},
    {"name":"B","devices":[{"id":2,"idno":"91002","attrs":{"80":1}}]},
    {"name":"C","devices":[{"id":3,"idno":"91003"}]}],"markers":[)" + list + R"(],
    "lines":[{"id":201,"name":"Long road","width":300,"points":[)" + points + R"(]},
             {"id":202,"name":"West","width":20,"map":1,"points":[["-9.5","-1.25"],["-9.25","0.5"]]}]})";
}

Json::Value Parse(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(txt::ParseJson(text, value)) << text;
  return value;
}

}  // namespace areatest

void AreaPageTest::SetUp() {
  PageWorld::SetUp();
  std::string error;
  ASSERT_TRUE(hostref::LoadFleet(areatest::Fleet(), &error)) << error;
}

void AreaPageTest::TearDown() {
  page.reset();
  PageWorld::TearDown();
}

void AreaPageTest::Open(int functionType, int device) {
  page = std::make_unique<PageHarness>(functionType);
  ASSERT_TRUE(page->IsOpen());
  page->UseDevice(device);
}

void AreaPageTest::PickMarkers(const std::vector<int>& ids, int fenceEntry) {
  plat::modal::Push([ids, fenceEntry](plat::Dialog& dialog) {
    if (fenceEntry >= 0) dialog.Item<plat::ComboBox>(CDlgAreaBase::kFenceCombo)->UserSelect(fenceEntry);
    auto* list = dialog.Item<plat::ListView>(CDlgAreaBase::kList);
    for (int id : ids) {
      for (int row = 0; row < list->GetItemCount(); ++row) {
        if (list->GetItemText(row, 0) == std::to_string(id)) list->UserClick(row);
      }
    }
    dialog.Item<plat::Button>(CDlgAreaBase::kOk)->Click();
  });
  page->Click(CAreaPageBase::kPickButton);
}

void AreaPageTest::FillSpeeds(const std::string& speed, const std::string& duration) {
  if (!page->Checked(CAreaPageBase::kCheckSpeedLimit)) page->Click(CAreaPageBase::kCheckSpeedLimit);
  page->Type(CAreaPageBase::kSpeedEdit, speed);
  page->Type(CAreaPageBase::kDurationEdit, duration);
}

std::vector<std::string> AreaPageTest::SendTo(const std::vector<int>& devices) {
  page->Pick(devices);
  page->Send(ctl::Set);
  return page->Params();
}
