// The question page: flag, question, numbered answers, the answer reported.
#include "pages/messaging/events/send_question.h"

#include <cstdint>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"
#include "text/json.h"

namespace {
using C = CDlgSendQuition;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr uint32_t kDeviceKinds = 0x401;
constexpr uint8_t kBitUrgent = 1 << 0, kBitTts = 1 << 3, kBitAdScreen = 1 << 4;
constexpr const char* kItemSeparator = ";";

namespace key {
constexpr const char *kFlag = "Flag", *kQuestion = "QS", *kAnswers = "ANSL", *kAnswerId = "ASR", *kText = "TEXT";
}  // namespace key
}  // namespace

plat::DialogTemplate CDlgSendQuition::Layout() {
  using namespace row;
  namespace style = plat::style;
  static const char* const kAnswerCaptions[kAnswers] = {"答案1", "答案2", "答案3", "答案4"};
  const auto top = [](int i) { return 130 + 35 * i; };
  const auto label = [&](int i) {
    return Static(kAnswerLabels[i], kAnswerCaptions[i], {20, top(i), 90, top(i) + 22}, kTextAnswer);
  };
  const auto answer = [&](int i) { return Edit(kAnswerEdits[i], {95, top(i), 460, top(i) + 22}, {.limit = kTextChars}); };
  const auto note = [&](int i) {
    return Static(kNotes[i + 1], "(小于127字符)", {465, top(i), 585, top(i) + 22}, kTextNote);
  };
  return PageTemplate(
      kTemplate, {600, 400},
      {{Box(kFlagGroup, "标志", {10, 10, 590, 55}, kTextFlag),
        Check(kCheckUrgent, "紧急", {20, 28, 120, 48}, kTextUrgent, style::Group),
        Check(kCheckTts, "终端TTS播读", {130, 28, 290, 48}, kTextTts),
        Check(kCheckAdScreen, "广告屏显示", {300, 28, 460, 48}, kTextAdScreen)},
       {Box(kQuestionGroup, "问题", {10, 60, 590, 275}, kTextQuestion, style::Group),
        Static(kQuestionLabel, "问题", {20, 85, 90, 107}, kTextQuestion),
        Edit(kQuestionEdit, {95, 85, 460, 107}, {.limit = kTextChars}),
        Static(kNotes[0], "(小于127字符)", {465, 85, 585, 107}, kTextNote),
        label(0), answer(0), note(0), label(1), answer(1), note(1),
        label(2), answer(2), note(2), label(3), answer(3), note(3)},
       {Box(kAnswerGroup, "提问应答", {10, 280, 590, 325}, kTextQuestionAnswer, style::Group),
        Static(kGivenLabel, "正确答案", {20, 297, 90, 319}, kTextGiven),
        Edit(kGivenEdit, {95, 297, 585, 319}, {.styles = style::ReadOnly})},
       {SetButton({400, 365, 490, 393}), CancelButton({500, 365, 590, 393})}});
}

CDlgSendQuition::CDlgSendQuition() : CBaseDlg(kTemplate) {
  DeviceKindMask = kDeviceKinds;
  ReadsSetReplies = TRUE;
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CDlgSendQuition::OnSend() {
  question_ = GetItemText(kQuestionEdit);
  for (int i = 0; i < kAnswers; ++i) answers_[i] = GetItemText(kAnswerEdits[i]);
  flag_ = 0;
  if (IsChecked(kCheckUrgent)) flag_ |= kBitUrgent;
  if (IsChecked(kCheckTts)) flag_ |= kBitTts;
  if (IsChecked(kCheckAdScreen)) flag_ |= kBitAdScreen;
  StartSend(Mode::kSet, kCommand);
}

Json::Value CDlgSendQuition::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kFlag] = flag_;
  param[key::kQuestion] = EncodeTextParam(question_);
  int32_t answerId = 0;
  for (int i = 0; i < kAnswers; ++i) {
    if (!answers_[i].empty()) {
      // Empty boxes take no number: the ids run 0, 1, ... over the filled ones.
      answerIds_[answerId] = answers_[i];
      Json::Value item(Json::objectValue);
      item[key::kAnswerId] = answerId++;
      item[key::kText] = EncodeTextParam(answers_[i]);
      param[key::kAnswers].append(std::move(item));
    }
    CConfigKestrelINI::WriteIniStrEx(kConfigId, i, answers_[i]);
  }
  return param;
}

void CDlgSendQuition::PrepareBatch(CommandRequest& request) {
  (void)request;
  given_.clear();
  const Json::Value* reply = CurrentReply();
  if (!reply || !reply->isObject() || !reply->isMember(key::kAnswerId)) return;
  const auto id = txt::JsonToInt((*reply)[key::kAnswerId]);
  if (!id || *id < INT32_MIN || *id > INT32_MAX) return;
  auto it = answerIds_.find(static_cast<int32_t>(*id));
  if (it == answerIds_.end()) return;
  given_ = it->second;
  SetItemText(kGivenEdit, given_);
}

std::string CDlgSendQuition::GetParamDescription() {
  std::string flags;
  if (flag_ & kBitUrgent) AddChineseStringStatus(flags, LanguageText(kTextUrgent));
  if (flag_ & kBitTts) AddChineseStringStatus(flags, LanguageText(kTextTts));
  if (flag_ & kBitAdScreen) AddChineseStringStatus(flags, LanguageText(kTextAdScreen));
  std::string answers;
  const std::string answerLabel = LanguageText(kTextAnswer);
  for (int i = 0; i < kAnswers; ++i) {
    if (!answers_[i].empty()) AddStringStatus(answers, answerLabel + std::to_string(i + 1) + "=" + answers_[i], kItemSeparator);
  }
  return Description()
      .Field(kTextFlag, flags)
      .Field(kTextQuestion, question_)
      .Field(kTextAnswer, answers)
      .Field(kTextGiven, given_);
}
