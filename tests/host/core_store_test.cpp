// Configuration and the local store: fleet defaults under stored values, and
// what survives closing and re-opening a data directory.
#include <gtest/gtest.h>

#include <filesystem>

#include "host/hostcore.h"
#include "host/ref/hostref.h"

namespace {

std::string FreshDir(const char* name) {
  const std::filesystem::path dir = std::filesystem::path(testing::TempDir()) / name;
  std::filesystem::remove_all(dir);
  return (dir / "nested").string();
}

TEST(Store, StoredValuesWinOverFleetDefaults) {
  ASSERT_TRUE(hostref::OpenDataDir(""));
  ASSERT_TRUE(hostref::LoadFleet(R"({"config":{"170":1},"configText":{"718":{"0":"preset"}}})"));
  EXPECT_EQ(CConfigKestrelINI::ReadIniInt(170), 1);
  EXPECT_EQ(CConfigKestrelINI::ReadIniInt(171, 9), 9);
  EXPECT_EQ(CConfigKestrelINI::ReadIniStrEx(718, 0), "preset");
  EXPECT_EQ(CConfigKestrelINI::ReadIniStrEx(718, 1), "");
  EXPECT_TRUE(CConfigKestrelINI::WriteIniInt(170, 0));
  EXPECT_TRUE(CConfigKestrelINI::WriteIniStrEx(718, 0, "changed"));
  EXPECT_EQ(CConfigKestrelINI::ReadIniInt(170), 0);
  EXPECT_EQ(CConfigKestrelINI::ReadIniStrEx(718, 0), "changed");
  ASSERT_TRUE(hostref::OpenDataDir(""));
  EXPECT_EQ(CConfigKestrelINI::ReadIniInt(170), 1) << "an in-memory store starts empty";
}

TEST(Store, ValuesSurviveReopeningTheDataDir) {
  const std::string dir = FreshDir("store-reopen");
  ASSERT_TRUE(hostref::OpenDataDir(dir));
  std::string value;
  EXPECT_FALSE(CLocalDatabaseMgr::US_GetWndCtrlData("fleetcmd", 5, 0x10000001u, value));
  EXPECT_TRUE(CLocalDatabaseMgr::US_SetWndCtrlData("fleetcmd", 5, 0x10000001u, "文本 'x'"));
  EXPECT_TRUE(CLocalDatabaseMgr::US_SetWndCtrlData("fleetcmd", 6, 0x10000001u, "other page"));
  EXPECT_TRUE(CConfigKestrelINI::WriteIniInt(707, 2019));
  EXPECT_TRUE(CConfigKestrelINI::WriteIniStrEx(709, 3, "event"));

  ASSERT_TRUE(hostref::OpenDataDir(""));
  EXPECT_FALSE(CLocalDatabaseMgr::US_GetWndCtrlData("fleetcmd", 5, 0x10000001u, value));
  ASSERT_TRUE(hostref::OpenDataDir(dir));
  EXPECT_TRUE(CLocalDatabaseMgr::US_GetWndCtrlData("fleetcmd", 5, 0x10000001u, value));
  EXPECT_EQ(value, "文本 'x'");
  EXPECT_EQ(CConfigKestrelINI::ReadIniInt(707), 2019);
  EXPECT_EQ(CConfigKestrelINI::ReadIniStrEx(709, 3), "event");
  ASSERT_TRUE(hostref::OpenDataDir(""));
}

}  // namespace
