// The simulated network: answers, held replies released in order, and the
// guarantee that a stopped channel's callback never runs again.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "host/hostnet.h"
#include "host/ref/hostref.h"

namespace {

struct Answer {
  int32_t status = -1;
  std::string reply;
  bool null = false;
};

void CALLBACK Record(int32_t status, const char* reply, void* user) {
  auto* answer = static_cast<Answer*>(user);
  answer->status = status;
  answer->null = reply == nullptr;
  answer->reply = reply ? reply : "";
}

NETHANDLE Start(const std::string& dev, void* user, FUNNormalCmdCB callback = &Record) {
  NETHANDLE handle = 0;
  NETCLIENT_MNOpenNormalCmd(&handle, dev.c_str(), "{}", "");
  NETCLIENT_MNSetNormalCmdCB(handle, user, callback);
  EXPECT_EQ(NETCLIENT_MNStartNormalCmd(handle), 0);
  return handle;
}

class NetTest : public ::testing::Test {
 protected:
  void SetUp() override { hostref::net::Reset(); }
  void TearDown() override {
    hostref::net::SetHeld(false);
    hostref::net::ReleaseAll();
    hostref::net::Reset();
  }
};

TEST_F(NetTest, AnswersByDevice) {
  hostref::net::SetReply("2", "not json");
  hostref::net::SetStatus("3", 110);
  hostref::net::SetResponder([](const hostref::SentRequest& r) -> std::optional<std::string> {
    return r.devIdno == "4" ? std::optional<std::string>("{\"result\":4}") : std::nullopt;
  });
  Answer answers[4];
  NETHANDLE handles[4];
  for (int i = 0; i < 4; ++i) handles[i] = Start(std::to_string(i + 1), &answers[i]);
  hostref::net::WaitIdle();
  EXPECT_EQ(answers[0].reply, R"({"Error":0,"result":0})");
  EXPECT_EQ(answers[1].reply, "not json");
  EXPECT_EQ(answers[2].status, 110);
  EXPECT_TRUE(answers[2].null);
  EXPECT_EQ(answers[3].reply, "{\"result\":4}");
  for (NETHANDLE h : handles) EXPECT_EQ(NETCLIENT_MNCloseNormalCmd(h), 0);
  EXPECT_NE(NETCLIENT_MNCloseNormalCmd(handles[0]), 0) << "a closed channel is gone";

  hostref::net::SetFailOpen("5", true);
  NETHANDLE handle = 7;
  EXPECT_NE(NETCLIENT_MNOpenNormalCmd(&handle, "5", "{}", ""), 0);
  EXPECT_EQ(handle, 0u);
  char session[40] = {};
  hostref::net::SetSession(std::string(50, 'x'));
  NETCLIENT_GetSession(session, 39);
  EXPECT_EQ(std::string(session), std::string(39, 'x'));
}

TEST_F(NetTest, HeldRepliesAreReleasedOneAtATimeInOrder) {
  hostref::net::SetHeld(true);
  std::vector<int> order;
  std::mutex m;
  struct Tag {
    int n;
    std::vector<int>* order;
    std::mutex* m;
  } tags[3] = {{1, &order, &m}, {2, &order, &m}, {3, &order, &m}};
  auto callback = [](int32_t, const char*, void* user) {
    auto* tag = static_cast<Tag*>(user);
    std::lock_guard lock(*tag->m);
    tag->order->push_back(tag->n);
  };
  std::vector<NETHANDLE> handles;
  for (auto& tag : tags) handles.push_back(Start("1", &tag, callback));
  EXPECT_EQ(hostref::net::HeldCount(), 3u);
  ASSERT_TRUE(hostref::net::ReleaseNext());
  EXPECT_EQ(order, std::vector<int>{1}) << "the callback ran before ReleaseNext returned";
  EXPECT_EQ(hostref::net::ReleaseAll(), 2u);
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
  for (NETHANDLE h : handles) NETCLIENT_MNCloseNormalCmd(h);
}

TEST_F(NetTest, NoCallbackAfterStopEvenWhileAnswersRace) {
  // The callback writes into memory freed right after Stop returns; a late
  // callback is a use after free the sanitizers report.
  std::atomic<int> delivered{0};
  const size_t open = hostref::net::OpenChannels();
  struct Slot {
    std::atomic<int>* delivered;
    int value = 0;
  };
  auto callback = [](int32_t, const char*, void* user) {
    auto* slot = static_cast<Slot*>(user);
    slot->value += 1;
    slot->delivered->fetch_add(1);
  };
  for (int i = 0; i < 2000; ++i) {
    auto* slot = new Slot{&delivered};
    const NETHANDLE handle = Start("1", slot, callback);
    if (i % 2) std::this_thread::yield();
    NETCLIENT_MNStopNormalCmd(handle);
    NETCLIENT_MNCloseNormalCmd(handle);
    delete slot;
  }
  hostref::net::WaitIdle();
  EXPECT_LE(delivered.load(), 2000);
  EXPECT_EQ(hostref::net::OpenChannels(), open);
}

}  // namespace
