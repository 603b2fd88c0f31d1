// The driving-ban and night-driving pages: the rule they send, the dates they
// refuse, the percentage box, and the rule a query shows back.
#include <gtest/gtest.h>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/settings/driving_rules.h"
#include "pages/settings/settings_world.h"

using fixture::T;

namespace {
using R = CDrivingRulePage;
using Ban = CDlgLimitdrive;
using Night = CDlgNightdrive;

class DrivingRulesTest : public SettingsWorld {
 protected:
  static void Period(PageHarness& p, SYSTEMTIME begin, SYSTEMTIME end) {
    Pick(p, R::kBeginDate, begin);
    Pick(p, R::kEndDate, end);
    Pick(p, R::kBeginTime, begin);
    Pick(p, R::kEndTime, end);
  }
};

std::string Item(int label, const std::string& value) { return FormatChineseColon(T(label), value); }
std::string Span(const std::string& begin, const std::string& end) {
  return Item(12408, begin) + "  -  " + Item(12409, end);
}
std::string Items(std::initializer_list<std::string> items) {
  std::string text;
  for (const auto& item : items) AddChineseStringStatus(text, item);
  return text;
}

TEST_F(DrivingRulesTest, SetSendsTheRuleAsTimeTexts) {
  struct Case {
    const char* what;
    int type;
    bool noDates, noHours;
    std::string param;
  };
  const Case cases[] = {
      {"ban: period and hours", Ban::kFunctionType, false, false,
       R"({"BTM":"2024-01-02 22:00:00","ETM":"2024-02-03 06:00:00","SEC":300,"SPD":60})"},
      {"ban without dates: hours only", Ban::kFunctionType, true, false,
       R"({"BTM":"0000-00-00 22:00:00","ETM":"0000-00-00 06:00:00","SEC":300,"SPD":60})"},
      {"ban without hours still sends them", Ban::kFunctionType, false, true,
       R"({"BTM":"2024-01-02 22:00:00","ETM":"2024-02-03 06:00:00","SEC":300,"SPD":60})"},
      {"night: period and hours", Night::kFunctionType, false, false,
       R"({"BTM":"2024-01-02 22:00:00","ETM":"2024-02-03 06:00:00","LMT":300,"PCT":60})"},
      {"night without hours", Night::kFunctionType, false, true,
       R"({"BTM":"2024-01-02 00:00:00","ETM":"2024-02-03 00:00:00","LMT":300,"PCT":60})"},
      {"night without either", Night::kFunctionType, true, true,
       R"({"BTM":"0000-00-00 00:00:00","ETM":"0000-00-00 00:00:00","LMT":300,"PCT":60})"},
  };
  for (const Case& c : cases) {
    PageHarness page(c.type);
    page.UseDevice(1);
    Period(page, Time(2024, 1, 2, 22), Time(2024, 2, 3, 6));
    if (c.noDates) page.Click(R::kNoDates);
    if (c.noHours) page.Click(R::kNoHours);
    EXPECT_EQ(page.Enabled(R::kBeginDate), !c.noDates) << c.what;
    EXPECT_EQ(page.Enabled(R::kEndTime), !c.noHours) << c.what;
    const bool ban = c.type == Ban::kFunctionType;
    const int first = ban ? int{Ban::kDriveTimeEdit} : int{Night::kThresholdEdit};
    const int second = ban ? int{Ban::kSpeedEdit} : int{Night::kPercentEdit};
    page.Type(first, ban ? "5" : "300");
    page.Type(second, "60");
    EXPECT_EQ(page.Send(ctl::Set), c.param) << c.what;
    EXPECT_EQ(page.Cell(0, kColResult), T(11008)) << c.what;
    // The boxes keep their pickers disabled once the send is over.
    EXPECT_EQ(page.Enabled(R::kBeginDate), !c.noDates) << c.what;
  }
}

TEST_F(DrivingRulesTest, YearsOutsideTwoThousandToTwentyOneHundredAreRefused) {
  struct Case {
    SYSTEMTIME begin, end;
    std::vector<std::string> tips;
  };
  const Case cases[] = {
      {Time(1999, 12, 31), Time(2024, 1, 1), {T(11121)}},
      {Time(2024, 1, 1), Time(2101, 1, 1), {T(11122)}},
      {Time(1999, 1, 1), Time(2101, 1, 1), {T(11121)}},
      {Time(2000, 1, 1), Time(2100, 12, 31), {}},
  };
  for (int type : {Ban::kFunctionType, Night::kFunctionType}) {
    for (const Case& c : cases) {
      PageHarness page(type);
      page.UseDevice(1);
      hostref::ClearTips();
      Period(page, c.begin, c.end);
      const std::string what = "type " + std::to_string(type) + " begin " + std::to_string(c.begin.wYear) + " end " +
                               std::to_string(c.end.wYear);
      EXPECT_EQ(page.Send(ctl::Set).empty(), !c.tips.empty()) << what;
      EXPECT_EQ(TipTexts(), c.tips) << what;
    }
  }
  // Without a period the years are not looked at.
  PageHarness page(Ban::kFunctionType);
  page.UseDevice(1);
  Period(page, Time(1999, 1, 1), Time(1999, 1, 1));
  page.Click(R::kNoDates);
  EXPECT_NE(page.Send(ctl::Set), "");
}

TEST_F(DrivingRulesTest, PercentStaysWithinZeroToOneHundred) {
  PageHarness page(Night::kFunctionType);
  const std::pair<const char*, const char*> cases[] = {{"150", "100"}, {"-5", "0"}, {"99", "99"}, {"100", "100"}};
  for (auto [typed, shown] : cases) {
    page.Type(Night::kPercentEdit, typed);
    EXPECT_EQ(page.Text(Night::kPercentEdit), shown) << typed;
  }
}

TEST_F(DrivingRulesTest, AQueryShowsTheRuleTheTerminalHolds) {
  PageHarness setter(Ban::kFunctionType);
  setter.UseDevice(1);
  Period(setter, Time(2024, 1, 2, 22), Time(2024, 2, 3, 6, 30));
  setter.Type(Ban::kDriveTimeEdit, "5");
  setter.Type(Ban::kSpeedEdit, "60");
  setter.Send(ctl::Set);
  const std::string described = Items({Item(11104, Span("2024:01:02", "2024:02:03")),
                                       Item(11105, Span("22:00:00", "06:30:00")), Item(11054, "5" + T(11053)),
                                       Item(11048, "60" + T(11049))});
  EXPECT_EQ(setter.Cell(0, kColDescription), described);

  PageHarness reader(Ban::kFunctionType);
  reader.UseDevice(1);
  reader.Click(R::kNoDates);
  EXPECT_EQ(reader.Send(ctl::Get), "");
  EXPECT_EQ(hostref::net::Sent().at(0).param, "");
  EXPECT_EQ(reader.Cell(0, kColResult), T(11011));
  EXPECT_EQ(reader.Cell(0, kColDescription), described);
  EXPECT_FALSE(reader.Checked(R::kNoDates));
  EXPECT_TRUE(reader.Enabled(R::kBeginDate));
  EXPECT_EQ(reader.Text(R::kEndDate), "2024-02-03");
  EXPECT_EQ(reader.Text(R::kEndTime), "06:30:00");
  EXPECT_EQ(reader.Text(Ban::kDriveTimeEdit), "5");
  EXPECT_EQ(reader.Text(Ban::kSpeedEdit), "60");
}

TEST_F(DrivingRulesTest, RepliesWithoutARuleShowItAbsent) {
  struct Case {
    const char* what;
    std::string reply;
    bool noDates, noHours;
    std::string description;
  };
  const std::string numbers = Items({Item(11106, "0" + T(11108)), Item(11107, "0%")});
  const std::string absent = Items({Item(11104, T(11109)), Item(11105, T(11110)), numbers});
  const Case cases[] = {
      {"a terminal without a rule", "", true, true, absent},
      {"a key missing", R"({"BTM":"2024-01-01 00:00:00","ETM":"2024-01-02 00:00:00","LMT":5})", true, true, absent},
      {"an error", R"({"Error":0,"result":1,"BTM":"2024-01-01 00:00:00"})", true, true, absent},
      {"not JSON", "{\"BTM\":", true, true, absent},
      {"dates at midnight", R"({"BTM":"2024-01-01 00:00:00","ETM":"2024-01-02 00:00:00","LMT":30,"PCT":"80"})", false,
       true,
       Items({Item(11104, Span("2024:01:01", "2024:01:02")), Item(11105, T(11110)), Item(11106, "30" + T(11108)),
              Item(11107, "80%")})},
  };
  for (const Case& c : cases) {
    PageHarness page(Night::kFunctionType);
    page.UseDevice(1);
    if (!c.reply.empty()) hostref::net::SetReply(kDevice1, c.reply);
    page.Send(ctl::Get);
    EXPECT_EQ(page.Cell(0, kColDescription), c.description) << c.what;
    EXPECT_EQ(page.Checked(R::kNoDates), c.noDates) << c.what;
    EXPECT_EQ(page.Checked(R::kNoHours), c.noHours) << c.what;
    EXPECT_EQ(page.Enabled(R::kBeginTime), !c.noHours) << c.what;
  }
}

}  // namespace
