// A world for the area pages: devices of both editions, markers of every
// shape (enough circles for several batches), and the marker picker driven
// the way a user does it.
#pragma once

#include <json/value.h>

#include <memory>
#include <string>
#include <vector>

#include "pages/areas/area_page.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

namespace areatest {
// Devices: 1 "91001" (2013), 2 "91002" (2019), 3 "91003" (2013).
constexpr int kDevice2013 = 1, kDevice2019 = 2;
// Markers: circles 1-3 and 100-124, rectangles 4-6, polygons 7 (in line) and 8 (out of line), point 9.
constexpr int kFirstBatchCircle = 100, kBatchCircles = 25;
// Lines: 201 (20 points, 300 m wide), 202 (2 points south-west of GPS, map type 1).
constexpr int kLongLine = 201, kWestLine = 202;
// The fleet, without the markers whose ids are left out.
std::string Fleet(const std::vector<int>& without = {});
Json::Value Parse(const std::string& text);
}  // namespace areatest

class AreaPageTest : public PageWorld {
 protected:
  void SetUp() override;
  void TearDown() override;
  // Opens the page of a function type on a current device.
  void Open(int functionType, int device = areatest::kDevice2013);
  // The user opens the picker, chooses a fence entry (when >= 0), clicks the rows of these markers and presses OK.
  void PickMarkers(const std::vector<int>& ids, int fenceEntry = -1);
  // The mandatory speed and duration; the speed-limit box enables them.
  void FillSpeeds(const std::string& speed = "80", const std::string& duration = "10");
  // Sends to the picked devices; the parameter texts sent.
  std::vector<std::string> SendTo(const std::vector<int>& devices);
  CAreaPageBase& Page() { return page->As<CAreaPageBase>(); }

  std::unique_ptr<PageHarness> page;
};
