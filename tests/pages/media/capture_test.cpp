// The camera and audio recording pages: the parameter objects, the
// resolutions of each device kind, the face-capture mode, the checks in
// their order, and the descriptions.
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/media/snapshot.h"
#include "pages/media/sound.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using C = CDlgSetupSnapShot;

namespace {

// Devices: 1 plain 2013, 2 the 2019 edition, 3 attribute 76 with 78, 4 with 99, 5 attribute 76 alone.
const char* kFleet = R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001"}]},
  {"name":"B","devices":[{"id":2,"idno":"91002","attrs":{"80":1}}]},
  {"name":"C","devices":[{"id":3,"idno":"91003","attrs":{"76":1,"78":1}}]},
  {"name":"D","devices":[{"id":4,"idno":"91004","attrs":{"76":1,"99":1}}]},
  {"name":"E","devices":[{"id":5,"idno":"91005","attrs":{"76":1}}]}]})";

constexpr int kFaceCapture = 1103;

class CaptureTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(kFleet));
  }
  // A fresh page of the type, for the device.
  std::unique_ptr<PageHarness> Open(int functionType, int device = 1) {
    auto page = std::make_unique<PageHarness>(functionType);
    EXPECT_TRUE(page->IsOpen());
    if (page->IsOpen()) page->UseDevice(device);
    return page;
  }
  static std::vector<std::string> Entries(PageHarness& page, int combo) {
    std::vector<std::string> entries;
    auto* box = page.Page().Item<plat::ComboBox>(combo);
    for (int i = 0; i < box->GetCount(); ++i) entries.push_back(box->GetLBText(i) + "=" + std::to_string(box->GetItemData(i)));
    return entries;
  }
};

TEST_F(CaptureTest, CameraSendsEveryNumberAndTheListData) {
  auto page = Open(C::kFunctionType);
  EXPECT_EQ(page->Send(ctl::Set), R"({"BRI":0,"CHID":1,"COLOR":0,"CT":0,"HUE":0,"PIC":1,"PIX":1,"SALA":0,"SNBT":0,"SNOR":0})");
  const std::pair<int, const char*> typed[] = {{C::kChannelEdit, "255"},   {C::kCommandEdit, "65535"},
                                               {C::kIntervalEdit, "30"},   {C::kQualityEdit, "10"},
                                               {C::kBrightnessEdit, "255"}, {C::kContrastEdit, "127"},
                                               {C::kSaturationEdit, "64"}, {C::kChromaEdit, "7"}};
  for (auto [edit, text] : typed) EXPECT_TRUE(page->Type(edit, text)) << edit;
  page->Select(C::kSaveCombo, 1);
  page->Select(C::kResolutionCombo, 7);
  EXPECT_EQ(page->Send(ctl::Set),
            R"({"BRI":255,"CHID":255,"COLOR":7,"CT":127,"HUE":64,"PIC":10,"PIX":8,"SALA":1,"SNBT":30,"SNOR":65535})");
  EXPECT_EQ(page->Cell(0, kColDescription),
            FormatChineseColon(T(11004), T(13450) + "：255，" + T(13465) + "：65535，" + T(13467) + "：30") + "，" +
                FormatChineseColon(T(13475), T(13443) + "：" + T(13448) + "，" + T(13469) + "：704*576，" + T(13470) +
                                                 "：10，" + T(13471) + "：255，" + T(13472) + "：127，" + T(13473) +
                                                 "：64，" + T(13474) + "：7"));
  // The boxes keep their ranges: a value above the maximum is refused as typed.
  EXPECT_FALSE(page->Type(C::kContrastEdit, "128"));
  EXPECT_FALSE(page->Type(C::kChannelEdit, "0"));
}

TEST_F(CaptureTest, ResolutionsFollowTheDeviceKind) {
  const struct {
    int device;
    std::vector<std::string> entries;
    std::string note;
  } cases[] = {
      {1, {"320*240=1", "640*480=2", "800*600=3", "1024*768=4", "176*144=5", "352*288=6", "704*288=7", "704*576=8"}, T(13477)},
      {2, {T(13478) + "=0", "320*240=1", "640*480=2", "800*600=3", "1024*768=4", "176*144=5", "352*288=6",
           "704*288=7", "704*576=8", T(13479) + "=255"}, T(13477)},
      {3, {"320*240=0", "640*480=1", "800*600=2", "1024*768=3", "1280*960=4", "1920*1080=5"}, "(1~255)"},
      {4, {"320*240=0", "640*480=1", "800*600=2", "720*576=3", "1024*768=4", "1280*720=5"}, "(1~255)"},
      {5, {"320*240=0", "640*480=1", "800*600=2"}, "(1~255)"},
  };
  auto page = Open(C::kFunctionType);
  for (const auto& c : cases) {
    // Each device after another on the same page, and on a fresh page: the same list.
    for (int fresh = 0; fresh < 2; ++fresh) {
      auto own = fresh ? Open(C::kFunctionType, c.device) : nullptr;
      PageHarness& p = fresh ? *own : *page;
      if (!fresh) p.UseDevice(c.device);
      EXPECT_EQ(Entries(p, C::kResolutionCombo), c.entries) << "device " << c.device << " fresh " << fresh;
      EXPECT_EQ(p.Text(C::kChannelNote), c.note) << "device " << c.device;
    }
  }
}

TEST_F(CaptureTest, ResolutionTextOfTheSentData) {
  const struct {
    int device, entry;
    std::string pix, text;
  } cases[] = {{2, 0, "0", T(13478)}, {2, 9, "255", T(13479)}, {2, 1, "1", "320*240"},
               {3, 5, "5", "1920*1080"}, {4, 3, "3", "720*576"}, {5, 2, "2", "800*600"}};
  for (const auto& c : cases) {
    auto page = Open(C::kFunctionType, c.device);
    page->Select(C::kResolutionCombo, c.entry);
    EXPECT_NE(page->Send(ctl::Set).find("\"PIX\":" + c.pix + ","), std::string::npos) << c.device << "/" << c.entry;
    EXPECT_NE(page->Cell(0, kColDescription).find(T(13469) + "：" + c.text + "，"), std::string::npos)
        << c.device << "/" << c.entry << ": " << page->Cell(0, kColDescription);
  }
}

TEST_F(CaptureTest, EmptyBoxesAreRefusedInOrder) {
  const int order[] = {C::kChannelEdit,    C::kCommandEdit,  C::kIntervalEdit,   C::kQualityEdit,
                       C::kBrightnessEdit, C::kContrastEdit, C::kSaturationEdit, C::kChromaEdit};
  const int labels[] = {13450, 13465, 13467, 13470, 13471, 13472, 13473, 13474};
  auto page = Open(C::kFunctionType);
  for (int edit : order) page->Type(edit, "");
  for (size_t i = 0; i < std::size(order); ++i) {
    hostref::ClearTips();
    EXPECT_EQ(page->Send(ctl::Set), "") << labels[i];
    EXPECT_EQ(TipTexts(), std::vector<std::string>{T(labels[i]) + T(12703)}) << labels[i];
    page->Type(order[i], "1");
  }
  EXPECT_NE(page->Send(ctl::Set), "");
}

TEST_F(CaptureTest, FaceCaptureTakesChannelAndResolution) {
  auto plain = Open(C::kFunctionType);
  EXPECT_EQ(plain->Page().Item<plat::ComboBox>(C::kSaveCombo)->GetCount(), 2);
  plain.reset();

  CConfigKestrelINI::WriteIniInt(kFaceCapture, 1);
  auto page = Open(C::kFunctionType);
  EXPECT_EQ(Entries(*page, C::kSaveCombo), (std::vector<std::string>{T(13447) + "=0", T(13448) + "=1", "人脸抓拍=2"}));
  page->Select(C::kSaveCombo, 2);
  EXPECT_FALSE(page->Enabled(C::kChannelEdit));
  EXPECT_FALSE(page->Enabled(C::kResolutionCombo));
  // Still disabled after a send; the values in them go out; an empty channel is sent as 0.
  EXPECT_NE(page->Send(ctl::Set).find(R"("PIX":1,"SALA":2)"), std::string::npos);
  EXPECT_FALSE(page->Enabled(C::kChannelEdit));
  EXPECT_TRUE(page->Enabled(C::kCommandEdit));
  EXPECT_NE(page->Cell(0, kColDescription).find(T(13443) + "：人脸抓拍"), std::string::npos);
  page->Select(C::kSaveCombo, 0);
  EXPECT_TRUE(page->Enabled(C::kChannelEdit) && page->Enabled(C::kResolutionCombo));
  page->Type(C::kChannelEdit, "");
  EXPECT_NE(page->Send(ctl::Set).find(R"("CHID":0,)"), std::string::npos);
}

TEST_F(CaptureTest, AudioRecording) {
  auto page = Open(CDlgSound::kFunctionType);
  EXPECT_EQ(page->Send(ctl::Set), R"({"SALA":0,"SOOR":0,"SOTI":0,"VOICE":0})");
  EXPECT_EQ(page->Cell(0, kColDescription),
            T(13440) + "：0，" + T(13442) + "：" + T(13445) + "，" + T(13443) + "：" + T(13447) + "，" + T(13444) + "：8k");
  page->Type(CDlgSound::kTimeEdit, "0065");
  page->Select(CDlgSound::kCommandCombo, 1);
  page->Select(CDlgSound::kSaveCombo, 1);
  page->Select(CDlgSound::kRateCombo, 3);
  EXPECT_EQ(page->Send(ctl::Set), R"({"SALA":1,"SOOR":1,"SOTI":65,"VOICE":3})");
  EXPECT_EQ(page->Cell(0, kColDescription),
            T(13440) + "：65，" + T(13442) + "：" + T(13446) + "，" + T(13443) + "：" + T(13448) + "，" + T(13444) + "：32k");
  EXPECT_FALSE(page->Type(CDlgSound::kTimeEdit, "65536"));
  page->Type(CDlgSound::kTimeEdit, "");
  EXPECT_EQ(page->Send(ctl::Set), "");
  EXPECT_EQ(TipTexts().back(), T(13440) + T(12703));
}

}  // namespace
