#include "pages/settings/status_signal.h"

#include <vector>

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"
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
  plat::DialogTemplate dialog =
      PageTemplate(kTemplate, {600, 330},
                   {{Box(kFrame, "", {10, 10, 590, 280}, kTextFrame)},
                    {GetButton({400, 290, 490, 318}), SetButton({500, 290, 590, 318})}});
  // One row per signal, between the frame and the buttons.
  std::vector<plat::ControlSpec> rows;
  for (int i = 0; i < kSignals; ++i) {
    const int top = 30 + 30 * i;
    for (plat::ControlSpec spec : {Static(Label(i), kCaptions[i], {20, top, 200, top + 20}),
                                   row::Edit(Edit(i), {210, top - 2, 420, top + 22}),
                                   Static(kFirstHint + kIdStep * i, "(小于10字节)", {430, top, 590, top + 20},
                                          kTextUnder10)}) {
      spec.layoutGroup = 2 + i;
      rows.push_back(spec);
    }
  }
  dialog.controls.insert(dialog.controls.begin() + 1, rows.begin(), rows.end());
  for (size_t i = 1 + rows.size(); i < dialog.controls.size(); ++i) dialog.controls[i].layoutGroup = 2 + kSignals;
  return dialog;
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
