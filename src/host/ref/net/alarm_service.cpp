// The host's alarm service over the simulated platform: each request is a
// channel to the device its record names, so answers, delays, statuses, held
// mode and the stop guarantee are those of the command channel. The channel's
// answer becomes an answer message for the request's own callback.
#include <algorithm>
#include <cstring>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "host/hostnet.h"
#include "host/ref/net/guard.h"
#include "host/ref/net/platform.h"
#include "text/json.h"

using netsim::Guarded;
using netsim::Platform;

namespace {
constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr size_t kAck809DevIdBytes = 36, kHandleDevIdBytes = 32;

// What a request's channel answers to: the caller's callback and word.
struct Pending {
  int32_t kind = 0;
  void* user = nullptr;
  FUNMCMsgCB callback = nullptr;
};

// Requests by handle, until their handle is released.
class PendingTable {
 public:
  Pending* Add(NETHANDLE handle, Pending pending) {
    auto owned = std::make_unique<Pending>(pending);
    Pending* raw = owned.get();
    std::lock_guard lock(mutex_);
    table_[handle] = std::move(owned);
    return raw;
  }
  void Remove(NETHANDLE handle) {
    std::unique_ptr<Pending> freed;
    std::lock_guard lock(mutex_);
    auto it = table_.find(handle);
    if (it == table_.end()) return;
    freed = std::move(it->second);
    table_.erase(it);
  }

 private:
  std::mutex mutex_;
  std::unordered_map<NETHANDLE, std::unique_ptr<Pending>> table_;
};

PendingTable& Table() {
  static PendingTable table;
  return table;
}

// A network status, else "Error" and then "result" of the reply text.
int32_t ResultOf(int32_t status, const char* reply) {
  if (status != 0) return status;
  Json::Value value;
  if (!reply || !txt::ParseJson(reply, value)) return 0;
  const int error = txt::JsonMemberInt(value, "Error", 0);
  return error != 0 ? error : txt::JsonMemberInt(value, "result", 0);
}

void CALLBACK OnChannelAnswer(int32_t status, const char* reply, void* user) {
  const auto* pending = static_cast<const Pending*>(user);
  if (!pending || !pending->callback) return;
  auto* message = new _tagMCAnswerMsg{pending->kind, ResultOf(status, reply)};
  pending->callback(message, pending->user);
}

std::string TextAt(const uint8_t* record, size_t offset, size_t size) {
  const char* text = reinterpret_cast<const char*>(record + offset);
  return std::string(text, strnlen(text, size));
}

int Request(int32_t kind, const void* record, size_t size, size_t devOffset, size_t devBytes, void* user,
            FUNMCMsgCB callback, NETHANDLE* handle) {
  if (!handle) return kFailed;
  *handle = 0;
  if (!record || !callback) return kFailed;
  return Guarded("NETCLIENT_MC request", kFailed, [&] {
    const auto* bytes = static_cast<const uint8_t*>(record);
    hostref::AlarmRequest request{0, kind, TextAt(bytes, devOffset, devBytes), {bytes, bytes + size}};
    Platform& platform = Platform::Get();
    NETHANDLE opened = 0;
    if (!platform.OpenAlarm(std::move(request), &opened)) return kFailed;
    Pending* pending = Table().Add(opened, {kind, user, callback});
    if (!platform.SetCallback(opened, pending, OnChannelAnswer) || !platform.Start(opened)) {
      platform.Stop(opened, /*close=*/true);
      Table().Remove(opened);
      return kFailed;
    }
    *handle = opened;
    return kOk;
  });
}
}  // namespace

int32_t NETCLIENT_MCMsgResult(const void* message) {
  if (!message) return -1;
  int32_t result = 0;
  std::memcpy(&result, static_cast<const uint8_t*>(message) + offsetof(_tagMCAnswerMsg, result), sizeof result);
  return result;
}

int NETCLIENT_MCMultifunHandleAlarm(const void* record, void* user, FUNMCMsgCB callback, NETHANDLE* handle) {
  return Request(kMCKindHandleAlarm, record, kAlarmHandleRecordSize, kAlarmHandleDevIdOffset, kHandleDevIdBytes, user,
                 callback, handle);
}

int NETCLIENT_MCSetDevHandleAlarm(const void* record, void* user, FUNMCMsgCB callback, NETHANDLE* handle) {
  return Request(kMCKindDevHandleAlarm, record, kDevHandleRecordSize, kDevHandleDevIdOffset, kHandleDevIdBytes, user,
                 callback, handle);
}

int NETCLIENT_MCAck809Platform(const void* record, void* user, FUNMCMsgCB callback, NETHANDLE* handle) {
  return Request(kMCKindAck809, record, kAck809RecordSize, kAck809DevIdOffset, kAck809DevIdBytes, user, callback,
                 handle);
}

int NETCLIENT_MCReleaseMsg(void* message) {
  if (!message) return kFailed;
  delete static_cast<_tagMCAnswerMsg*>(message);
  return kOk;
}

int NETCLIENT_MCReleaseHandle(NETHANDLE handle) {
  return Guarded("NETCLIENT_MCReleaseHandle", kFailed, [&] {
    const bool known = Platform::Get().Stop(handle, /*close=*/true);
    // The callback is neither running nor to come: its word may go.
    Table().Remove(handle);
    return known ? kOk : kFailed;
  });
}
