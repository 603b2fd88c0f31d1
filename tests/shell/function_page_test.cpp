// The function page window: tree contents by device, selection rules, the
// window's buttons and their captions, and the page table.
#include <algorithm>

#include "command/device_caps.h"
#include "command/page_registry.h"
#include "command/result_columns.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "shell/fun_tree.h"
#include "shell/function_page.h"
#include "shell/window_sizes.h"
#include "platform/menu.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

using fixture::T;

namespace {

constexpr int kSetGetType = 9101, kGetOnlyType = 9102, kModeTwoType = 9103;
constexpr int kGetOnlyTemplate = 9992;

class GetOnlyPage : public CBaseDlg {
 public:
  GetOnlyPage() : CBaseDlg(kGetOnlyTemplate) {
    static const plat::templates::Registration reg{
        plat::DialogTemplate{kGetOnlyTemplate, "", {300, 200}, {{ctl::Get, plat::ControlKind::PushButton, "get"}}}};
  }
};

const PageRegistration kTestPages[] = {
    {{kSetGetType}, PageHost::kBoth, [](int) { return std::make_unique<TestPage>(); }},
    {{kGetOnlyType}, PageHost::kFunctionPage, [](int) { return std::make_unique<GetOnlyPage>(); }},
    {{kModeTwoType}, PageHost::kFunctionPage, [](int) {
       auto page = std::make_unique<TestPage>();
       page->ButtonTextMode = 2;
       return page;
     }}};

const char* kFleet = R"({"rights":"all","vehicles":[
  {"name":"P","devices":[{"id":1,"idno":"91001"}]},
  {"name":"N","devices":[{"id":2,"idno":"91002","attrs":{"80":1}}]},
  {"name":"T","devices":[{"id":3,"idno":"91003","attrs":{"81":1}}]},
  {"name":"U","devices":[{"id":4,"idno":"91004","attrs":{"81":1,"117":1}}]}]})";

class FunctionPageTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(kFleet));
    ASSERT_TRUE(window.CreateDlg(&host));
    window.ShowWindow(plat::SW_SHOW);
  }
  // The tree as lines: two blanks of indent per level, then the item text.
  std::vector<std::string> TreeLines() {
    std::vector<std::string> lines;
    plat::TreeView* tree = window.Tree()->Tree();
    for (plat::HTREEITEM item : tree->Walk()) lines.push_back(std::string(2 * tree->Depth(item), ' ') + tree->GetItemText(item));
    return lines;
  }
  void SelectDevice(int devId, int type) {
    SharedDeviceCaps().LoadShared(devId);
    window.SelectFunctionType(type, false);
  }
  plat::Window* Button(int id) { return window.GetDlgItem(id); }

  TestHost host;
  CDlg808FunctionPage window;
};

std::string F(int type, int depth = 1) { return std::string(2 * depth, ' ') + FormatStringMgr::Format808FunctionType(type, 0); }
std::string G(int group) { return "  " + FormatStringMgr::Format808FunctionGroup(group, 0); }

std::vector<std::string> Lines(std::initializer_list<std::vector<std::string>> parts) {
  std::vector<std::string> all;
  for (const auto& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

std::vector<std::string> Items(std::initializer_list<int> types, int depth = 1) {
  std::vector<std::string> lines;
  for (int type : types) lines.push_back(F(type, depth));
  return lines;
}

TEST_F(FunctionPageTest, TreeFollowsTheDevice) {
  const std::vector<std::string> plain = Lines(
      {{FormatStringMgr::Format808FunctionGroup(-1, 808)}, Items({57, 54}), {G(0)}, Items({0, 4, 1, 5, 2, 6, 3, 7}, 2),
       {G(10)}, Items({8, 9}, 2), Items({10, 12, 13, 14, 15, 16, 17, 18, 19, 45, 52, 20}), {G(58)},
       Items({59, 60, 61, 62}, 2), {G(63)}, Items({64, 65, 66, 67, 68, 69}, 2), Items({22}), {G(27)},
       Items({27, 28, 29, 33, 30}, 2), Items({31})});
  SelectDevice(1, 12);
  EXPECT_EQ(TreeLines(), plain);
  SelectDevice(2, 12);
  EXPECT_EQ(TreeLines(), plain) << "the 2019 edition does not change the functions";

  const auto taxi = [](std::initializer_list<int> phone, std::vector<std::string> tail) {
    return Lines({{FormatStringMgr::Format808FunctionGroup(-1, 905)}, Items({57, 56}), {G(10)}, Items({55}, 2),
                  Items({10, 12, 13, 14}), Items(phone), Items({19, 22, 27}), tail});
  };
  SelectDevice(3, 12);
  EXPECT_EQ(TreeLines(), taxi({17, 18}, {}));
  SelectDevice(4, 12);
  EXPECT_EQ(TreeLines(), taxi({1017, 1018}, Items({105})));

  hostref::SetPrivilege(651, false);
  SelectDevice(1, 12);
  EXPECT_EQ(TreeLines(), Lines({{FormatStringMgr::Format808FunctionGroup(-1, 808)}, {G(10)}, Items({8, 9}, 2),
                                Items({10, 12, 19, 45, 52, 20})}));
  hostref::SetPrivilege(651, true);
}

TEST_F(FunctionPageTest, SelectionRules) {
  SelectDevice(1, 58);
  plat::TreeView* tree = window.Tree()->Tree();
  EXPECT_EQ(static_cast<int>(tree->GetItemData(tree->GetSelectedItem())), 59);
  EXPECT_EQ(window.CurrentType(), 59);
  SelectDevice(1, 63);
  EXPECT_EQ(window.CurrentType(), 64);

  // A click on a group selects its first function.
  plat::HTREEITEM group = 0;
  for (plat::HTREEITEM item : tree->Walk()) {
    if (tree->GetItemText(item) == FormatStringMgr::Format808FunctionGroup(27, 0)) group = item;
  }
  ASSERT_NE(group, 0);
  tree->UserSelect(group);
  EXPECT_EQ(window.CurrentType(), 27);
  EXPECT_EQ(host.messages.back(), msg::FunctionChosen);
}

TEST_F(FunctionPageTest, ButtonsFollowThePage) {
  window.ShowFunction(kSetGetType);
  const RECT set = Button(ctl::Set)->GetRect(), get = Button(ctl::Get)->GetRect();
  EXPECT_TRUE(Button(ctl::Set)->IsShown() && Button(ctl::Cancel)->IsShown() && Button(ctl::Get)->IsShown());
  EXPECT_FALSE(Button(ctl::BatchGet)->IsShown());
  EXPECT_EQ(get.right, set.left - plat::s(22)) << "get steps left of set";
  EXPECT_EQ(Button(ctl::Set)->GetWindowText(), T(11004));

  window.ShowFunction(kGetOnlyType);
  EXPECT_FALSE(Button(ctl::Set)->IsShown() || Button(ctl::Cancel)->IsShown());
  EXPECT_TRUE(Button(ctl::Get)->IsShown() && Button(ctl::BatchGet)->IsShown());
  EXPECT_EQ(Button(ctl::Get)->GetRect(), set) << "get takes the set button's place";

  window.ShowFunction(kModeTwoType);
  EXPECT_EQ(Button(ctl::Set)->GetWindowText(), T(13464));
  EXPECT_EQ(Button(ctl::Cancel)->GetWindowText(), T(11055));
  window.ShowFunction(kSetGetType);
  EXPECT_EQ(Button(ctl::Cancel)->GetWindowText(), T(11015));
  EXPECT_EQ(window.FindOrCreatePage(kModeTwoType, false)->IsShown(), false);
  EXPECT_EQ(window.FindOrCreatePage(70000, true), nullptr);
}

TEST_F(FunctionPageTest, BatchButtonSendsThroughThePickerAndMirrorsTheSend) {
  window.ShowFunction(kSetGetType);
  auto* page = static_cast<TestPage*>(window.FindOrCreatePage(kSetGetType, false));
  hostref::SetPickerAnswer(std::vector<int>{1, 2, 3});
  static_cast<plat::Button*>(Button(ctl::Cancel))->Click();
  plat::MessageLoop::Instance().RunPending();
  EXPECT_TRUE(page->PickerMode);
  EXPECT_FALSE(Button(ctl::Set)->IsWindowEnabled()) << "the window mirrors the page's disabled buttons";
  ASSERT_TRUE(Settle());
  EXPECT_TRUE(Button(ctl::Set)->IsWindowEnabled());
  EXPECT_EQ(window.ResultList()->GetItemCount(), 3);
  EXPECT_EQ(window.ResultList()->GetItemText(0, kColFunction), FormatStringMgr::Format808FunctionType(kSetGetType, 0));

  static_cast<plat::Button*>(Button(ctl::Set))->Click();
  plat::MessageLoop::Instance().RunPending();
  EXPECT_FALSE(page->PickerMode) << "the plain button sends to the current vehicle";
  EXPECT_EQ(TipTexts().back(), T(12812));
}

TEST_F(FunctionPageTest, ResultListMenuAndDoubleClick) {
  CXListCtrl* list = window.ResultList();
  ASSERT_EQ(list->GetColumnCount(), 8);
  EXPECT_EQ(list->GetColumn(1).caption, T(13421));
  std::vector<plat::menu::Entry> shown;
  plat::menu::SetObserver([&](const std::vector<plat::menu::Entry>& entries) { shown = entries; });
  list->UserRightClick(-1);
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(shown[0].text, T(11028));
  EXPECT_FALSE(shown[0].enabled || shown[1].enabled) << "both entries are disabled on an empty list";
  plat::menu::SetObserver(nullptr);

  // A full row: the six visible columns, then the empty one and the status word.
  list->InsertItem(0, "1");
  for (int c = 1; c < list->GetColumnCount(); ++c) list->SetItemText(0, c, "cell" + std::to_string(c));
  list->UserDoubleClick(0);
  std::string visible;
  for (int c = 0; c < 6; ++c) visible += FormatChineseColon(list->GetColumn(c).caption, list->GetItemText(0, c)) + "\r\n";
  EXPECT_EQ(TipTexts().back(), visible) << "one line per visible column, in order, and nothing of the hidden two";
  plat::menu::PushChoice(32772);
  list->UserRightClick(0);
  EXPECT_EQ(list->GetItemCount(), 0);
}

TEST_F(FunctionPageTest, NoParameterPanelShowsItsTextOverThePageArea) {
  constexpr int kPointQueryType = 57;  // a function without parameters
  window.ShowFunction(kPointQueryType);
  CDlgNotParam* panel = window.NoParamPanel();
  ASSERT_TRUE(panel->IsShown());
  EXPECT_FALSE(window.FindOrCreatePage(kPointQueryType, false)->IsShown()) << "the page itself stays hidden";
  plat::Window* text = panel->GetDlgItem(CDlgNotParam::kTextId);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(text->GetWindowText(), T(11058));
  EXPECT_EQ(panel->OnCtlColor(text).text, RGB(0, 100, 0));

  plat::SetDpi(120);
  window.Layout();
  plat::SetDpi(96);
  const RECT area = window.PageRect();
  EXPECT_EQ(panel->GetRect(), area) << "the panel fills the page area after every layout";
  EXPECT_EQ(text->GetRect(), (RECT{0, 0, area.Width(), area.Height()})) << "the text fills the panel";
}

TEST_F(FunctionPageTest, LayoutScalesWithTheScreen) {
  plat::SetDpi(120);  // s(n) = 1.25 n rounded, t(n) the mean of n and s(n): t(30) = 34
  window.Layout();
  EXPECT_EQ(window.GetRect(), (RECT{1, 34, 799, 591})) << "inside the host: 1 in, t(30) down, 9 up";
  const int W = 798, H = 557;
  EXPECT_EQ(window.Tree()->GetRect(), (RECT{1, 1, 1 + 375 - 2, 1 + H - 2}));
  EXPECT_EQ(window.GetDlgItem(4400)->GetRect(), (RECT{376, H - 338 + 1, W - 10, H - 8}));
  EXPECT_EQ(window.GetDlgItem(4399)->GetRect(), (RECT{376 + 10, H - 337 + 25, W - 20, H - 18}));
  EXPECT_EQ(window.PageRect(), (RECT{376, 1, W - 10, H - 48 - 338 - 1}));
  const RECT batch = window.GetDlgItem(ctl::Cancel)->GetRect(), set = window.GetDlgItem(ctl::Set)->GetRect();
  EXPECT_EQ(batch.right, W - 125);
  EXPECT_EQ(batch.top, window.PageRect().bottom + 10 + 1);
  EXPECT_EQ(set.right, batch.left - 28) << "the set button stands s(22) left of the batch buttons";
  plat::SetDpi(96);
}

TEST(WindowSizes, ByFunctionType) {
  struct Case {
    int type, height, width;
  };
  const Case cases[] = {{0, 780, 815},   {55, 780, 815},  {1017, 550, 815}, {8, 550, 815},   {36, 550, 700},
                        {34, 340, 450},  {54, 340, 450},  {12, 670, 815},   {71, 460, 450},  {32, 500, 450},
                        {35, 170, 450},  {48, 760, 815},  {50, 410, 450},   {39, 690, 700},  {45, 690, 700},
                        {100, 390, 461}, {103, 530, 692}, {31, 690, 815},   {-1, 690, 815},  {105, 690, 815}};
  for (const Case& c : cases) {
    EXPECT_EQ(PreferredWindowHeight(c.type), c.height) << c.type;
    EXPECT_EQ(PreferredWindowWidth(c.type), c.width) << c.type;
  }
}

}  // namespace
