// Capability flags of one target device, read from its numbered attributes.
// Six 32-bit words, in the order the host lays them out.
#pragma once

#include <cstdint>

#include "platform/wintypes.h"

// Device attributes the flags come from: a terminal of the platform's own
// kind, its high-definition and alternative models, the 2019 edition.
enum DeviceAttr : int {
  kAttrOwnKind = 76,
  kAttrOwnKindHd = 78,
  kAttrProtocol2019 = 80,
  kAttrOwnKindAlt = 99,
};

struct DeviceCaps {
  int32_t ownDevId = 0;     // a page's own record: the device it was loaded for
  int32_t sharedDevId = 0;  // the shared record: the current device (0 = none)
  BOOL bDevAttr76 = FALSE;
  BOOL bDevAttr78 = FALSE;
  BOOL bProtocol2019 = FALSE;
  BOOL bDevAttr99 = FALSE;

  // Loads the flags of a device into a page's own record (first word).
  void LoadOwn(int devId);
  // Loads the flags of a device into the shared record (second word).
  void LoadShared(int devId);

 private:
  void LoadFlags(int devId);
};
static_assert(sizeof(DeviceCaps) == 24);

// The shared record: the device the host last made current.
DeviceCaps& SharedDeviceCaps();
