// The device picker's parameter record, byte by byte, and the targets it gives.
#include <cstring>

#include "command/picker_param.h"
#include "host/ref/hostref.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

namespace {

int32_t At(const std::vector<uint8_t>& bytes, size_t offset) {
  int32_t v;
  std::memcpy(&v, bytes.data() + offset, sizeof v);
  return v;
}

std::vector<int32_t> List(const std::vector<uint8_t>& bytes, size_t offset, size_t capacity) {
  std::vector<int32_t> codes;
  for (size_t i = 0; i < capacity && At(bytes, offset + 4 * i) != 0; ++i) codes.push_back(At(bytes, offset + 4 * i));
  return codes;
}

class PickerTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(page.CreateDlg(&host));
    page.PickerMode = TRUE;
  }
  TestHost host;
  TestPage page;
};

TEST_F(PickerTest, RecordCarriesFixedSettingsAndCodeLists) {
  struct Case {
    const char* what;
    uint32_t mask;
    DeviceCaps caps;
    std::vector<int32_t> first, second;
  };
  auto caps = [](bool a76, bool a78, bool p2019, bool a99) {
    DeviceCaps c;
    c.ownDevId = 1;
    c.bDevAttr76 = a76, c.bDevAttr78 = a78, c.bProtocol2019 = p2019, c.bDevAttr99 = a99;
    return c;
  };
  const Case cases[] = {
      {"no mask", 0, caps(false, false, false, false), {84}, {113}},
      {"plain 2013", 0x0001, caps(false, false, false, false), {84, 79, 81}, {113, 84, 86}},
      {"plain 2013, not for 2013", 0x0004, caps(false, false, false, false), {84, 79}, {113, 84}},
      {"plain 2019", 0x0403, caps(false, false, true, false), {84, 79, 80}, {113, 84, 85}},
      {"76 with 78", 0x0F00, caps(true, true, false, false), {84, 76, 78}, {113, 81, 83}},
      {"76 with 99", 0x0800, caps(true, false, false, true), {84, 76, 99}, {113, 81, 121}},
      {"76 alone", 0x0100, caps(true, false, false, false), {84, 76, 77}, {113, 81, 82}},
      {"76 with 78, mask without 78", 0x0100, caps(true, true, false, false), {84, 76}, {113, 81}},
  };
  for (const Case& c : cases) {
    page.DeviceKindMask = c.mask;
    page.LoadOwnCaps(0);
    const_cast<DeviceCaps&>(page.Caps()) = c.caps;
    hostref::SetPickerAnswer(std::nullopt);
    page.Send(false);
    const auto bytes = hostref::LastPickerParam();
    ASSERT_EQ(bytes.size(), 244u) << c.what;
    EXPECT_EQ(At(bytes, 132), 2) << c.what;
    EXPECT_EQ(At(bytes, 140), 1) << c.what;
    EXPECT_EQ(At(bytes, 144), -1) << c.what;
    EXPECT_EQ(At(bytes, 148), 17) << c.what;
    EXPECT_EQ(At(bytes, 236), 1) << c.what;
    EXPECT_EQ(List(bytes, 152, 12), c.first) << c.what;
    EXPECT_EQ(List(bytes, 200, 9), c.second) << c.what;
  }
}

TEST_F(PickerTest, PageCodesAreAppendedAndBoundedByTheList) {
  page.extraFirst = {88, 97, 122};
  page.Send(false);
  EXPECT_EQ(List(hostref::LastPickerParam(), 152, 12), (std::vector<int32_t>{84, 88, 97, 122}));
  page.extraFirst.assign(15, 5);
  page.Send(false);
  const auto bytes = hostref::LastPickerParam();
  EXPECT_EQ(List(bytes, 152, 12).size(), 12u);
  EXPECT_EQ(At(bytes, 200), 113) << "a full first list leaves the second alone";
}

TEST_F(PickerTest, ChosenDevicesBecomeTargetsInOrder) {
  hostref::SetPickerAnswer(std::vector<int>{3, 1, 99});
  page.Send(false);
  ASSERT_TRUE(Settle());
  std::vector<std::string> devices;
  for (const auto& sent : hostref::net::Sent()) devices.push_back(sent.devIdno);
  EXPECT_EQ(devices, (std::vector<std::string>{"91003", "91001"})) << "an unknown device id is skipped";
}

}  // namespace
