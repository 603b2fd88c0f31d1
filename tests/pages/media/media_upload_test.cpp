// The filtered and the single media upload: parameters, the time order and
// id checks, and the descriptions.
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/media/media_upload.h"
#include "pages/media/single_media_upload.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

using fixture::T;
using U = CDlgMediaUpload;
using S = CDlgSingleMediaUpload;

namespace {

class MediaUploadTest : public PageWorld {
 protected:
  std::unique_ptr<PageHarness> Open(int functionType) {
    auto page = std::make_unique<PageHarness>(functionType);
    EXPECT_TRUE(page->IsOpen());
    if (page->IsOpen()) page->UseDevice(1);
    return page;
  }
  static void SetTime(PageHarness& page, int picker, SYSTEMTIME time) {
    page.Page().Item<plat::DateTimePicker>(picker)->UserSetTime(time);
  }
};

TEST_F(MediaUploadTest, FilteredUpload) {
  auto page = Open(U::kFunctionType);
  EXPECT_EQ(page->Send(ctl::Set), R"({"BTM":"261123000000","CHID":1,"DELA":0,"ETM":"261123235959","EVCO":0,"METY":0})");
  EXPECT_EQ(page->Cell(0, kColDescription),
            T(13450) + "：1，" + T(13451) + "：" + T(13456) + "，" + T(13452) + "：" + T(13459) + "，" + T(13453) +
                "：2026-11-23 00:00:00，" + T(12409) + "：2026-11-23 23:59:59，" + T(13455) + "：" + T(13463));
  page->Type(U::kChannelEdit, "3");
  page->Select(U::kTypeCombo, 2);
  page->Select(U::kEventCombo, 4);
  page->Select(U::kDeleteCombo, 1);
  SetTime(*page, U::kStartDate, {2024, 1, 0, 31, 0, 0, 0, 0});
  SetTime(*page, U::kStartTime, {2000, 1, 0, 1, 23, 59, 59, 0});
  EXPECT_EQ(page->Send(ctl::Set), R"({"BTM":"240131235959","CHID":3,"DELA":1,"ETM":"261123235959","EVCO":4,"METY":2})");
  EXPECT_NE(page->Cell(0, kColDescription).find(T(13455) + "：" + T(13464)), std::string::npos);
}

TEST_F(MediaUploadTest, FilteredUploadChecks) {
  const struct {
    const char* what;
    std::string channel;
    SYSTEMTIME endTime;
    std::string tip;  // "": sent
  } cases[] = {
      {"empty channel", "", {2000, 1, 0, 1, 23, 59, 59, 0}, T(13450) + T(12703)},
      {"end equal to start", "1", {2000, 1, 0, 1, 0, 0, 0, 0}, T(12411)},
      {"one second later", "1", {2000, 1, 0, 1, 0, 0, 1, 0}, ""},
  };
  for (const auto& c : cases) {
    auto page = Open(U::kFunctionType);
    hostref::ClearTips();
    page->Type(U::kChannelEdit, c.channel);
    SetTime(*page, U::kEndDate, {2026, 11, 1, 23, 0, 0, 0, 0});
    SetTime(*page, U::kEndTime, c.endTime);
    const std::string sent = page->Send(ctl::Set);
    EXPECT_EQ(sent.empty(), !c.tip.empty()) << c.what;
    EXPECT_EQ(TipTexts(), c.tip.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.tip}) << c.what;
  }
}

TEST_F(MediaUploadTest, SingleUpload) {
  const struct {
    const char* typed;
    int deleteEntry;
    std::string param;  // "": refused with 12702 and ">0"
  } cases[] = {
      {"", 0, ""}, {"0", 0, ""}, {"000", 1, ""},
      {"1", 0, R"({"DELA":0,"MDID":1})"}, {"999999999", 1, R"({"DELA":1,"MDID":999999999})"},
      {"0042", 0, R"({"DELA":0,"MDID":42})"},
  };
  for (const auto& c : cases) {
    auto page = Open(S::kFunctionType);
    hostref::ClearTips();
    page->Type(S::kIdEdit, c.typed);
    page->Select(S::kDeleteCombo, c.deleteEntry);
    EXPECT_EQ(page->Send(ctl::Set), c.param) << c.typed;
    if (c.param.empty()) {
      EXPECT_EQ(TipTexts(), std::vector<std::string>{T(12702) + ">0"}) << c.typed;
    } else {
      EXPECT_EQ(page->Cell(0, kColDescription),
                T(14000) + "：" + c.typed + "，" + T(13455) + "：" + T(c.deleteEntry ? 13464 : 13463)) << c.typed;
    }
  }
  // Nine digits at most.
  auto page = Open(S::kFunctionType);
  page->Type(S::kIdEdit, "1234567890");
  EXPECT_EQ(page->Text(S::kIdEdit), "123456789");
}

}  // namespace
