// The provincial transparent-data pages: parameter objects of set and query,
// commas kept out of the notes, the waybill's period check, descriptions.
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "pages/regional/transparent_pages.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using R = CTransparentRecordPage;
using D = CDlgHBDriverIdentity;
using W = CDlgHBElectronicWaybill;

namespace {

class TransparentDataTest : public TerminalWorld {
 protected:
  static void SetTime(PageHarness& page, int date, int time, SYSTEMTIME value) {
    page.Page().Item<plat::DateTimePicker>(date)->SetTime(value);
    page.Page().Item<plat::DateTimePicker>(time)->SetTime(value);
  }
};

TEST_F(TransparentDataTest, TextPages) {
  struct Case {
    int type;
    std::string typed, param;
    int label;
  };
  const Case cases[] = {
      {CDlgHBDemoLight::kFunctionType, "空车", "{\"SCNOTE\":\"\xBF\xD5\xB3\xB5\",\"SCRAPYARD\":1,\"SCTYPE\":199}", 13810},
      {CDlgHBExternalScreen::kFunctionType, "50%", R"({"SCNOTE":"50%25","SCRAPYARD":1,"SCTYPE":194})", 13811},
      {CDlgHBExternalScreen::kFunctionType, "", R"({"SCRAPYARD":1,"SCTYPE":194})", 13811},
  };
  for (const Case& c : cases) {
    PageHarness page(c.type);
    page.UseDevice(1);
    page.Type(CTransparentTextPage::kText, c.typed);
    EXPECT_EQ(page.Send(ctl::Set), c.param) << c.type << " " << c.typed;
    EXPECT_EQ(page.Cell(0, kColDescription), FormatChineseColon(T(c.label), c.typed)) << c.type;
  }
  EXPECT_EQ(hostref::terminals::TransparentDataOf("91001").front().note, "空车");
}

TEST_F(TransparentDataTest, QueriesByIds) {
  struct Case {
    int type;
    std::string ids, param;
  };
  const Case cases[] = {
      {D::kFunctionType, "5;7;9", R"({"SCID":5,"SCNOTE":"7;9","SCRAPYARD":1,"SCTYPE":197})"},
      {D::kFunctionType, "", R"({"SCID":-1,"SCRAPYARD":1,"SCTYPE":197})"},
      {W::kFunctionType, ";12;;", R"({"SCID":12,"SCRAPYARD":1,"SCTYPE":193})"},
  };
  for (const Case& c : cases) {
    PageHarness page(c.type);
    page.UseDevice(1);
    page.Type(R::kQueryIds, c.ids);
    EXPECT_EQ(page.Send(ctl::Get), c.param) << c.ids;
    EXPECT_EQ(page.Cell(0, kColDescription), FormatChineseColon(T(R::kTextId), c.ids)) << c.ids;
  }
}

TEST_F(TransparentDataTest, DriverIdentityRecord) {
  PageHarness page(D::kFunctionType);
  page.UseDevice(1);
  page.Type(R::kId, "42");
  page.Type(D::kUserId, "U,1");
  page.Type(D::kUserName, "Li, Ming");
  page.Type(D::kFeature, "F9");
  EXPECT_EQ(page.Send(ctl::Set), R"({"SCBUSINESS":0,"SCID":42,"SCNOTE":"U1,Li Ming,F9","SCOPER":1,"SCRAPYARD":1,"SCTYPE":196})")
      << "no operation checked adds; commas leave the user id and name";
  page.Page().SetChecked(R::kClear, true);
  page.Send(ctl::Set);
  EXPECT_EQ(page.Cell(0, kColDescription),
            "<13813>：42，<13814>：<13817>，<13818>：U1，<13819>：Li Ming，<13820>：F9");
  const auto kept = hostref::terminals::TransparentDataOf("91001");
  ASSERT_EQ(kept.size(), 2u);
  EXPECT_EQ(kept[1].operation, R::kOpClear);
  EXPECT_EQ(kept[1].id, 42);
}

TEST_F(TransparentDataTest, WaybillRecordAndPeriod) {
  PageHarness page(W::kFunctionType);
  page.UseDevice(1);
  EXPECT_NE(page.Send(ctl::Set).find("\"SCNOTE\":\"0,23,2026-11-23,2026-11-23,,,,,\""), std::string::npos)
      << "the period starts as the whole of today";
  page.Page().SetChecked(R::kDelete, true);
  SetTime(page, W::kStartDate, W::kStartTime, SYSTEMTIME{2026, 3, 0, 5, 7, 0, 0, 0});
  SetTime(page, W::kEndDate, W::kEndTime, SYSTEMTIME{2026, 4, 0, 6, 18, 30, 0, 0});
  page.Type(W::kSite, "North, yard");
  page.Type(W::kProject, "P1");
  EXPECT_EQ(page.Send(ctl::Set),
            R"({"SCBUSINESS":0,"SCID":0,"SCNOTE":"7,18,2026-03-05,2026-04-06,North yard,,,,P1","SCOPER":2,"SCRAPYARD":1,"SCTYPE":192})");
  struct Case {
    const char* what;
    SYSTEMTIME end;
    bool sent;
  };
  const Case cases[] = {{"equal times", SYSTEMTIME{2026, 3, 0, 5, 7, 0, 0, 0}, false},
                        {"a second earlier", SYSTEMTIME{2026, 3, 0, 5, 6, 59, 59, 0}, false},
                        {"a second later", SYSTEMTIME{2026, 3, 0, 5, 7, 0, 1, 0}, true}};
  for (const Case& c : cases) {
    hostref::ClearTips();
    SetTime(page, W::kEndDate, W::kEndTime, c.end);
    EXPECT_EQ(!page.Send(ctl::Set).empty(), c.sent) << c.what;
    EXPECT_EQ(TipTexts().empty(), c.sent) << c.what;
  }
  EXPECT_EQ(TipTexts(), std::vector<std::string>());
  SetTime(page, W::kEndDate, W::kEndTime, SYSTEMTIME{2020, 1, 0, 1, 0, 0, 0, 0});
  EXPECT_NE(page.Send(ctl::Get), "") << "a query does not look at the period";
}

}  // namespace
