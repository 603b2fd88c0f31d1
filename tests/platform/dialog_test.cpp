// Dialogs from templates run modally: each takes the next queued user action.
#include <gtest/gtest.h>

#include "platform/dialog.h"
#include "platform/loop.h"

namespace {
using plat::ControlKind;

constexpr int kTemplate = 7000;
constexpr int kNameEdit = 100;
const plat::DialogTemplate kAsk{
    kTemplate, "ask", {200, 100}, {{kNameEdit, ControlKind::Edit, ""}, {IDOK, ControlKind::PushButton, "ok"}}};
const plat::templates::Registration kReg{kAsk};

class ModalTest : public ::testing::Test {
 protected:
  void SetUp() override { plat::modal::Clear(); }
  void TearDown() override { plat::modal::Clear(); }
};

TEST_F(ModalTest, RunsTheQueuedActionAndReturnsItsResult) {
  struct Case {
    const char* what;
    plat::modal::Action action;
    int result;
  };
  const Case cases[] = {
      {"nothing queued", nullptr, IDCANCEL},
      {"OK clicked", [](plat::Dialog& d) { d.Item<plat::Button>(IDOK)->Click(); }, IDOK},
      {"OK posted", [](plat::Dialog& d) { d.PostClick(IDOK); }, IDOK},
      {"ended by code", [](plat::Dialog& d) { d.EndDialog(42); }, 42},
      {"typed, not ended", [](plat::Dialog& d) { d.Item<plat::Edit>(kNameEdit)->UserType("x"); }, IDCANCEL},
  };
  for (const Case& c : cases) {
    if (c.action) plat::modal::Push(c.action);
    plat::Dialog dialog(kTemplate);
    EXPECT_EQ(dialog.DoModal(nullptr), c.result) << c.what;
    EXPECT_FALSE(dialog.IsWindow()) << c.what;
  }
}

TEST_F(ModalTest, NestedDialogsTakeActionsInOrder) {
  std::vector<std::string> order;
  plat::modal::Push([&](plat::Dialog& outer) {
    order.push_back("outer");
    plat::Dialog inner(kTemplate);
    const int innerResult = inner.DoModal(&outer);
    order.push_back("inner " + std::to_string(innerResult));
    outer.EndDialog(7);
  });
  plat::modal::Push([&](plat::Dialog& inner) {
    order.push_back("typed " + std::to_string(inner.Item<plat::Edit>(kNameEdit)->UserType("name")));
    inner.PostClick(IDOK);
  });
  plat::modal::Push([](plat::Dialog& d) { d.EndDialog(3); });
  plat::Dialog outer(kTemplate);
  EXPECT_EQ(outer.DoModal(nullptr), 7);
  EXPECT_EQ(order, (std::vector<std::string>{"outer", "typed 1", "inner 1"}));
  EXPECT_EQ(plat::modal::Pending(), 1u) << "the third action waits for the next dialog";
}

}  // namespace
