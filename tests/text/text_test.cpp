// Encodings, integer reading, profile files and JSON helpers.
#include <gtest/gtest.h>
#include <json/json.h>

#include <filesystem>
#include <fstream>

#include "text/encoding.h"
#include "text/json.h"
#include "text/numbers.h"
#include "text/profile.h"

namespace {

TEST(Encoding, GbkAtTheEdges) {
  EXPECT_EQ(txt::Utf8ToGbk("中文"), "\xD6\xD0\xCE\xC4");
  EXPECT_EQ(txt::GbkToUtf8("\xD6\xD0\xCE\xC4"), "中文");
  EXPECT_EQ(txt::Utf8ToGbk("a😀b"), "a?b") << "no mapping: the default character";
  EXPECT_EQ(txt::Utf8ToGbk("a\xFF" "b"), "a?b") << "invalid input";
  EXPECT_EQ(txt::Utf8ToGbk("line\r\n"), "line\r\n");
  EXPECT_EQ(txt::GbkToUtf8("x\xD6"), "x\xEF\xBF\xBD") << "a cut character";
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
  std::ofstream(utf8) << "; comment\n[Str]\n  Key = 粤B12345 \nkey=second\nn=-12abc\n[other]\nkey=x\n";
  const std::u16string wide = txt::Utf8ToUtf16("[STRING]\r\n11004=设置\r\n");
  std::ofstream out16(utf16, std::ios::binary);
  out16 << "\xFF\xFE";
  for (char16_t c : wide) out16.put(static_cast<char>(c & 0xFF)).put(static_cast<char>(c >> 8));
  out16.close();

  EXPECT_EQ(txt::GetPrivateProfileString("STR", "KEY", "d", 100, utf8), "粤B12345") << "first key wins, case folded";
  EXPECT_EQ(txt::GetPrivateProfileString("str", "key", "d", 3, utf8), "粤B") << "cut to the buffer";
  EXPECT_EQ(txt::GetPrivateProfileString("str", "none", "dflt", 100, utf8), "dflt");
  EXPECT_EQ(txt::GetPrivateProfileString("str", "key", "dflt", 100, utf8 + ".missing"), "dflt");
  EXPECT_EQ(txt::GetPrivateProfileInt("Str", "n", 5, utf8), -12);
  EXPECT_EQ(txt::GetPrivateProfileInt("Str", "absent", 5, utf8), 5);
  EXPECT_EQ(txt::GetPrivateProfileString("string", "11004", "", 259, utf16), "设置");
}

TEST(Json, IntegersAsRepliesCarryThem) {
  Json::Value v;
  ASSERT_TRUE(txt::ParseJson(R"({"i":-3,"u":4294967295,"r":2.9,"b":true,"s":" 12 ","x":"3x","n":null,"a":[1]})", v));
  EXPECT_EQ(txt::JsonMemberInt(v, "i", 99), -3);
  EXPECT_EQ(txt::JsonMemberInt(v, "u", 99), -1);
  EXPECT_EQ(txt::JsonMemberInt(v, "r", 99), 2);
  EXPECT_EQ(txt::JsonMemberInt(v, "b", 99), 1);
  EXPECT_EQ(txt::JsonMemberInt(v, "s", 99), 12);
  for (const char* absent : {"x", "n", "a", "missing"}) EXPECT_EQ(txt::JsonMemberInt(v, absent, 99), 99) << absent;
  EXPECT_EQ(txt::JsonMemberString(v, "s"), " 12 ");
  EXPECT_EQ(txt::JsonMemberString(v, "i"), "");
  EXPECT_FALSE(txt::ParseJson("{\"a\":1} x", v));
  EXPECT_FALSE(txt::ParseJson(std::string(100000, '['), v)) << "too deep";
}

TEST(Json, CompactWriterKeepsGbkBytes) {
  Json::Value v;
  v["b"] = txt::Utf8ToGbk("中文");
  v["a"] = 1;
  EXPECT_EQ(txt::WriteCompactJson(v), "{\"a\":1,\"b\":\"\xD6\xD0\xCE\xC4\"}");
  EXPECT_EQ(txt::WriteCompactJson(Json::Value()), "null");
}

}  // namespace
