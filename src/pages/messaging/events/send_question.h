// The question page: a question with up to four answers for the driver, and
// the answer the terminal reports back. The answers of every send are kept by
// box in the host configuration and, by answer id, in the page, so a reply
// names the answer given.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>

#include "command/base_dlg.h"

class CDlgSendQuition : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4021;
  static constexpr int32_t kCommand = 0x8302;
  static constexpr int kFunctionType = 14;
  static constexpr int kConfigId = 711;
  static constexpr int kAnswers = 4;
  static constexpr int kTextChars = 127;
  enum Control : int {
    kFlagGroup = 4164, kCheckUrgent = 4191, kCheckTts = 4189, kCheckAdScreen = 4190,
    kQuestionGroup = 4177, kQuestionLabel = 4178, kQuestionEdit = 4171,
    kAnswerGroup = 4305, kGivenLabel = 4188, kGivenEdit = 4176,
  };
  static constexpr std::array<int, kAnswers> kAnswerEdits{4172, 4173, 4174, 4175};
  static constexpr std::array<int, kAnswers> kAnswerLabels{4179, 4180, 4181, 4182};
  static constexpr std::array<int, kAnswers + 1> kNotes{4183, 4184, 4185, 4186, 4187};
  enum Text : int {
    kTextUrgent = 12950, kTextTts = 12952, kTextAdScreen = 12953, kTextFlag = 12954, kTextNote = 13009,
    kTextQuestionAnswer = 13010, kTextQuestion = 13020, kTextAnswer = 13021, kTextGiven = 13027,
  };

  static plat::DialogTemplate Layout();
  CDlgSendQuition();

  void PrepareBatch(CommandRequest& request) override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 private:
  void OnSend();

  uint8_t flag_ = 0;
  std::string question_;
  std::array<std::string, kAnswers> answers_;
  std::map<int32_t, std::string> answerIds_;  // by the "ASR" each send gave
  std::string given_;                         // the answer the last reply named
};
