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

// Below the level a line is not formatted: a format that would read a bad argument is never looked at.
TEST(Log, LinesBelowTheLevelAreDroppedUnformatted) {
  hostref::ClearLog();
  CLogFile2 log("level");
  hostref::SetLogLevel(1);
  log.WriteStrInfoEx(0, "%s", reinterpret_cast<const char*>(1));  // would crash if formatted
  log.WriteStrInfoEx(1, "kept %d", 1);
  hostref::SetLogLevel(0);
  log.WriteStrInfoEx(0, "detail %d", 0);
  EXPECT_EQ(hostref::LogLines(), (std::vector<std::string>{"1|level|kept 1", "0|level|detail 0"}));
  hostref::ClearLog();
}

// A huge entry (a 50 MB reply, say) is cut, at a character's start, and says how long it was.
TEST(Log, LongEntriesAreCutWhole) {
  hostref::ClearLog();
  std::string wide;
  for (size_t i = 0; i < hostref::kMaxLogEntryBytes; ++i) wide += "\xC3\xA9";  // two bytes each
  CLogFile2 log("cut");
  log.WriteStrInfoEx(0, "a%s", wide.c_str());  // the limit falls inside a character
  const std::vector<std::string> lines = hostref::LogLines();
  ASSERT_EQ(lines.size(), 1u);
  const std::string mark = " ...[cut, " + std::to_string(wide.size() + 1) + " bytes]";
  ASSERT_GE(lines[0].size(), mark.size());
  EXPECT_EQ(lines[0].substr(lines[0].size() - mark.size()), mark);
  const std::string kept = lines[0].substr(6, lines[0].size() - 6 - mark.size());
  EXPECT_LE(kept.size(), hostref::kMaxLogEntryBytes);
  EXPECT_GE(kept.size(), hostref::kMaxLogEntryBytes - 1);
  EXPECT_EQ(kept.size() % 2, 1u) << "no character is split";
  EXPECT_EQ(kept, ("a" + wide).substr(0, kept.size()));
  hostref::ClearLog();
}

TEST(Log, FilesRotateAtTheirLimit) {
  const std::filesystem::path dir = std::filesystem::path(testing::TempDir()) / "hostlog-rotate";
  std::filesystem::remove_all(dir);
  hostref::SetLogDir(dir.string());
  const std::string chunk(hostref::kMaxLogEntryBytes - 100, 'r');
  CLogFile2 log("rotating");
  const size_t entries = 2 * hostref::kMaxLogFileBytes / chunk.size() + 3;
  for (size_t i = 0; i < entries; ++i) log.WriteStrInfoEx(1, "%zu %s", i, chunk.c_str());
  log.WriteStrInfoEx(1, "last");
  hostref::SetLogDir("");
  hostref::ClearLog();

  const auto current = dir / "rotating.log", previous = dir / "rotating.log.1";
  ASSERT_TRUE(std::filesystem::exists(previous));
  EXPECT_LE(std::filesystem::file_size(current), hostref::kMaxLogFileBytes);
  EXPECT_LE(std::filesystem::file_size(previous), hostref::kMaxLogFileBytes);
  EXPECT_GT(std::filesystem::file_size(previous), hostref::kMaxLogFileBytes - 2 * chunk.size()) << "a full file was kept";
  std::ifstream file(current);
  std::string line, lastLine;
  while (std::getline(file, line)) lastLine = line;
  EXPECT_NE(lastLine.find("] last"), std::string::npos) << "the newest entry is in the current file";
  std::filesystem::remove_all(dir);
}

}  // namespace
