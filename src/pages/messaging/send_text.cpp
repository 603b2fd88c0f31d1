// The text message page: its template, the two flag layouts, the
// encoded-length check, the parameter object and the result description.
#include "pages/messaging/send_text.h"

#include <cstdio>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"

namespace {
using C = CDlgSendText;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr uint32_t kDeviceKinds = 0x403;
constexpr int kTypeNoticeValue = 1, kTypeServiceValue = 2;

namespace key {
constexpr const char *kFlag = "Flag", *kTextType = "TextType", *kTextInfo = "TextInfo";
}  // namespace key

// Flag bits: the 2013 check boxes, the bits both editions share, the 2019 level.
constexpr uint8_t kBitUrgent2013 = 1 << 0, kBitDisplay = 1 << 2, kBitTts = 1 << 3, kBitAdScreen = 1 << 4,
                  kBitCanFault = 1 << 5, kLevelMask = 0x03;
constexpr int kLevelTexts[] = {C::kTextNone, C::kTextService, C::kTextUrgent2019, C::kTextNotice};

constexpr int k2019Only[] = {C::kRadioService, C::kRadioUrgent,     C::kRadioNotice,
                             C::kRadioNone,    C::kRadioNavigation, C::kRadioCanFault};
constexpr int k2013Only[] = {C::kCheckUrgent, C::kCheckAdScreen};
}  // namespace

plat::DialogTemplate CDlgSendText::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(
      kTemplate, {600, 440},
      {{Box(kFlagGroup, "标志", {10, 10, 590, 120}, kTextFlag),
        Radio(kRadioService, "服务", {20, 30, 100, 50}, kTextService, style::Group),
        Radio(kRadioUrgent, "紧急", {110, 30, 190, 50}, kTextUrgent2019),
        Radio(kRadioNotice, "通知", {200, 30, 280, 50}, kTextNotice),
        Radio(kRadioNone, "无", {290, 30, 370, 50}, kTextNone),
        Check(kCheckUrgent, "紧急", {20, 30, 100, 50}, kTextUrgent, style::Group | style::Hidden),
        Check(kCheckDisplay, "终端显示屏显示", {20, 60, 200, 80}, kTextDisplay),
        Check(kCheckTts, "终端TTS播读", {210, 60, 380, 80}, kTextTts),
        Check(kCheckAdScreen, "广告屏显示", {390, 60, 560, 80}, kTextAdScreen, style::Hidden),
        Radio(kRadioNavigation, "中心导航信息", {20, 90, 200, 110}, kTextNavigation, style::Group),
        Radio(kRadioCanFault, "CAN故障码信息", {210, 90, 400, 110}, kTextCanFault)},
       {Box(kTypeGroup, "文本类型", {10, 130, 590, 170}, kTextType, style::Group),
        Radio(kTypeNotice, "通知", {20, 145, 100, 165}, kTextNotice, style::Group),
        Radio(kTypeService, "服务", {110, 145, 190, 165}, kTextService)},
       {Box(kTextGroup, "文本信息", {10, 180, 590, 400}, kTextInformation, style::Group),
        Edit(kTextEdit, {20, 200, 580, 370}, {.limit = kMaxChars, .styles = style::Multiline | style::WantReturn}),
        Static(kLimitHint, "(不超过1024字节)", {20, 375, 300, 395}, kTextLimit)},
       {SetButton({400, 405, 490, 433}), CancelButton({500, 405, 590, 433})}});
}

CDlgSendText::CDlgSendText() : CBaseDlg(kTemplate) {
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CDlgSendText::OnInitPage() {
  for (int radio : {kRadioNone, kRadioNavigation, kTypeNotice}) SetChecked(radio, true);
}

void CDlgSendText::UpdateProtocolControls() {
  if (!IsWindow()) return;
  const bool edition2019 = Is2019();
  for (int id : k2019Only) ShowItem(id, edition2019);
  for (int id : k2013Only) ShowItem(id, !edition2019);
  EnableItem(kTypeNotice, edition2019);
  EnableItem(kTypeService, edition2019);
}

void CDlgSendText::EnableParamControls(BOOL enable) {
  CBaseDlg::EnableParamControls(enable);
  // The text type is the 2019 edition's; a 2013 device keeps it disabled.
  const bool typeEnabled = enable && Is2019();
  EnableItem(kTypeNotice, typeEnabled);
  EnableItem(kTypeService, typeEnabled);
}

uint8_t CDlgSendText::ComputeFlag() const {
  uint8_t flag = 0;
  if (Is2019()) {
    if (!IsChecked(kRadioNone)) {
      if (IsChecked(kRadioService)) flag = 1;
      else if (IsChecked(kRadioUrgent)) flag = 2;
      else if (IsChecked(kRadioNotice)) flag = 3;
    }
  } else {
    if (IsChecked(kCheckUrgent)) flag |= kBitUrgent2013;
    if (IsChecked(kCheckAdScreen)) flag |= kBitAdScreen;
  }
  if (IsChecked(kCheckDisplay)) flag |= kBitDisplay;
  if (IsChecked(kCheckTts)) flag |= kBitTts;
  // Read whatever the edition: a choice made for a 2019 device stays.
  if (IsChecked(kRadioCanFault)) flag |= kBitCanFault;
  return flag;
}

void CDlgSendText::OnSend() {
  flag_ = ComputeFlag();
  textType_ = IsChecked(kTypeService) ? kTypeServiceValue : kTypeNoticeValue;
  text_ = GetItemText(kTextEdit);
  StartSend(Mode::kSet, kCommand);
}

BOOL CDlgSendText::CheckParam() {
  const int length = static_cast<int>(EncodeTextParam(text_).size());
  if (length < kMaxEncodedBytes) return TRUE;
  // "(%d>=%d)%s": the numbers, then the limit text appended whole, however long.
  char numbers[32];
  std::snprintf(numbers, sizeof numbers, "(%d>=%d)", length, kMaxEncodedBytes);
  ShowMsgTipEx(numbers + LanguageText(kTextLimit), "", 0);
  return FALSE;
}

Json::Value CDlgSendText::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kFlag] = flag_;
  param[key::kTextType] = textType_;
  param[key::kTextInfo] = EncodeTextParam(text_);
  return param;
}

std::string CDlgSendText::FlagTexts(bool edition2019) const {
  Description flags;
  const auto add = [&](bool on, int text) {
    if (on) flags.Text(LanguageText(text));
  };
  if (flag_ == 0) {
    add(edition2019, kTextNone);
  } else if (!edition2019) {
    add(flag_ & kBitUrgent2013, kTextUrgent);
    add(flag_ & kBitDisplay, kTextDisplay);
    add(flag_ & kBitTts, kTextTts);
    add(flag_ & kBitAdScreen, kTextAdScreen);
  } else {
    add(true, kLevelTexts[flag_ & kLevelMask]);
    add(flag_ & kBitDisplay, kTextDisplay);
    add(flag_ & kBitTts, kTextTts);
    add(true, flag_ & kBitCanFault ? kTextCanFault : kTextNavigation);
  }
  return flags;
}

std::string CDlgSendText::GetParamDescription() {
  const bool edition2019 = Is2019();
  Description description;
  description.Field(kTextEdition, LanguageText(edition2019 ? kText2019 : kText2013))
      .Field(kTextFlag, FlagTexts(edition2019));
  if (edition2019) description.Field(kTextType, LanguageText(textType_ == kTypeServiceValue ? kTextService : kTextNotice));
  return description.Field(kTextInformation, text_);
}
