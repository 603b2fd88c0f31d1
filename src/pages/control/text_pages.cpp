#include "pages/control/text_pages.h"

#include <cstdlib>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"
#include "text/numbers.h"

namespace {
const RegisterPage<CDlgCDMAData> kCdmaData{CDlgCDMAData::kFunctionType};
const RegisterPage<CDlgRSA> kRsa{CDlgRSA::kFunctionType};

namespace key {
constexpr const char *kType = "CMT", *kContent = "CMC", *kExponent = "E", *kModulus = "N_S";
}  // namespace key
constexpr int kMaxType = 255;
constexpr int kContentChars = 1000;
constexpr int64_t kMaxExponent = 4294967295;
constexpr const char *kExponentName = "E", *kModulusName = "N";
}  // namespace

plat::DialogTemplate CDlgCDMAData::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 300},
      {{Static(kTypeLabel, "透传消息类型", {20, 22, 150, 42}, kTextType), Number(kTypeEdit, {160, 20, 260, 42}, 0, kMaxType),
        Static(kTypeHint, "(0~255)", {270, 22, 370, 42}, kTextTypeHint)},
       {Static(kContentLabel, "透传消息内容", {20, 60, 150, 80}, kTextContent),
        Edit(kContentEdit, {20, 85, 580, 250}, {.limit = kContentChars, .styles = style::Multiline | style::WantReturn})},
       {SetButton({400, 260, 490, 288}), CancelButton({500, 260, 590, 288})}});
}

CDlgCDMAData::CDlgCDMAData() : CControlPage(kTemplate, kCommand, 0) {}

bool CDlgCDMAData::ReadControls() {
  type_ = GetItemText(kTypeEdit);
  content_ = GetItemText(kContentEdit);
  return true;
}

BOOL CDlgCDMAData::CheckParam() { return ParamCheck(*this).Filled(type_, kTextType, kTypeEdit).Ok(); }

Json::Value CDlgCDMAData::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kType] = txt::WToI(type_);
  param[key::kContent] = EncodeTextParam(content_);
  return param;
}

std::string CDlgCDMAData::GetParamDescription() {
  return Description().Field(kTextType, type_).Field(kTextContent, content_);
}

plat::DialogTemplate CDlgRSA::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 300},
      {{Static(kExponentLabel, kExponentName, {20, 22, 60, 42}), Number(kExponentEdit, {70, 20, 250, 42}, 0, kMaxExponent)},
       {Static(kModulusLabel, kModulusName, {20, 60, 60, 80}),
        Static(kModulusHint, "(不能大于128个字节)", {70, 60, 400, 80}, kTextModulusHint),
        Edit(kModulusEdit, {20, 85, 580, 250},
             {.limit = kModulusChars, .styles = style::Multiline | style::AsciiOnly})},
       {SetButton({400, 260, 490, 288}), CancelButton({500, 260, 590, 288})}});
}

CDlgRSA::CDlgRSA() : CControlPage(kTemplate, kCommand, 0) {}

bool CDlgRSA::ReadControls() {
  exponent_ = GetItemText(kExponentEdit);
  modulus_ = GetItemText(kModulusEdit);
  return true;
}

BOOL CDlgRSA::CheckParam() {
  const std::string mustBeFilled = LanguageText(ParamCheck::kTextMustBeFilled);
  return ParamCheck(*this)
      .That(!modulus_.empty(), std::string(kModulusName) + " " + mustBeFilled, kModulusEdit)
      .That(!exponent_.empty(), std::string(kExponentName) + " " + mustBeFilled, kExponentEdit)
      .Ok();
}

Json::Value CDlgRSA::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kExponent] = static_cast<Json::Int64>(std::strtoll(exponent_.c_str(), nullptr, 10));
  param[key::kModulus] = EncodeTextParam(modulus_);
  return param;
}

std::string CDlgRSA::GetParamDescription() {
  return Description().Field(kExponentName, exponent_).Field(kModulusName, modulus_);
}
