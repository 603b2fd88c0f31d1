// Encodings, integer reading, profile files and JSON helpers.
#include <gtest/gtest.h>
#include <json/json.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>

#include "text/datetime.h"
#include "text/encoding.h"
#include "text/json.h"
#include "text/numbers.h"
#include "text/profile.h"

namespace {

TEST(Encoding, GbkAtTheEdges) {
  struct Case {
    const char* what;
    std::string utf8, gbk;
  };
  const Case toGbk[] = {
      {"Chinese", "中文", "\xD6\xD0\xCE\xC4"},
      {"no mapping: the default character", "a😀b", "a?b"},
      {"invalid input", "a\xFF" "b\xE4\xB8", "a?b??"},
      {"mixed, one bad character each", "中😀文\xFF€", "\xD6\xD0?\xCE\xC4?\x80"},
      {"ASCII unchanged", "line\r\n", "line\r\n"},
  };
  for (const auto& c : toGbk) EXPECT_EQ(txt::Utf8ToGbk(c.utf8), c.gbk) << c.what;
  const Case fromGbk[] = {
      {"Chinese", "中文", "\xD6\xD0\xCE\xC4"},
      {"a cut character", "x\xEF\xBF\xBD", "x\xD6"},
      {"a bad pair costs one byte", "\xEF\xBF\xBD ", "\xFF "},
  };
  for (const auto& c : fromGbk) EXPECT_EQ(txt::GbkToUtf8(c.gbk), c.utf8) << c.what;

  std::string longText;
  for (int i = 0; i < 1000; ++i) longText += "粤B😀";
  const std::string gbk = txt::Utf8ToGbk(longText);
  EXPECT_EQ(gbk.size(), 4000u) << "longer than one conversion buffer";
  EXPECT_EQ(txt::GbkToUtf8(gbk).substr(0, 8), "粤B?粤");
}

TEST(Encoding, Utf16AndCharacters) {
  const std::string text = "粤B😀";
  EXPECT_EQ(txt::Utf16ToUtf8(txt::Utf8ToUtf16(text)), text);
  EXPECT_EQ(txt::Utf8ToUtf16(text).size(), 4u) << "the emoji takes a surrogate pair";
  EXPECT_EQ(txt::Utf8Length(text), 3u);
  EXPECT_EQ(txt::Utf8Left(text, 1), "粤");
  EXPECT_FALSE(txt::IsValidUtf8("\xC3\x28"));
  EXPECT_EQ(txt::SanitizeUtf8("\xC3\x28"), "\xEF\xBF\xBD(");
  EXPECT_EQ(txt::FormEncode("50 %*-._\r\n"), "50+%25*-._%0D%0A");
}

TEST(Numbers, WideToIntegerRule) {
  const std::pair<const char*, int> cases[] = {{"", 0},       {"  42", 42},  {"-7x", -7},  {"+3", 3},
                                               {"x1", 0},      {"\t\n5", 5},  {"- 5", 0},   {"99999999999", 2147483647},
                                               {"-99999999999", -2147483647 - 1}};
  for (const auto& [text, value] : cases) EXPECT_EQ(txt::WToI(text), value) << text;
}

TEST(Profile, WindowsRules) {
  const auto dir = std::filesystem::path(testing::TempDir());
  const std::string utf8 = (dir / "p8.ini").string(), utf16 = (dir / "p16.ini").string();
  std::ofstream(utf8) << "; comment\n[Str]\n  Key = 粤B12345 \nkey=second\nn=-12abc\nq=\" x \"\n"
                         "[other]\nkey=x\n[STR]\nlate=ignored\n";
  const std::u16string wide = txt::Utf8ToUtf16("[STRING]\r\n11004=设置\r\n");
  std::ofstream out16(utf16, std::ios::binary);
  out16 << "\xFF\xFE";
  for (char16_t c : wide) out16.put(static_cast<char>(c & 0xFF)).put(static_cast<char>(c >> 8));
  out16.close();

  EXPECT_EQ(txt::GetPrivateProfileString("STR", "KEY", "d", 100, utf8), "粤B12345") << "first key wins, case folded";
  EXPECT_EQ(txt::GetPrivateProfileString("str", "key", "d", 3, utf8), "粤B") << "cut to the buffer";
  EXPECT_EQ(txt::GetPrivateProfileString("str", "key", "d", 0, utf8), "");
  EXPECT_EQ(txt::GetPrivateProfileString("str", "q", "d", 100, utf8), " x ") << "quotation marks go";
  EXPECT_EQ(txt::GetPrivateProfileString("str", "late", "dflt", 100, utf8), "dflt") << "only the first section";
  EXPECT_EQ(txt::GetPrivateProfileString("str", "none", "dflt", 100, utf8), "dflt");
  EXPECT_EQ(txt::GetPrivateProfileString("str", "key", "dflt", 100, utf8 + ".missing"), "dflt");
  EXPECT_EQ(txt::GetPrivateProfileInt("Str", "n", 5, utf8), -12);
  EXPECT_EQ(txt::GetPrivateProfileInt("Str", "absent", 5, utf8), 5);
  EXPECT_EQ(txt::GetPrivateProfileString("string", "11004", "", 259, utf16), "设置");
}

TEST(Json, ToIntAsRepliesCarryThem) {
  const std::pair<Json::Value, std::optional<int64_t>> cases[] = {
      {Json::Value(-3), -3},
      {Json::Value(Json::UInt64(4294967295u)), 4294967295},
      {Json::Value(Json::UInt64(UINT64_MAX)), std::nullopt},
      {Json::Value(-2.9), -2},
      {Json::Value(1e300), std::nullopt},
      {Json::Value(std::nan("")), std::nullopt},
      {Json::Value(false), 0},
      {Json::Value(" -12 "), -12},
      {Json::Value("+7"), 7},
      {Json::Value("3x"), std::nullopt},
      {Json::Value(""), std::nullopt},
      {Json::Value("-"), std::nullopt},
      {Json::Value("99999999999999999999"), std::nullopt},
      {Json::Value(), std::nullopt},
      {Json::Value(Json::arrayValue), std::nullopt},
  };
  for (const auto& [value, expected] : cases) EXPECT_EQ(txt::JsonToInt(value), expected) << value.toStyledString();
}

TEST(Json, MembersOfReplies) {
  Json::Value v;
  ASSERT_TRUE(txt::ParseJson(R"({"i":-3,"u":4294967295,"s":" 12 ","x":"3x","a":[1]})", v));
  EXPECT_EQ(txt::JsonMemberInt(v, "u", 99), -1) << "truncated to 32 bits";
  EXPECT_EQ(txt::JsonMemberInt(v, "s", 99), 12);
  for (const char* absent : {"x", "a", "missing"}) EXPECT_EQ(txt::JsonMemberInt(v, absent, 99), 99) << absent;
  EXPECT_EQ(txt::JsonMemberInt(v["a"], "i", 99), 99) << "not an object";
  EXPECT_EQ(txt::JsonMemberString(v, "s"), " 12 ");
  EXPECT_EQ(txt::JsonMemberString(v, "i"), "") << "numbers are not texts";

  const std::string bad[] = {"{\"a\":1} x", std::string(100000, '['), "{\"a\":\"\xFF"};
  for (const std::string& text : bad) {
    EXPECT_FALSE(txt::ParseJson(text, v)) << text.substr(0, 10);
    EXPECT_TRUE(v.isNull());
  }
}

TEST(Json, CompactWriterKeepsGbkBytes) {
  Json::Value v;
  v["b"] = txt::Utf8ToGbk("中文");
  v["a"] = 1;
  EXPECT_EQ(txt::WriteCompactJson(v), "{\"a\":1,\"b\":\"\xD6\xD0\xCE\xC4\"}");
  EXPECT_EQ(txt::WriteCompactJson(Json::Value()), "null");
}

TEST(DateTimeText, RepliesAndRequests) {
  struct Case {
    const char* text;
    std::optional<SYSTEMTIME> time;
  };
  const Case cases[] = {
      {"2026-11-01 23:08:30", SYSTEMTIME{2026, 11, 0, 1, 23, 8, 30, 0}},
      {"26/1/2", SYSTEMTIME{2026, 1, 0, 2, 0, 0, 0, 0}},
      {" 99年12月31日 1时2分3秒", SYSTEMTIME{99, 12, 0, 31, 1, 2, 3, 0}},
      {"2026-1", std::nullopt},          {"0-1-1", std::nullopt},
      {"2026-13-01", std::nullopt},      {"2026-12-32", std::nullopt},
      {"2026-12-01 24:00:00", std::nullopt}, {"2026-12-01 23:60:00", std::nullopt},
      {"abc 2026-12-01", std::nullopt},  {"", std::nullopt},
  };
  for (const Case& c : cases) EXPECT_EQ(txt::ParseDateTimeText(c.text), c.time) << c.text;
  EXPECT_EQ(txt::FormatRequestTime(SYSTEMTIME{2026, 1, 0, 2, 3, 4, 5, 0}), "2026-01-02 03:04:05");
}

}  // namespace
