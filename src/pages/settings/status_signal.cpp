#include "pages/settings/status_signal.h"

#include <vector>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"
#include "pages/settings/form_template.h"
#include "text/encoding.h"

namespace {
using C = CDlgSetupStatusSignal;
const RegisterPage<C> kPage{{C::kFunctionType}, PageHost::kFunctionPage};
const PageRegistration kVehiclePage{{C::kFunctionTypeVehicle}, PageHost::kVehicleWindow,
                                    [](int) -> std::unique_ptr<CBaseDlg> { return std::make_unique<C>(); }};

constexpr uint32_t kDeviceKinds = 4;
constexpr int kRead = 0x06, kWrite = 0x84;
namespace key {
constexpr const char *kItems = "Item", *kNamePrefix = "SINNM";
}  // namespace key

std::string NameKey(int index) { return key::kNamePrefix + std::to_string(index); }
std::string LabelText(int index) { return FormatStringInt(LanguageText(C::kTextLabel), index); }
}  // namespace

plat::DialogTemplate CDlgSetupStatusSignal::Layout() {
  using namespace row;
  static const char* const kCaptions[kSignals] = {"D0 的状态信号名称", "D1 的状态信号名称", "D2 的状态信号名称",
                                                  "D3 的状态信号名称", "D4 的状态信号名称", "D5 的状态信号名称",
                                                  "D6 的状态信号名称", "D7 的状态信号名称"};
  // The labels get their text when the page opens (text 20138 with the signal's number).
  std::vector<FormRow> rows;
  for (int i = 0; i < kSignals; ++i) {
    rows.push_back({Label(i), kCaptions[i], 0, row::Edit(Edit(i), {}), Hint(i), "(小于10字节)",
                    kTextUnder10});
  }
  return FormTemplate(kTemplate, {Box(kFrame, "", {10, 10, 590, 275}, kTextFrame)}, 30, rows,
                      {GetButton({400, 0, 490, 0}), SetButton({500, 0, 590, 0})});
}

CDlgSetupStatusSignal::CDlgSetupStatusSignal() : CRecorderPage(kTemplate, {kRead, kWrite}) {
  DeviceKindMask = kDeviceKinds;
}

void CDlgSetupStatusSignal::OnInitPage() {
  // The labels name their signal: the language's text with the signal's number.
  for (int i = 0; i < kSignals; ++i) SetItemText(Label(i), LabelText(i));
}

void CDlgSetupStatusSignal::ReadEntered() {
  for (int i = 0; i < kSignals; ++i) entered_[i] = GetItemText(Edit(i));
}

BOOL CDlgSetupStatusSignal::CheckParam() {
  if (QueryMode) return TRUE;
  ParamCheck check(*this);
  for (int i = 0; i < kSignals && !check.Failed(); ++i) {
    check.That(txt::Utf8ToGbk(entered_[i]).size() <= kMaxNameBytes, kTextTooLong, Edit(i));
  }
  return check.Ok();
}

void CDlgSetupStatusSignal::WriteEntered(Json::Value& param) const {
  for (int i = 0; i < kSignals; ++i) param[NameKey(i)] = EncodeTextParam(entered_[i]);
}

void CDlgSetupStatusSignal::ReadReply(const Json::Value& reply) {
  if (!recorder::Is2012(reply) || !reply.isMember(key::kItems) || !reply[key::kItems].isArray()) return;
  const Json::Value& items = reply[key::kItems];
  if (items.empty() || !items[0].isObject()) return;
  for (int i = 0; i < kSignals; ++i) readBack_[i] = recorder::ReplyText(items[0], NameKey(i).c_str());
}

void CDlgSetupStatusSignal::ShowReadBack() {
  for (int i = 0; i < kSignals; ++i) SetItemText(Edit(i), readBack_[i]);
}

std::string CDlgSetupStatusSignal::Describe(bool readBack) const {
  const Names& names = readBack ? readBack_ : entered_;
  Description description;
  for (int i = 0; i < kSignals; ++i) description.Field(LabelText(i), names[i]);
  return description;
}
