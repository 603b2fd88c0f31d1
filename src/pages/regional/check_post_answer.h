// The answer to a superior platform's check-post inquiry: the host hands the
// inquiry in as its alarm record, the operator types the answer, and the page
// gives it to the host's alarm service in the acknowledgement record.
#pragma once

#include <string>

#include "pages/alarms/platform_ack.h"

class CDlgInspection : public CPlatformAckPage {
 public:
  static constexpr int kTemplate = 4110;
  static constexpr int kFunctionType = 71;
  static constexpr int kMaxChars = 256;  // an answer must stay below this
  enum Control : int {
    kAnswerLabel = 4160, kAnswer = 4321, kHint = 4163, kSettingsButton = 4001, kNoPopup = 4465,
    kNameLabel = 4162, kName = 4428, kPhoneLabel = 4164, kPhone = 4429,
  };
  enum Text : int {
    kTextAnswer = 12941, kTextHint = 12943, kTextOk = 11057, kTextSettings = 13803, kTextNoPopup = 13804,
    kTextName = 13805, kTextPhone = 13806,
  };
  // The inspection record's own fields.
  enum InspectionField : size_t {
    kRecAnswer = 44, kRecAnswerBytes = 366, kRecFlag = 564, kRecHead = 565, kRecHeadBytes = 15, kRecValue = 584,
    kRecExtra = 592,
  };
  static constexpr int kTypeNameFunction = 71;

  static plat::DialogTemplate Layout();
  CDlgInspection();

  void EnableParamControls(BOOL enable) override { EnableItem(kAnswer, enable != FALSE); }
  BOOL CheckParam() override;
  void ShowContextData() override;
  const std::string& Content() const { return content_; }

 protected:
  void FillRecord(const AlarmView& alarm, RecordWriter& record) override;
  void OnAnswered(const void* answer) override { EndWithAnswer(answer); }

 private:
  void OnSend();
  const _GPSVehicleAlarm* Inquiry() const;

  std::string content_;
  std::string answer_;
};
