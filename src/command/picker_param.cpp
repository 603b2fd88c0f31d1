#include "command/picker_param.h"

#include <algorithm>
#include <cstring>

#include "command/base_dlg.h"

namespace picker {
namespace {
void Put(_tagFillTreeParamEx_S& record, size_t offset, int32_t value) {
  std::memcpy(record.bytes + offset, &value, sizeof value);
}

// A list of codes in the record, appended to at its end. Pages append their
// own codes at the position the count names; room past the capacity keeps a
// page that writes too many from writing outside the list, and is not kept.
struct CodeList {
  static constexpr size_t kSlack = 8;
  int32_t codes[kFirstListCapacity + kSlack] = {};
  int count = 0;
  int capacity;
  CodeList(size_t cap, int32_t first) : capacity(static_cast<int>(cap)) { codes[count++] = first; }
  void Add(int32_t code) {
    if (count < capacity) codes[count++] = code;
  }
  void WriteTo(_tagFillTreeParamEx_S& record, size_t offset) {
    count = std::clamp(count, 0, capacity);
    for (int i = 0; i < count; ++i) Put(record, offset + 4 * static_cast<size_t>(i), codes[i]);
  }
};
}  // namespace

void FillParam(_tagFillTreeParamEx_S& record, CBaseDlg& page) {
  std::memset(record.bytes, 0, sizeof record.bytes);
  Put(record, kOffsetMode, kMode);
  Put(record, kOffsetFlag, kFlag);
  Put(record, kOffsetAll, kAll);
  Put(record, kOffsetKinds, kKinds);
  Put(record, kOffsetTail, kTail);

  CodeList first(kFirstListCapacity, kFirstListStart);
  CodeList second(kSecondListCapacity, kSecondListStart);
  auto add = [&](KindCodes codes) {
    first.Add(codes.first);
    second.Add(codes.second);
  };
  const uint32_t mask = page.GetDeviceKindMask();
  const DeviceCaps& caps = page.Caps();
  if ((mask & kMaskOwnKinds) && caps.bDevAttr76) {
    add(kCodesOwn);
    if (caps.bDevAttr78 && (mask & kMaskOwnHd)) {
      add(kCodesOwnHd);
    } else if (caps.bDevAttr99 && (mask & kMaskOwnAlt)) {
      add(kCodesOwnAlt);
    } else if (!caps.bDevAttr78 && !caps.bDevAttr99 && (mask & kMaskOwnBasic)) {
      add(kCodesOwnBasic);
    }
  }
  if ((mask & kMaskJt808Kinds) && !caps.bDevAttr76) {
    add(kCodesJt808);
    if (caps.bProtocol2019 && (mask & kMaskEdition2019)) add(kCodesEdition2019);
    if (!caps.bProtocol2019 && !(mask & kMaskNot2013)) add(kCodesEdition2013);
  }
  page.AddPickerColumnsFirst(first.codes, first.count);
  page.AddPickerColumnsSecond(second.codes, second.count);
  first.WriteTo(record, kFirstListOffset);
  second.WriteTo(record, kSecondListOffset);
}
}  // namespace picker

BOOL CBaseDlg::SelectTargetsWithPicker() {
  CDevListDataBase* picker = CreateDevListObject();
  if (!picker) return TRUE;
  picker->SetMultiSelect(1);
  _tagFillTreeParamEx_S record;
  picker::FillParam(record, *this);
  picker->SetParam(&record);
  if (picker->Start() != 1) {
    DeleteDevListObject(picker);
    return FALSE;
  }
  int* ids = nullptr;
  int count = 0;
  picker->GetMultiVehiID(&ids, &count);
  for (int i = 0; i < count && ids; ++i) AppendDevice(ids[i]);
  LIBCOMMON_Release(ids);
  DeleteDevListObject(picker);
  return TRUE;
}
