// The filtered upload page: template, checks, parameter object and description.
#include "pages/media/media_upload.h"

#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "pages/media/media_choices.h"

namespace {
using C = CDlgMediaUpload;
const RegisterPage<C> kPage{{C::kFunctionType}};

constexpr const char* kKeyDelete = "DELA";
constexpr CMediaFilterPage::Controls kFilter{C::kChannelEdit, C::kTypeCombo, C::kEventCombo, C::kStartDate,
                                             C::kStartTime,   C::kEndDate,   C::kEndTime};
}  // namespace

plat::DialogTemplate CDlgMediaUpload::Layout() {
  using namespace row;
  return PageTemplate(
      kTemplate, {600, 260},
      {{Static(kChannelLabel, "通道ID", {10, 12, 110, 32}, kTextChannel), Number(kChannelEdit, {120, 10, 200, 32}, 0, 255),
        Static(kChannelNote, "(0~255)", {210, 12, 300, 32})},
       {Static(kTypeLabel, "多媒体类型", {10, 47, 110, 67}, kTextType), Combo(kTypeCombo, {120, 45, 290, 67}),
        Static(kEventLabel, "事件项编码", {310, 47, 400, 67}, kTextEvent), Combo(kEventCombo, {410, 45, 590, 67})},
       {Static(kStartLabel, "起始时间", {10, 82, 110, 102}, kTextStart), Date(kStartDate, {120, 80, 240, 102}),
        Time(kStartTime, {250, 80, 350, 102})},
       {Static(kEndLabel, "结束时间", {10, 117, 110, 137}, kTextEnd), Date(kEndDate, {120, 115, 240, 137}),
        Time(kEndTime, {250, 115, 350, 137})},
       {Static(kDeleteLabel, "删除标志", {10, 152, 110, 172}, kTextDelete), Combo(kDeleteCombo, {120, 150, 290, 172})},
       {SetButton({500, 225, 590, 253})}});
}

CDlgMediaUpload::CDlgMediaUpload() : CMediaFilterPage(kTemplate, kFilter) {
  Bind(ctl::Set, BN_CLICKED, [this] {
    ReadFilter();
    delete_ = media::SelectedData(*this, kDeleteCombo);
    StartSend(Mode::kSet, kCommand);
  });
}

void CDlgMediaUpload::OnInitPage() {
  CMediaFilterPage::OnInitPage();
  media::FillChoices(*this, kDeleteCombo, media::kDeleteFlags);
}

BOOL CDlgMediaUpload::CheckParam() {
  ParamCheck check(*this);
  return CheckFilter(check).That(media::EarlierThan(start_, end_), kTextTimeOrder).Ok();
}

Json::Value CDlgMediaUpload::GetParam() {
  Json::Value param = FilterParam();
  param[kKeyDelete] = delete_;
  return param;
}

std::string CDlgMediaUpload::GetParamDescription() {
  Description description;
  return DescribeFilter(description).Field(kTextDelete, media::ChoiceText(media::kDeleteFlags, delete_));
}
