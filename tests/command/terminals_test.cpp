// The simulated terminals answer like terminals and remember what they got.
#include <json/json.h>

#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "pages/messaging/send_text.h"
#include "support/page_fixture.h"
#include "support/test_page.h"
#include "text/json.h"

namespace {

class TerminalsTest : public TerminalWorld {
 protected:
  void SetUp() override {
    TerminalWorld::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001"}]},
      {"name":"B","devices":[{"id":2,"idno":"91002","attrs":{"80":1}}]}]})"));
  }
  // The reply a device gives to a command with a parameter text.
  std::string Ask(const std::string& dev, int command, const std::string& param) { return AskText(dev, command, param); }
};

TEST_F(TerminalsTest, TextMessagesAreKeptAsTyped) {
  TestHost host;
  CDlgSendText page;
  ASSERT_TRUE(page.CreateDlg(&host));
  page.ShowWindow(plat::SW_SHOW);
  SharedDeviceCaps().LoadShared(1);
  for (const char* text : {"中文 50%", "plain 中文"}) {
    page.Item<plat::Edit>(CDlgSendText::kTextEdit)->UserType(text);
    page.Item<plat::Button>(ctl::Set)->Click();
    ASSERT_TRUE(Settle());
  }
  const auto texts = hostref::terminals::Texts("91001");
  ASSERT_EQ(texts.size(), 2u);
  EXPECT_EQ(texts[0].text, "中文 50%");
  EXPECT_EQ(texts[1].text, "plain 中文");
  EXPECT_EQ(texts[1].textType, 1);
  EXPECT_EQ(Ask("91001", 0x8300, "not json"), R"({"Error":0,"result":2})");
}

TEST_F(TerminalsTest, QueriesAnswerByDeviceAndMove) {
  Json::Value a, b;
  ASSERT_TRUE(txt::ParseJson(Ask("91001", 0x8107, ""), a));
  ASSERT_TRUE(txt::ParseJson(Ask("91002", 0x8107, ""), b));
  EXPECT_NE(a["DMODEL"], b["DMODEL"]) << "a 2019 terminal is another model";
  EXPECT_EQ(b["DSIMBCD"].asString(), "898691002");
  EXPECT_NE(Ask("91001", 0x8201, ""), Ask("91001", 0x8201, "")) << "the vehicle moves between queries";
  EXPECT_EQ(hostref::terminals::QueryCount("91001", 0x8201), 2u);
  EXPECT_EQ(Ask("91001", 0x8999, ""), R"({"Error":0,"result":0})");
}

TEST(Terminals, EveryCommandHasOneResponder) {
  EXPECT_EQ(hostref::terminals::DuplicateResponders(), std::vector<int>{}) << "two families answer one command";
}

}  // namespace
