// The four provincial transparent-data pages.
#pragma once

#include <string>

#include "pages/regional/transparent_data.h"

// Roof light information.
class CDlgHBDemoLight : public CTransparentTextPage {
 public:
  static constexpr int kTemplate = 4054;
  static constexpr int kFunctionType = 44;
  static constexpr int kSubType = 199;
  enum Text : int { kTextRoofLight = 13810 };
  static plat::DialogTemplate Layout() { return TextLayout(kTemplate, "顶灯信息", kTextRoofLight); }
  CDlgHBDemoLight() : CTransparentTextPage(kTemplate, kSubType, kTextRoofLight) {}
};

// External screen content.
class CDlgHBExternalScreen : public CTransparentTextPage {
 public:
  static constexpr int kTemplate = 4052;
  static constexpr int kFunctionType = 42;
  static constexpr int kSubType = 194;
  enum Text : int { kTextScreen = 13811 };
  static plat::DialogTemplate Layout() { return TextLayout(kTemplate, "车外屏信息项内容", kTextScreen); }
  CDlgHBExternalScreen() : CTransparentTextPage(kTemplate, kSubType, kTextScreen) {}
};

// Driver identity records: user id, user name and feature code.
class CDlgHBDriverIdentity : public CTransparentRecordPage {
 public:
  static constexpr int kTemplate = 4053;
  static constexpr int kFunctionType = 43;
  static constexpr int kSetType = 196, kQueryType = 197;
  enum Control : int { kUserIdLabel = 4387, kUserId = 4364, kUserNameLabel = 4388, kUserName = 4365,
                       kFeatureLabel = 4389, kFeature = 4366 };
  enum Text : int { kTextSetGroup = 13812, kTextUserId = 13818, kTextUserName = 13819, kTextFeature = 13820,
                    kTextQueryGroup = 13821 };
  static plat::DialogTemplate Layout();
  CDlgHBDriverIdentity() : CTransparentRecordPage(kTemplate, kSetType, kQueryType) {}

 protected:
  void ReadRecord() override;
  std::string RecordNote() const override;
  void DescribeRecord(Description& description) const override;
  std::vector<int> RecordControls() const override { return {kUserId, kUserName, kFeature}; }

 private:
  std::string userId_, userName_, feature_;
};

// Electronic waybill records: a validity period and five texts.
class CDlgHBElectronicWaybill : public CTransparentRecordPage {
 public:
  static constexpr int kTemplate = 4051;
  static constexpr int kFunctionType = 41;
  static constexpr int kSetType = 192, kQueryType = 193;
  static constexpr int kFields = 5;
  enum Control : int {
    kStartLabel = 4390, kStartDate = 4377, kStartTime = 4378, kEndLabel = 4391, kEndDate = 4379, kEndTime = 4380,
    kSiteLabel = 4392, kSite = 4362, kAreaLabel = 4393, kArea = 4363, kRouteLabel = 4394, kRoute = 4364,
    kPermitLabel = 4395, kPermit = 4365, kProjectLabel = 4396, kProject = 4366,
  };
  enum Text : int {
    kTextSetGroup = 13825, kTextStart = 13826, kTextEnd = 13827, kTextSite = 13828, kTextArea = 13829,
    kTextRoute = 13830, kTextPermit = 13831, kTextProject = 13832, kTextQueryGroup = 13833, kTextTimeOrder = 12411,
  };
  static plat::DialogTemplate Layout();
  CDlgHBElectronicWaybill() : CTransparentRecordPage(kTemplate, kSetType, kQueryType) {}
  BOOL CheckParam() override;

 protected:
  void OnInitPage() override;
  void ReadRecord() override;
  std::string RecordNote() const override;
  void DescribeRecord(Description& description) const override;
  std::vector<int> RecordControls() const override;

 private:
  SYSTEMTIME start_{}, end_{};
  std::string fields_[kFields];
};
