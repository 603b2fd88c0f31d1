// The page kit: templates with language texts, checks, descriptions, batch
// ranges, the reply handed to a page once, and hosting.
#include <json/json.h>

#include "command/description.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "command/result_columns.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

using fixture::T;

namespace {

// A query page made with the kit: a template with texts, a get button, and a
// record of the reply hooks.
class KitPage : public CBaseDlg {
 public:
  static constexpr int kTemplate = 9980;
  enum Control : int { kLabel = 5100, kEdit = 5101, kCheck = 5102, kNumber = 5103, kFrame = 5104 };
  enum Text : int { kTextLabel = 12001, kTextCheck = 12002 };
  static plat::DialogTemplate Layout() {
    using namespace row;
    return PageTemplate(kTemplate, {400, 300},
                        {{Box(kFrame, "框", {0, 0, 400, 200}), Static(kLabel, "标签", {10, 10, 100, 30}, kTextLabel),
                          Edit(kEdit, {110, 10, 300, 30}, {.limit = 4}), Number(kNumber, {110, 40, 300, 60}, 0, 255)},
                         {Check(kCheck, "勾选", {10, 70, 100, 90}, kTextCheck), GetButton({300, 260, 390, 290})}});
  }
  KitPage() : CBaseDlg(kTemplate) {
    plat::templates::Register(Layout());
    Bind(ctl::Get, BN_CLICKED, [this] { StartSend(Mode::kGet, 0x8107); });
  }
  void OnAnswer(CommandRequest&, const Json::Value& reply) override { answers.push_back(reply["v"].asInt()); }
  void OnNoAnswer(CommandRequest& request) override { failures.push_back(request.reply); }
  using CBaseDlg::AppendText;
  using CBaseDlg::CurrentBatch;
  using CBaseDlg::SetBatch;
  using CBaseDlg::batchPosition;
  std::vector<int> answers;
  std::vector<std::string> failures;
};

class PageKitTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(page.CreateDlg(&host));
    page.ShowWindow(plat::SW_SHOW);
    HostPage(page, &host.list, 45, PageButtons::kOwn);
  }
  TestHost host;
  KitPage page;
};

TEST_F(PageKitTest, TemplateRowsShowTheirLanguageTextsAndLimits) {
  EXPECT_EQ(page.GetItemText(KitPage::kLabel), T(KitPage::kTextLabel));
  EXPECT_EQ(page.GetItemText(KitPage::kCheck), T(KitPage::kTextCheck));
  EXPECT_EQ(page.GetItemText(KitPage::kFrame), "框") << "a row without a text keeps its caption";
  EXPECT_EQ(page.GetItemText(ctl::Get), T(13312)) << "the page's own buttons take the base's texts";
  EXPECT_EQ(page.Item<plat::Edit>(KitPage::kEdit)->GetLimitText(), 4u);
  auto* number = page.Item<plat::Edit>(KitPage::kNumber);
  EXPECT_EQ(number->GetLimitText(), 3u);
  EXPECT_FALSE(number->UserType("256")) << "a typed number beyond the range is refused";
  const plat::DialogTemplate* dialog = plat::templates::Find(KitPage::kTemplate);
  ASSERT_NE(dialog, nullptr);
  std::vector<int> sections;
  for (const auto& row : dialog->controls) sections.push_back(row.layoutGroup);
  EXPECT_EQ(sections, (std::vector<int>{1, 1, 1, 1, 2, 2}));
}

TEST_F(PageKitTest, DefaultParamControlsAreTheTemplatesInputs) {
  page.EnableParamControls(FALSE);
  for (int id : {KitPage::kEdit, KitPage::kNumber, KitPage::kCheck}) EXPECT_FALSE(page.GetDlgItem(id)->IsWindowEnabled()) << id;
  for (int id : {static_cast<int>(KitPage::kLabel), static_cast<int>(KitPage::kFrame), static_cast<int>(ctl::Get)}) {
    EXPECT_TRUE(page.GetDlgItem(id)->IsWindowEnabled()) << id;
  }
}

TEST_F(PageKitTest, ChecksStopAtTheFirstFailureWithItsTipAndFocus) {
  struct Case {
    const char* what;
    std::string edit;
    int64_t value;
    bool order;
    std::vector<std::string> tips;
    int focus;
  };
  const Case cases[] = {
      {"all good", "x", 255, true, {}, 0},
      {"empty edit first", "", 256, false, {T(12001) + T(12703)}, KitPage::kEdit},
      {"range next", "x", 256, false, {T(12001) + "(0~255)"}, KitPage::kNumber},
      {"own text last", "x", 0, false, {T(12411)}, 0},
  };
  for (const Case& c : cases) {
    hostref::ClearTips();
    page.SetItemText(KitPage::kEdit, c.edit);
    page.GetDlgItem(KitPage::kCheck)->SetFocus();
    const BOOL ok = ParamCheck(page)
                        .Filled(KitPage::kEdit, KitPage::kTextLabel)
                        .AtMost(c.value, 255, KitPage::kTextLabel, KitPage::kNumber)
                        .That(c.order, 12411)
                        .Ok();
    EXPECT_EQ(ok, c.tips.empty() ? TRUE : FALSE) << c.what;
    EXPECT_EQ(TipTexts(), c.tips) << c.what;
    const int focused = c.focus ? c.focus : KitPage::kCheck;
    EXPECT_EQ(plat::Window::GetFocus(), page.GetDlgItem(focused)) << c.what;
  }
}

TEST(Description, JoinsFieldsTheHostsWay) {
  std::string expected;
  AddChineseStringStatus(expected, FormatChineseColon("a", "1"));
  AddChineseStringStatus(expected, "free");
  EXPECT_EQ(Description().Field("a", "1").Text("free").str(), expected);
}

TEST_F(PageKitTest, BatchRangesCoverTheTotal) {
  page.SetBatch(5, 2);
  std::vector<std::pair<int, int>> ranges;
  for (page.batchPosition = 0; page.batchPosition < 5; page.batchPosition += 2) {
    ranges.emplace_back(page.CurrentBatch().first, page.CurrentBatch().count);
  }
  EXPECT_EQ(ranges, (std::vector<std::pair<int, int>>{{0, 2}, {2, 2}, {4, 1}}));
}

// The reply decides whether the page hears an answer; a network status that
// came with a readable reply leaves it readable.
TEST_F(PageKitTest, RepliesReachTheAnswerOrTheFallback) {
  ASSERT_TRUE(hostref::LoadFleet(fixture::PlainFleet(5)));
  hostref::net::SetReply("91001", R"({"v":1})");
  hostref::net::SetReply("91002", R"({"Error":3,"v":2})");
  hostref::net::SetReply("91003", "not json");
  hostref::net::SetReply("91004", R"({"result":"0","v":4})");
  hostref::net::SetReply("91005", "[5]");
  hostref::SetPickerAnswer(std::vector<int>{1, 2, 3, 4, 5});
  page.PickerMode = TRUE;
  hostref::net::SetHeld(true);
  page.Item<plat::Button>(ctl::Get)->Click();
  hostref::RunFor(CBaseDlg::kFirstSendDelayMs);
  hostref::net::ReleaseAll();
  ASSERT_TRUE(Settle());
  EXPECT_EQ(page.answers, (std::vector<int>{1, 4}));
  EXPECT_EQ(page.failures, (std::vector<std::string>{R"({"Error":3,"v":2})", "not json", "[5]"}));
  EXPECT_EQ(host.list.GetItemText(0, kColFunction), FormatStringMgr::Format808FunctionType(45, 0))
      << "the page's rows name the type it was hosted with";
}

TEST_F(PageKitTest, AppendTextGrowsTheBoxInPlace) {
  page.AppendText(KitPage::kEdit, "ab");
  page.AppendText(KitPage::kEdit, "中文");
  EXPECT_EQ(page.GetItemText(KitPage::kEdit), "ab中文") << "code appends past the typing limit, as the system's edit does";
}

}  // namespace
