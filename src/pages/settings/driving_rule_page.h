// What the driving-ban and night-driving pages share: a period of dates and a
// span of daytime hours, each of which a check box can switch off, and two
// numbers of the page's own. OK sets the rule, query reads it back; after a
// query the page shows the rule the terminal holds.
#pragma once

#include <json/value.h>

#include <initializer_list>
#include <optional>
#include <string>

#include "command/base_dlg.h"
#include "platform/dialog.h"

class CDrivingRulePage : public CBaseDlg {
 public:
  enum Control : int {
    kNoDates = 4349, kBeginDate = 4341, kEndDate = 4342, kNoHours = 4350, kBeginTime = 4337, kEndTime = 4338,
    kBeginDateLabel = 4345, kEndDateLabel = 4346, kBeginTimeLabel = 4347, kEndTimeLabel = 4348,
  };
  enum Text : int {
    kTextPeriod = 11104, kTextHours = 11105, kTextNoPeriod = 11109, kTextNoHours = 11110, kTextBeginDate = 11111,
    kTextEndDate = 11112, kTextBeginDateWrong = 11121, kTextEndDateWrong = 11122, kTextBegin = 12408,
    kTextEnd = 12409,
  };
  static constexpr int kFirstYear = 2000, kLastYear = 2100;

  // A rule: its period and hours in two times, and the page's two numbers.
  struct Rule {
    SYSTEMTIME begin{};
    SYSTEMTIME end{};
    int first = 0;
    int second = 0;
  };

  void EnableParamControls(BOOL enable) override;
  BOOL CheckParam() override;
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  // The page's texts and keys.
  struct Setup {
    int32_t setCommand, queryCommand;
    const char *firstKey, *secondKey;
  };
  CDrivingRulePage(int templateId, Setup setup);

  // The captions of a page's shared controls.
  struct Captions {
    const char *noDates, *noHours, *beginTime, *endTime;
    int noDatesText, noHoursText, beginTimeText, endTimeText;
  };
  // The template: the shared rows, the page's number rows, the buttons.
  static plat::DialogTemplate MakeTemplate(int id, const Captions& captions,
                                           std::initializer_list<plat::ControlEntry> numbers);

  void OnInitPage() override;
  // Collects the entered rule from the controls; shows the tip and returns false when refused.
  virtual bool CollectRule(Rule& rule) = 0;
  // The numbers of a rule as the page sends them, and as its controls show them.
  virtual int SentFirst(const Rule& rule) const { return rule.first; }
  virtual void ShowNumbers(const Rule& rule) = 0;
  virtual std::string DescribeNumbers(const Rule& rule) const = 0;

  bool DatesOn() const { return datesOn_; }
  bool HoursOn() const { return hoursOn_; }
  // When the period is on, the dates of its pickers into the rule; a year
  // outside 2000 to 2100 shows its tip and gives false.
  bool TakePeriod(Rule& rule);

  void OnAnswer(CommandRequest& request, const Json::Value& reply) final;
  void OnNoAnswer(CommandRequest&) final { readBack_ = {}; }

 private:
  void RefreshBoxes();
  void ShowReadBack();
  Setup setup_;
  bool datesOn_ = true;
  bool hoursOn_ = true;
  Rule entered_, readBack_;
};
