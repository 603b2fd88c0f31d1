#include "fuzz_world.h"

#include <cstdlib>

#include "command/device_caps.h"
#include "host/ref/hostref.h"
#include "lang/language.h"
#include "platform/clock.h"
#include "platform/dialog.h"
#include "platform/loop.h"

namespace fuzzworld {
namespace {
constexpr uint64_t kStartMs = 1'000'000;
constexpr int32_t kStatusOffline = 101;
constexpr int32_t kStatusTimeout = 110;

std::string PlainFleet() {
  std::string json = R"({"rights":"all","vehicles":[)";
  for (int i = 1; i <= kDevices; ++i) {
    if (i > 1) json += ",";
    json += R"({"name":"V)" + std::to_string(i) + R"(","devices":[{"id":)" + std::to_string(i) + R"(,"idno":")" +
            DeviceIdno(static_cast<uint8_t>(i - 1)) + R"("}]})";
  }
  return json + "]}";
}
}  // namespace

void Init() {
  static const bool done = [] {
    static plat::ManualClock clock{kStartMs};
    plat::MessageLoop::Instance().SetClock(&clock);
    plat::modal::Clear();
    hostref::OpenDataDir("");
    hostref::SetTestIP(false);
    hostref::SetPickerAnswer(std::nullopt);
    std::string error;
    if (!hostref::LoadFleet(PlainFleet(), &error)) std::abort();
    CLanguage::Instance().SetPath(FC_SOURCE_DIR "/data/lang/en.ini");
    hostref::LoadHostTexts(FC_SOURCE_DIR "/data/lang/en.ini");
    plat::SetFixedLocalTime(SYSTEMTIME{2026, 11, 1, 23, 8, 30, 5, 0});
    SharedDeviceCaps().LoadShared(1);
    return true;
  }();
  (void)done;
}

void EndInput() { hostref::ClearLog(); }

std::string DeviceIdno(uint8_t pick) { return "9" + std::to_string(1001 + pick % kDevices); }

int32_t Status(uint8_t pick) {
  switch (pick % 8) {
    case 6: return kStatusOffline;
    case 7: return kStatusTimeout;
    default: return 0;
  }
}
}  // namespace fuzzworld

void BaseDlgAccess::Deliver(CBaseDlg& page, bool get, int32_t status, const char* reply, const std::string& devIdno) {
  auto* request = new CommandRequest;
  request->owner = &page;
  request->SetDevIdno(devIdno);
  {
    CAutoLock guard(page.lock);
    page.QueryMode = get ? TRUE : FALSE;
    page.keepAnswers_ = get || page.ReadsSetReplies;
    page.RequestTable.insert(request);
  }
  CBaseDlg::FUNSetupMsgCB(status, reply, request);
  plat::MessageLoop::Instance().RunPending();
  // A reply the page did not take (it had no window) leaves the request in its table.
  CAutoLock guard(page.lock);
  if (page.RequestTable.erase(request)) {
    page.answers_.erase(request);
    delete request;
  }
}
