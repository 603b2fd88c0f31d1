// The audio recording page: its template, lists, check, parameter object and description.
#include "pages/media/sound.h"

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "pages/media/media_choices.h"
#include "text/numbers.h"

namespace {
using C = CDlgSound;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr uint32_t kDeviceKinds = 0x4;

namespace key {
constexpr const char *kTime = "SOTI", *kCommand = "SOOR", *kSave = "SALA", *kRate = "VOICE";
}  // namespace key

constexpr MediaChoice kCommands[] = {{0, C::kTextStop}, {1, C::kTextStart}};
constexpr MediaChoice kRates[] = {{0, 0, "8k"}, {1, 0, "11k"}, {2, 0, "23k"}, {3, 0, "32k"}};
constexpr std::span<const MediaChoice> kSaveFlags = std::span(media::kSaveFlags).first(media::kSaveFlagsWithoutFace);
}  // namespace

plat::DialogTemplate CDlgSound::Layout() {
  using namespace row;
  return PageTemplate(kTemplate, {600, 200},
                      {{Static(kTimeLabel, "录音时间", {10, 12, 110, 32}, kTextTime),
                        Number(kTimeEdit, {120, 10, 200, 32}, 0, 65535),
                        Static(kTimeNote, "(0~65535秒，0表示一直录音)", {210, 12, 590, 32}, kTextTimeNote)},
                       {Static(kCommandLabel, "录音命令", {10, 47, 110, 67}, kTextCommand),
                        Combo(kCommandCombo, {120, 45, 290, 67}),
                        Static(kSaveLabel, "保存标志", {310, 47, 400, 67}, kTextSave), Combo(kSaveCombo, {410, 45, 580, 67})},
                       {Static(kRateLabel, "音频采样率", {10, 82, 110, 102}, kTextRate), Combo(kRateCombo, {120, 80, 290, 102})},
                       {SetButton({500, 165, 590, 193})}});
}

CDlgSound::CDlgSound() : CBaseDlg(kTemplate) {
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Set, BN_CLICKED, [this] {
    time_ = GetItemText(kTimeEdit);
    command_ = media::SelectedData(*this, kCommandCombo);
    save_ = media::SelectedData(*this, kSaveCombo);
    rate_ = media::SelectedData(*this, kRateCombo);
    StartSend(Mode::kSet, kCommand);
  });
}

void CDlgSound::OnInitPage() {
  SetItemText(kTimeEdit, "0");
  media::FillChoices(*this, kCommandCombo, kCommands);
  media::FillChoices(*this, kSaveCombo, kSaveFlags);
  media::FillChoices(*this, kRateCombo, kRates);
}

BOOL CDlgSound::CheckParam() { return ParamCheck(*this).Filled(time_, kTextTime, kTimeEdit).Ok(); }

Json::Value CDlgSound::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kTime] = txt::WToI(time_);
  param[key::kCommand] = command_;
  param[key::kSave] = save_;
  param[key::kRate] = rate_;
  return param;
}

std::string CDlgSound::GetParamDescription() {
  return Description()
      .Field(kTextTime, txt::WToI(time_))
      .Field(kTextCommand, media::ChoiceText(kCommands, command_))
      .Field(kTextSave, media::ChoiceText(kSaveFlags, save_))
      .Field(kTextRate, media::ChoiceText(kRates, rate_));
}
