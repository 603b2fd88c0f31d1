// Formatting helpers and the host texts read from a language file.
#include <gtest/gtest.h>

#include <fstream>

#include "host/hostcore.h"
#include "host/ref/hostref.h"

namespace {

TEST(Format, JoinsLabelsAndItems) {
  EXPECT_EQ(FormatChineseColon("速度", "60"), "速度：60");
  std::string status;
  AddChineseStringStatus(status, "a");
  AddChineseStringStatus(status, "b");
  EXPECT_EQ(status, "a，b");
  std::string list;
  for (const char* item : {"", "1", "3"}) AddStringStatus(list, item, ";");
  EXPECT_EQ(list, "1;3") << "an empty first item leaves no separator";
}

TEST(Format, NumbersTimesAndFullWidth) {
  const struct {
    const char* format;
    const char* expected;
  } cases[] = {{"(%d)", "(42)"}, {"100% sure", "100% sure"}, {"%s %n %d %d", "%s %n 42 %d"}, {"", ""}};
  for (const auto& c : cases) EXPECT_EQ(FormatStringInt(c.format, 42), c.expected) << c.format;
  EXPECT_EQ(FormatSystemTime(SYSTEMTIME{2026, 3, 0, 7, 8, 9, 5, 0}), "2026-03-07 08:09:05");
  EXPECT_EQ(GetChineseChar("A1 ~!"), "Ａ１　～！");
  EXPECT_EQ(GetChineseChar("中"), "中");
}

TEST(Format, HostTextsFromALanguageFileWithFallbacks) {
  const std::string path = testing::TempDir() + "host-texts.ini";
  std::ofstream(path) << "\xEF\xBB\xBF[function]\n12 = 文本信息\n[GROUP]\n0=位置\n-1.905=出租车\n[ERROR]\n7=失败\n";
  ASSERT_TRUE(hostref::LoadHostTexts(path));
  EXPECT_EQ(FormatStringMgr::Format808FunctionType(12, 0), "文本信息");
  EXPECT_EQ(FormatStringMgr::Format808FunctionType(13, 0), "Function 13");
  EXPECT_EQ(FormatStringMgr::Format808FunctionGroup(0, 0), "位置");
  EXPECT_EQ(FormatStringMgr::Format808FunctionGroup(-1, 905), "出租车");
  EXPECT_EQ(FormatStringMgr::Format808FunctionGroup(-1, 808), "Group -1.808");
  EXPECT_EQ(IDIRErrorString(7), "失败");
  EXPECT_EQ(IDIRErrorString(110), "Request timed out");
  EXPECT_FALSE(hostref::LoadHostTexts(path + ".missing"));
  EXPECT_EQ(IDIRErrorString(7), "Error 7");
  EXPECT_EQ(IDIRErrorString(101), "Device offline");
}

}  // namespace
