// The user's map markers: the host's record read at its byte offsets, the
// radius over two 16-bit halves, out-of-line lists, listing by shape type,
// coordinates in another map type, and the markers the loader refuses.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "host/hostcore.h"
#include "host/ref/hostref.h"

namespace {

const char* kMarkerFleet = R"({"markers":[
  {"id":6,"name":"Harbour","shape":"circle","lng":151200000,"lat":-33500000,"radius":70000,"fence":2,"map":1},
  {"id":3,"name":"前海","shape":"rectangle","points":[[113880000,22550000],["-0.5","-1.25"]]},
  {"id":4,"shape":"polygon","points":[[1,2],[3,4],[5,6]],"fence":5},
  {"id":10,"shape":"polygon","outOfLine":true,"points":[[-9150000,38700000],[-9140000,38705000]]},
  {"id":11,"shape":"polygon","lngText":"1,2,3,4","latText":"5,6,7,8,9"},
  {"id":5,"shape":"point","lng":114020000,"lat":22560000}]})";

template <class T>
T At(const _tagGPSMapMarkerEx& record, size_t offset) {
  T value;
  std::memcpy(&value, reinterpret_cast<const char*>(&record) + offset, sizeof value);
  return value;
}
std::string TextAt(const _tagGPSMapMarkerEx& record, size_t offset) {
  return reinterpret_cast<const char*>(&record) + offset;
}

class Markers : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(hostref::LoadFleet(kMarkerFleet)); }
  _tagGPSMapMarkerEx Find(int id) {
    _tagGPSMapMarkerEx record{};
    EXPECT_TRUE(CVMgrMyMapInfomation::FindMapMarkerEx(id, &record)) << id;
    return record;
  }
};

TEST_F(Markers, RecordFieldsAtTheHostsOffsets) {
  const _tagGPSMapMarkerEx circle = Find(6);
  EXPECT_EQ(At<int32_t>(circle, 0), 6);
  EXPECT_EQ(At<int32_t>(circle, 4), kMarkerCircle);
  EXPECT_EQ(At<int32_t>(circle, 8), 2);
  EXPECT_EQ(TextAt(circle, 52), "151.200000");
  EXPECT_EQ(TextAt(circle, 308), "-33.500000");
  // 70000 = 1 x 65536 + 4464.
  EXPECT_EQ(At<uint16_t>(circle, 638), 4464);
  EXPECT_EQ(At<uint16_t>(circle, 648), 1);
  EXPECT_EQ(At<uint16_t>(circle, 640), 1);
  EXPECT_EQ(CVMgrMyMapInfomation::GetMarkerName(&circle), "Harbour");
  EXPECT_EQ(CVMgrMyMapInfomation::GetMarkerName(3), "前海");
  EXPECT_EQ(CVMgrMyMapInfomation::GetMarkerName(99), "");
  _tagGPSMapMarkerEx none{};
  EXPECT_FALSE(CVMgrMyMapInfomation::FindMapMarkerEx(99, &none));
}

TEST_F(Markers, ListsInLineOutOfLineAndAsWritten) {
  const struct {
    int id;
    int32_t type;
    const char *lng, *lat;
  } cases[] = {
      {3, kMarkerRectangle, "113.880000,-0.5", "22.550000,-1.25"},
      {4, kMarkerPolygon, "0.000001,0.000003,0.000005", "0.000002,0.000004,0.000006"},
      {10, kMarkerOutOfLine, "-9.150000,-9.140000", "38.700000,38.705000"},
      {11, kMarkerPolygon, "1,2,3,4", "5,6,7,8,9"},
  };
  for (const auto& c : cases) {
    const _tagGPSMapMarkerEx r = Find(c.id);
    EXPECT_EQ(r.nType, c.type) << c.id;
    const bool outOfLine = r.nType == kMarkerOutOfLine;
    EXPECT_EQ(outOfLine ? std::string(r.pJingDu) : TextAt(r, 52), c.lng) << c.id;
    EXPECT_EQ(outOfLine ? std::string(r.pWeiDu) : TextAt(r, 308), c.lat) << c.id;
    if (outOfLine) {
      EXPECT_EQ(TextAt(r, 52), "") << c.id;
    }
  }
}

TEST_F(Markers, PolygonTooLongForTheRecordGoesOutOfLine) {
  std::string points;
  for (int i = 0; i < 40; ++i) points += std::string(i ? "," : "") + "[113000000,22000000]";
  ASSERT_TRUE(hostref::LoadFleet(R"({"markers":[{"id":1,"shape":"polygon","points":[)" + points + "]}]}"));
  const _tagGPSMapMarkerEx r = Find(1);
  ASSERT_EQ(r.nType, kMarkerOutOfLine);
  EXPECT_EQ(std::string(r.pJingDu).size(), 40 * 11 - 1);
}

TEST_F(Markers, ListedByShapeTypeInFleetOrder) {
  const struct {
    std::vector<int> types;
    std::vector<int> ids;
  } cases[] = {
      {{kMarkerCircle}, {6}},
      {{kMarkerPolygon, kMarkerOutOfLine}, {4, 10, 11}},
      {{kMarkerRectangle, kMarkerCircle}, {6, 3}},
      {{77}, {}},
  };
  for (const auto& c : cases) {
    int* ids = nullptr;
    int count = -1;
    CVMgrMyMapInfomation::GetAllMyMapMarkerExFormType(&ids, &count, c.types.data(), static_cast<int>(c.types.size()));
    EXPECT_EQ(std::vector<int>(ids, ids + count), c.ids) << c.types.front();
    LIBCOMMON_Release(ids);
  }
}

TEST_F(Markers, CoordinatesInAnotherMapType) {
  const _tagGPSMapMarkerEx circle = Find(6);  // map type 1
  std::string lng, lat;
  ASSERT_TRUE(CVMgrMyMapInfomation::GetMapJingWeiDu(&circle, lng, lat, 1));
  EXPECT_EQ(lng + " " + lat, "151.200000 -33.500000") << "its own map type: as stored";
  ASSERT_TRUE(CVMgrMyMapInfomation::GetMapJingWeiDu(&circle, lng, lat, -1));
  EXPECT_EQ(lng + " " + lat, "151.199500 -33.500500") << "GPS";
  const _tagGPSMapMarkerEx polygon = Find(10);  // out of line, map type 0
  ASSERT_TRUE(CVMgrMyMapInfomation::GetMapJingWeiDu(&polygon, lng, lat, 2));
  EXPECT_EQ(lng, "-9.149000,-9.139000");
}

TEST(MapLines, ListedFoundNamedAndConverted) {
  ASSERT_TRUE(hostref::LoadFleet(R"({"markers":[{"id":1,"name":"M"}],"lines":[
    {"id":1,"name":"shadowed"},{"id":30,"name":"L","width":40,"map":2,"points":[[113000000,22000000],["-1.5","2"]]}]})"));
  int* ids = nullptr;
  int count = 0;
  CVMgrMyMapInfomation::GetAllMyMapMarkerEx(&ids, &count, kMapLineKind);
  EXPECT_EQ(std::vector<int>(ids, ids + count), (std::vector<int>{1, 30}));
  LIBCOMMON_Release(ids);
  CVMgrMyMapInfomation::GetAllMyMapMarkerEx(&ids, &count, 0);
  EXPECT_EQ(count, 0) << "only lines are listed by kind";
  _tagGPSMapLineEx line;
  ASSERT_TRUE(CVMgrMyMapInfomation::FindMapLine(30, &line));
  EXPECT_EQ(line.uWidth, 40);
  EXPECT_EQ(line.uMapType, 2);
  EXPECT_EQ(line.points, (std::vector<std::pair<std::string, std::string>>{{"113.000000", "22.000000"}, {"-1.5", "2"}}));
  EXPECT_EQ(CVMgrMyMapInfomation::GetMarkerName(30), "L");
  EXPECT_EQ(CVMgrMyMapInfomation::GetMarkerName(1), "M") << "a marker's id names the marker";
  double lng = 113.0, lat = 22.0;
  ASSERT_TRUE(CGpsConvert::Convert(lng, lat, MapType2MapGPSType(line.uMapType)));
  EXPECT_NEAR(lng, 112.999, 1e-9);
  EXPECT_NEAR(lat, 21.999, 1e-9);
  std::string error;
  EXPECT_FALSE(hostref::LoadFleet(R"({"lines":[{"id":1},{"id":1}]})", &error));
  EXPECT_EQ(error.rfind("lines", 0), 0u) << error;
}

TEST(MarkerLoader, RefusesBadMarkersAndKeepsTheOldFleet) {
  ASSERT_TRUE(hostref::LoadFleet(kMarkerFleet));
  const struct {
    const char* what;
    const char* markers;
  } cases[] = {
      {"no id", R"([{"shape":"circle"}])"},
      {"duplicate id", R"([{"id":1},{"id":1}])"},
      {"unknown shape", R"([{"id":1,"shape":"star"}])"},
      {"radius as text", R"([{"id":1,"radius":"5"}])"},
      {"a point of one number", R"([{"id":1,"points":[[1]]}])"},
      {"markers not a list", R"({"id":1})"},
  };
  for (const auto& c : cases) {
    std::string error;
    EXPECT_FALSE(hostref::LoadFleet(std::string(R"({"markers":)") + c.markers + "}", &error)) << c.what;
    EXPECT_EQ(error.rfind("markers", 0), 0u) << c.what << ": " << error;
    EXPECT_EQ(CVMgrMyMapInfomation::GetMarkerName(6), "Harbour") << c.what;
  }
}

}  // namespace
