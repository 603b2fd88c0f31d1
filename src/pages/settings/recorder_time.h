// The recorder's clock and its installation date: one time, typed in a date
// and a time picker, written as "YEAR" ... "SEC" and read back from a
// date-time text of the reply.
#pragma once

#include "pages/settings/recorder_page.h"

class CRecorderTimePage : public CRecorderPage {
 public:
  enum Control : int { kCaption = 4233, kDateCaption = 4234, kTimeCaption = 4235, kDatePicker = 4245, kTimePicker = 4246 };
  enum Text : int { kTextDate = 13430, kTextTime = 13431 };

  // Where the reply holds the time and the row's label for it.
  struct Reading {
    const char* key;
    size_t maxBytes;
    bool needs2012;  // only a reply of the 2012 edition holds it
    int label;
  };

 protected:
  CRecorderTimePage(int templateId, Words words, Reading reading);
  enum class Buttons { kSetOnly, kGetAndSet };
  static plat::DialogTemplate MakeTemplate(int templateId, int frameText, int captionText, Buttons buttons);

  void OnInitPage() override;
  void ReadEntered() override;
  void WriteEntered(Json::Value& param) const override;
  void ClearReadBack() override { readBack_ = {}; }
  void ReadReply(const Json::Value& reply) override;
  void ShowReadBack() override;
  std::string Describe(bool readBack) const override;

 private:
  Reading reading_;
  SYSTEMTIME entered_{};
  SYSTEMTIME readBack_{};
};

// The recorder's clock (set only).
class CDlgSetupTime : public CRecorderTimePage {
 public:
  static constexpr int kTemplate = 4030;
  static constexpr int kFunctionType = 59, kFunctionType2012 = 64;
  enum Text : int { kTextFrame = 20134, kTextClock = 20133 };
  static plat::DialogTemplate Layout();
  CDlgSetupTime();
};

// The recorder's installation date (2012 edition).
class CDlgSetupInstallTime : public CRecorderTimePage {
 public:
  static constexpr int kTemplate = 4059;
  static constexpr int kFunctionType = 66;
  enum Text : int { kTextFrame = 20135, kTextInstallTime = 20105 };
  static plat::DialogTemplate Layout();
  CDlgSetupInstallTime();
};
