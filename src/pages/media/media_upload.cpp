// The filtered upload page: template, checks, parameter object and description.
#include "pages/media/media_upload.h"

#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "pages/media/media_choices.h"

namespace {
using C = CDlgMediaUpload;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr const char* kKeyDelete = "DELA";
constexpr CMediaFilterPage::Controls kFilter{C::kChannelEdit, C::kTypeCombo, C::kEventCombo, C::kStartDate,
                                             C::kStartTime,   C::kEndDate,   C::kEndTime};
constexpr CMediaFilterPage::Labels kFilterLabels{C::kChannelLabel, C::kChannelNote, C::kTypeLabel,
                                                  C::kEventLabel,   C::kStartLabel,  C::kEndLabel};
}  // namespace

plat::DialogTemplate CDlgMediaUpload::Layout() {
  using namespace row;
  std::vector<TemplateRows> sections = FilterRows(kFilter, kFilterLabels);
  sections.push_back(
      {Static(kDeleteLabel, "删除标志", {10, 152, 110, 172}, kTextDelete), Combo(kDeleteCombo, {120, 150, 290, 172})});
  sections.push_back({SetButton({500, 225, 590, 253})});
  return PageTemplate(kTemplate, {600, 260}, sections);
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
