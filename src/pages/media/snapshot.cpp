// The camera page: its template, the resolution lists of each device kind,
// the face-capture save mode, the checks, the parameter object and the
// description.
#include "pages/media/snapshot.h"

#include <iterator>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "lang/language.h"
#include "pages/media/media_choices.h"
#include "text/numbers.h"

namespace {
using C = CDlgSetupSnapShot;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr uint32_t kDeviceKinds = 0xE06;

// One number box: its control, its label and its key.
struct NumberField {
  int edit;
  int label;
  const char* key;
};
constexpr NumberField kNumberFields[] = {
    {C::kChannelEdit, C::kTextChannel, "CHID"},        {C::kCommandEdit, C::kTextCommand, "SNOR"},
    {C::kIntervalEdit, C::kTextInterval, "SNBT"},      {C::kQualityEdit, C::kTextQuality, "PIC"},
    {C::kBrightnessEdit, C::kTextBrightness, "BRI"},   {C::kContrastEdit, C::kTextContrast, "CT"},
    {C::kSaturationEdit, C::kTextSaturation, "HUE"},   {C::kChromaEdit, C::kTextChroma, "COLOR"}};
namespace key {
constexpr const char *kSave = "SALA", *kPix = "PIX";
}  // namespace key

// The standard resolutions carry "PIX" 1 to 8; the attribute-76 tables 0 upwards.
constexpr const char* kStandardResolutions[] = {"320*240", "640*480", "800*600", "1024*768",
                                                "176*144", "352*288", "704*288", "704*576"};
constexpr const char* kResolutions76With78[] = {"320*240", "640*480", "800*600", "1024*768", "1280*960", "1920*1080"};
constexpr const char* kResolutions76With99[] = {"320*240", "640*480", "800*600", "720*576", "1024*768", "1280*720"};
constexpr const char* kResolutions76[] = {"320*240", "640*480", "800*600"};
constexpr uint32_t kFirstStandardPix = 1;
constexpr const char* kChannelNote76 = "(1~255)";

// A typed number; an empty box gives 0.
int NumberOf(const std::string& text) { return txt::WToI(text); }
}  // namespace

plat::DialogTemplate CDlgSetupSnapShot::Layout() {
  using namespace row;
  return PageTemplate(
      kTemplate, {600, 380},
      {{Box(kSettingGroup, "设置", {10, 10, 590, 130}, kTextSetting)},
       {Static(kChannelLabel, "通道", {20, 32, 110, 52}, kTextChannel), Number(kChannelEdit, {120, 30, 200, 52}, 1, 255),
        Static(kChannelNote, "(1~255)", {210, 32, 580, 52}, kTextChannelNote)},
       {Static(kCommandLabel, "拍摄命令", {20, 62, 110, 82}, kTextCommand),
        Number(kCommandEdit, {120, 60, 200, 82}, 0, 65535),
        Static(kCommandNote, "(0~65535,0表示停止拍摄，65535表示录像，其他表示拍摄张数)", {210, 62, 580, 82},
               kTextCommandNote)},
       {Static(kIntervalLabel, "拍摄间隔", {20, 92, 110, 112}, kTextInterval),
        Number(kIntervalEdit, {120, 90, 200, 112}, 0, 65535),
        Static(kIntervalNote, "(0~65535秒)", {210, 92, 580, 112}, kTextIntervalNote)},
       {Box(kAttributeGroup, "属性", {10, 140, 590, 330}, kTextAttributes)},
       {Static(kSaveLabel, "保存标志", {20, 162, 110, 182}, kTextSave), Combo(kSaveCombo, {120, 160, 290, 182}),
        Static(kResolutionLabel, "分辨率", {310, 162, 400, 182}, kTextResolution),
        Combo(kResolutionCombo, {410, 160, 580, 182})},
       {Static(kQualityLabel, "图像质量", {20, 192, 110, 212}, kTextQuality),
        Number(kQualityEdit, {120, 190, 200, 212}, 1, 10),
        Static(kQualityNote, "(1~10,1表示质量损失最小，10表示压缩比最大)", {210, 192, 580, 212}, kTextQualityNote)},
       {Static(kBrightnessLabel, "亮度", {20, 222, 110, 242}, kTextBrightness),
        Number(kBrightnessEdit, {120, 220, 200, 242}, 0, 255),
        Static(kContrastLabel, "对比度", {310, 222, 400, 242}, kTextContrast),
        Number(kContrastEdit, {410, 220, 490, 242}, 0, 127)},
       {Static(kSaturationLabel, "饱和度", {20, 252, 110, 272}, kTextSaturation),
        Number(kSaturationEdit, {120, 250, 200, 272}, 0, 127),
        Static(kChromaLabel, "色度", {310, 252, 400, 272}, kTextChroma), Number(kChromaEdit, {410, 250, 490, 272}, 0, 255)},
       {SetButton({500, 345, 590, 373})}});
}

CDlgSetupSnapShot::CDlgSetupSnapShot() : CBaseDlg(kTemplate) {
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Set, BN_CLICKED, [this] {
    for (int f = 0; f < kFieldCount; ++f) numbers_[f] = GetItemText(kNumberFields[f].edit);
    save_ = media::SelectedData(*this, kSaveCombo);
    pix_ = media::SelectedData(*this, kResolutionCombo);
    StartSend(Mode::kSet, kCommand);
  });
  Bind(kSaveCombo, CBN_SELCHANGE, [this] { ApplySaveFlag(); });
}

void CDlgSetupSnapShot::OnInitPage() {
  const size_t saveFlags = media::FaceCaptureOn() ? std::size(media::kSaveFlags) : media::kSaveFlagsWithoutFace;
  media::FillChoices(*this, kSaveCombo, std::span(media::kSaveFlags).first(saveFlags));
  FillStandardResolutions();
  for (int edit : {kChannelEdit, kQualityEdit}) SetItemText(edit, "1");
  for (int edit : {kCommandEdit, kIntervalEdit, kBrightnessEdit, kContrastEdit, kSaturationEdit, kChromaEdit}) {
    SetItemText(edit, "0");
  }
}

void CDlgSetupSnapShot::FillStandardResolutions() {
  auto* list = Item<plat::ComboBox>(kResolutionCombo);
  list->ResetContent();
  uint32_t pix = kFirstStandardPix;
  for (const char* resolution : kStandardResolutions) list->SetItemData(list->AddString(resolution), pix++);
  list->SetCurSel(0);
}

std::span<const char* const> CDlgSetupSnapShot::Attr76Resolutions() const {
  const DeviceCaps& caps = Caps();
  if (!caps.bDevAttr76) return {};
  if (caps.bDevAttr78) return kResolutions76With78;
  if (caps.bDevAttr99) return kResolutions76With99;
  return kResolutions76;
}

// Every device kind starts from its own list, so a page that served another
// kind of device before shows no entries of that kind.
void CDlgSetupSnapShot::UpdateProtocolControls() {
  if (!IsWindow()) return;
  auto* list = Item<plat::ComboBox>(kResolutionCombo);
  const std::span<const char* const> table76 = Attr76Resolutions();
  if (!table76.empty()) {
    list->ResetContent();
    uint32_t pix = 0;
    for (const char* resolution : table76) list->SetItemData(list->AddString(resolution), pix++);
    list->SetCurSel(0);
    SetItemText(kChannelNote, kChannelNote76);
    return;
  }
  FillStandardResolutions();
  SetItemText(kChannelNote, LanguageText(kTextChannelNote));
  if (Caps().bProtocol2019) {
    list->SetItemData(list->InsertString(0, LanguageText(kTextLowest)), kPixLowest);
    list->SetItemData(list->AddString(LanguageText(kTextHighest)), kPixHighest);
    list->SetCurSel(0);
  }
}

// Face capture chooses its own channel and resolution.
void CDlgSetupSnapShot::ApplySaveFlag() {
  if (!media::FaceCaptureOn()) return;
  const bool faceCapture = media::SelectedData(*this, kSaveCombo) == media::kSaveFaceCapture;
  EnableItem(kChannelEdit, !faceCapture);
  EnableItem(kResolutionCombo, !faceCapture);
}

void CDlgSetupSnapShot::EnableParamControls(BOOL enable) {
  for (const NumberField& field : kNumberFields) EnableItem(field.edit, enable);
  EnableItem(kSaveCombo, enable);
  EnableItem(kResolutionCombo, enable);
  if (enable) ApplySaveFlag();
}

BOOL CDlgSetupSnapShot::CheckParam() {
  ParamCheck check(*this);
  for (int f = 0; f < kFieldCount; ++f) {
    if (f == kFieldChannel && media::FaceCaptureOn()) continue;
    check.Filled(numbers_[f], kNumberFields[f].label, kNumberFields[f].edit);
  }
  return check.Ok();
}

Json::Value CDlgSetupSnapShot::GetParam() {
  Json::Value param(Json::objectValue);
  for (int f = 0; f < kFieldCount; ++f) param[kNumberFields[f].key] = NumberOf(numbers_[f]);
  param[key::kSave] = save_;
  param[key::kPix] = pix_;
  return param;
}

std::string CDlgSetupSnapShot::ResolutionText(uint32_t pix) const {
  if (pix == kPixHighest) return LanguageText(kTextHighest);
  const std::span<const char* const> table76 = Attr76Resolutions();
  if (!table76.empty()) return pix < table76.size() ? table76[pix] : "";
  if (pix == kPixLowest) return LanguageText(kTextLowest);
  return pix - kFirstStandardPix < std::size(kStandardResolutions) ? kStandardResolutions[pix - kFirstStandardPix] : "";
}

std::string CDlgSetupSnapShot::GetParamDescription() {
  const std::string setting = Description()
                                  .Field(kTextChannel, numbers_[kFieldChannel])
                                  .Field(kTextCommand, numbers_[kFieldCommand])
                                  .Field(kTextInterval, numbers_[kFieldInterval]);
  const std::string attributes = Description()
                                     .Field(kTextSave, media::ChoiceText(media::kSaveFlags, save_))
                                     .Field(kTextResolution, ResolutionText(pix_))
                                     .Field(kTextQuality, numbers_[kFieldQuality])
                                     .Field(kTextBrightness, numbers_[kFieldBrightness])
                                     .Field(kTextContrast, numbers_[kFieldContrast])
                                     .Field(kTextSaturation, numbers_[kFieldSaturation])
                                     .Field(kTextChroma, numbers_[kFieldChroma]);
  return Description().Field(kTextSetting, setting).Field(kTextAttributes, attributes);
}
