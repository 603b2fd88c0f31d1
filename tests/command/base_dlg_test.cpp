// The command base end to end: targets, pacing, envelope, batches, replies,
// rows and remembered inputs, against the simulated network on a manual clock.
#include <json/json.h>

#include <algorithm>
#include <filesystem>

#include "command/ids.h"
#include "command/result_columns.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

using fixture::T;

namespace {

class BaseDlgTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(page.CreateDlg(&host));
    HostPage(page, &host.list, -1, PageButtons::kOwn);
    page.ShowWindow(plat::SW_SHOW);
  }
  void UseFleet(int n) {
    ASSERT_TRUE(hostref::LoadFleet(fixture::PlainFleet(n)));
  }
  void PickAll(int n) {
    std::vector<int> ids;
    for (int i = 1; i <= n; ++i) ids.push_back(i);
    hostref::SetPickerAnswer(ids);
    page.PickerMode = TRUE;
  }
  std::string Cell(int row, int column) { return host.list.GetItemText(row, column); }
  bool SendButtonEnabled() { return page.GetDlgItem(ctl::Set)->IsWindowEnabled(); }

  TestHost host;
  TestPage page;
};

TEST_F(BaseDlgTest, PacesAHundredOutstandingAndReenablesAfterTheLastReply) {
  UseFleet(250);
  PickAll(250);
  hostref::net::SetHeld(true);
  page.Send(false);
  EXPECT_FALSE(SendButtonEnabled());

  hostref::RunFor(999);
  EXPECT_EQ(hostref::net::Sent().size(), 0u) << "the first round waits a second";
  hostref::RunFor(1);
  EXPECT_EQ(hostref::net::Sent().size(), 100u);
  hostref::RunFor(2000);
  EXPECT_EQ(hostref::net::Sent().size(), 100u) << "no place is free while nothing was answered";

  for (int i = 0; i < 30; ++i) hostref::net::ReleaseNext();
  hostref::RunFor(500);
  EXPECT_EQ(host.list.GetItemCount(), 30);
  EXPECT_EQ(hostref::net::Sent().size(), 130u);

  // Everything but the last answer: the send is not over yet.
  while (hostref::net::Sent().size() < 250 || hostref::net::HeldCount() > 1) {
    if (hostref::net::HeldCount() > 1) hostref::net::ReleaseNext();
    hostref::RunFor(500);
  }
  hostref::RunFor(3000);
  EXPECT_EQ(host.list.GetItemCount(), 249);
  EXPECT_FALSE(SendButtonEnabled());

  hostref::net::ReleaseNext();
  EXPECT_TRUE(Settle());
  EXPECT_EQ(host.list.GetItemCount(), 250);
  EXPECT_TRUE(SendButtonEnabled());
  EXPECT_EQ(page.enabledCalls, (std::vector<bool>{false, true}));
  EXPECT_EQ(hostref::net::OpenChannels(), 0u) << "every answered channel is released";
  EXPECT_EQ(std::count(host.messages.begin(), host.messages.end(), msg::SendControlsChanged), 2);
}

TEST_F(BaseDlgTest, EnvelopeAndParameterText) {
  hostref::net::SetSession(std::string(50, 's'));
  SharedDeviceCaps().LoadShared(2);
  page.Item<plat::Edit>(TestPage::kTextEdit)->UserType("中文");
  page.Send(false);
  ASSERT_TRUE(Settle());
  ASSERT_EQ(hostref::net::Sent().size(), 1u);
  const auto sent = hostref::net::Sent()[0];
  EXPECT_EQ(sent.devIdno, "91002");
  EXPECT_EQ(sent.envelope, R"({"Command":33536,"DevIDNO":"91002","Session":")" + std::string(39, 's') + R"("})");
  EXPECT_EQ(sent.param, "{\"Text\":\"中文\"}");
  EXPECT_EQ(page.getParamCalls, 1) << "outside batches the parameter is built once per send";

  page.nullParam = true;
  hostref::net::ClearSent();
  page.Send(false);
  ASSERT_TRUE(Settle());
  ASSERT_EQ(hostref::net::Sent().size(), 1u);
  EXPECT_EQ(hostref::net::Sent()[0].param, "") << "a null parameter goes out as the empty text";
  EXPECT_NE(hostref::LogLines().size(), 0u);
}

TEST_F(BaseDlgTest, BatchModeSendsSlicesAndOneRowPerItem) {
  SharedDeviceCaps().LoadShared(1);
  page.BatchMode = TRUE;
  page.batchTotal = 5;
  page.batchStep = 2;
  page.Send(false);
  ASSERT_TRUE(Settle());
  std::vector<std::string> params;
  for (const auto& sent : hostref::net::Sent()) params.push_back(sent.param);
  EXPECT_EQ(params, (std::vector<std::string>{R"({"From":0,"Text":""})", R"({"From":2,"Text":""})",
                                              R"({"From":4,"Text":""})"}));
  std::sort(page.prepared.begin(), page.prepared.end());
  EXPECT_EQ(page.prepared, (std::vector<int>{0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(host.list.GetItemCount(), 6);
  EXPECT_EQ(page.batchProgressCalls, 1);
  EXPECT_EQ(page.batchPosition, 0);
}

TEST_F(BaseDlgTest, RowsAreNumberedNewestFirstWithResultTextsAndColours) {
  PickAll(3);
  hostref::net::SetHeld(true);
  hostref::net::SetStatus("91002", 101);
  page.Send(false);
  hostref::RunFor(1000);
  for (int i = 0; i < 3; ++i) {
    hostref::net::ReleaseNext();
    hostref::RunFor(10);
  }
  ASSERT_EQ(host.list.GetItemCount(), 3);
  EXPECT_EQ(Cell(0, kColNumber), "3");
  EXPECT_EQ(Cell(2, 0), "1");
  EXPECT_EQ(Cell(2, 1), "V1");
  EXPECT_EQ(Cell(2, 2), "2026-11-23 08:30:05");
  EXPECT_EQ(Cell(2, 3), FormatStringMgr::Format808FunctionType(-1, 0));
  EXPECT_EQ(Cell(2, 4), T(11008));
  EXPECT_EQ(Cell(2, 5), "desc");
  EXPECT_EQ(Cell(2, 6), "");
  EXPECT_EQ(Cell(2, 7), "Online");
  EXPECT_EQ(host.list.RowColor(2), 0x009900u);
  EXPECT_EQ(Cell(1, 4), "[" + T(11004) + "]" + IDIRErrorString(101));
  EXPECT_EQ(Cell(1, 7), "Warning");
  EXPECT_EQ(host.list.RowColor(1), 0x0000FFu);
  ASSERT_TRUE(Settle());

  // A get names its own label; test mode puts the command before the description.
  hostref::SetTestIP(true);
  hostref::net::SetHeld(false);
  hostref::net::SetReply("91001", R"({"Error":7})");
  hostref::SetPickerAnswer(std::vector<int>{1});
  page.Send(true);
  ASSERT_TRUE(Settle());
  EXPECT_EQ(Cell(0, kColResult), "[" + T(13312) + "]" + IDIRErrorString(7));
  EXPECT_EQ(Cell(0, kColDescription), "0x8300;\r\ndesc");
  EXPECT_EQ(page.parsed, (std::vector<std::string>{R"({"Error":7})"}));
}

TEST_F(BaseDlgTest, NothingIsSentWithoutTargetsOrWhenTheUserCancels) {
  const int pickerRuns = hostref::PickerRuns();
  page.Send(false);  // no current device, no picker, no own targets
  EXPECT_EQ(TipTexts(), (std::vector<std::string>{T(12812)}));
  EXPECT_TRUE(SendButtonEnabled());

  hostref::ClearTips();
  page.PickerMode = TRUE;  // the picker has no answer: the user cancels
  page.Send(false);
  EXPECT_TRUE(TipTexts().empty());

  page.checkOk = false;
  SharedDeviceCaps().LoadShared(1);
  page.Send(false);
  ASSERT_TRUE(Settle());
  EXPECT_TRUE(hostref::net::Sent().empty());
  EXPECT_EQ(hostref::PickerRuns(), pickerRuns + 1);
}

TEST_F(BaseDlgTest, ChannelsThatFailAreDroppedAndSendingGoesOn) {
  PickAll(4);
  hostref::net::SetFailOpen("91002", true);
  hostref::net::SetFailStart("91003", true);
  page.Send(false);
  ASSERT_TRUE(Settle());
  EXPECT_EQ(host.list.GetItemCount(), 2);
  EXPECT_TRUE(SendButtonEnabled());
  EXPECT_EQ(hostref::net::OpenChannels(), 0u);
}

TEST_F(BaseDlgTest, CancelAsksTheParentToClose) {
  page.Item<plat::Button>(ctl::Cancel)->Click();
  plat::MessageLoop::Instance().RunPending();
  EXPECT_EQ(std::count(host.messages.begin(), host.messages.end(), msg::ClosePage), 1);
}

TEST(ParseResult, ReadsErrorThenResult) {
  struct Case {
    const char* reply;
    int32_t code;
  };
  const Case cases[] = {
      {R"({"Error":0,"result":5})", 5}, {R"({"Error":7,"result":0})", 7}, {R"({"result":"3"})", 3},
      {"abc", 0},                       {R"({"Error":true})", 1},         {R"({"Error":2.9})", 2},
      {R"({"Error":[1],"result":4})", 4}, {R"({"Error":"x"})", 0},        {"[1,2]", 0},
      {"", 0},                          {R"({"result":4294967295})", -1}, {"{\"result\":\"\xff\xfe\"}", 0},
      // Beyond 32 bits: an error, never success.
      {R"({"Error":4294967296})", INT32_MAX}, {R"({"result":-4294967296})", INT32_MIN},
      {R"({"Error":1e30})", 0},  // beyond 64 bits: unreadable, as absent
  };
  for (const Case& c : cases) EXPECT_EQ(CBaseDlg::ParseResult(c.reply), c.code) << c.reply;
  EXPECT_EQ(CBaseDlg::ParseResult(nullptr), 0);
  // A reply nested deeper than the old limit of 256 is still a reply.
  const std::string deep = std::string(300, '[') + std::string(300, ']');
  EXPECT_EQ(CBaseDlg::ParseResult(("{\"result\":6,\"x\":" + deep + "}").c_str()), 6);
}

TEST_F(BaseDlgTest, BadRepliesGiveTheirResultWithoutHarm) {
  const std::string huge = "{\"result\":0,\"pad\":\"" + std::string(10 << 20, 'x') + "\"}";
  const std::vector<std::pair<std::string, std::string>> replies = {
      {"91001", "not json"}, {"91002", "{\"result\":\"\xC3\x28\"}"}, {"91003", huge}, {"91004", "{\"Error\":{}}"}};
  for (const auto& [dev, reply] : replies) hostref::net::SetReply(dev, reply);
  PickAll(4);
  page.Send(true);
  ASSERT_TRUE(Settle());
  ASSERT_EQ(host.list.GetItemCount(), 4);
  for (int row = 0; row < 4; ++row) EXPECT_EQ(Cell(row, kColResult), T(11011)) << row;
  EXPECT_EQ(page.parsed.size(), 4u);
  EXPECT_TRUE(std::find(page.parsed.begin(), page.parsed.end(), huge) != page.parsed.end());
}

TEST_F(BaseDlgTest, AnOfflineStatusKeepsTheReplyForTheParser) {
  SharedDeviceCaps().LoadShared(1);
  hostref::net::SetStatus("91001", 110);
  page.Send(true);
  ASSERT_TRUE(Settle());
  EXPECT_EQ(Cell(0, kColResult), "[" + T(13312) + "]" + IDIRErrorString(110));
}

TEST_F(BaseDlgTest, ASetSeesItsParsedReplyWhateverTheResult) {
  UseFleet(3);
  const std::pair<const char*, const char*> replies[] = {
      {"91001", R"({"ASR":2,"result":0})"}, {"91002", R"({"ASR":1,"result":4})"}, {"91003", "not json"}};
  for (const auto& [dev, reply] : replies) hostref::net::SetReply(dev, reply);
  PickAll(3);
  page.Send(false);
  ASSERT_TRUE(Settle());
  std::sort(page.preparedReplies.begin(), page.preparedReplies.end());
  Json::Value ok, failed;
  ok["ASR"] = 2, ok["result"] = 0;
  failed["ASR"] = 1, failed["result"] = 4;
  std::vector<std::string> expected = {ok.toStyledString(), failed.toStyledString(), "none"};
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(page.preparedReplies, expected);
}

}  // namespace
