#include "pages/settings/recorder_time.h"

#include <vector>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/time_text.h"
#include "pages/settings/pickers.h"

namespace {
const RegisterPage<CDlgSetupTime> kTimePage{{CDlgSetupTime::kFunctionType, CDlgSetupTime::kFunctionType2012},
                                            PageHost::kFunctionPage};
const RegisterPage<CDlgSetupInstallTime> kInstallPage{{CDlgSetupInstallTime::kFunctionType}, PageHost::kFunctionPage};

constexpr int kClockRead = 0x02, kClockWrite = 0xC2;
constexpr int kInstallRead = 0x03, kInstallWrite = 0x83;
constexpr size_t kClockBytes = 63, kInstallBytes = 31;
}  // namespace

CRecorderTimePage::CRecorderTimePage(int templateId, Words words, Reading reading)
    : CRecorderPage(templateId, words), reading_(reading) {}

plat::DialogTemplate CRecorderTimePage::MakeTemplate(int templateId, int frameText, int captionText, Buttons buttons) {
  using namespace row;
  namespace style = plat::style;
  plat::DialogTemplate dialog = PageTemplate(templateId, {600, 200},
                      {{Box(kFrame, "", {10, 10, 590, 150}, frameText),
                        Static(kCaption, "北京时间时钟：", {20, 40, 180, 60}, captionText),
                        Date(kDatePicker, {190, 38, 330, 62}), Time(kTimePicker, {340, 38, 460, 62}),
                        // Outside the visible area, as the captions of the pickers.
                        Static(kDateCaption, "日期", {-200, -100, -140, -80}, kTextDate, style::Hidden),
                        Static(kTimeCaption, "时间", {-130, -100, -70, -80}, kTextTime, style::Hidden)},
                       {GetButton({400, 160, 490, 188}), SetButton({500, 160, 590, 188})}});
  if (buttons == Buttons::kSetOnly) {
    std::erase_if(dialog.controls, [](const plat::ControlEntry& entry) { return entry.id == ctl::Get; });
  }
  return dialog;
}

void CRecorderTimePage::OnInitPage() { pickers::Prepare(*this, kDatePicker, kTimePicker); }

void CRecorderTimePage::ReadEntered() { entered_ = PickedTime(*this, kDatePicker, kTimePicker); }

void CRecorderTimePage::WriteEntered(Json::Value& param) const { recorder::PutTimeFields(param, entered_); }

void CRecorderTimePage::ReadReply(const Json::Value& reply) {
  if (reading_.needs2012 && !recorder::Is2012(reply)) return;
  readBack_ = recorder::ReplyTime(reply, reading_.key, reading_.maxBytes);
}

void CRecorderTimePage::ShowReadBack() { pickers::Show(*this, kDatePicker, kTimePicker, readBack_); }

std::string CRecorderTimePage::Describe(bool readBack) const {
  return Description().Field(reading_.label, recorder::TimeText(readBack ? readBack_ : entered_));
}

plat::DialogTemplate CDlgSetupTime::Layout() {
  return MakeTemplate(kTemplate, kTextFrame, kTextClock, Buttons::kSetOnly);
}

CDlgSetupTime::CDlgSetupTime()
    : CRecorderTimePage(kTemplate, {kClockRead, kClockWrite}, {"DTM", kClockBytes, false, kTextTime}) {}

plat::DialogTemplate CDlgSetupInstallTime::Layout() {
  return MakeTemplate(kTemplate, kTextFrame, kTextInstallTime, Buttons::kGetAndSet);
}

CDlgSetupInstallTime::CDlgSetupInstallTime()
    : CRecorderTimePage(kTemplate, {kInstallRead, kInstallWrite}, {"IDTM", kInstallBytes, true, kTextInstallTime}) {}
