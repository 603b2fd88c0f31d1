// The device picker's parameter record: fixed settings and two lists of
// device attribute codes that decide which devices and columns it offers.
#pragma once

#include <cstdint>

#include "host/hostcore.h"

class CBaseDlg;
struct DeviceCaps;

namespace picker {
// Byte offsets and values of the fixed settings.
constexpr size_t kOffsetMode = 132, kOffsetFlag = 140, kOffsetAll = 144, kOffsetKinds = 148, kOffsetTail = 236;
constexpr int32_t kMode = 2, kFlag = 1, kAll = -1, kKinds = 17, kTail = 1;
// The two code lists, each ended by the record's zeroes.
constexpr size_t kFirstListOffset = 152, kFirstListCapacity = 12;
constexpr size_t kSecondListOffset = 200, kSecondListCapacity = (kOffsetTail - kSecondListOffset) / 4;
constexpr int32_t kFirstListStart = 84, kSecondListStart = 113;

// Bits of a page's DeviceKindMask.
constexpr uint32_t kMaskAttr76Kinds = 0x0F00, kMaskAttr77 = 0x0100, kMaskAttr78 = 0x0200, kMaskAttr99 = 0x0800;
constexpr uint32_t kMaskPlainKinds = 0x0007, kMaskProtocol2019 = 0x0002, kMaskNot2013 = 0x0004;

// Fills the record for a page (its mask, its device flags and its own codes).
void FillParam(_tagFillTreeParamEx_S& record, CBaseDlg& page);
}  // namespace picker
