#include "pages/settings/setup_upgrade905.h"

#include "command/page_registry.h"
#include "host/hostcore.h"
#include "pages/settings/form_template.h"
#include "platform/controls.h"
#include "text/numbers.h"

namespace {
using C = CDlgSetupUpGrade905;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr uint32_t kDeviceKinds = 0x300;
constexpr const char* kTypeKey = "DTYPE";
constexpr C::TextField kFields[] = {
    {C::kMakerEdit, "PRID", C::kTextMaker},
    {C::kHardwareEdit, "HAV", C::kTextHardware},
    {C::kFirmwareEdit, "SOV", C::kTextFirmware},
    {C::kApnEdit, "DINA", C::kTextApn},
    {C::kUserEdit, "DICT", C::kTextUser},
    {C::kPasswordEdit, "DIPWD", C::kTextPassword},
    {C::kAddressEdit, "ADD", C::kTextAddress},
    {C::kPortEdit, "TCP", C::kTextPort},
    {C::kServerUserEdit, "USR", C::kTextServerUser},
    {C::kServerPasswordEdit, "PSW", C::kTextServerPassword},
    {C::kInternalVersionEdit, "FIV", C::kTextInternalVersion},
    {C::kFirmwareUrlEdit, "URL", C::kTextFirmwareUrl},
    {C::kFileNameEdit, "FFN", C::kTextFileName},
    {C::kFileSizeEdit, "FFS", C::kTextFileSize},
};
constexpr int64_t kMaxMaker = 255, kMaxHardware = 99, kMaxFirmware = 9999, kMaxPort = 65535;
// Shown only for devices with the server account and firmware fields (DeviceCaps bDevAttr78).
constexpr int kAccountAndFirmware[] = {
    C::kServerUserLabel,      C::kServerPasswordLabel, C::kInternalVersionLabel, C::kFirmwareUrlLabel,
    C::kFileNameLabel,        C::kFileSizeLabel,       C::kServerUserEdit,       C::kServerPasswordEdit,
    C::kInternalVersionEdit,  C::kFirmwareUrlEdit,     C::kFileNameEdit,         C::kFileSizeEdit};
}  // namespace

plat::DialogTemplate CDlgSetupUpGrade905::Layout() {
  using namespace row;
  const auto edit = [](int id, int limit) { return Edit(id, {}, {.limit = limit}); };
  return FormTemplate(kTemplate, {}, 10,
                      {{kTypeLabel, "设备类型", kTextType, Combo(kTypeList, {})},
                       {kMakerLabel, "制造商ID", kTextMaker, edit(kMakerEdit, 3), kMakerHint, "(0~255)"},
                       {kHardwareLabel, "硬件版本", kTextHardware, edit(kHardwareEdit, 2), kHardwareHint, "(0~99)"},
                       {kFirmwareLabel, "软件版本", kTextFirmware, edit(kFirmwareEdit, 4), kFirmwareHint, "(0~9999)"},
                       {kApnLabel, "拨号点名称", kTextApn, edit(kApnEdit, 64)},
                       {kUserLabel, "拨号用户名", kTextUser, edit(kUserEdit, 64)},
                       {kPasswordLabel, "拨号密码", kTextPassword, edit(kPasswordEdit, 64)},
                       {kAddressLabel, "升级服务器地址", kTextAddress, edit(kAddressEdit, 255)},
                       {kPortLabel, "升级服务器端口", kTextPort, edit(kPortEdit, 5), kPortHint, "(0~65535)"},
                       {kServerUserLabel, "升级服务器用户名", kTextServerUser, edit(kServerUserEdit, 64)},
                       {kServerPasswordLabel, "升级服务器密码", kTextServerPassword, edit(kServerPasswordEdit, 64)},
                       {kInternalVersionLabel, "固件内部版本", kTextInternalVersion, edit(kInternalVersionEdit, 64)},
                       {kFirmwareUrlLabel, "固件下载地址", kTextFirmwareUrl, edit(kFirmwareUrlEdit, 255)},
                       {kFileNameLabel, "固件文件名", kTextFileName, edit(kFileNameEdit, 255)},
                       {kFileSizeLabel, "固件大小", kTextFileSize, edit(kFileSizeEdit, 9)}},
                      {SetButton({400, 0, 490, 0}), CancelButton({500, 0, 590, 0})});
}

CDlgSetupUpGrade905::CDlgSetupUpGrade905() : CTerminalControlPage(kTemplate, kCommandWord, kFields) {
  DeviceKindMask = kDeviceKinds;
}

void CDlgSetupUpGrade905::UpdateProtocolControls() {
  if (!IsWindow()) return;
  const bool shown = Caps().bDevAttr78 != FALSE;
  for (int id : kAccountAndFirmware) ShowItem(id, shown);
  auto* list = Item<plat::ComboBox>(kTypeList);
  if (!list) return;
  list->ResetContent();
  for (int type = 0; type <= kLastDeviceType; ++type) {
    const std::string name = FormatStringMgr::GetTerminalType905(type);
    if (name.empty()) continue;
    list->SetItemData(list->AddString(name), static_cast<uint32_t>(type));
  }
  list->SetCurSel(0);
}

void CDlgSetupUpGrade905::ReadChoices() {
  const auto* list = Item<plat::ComboBox>(kTypeList);
  const int selected = list ? list->GetCurSel() : -1;
  deviceType_ = selected >= 0 ? list->GetItemData(selected) : 0;
  deviceTypeName_ = selected >= 0 ? list->GetLBText(selected) : std::string();
}

BOOL CDlgSetupUpGrade905::CheckParam() {
  return ParamCheck(*this)
      .AtMost(txt::WToI(Value(kMakerEdit)), kMaxMaker, kTextMaker)
      .AtMost(txt::WToI(Value(kHardwareEdit)), kMaxHardware, kTextHardware)
      .AtMost(txt::WToI(Value(kFirmwareEdit)), kMaxFirmware, kTextFirmware)
      .AtMost(txt::WToI(Value(kPortEdit)), kMaxPort, kTextPort)
      .Ok();
}

void CDlgSetupUpGrade905::PutChoices(Json::Value& param) const { param[kTypeKey] = deviceType_; }

std::string CDlgSetupUpGrade905::GetParamDescription() {
  Description description;
  description.Field(kTextType, deviceTypeName_);
  return DescribeFields(description);
}
