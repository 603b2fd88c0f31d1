// What the circle, rectangle and polygon area pages share: the area
// properties and their controls, the attribute word, the time range, the
// regional extensions, the chosen markers with their picker, batching with
// progress, the checks, the common keys of an area and the description.
// A shape page adds its picker, its keys and the order of its first checks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <json/value.h>

#include "command/base_dlg.h"
#include "command/param_check.h"
#include "pages/areas/area_attr.h"
#include "pages/areas/area_marker.h"

class CAreaPageBase : public CBaseDlg {
 public:
  enum Control : int {
    kSetupGroup = 3033, kRadioUpdate = 3002, kRadioAppend = 3003, kRadioModify = 3004,
    kAttrGroup = 3030, kCheckByTime = 3005, kCheckSpeedLimit = 3011, kCheckEnterDriver = 3010,
    kCheckEnterPlatform = 3008, kCheckLeaveDriver = 3007, kCheckLeavePlatform = 3009, kCheckSouth = 3006,
    kCheckWest = 3012, kCheckNoDoors = 3044, kCheckCommOff = 3016, kCheckGnss = 3034, kCheckBan = 3013,
    kCheckOverspeed = 3015,
    kItemGroup = 3029, kIdLabel = 3021, kIdEdit = 3014, kCentreLabel = 3022, kPickButton = 4000, kProgress = 4381,
    kRadiusLabel = 3025, kRadiusEdit = 3018, kRadiusUnit = 4009,
    kStartLabel = 3026, kStartDate = 3019, kStartTime = 4012, kEndLabel = 4010, kEndDate = 3020, kEndTime = 4013,
    kEveryDay = 4418,
    kSpeedLabel = 3027, kSpeedEdit = 3023, kDurationLabel = 3028, kDurationEdit = 3017, kDurationUnit = 4011,
    kNightLabel = 3041, kNightEdit = 3040, kNightUnit = 4417, kNameLabel = 3043, kNameEdit = 3042,
    kMountainGroup = 3035, kDrivingSpeedLabel = 3037, kDrivingSpeedEdit = 3024, kDrivingSpeedRange = 4352,
    kDrivingSpeedUnit = 4353, kDrivingTimeLabel = 4356, kDrivingTimeEdit = 4355, kDrivingTimeRange = 4354,
    kDrivingTimeUnit = 4014,
    kTypeGroup = 3036, kAreaTypeLabel = 3038, kUnloadTypeLabel = 3039, kAreaTypeCombo = 4373, kUnloadTypeCombo = 4374,
  };
  enum Text : int {
    kTextSeveralAreas = 12100, kTextStart = 12408, kTextEnd = 12409, kTextSetup = 12500, kTextUpdate = 12501,
    kTextAppend = 12502, kTextModify = 12503, kTextAttributes = 12504, kTextAreaId = 12001, kTextRadius = 12510,
    kTextMaxSpeed = 12512, kTextDuration = 12307, kTextNightSpeed = 12620, kTextAreaName = 12621,
    kTextNoArea = 12704, kTextTimeOrder = 12411, kTextItem = 12406, kTextCentre = 12509, kTextMetres = 12511,
    kTextSeconds = 12513, kTextEveryDay = 12622, kTextPick = 12514, kTextMountain = 12624,
    kTextDrivingSpeed = 12625, kTextDrivingTime = 12626, kTextBan = 12623,
  };
  static constexpr uint32_t kDeviceKinds = 4;
  static constexpr int kIdChars = 10, kRadiusChars = 8, kNameChars = 80;
  enum Setup : int { kUpdate = 0, kAppend = 1, kModify = 2 };

  // What a shape's page is made of.
  struct Shape {
    int templateId;
    int32_t command;
    bool hasSetup;   // update / append / modify radios
    bool hasRadius;  // the radius row
    int batchSize;   // areas per request
  };

  explicit CAreaPageBase(const Shape& shape);

  BOOL CheckParam() final;
  std::string GetParamDescription() override;
  void PrepareBatch(CommandRequest& request) override;
  void UpdateBatchProgress() override;
  void EnableParamControls(BOOL enable) override;
  void UpdateProtocolControls() override;
  void ApplyClientOptions() override;

  const std::vector<int>& Selected() const { return selected_; }
  int FenceLevel() const { return fenceLevel_; }

 protected:
  // The page template of a shape; pickCaption is the picker button's default caption.
  static plat::DialogTemplate MakeTemplate(const Shape& shape, const char* pickCaption);
  void OnInitPage() override;

  // Runs the shape's picker with the page's fence level and selection; true
  // (with both taken back) when the user confirmed a choice.
  virtual bool RunPicker(int& fenceLevel, std::vector<int>& selected) = 0;
  // Fills the id, radius and name edits from the one picked marker, when it is of the page's shape.
  virtual void ShowPickedMarker(const area::Marker& marker);
  // The checks before the common ones (their order differs by shape).
  virtual void CheckShape(ParamCheck& check) = 0;
  // South and west bits of a marker's area.
  virtual uint16_t HemisphereBits(const area::Marker& marker) const;

  bool Alone() const { return selected_.size() == 1; }
  bool Is2019() const { return Caps().bProtocol2019 != FALSE; }
  // The keys every area carries: "ATTR" (without south and west), the time range, speeds, regional keys.
  Json::Value CommonKeys() const;
  // The attribute word of a marker's area.
  uint16_t AttrOf(const area::Marker& marker) const { return static_cast<uint16_t>(word_ | HemisphereBits(marker)); }
  // The parameter of a request that carries a list of areas: setup type, the
  // batch's size and the areas the host still found (no "Item" when none).
  Json::Value ListParam(int count, const Json::Value& items) const;
  // The area name sent: the name edit for a marker chosen alone, else the marker's name.
  std::string AreaName(const std::optional<area::Marker>& marker) const;
  // Batch of this request, trimmed to the areas left.
  BatchRange TakeBatch();

  int setup_ = kUpdate;
  std::string idText_, radiusText_, nameText_;

 private:
  void OnSend();
  void OnPick();
  void ApplyDependentEnabling();
  void ApplySelectionEnabling();
  uint16_t BuildWord() const;

  const Shape shape_;
  std::vector<int> selected_;
  int fenceLevel_ = area::kAllFences;
  uint16_t word_ = 0;
  SYSTEMTIME start_{}, end_{};
  std::string speedText_, durationText_, nightText_, drivingSpeed_, drivingTime_;
  int descriptionStart_ = 0;
};
