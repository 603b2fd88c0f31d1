// The camera page: the terminal shoots now (pictures, a video, or stops),
// with the picture settings. The resolutions offered follow the device kind:
// the standard eight, the 2019 edition's lowest and highest, or the
// attribute-76 families' own tables.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "command/base_dlg.h"

class CDlgSetupSnapShot : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4032;
  static constexpr int32_t kCommand = 0x8801;
  static constexpr int kFunctionType = 27;
  enum Control : int {
    kChannelLabel = 4246, kChannelEdit = 4247, kChannelNote = 4398,
    kCommandLabel = 4248, kCommandEdit = 4249, kCommandNote = 4252,
    kIntervalLabel = 4250, kIntervalEdit = 4251, kIntervalNote = 4253,
    kSettingGroup = 4254, kSaveLabel = 4255, kSaveCombo = 4256,
    kResolutionLabel = 4257, kResolutionCombo = 4258,
    kQualityLabel = 4259, kQualityEdit = 4260, kQualityNote = 4261,
    kBrightnessLabel = 4262, kBrightnessEdit = 4263, kContrastLabel = 4264, kContrastEdit = 4265,
    kAttributeGroup = 4268, kSaturationLabel = 4270, kSaturationEdit = 4271,
    kChromaLabel = 4273, kChromaEdit = 4274,
  };
  enum Text : int {
    kTextSetting = 11004, kTextChannel = 13450, kTextCommand = 13465, kTextCommandNote = 13466,
    kTextInterval = 13467, kTextIntervalNote = 13468, kTextSave = 13443, kTextResolution = 13469,
    kTextQuality = 13470, kTextBrightness = 13471, kTextContrast = 13472, kTextSaturation = 13473,
    kTextChroma = 13474, kTextAttributes = 13475, kTextQualityNote = 13476, kTextChannelNote = 13477,
    kTextLowest = 13478, kTextHighest = 13479,
  };
  // "PIX" of the 2019 edition's lowest and highest resolution.
  static constexpr uint32_t kPixLowest = 0, kPixHighest = 255;

  static plat::DialogTemplate Layout();
  CDlgSetupSnapShot();

  void EnableParamControls(BOOL enable) override;
  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;
  void UpdateProtocolControls() override;

 protected:
  void OnInitPage() override;

 private:
  // The resolution table of an attribute-76 device, by its flags (empty for other devices).
  std::span<const char* const> Attr76Resolutions() const;
  void FillStandardResolutions();
  void ApplySaveFlag();
  std::string ResolutionText(uint32_t pix) const;

  // The typed texts of the eight number boxes, in the order of kNumberFields.
  enum Field { kFieldChannel, kFieldCommand, kFieldInterval, kFieldQuality, kFieldBrightness, kFieldContrast,
               kFieldSaturation, kFieldChroma, kFieldCount };
  std::string numbers_[kFieldCount];
  uint32_t save_ = 0;
  uint32_t pix_ = 0;
};
