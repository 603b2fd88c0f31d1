// Fields of message bodies: BCD digits and times, words, fixed texts, and the
// errors a short or malformed body raises.
#include <gtest/gtest.h>

#include "jt808/bytes.h"

namespace jt808 {
namespace {

TEST(Bytes, WritesFieldsBigEndianAndReadsThemBack) {
  Writer w;
  w.U8(0x12).U16(0x3456).U32(0x789ABCDE).Bcd("13800138000", 6).BcdTime("2026-11-23 16:05:09").Fixed("ab", 4);
  EXPECT_EQ(Hex(w.Data()), "12 34 56 78 9a bc de 01 38 00 13 80 00 26 11 23 16 05 09 61 62 00 00");
  Reader r(w.Data());
  EXPECT_EQ(r.U8(), 0x12);
  EXPECT_EQ(r.U16(), 0x3456);
  EXPECT_EQ(r.U32(), 0x789ABCDEu);
  EXPECT_EQ(r.Bcd(6), "013800138000");
  EXPECT_EQ(r.BcdTime(), "2026-11-23 16:05:09");
  EXPECT_EQ(r.FixedText(4), "ab");
  EXPECT_TRUE(r.AtEnd());
}

TEST(Bytes, GbkTextsRoundTrip) {
  Writer w;
  w.Gbk("中文");
  EXPECT_EQ(Hex(w.Data()), "d6 d0 ce c4");
  Reader r(w.Data());
  EXPECT_EQ(r.Gbk(4), "中文");
}

TEST(Bytes, RefusesWhatDoesNotFit) {
  struct Case {
    const char* what;
    void (*run)();
  } cases[] = {
      {"too many digits", [] { Writer().Bcd("1234567", 3); }},
      {"a letter among digits", [] { Writer().Bcd("12a4", 2); }},
      {"a time without its seconds", [] { Writer().BcdTime("2026-11-23 16:05"); }},
      {"a word past the end", [] { Reader(Bytes{1}).U16(); }},
      {"a nibble above nine", [] { Reader(Bytes{0x1A}).Bcd(1); }},
      {"odd hexadecimal", [] { FromHex("7e 0"); }},
  };
  for (const Case& c : cases) EXPECT_THROW(c.run(), BodyError) << c.what;
}

}  // namespace
}  // namespace jt808
