// The simulated network: which answer a request gets, refused channel steps,
// held answers released in order, and the guarantee that a stopped channel's
// callback neither runs on nor starts afterwards.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "host/hostnet.h"
#include "host/ref/hostref.h"

namespace net = hostref::net;

namespace {

constexpr const char* kDefaultReply = R"({"Error":0,"result":0})";
constexpr const char* kFromResponder = R"({"result":4})";
constexpr int kOffline = 110;
constexpr int kTimeout = 101;

struct Answer {
  int calls = 0;
  int32_t status = -1;
  std::optional<std::string> reply;
  std::thread::id thread;
};

void CALLBACK Record(int32_t status, const char* reply, void* user) {
  auto* answer = static_cast<Answer*>(user);
  ++answer->calls;
  answer->status = status;
  answer->reply = reply ? std::optional<std::string>(reply) : std::nullopt;
  answer->thread = std::this_thread::get_id();
}

class NetTest : public ::testing::Test {
 protected:
  void SetUp() override { net::Reset(); }
  void TearDown() override {
    for (NETHANDLE handle : opened_) NETCLIENT_MNCloseNormalCmd(handle);
    net::Reset();
  }
  NETHANDLE Start(const std::string& dev, void* user, FUNNormalCmdCB callback = &Record) {
    NETHANDLE handle = 0;
    EXPECT_EQ(NETCLIENT_MNOpenNormalCmd(&handle, dev.c_str(), "{}", ""), 0);
    opened_.push_back(handle);
    NETCLIENT_MNSetNormalCmdCB(handle, user, callback);
    EXPECT_EQ(NETCLIENT_MNStartNormalCmd(handle), 0);
    return handle;
  }
  std::vector<NETHANDLE> opened_;
};

using NetAnswers = NetTest;
using NetChannels = NetTest;
using NetHeld = NetTest;
using NetStop = NetTest;

TEST_F(NetAnswers, ChosenByTheDeviceRules) {
  const std::string huge(10 * 1024 * 1024, 'x');
  struct Case {
    const char* what;
    const char* dev;
    std::function<void()> setup;
    int32_t status;
    const char* reply;  // null: no reply text
  } cases[] = {
      {"default reply when the responder has none", "1", [] {}, 0, kDefaultReply},
      {"responder's answer", "R", [] {}, 0, kFromResponder},
      {"device text beats the responder", "R", [] { net::SetReply("R", "not json"); }, 0, "not json"},
      {"invalid UTF-8 as is", "9", [] { net::SetReply("9", "\xff\xfe{"); }, 0, "\xff\xfe{"},
      {"huge text as is", "9", [&] { net::SetReply("9", huge); }, 0, huge.c_str()},
      {"offline comes with the device's text", "R", [] { net::SetReply("R", "x"), net::SetStatus("R", kOffline); }, kOffline, "x"},
      {"offline without a text of its own", "R", [] { net::SetStatus("R", kOffline); }, kOffline, nullptr},
      {"a cleared text gives the responder's again", "R", [] { net::SetReply("R", "x"), net::ClearReply("R"); }, 0, kFromResponder},
      {"timeout", "R", [] { net::SetStatus("R", kTimeout); }, kTimeout, nullptr},
      {"status 0 clears", "R", [] { net::SetStatus("R", kTimeout), net::SetStatus("R", 0); }, 0, kFromResponder},
      {"throwing responder gives the default", "R", [] { net::SetResponder([](auto&) -> std::optional<std::string> {
         throw std::runtime_error("broken terminal"); }); }, 0, kDefaultReply},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    net::Reset();
    net::SetResponder([](const hostref::SentRequest& r) {
      return r.devIdno == "R" ? std::optional<std::string>(kFromResponder) : std::nullopt;
    });
    c.setup();
    Answer answer;
    Start(c.dev, &answer);
    net::WaitIdle();
    EXPECT_EQ(answer.calls, 1);
    EXPECT_EQ(answer.status, c.status);
    EXPECT_TRUE(answer.reply == (c.reply ? std::optional<std::string>(c.reply) : std::nullopt));
    EXPECT_NE(answer.thread, std::this_thread::get_id()) << "answered on a network thread";
  }
}

// The observers the reference host prints from: each answer before its
// callback (twice for a device that answers twice), and refused steps.
TEST_F(NetAnswers, ObserversSeeAnswersTwiceAndFaults) {
  std::vector<std::string> seen;  // written on network threads, read after WaitIdle
  std::mutex mutex;
  net::SetAnswerObserver([&](const hostref::SentRequest& r, int status, const char* reply) {
    std::lock_guard lock(mutex);
    seen.push_back(r.devIdno + " " + std::to_string(status) + " " + (reply ? reply : "-"));
  });
  net::SetFaultObserver([&](const std::string& dev, const char* step) {
    std::lock_guard lock(mutex);
    seen.push_back(dev + " " + step);
  });
  net::SetDuplicate("twice", true);
  net::SetStatus("off", kOffline);
  net::SetFailOpen("no-open", true);
  net::SetFailStart("no-start", true);
  Answer twice, off, refused;
  Start("twice", &twice);
  net::WaitIdle();
  Start("off", &off);
  net::WaitIdle();
  NETHANDLE handle = 0;
  EXPECT_NE(NETCLIENT_MNOpenNormalCmd(&handle, "no-open", "{}", ""), 0);
  ASSERT_EQ(NETCLIENT_MNOpenNormalCmd(&handle, "no-start", "{}", ""), 0);
  opened_.push_back(handle);
  NETCLIENT_MNSetNormalCmdCB(handle, &refused, &Record);
  EXPECT_NE(NETCLIENT_MNStartNormalCmd(handle), 0);
  net::SetAnswerObserver(nullptr);
  net::SetFaultObserver(nullptr);
  EXPECT_EQ(twice.calls, 2);
  EXPECT_EQ(refused.calls, 0);
  EXPECT_THAT(seen, ::testing::ElementsAre(std::string("twice 0 ") + kDefaultReply, std::string("twice 0 ") + kDefaultReply,
                                           "off 110 -", "no-open open", "no-start start"));
}

TEST_F(NetAnswers, SessionIsCutToTheBuffer) {
  char session[40] = {};
  NETCLIENT_GetSession(session, 39);
  EXPECT_THAT(session, ::testing::MatchesRegex("[0-9a-f]{32}"));
  net::SetSession(std::string(50, 's'));
  NETCLIENT_GetSession(session, 39);
  EXPECT_EQ(std::string(session), std::string(39, 's'));
}

TEST_F(NetAnswers, ALongerDelayAnswersLater) {
  net::SetDeviceDelayMs("slow", 30);
  static std::atomic<int> turn{0};
  turn = 0;
  int slow = -1, fast = -1;
  auto note = [](int32_t, const char*, void* user) { *static_cast<int*>(user) = turn++; };
  Start("slow", &slow, note);
  Start("fast", &fast, note);
  net::WaitIdle();
  EXPECT_EQ(fast, 0);
  EXPECT_EQ(slow, 1);
}

TEST_F(NetAnswers, TheRespondersOwnTimeDelaysOnlyItsAnswers) {
  using Clock = std::chrono::steady_clock;
  struct Timed {
    Clock::time_point answered;
  };
  constexpr auto kThinking = std::chrono::milliseconds(30);
  net::SetResponder([](const hostref::SentRequest&) { return std::optional<std::string>(kFromResponder); });
  // Were the minute applied to the device with its own reply, the test would wait for it.
  net::SetAnswerDelay([](const hostref::SentRequest& r) { return r.devIdno == "thinking" ? 30 : 60000; });
  net::SetReply("fixed", "x");
  auto note = [](int32_t, const char*, void* user) { static_cast<Timed*>(user)->answered = Clock::now(); };
  Timed thinking, fixed;
  const auto start = Clock::now();
  Start("thinking", &thinking, note);
  Start("fixed", &fixed, note);
  net::WaitIdle();
  EXPECT_GE(thinking.answered - start, kThinking);
  EXPECT_LT(fixed.answered - start, std::chrono::seconds(30));
}

TEST_F(NetChannels, RefusedStepsAndCounts) {
  const size_t open = net::OpenChannels();
  net::SetFailOpen("no-open", true);
  net::SetFailStart("no-start", true);
  NETHANDLE handle = 7;
  EXPECT_NE(NETCLIENT_MNOpenNormalCmd(&handle, "no-open", "{}", ""), 0);
  EXPECT_EQ(handle, 0u);
  Answer answer;
  NETHANDLE a = 0, b = 0;
  ASSERT_EQ(NETCLIENT_MNOpenNormalCmd(&a, "no-start", "{}", ""), 0);
  NETCLIENT_MNSetNormalCmdCB(a, &answer, &Record);
  EXPECT_NE(NETCLIENT_MNStartNormalCmd(a), 0);
  ASSERT_EQ(NETCLIENT_MNOpenNormalCmd(&b, "1", "{}", ""), 0);
  EXPECT_GT(b, a) << "handles only grow";
  EXPECT_NE(NETCLIENT_MNStartNormalCmd(b), 0) << "no callback yet";
  NETCLIENT_MNSetNormalCmdCB(b, &answer, &Record);
  EXPECT_EQ(NETCLIENT_MNStartNormalCmd(b), 0);
  EXPECT_NE(NETCLIENT_MNStartNormalCmd(b), 0) << "a channel starts once";
  net::WaitIdle();
  EXPECT_EQ(answer.calls, 1);
  EXPECT_EQ(net::OpenChannels(), open + 2);
  for (NETHANDLE h : {a, b}) EXPECT_EQ(NETCLIENT_MNCloseNormalCmd(h), 0);
  EXPECT_NE(NETCLIENT_MNCloseNormalCmd(a), 0) << "a closed channel is gone";
  EXPECT_EQ(net::OpenChannels(), open);
}

// A long run does not grow the record of what was sent: the newest requests stay, in order.
TEST_F(NetChannels, TheRecordOfSentRequestsKeepsTheNewest) {
  net::ClearSent();
  constexpr size_t kExtra = 3;
  std::vector<NETHANDLE> handles;
  for (size_t i = 0; i < net::kMaxSentKept + kExtra; ++i) {
    NETHANDLE handle = 0;
    ASSERT_EQ(NETCLIENT_MNOpenNormalCmd(&handle, "1", "{}", std::to_string(i).c_str()), 0);
    handles.push_back(handle);
    NETCLIENT_MNCloseNormalCmd(handle);
  }
  const auto sent = net::Sent();
  ASSERT_EQ(sent.size(), net::kMaxSentKept);
  EXPECT_EQ(sent.front().handle, handles[kExtra]);
  EXPECT_EQ(sent.front().param, std::to_string(kExtra));
  EXPECT_EQ(sent.back().handle, handles.back());
  net::ClearSent();
  EXPECT_TRUE(net::Sent().empty());
}

TEST_F(NetHeld, ReleasedOneAtATimeInOrder) {
  net::SetHeld(true);
  Answer answers[3];
  std::vector<NETHANDLE> handles;
  for (Answer& answer : answers) handles.push_back(Start("1", &answer));
  EXPECT_EQ(net::HeldHandles(), handles);
  auto calls = [&] { return std::vector<int>{answers[0].calls, answers[1].calls, answers[2].calls}; };
  ASSERT_TRUE(net::ReleaseNext());
  EXPECT_EQ(calls(), (std::vector<int>{1, 0, 0})) << "the callback returned before ReleaseNext";
  ASSERT_TRUE(net::Release(handles[2]));
  EXPECT_EQ(calls(), (std::vector<int>{1, 0, 1}));
  EXPECT_EQ(net::ReleaseAll(), 1u);
  EXPECT_EQ(calls(), (std::vector<int>{1, 1, 1}));
}

TEST_F(NetHeld, ResetDropsHeldAnswersAndKeepsTheChannels) {
  net::SetHeld(true);
  Answer answer;
  const NETHANDLE handle = Start("1", &answer);
  net::Reset();
  EXPECT_EQ(net::HeldCount(), 0u);
  EXPECT_EQ(answer.calls, 0);
  EXPECT_EQ(NETCLIENT_MNCloseNormalCmd(handle), 0);
}

TEST_F(NetStop, DropsTheWaitingAnswer) {
  Answer later, held;  // a minute's delay: only a dropped answer lets WaitIdle return
  net::SetDelayMs(60'000);
  const NETHANDLE timed = Start("1", &later);
  net::SetHeld(true);
  const NETHANDLE kept = Start("1", &held);
  EXPECT_EQ(NETCLIENT_MNStopNormalCmd(timed), 0);
  EXPECT_EQ(NETCLIENT_MNStopNormalCmd(kept), 0);
  net::WaitIdle();
  EXPECT_EQ(net::HeldCount() + later.calls + held.calls, 0u);
  EXPECT_NE(NETCLIENT_MNStartNormalCmd(timed), 0) << "a stopped channel does not start again";
}

TEST_F(NetStop, ACallbackMayCloseItsOwnChannel) {
  const size_t open = net::OpenChannels();
  net::SetHeld(true);  // the handle is known before the answer comes
  NETHANDLE own = Start("1", &own, [](int32_t, const char*, void* user) {
    NETCLIENT_MNCloseNormalCmd(*static_cast<NETHANDLE*>(user));
  });
  ASSERT_TRUE(net::ReleaseNext());
  EXPECT_EQ(net::OpenChannels(), open);
}

// Channels are stopped while the network threads answer them, their user data freed right after
// Stop: a callback still running, or entered later, writes into freed memory (sanitizers report it).
TEST_F(NetStop, NoCallbackAfterStopWhileAnswersRace) {
  constexpr int kChannels = 2000;
  struct Slot { std::string reply; std::atomic<int>* delivered; };
  std::atomic<int> delivered{0};
  auto write = [](int32_t, const char* reply, void* user) {
    auto* slot = static_cast<Slot*>(user);
    slot->reply = reply;
    slot->delivered->fetch_add(1);
  };
  for (int i = 0; i < kChannels; ++i) {
    auto* slot = new Slot{{}, &delivered};
    const NETHANDLE handle = Start("1", slot, write);
    if (i == 0) {
      while (delivered.load() == 0) std::this_thread::yield();  // one answer surely comes before its stop
    } else if (i % 2) {
      std::this_thread::yield();  // lets some answers start before their stop
    }
    EXPECT_EQ(NETCLIENT_MNStopNormalCmd(handle), 0);
    delete slot;
    EXPECT_EQ(NETCLIENT_MNCloseNormalCmd(handle), 0);
  }
  net::WaitIdle();
  EXPECT_GT(delivered.load(), 0);
}

}  // namespace
