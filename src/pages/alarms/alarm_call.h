// One request of the host's alarm service at a time, for a page: starts it,
// takes its answer on the network thread and posts it to the page's window
// (wParam: the answer message), and frees whatever the page no longer takes.
//
// Threads: the answer callback only bumps the page's counter (when it has one),
// notes the message and posts it; everything else runs on the page's thread.
#pragma once

#include <atomic>
#include <mutex>
#include <set>

#include "host/hostnet.h"
#include "platform/window.h"

class AlarmServiceCall {
 public:
  // One of NETCLIENT_MCMultifunHandleAlarm, NETCLIENT_MCSetDevHandleAlarm, NETCLIENT_MCAck809Platform.
  using Starter = int (*)(const void* record, void* user, FUNMCMsgCB callback, NETHANDLE* handle);

  // counter (optional) is bumped on the network thread before each answer is posted.
  AlarmServiceCall(plat::Window& page, UINT message, std::atomic<uint32_t>* counter = nullptr)
      : page_(page), message_(message), counter_(counter) {}
  ~AlarmServiceCall() { Stop(); }
  AlarmServiceCall(const AlarmServiceCall&) = delete;
  AlarmServiceCall& operator=(const AlarmServiceCall&) = delete;

  // False when the service refused the request (no answer will come).
  bool Start(Starter start, const void* record);
  // Frees the handle of the last request; its callback no longer runs after it.
  void ReleaseHandle();
  // The answer message a posted wParam names, now the caller's to release; null when none.
  void* Take(WPARAM wParam);
  // Ends the request outstanding and frees answers posted but not taken.
  void Stop();

 private:
  static void CALLBACK OnAnswer(void* message, void* user);
  plat::Window& page_;
  const UINT message_;
  std::atomic<uint32_t>* const counter_;
  NETHANDLE handle_ = 0;
  std::mutex mutex_;
  std::set<void*> posted_;  // answers posted and not yet taken
};
