// The text message page: its template, captions, the two flag layouts, the
// encoded-length check, the parameter object and the result description.
#include "pages/messaging/send_text.h"

#include <cstdio>

#include "command/ids.h"
#include "command/page_registry.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"

using namespace sendtext;

namespace {
constexpr int kFunctionType = 12;
constexpr uint32_t kDeviceKinds = 0x403;
constexpr int kTypeNoticeValue = 1, kTypeServiceValue = 2;

// Keys of the parameter object.
constexpr const char* kKeyFlag = "Flag";
constexpr const char* kKeyTextType = "TextType";
constexpr const char* kKeyTextInfo = "TextInfo";

// Flag bits shared by both editions.
constexpr uint8_t kBitUrgent2013 = 1 << 0, kBitDisplay = 1 << 2, kBitTts = 1 << 3, kBitAdScreen = 1 << 4,
                  kBitCanFault = 1 << 5, kLevelMask = 0x03;

const plat::DialogTemplate kPageTemplate = [] {
  using plat::ControlKind;
  namespace style = plat::style;
  return plat::DialogTemplate{
      CDlgSendText::kTemplate, "", {600, 440},
      {{kFlagGroup, ControlKind::GroupBox, "标志", {10, 10, 590, 120}, 0, 0, 0, 0, 0, 1},
       {kRadioService, ControlKind::RadioButton, "服务", {20, 30, 100, 50}, style::Group, 0, 0, 0, 0, 1},
       {kRadioUrgent, ControlKind::RadioButton, "紧急", {110, 30, 190, 50}, 0, 0, 0, 0, 0, 1},
       {kRadioNotice, ControlKind::RadioButton, "通知", {200, 30, 280, 50}, 0, 0, 0, 0, 0, 1},
       {kRadioNone, ControlKind::RadioButton, "无", {290, 30, 370, 50}, 0, 0, 0, 0, 0, 1},
       {kCheckUrgent, ControlKind::CheckBox, "紧急", {20, 30, 100, 50}, style::Group | style::Hidden, 0, 0, 0, 0, 1},
       {kCheckDisplay, ControlKind::CheckBox, "终端显示屏显示", {20, 60, 200, 80}, 0, 0, 0, 0, 0, 1},
       {kCheckTts, ControlKind::CheckBox, "终端TTS播读", {210, 60, 380, 80}, 0, 0, 0, 0, 0, 1},
       {kCheckAdScreen, ControlKind::CheckBox, "广告屏显示", {390, 60, 560, 80}, style::Hidden, 0, 0, 0, 0, 1},
       {kRadioNavigation, ControlKind::RadioButton, "中心导航信息", {20, 90, 200, 110}, style::Group, 0, 0, 0, 0, 1},
       {kRadioCanFault, ControlKind::RadioButton, "CAN故障码信息", {210, 90, 400, 110}, 0, 0, 0, 0, 0, 1},
       {kTypeGroup, ControlKind::GroupBox, "文本类型", {10, 130, 590, 170}, style::Group, 0, 0, 0, 0, 2},
       {kTypeNotice, ControlKind::RadioButton, "通知", {20, 145, 100, 165}, style::Group, 0, 0, 0, 0, 2},
       {kTypeService, ControlKind::RadioButton, "服务", {110, 145, 190, 165}, 0, 0, 0, 0, 0, 2},
       {kTextGroup, ControlKind::GroupBox, "文本信息", {10, 180, 590, 400}, style::Group, 0, 0, 0, 0, 3},
       {kTextEdit, ControlKind::Edit, "", {20, 200, 580, 370}, style::Multiline | style::WantReturn, kMaxChars, 0, 0, 0, 3},
       {kLimitHint, ControlKind::Static, "(不超过1024字节)", {20, 375, 300, 395}, 0, 0, 0, 0, 0, 3},
       {ctl::Set, ControlKind::PushButton, "设置", {400, 405, 490, 433}, style::Group, 0, 0, 0, 0, 4},
       {ctl::Cancel, ControlKind::PushButton, "取消", {500, 405, 590, 433}, 0, 0, 0, 0, 0, 4}}};
}();
const plat::templates::Registration kRegistration{kPageTemplate};
const PageRegistration kPage{{kFunctionType}, PageHost::kBoth, [](int) { return std::make_unique<CDlgSendText>(); }};

struct Caption {
  int control, text;
};
constexpr Caption kCaptions[] = {
    {kFlagGroup, kTextFlag},        {kRadioService, kTextService},     {kRadioUrgent, kTextUrgent2019},
    {kRadioNotice, kTextNotice},    {kRadioNone, kTextNone},           {kCheckUrgent, kTextUrgent},
    {kCheckDisplay, kTextDisplay},  {kCheckTts, kTextTts},             {kCheckAdScreen, kTextAdScreen},
    {kRadioNavigation, kTextNavigation}, {kRadioCanFault, kTextCanFault}, {kTypeGroup, kTextType},
    {kTypeNotice, kTextNotice},     {kTypeService, kTextService},      {kTextGroup, kTextInformation},
    {kLimitHint, kTextLimit}};
constexpr int k2019Only[] = {kRadioService, kRadioUrgent, kRadioNotice, kRadioNone, kRadioNavigation, kRadioCanFault};
constexpr int k2013Only[] = {kCheckUrgent, kCheckAdScreen};
constexpr int kInputs[] = {kCheckUrgent, kCheckDisplay, kCheckTts,  kCheckAdScreen,   kTextEdit,     kRadioService,
                           kRadioUrgent, kRadioNotice,  kRadioNone, kRadioNavigation, kRadioCanFault};
}  // namespace

CDlgSendText::CDlgSendText() : CBaseDlg(kTemplate) {
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CDlgSendText::OnInitPage() {
  for (const Caption& caption : kCaptions) SetItemText(caption.control, LanguageText(caption.text));
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
  for (int id : kInputs) EnableItem(id, enable != FALSE);
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
  QueryMode = FALSE;
  StartSend(kCommand);
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

Json::Value& CDlgSendText::GetParam(Json::Value& param) {
  param = Json::Value(Json::objectValue);
  param[kKeyFlag] = flag_;
  param[kKeyTextType] = textType_;
  param[kKeyTextInfo] = EncodeTextParam(text_);
  return param;
}

std::string& CDlgSendText::GetParamDescription(std::string& description) {
  const bool edition2019 = Is2019();
  description.clear();
  AddChineseStringStatus(description,
                         FormatChineseColon(LanguageText(kTextEdition), LanguageText(edition2019 ? kText2019 : kText2013)));
  std::string flags;
  const auto add = [&](int text) { AddChineseStringStatus(flags, LanguageText(text)); };
  if (flag_ == 0) {
    if (edition2019) add(kTextNone);
  } else if (!edition2019) {
    if (flag_ & kBitUrgent2013) add(kTextUrgent);
    if (flag_ & kBitDisplay) add(kTextDisplay);
    if (flag_ & kBitTts) add(kTextTts);
    if (flag_ & kBitAdScreen) add(kTextAdScreen);
  } else {
    static constexpr int kLevels[] = {kTextNone, kTextService, kTextUrgent2019, kTextNotice};
    add(kLevels[flag_ & kLevelMask]);
    if (flag_ & kBitDisplay) add(kTextDisplay);
    if (flag_ & kBitTts) add(kTextTts);
    add(flag_ & kBitCanFault ? kTextCanFault : kTextNavigation);
  }
  AddChineseStringStatus(description, FormatChineseColon(LanguageText(kTextFlag), flags));
  if (edition2019) {
    AddChineseStringStatus(description, FormatChineseColon(LanguageText(kTextType),
                                                           LanguageText(textType_ == kTypeServiceValue ? kTextService : kTextNotice)));
  }
  AddChineseStringStatus(description, FormatChineseColon(LanguageText(kTextInformation), text_));
  return description;
}
