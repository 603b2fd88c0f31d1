// The host's two callbacks, registered through the plug-in's message export.
#pragma once

#include <cstdint>

#include "platform/wintypes.h"

// Called after a window of the host was shown: (context, pointer to a 32-bit zero).
using FUNShowNotify = void(CALLBACK*)(uintptr_t context, int32_t* value);
// Called with every point-query answer: (result code, the finished request,
// context). Hosts see the request as an untyped record that starts with the
// device number, and their function takes it as such: it is called through
// this very type.
using FUNPointQueryResult = void(CALLBACK*)(int32_t result, void* request, uintptr_t context);

struct ShowNotifyCallbackSlot {
  FUNShowNotify function = nullptr;
  uintptr_t context = 0;
};
struct PointQueryCallback {
  FUNPointQueryResult function = nullptr;
  uintptr_t context = 0;
};

ShowNotifyCallbackSlot& ShowNotifyCallback();
PointQueryCallback& PointQueryResultCallback();
