// The simulated platform behind the command channel. Started requests are
// answered on a small pool of network threads after the device's delay, or
// held until a test releases them. Stopping a channel removes its pending
// answer and waits for a callback that is running at that moment, so once
// NETCLIENT_MNStopNormalCmd returns the channel's callback never runs again.
#include <algorithm>
#include <atomic>
#include <functional>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <queue>
#include <set>
#include <thread>
#include <unordered_map>
#include <vector>

#include "host/hostnet.h"
#include "host/ref/hostref.h"

namespace {

using Clock = std::chrono::steady_clock;
constexpr int kThreads = 2;
constexpr int kOk = 0, kFailed = -1;
constexpr const char* kDefaultSession = "5f2c9a01d3e84b7690a1c2e3f4a5b6c7";
constexpr const char* kDefaultReply = R"({"Error":0,"result":0})";

struct Channel {
  NETHANDLE handle = 0;
  hostref::SentRequest request;
  void* user = nullptr;
  FUNNormalCmdCB callback = nullptr;
  bool queued = false;    // an answer waits in the timed queue or among the held ones
  bool running = false;   // its callback runs now
  bool stopped = false;
  std::thread::id runner;
  uint64_t deliveries = 0;
};

struct Entry {
  Clock::time_point due;
  uint64_t order;
  std::shared_ptr<Channel> channel;
  bool operator>(const Entry& o) const { return due != o.due ? due > o.due : order > o.order; }
};

class Simulator {
 public:
  Simulator() {
    for (int i = 0; i < kThreads; ++i) threads_.emplace_back([this] { Work(); });
  }
  ~Simulator() {
    {
      std::lock_guard lock(mutex_);
      quit_ = true;
    }
    work_.notify_all();
    for (auto& t : threads_) t.join();
  }

  std::mutex mutex_;
  std::condition_variable work_;  // the queue changed
  std::condition_variable done_;  // a callback finished or an answer went away

  // Settings.
  std::string session_ = kDefaultSession;
  int delayMs_ = 0;
  bool held_ = false;
  std::unordered_map<std::string, int> deviceDelay_, deviceStatus_;
  std::unordered_map<std::string, std::string> deviceReply_;
  std::set<std::string> failOpen_, failStart_;
  hostref::net::Responder responder_;
  std::function<void(const hostref::SentRequest&)> openObserver_;

  // Channels and answers.
  std::unordered_map<NETHANDLE, std::shared_ptr<Channel>> channels_;
  std::priority_queue<Entry, std::vector<Entry>, std::greater<>> queue_;
  std::deque<std::shared_ptr<Channel>> heldQueue_;
  size_t unheldPending_ = 0;  // answers queued or running, not held
  NETHANDLE nextHandle_ = 1;
  uint64_t order_ = 0;
  std::vector<hostref::SentRequest> sent_;
  bool quit_ = false;

  void Schedule(const std::shared_ptr<Channel>& channel, Clock::time_point due) {
    channel->queued = true;
    ++unheldPending_;
    queue_.push({due, order_++, channel});
    work_.notify_one();
  }

  int DelayOf(const std::string& dev) {
    auto it = deviceDelay_.find(dev);
    return it != deviceDelay_.end() ? it->second : delayMs_;
  }

 private:
  void Work() {
    std::unique_lock lock(mutex_);
    for (;;) {
      work_.wait(lock, [&] { return quit_ || !queue_.empty(); });
      if (quit_) return;
      const auto due = queue_.top().due;
      if (due > Clock::now()) {
        work_.wait_until(lock, due);
        continue;
      }
      Entry entry = queue_.top();
      queue_.pop();
      Deliver(lock, entry.channel);
      --unheldPending_;
      done_.notify_all();
    }
  }

 public:
  // Runs a channel's callback without the lock; the lock is held on entry and on return.
  void Deliver(std::unique_lock<std::mutex>& lock, const std::shared_ptr<Channel>& channel) {
    if (!channel->queued || channel->stopped) return;
    channel->queued = false;
    channel->running = true;
    channel->runner = std::this_thread::get_id();
    const std::string dev = channel->request.devIdno;
    int status = 0;
    std::optional<std::string> reply;
    if (auto s = deviceStatus_.find(dev); s != deviceStatus_.end()) {
      status = s->second;
    } else if (auto r = deviceReply_.find(dev); r != deviceReply_.end()) {
      reply = r->second;
    }
    hostref::net::Responder responder = status == 0 && !reply ? responder_ : nullptr;
    lock.unlock();
    if (responder) reply = responder(channel->request);
    if (status == 0 && !reply) reply = kDefaultReply;
    channel->callback(status, status == 0 ? reply->c_str() : nullptr, channel->user);
    lock.lock();
    channel->running = false;
    ++channel->deliveries;
    done_.notify_all();
  }

  // Waits until the channel's callback is not running (unless this thread runs it).
  void WaitNotRunning(std::unique_lock<std::mutex>& lock, const std::shared_ptr<Channel>& channel) {
    if (channel->runner == std::this_thread::get_id()) return;
    done_.wait(lock, [&] { return !channel->running; });
  }

 private:
  std::vector<std::thread> threads_;
};

Simulator& Sim() {
  static Simulator simulator;
  return simulator;
}

std::shared_ptr<Channel> Find(Simulator& sim, NETHANDLE handle) {
  auto it = sim.channels_.find(handle);
  return it == sim.channels_.end() ? nullptr : it->second;
}

void Unqueue(Simulator& sim, Channel& channel) {
  if (!channel.queued) return;
  channel.queued = false;
  auto held = std::find_if(sim.heldQueue_.begin(), sim.heldQueue_.end(), [&](const auto& c) { return c.get() == &channel; });
  if (held != sim.heldQueue_.end()) {
    sim.heldQueue_.erase(held);
  }
  // An entry left in the timed queue is skipped when it comes up, and counted down then.
}

}  // namespace

int NETCLIENT_GetSession(char* buffer, int len) {
  if (!buffer || len < 0) return kFailed;
  Simulator& sim = Sim();
  std::lock_guard lock(sim.mutex_);
  const size_t n = std::min(sim.session_.size(), static_cast<size_t>(len));
  std::memcpy(buffer, sim.session_.data(), n);
  buffer[n] = '\0';
  return kOk;
}

int NETCLIENT_MNOpenNormalCmd(NETHANDLE* handle, const char* devIdno, const char* envelope, const char* param) {
  if (!handle) return kFailed;
  *handle = 0;
  Simulator& sim = Sim();
  std::function<void(const hostref::SentRequest&)> observer;
  hostref::SentRequest request;
  {
    std::lock_guard lock(sim.mutex_);
    const std::string dev = devIdno ? devIdno : "";
    if (sim.failOpen_.count(dev)) return kFailed;
    auto channel = std::make_shared<Channel>();
    channel->handle = sim.nextHandle_++;
    channel->request = {channel->handle, dev, envelope ? envelope : "", param ? param : ""};
    sim.sent_.push_back(channel->request);
    sim.channels_[channel->handle] = channel;
    *handle = channel->handle;
    observer = sim.openObserver_;
    if (observer) request = channel->request;
  }
  if (observer) observer(request);
  return kOk;
}

int NETCLIENT_MNSetNormalCmdCB(NETHANDLE handle, void* user, FUNNormalCmdCB callback) {
  Simulator& sim = Sim();
  std::lock_guard lock(sim.mutex_);
  auto channel = Find(sim, handle);
  if (!channel) return kFailed;
  channel->user = user;
  channel->callback = callback;
  return kOk;
}

int NETCLIENT_MNStartNormalCmd(NETHANDLE handle) {
  Simulator& sim = Sim();
  std::lock_guard lock(sim.mutex_);
  auto channel = Find(sim, handle);
  if (!channel || !channel->callback || channel->stopped || channel->queued) return kFailed;
  if (sim.failStart_.count(channel->request.devIdno)) return kFailed;
  if (sim.held_) {
    channel->queued = true;
    sim.heldQueue_.push_back(channel);
  } else {
    sim.Schedule(channel, Clock::now() + std::chrono::milliseconds(sim.DelayOf(channel->request.devIdno)));
  }
  return kOk;
}

namespace {
// Stops a channel: its pending answer goes, and a callback running now is
// waited for. With release set, the channel is also closed.
int StopChannel(NETHANDLE handle, bool release) {
  Simulator& sim = Sim();
  std::unique_lock lock(sim.mutex_);
  auto channel = Find(sim, handle);
  if (!channel) return kFailed;
  channel->stopped = true;
  Unqueue(sim, *channel);
  sim.WaitNotRunning(lock, channel);
  if (release) sim.channels_.erase(handle);
  return kOk;
}
}  // namespace

int NETCLIENT_MNStopNormalCmd(NETHANDLE handle) { return StopChannel(handle, false); }

int NETCLIENT_MNCloseNormalCmd(NETHANDLE handle) { return StopChannel(handle, true); }

namespace hostref::net {

void Reset() {
  Simulator& sim = Sim();
  std::lock_guard lock(sim.mutex_);
  sim.session_ = kDefaultSession;
  sim.delayMs_ = 0;
  sim.held_ = false;
  for (auto& channel : sim.heldQueue_) channel->queued = false;
  sim.heldQueue_.clear();
  sim.deviceDelay_.clear();
  sim.deviceStatus_.clear();
  sim.deviceReply_.clear();
  sim.failOpen_.clear();
  sim.failStart_.clear();
  sim.responder_ = nullptr;
}

void SetSession(const std::string& session) {
  std::lock_guard lock(Sim().mutex_);
  Sim().session_ = session;
}
void SetDelayMs(int ms) {
  std::lock_guard lock(Sim().mutex_);
  Sim().delayMs_ = ms;
}
void SetDeviceDelayMs(const std::string& devIdno, int ms) {
  std::lock_guard lock(Sim().mutex_);
  Sim().deviceDelay_[devIdno] = ms;
}
void SetStatus(const std::string& devIdno, int status) {
  std::lock_guard lock(Sim().mutex_);
  if (status == 0) Sim().deviceStatus_.erase(devIdno);
  else Sim().deviceStatus_[devIdno] = status;
}
void SetReply(const std::string& devIdno, const std::string& reply) {
  std::lock_guard lock(Sim().mutex_);
  Sim().deviceReply_[devIdno] = reply;
}
void SetResponder(Responder responder) {
  std::lock_guard lock(Sim().mutex_);
  Sim().responder_ = std::move(responder);
}
void SetFailOpen(const std::string& devIdno, bool fail) {
  std::lock_guard lock(Sim().mutex_);
  fail ? void(Sim().failOpen_.insert(devIdno)) : void(Sim().failOpen_.erase(devIdno));
}
void SetFailStart(const std::string& devIdno, bool fail) {
  std::lock_guard lock(Sim().mutex_);
  fail ? void(Sim().failStart_.insert(devIdno)) : void(Sim().failStart_.erase(devIdno));
}

void SetHeld(bool held) {
  std::lock_guard lock(Sim().mutex_);
  Sim().held_ = held;
}

size_t HeldCount() {
  std::lock_guard lock(Sim().mutex_);
  return Sim().heldQueue_.size();
}

namespace {
// Sends one held answer out on a network thread and waits until it was
// delivered or its channel stopped.
void ReleaseHeld(Simulator& sim, std::unique_lock<std::mutex>& lock, std::shared_ptr<Channel> channel) {
  channel->queued = false;
  const uint64_t before = channel->deliveries;
  sim.Schedule(channel, Clock::now());
  sim.done_.wait(lock, [&] { return channel->deliveries > before || (channel->stopped && !channel->running); });
}
}  // namespace

bool Release(uint32_t handle) {
  Simulator& sim = Sim();
  std::unique_lock lock(sim.mutex_);
  auto it = std::find_if(sim.heldQueue_.begin(), sim.heldQueue_.end(), [&](const auto& c) { return c->handle == handle; });
  if (it == sim.heldQueue_.end()) return false;
  auto channel = *it;
  sim.heldQueue_.erase(it);
  ReleaseHeld(sim, lock, channel);
  return true;
}

std::vector<uint32_t> HeldHandles() {
  std::lock_guard lock(Sim().mutex_);
  std::vector<uint32_t> handles;
  for (const auto& channel : Sim().heldQueue_) handles.push_back(channel->handle);
  return handles;
}

void SetOpenObserver(std::function<void(const SentRequest&)> observer) {
  std::lock_guard lock(Sim().mutex_);
  Sim().openObserver_ = std::move(observer);
}

bool ReleaseNext() {
  Simulator& sim = Sim();
  std::unique_lock lock(sim.mutex_);
  if (sim.heldQueue_.empty()) return false;
  auto channel = sim.heldQueue_.front();
  sim.heldQueue_.pop_front();
  ReleaseHeld(sim, lock, channel);
  return true;
}

size_t ReleaseAll() {
  size_t released = 0;
  while (ReleaseNext()) ++released;
  return released;
}

void WaitIdle() {
  Simulator& sim = Sim();
  std::unique_lock lock(sim.mutex_);
  sim.done_.wait(lock, [&] { return sim.unheldPending_ == 0; });
}

std::vector<SentRequest> Sent() {
  std::lock_guard lock(Sim().mutex_);
  return Sim().sent_;
}

void ClearSent() {
  std::lock_guard lock(Sim().mutex_);
  std::vector<SentRequest>().swap(Sim().sent_);
}

size_t OpenChannels() {
  std::lock_guard lock(Sim().mutex_);
  return Sim().channels_.size();
}


}  // namespace hostref::net
