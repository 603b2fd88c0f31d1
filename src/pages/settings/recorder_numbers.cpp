#include "pages/settings/recorder_numbers.h"

#include <cstdio>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/time_text.h"
#include "pages/settings/pickers.h"
#include "text/numbers.h"

namespace {
const RegisterPage<CDlgFeature> kFeature{{CDlgFeature::kFunctionType}, PageHost::kFunctionPage};
const RegisterPage<CDlgSetupInitialMileage> kMileage{{CDlgSetupInitialMileage::kFunctionType}, PageHost::kFunctionPage};
const RegisterPage<CDlgSetupPulseCoefficient> kPulse{{CDlgSetupPulseCoefficient::kFunctionType},
                                                     PageHost::kFunctionPage};

constexpr int kCoefficientRead = 0x04, kCoefficientWrite = 0xC3;
constexpr int kMileageRead = 0x03, kMileageWrite = 0xC4;
constexpr size_t kPulseTimeBytes = 31;
namespace key {
constexpr const char *kEdition = "VER", *kCoefficient = "FEA", *kMileage = "INITMILE", *kRecorderTime = "RDTM",
                     *kTime = "DTM";
}  // namespace key

// The recorder's time as twelve digits: year (two digits), month, day, hour, minute, second.
std::string ShortTime(const SYSTEMTIME& t) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d%02d%02d%02d%02d%02d", t.wYear % 100, t.wMonth, t.wDay, t.wHour, t.wMinute,
                t.wSecond);
  return text;
}

// The template of a page with one number: a frame, a caption, the box and its hint.
struct NumberRow {
  int label;
  const char* caption;
  int text;
  plat::ControlEntry edit;
  int hint;
  const char* hintCaption;
  int hintText;
};
plat::DialogTemplate NumberTemplate(int templateId, int frameText, const NumberRow& r) {
  using namespace row;
  return PageTemplate(templateId, {600, 200},
                      {{Box(CRecorderPage::kFrame, "", {10, 10, 590, 150}, frameText)},
                       {Static(r.label, r.caption, {20, 60, 180, 80}, r.text), r.edit,
                        Static(r.hint, r.hintCaption, {410, 60, 590, 80}, r.hintText)},
                       {GetButton({400, 160, 490, 188}), SetButton({500, 160, 590, 188})}});
}
}  // namespace

// ---- characteristic coefficient ---------------------------------------------------

plat::DialogTemplate CDlgFeature::Layout() {
  return NumberTemplate(kTemplate, kTextCoefficient,
                        {kLabel, "车辆特征系数", kTextCoefficient, row::Number(kEdit, {190, 58, 400, 82}, 0, kMaxCoefficient),
                         kHint, "(0~16777215)", 0});
}

CDlgFeature::CDlgFeature() : CRecorderPage(kTemplate, {kCoefficientRead, kCoefficientWrite}) {}

void CDlgFeature::WriteEntered(Json::Value& param) const {
  param[key::kEdition] = kEdition2003;
  param[key::kCoefficient] = txt::WToI(entered_);
}

void CDlgFeature::ReadReply(const Json::Value& reply) { readBack_ = recorder::ReplyNumber(reply, key::kCoefficient); }

std::string CDlgFeature::Describe(bool readBack) const {
  return Description().Field(kTextCoefficient, readBack ? readBack_ : entered_);
}

// ---- initial mileage ---------------------------------------------------------------

plat::DialogTemplate CDlgSetupInitialMileage::Layout() {
  return NumberTemplate(kTemplate, kTextMileage,
                        {kLabel, "初始里程", kTextMileage, row::Edit(kEdit, {190, 58, 400, 82}), kHint,
                         "(0~99999999) 单位: 0.1km", kTextHint});
}

CDlgSetupInitialMileage::CDlgSetupInitialMileage() : CRecorderPage(kTemplate, {kMileageRead, kMileageWrite}) {}

void CDlgSetupInitialMileage::WriteEntered(Json::Value& param) const {
  std::string text = recorder::AnsiText(entered_);
  if (text.size() < kMileageDigits) text.insert(0, kMileageDigits - text.size(), '0');
  param[key::kMileage] = text;
}

void CDlgSetupInitialMileage::ReadReply(const Json::Value& reply) {
  if (recorder::Is2012(reply)) readBack_ = recorder::ReplyNumber(reply, key::kMileage);
}

std::string CDlgSetupInitialMileage::Describe(bool readBack) const {
  return Description().Field(kTextMileage, readBack ? readBack_ : entered_);
}

// ---- pulse coefficient -------------------------------------------------------------

plat::DialogTemplate CDlgSetupPulseCoefficient::Layout() {
  using namespace row;
  return PageTemplate(kTemplate, {600, 200},
                      {{Box(kFrame, "", {10, 10, 590, 150}, kTextCoefficient)},
                       {Static(kTimeLabel, "记录仪时间：", {20, 40, 180, 60}, kTextTime),
                        Date(kDatePicker, {190, 38, 330, 62}), Time(kTimePicker, {340, 38, 460, 62})},
                       {Static(kLabel, "记录仪脉冲系数：", {20, 85, 180, 105}, kTextCoefficient),
                        Number(kEdit, {190, 83, 400, 107}, 0, kMaxCoefficient),
                        Static(kHint, "(0~65535)", {410, 85, 590, 105})},
                       {GetButton({400, 160, 490, 188}), SetButton({500, 160, 590, 188})}});
}

CDlgSetupPulseCoefficient::CDlgSetupPulseCoefficient()
    : CRecorderPage(kTemplate, {kCoefficientRead, kCoefficientWrite}) {}

void CDlgSetupPulseCoefficient::OnInitPage() { pickers::Prepare(*this, kDatePicker, kTimePicker); }

void CDlgSetupPulseCoefficient::ReadEntered() {
  entered_ = {PickedTime(*this, kDatePicker, kTimePicker), GetItemText(kEdit)};
}

void CDlgSetupPulseCoefficient::WriteEntered(Json::Value& param) const {
  param[key::kEdition] = kEdition2012;
  param[key::kRecorderTime] = ShortTime(entered_.time);
  param[key::kCoefficient] = txt::WToI(entered_.coefficient);
}

void CDlgSetupPulseCoefficient::ReadReply(const Json::Value& reply) {
  if (!recorder::Is2012(reply)) return;
  readBack_ = {recorder::ReplyTime(reply, key::kTime, kPulseTimeBytes), recorder::ReplyNumber(reply, key::kCoefficient)};
}

void CDlgSetupPulseCoefficient::ShowReadBack() {
  pickers::Show(*this, kDatePicker, kTimePicker, readBack_.time);
  SetItemText(kEdit, readBack_.coefficient);
}

std::string CDlgSetupPulseCoefficient::Describe(bool readBack) const {
  const Pulse& p = readBack ? readBack_ : entered_;
  return Description().Field(kTextTime, recorder::TimeText(p.time)).Field(kTextCoefficient, p.coefficient);
}
