// Replies racing the destruction of their page: answers arrive on network
// threads while the page is destroyed; none may touch a freed request or page.
#include "host/ref/hostref.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

namespace {

class ReplyRaceTest : public PageWorld {};

TEST_F(ReplyRaceTest, DestroyingAPageWithRepliesInFlightDropsThem) {
  ASSERT_TRUE(hostref::LoadFleet(fixture::PlainFleet(150)));
  std::vector<int> ids;
  for (int i = 1; i <= 150; ++i) ids.push_back(i);
  TestHost host;
  for (int round = 0; round < 30; ++round) {
    auto page = std::make_unique<TestPage>();
    ASSERT_TRUE(page->CreateDlg(&host));
    HostPage(*page, &host.list, -1, PageButtons::kWindow);
    page->PickerMode = TRUE;
    hostref::SetPickerAnswer(ids);
    page->Send(false);
    // The first round opens 100 channels; their answers come back on the
    // network threads while the page goes away, some handled, some not.
    plat::MessageLoop::Instance().RunFor(1000);
    if (round % 3 == 0) plat::MessageLoop::Instance().RunPending();
    page.reset();
    EXPECT_EQ(hostref::net::OpenChannels(), 0u);
  }
  hostref::net::WaitIdle();
  plat::MessageLoop::Instance().RunPending();
}

}  // namespace
