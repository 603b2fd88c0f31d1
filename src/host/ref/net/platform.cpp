// The simulated platform's channels, timed and held answers, and network threads.
#include "host/ref/net/platform.h"

#include "host/ref/net/guard.h"

namespace netsim {
namespace {
constexpr int kNetworkThreads = 2;
using Stage = Channel::Stage;
}  // namespace

Platform& Platform::Get() {
  static Platform platform;
  return platform;
}

Platform::Platform() {
  for (int i = 0; i < kNetworkThreads; ++i) threads_.emplace_back([this] { Work(); });
}

// Answers still waiting are dropped; the threads finish the callbacks they run.
Platform::~Platform() {
  {
    std::lock_guard lock(mutex_);
    quit_ = true;
  }
  work_.notify_all();
  for (auto& thread : threads_) thread.join();
}

bool Platform::AddChannel(const ChannelPtr& channel) {
  // Handles are never reused: once the counter has wrapped no channel opens.
  if (settings_.RuleOf(channel->request.devIdno).failOpen || nextHandle_ == 0) return false;
  channel->request.handle = nextHandle_++;
  channels_.emplace(channel->request.handle, channel);
  return true;
}

bool Platform::Open(const std::string& devIdno, const std::string& envelope, const std::string& param,
                    NETHANDLE* handle) {
  auto channel = std::make_shared<Channel>();
  channel->request = {0, devIdno, envelope, param};
  std::shared_ptr<const OpenObserver> observer;
  {
    std::unique_lock lock(mutex_);
    if (!AddChannel(channel)) {
      if (settings_.RuleOf(devIdno).failOpen) ReportFault(lock, devIdno, "open");
      return false;
    }
    Remember(channel->request);
    observer = observer_;
  }
  *handle = channel->request.handle;
  if (observer && *observer) Guarded("hostnet open observer", [&] { (*observer)(channel->request); });
  return true;
}

bool Platform::OpenAlarm(hostref::AlarmRequest request, NETHANDLE* handle) {
  auto channel = std::make_shared<Channel>();
  channel->request = {0, request.devIdno, "", ""};
  std::shared_ptr<const AlarmObserver> observer;
  {
    std::lock_guard lock(mutex_);
    if (!AddChannel(channel)) return false;
    request.handle = channel->request.handle;
    alarms_.push_back(request);
    if (alarms_.size() > hostref::net::kMaxSentKept) alarms_.pop_front();
    observer = alarmObserver_;
  }
  *handle = request.handle;
  if (observer && *observer) Guarded("hostnet alarm observer", [&] { (*observer)(request); });
  return true;
}

bool Platform::SetCallback(NETHANDLE handle, void* user, FUNNormalCmdCB callback) {
  std::lock_guard lock(mutex_);
  ChannelPtr channel = Find(handle);
  if (!channel) return false;
  channel->user = user;
  channel->callback = callback;
  return true;
}

bool Platform::Start(NETHANDLE handle) {
  std::unique_lock lock(mutex_);
  ChannelPtr channel = Find(handle);
  if (!channel || !channel->callback || channel->stopped || channel->stage != Stage::Open) return false;
  const std::string& devIdno = channel->request.devIdno;
  if (settings_.RuleOf(devIdno).failStart) {
    ReportFault(lock, devIdno, "start");
    return false;
  }
  if (settings_.held) {
    Hold(channel);
  } else {
    Schedule(channel, Clock::now() + std::chrono::milliseconds(settings_.DelayOf(channel->request)));
  }
  return true;
}

bool Platform::Stop(NETHANDLE handle, bool close) {
  std::unique_lock lock(mutex_);
  ChannelPtr channel = Find(handle);
  if (!channel) return false;
  channel->stopped = true;
  Drop(*channel);
  // A callback that stops its own channel cannot wait for itself.
  if (channel->runner != std::this_thread::get_id()) WaitDone(lock, *channel);
  if (close) channels_.erase(handle);
  return true;
}

bool Platform::Release(std::optional<NETHANDLE> handle) {
  std::unique_lock lock(mutex_);
  ChannelPtr channel;
  if (!handle) {
    if (held_.empty()) return false;
    channel = held_.begin()->second;
  } else {
    channel = Find(*handle);
    if (!channel || channel->stage != Stage::Held) return false;
  }
  held_.erase(channel->heldKey);
  Schedule(channel, Clock::now());
  WaitDone(lock, *channel);
  return true;
}

size_t Platform::HeldCount() {
  std::lock_guard lock(mutex_);
  return held_.size();
}

std::vector<NETHANDLE> Platform::HeldHandles() {
  std::lock_guard lock(mutex_);
  std::vector<NETHANDLE> handles;
  handles.reserve(held_.size());
  for (const auto& [key, channel] : held_) handles.push_back(channel->request.handle);
  return handles;
}

void Platform::WaitIdle() {
  std::unique_lock lock(mutex_);
  idle_.wait(lock, [&] { return timed_.empty() && running_ == 0; });
}

bool Platform::Idle() {
  std::lock_guard lock(mutex_);
  return timed_.empty() && running_ == 0;
}

void Platform::Reset() {
  std::lock_guard lock(mutex_);
  settings_ = Settings{};
  for (auto& [key, channel] : held_) channel->stage = Stage::Done;
  held_.clear();
  NotifyDone();
}

void Platform::SetOpenObserver(OpenObserver observer) {
  auto shared = std::make_shared<const OpenObserver>(std::move(observer));
  std::lock_guard lock(mutex_);
  observer_ = std::move(shared);
}

void Platform::SetAnswerObserver(AnswerObserver observer) {
  auto shared = std::make_shared<const AnswerObserver>(std::move(observer));
  std::lock_guard lock(mutex_);
  answerObserver_ = std::move(shared);
}

void Platform::SetAlarmObserver(AlarmObserver observer) {
  auto shared = std::make_shared<const AlarmObserver>(std::move(observer));
  std::lock_guard lock(mutex_);
  alarmObserver_ = std::move(shared);
}

std::vector<hostref::AlarmRequest> Platform::AlarmRequests() {
  std::lock_guard lock(mutex_);
  return {alarms_.begin(), alarms_.end()};
}

void Platform::ClearAlarmRequests() {
  std::deque<hostref::AlarmRequest> freed;
  std::lock_guard lock(mutex_);
  freed.swap(alarms_);
}

// The record of sent requests keeps the newest; a long run does not grow with it.
void Platform::Remember(const hostref::SentRequest& request) {
  sent_.push_back(request);
  if (sent_.size() > hostref::net::kMaxSentKept) sent_.pop_front();
}

std::vector<hostref::SentRequest> Platform::Sent() {
  std::lock_guard lock(mutex_);
  return {sent_.begin(), sent_.end()};
}

void Platform::ClearSent() {
  std::deque<hostref::SentRequest> freed;
  std::lock_guard lock(mutex_);
  freed.swap(sent_);
}

size_t Platform::OpenChannels() {
  std::lock_guard lock(mutex_);
  return channels_.size();
}

void Platform::Work() {
  std::unique_lock lock(mutex_);
  while (!quit_) {
    if (timed_.empty()) {
      work_.wait(lock);
      continue;
    }
    auto first = timed_.begin();
    const Clock::time_point due = first->first.first;
    if (due > Clock::now()) {
      work_.wait_until(lock, due);
      continue;
    }
    ChannelPtr channel = std::move(first->second);
    timed_.erase(first);
    Deliver(lock, channel);
  }
}

// Decides the answer under the lock and runs the callback without it.
void Platform::Deliver(std::unique_lock<std::mutex>& lock, const ChannelPtr& channel) {
  channel->stage = Stage::Running;
  channel->runner = std::this_thread::get_id();
  ++running_;
  const Answer answer = settings_.AnswerFor(channel->request.devIdno);
  const FUNNormalCmdCB callback = channel->callback;
  void* const user = channel->user;
  const std::shared_ptr<const AnswerObserver> observer = answerObserver_;
  lock.unlock();
  Guarded("hostnet answer", [&] {
    const Answer::Delivery delivery = answer.Decide(channel->request);
    const char* reply = delivery.text ? delivery.text->c_str() : nullptr;
    for (int call = 0; call < (answer.twice ? 2 : 1); ++call) {
      if (observer && *observer) (*observer)(channel->request, delivery.status, reply);
      if (callback) callback(delivery.status, reply, user);
    }
  });
  lock.lock();
  channel->runner = {};
  --running_;
  channel->stage = Stage::Done;
  NotifyDone();
}

// Wakes who waits for a channel, and who waits for the network to be idle
// once it is: a delivered answer wakes nobody who has no reason to look.
void Platform::NotifyDone() {
  if (channelWaiters_ > 0) done_.notify_all();
  if (timed_.empty() && running_ == 0) idle_.notify_all();
}

// Tells the fault observer without holding the lock; the caller returns right after.
void Platform::ReportFault(std::unique_lock<std::mutex>& lock, const std::string& devIdno, const char* step) {
  const std::shared_ptr<const FaultObserver> observer = faultObserver_;
  const std::string device = devIdno;
  lock.unlock();
  if (observer && *observer) Guarded("hostnet fault observer", [&] { (*observer)(device, step); });
}

void Platform::SetFaultObserver(FaultObserver observer) {
  auto shared = std::make_shared<const FaultObserver>(std::move(observer));
  std::lock_guard lock(mutex_);
  faultObserver_ = std::move(shared);
}

void Platform::Hold(const ChannelPtr& channel) {
  channel->stage = Stage::Held;
  channel->heldKey = nextOrder_++;
  held_.emplace(channel->heldKey, channel);
}

void Platform::Schedule(const ChannelPtr& channel, Clock::time_point due) {
  channel->stage = Stage::Timed;
  channel->timedKey = {due, nextOrder_++};
  timed_.emplace(channel->timedKey, channel);
  // Every thread looks again: one waiting for a later answer must not sleep past this one.
  work_.notify_all();
}

// Takes a waiting answer out of its queue; it will never be delivered.
void Platform::Drop(Channel& channel) {
  if (channel.stage == Stage::Timed) {
    timed_.erase(channel.timedKey);
  } else if (channel.stage == Stage::Held) {
    held_.erase(channel.heldKey);
  } else {
    return;
  }
  channel.stage = Stage::Done;
  NotifyDone();
}

ChannelPtr Platform::Find(NETHANDLE handle) const {
  auto it = channels_.find(handle);
  return it == channels_.end() ? nullptr : it->second;
}

// Waits until the channel's answer is neither waiting in the timed queue nor running.
void Platform::WaitDone(std::unique_lock<std::mutex>& lock, const Channel& channel) {
  ++channelWaiters_;
  done_.wait(lock, [&] { return channel.stage != Stage::Timed && channel.stage != Stage::Running; });
  --channelWaiters_;
}

}  // namespace netsim
