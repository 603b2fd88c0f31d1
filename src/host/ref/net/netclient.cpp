// The host's command-channel functions over the simulated platform. Every
// function answers 0 for success and kFailed otherwise; nothing throws out.
#include <algorithm>
#include <cstring>

#include "host/hostnet.h"
#include "host/ref/net/guard.h"
#include "host/ref/net/platform.h"

using netsim::Guarded;
using netsim::Platform;

namespace {
constexpr int kOk = 0;
constexpr int kFailed = 1;

int Result(bool ok) { return ok ? kOk : kFailed; }
std::string TextOf(const char* text) { return text ? text : ""; }
}  // namespace

int NETCLIENT_GetSession(char* buffer, int len) {
  if (!buffer || len < 0) return kFailed;
  return Guarded("NETCLIENT_GetSession", kFailed, [&] {
    Platform::Get().Edit([&](const netsim::Settings& settings) {
      const size_t n = std::min(settings.session.size(), static_cast<size_t>(len));
      std::memcpy(buffer, settings.session.data(), n);
      buffer[n] = '\0';
    });
    return kOk;
  });
}

int NETCLIENT_MNOpenNormalCmd(NETHANDLE* handle, const char* devIdno, const char* envelope, const char* param) {
  if (!handle) return kFailed;
  *handle = 0;
  return Guarded("NETCLIENT_MNOpenNormalCmd", kFailed, [&] {
    return Result(Platform::Get().Open(TextOf(devIdno), TextOf(envelope), TextOf(param), handle));
  });
}

int NETCLIENT_MNSetNormalCmdCB(NETHANDLE handle, void* user, FUNNormalCmdCB callback) {
  return Guarded("NETCLIENT_MNSetNormalCmdCB", kFailed,
                 [&] { return Result(Platform::Get().SetCallback(handle, user, callback)); });
}

int NETCLIENT_MNStartNormalCmd(NETHANDLE handle) {
  return Guarded("NETCLIENT_MNStartNormalCmd", kFailed, [&] { return Result(Platform::Get().Start(handle)); });
}

int NETCLIENT_MNStopNormalCmd(NETHANDLE handle) {
  return Guarded("NETCLIENT_MNStopNormalCmd", kFailed,
                 [&] { return Result(Platform::Get().Stop(handle, /*close=*/false)); });
}

int NETCLIENT_MNCloseNormalCmd(NETHANDLE handle) {
  return Guarded("NETCLIENT_MNCloseNormalCmd", kFailed,
                 [&] { return Result(Platform::Get().Stop(handle, /*close=*/true)); });
}
