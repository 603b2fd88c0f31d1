// The base's reply handling on arbitrary bytes: ParseResult, then the reply
// callback and the row it leads to, for a get and for a set, with a network
// status chosen by the first byte.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz_world.h"
#include "support/test_page.h"

namespace {
// The test page of the base's tests, reading its replies the base's way.
class ReplyPage : public TestPage {
 public:
  void ParseReply(CommandRequest& request) override { CBaseDlg::ParseReply(request); }
};
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzzworld::Init();
  if (size == 0) return 0;
  const uint8_t pick = data[0];
  const std::string reply(reinterpret_cast<const char*>(data + 1), size - 1);
  (void)CBaseDlg::ParseResult(reply.c_str());

  TestHost host;
  ReplyPage page;
  if (!page.CreateDlg(&host)) return 0;
  HostPage(page, &host.list, 1, PageButtons::kOwn);
  const std::string devIdno = fuzzworld::DeviceIdno(pick >> 3);
  const int32_t status = fuzzworld::Status(pick);
  // No reply text at all comes with some statuses.
  const char* text = (pick & 0x80) && status != 0 ? nullptr : reply.c_str();
  BaseDlgAccess::Deliver(page, true, status, text, devIdno);
  BaseDlgAccess::Deliver(page, false, status, text, devIdno);
  page.DestroyWindow();
  fuzzworld::EndInput();
  return 0;
}
