#include "pages/messaging/events/info_service.h"

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "pages/messaging/encode_text.h"
#include "text/numbers.h"

namespace {
using C = CDlgInfoService;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr uint32_t kDeviceKinds = 0x1;
constexpr const char* kStartType = "0";

namespace key {
constexpr const char *kType = "INTY", *kText = "TextInfo";
}  // namespace key
}  // namespace

plat::DialogTemplate CDlgInfoService::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {600, 300},
                      {{Static(kTypeLabel, "信息服务", {10, 10, 100, 32}, kTextType),
                        Number(kTypeEdit, {105, 10, 180, 32}, 0, kTypeMax)},
                       {Static(kTextLabel, "信息内容", {10, 45, 100, 67}, kTextContent),
                        Edit(kTextEdit, {105, 45, 590, 220},
                             {.limit = kTextChars, .styles = style::Multiline | style::WantReturn}),
                        Static(kTextNote, "(小于255字节)", {105, 225, 300, 245}, kTextLimit)},
                       {SetButton({400, 265, 490, 293}), CancelButton({500, 265, 590, 293})}});
}

CDlgInfoService::CDlgInfoService() : CBaseDlg(kTemplate) {
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Set, BN_CLICKED, [this] {
    type_ = GetItemText(kTypeEdit);
    text_ = GetItemText(kTextEdit);
    StartSend(Mode::kSet, kCommand);
  });
}

void CDlgInfoService::OnInitPage() { SetItemText(kTypeEdit, kStartType); }

BOOL CDlgInfoService::CheckParam() { return ParamCheck(*this).Filled(type_, kTextType, kTypeEdit).Ok(); }

Json::Value CDlgInfoService::GetParam() {
  if (type_.empty()) return Json::Value();
  Json::Value param(Json::objectValue);
  param[key::kType] = txt::WToI(type_);
  param[key::kText] = EncodeTextParam(text_);
  return param;
}

std::string CDlgInfoService::GetParamDescription() {
  return Description().Field(kTextType, type_).Field(kTextContent, text_);
}
