#include "command/device_caps.h"

#include "host/hostcore.h"

void DeviceCaps::LoadOwn(int devId) {
  ownDevId = devId;
  LoadFlags(devId);
}

void DeviceCaps::LoadShared(int devId) {
  sharedDevId = devId;
  LoadFlags(devId);
}

void DeviceCaps::LoadFlags(int devId) {
  bDevAttr76 = bDevAttr78 = bProtocol2019 = bDevAttr99 = FALSE;
  CVehicleFunc vehicle = CVehicleBaseMgr::FindVechicleFromDevID(devId);
  if (!vehicle.IsValid()) return;
  if (vehicle.GetDevInt(kAttrOwnKind) != 0) {
    bDevAttr76 = TRUE;
    if (vehicle.GetDevInt(kAttrOwnKindHd) != 0) {
      bDevAttr78 = TRUE;
    } else if (vehicle.GetDevInt(kAttrOwnKindAlt) != 0) {
      bDevAttr99 = TRUE;
    }
  }
  if (vehicle.GetDevInt(kAttrProtocol2019) != 0) bProtocol2019 = TRUE;
}

DeviceCaps& SharedDeviceCaps() {
  static DeviceCaps shared;
  return shared;
}
