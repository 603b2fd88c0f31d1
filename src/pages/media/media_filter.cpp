// The shared media filter: lists, pickers, reading, keys, times and description.
#include "pages/media/media_filter.h"

#include <cstdio>
#include <tuple>

#include "command/time_text.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/media/media_choices.h"
#include "platform/clock.h"
#include "text/numbers.h"

namespace {
namespace key {
constexpr const char *kChannel = "CHID", *kType = "METY", *kEvent = "EVCO", *kStart = "BTM", *kEnd = "ETM";
}  // namespace key
constexpr const char* kDateFormat = "yyyy'-'MM'-'dd";
constexpr const char* kTimeFormat = "HH':'mm':'ss";
constexpr int kCentury = 100;

void SetPicker(plat::Dialog& page, int id, const char* format, const SYSTEMTIME& time) {
  if (auto* picker = page.Item<plat::DateTimePicker>(id)) {
    picker->SetFormat(format);
    picker->SetTime(time);
  }
}
}  // namespace

namespace media {
std::string FilterTimeText(const SYSTEMTIME& t) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d%02d%02d%02d%02d%02d", t.wYear % kCentury, t.wMonth, t.wDay, t.wHour,
                t.wMinute, t.wSecond);
  return text;
}

bool EarlierThan(const SYSTEMTIME& a, const SYSTEMTIME& b) {
  return std::tie(a.wYear, a.wMonth, a.wDay, a.wHour, a.wMinute, a.wSecond) <
         std::tie(b.wYear, b.wMonth, b.wDay, b.wHour, b.wMinute, b.wSecond);
}
}  // namespace media

std::vector<TemplateRows> CMediaFilterPage::FilterRows(const Controls& c, const Labels& l) {
  using namespace row;
  return {{Static(l.channel, "通道ID", {10, 12, 110, 32}, kTextChannel), Number(c.channel, {120, 10, 200, 32}, 0, 255),
           Static(l.channelNote, "(0~255)", {210, 12, 300, 32})},
          {Static(l.type, "多媒体类型", {10, 47, 110, 67}, kTextType), Combo(c.type, {120, 45, 290, 67}),
           Static(l.event, "事件项编码", {310, 47, 400, 67}, kTextEvent), Combo(c.event, {410, 45, 590, 67})},
          {Static(l.start, "起始时间", {10, 82, 110, 102}, kTextStart), Date(c.startDate, {120, 80, 240, 102}),
           Time(c.startTime, {250, 80, 350, 102})},
          {Static(l.end, "结束时间", {10, 117, 110, 137}, kTextEnd), Date(c.endDate, {120, 115, 240, 137}),
           Time(c.endTime, {250, 115, 350, 137})}};
}

CMediaFilterPage::CMediaFilterPage(int templateId, const Controls& controls)
    : CBaseDlg(templateId), controls_(controls) {
  DeviceKindMask = kDeviceKinds;
}

void CMediaFilterPage::OnInitPage() {
  SetItemText(controls_.channel, "1");
  media::FillChoices(*this, controls_.type, media::kMediaTypes);
  media::FillChoices(*this, controls_.event, media::kEventCodes);
  SYSTEMTIME dayStart = plat::GetLocalTime();
  dayStart.wHour = dayStart.wMinute = dayStart.wSecond = dayStart.wMilliseconds = 0;
  SYSTEMTIME dayEnd = dayStart;
  dayEnd.wHour = 23, dayEnd.wMinute = 59, dayEnd.wSecond = 59;
  SetPicker(*this, controls_.startDate, kDateFormat, dayStart);
  SetPicker(*this, controls_.startTime, kTimeFormat, dayStart);
  SetPicker(*this, controls_.endDate, kDateFormat, dayEnd);
  SetPicker(*this, controls_.endTime, kTimeFormat, dayEnd);
}

void CMediaFilterPage::ReadFilter() {
  channel_ = GetItemText(controls_.channel);
  type_ = media::SelectedData(*this, controls_.type);
  event_ = media::SelectedData(*this, controls_.event);
  start_ = PickedTime(*this, controls_.startDate, controls_.startTime);
  end_ = PickedTime(*this, controls_.endDate, controls_.endTime);
}

ParamCheck& CMediaFilterPage::CheckFilter(ParamCheck& check) const {
  return check.Filled(channel_, kTextChannel, controls_.channel);
}

Json::Value CMediaFilterPage::FilterParam() const {
  Json::Value param(Json::objectValue);
  param[key::kChannel] = txt::WToI(channel_);
  param[key::kType] = type_;
  param[key::kEvent] = event_;
  param[key::kStart] = media::FilterTimeText(start_);
  param[key::kEnd] = media::FilterTimeText(end_);
  return param;
}

Description& CMediaFilterPage::DescribeFilter(Description& description) const {
  return description.Field(kTextChannel, channel_)
      .Field(kTextType, media::ChoiceText(media::kMediaTypes, type_))
      .Field(kTextEvent, media::ChoiceText(media::kEventCodes, event_))
      .Field(kTextStart, FormatSystemTime(start_))
      .Field(kTextEnd, FormatSystemTime(end_));
}
