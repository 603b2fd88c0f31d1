// The host log: lines from several threads, long lines, the log file and the
// cap on the lines kept in memory.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>
#include <thread>

#include "host/hostlog.h"
#include "host/ref/hostref.h"

namespace {

TEST(Log, LinesFromTwoThreadsAreAllKept) {
  hostref::ClearLog();
  constexpr int kPerThread = 2000;
  auto writer = [](const char* module) {
    CLogFile2 log(module);
    for (int i = 0; i < kPerThread; ++i) log.WriteStrInfoEx(1, "line %d", i);
  };
  std::thread ui(writer, "ui"), net(writer, "net");
  ui.join();
  net.join();
  const std::vector<std::string> lines = hostref::LogLines();
  ASSERT_EQ(lines.size(), 2u * kPerThread);
  const std::set<std::string> unique(lines.begin(), lines.end());
  EXPECT_EQ(unique.size(), lines.size());
  EXPECT_TRUE(unique.count("1|net|line 1999"));
}

// The observer runs outside the log's lock: it may log itself (the host prints, and printing may log).
TEST(Log, ObserverSeesEachLineAndMayLog) {
  std::vector<std::string> seen;
  CLogFile2 inner("observer");
  hostref::SetLogObserver([&](int level, const std::string& module, const std::string& text) {
    seen.push_back(std::to_string(level) + " " + module + " " + text);
    if (module != "observer") inner.WriteStrInfoEx(0, "saw %s", text.c_str());
  });
  CLogFile2("m").WriteStrInfoEx(2, "value %d", 7);
  hostref::SetLogObserver(nullptr);
  CLogFile2("m").WriteStrInfoEx(2, "unseen");
  EXPECT_EQ(seen, (std::vector<std::string>{"2 m value 7", "0 observer saw value 7"}));
}

TEST(Log, LongLinesAndTheLogFile) {
  const std::filesystem::path dir = std::filesystem::path(testing::TempDir()) / "hostlog-dir";
  std::filesystem::remove_all(dir);
  hostref::SetLogDir(dir.string());
  hostref::ClearLog();
  const std::string longText(5000, 'x');
  CLogFile2 log("fleetcmd");
  log.WriteStrInfoEx(2, "%s|%d", longText.c_str(), 7);
  hostref::SetLogDir("");
  log.WriteStrInfoEx(0, "memory only");

  EXPECT_EQ(hostref::LogLines(), (std::vector<std::string>{"2|fleetcmd|" + longText + "|7", "0|fleetcmd|memory only"}));
  std::ifstream file(dir / "fleetcmd.log");
  std::string line, next;
  ASSERT_TRUE(std::getline(file, line));
  EXPECT_NE(line.find(longText + "|7"), std::string::npos);
  EXPECT_FALSE(std::getline(file, next)) << "only the line written while the directory was set";
}

TEST(Log, MemoryKeepsOnlyTheNewestLines) {
  constexpr int kKept = 100000, kExtra = 5;
  hostref::ClearLog();
  CLogFile2 log("cap");
  for (int i = 0; i < kKept + kExtra; ++i) log.WriteStrInfoEx(0, "%d", i);
  const std::vector<std::string> lines = hostref::LogLines();
  ASSERT_EQ(lines.size(), static_cast<size_t>(kKept));
  EXPECT_EQ(lines.front(), "0|cap|" + std::to_string(kExtra));
  EXPECT_EQ(lines.back(), "0|cap|" + std::to_string(kKept + kExtra - 1));
  hostref::ClearLog();
}

}  // namespace
