#include "pages/alarms/alarm_call.h"

#include <thread>

bool AlarmServiceCall::Start(Starter start, const void* record) {
  ReleaseHandle();
  return start(record, this, &AlarmServiceCall::OnAnswer, &handle_) == 0;
}

void AlarmServiceCall::ReleaseHandle() {
  if (handle_ == 0) return;
  NETCLIENT_MCReleaseHandle(handle_);
  handle_ = 0;
}

void* AlarmServiceCall::Take(WPARAM wParam) {
  void* message = reinterpret_cast<void*>(wParam);
  if (!message) return nullptr;
  std::lock_guard lock(mutex_);
  return posted_.erase(message) ? message : nullptr;
}

void AlarmServiceCall::Stop() {
  ReleaseHandle();
  std::set<void*> left;
  {
    std::lock_guard lock(mutex_);
    left.swap(posted_);
  }
  for (void* message : left) NETCLIENT_MCReleaseMsg(message);
}

void CALLBACK AlarmServiceCall::OnAnswer(void* message, void* user) {
  auto* self = static_cast<AlarmServiceCall*>(user);
  if (!self) {
    NETCLIENT_MCReleaseMsg(message);
    return;
  }
  std::this_thread::yield();
  if (self->counter_) self->counter_->fetch_add(1);
  std::lock_guard lock(self->mutex_);
  if (message) self->posted_.insert(message);
  if (!self->page_.PostMessage(self->message_, reinterpret_cast<WPARAM>(message), 0) && message) {
    self->posted_.erase(message);
    NETCLIENT_MCReleaseMsg(message);
  }
}
