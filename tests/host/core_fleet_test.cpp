// The fleet model: what the loader refuses, lookups by id and number, the
// device a vehicle answers for, rights and versions, generated devices and
// lookups from a second thread.
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

#include "host/hostcore.h"
#include "host/ref/hostref.h"

namespace {

const char* kTwoDeviceFleet = R"({"rights":[651],"versions":[25],"vehicles":[
  {"name":"粤B1","devices":[{"id":1,"idno":"501","attrs":{"76":1}},{"id":2,"idno":"502","attrs":{"76":0,"80":1}}]},
  {"name":"粤B2","devices":[{"id":7,"idno":"507"}]}]})";

TEST(Fleet, LoaderRejectsBadInputAndKeepsTheOldFleet) {
  const struct {
    const char* what;
    const char* json;
  } cases[] = {
      {"not JSON", "{vehicles:"},
      {"not an object", "[1,2]"},
      {"rights of a wrong type", R"({"rights":"some"})"},
      {"device id as text", R"({"vehicles":[{"name":"A","devices":[{"id":"1","idno":"9"}]}]})"},
      {"device id zero", R"({"vehicles":[{"name":"A","devices":[{"id":0,"idno":"9"}]}]})"},
      {"empty device number", R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":""}]}]})"},
      {"attribute key not a number", R"({"vehicles":[{"devices":[{"id":1,"idno":"9","attrs":{"x":1}}]}]})"},
      {"attribute value as text", R"({"vehicles":[{"devices":[{"id":1,"idno":"9","attrs":{"80":"1"}}]}]})"},
      {"duplicate id", R"({"vehicles":[{"devices":[{"id":1,"idno":"9"}]},{"devices":[{"id":1,"idno":"8"}]}]})"},
      {"duplicate number", R"({"vehicles":[{"devices":[{"id":1,"idno":"9"},{"id":2,"idno":"9"}]}]})"},
      {"config text not a text", R"({"configText":{"718":{"0":5}}})"},
  };
  ASSERT_TRUE(hostref::LoadFleet(kTwoDeviceFleet));
  for (const auto& c : cases) {
    std::string error;
    EXPECT_FALSE(hostref::LoadFleet(c.json, &error)) << c.what;
    EXPECT_FALSE(error.empty()) << c.what;
    EXPECT_STREQ(CVehicleBaseMgr::FindDvsDeviceByID(7).GetDevIDNOForChar(), "507") << c.what;
    EXPECT_FALSE(CUserPrivilegeManger::IsPrivilege(652)) << c.what;
  }
}

// A file that never ends, or one too large, is refused with a message and read no further than the limit.
TEST(Fleet, FilesAboveTheLimitAreRefused) {
  ASSERT_TRUE(hostref::LoadFleet(kTwoDeviceFleet));
  const std::string big = testing::TempDir() + "fleet-too-big.json";
  {
    std::ofstream out(big, std::ios::binary);
    out << R"({"vehicles":[)" << std::string(hostref::kMaxFleetFileBytes, ' ') << "]}";
  }
  for (const std::string& path : {std::string("/dev/zero"), big}) {
    std::string error;
    EXPECT_FALSE(hostref::LoadFleetFile(path, &error)) << path;
    EXPECT_NE(error.find("larger than a fleet file may be"), std::string::npos) << path << ": " << error;
    EXPECT_STREQ(CVehicleBaseMgr::FindDvsDeviceByID(7).GetDevIDNOForChar(), "507") << path;
  }
  {
    const std::string head = R"({"vehicles":[)", tail = "]}";
    std::ofstream out(big, std::ios::binary | std::ios::trunc);
    out << head << std::string(hostref::kMaxFleetFileBytes - head.size() - tail.size(), ' ') << tail;
  }
  std::string error;
  EXPECT_TRUE(hostref::LoadFleetFile(big, &error)) << "a file of the limit's size is read: " << error;
  std::filesystem::remove(big);
  ASSERT_TRUE(hostref::LoadFleet(kTwoDeviceFleet));
}

TEST(Fleet, LooksUpDevicesByIdAndNumber) {
  ASSERT_TRUE(hostref::LoadFleet(kTwoDeviceFleet));
  EXPECT_EQ(hostref::DeviceIds(), (std::vector<int>{1, 2, 7}));
  EXPECT_EQ(CVehicleBaseMgr::FindDvsDeviceByIDNO("502").GetDevID(), 2);
  EXPECT_STREQ(CVehicleBaseMgr::FindDvsDeviceByID(2).GetDevIDNOForChar(), "502");
  EXPECT_FALSE(CVehicleBaseMgr::FindDvsDeviceByID(3).IsValid());
  EXPECT_FALSE(CVehicleBaseMgr::FindDvsDeviceByIDNO("5").IsValid());
  EXPECT_FALSE(CVehicleBaseMgr::FindVehicleFromDev(nullptr).IsValid());
  EXPECT_STREQ(CDevFunc().GetDevIDNOForChar(), "");
}

TEST(Fleet, VehicleAnswersForTheDeviceItWasFoundThrough) {
  ASSERT_TRUE(hostref::LoadFleet(kTwoDeviceFleet));
  const CVehicleFunc second = CVehicleBaseMgr::FindVechicleFromDevID(2);
  ASSERT_TRUE(second.IsValid());
  EXPECT_EQ(second.GetDevInt(80), 1);
  EXPECT_EQ(second.GetDevInt(76), 0);
  EXPECT_EQ(second.GetDevInt(99), 0) << "an attribute the device lacks";
  EXPECT_EQ(second.GetDevInfo(7, 0).GetDevID(), 2);
  EXPECT_EQ(CVehicleFunc(nullptr, nullptr).GetDevInt(80), 0);

  const CVehicleFunc byNumber = CVehicleBaseMgr::FindVehicleFromDev("501");
  EXPECT_EQ(byNumber.GetDevInt(76), 1);
  const CDevFunc device = CVehicleBaseMgr::FindDvsDeviceByIDNO("501");
  EXPECT_EQ(byNumber.GetDevStr(kDevStrVehicleAndDevice, device.GetData()), "粤B1");
  EXPECT_EQ(byNumber.GetDevStr(1, device.GetData()), "");
  EXPECT_EQ(byNumber.GetName(), "粤B1");
}

TEST(Fleet, RightsVersionsAndOverrides) {
  ASSERT_TRUE(hostref::LoadFleet(kTwoDeviceFleet));
  EXPECT_TRUE(CUserPrivilegeManger::IsPrivilege(651));
  EXPECT_FALSE(CUserPrivilegeManger::IsPrivilege(659));
  EXPECT_TRUE(CVersionsMgr::IsVersions(25, 0));
  hostref::SetPrivilege(651, false);
  hostref::SetVersion(25, false);
  hostref::SetTestIP(true);
  EXPECT_FALSE(CUserPrivilegeManger::IsPrivilege(651));
  EXPECT_FALSE(CVersionsMgr::IsVersions(25, 0));
  EXPECT_TRUE(CMgrAppInfo::IsTestIP());

  ASSERT_TRUE(hostref::LoadFleet(R"({"vehicles":[]})"));
  EXPECT_TRUE(CUserPrivilegeManger::IsPrivilege(651)) << "no rights member grants all; overrides are gone";
  EXPECT_FALSE(CMgrAppInfo::IsTestIP());
  ASSERT_TRUE(hostref::LoadFleet(R"({"rights":[]})"));
  EXPECT_FALSE(CUserPrivilegeManger::IsPrivilege(651));
}

TEST(Fleet, DefaultFleetHasTwelveDevices) {
  hostref::LoadDefaultFleet();
  ASSERT_EQ(hostref::DeviceIds().size(), 12u);
  EXPECT_EQ(CVehicleBaseMgr::FindVehicleFromDev("10008").GetDevInt(10), 23);
  EXPECT_NE(CConfigKestrelINI::ReadIniInt(446), 0);
}

TEST(Fleet, GeneratedDevicesFollowTheLargestId) {
  ASSERT_TRUE(hostref::LoadFleet(kTwoDeviceFleet));
  const std::vector<int> ids = hostref::AddGeneratedDevices(100000, 2000000);
  ASSERT_EQ(ids.size(), 100000u);
  EXPECT_EQ(ids.front(), 8);
  EXPECT_STREQ(CVehicleBaseMgr::FindDvsDeviceByID(ids.back()).GetDevIDNOForChar(), "2099999");
  EXPECT_EQ(CVehicleBaseMgr::FindVehicleFromDev("2000000").GetName(), "测A2000000");
  EXPECT_EQ(hostref::AddGeneratedDevices(2, 506), (std::vector<int>{100008})) << "a number already taken is skipped";
}

TEST(Fleet, LookupsFromAnotherThreadWhileDevicesAreAdded) {
  ASSERT_TRUE(hostref::LoadFleet(kTwoDeviceFleet));
  std::atomic<bool> adding{true};
  std::atomic<int> found{0};
  std::thread network([&] {
    do {
      found += CVehicleBaseMgr::FindVehicleFromDev("501").GetDevInt(76);
    } while (adding.load());
  });
  // The lookups have begun before the additions do, however the threads are scheduled.
  while (found.load() == 0) std::this_thread::yield();
  for (int round = 0; round < 20; ++round) hostref::AddGeneratedDevices(500, 3000000 + round * 500);
  adding = false;
  network.join();
  EXPECT_GT(found, 0);
  EXPECT_EQ(CVehicleBaseMgr::FindDvsDeviceByIDNO("3009999").GetDevID(), 10007);
}

}  // namespace
