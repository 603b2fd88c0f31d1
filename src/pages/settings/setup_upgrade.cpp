#include "pages/settings/setup_upgrade.h"

#include "command/page_registry.h"
#include "pages/settings/form_template.h"

namespace {
using C = CDlgSetupUpGrade;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr size_t kMakerChars = 10;
constexpr C::TextField kFields[] = {
    {C::kUrlEdit, "URL", C::kTextUrl},           {C::kApnEdit, "DINA", C::kTextApn},
    {C::kUserEdit, "DICT", C::kTextUser},        {C::kPasswordEdit, "DIPWD", C::kTextPassword},
    {C::kAddressEdit, "ADD", C::kTextAddress},   {C::kTcpEdit, "TCP", C::kTextTcp},
    {C::kUdpEdit, "UDP", C::kTextUdp},           {C::kMakerEdit, "PRID", C::kTextMaker, kMakerChars},
    {C::kHardwareEdit, "HAV", C::kTextHardware}, {C::kFirmwareEdit, "SOV", C::kTextFirmware},
    {C::kTimeLimitEdit, "LITI", C::kTextTimeLimit},
};
constexpr int64_t kMaxPort = 65535;
}  // namespace

plat::DialogTemplate CDlgSetupUpGrade::Layout() {
  using namespace row;
  const auto edit = [](int id, int limit) { return Edit(id, {}, {.limit = limit}); };
  const auto number = [](int id) { return Number(id, {}, 0, kMaxPort); };
  return FormTemplate(kTemplate, {}, 10,
                      {{kFirstLabel + 0, "URL地址", kTextUrl, edit(kUrlEdit, 300)},
                       {kFirstLabel + 1, "拨号点名称", kTextApn, edit(kApnEdit, 20)},
                       {kFirstLabel + 2, "拨号用户名", kTextUser, edit(kUserEdit, 20)},
                       {kFirstLabel + 3, "拨号密码", kTextPassword, edit(kPasswordEdit, 0)},
                       {kFirstLabel + 4, "地址", kTextAddress, edit(kAddressEdit, 300)},
                       {kFirstLabel + 5, "TCP端口", kTextTcp, number(kTcpEdit), kTcpHint, "(0~65535)"},
                       {kFirstLabel + 6, "UDP端口", kTextUdp, number(kUdpEdit), kUdpHint, "(0~65535)"},
                       {kFirstLabel + 7, "制造商ID", kTextMaker, edit(kMakerEdit, kMakerChars)},
                       {kFirstLabel + 8, "硬件版本", kTextHardware, edit(kHardwareEdit, 20)},
                       {kFirstLabel + 9, "软件版本", kTextFirmware, edit(kFirmwareEdit, 30)},
                       {kFirstLabel + 10, "时限", kTextTimeLimit, number(kTimeLimitEdit), kTimeLimitHint,
                        "(0~65535)min"}},
                      {SetButton({400, 0, 490, 0}), CancelButton({500, 0, 590, 0})});
}

CDlgSetupUpGrade::CDlgSetupUpGrade() : CTerminalControlPage(kTemplate, kCommandWord, kFields) {}

BOOL CDlgSetupUpGrade::CheckParam() {
  ParamCheck check(*this);
  for (const TextField& field : Fields()) NoSemicolon(check, field.edit);
  return check.Ok();
}

std::string CDlgSetupUpGrade::GetParamDescription() {
  Description description;
  return DescribeFields(description);
}
