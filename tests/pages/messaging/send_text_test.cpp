// The text message page: bytes on the wire, the encoded length limit, both flag layouts, descriptions.
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/messaging/send_text.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using C = CDlgSendText;

namespace {

// Device 1 speaks the 2019 edition, device 2 the 2013 one.
const char* kFleet = R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001","attrs":{"80":1}}]},
  {"name":"B","devices":[{"id":2,"idno":"91002"}]}]})";
constexpr int kDevice2019 = 1, kDevice2013 = 2;

class SendTextTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(kFleet));
    page = std::make_unique<PageHarness>(C::kFunctionType);
    ASSERT_TRUE(page->IsOpen());
    UseDevice(kDevice2013);
  }
  void TearDown() override {
    page.reset();
    PageWorld::TearDown();
  }
  void UseDevice(int devId) { page->UseDevice(devId); }
  // Types the text, presses send, returns the parameter text sent ("" when nothing went out).
  std::string Send(const std::string& text) {
    page->Type(C::kTextEdit, text);
    return page->Send(ctl::Set);
  }
  void Click(int id) { page->Click(id); }
  // The 2019 radios shown, the 2013 boxes hidden and the text type enabled, or the reverse.
  void ExpectEdition2019(bool on) {
    EXPECT_EQ(std::make_tuple(page->Shown(C::kRadioService), page->Shown(C::kCheckUrgent),
                              page->Enabled(C::kTypeService)), std::make_tuple(on, !on, on));
  }
  std::unique_ptr<PageHarness> page;
};

std::string Param(int flag, const std::string& text, int type = 1) {
  return "{\"Flag\":" + std::to_string(flag) + ",\"TextInfo\":\"" + text + "\",\"TextType\":" + std::to_string(type) + "}";
}

TEST_F(SendTextTest, TextBytesOnTheWire) {
  const std::pair<std::string, std::string> cases[] = {
      {"中文", "\xD6\xD0\xCE\xC4"}, {"", ""},
      {"50 %", "50+%25"}, {"50 a", "50 a"},  // form-encoded only when "+" or "%" is in the text
      {"a\r\nb", "a\\r\\nb"},  // raw 0D 0A in the value, escaped only by the JSON text
      {"a+\r\nb", "a%2B%0D%0Ab"},
  };
  for (const auto& [typed, wire] : cases) EXPECT_EQ(Send(typed), Param(0, wire)) << typed;
}

TEST_F(SendTextTest, LimitIsOnEncodedBytes) {
  std::string typed = "a", wire = "a";  // 1 + 511 x 2 = 1023 bytes
  for (int i = 0; i < 511; ++i) typed += "中", wire += "\xD6\xD0";
  EXPECT_EQ(Send(typed), Param(0, wire));
  EXPECT_EQ(Send(typed + "a"), "");
  EXPECT_EQ(TipTexts(), std::vector<std::string>{"(1024>=1024)" + T(12956)});
  EXPECT_EQ(Send(std::string(342, '%')), "") << "342 percent signs are 1026 bytes once encoded";
}

// Steps run in order on one page: each click toggles or chooses on top of the previous ones.
TEST_F(SendTextTest, FlagLayoutsAndDescriptions) {
  // typeText 0: the 2013 description has no text type.
  struct Step { const char* what; int device; std::vector<int> clicks; int flag, type; std::vector<int> flagTexts; int typeText; };
  const Step steps[] = {
      {"2013 boxes", kDevice2013, {C::kCheckUrgent, C::kCheckAdScreen, C::kCheckTts}, 0x19, 1, {12950, 12952, 12953}, 0},
      {"2019 none; hidden 2013 boxes ignored", kDevice2019, {C::kCheckTts}, 0, 1, {15203}, 15202},
      {"2019 urgent", kDevice2019, {C::kRadioUrgent, C::kRadioCanFault, C::kTypeService, C::kCheckDisplay}, 0x26, 2,
       {15201, 12951, 15206}, 15200},
      {"2013 again: the hidden CAN fault choice still sets bit 5", kDevice2013, {}, 0x35, 2, {12950, 12951, 12953}, 0},
  };
  for (const Step& step : steps) {
    UseDevice(step.device);
    ExpectEdition2019(step.device == kDevice2019);
    for (int id : step.clicks) Click(id);
    EXPECT_EQ(Send("x"), Param(step.flag, "x", step.type)) << step.what;
    std::string flags, expected;
    for (int text : step.flagTexts) AddChineseStringStatus(flags, T(text));
    AddChineseStringStatus(expected, FormatChineseColon(T(13115), T(step.device == kDevice2019 ? 13117 : 13116)));
    AddChineseStringStatus(expected, FormatChineseColon(T(12954), flags));
    if (step.typeText) AddChineseStringStatus(expected, FormatChineseColon(T(15204), T(step.typeText)));
    AddChineseStringStatus(expected, FormatChineseColon(T(12955), "x"));
    EXPECT_EQ(page->Cell(0, kColDescription), expected) << step.what;
  }
}

}  // namespace
