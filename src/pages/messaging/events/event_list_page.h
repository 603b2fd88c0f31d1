// What the event setting page and the information menu page share: a setting
// type chosen by radios and up to four rows of (identifier, text). Rows whose
// identifier box is filled are sent; the boxes a type does not use are
// disabled. Each result row also records the rows' texts in the host
// configuration under the page's id, indexed by identifier, so the rest of
// the client can name what the terminals later report.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "command/base_dlg.h"
#include "command/page_template.h"
#include "pages/messaging/events/setting_type.h"

class CEventListPage : public CBaseDlg {
 public:
  static constexpr int kRows = 4;
  static constexpr int kIdMax = 255;       // identifiers and configuration entries 0..255
  static constexpr int kTextChars = 127;
  static constexpr int kTypeGroup = 4029, kHint = 4027;
  static constexpr std::array<int, kRows> kIdEdits{4100, 4104, 4107, 4110};
  static constexpr std::array<int, kRows> kTextEdits{4101, 4105, 4108, 4111};
  static constexpr std::array<int, kRows> kRowLabels{4102, 4103, 4106, 4109};
  static constexpr std::array<int, kRows> kContentLabels{4077, 4078, 4079, 4080};
  static constexpr std::array<int, kRows> kNotes{4081, 4082, 4083, 4084};
  enum SettingType : uint8_t { kDeleteAll = 0, kUpdate = 1, kAppend = 2, kModify = 3, kDeleteGiven = 4 };
  enum Text : int {
    kTextType = 13000, kTextDeleteAll = 13001, kTextUpdate = 13002, kTextModify = 13003, kTextDeleteGiven = 13004,
    kTextAppend = 13005, kTextContent = 13008, kTextNote = 13009, kTextDuplicateId = 12705, kTextNoId = 12711,
  };

  // What tells the two pages apart.
  struct Kind {
    int templateId;
    int32_t command;
    uint32_t deviceKinds;
    std::span<const SettingTypeRadio> radios;
    uint8_t startType;
    const char* idKey;   // the identifier's key in each "EVIT" object
    bool sendsCount;     // "Count" follows "EVIT"
    int configId;        // host configuration of the texts, by identifier
    int itemsGroup;      // group box of the rows and its text (also the description's list label)
    int itemsText;
    const char* itemsCaption;
    int rowLabelText;    // 0: the rows keep "ID1".."ID4"
    int hintText;        // 0: the hidden hint keeps no text
  };

 protected:
  explicit CEventListPage(const Kind& kind);
  // The page's template: its type radios, the rows, controls of its own, the buttons.
  static plat::DialogTemplate MakeTemplate(const Kind& kind, TemplateSection radios, TemplateSection extras);

  void OnInitPage() override;
  void EnableParamControls(BOOL enable) override;
  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 private:
  void OnSend();
  void EnableRows(bool enable);
  void UpdateStore();
  std::string IdLabel() const;

  const Kind& kind_;
  uint8_t type_;
  std::array<std::string, kRows> ids_;
  std::array<std::string, kRows> texts_;
  bool controlsEnabled_ = true;
};
