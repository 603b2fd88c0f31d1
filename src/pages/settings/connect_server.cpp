#include "pages/settings/connect_server.h"

#include "command/page_registry.h"
#include "lang/language.h"
#include "pages/settings/form_template.h"

namespace {
using C = CDlgSetupConSer;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr uint32_t kDeviceKinds = 4;
constexpr const char* kConnectionKey = "COCT";
constexpr C::TextField kFields[] = {
    {C::kAuthEdit, "AUT", C::kTextAuth},         {C::kApnEdit, "DINA", C::kTextApn},
    {C::kUserEdit, "DICT", C::kTextUser},        {C::kPasswordEdit, "DIPWD", C::kTextPassword},
    {C::kAddressEdit, "ADD", C::kTextAddress},   {C::kTcpEdit, "TCP", C::kTextTcp},
    {C::kUdpEdit, "UDP", C::kTextUdp},           {C::kTimeLimitEdit, "LITI", C::kTextTimeLimit},
};
constexpr int64_t kMaxPort = 65535;
}  // namespace

plat::DialogTemplate CDlgSetupConSer::Layout() {
  using namespace row;
  namespace style = plat::style;
  // Text fields take ASCII only.
  const auto text = [](int id, int limit) { return Edit(id, {}, {.limit = limit, .styles = style::AsciiOnly}); };
  const auto number = [](int id) { return Number(id, {}, 0, kMaxPort); };
  return FormTemplate(
      kTemplate,
      {Static(kChoiceLabel, "连接控制", {20, 12, 190, 32}, kTextConnection),
       Radio(kRadioDesignated, "切换到指定监控平台服务器", {200, 10, 590, 32}, kTextDesignated, style::Group),
       Radio(kRadioDefault, "切换回原来缺省监控平台服务器", {200, 36, 590, 58}, kTextDefault)},
      70,
      {{kAuthLabel, "鉴权码", kTextAuth, text(kAuthEdit, 16), kAuthHint, "", kTextAuthHint},
       {kApnLabel, "拨号点名称", kTextApn, text(kApnEdit, 30)},
       {kUserLabel, "拨号用户名", kTextUser, text(kUserEdit, 20)},
       {kPasswordLabel, "拨号密码", kTextPassword, text(kPasswordEdit, 20)},
       {kAddressLabel, "地址", kTextAddress, text(kAddressEdit, 50)},
       {kTcpLabel, "TCP端口", kTextTcp, number(kTcpEdit), kTcpHint, "(0~65535)"},
       {kUdpLabel, "UDP端口", kTextUdp, number(kUdpEdit), kUdpHint, "(0~65535)"},
       {kTimeLimitLabel, "时限", kTextTimeLimit, number(kTimeLimitEdit), kTimeLimitHint, "(0~65535)min"}},
      {SetButton({400, 0, 490, 0}), CancelButton({500, 0, 590, 0})});
}

CDlgSetupConSer::CDlgSetupConSer() : CTerminalControlPage(kTemplate, kCommandWord, kFields) {
  DeviceKindMask = kDeviceKinds;
}

BOOL CDlgSetupConSer::CheckParam() {
  if (connection_ == kBackToDefault) return TRUE;
  ParamCheck check(*this);
  // Filled, then free of ";", field by field in this order.
  for (int edit : {kAuthEdit, kAddressEdit, kUserEdit, kApnEdit, kPasswordEdit}) {
    check.Filled(Value(edit), LabelOf(edit), edit);
    NoSemicolon(check, edit);
  }
  for (int edit : {kTcpEdit, kUdpEdit, kTimeLimitEdit}) check.Filled(Value(edit), LabelOf(edit));
  return check.Ok();
}

void CDlgSetupConSer::PutChoices(Json::Value& param) const { param[kConnectionKey] = connection_; }

std::string CDlgSetupConSer::GetParamDescription() {
  Description description;
  description.Field(kTextConnection, LanguageText(connection_ == kBackToDefault ? kTextDefault : kTextDesignated));
  return DescribeFields(description);
}
