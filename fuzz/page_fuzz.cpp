// Every registered page's reply handling and description: the first byte
// picks a page from the registry (so a page registered later is fuzzed with
// no change here), the second a device and a network status, and the rest is
// the terminal's reply, handed to the page as the reply of a get and of a set.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "command/device_caps.h"
#include "command/page_registry.h"
#include "fuzz_world.h"
#include "support/test_page.h"

namespace {
// Function types with a page, and the window that offers each.
struct Served {
  int functionType;
  PageHost host;
};

const std::vector<Served>& ServedPages() {
  static const std::vector<Served> served = [] {
    std::vector<Served> list;
    for (int type : pages::RegisteredTypes()) {
      for (PageHost host : {PageHost::kVehicleWindow, PageHost::kFunctionPage}) {
        if (pages::Find(type, host)) {
          list.push_back({type, host});
          break;
        }
      }
    }
    return list;
  }();
  return served;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzworld::Init();
  const auto& served = ServedPages();
  if (size < 2 || served.empty()) return 0;
  const Served& target = served[data[0] % served.size()];
  const uint8_t pick = data[1];
  const std::string reply(reinterpret_cast<const char*>(data + 2), size - 2);

  const PageEntry* entry = pages::Find(target.functionType, target.host);
  TestHost host;
  std::unique_ptr<CBaseDlg> page = entry->make(target.functionType);
  if (!page || !page->CreateDlg(&host)) return 0;
  page->ShowWindow(plat::SW_SHOW);
  HostPage(*page, &host.list, target.functionType, PageButtons::kOwn);
  // The device of the reply is the current one, so the page's edition follows it.
  const std::string devIdno = fuzzworld::DeviceIdno(pick >> 3);
  SharedDeviceCaps().LoadShared(1 + (pick >> 3) % fuzzworld::kDevices);
  page->ProtocolUpdatePending = TRUE;
  page->AttachToHost();

  const int32_t status = fuzzworld::Status(pick);
  BaseDlgAccess::Deliver(*page, true, status, reply.c_str(), devIdno);
  BaseDlgAccess::Deliver(*page, false, status, reply.c_str(), devIdno);
  page->DestroyWindow();
  fuzzworld::EndInput();
  return 0;
}
