// Date-time texts of replies and requests.
#include <gtest/gtest.h>

#include <optional>

#include "text/datetime.h"

namespace {

TEST(DateTimeText, ReadsUpToSixNumbersBetweenAnySeparators) {
  struct Case {
    const char* what;
    const char* text;
    std::optional<SYSTEMTIME> expected;  // day of week and milliseconds stay 0
  };
  const auto t = [](WORD y, WORD mo, WORD d, WORD h, WORD mi, WORD s) { return SYSTEMTIME{y, mo, 0, d, h, mi, s, 0}; };
  const Case cases[] = {
      {"request form", "2024-03-05 07:08:09", t(2024, 3, 5, 7, 8, 9)},
      {"two-digit year and single digits", "24-3-5 7:8:9", t(2024, 3, 5, 7, 8, 9)},
      {"three fields: midnight", "2024/03/05", t(2024, 3, 5, 0, 0, 0)},
      {"runs of separators and letters", "2024年03月05日 07时08分09秒", t(2024, 3, 5, 7, 8, 9)},
      {"year 1 becomes 2001", "1-1-1", t(2001, 1, 1, 0, 0, 0)},
      {"year 98 becomes 2098", "98-12-31 23:59:59", t(2098, 12, 31, 23, 59, 59)},
      {"year 99 stays", "99-1-1", t(99, 1, 1, 0, 0, 0)},
      {"only two fields", "2024-03", std::nullopt},
      {"year 0", "0000-01-01 00:00:00", std::nullopt},
      {"month 13", "2024-13-01", std::nullopt},
      {"month 0", "2024-00-01", std::nullopt},
      {"day 32", "2024-01-32", std::nullopt},
      {"day 0", "2024-01-00", std::nullopt},
      {"hour 24", "2024-01-01 24:00:00", std::nullopt},
      {"minute 60", "2024-01-01 00:60:00", std::nullopt},
      {"second 60", "2024-01-01 00:00:60", std::nullopt},
      {"negative year", "-2024-01-01", std::nullopt},
      {"leading text", "at 2024-01-01", std::nullopt},
      {"empty", "", std::nullopt},
  };
  for (const Case& c : cases) {
    const auto read = txt::ParseDateTimeText(c.text);
    ASSERT_EQ(read.has_value(), c.expected.has_value()) << c.what;
    if (read) {
      EXPECT_EQ(*read, *c.expected) << c.what << ": " << txt::FormatRequestTime(*read);
    }
  }
}

TEST(DateTimeText, RequestTimeIsNineteenCharacters) {
  EXPECT_EQ(txt::FormatRequestTime({2024, 3, 0, 5, 7, 8, 9, 0}), "2024-03-05 07:08:09");
  EXPECT_EQ(txt::FormatRequestTime({}), "0000-00-00 00:00:00");
}

}  // namespace
