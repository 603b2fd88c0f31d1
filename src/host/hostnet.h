// hostnet: the logged-in session, the normal command channel and the alarm
// service (below), as the plug-in calls them. A channel carries one request to
// one device; its callback runs on a network thread. Once NETCLIENT_MNStopNormalCmd has
// returned, the channel's callback is not running and will not run again, so
// the caller may free the user data. Stop waits for a callback running at that
// moment: the caller must not hold a lock the callback takes (a page takes the
// request out of its table under its lock, releases it, then stops, closes and
// frees). Called from inside its own callback, Stop does not wait.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/wintypes.h"

using NETHANDLE = uint32_t;

// status: 0 when the platform answered (reply holds its text), or a network
// status such as 101 or 110 (reply may be null). user: the word given to SetNormalCmdCB.
using FUNNormalCmdCB = void(CALLBACK*)(int32_t status, const char* reply, void* user);

// Writes the session text, at most len characters, NUL-terminated.
int NETCLIENT_GetSession(char* buffer, int len);
// Opens a channel for one request; 0 on success with *handle non-zero.
int NETCLIENT_MNOpenNormalCmd(NETHANDLE* handle, const char* devIdno, const char* envelope, const char* param);
int NETCLIENT_MNSetNormalCmdCB(NETHANDLE handle, void* user, FUNNormalCmdCB callback);
// 0 when the request went out.
int NETCLIENT_MNStartNormalCmd(NETHANDLE handle);
int NETCLIENT_MNStopNormalCmd(NETHANDLE handle);
int NETCLIENT_MNCloseNormalCmd(NETHANDLE handle);

// ---- the alarm service ---------------------------------------------------------
// Requests about alarms carry a fixed binary record (little-endian, zero-filled)
// instead of a JSON envelope. Each request is answered once, on a network
// thread, through its callback with an answer message; the receiver frees the
// message with NETCLIENT_MCReleaseMsg. The handle of a request is freed with
// NETCLIENT_MCReleaseHandle: once it has returned the request's callback is not
// running and will not run again (as with NETCLIENT_MNStopNormalCmd, the caller
// must not hold a lock the callback takes; called from the callback it does not wait).

// Sizes of the records the requests take.
constexpr size_t kAlarmHandleRecordSize = 512;     // NETCLIENT_MCMultifunHandleAlarm
constexpr size_t kDevHandleRecordSize = 1152;      // NETCLIENT_MCSetDevHandleAlarm
constexpr size_t kAck809RecordSize = 600;          // NETCLIENT_MCAck809Platform

// Where the alarm service reads the device a record is about.
constexpr size_t kAlarmHandleDevIdOffset = 316;  // 32 bytes of text
constexpr size_t kDevHandleDevIdOffset = 1068;   // 32 bytes of text
constexpr size_t kAck809DevIdOffset = 0;         // 36 bytes of text

// The handling-text record of NETCLIENT_MCSetDevHandleAlarm, by byte offset:
//   0    1024  handling text, UTF-8, NUL-terminated (at most 255 characters)
//   1024 4     handling way
//   1028 40    the alarm's identifier text (at most 39 bytes)
//   1068 32    the alarm's device id text (at most 31 bytes)
//   1100 2     alarm type (the alarm record's type at 144)
//   1102 2     second alarm type (the alarm record's type at 684)
//   1104 4     alarm time (the alarm record's time at 140)
//   1108 4     second alarm time (at 424, or at 140 when the low six bits at 424 are zero)
//   1112 40    zero

// An answer message: the request kind, then the result code (0 = success).
struct _tagMCAnswerMsg {
  int32_t kind;
  int32_t result;
};
enum : int32_t { kMCKindHandleAlarm = 1, kMCKindDevHandleAlarm = 2, kMCKindAck809 = 3 };
// The result code of an answer message (the 32-bit word at byte 4); -1 for null.
int32_t NETCLIENT_MCMsgResult(const void* message);

using FUNMCMsgCB = void(CALLBACK*)(void* message, void* user);

// Each takes its record (copied before it returns), the user word handed back
// to the callback, and the out-handle; 0 when the request went out.
int NETCLIENT_MCMultifunHandleAlarm(const void* record, void* user, FUNMCMsgCB callback, NETHANDLE* handle);
int NETCLIENT_MCSetDevHandleAlarm(const void* record, void* user, FUNMCMsgCB callback, NETHANDLE* handle);
int NETCLIENT_MCAck809Platform(const void* record, void* user, FUNMCMsgCB callback, NETHANDLE* handle);
int NETCLIENT_MCReleaseMsg(void* message);
int NETCLIENT_MCReleaseHandle(NETHANDLE handle);
