// The host's alarm service: records taken byte for byte, answers as result
// codes from the same faults as the command channel, held answers in order,
// and no callback after a request's handle is released, even while answers race.
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <cstring>
#include <thread>
#include <vector>

#include "host/hostcore.h"
#include "host/hostnet.h"
#include "host/ref/hostref.h"

namespace net = hostref::net;

namespace {

struct Got {
  std::atomic<int> calls{0};
  int32_t result = -1;
  int32_t kind = 0;
};

void CALLBACK Keep(void* message, void* user) {
  auto* got = static_cast<Got*>(user);
  got->result = NETCLIENT_MCMsgResult(message);
  got->kind = static_cast<const _tagMCAnswerMsg*>(message)->kind;
  NETCLIENT_MCReleaseMsg(message);
  got->calls.fetch_add(1);
}

// A record of the given size naming a device where the service looks for it.
std::vector<uint8_t> RecordFor(size_t size, size_t devOffset, const char* dev) {
  std::vector<uint8_t> record(size);
  for (size_t i = 0; i < size; ++i) record[i] = static_cast<uint8_t>(i * 7);
  std::memset(record.data() + devOffset, 0, 32);
  std::memcpy(record.data() + devOffset, dev, std::strlen(dev));
  return record;
}

class AlarmService : public ::testing::Test {
 protected:
  void SetUp() override {
    net::Reset();
    net::ClearAlarmRequests();
  }
  void TearDown() override {
    for (NETHANDLE handle : handles_) NETCLIENT_MCReleaseHandle(handle);
    net::Reset();
  }
  using AlarmServiceCall = int (*)(const void*, void*, FUNMCMsgCB, NETHANDLE*);
  NETHANDLE Start(AlarmServiceCall start, const std::vector<uint8_t>& record, Got& got) {
    NETHANDLE handle = 0;
    EXPECT_EQ(start(record.data(), &got, &Keep, &handle), 0);
    handles_.push_back(handle);
    return handle;
  }
  std::vector<NETHANDLE> handles_;
};

TEST_F(AlarmService, EachRequestKeepsItsWholeRecordAndNamesItsDevice) {
  struct Case {
    const char* what;
    AlarmServiceCall start;
    size_t size, devOffset;
    int32_t kind;
  };
  const Case cases[] = {
      {"handling", &NETCLIENT_MCMultifunHandleAlarm, kAlarmHandleRecordSize, kAlarmHandleDevIdOffset, kMCKindHandleAlarm},
      {"handling text", &NETCLIENT_MCSetDevHandleAlarm, kDevHandleRecordSize, kDevHandleDevIdOffset, kMCKindDevHandleAlarm},
      {"platform answer", &NETCLIENT_MCAck809Platform, kAck809RecordSize, kAck809DevIdOffset, kMCKindAck809},
  };
  for (const Case& c : cases) {
    net::ClearAlarmRequests();
    const auto record = RecordFor(c.size, c.devOffset, "10001");
    Got got;
    Start(c.start, record, got);
    net::WaitIdle();
    const auto requests = net::AlarmRequests();
    ASSERT_EQ(requests.size(), 1u) << c.what;
    EXPECT_EQ(requests[0].record, record) << c.what;
    EXPECT_EQ(requests[0].devIdno, "10001") << c.what;
    EXPECT_EQ(requests[0].kind, c.kind) << c.what;
    EXPECT_EQ(got.calls.load(), 1) << c.what;
    EXPECT_EQ(got.kind, c.kind) << c.what;
  }
  EXPECT_TRUE(net::Sent().empty()) << "alarm requests are not command requests";
}

TEST_F(AlarmService, TheAnswersResultFollowsTheDevicesFaults) {
  struct Case {
    const char* what;
    const char* dev;
    int32_t result;
  };
  net::SetStatus("20002", 101);
  net::SetReply("20003", R"({"Error":0,"result":5})");
  net::SetReply("20004", R"({"Error":7})");
  net::SetReply("20005", "not json");
  const Case cases[] = {{"default success", "20001", 0},
                        {"offline", "20002", 101},
                        {"result of the reply", "20003", 5},
                        {"error of the reply", "20004", 7},
                        {"unreadable reply", "20005", 0}};
  for (const Case& c : cases) {
    Got got;
    Start(&NETCLIENT_MCAck809Platform, RecordFor(kAck809RecordSize, 0, c.dev), got);
    net::WaitIdle();
    EXPECT_EQ(got.result, c.result) << c.what;
  }
  NETHANDLE handle = 9;
  net::SetFailOpen("20006", true);
  Got refused;
  const auto record = RecordFor(kAck809RecordSize, 0, "20006");
  EXPECT_NE(NETCLIENT_MCAck809Platform(record.data(), &refused, &Keep, &handle), 0);
  EXPECT_EQ(handle, 0u);
  EXPECT_NE(NETCLIENT_MCAck809Platform(nullptr, &refused, &Keep, &handle), 0) << "no record";
  EXPECT_EQ(NETCLIENT_MCMsgResult(nullptr), -1);
}

TEST_F(AlarmService, HeldAnswersComeInOrderAndAReleasedHandleGetsNone) {
  net::SetHeld(true);
  Got first, second, third;
  const auto record = RecordFor(kAlarmHandleRecordSize, kAlarmHandleDevIdOffset, "1");
  Start(&NETCLIENT_MCMultifunHandleAlarm, record, first);
  const NETHANDLE dropped = Start(&NETCLIENT_MCMultifunHandleAlarm, record, second);
  Start(&NETCLIENT_MCMultifunHandleAlarm, record, third);
  ASSERT_TRUE(net::ReleaseNext());
  EXPECT_EQ(first.calls.load(), 1);
  EXPECT_EQ(third.calls.load(), 0) << "the later answer waits";
  EXPECT_EQ(NETCLIENT_MCReleaseHandle(dropped), 0);
  EXPECT_EQ(net::ReleaseAll(), 1u);
  EXPECT_EQ(second.calls.load(), 0);
  EXPECT_EQ(third.calls.load(), 1);
  EXPECT_NE(NETCLIENT_MCReleaseHandle(dropped), 0) << "released once";
}

// Handles released while the network threads answer them, the user data freed right after:
// a callback still running, or entered later, writes into freed memory (sanitizers report it).
TEST_F(AlarmService, NoCallbackAfterReleaseWhileAnswersRace) {
  constexpr int kRequests = 1000;
  // How many answers arrived, and a signal at each.
  struct Delivered {
    std::mutex lock;
    std::condition_variable arrived;
    int count = 0;
  } delivered;
  struct Slot {
    int32_t result;
    Delivered* delivered;
  };
  auto write = [](void* message, void* user) {
    auto* slot = static_cast<Slot*>(user);
    slot->result = NETCLIENT_MCMsgResult(message);
    NETCLIENT_MCReleaseMsg(message);
    std::lock_guard lock(slot->delivered->lock);
    ++slot->delivered->count;
    slot->delivered->arrived.notify_all();
  };
  const auto record = RecordFor(kAck809RecordSize, 0, "1");
  for (int i = 0; i < kRequests; ++i) {
    auto* slot = new Slot{-1, &delivered};
    std::unique_lock lock(delivered.lock);
    const int before = delivered.count;
    lock.unlock();
    NETHANDLE handle = 0;
    ASSERT_EQ(NETCLIENT_MCAck809Platform(record.data(), slot, write, &handle), 0);
    if (i % 100 == 0) {
      // Now and then the answer is let through before the release, so some answers always arrive.
      lock.lock();
      delivered.arrived.wait_for(lock, std::chrono::seconds(10), [&] { return delivered.count != before; });
      lock.unlock();
    } else if (i % 2) {
      std::this_thread::yield();
    }
    EXPECT_EQ(NETCLIENT_MCReleaseHandle(handle), 0);
    delete slot;
  }
  net::WaitIdle();
  std::lock_guard lock(delivered.lock);
  EXPECT_GT(delivered.count, 0) << "no answer raced with its release";
}

TEST(AlarmHandleLog, ReleasedEntriesAreKeptInOrder) {
  ASSERT_TRUE(hostref::OpenDataDir(""));
  for (int way : {2, 5}) {
    CAlarmHandleInfo* entry = CAlarmHandleInfoMgr::CreateObject();
    ASSERT_NE(entry, nullptr);
    entry->SetHandleText("处理" + std::to_string(way));
    entry->SetHandleWay(way);
    entry->SetHandleTime(SYSTEMTIME{2026, 11, 1, 23, 8, 30, 5, 0});
    CAlarmHandleInfoMgr::ReleaseObject(entry);
  }
  CAlarmHandleInfoMgr::ReleaseObject(nullptr);
  const auto log = hostref::HandleLog();
  ASSERT_EQ(log.size(), 2u);
  EXPECT_EQ(log[0].text, "处理2");
  EXPECT_EQ(log[1].way, 5);
  EXPECT_EQ(log[1].time, "2026-11-23 08:30:05");
}

TEST(AlarmRecords, FieldsLandAtTheirOffsetsAndWrongTypesAreRefused) {
  Json::Value alarm;
  alarm["devIdno"] = "10001";
  alarm["guid"] = "G-1";
  alarm["text"] = "SBAC=77,x";
  alarm["msgId"] = 0x1234;
  alarm["type"] = 3;
  alarm["time2"] = 0x01020304;
  auto record = hostref::MakeAlarmRecord(alarm);
  ASSERT_TRUE(record);
  ASSERT_EQ(record->size(), sizeof(_GPSVehicleAlarm));
  EXPECT_STREQ(reinterpret_cast<const char*>(record->data()), "10001");
  EXPECT_STREQ(reinterpret_cast<const char*>(record->data() + 32), "G-1");
  EXPECT_STREQ(reinterpret_cast<const char*>(record->data() + 164), "SBAC=77,x");
  EXPECT_EQ((*record)[106], 0x34);
  EXPECT_EQ((*record)[107], 0x12);
  EXPECT_EQ((*record)[144], 3);
  EXPECT_EQ((*record)[424], 4);
  EXPECT_EQ((*record)[427], 1);
  alarm["type"] = "three";
  std::string error;
  EXPECT_FALSE(hostref::MakeAlarmRecord(alarm, &error));
  EXPECT_EQ(error, "type: expected an integer");
}

}  // namespace
