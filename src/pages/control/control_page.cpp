#include "pages/control/control_page.h"

#include "command/description.h"
#include "command/ids.h"
#include "command/page_template.h"
#include "lang/language.h"

namespace {
constexpr int kTextOk = 11002;
}  // namespace

const RadioChoice* CheckedChoice(const plat::Dialog& page, std::span<const RadioChoice> choices) {
  for (const RadioChoice& choice : choices) {
    if (page.IsChecked(choice.control)) return &choice;
  }
  return nullptr;
}

CControlPage::CControlPage(int templateId, int32_t command, uint32_t deviceKinds)
    : CBaseDlg(templateId), command_(command) {
  DeviceKindMask = deviceKinds;
  Bind(ctl::Set, BN_CLICKED, [this] { OnSet(); });
}

void CControlPage::OnSet() {
  if (ReadControls()) StartSend(Mode::kSet, command_);
}

CChoicePage::CChoicePage(int templateId, int32_t command, uint32_t deviceKinds, std::span<const RadioChoice> choices,
                         const char* key, int label)
    : CControlPage(templateId, command, deviceKinds), choices_(choices), key_(key), label_(label) {}

bool CChoicePage::ReadControls() {
  chosen_ = CheckedChoice(*this, choices_);
  return chosen_ != nullptr;
}

Json::Value CChoicePage::GetParam() {
  if (!key_ || !chosen_) return Json::Value();
  Json::Value param(Json::objectValue);
  param[key_] = chosen_->value;
  return param;
}

std::string CChoicePage::GetParamDescription() {
  return chosen_ ? Description().Field(label_, LanguageText(chosen_->text)).str() : std::string();
}

CNoParamPage::CNoParamPage(int templateId, int32_t command, uint32_t deviceKinds) : CBaseDlg(templateId) {
  QueryMode = TRUE;
  PickerMode = TRUE;
  UsesNoParamPanel = TRUE;
  DeviceKindMask = deviceKinds;
  setTextId = kTextOk;
  Bind(ctl::Set, BN_CLICKED, [this, command] { StartSend(Mode::kGet, command); });
}

plat::DialogTemplate CNoParamPage::MakeTemplate(int templateId) {
  return PageTemplate(templateId, {400, 100}, {{row::Button(ctl::Set, "确定", {300, 60, 390, 88}, kTextOk)}});
}
