// hostnet: the logged-in session and the normal command channel, as the
// plug-in calls them. A channel carries one request to one device; its
// callback runs on a network thread. Once NETCLIENT_MNStopNormalCmd has
// returned, the channel's callback is not running and will not run again, so
// the caller may free the user data. Stop waits for a callback running at that
// moment: the caller must not hold a lock the callback takes (a page takes the
// request out of its table under its lock, releases it, then stops, closes and
// frees). Called from inside its own callback, Stop does not wait.
#pragma once

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
