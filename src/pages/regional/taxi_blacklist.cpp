// The taxi IC card blacklist page: the card list, its batches and descriptions.
#include "pages/regional/taxi_blacklist.h"

#include <algorithm>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/alarms/alarm_record.h"

namespace {
using C = CDlgTaxiIcBlacklist;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr uint32_t kDeviceKinds = 0x200;
constexpr const char* kFullWidthComma = "\xEF\xBC\x8C";  // U+FF0C
namespace key {
constexpr const char *kCount = "Count", *kItems = "icItem";
}  // namespace key
}  // namespace

plat::DialogTemplate CDlgTaxiIcBlacklist::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {600, 300},
                      {{Check(kClearAll, "清除所有", {10, 10, 200, 30}, kTextClearAll)},
                       {Static(kCardLabel, "IC卡号", {10, 40, 200, 60}, kTextCards),
                        Edit(kCards, {10, 65, 590, 220}, {.styles = style::Multiline | style::WantReturn}),
                        Static(kHint, "提示:多个IC卡号使用逗号(,)分隔", {10, 225, 590, 245}, kTextHint)},
                       {SetButton({400, 260, 490, 288}), CancelButton({500, 260, 590, 288})}});
}

CDlgTaxiIcBlacklist::CDlgTaxiIcBlacklist() : CBaseDlg(kTemplate) {
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
  Bind(kClearAll, BN_CLICKED, [this] { EnableItem(kCards, !IsChecked(kClearAll)); });
}

void CDlgTaxiIcBlacklist::EnableParamControls(BOOL enable) {
  EnableItem(kClearAll, enable != FALSE);
  EnableItem(kCards, enable != FALSE && !IsChecked(kClearAll));
}

void CDlgTaxiIcBlacklist::OnSend() {
  cards_.clear();
  clearAll_ = IsChecked(kClearAll);
  if (!clearAll_) {
    std::string text = GetItemText(kCards);
    for (size_t at = text.find(kFullWidthComma); at != std::string::npos; at = text.find(kFullWidthComma, at + 1))
      text.replace(at, 3, ",");
    for (std::string& card : SplitText(text, ','))
      if (!card.empty()) cards_.push_back(std::move(card));
  }
  const int n = static_cast<int>(cards_.size());
  if (n > kCardsPerRequest) {
    SetBatch((n + kCardsPerRequest - 1) / kCardsPerRequest, 1);
  } else {
    BatchMode = FALSE;
  }
  StartSend(Mode::kSet, kCommand);
}

BOOL CDlgTaxiIcBlacklist::CheckParam() {
  return ParamCheck(*this).That(clearAll_ || !cards_.empty(), LanguageText(kTextCards) + LanguageText(ParamCheck::kTextMustBeFilled), kCards).Ok();
}

std::vector<std::string> CDlgTaxiIcBlacklist::Batch(int batch) const {
  const size_t first = std::min(cards_.size(), static_cast<size_t>(batch) * kCardsPerRequest);
  const size_t last = std::min(cards_.size(), first + kCardsPerRequest);
  return {cards_.begin() + static_cast<std::ptrdiff_t>(first), cards_.begin() + static_cast<std::ptrdiff_t>(last)};
}

Json::Value CDlgTaxiIcBlacklist::GetParam() {
  Json::Value param(Json::objectValue);
  Json::Value items(Json::arrayValue);
  if (!clearAll_) {
    for (const std::string& card : Batch(BatchMode ? CurrentBatch().first : 0)) items.append(card);
  }
  param[key::kCount] = static_cast<int>(items.size());
  param[key::kItems] = items;
  return param;
}

void CDlgTaxiIcBlacklist::PrepareBatch(CommandRequest& request) {
  described_.clear();
  for (const std::string& card : Batch(BatchMode ? request.itemIndex : 0)) AddStringStatus(described_, card, "");
}

std::string CDlgTaxiIcBlacklist::GetParamDescription() {
  if (clearAll_) return LanguageText(kTextClearAll);
  return FormatChineseColon(LanguageText(kTextCards), described_);
}
