// The host's device-state images, as the reference host has them.
#include "host/hostcore.h"
#include "platform/controls.h"

namespace {
constexpr int kDeviceStateImages = 25;
}  // namespace

void CMgrDevImg::InitDevStateImgList(plat::ImageList& images) { images.count = kDeviceStateImages; }
