// Coordinates as the terminals take them: |degrees| x 10^6 truncated toward
// zero, the hemisphere kept apart, at both hemispheres' edges.
#include <gtest/gtest.h>

#include "pages/areas/area_marker.h"

namespace {

TEST(AreaCoordinate, TruncatedMagnitudeAndHemisphere) {
  const struct {
    const char* text;
    int64_t micro;
    bool negative;
  } cases[] = {
      {"151.2", 151200000, false},     {"-33.5", 33500000, true},
      {"180", 180000000, false},       {"-180", 180000000, true},
      {"90.0000009", 90000000, false}, {"-90.0000009", 90000000, true},
      {"179.9999999", 179999999, false}, {"-179.9999999", 179999999, true},
      {"0.0000009", 0, false},         {"-0.0000009", 0, true},  // rounds to 0, still south or west
      {"-0", 0, false},                {"0.000001", 1, false},
      {"22.533", 22533000, false},     {"+1.5", 1500000, false},
      {" 2.5", 2500000, false},        {"3.25,4", 3250000, false},  // a list: its first number
      {"", 0, false},                  {"abc", 0, false},
      {"1e3", 1000000000, false},      {"-1e300", 4294967295, true},  // no more than a terminal's 32 bits
  };
  for (const auto& c : cases) {
    const area::Coordinate got = area::ParseCoordinate(c.text);
    EXPECT_EQ(got.micro, c.micro) << '"' << c.text << '"';
    EXPECT_EQ(got.negative, c.negative) << '"' << c.text << '"';
  }
}

TEST(AreaCoordinate, ListsSplitAtCommasMissingElementsEmpty) {
  const auto items = area::SplitList("1,,-2");
  EXPECT_EQ(items, (std::vector<std::string>{"1", "", "-2"}));
  EXPECT_EQ(area::ListItem(items, 2), "-2");
  EXPECT_EQ(area::ListItem(items, 3), "");
  EXPECT_EQ(area::SplitList("5").size(), 1u);
}

}  // namespace
