// The single upload page: template, the id check, parameter object and description.
#include "pages/media/single_media_upload.h"

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "lang/language.h"
#include "pages/media/media_choices.h"
#include "text/numbers.h"

namespace {
using C = CDlgSingleMediaUpload;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr uint32_t kDeviceKinds = 0x4;
namespace key {
constexpr const char *kId = "MDID", *kDelete = "DELA";
}  // namespace key
constexpr const char* kAboveZero = ">0";
}  // namespace

plat::DialogTemplate CDlgSingleMediaUpload::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {600, 160},
                      {{Static(kIdLabel, "多媒体ID", {10, 12, 110, 32}, kTextMediaId),
                        Edit(kIdEdit, {120, 10, 240, 32}, {.limit = kIdDigits, .styles = style::Number}),
                        Static(kIdNote, "(1~999999999)", {250, 12, 400, 32})},
                       {Static(kDeleteLabel, "删除标志", {10, 47, 110, 67}, kTextDelete),
                        Combo(kDeleteCombo, {120, 45, 290, 67})},
                       {SetButton({500, 125, 590, 153})}});
}

CDlgSingleMediaUpload::CDlgSingleMediaUpload() : CBaseDlg(kTemplate) {
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Set, BN_CLICKED, [this] {
    id_ = GetItemText(kIdEdit);
    delete_ = media::SelectedData(*this, kDeleteCombo);
    StartSend(Mode::kSet, kCommand);
  });
}

void CDlgSingleMediaUpload::OnInitPage() { media::FillChoices(*this, kDeleteCombo, media::kDeleteFlags); }

BOOL CDlgSingleMediaUpload::CheckParam() {
  return ParamCheck(*this).That(!id_.empty() && txt::WToI(id_) > 0, LanguageText(kTextValueMust) + kAboveZero, kIdEdit).Ok();
}

Json::Value CDlgSingleMediaUpload::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kId] = txt::WToI(id_);
  param[key::kDelete] = delete_;
  return param;
}

std::string CDlgSingleMediaUpload::GetParamDescription() {
  return Description().Field(kTextMediaId, id_).Field(kTextDelete, media::ChoiceText(media::kDeleteFlags, delete_));
}
