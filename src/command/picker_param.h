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

// Bits of a page's DeviceKindMask: the platform's own terminals (any model,
// the basic, high-definition and alternative models), and JT/T 808 terminals
// (any, the 2019 edition, not the 2013 edition).
constexpr uint32_t kMaskOwnKinds = 0x0F00, kMaskOwnBasic = 0x0100, kMaskOwnHd = 0x0200, kMaskOwnAlt = 0x0800;
constexpr uint32_t kMaskJt808Kinds = 0x0007, kMaskEdition2019 = 0x0002, kMaskNot2013 = 0x0004;

// The picker's codes of a device kind, one for each list.
struct KindCodes {
  int32_t first, second;
};
constexpr KindCodes kCodesOwn{76, 81}, kCodesOwnHd{78, 83}, kCodesOwnAlt{99, 121}, kCodesOwnBasic{77, 82};
constexpr KindCodes kCodesJt808{79, 84}, kCodesEdition2019{80, 85}, kCodesEdition2013{81, 86};

// Fills the record for a page (its mask, its device flags and its own codes).
void FillParam(_tagFillTreeParamEx_S& record, CBaseDlg& page);
}  // namespace picker
