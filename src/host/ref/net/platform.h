// The simulated platform behind the command channel: the open channels, the
// answers waiting for their time or held for a test, and the network threads
// that deliver them. One instance per process.
//
// A channel is started once. Its answer then waits in the timed queue (by due
// time, then in start order) or, in held mode, among the held answers until a
// test releases it into the timed queue. A network thread takes the first due
// answer, decides its text and runs the callback without holding the lock.
// Stop drops a waiting answer and waits for a callback that runs at that
// moment on another thread; once Stop has returned the channel's callback is
// neither running nor entered again.
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include "host/hostnet.h"
#include "host/ref/hostref.h"
#include "host/ref/net/answers.h"

namespace netsim {

using Clock = std::chrono::steady_clock;
using TimedKey = std::pair<Clock::time_point, uint64_t>;  // due time, start order
using OpenObserver = std::function<void(const hostref::SentRequest&)>;
using AnswerObserver = hostref::net::AnswerObserver;
using FaultObserver = std::function<void(const std::string& devIdno, const char* step)>;
using AlarmObserver = std::function<void(const hostref::AlarmRequest&)>;

struct Channel {
  enum class Stage { Open, Timed, Held, Running, Done };

  hostref::SentRequest request;  // immutable once opened
  void* user = nullptr;
  FUNNormalCmdCB callback = nullptr;
  Stage stage = Stage::Open;
  bool stopped = false;
  TimedKey timedKey{};     // its place in the timed queue while Timed
  uint64_t heldKey = 0;    // its place among the held answers while Held
  std::thread::id runner;  // the thread running its callback while Running
};
using ChannelPtr = std::shared_ptr<Channel>;

class Platform {
 public:
  static Platform& Get();
  ~Platform();
  Platform(const Platform&) = delete;
  Platform& operator=(const Platform&) = delete;

  // The channel steps behind NETCLIENT_*: false for an unknown handle or a refused step.
  bool Open(const std::string& devIdno, const std::string& envelope, const std::string& param, NETHANDLE* handle);
  // A request of the alarm service: a channel like any other (answers, delays,
  // held mode and stop apply alike), kept apart from the command requests.
  bool OpenAlarm(hostref::AlarmRequest request, NETHANDLE* handle);
  bool SetCallback(NETHANDLE handle, void* user, FUNNormalCmdCB callback);
  bool Start(NETHANDLE handle);
  // With close set the channel is released as well.
  bool Stop(NETHANDLE handle, bool close);

  // Releases one held answer (the oldest without a handle) and waits until it
  // was delivered or its channel stopped.
  bool Release(std::optional<NETHANDLE> handle);
  size_t HeldCount();
  std::vector<NETHANDLE> HeldHandles();
  void WaitIdle();
  // No answer waits for its time or runs now (held answers do not count).
  bool Idle();
  // Default settings; held answers are dropped without a callback.
  void Reset();

  // Runs body(settings) under the lock.
  template <class F>
  auto Edit(F&& body) {
    std::lock_guard lock(mutex_);
    return body(settings_);
  }
  void SetOpenObserver(OpenObserver observer);
  void SetAnswerObserver(AnswerObserver observer);
  void SetFaultObserver(FaultObserver observer);
  void SetAlarmObserver(AlarmObserver observer);
  std::vector<hostref::AlarmRequest> AlarmRequests();
  void ClearAlarmRequests();
  std::vector<hostref::SentRequest> Sent();
  void ClearSent();
  size_t OpenChannels();

 private:
  Platform();
  void Work();
  void Deliver(std::unique_lock<std::mutex>& lock, const ChannelPtr& channel);
  void Schedule(const ChannelPtr& channel, Clock::time_point due);
  void Drop(Channel& channel);
  void Hold(const ChannelPtr& channel);
  ChannelPtr Find(NETHANDLE handle) const;
  // Registers a new channel; false when the device refuses or handles ran out.
  bool AddChannel(const ChannelPtr& channel);
  void WaitDone(std::unique_lock<std::mutex>& lock, const Channel& channel);

  std::mutex mutex_;
  std::condition_variable work_;  // the timed queue changed, or the threads quit
  std::condition_variable done_;  // an answer was delivered or dropped, while a channel's waiter waits
  std::condition_variable idle_;  // no answer waits for its time or runs now
  size_t channelWaiters_ = 0;     // threads waiting in WaitDone
  void NotifyDone();
  Settings settings_;
  std::shared_ptr<const OpenObserver> observer_;
  std::shared_ptr<const AnswerObserver> answerObserver_;
  std::shared_ptr<const FaultObserver> faultObserver_;
  void ReportFault(std::unique_lock<std::mutex>& lock, const std::string& devIdno, const char* step);
  std::shared_ptr<const AlarmObserver> alarmObserver_;
  std::deque<hostref::AlarmRequest> alarms_;  // the newest kMaxSentKept alarm requests
  std::unordered_map<NETHANDLE, ChannelPtr> channels_;
  std::map<TimedKey, ChannelPtr> timed_;
  std::map<uint64_t, ChannelPtr> held_;
  std::deque<hostref::SentRequest> sent_;  // the newest kMaxSentKept requests
  void Remember(const hostref::SentRequest& request);
  NETHANDLE nextHandle_ = 1;
  uint64_t nextOrder_ = 0;
  size_t running_ = 0;  // callbacks running now
  bool quit_ = false;
  std::vector<std::thread> threads_;
};

}  // namespace netsim
