#include "pages/settings/setup_driver.h"

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "text/numbers.h"

namespace {
using C = CDlgSetupDerID;
const RegisterPage<C> kPage{{C::kFunctionType}, PageHost::kFunctionPage};

constexpr int kRead = 0x01, kWrite = 0x81;
namespace key {
constexpr const char *kDriver = "GDI", *kLicence = "GCP";
}  // namespace key
}  // namespace

plat::DialogTemplate CDlgSetupDerID::Layout() {
  using namespace row;
  return PageTemplate(kTemplate, {600, 200},
                      {{Box(kFrame, "", {10, 10, 590, 150}, kTextFrame)},
                       {Static(kDriverLabel, "驾驶员代码", {20, 40, 140, 60}, kTextDriver),
                        Number(kDriverEdit, {150, 38, 400, 62}, 0, kMaxDriverCode),
                        Static(kDriverHint, "(0~16777215)", {410, 40, 580, 60})},
                       {Static(kLicenceLabel, "驾驶证号码", {20, 85, 140, 105}, kTextLicence),
                        Edit(kLicenceEdit, {150, 83, 400, 107}, {.limit = kLicenceChars}),
                        Static(kLicenceHint, "(小于18字节)", {410, 85, 580, 105}, kTextUnder18)},
                       {GetButton({400, 160, 490, 188}), SetButton({500, 160, 590, 188})}});
}

CDlgSetupDerID::CDlgSetupDerID() : CRecorderPage(kTemplate, {kRead, kWrite}) {}

void CDlgSetupDerID::OnInitPage() { SetItemText(kDriverEdit, "0"); }

void CDlgSetupDerID::ReadEntered() { entered_ = {GetItemText(kDriverEdit), GetItemText(kLicenceEdit)}; }

BOOL CDlgSetupDerID::CheckParam() {
  if (QueryMode) return TRUE;
  return ParamCheck(*this).Filled(entered_.code, kTextDriver).Filled(entered_.licence, kTextLicence).Ok();
}

void CDlgSetupDerID::WriteEntered(Json::Value& param) const {
  param[key::kDriver] = txt::WToI(entered_.code);
  param[key::kLicence] = recorder::AnsiText(entered_.licence);
}

void CDlgSetupDerID::ReadReply(const Json::Value& reply) {
  readBack_ = {recorder::ReplyNumber(reply, key::kDriver), recorder::ReplyText(reply, key::kLicence)};
}

void CDlgSetupDerID::ShowReadBack() {
  SetItemText(kDriverEdit, readBack_.code);
  SetItemText(kLicenceEdit, readBack_.licence);
}

std::string CDlgSetupDerID::Describe(bool readBack) const {
  const Driver& d = readBack ? readBack_ : entered_;
  return Description().Field(kTextDriver, d.code).Field(kTextLicence, d.licence);
}
