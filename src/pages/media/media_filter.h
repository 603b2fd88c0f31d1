// The filter the media search and the filtered upload share: channel, media
// type, event code and a time range, read from the page's controls and sent
// as "CHID", "METY", "EVCO", "BTM" and "ETM". Times go out as twelve digits,
// two each for year (of the century), month, day, hour, minute and second.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "command/base_dlg.h"
#include "command/description.h"
#include "command/page_template.h"
#include "command/param_check.h"

class CMediaFilterPage : public CBaseDlg {
 public:
  // The filter's controls on a page.
  struct Controls {
    int channel, type, event, startDate, startTime, endDate, endTime;
  };
  // The labels beside them.
  struct Labels {
    int channel, channelNote, type, event, start, end;
  };
  enum Text : int {
    kTextChannel = 13450, kTextType = 13451, kTextEvent = 13452, kTextStart = 13453, kTextEnd = 12409,
  };
  static constexpr uint32_t kDeviceKinds = 0x4;

  CMediaFilterPage(int templateId, const Controls& controls);

  // The filter's rows of a template: channel; type and event; start; end.
  static std::vector<TemplateRows> FilterRows(const Controls& controls, const Labels& labels);

 protected:
  // Lists, picker formats and the start texts: today from 00:00:00 to 23:59:59.
  void OnInitPage() override;
  // Reads the filter's controls into the fields below.
  void ReadFilter();
  // The channel must be typed.
  ParamCheck& CheckFilter(ParamCheck& check) const;
  // An object with the filter's five keys.
  Json::Value FilterParam() const;
  // The filter's five "label：value" fields.
  Description& DescribeFilter(Description& description) const;

  const Controls controls_;
  std::string channel_;
  uint32_t type_ = 0;
  uint32_t event_ = 0;
  SYSTEMTIME start_{};
  SYSTEMTIME end_{};
};

namespace media {
// "YYMMDDhhmmss" of a time.
std::string FilterTimeText(const SYSTEMTIME& time);
// Whether a comes before b, to the second.
bool EarlierThan(const SYSTEMTIME& a, const SYSTEMTIME& b);
}  // namespace media
