// The stored area list page: the query, the list rows, and deleting the
// chosen rows or everything.
#include "pages/areas/query_area_info.h"

#include <cstdio>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/areas/area_keys.h"
#include "pages/areas/area_reply.h"
#include "text/json.h"
#include "text/numbers.h"

namespace {
using C = CDlgQueryAreaInfo;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr const char* kKeyType = "Type";
constexpr uint32_t kListStyle = 0x01 | 0x04 | 0x20;  // grid lines, check boxes, full-row selection
constexpr const char* kColumns[] = {"编号", "围栏 ID", "围栏类型"};
constexpr int kColumnWidths[] = {65, 120, 150};
constexpr const char *kCountFormat = "数量:%d", *kItemFormat = "ID%d:%d,Type%d:%d", *kQuerySeparator = ";";
constexpr const char* kChooseFirst = "请先选择需要删除的区域!";
constexpr const char *kConfirmChosen = "是否删除选中的 %d 个区域?", *kConfirmAll = "是否删除所有的区域?";
constexpr const char *kDeletedAll = "删除全部区域,类型=%s", *kDeletedChosen = "删除指定区域,类型=%s,ID=";
constexpr const char* kIdSeparator = ",";

std::string Format(const char* format, const std::string& text) {
  char out[512];
  std::snprintf(out, sizeof out, format, text.c_str());
  return out;
}
std::string KindName(int kind) { return LanguageText(area::KindText(kind + 1)); }
int Requests(size_t rows) { return static_cast<int>((rows + C::kIdsPerRequest - 1) / C::kIdsPerRequest); }
}  // namespace

plat::DialogTemplate CDlgQueryAreaInfo::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {600, 420},
                      {{row::List(kList, {10, 10, 590, 340}, style::CheckBoxes)},
                       {Check(kDeleteAll, "删除所有区域", {10, 350, 250, 370}, kTextDeleteAll)},
                       {GetButton({300, 380, 390, 408}), SetButton({400, 380, 490, 408}),
                        CancelButton({500, 380, 590, 408})}});
}

CDlgQueryAreaInfo::CDlgQueryAreaInfo() : CBaseDlg(kTemplate) {
  QueryMode = TRUE;
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Get, BN_CLICKED, [this] { OnQuery(); });
  Bind(ctl::Set, BN_CLICKED, [this] { OnDelete(); });
  BindNotify(kList, LVN_ITEMCHANGED, [this](const plat::NMITEM& item) { OnRowChanged(item); });
}

// A click on a row toggles its check box; a check box set directly is taken as it stands.
void CDlgQueryAreaInfo::OnRowChanged(const plat::NMITEM& item) {
  auto* list = Item<plat::ListView>(kList);
  if (item.item < 0 || item.item >= list->GetItemCount()) return;
  checks_.resize(static_cast<size_t>(list->GetItemCount()), false);
  const size_t row = static_cast<size_t>(item.item);
  const bool listed = list->GetCheck(item.item);
  checks_[row] = listed != checks_[row] ? listed : !checks_[row];
  list->SetCheck(item.item, checks_[row]);
}

void CDlgQueryAreaInfo::OnInitPage() {
  auto* list = Item<plat::ListView>(kList);
  list->SetExtendedStyle(kListStyle);
  for (int i = 0; i < 3; ++i) list->InsertColumn(i, kColumns[i], kColumnWidths[i]);
}

void CDlgQueryAreaInfo::EnableParamControls(BOOL enable) {
  EnableItem(kDeleteAll, enable != FALSE);
  EnableItem(kList, enable != FALSE);
}

void CDlgQueryAreaInfo::OnQuery() {
  Item<plat::ListView>(kList)->DeleteAllItems();
  checks_.clear();
  BatchMode = FALSE;
  StartSend(Mode::kGet, kCommand);
}

void CDlgQueryAreaInfo::OnAnswer(CommandRequest&, const Json::Value& reply) {
  queryDescription_.clear();
  const Json::Value& items = reply[areakey::kItem];
  const int n = items.isArray() ? static_cast<int>(items.size()) : 0;
  char text[128];
  std::snprintf(text, sizeof text, kCountFormat, n);
  AddStringStatus(queryDescription_, text, kQuerySeparator);
  auto* list = Item<plat::ListView>(kList);
  for (int i = 1; i <= n; ++i) {
    const Json::Value& item = items[static_cast<Json::ArrayIndex>(i - 1)];
    const int id = txt::JsonMemberInt(item, areakey::kId, 0);
    const int type = txt::JsonMemberInt(item, kKeyType, 0);
    const int row = list->GetItemCount();
    list->InsertItem(row, std::to_string(row + 1));
    list->SetItemText(row, kColId, std::to_string(static_cast<uint32_t>(id)));
    list->SetItemText(row, kColType, area::IsKind(type) ? LanguageText(area::KindText(type)) : "");
    list->SetItemData(row, static_cast<uintptr_t>(type));
    std::snprintf(text, sizeof text, kItemFormat, i, id, i, type);
    AddStringStatus(queryDescription_, text, kQuerySeparator);
  }
}

void CDlgQueryAreaInfo::OnDelete() {
  if (IsChecked(kDeleteAll)) {
    DeleteAll();
  } else {
    DeleteChosen();
  }
}

void CDlgQueryAreaInfo::DeleteChosen() {
  for (auto& rows : rowsByKind_) rows.clear();
  const auto* list = Item<plat::ListView>(kList);
  int chosen = 0;
  for (int row = 0; row < list->GetItemCount(); ++row) {
    const int type = static_cast<int>(list->GetItemData(row));
    if (!list->GetCheck(row) || !area::IsKind(type)) continue;
    rowsByKind_[static_cast<size_t>(type - 1)].push_back(row);
    ++chosen;
  }
  if (chosen == 0) {
    ShowMsgTipEx(kChooseFirst, "", 0);
    return;
  }
  char question[128];
  std::snprintf(question, sizeof question, kConfirmChosen, chosen);
  std::string text = question;
  int total = 0;
  for (int kind = 0; kind < kKinds; ++kind) {
    const auto& rows = rowsByKind_[static_cast<size_t>(kind)];
    if (rows.empty()) continue;
    text += "\r\n" + FormatChineseColon(KindName(kind), std::to_string(rows.size()));
    total += Requests(rows.size());
  }
  if (ShowMsgTipEx(text, "", kOkCancel) != IDOK) return;
  deleteAll_.clear();
  SetBatch(total, 1);
  StartSend(Mode::kSet, SliceAt(0).kind >= 0 ? kDeleteCommands[static_cast<size_t>(SliceAt(0).kind)] : kCommand);
}

void CDlgQueryAreaInfo::DeleteAll() {
  if (ShowMsgTipEx(kConfirmAll, "", kOkCancel) != IDOK) return;
  deleteAll_.assign(kDeleteCommands.begin(), kDeleteCommands.end());
  SetBatch(kKinds, 1);
  StartSend(Mode::kSet, deleteAll_.front());
}

// Each kind covers as many consecutive positions as it needs requests.
CDlgQueryAreaInfo::Slice CDlgQueryAreaInfo::SliceAt(int position) const {
  int first = 0;
  for (int kind = 0; kind < kKinds; ++kind) {
    const auto& rows = rowsByKind_[static_cast<size_t>(kind)];
    const int count = Requests(rows.size());
    if (position < first + count) {
      const size_t from = static_cast<size_t>(position - first) * kIdsPerRequest;
      const size_t to = std::min(rows.size(), from + kIdsPerRequest);
      return {kind, std::vector<int>(rows.begin() + static_cast<ptrdiff_t>(from), rows.begin() + static_cast<ptrdiff_t>(to))};
    }
    first += count;
  }
  return {};
}

Json::Value CDlgQueryAreaInfo::GetParam() {
  if (QueryMode) return Json::Value();
  Json::Value param(Json::objectValue);
  const int position = CurrentBatch().first;
  if (!deleteAll_.empty()) {
    SetCommandType(deleteAll_[static_cast<size_t>(position) % deleteAll_.size()]);
    param[areakey::kCount] = 0;
    return param;
  }
  const Slice slice = SliceAt(position);
  if (slice.kind >= 0) SetCommandType(kDeleteCommands[static_cast<size_t>(slice.kind)]);
  const auto* list = Item<plat::ListView>(kList);
  Json::Value items(Json::arrayValue);
  for (int row : slice.rows) {
    Json::Value item(Json::objectValue);
    item[areakey::kId] = txt::WToI(list->GetItemText(row, kColId));
    items.append(item);
  }
  param[areakey::kCount] = static_cast<int>(items.size());
  param[areakey::kItem] = items;
  return param;
}

void CDlgQueryAreaInfo::PrepareBatch(CommandRequest& request) {
  deleteDescription_.clear();
  if (!deleteAll_.empty()) {
    deleteDescription_ = Format(kDeletedAll, KindName(request.itemIndex % kKinds));
    return;
  }
  const Slice slice = SliceAt(request.itemIndex);
  if (slice.kind < 0) return;
  deleteDescription_ = Format(kDeletedChosen, KindName(slice.kind));
  std::string ids;
  const auto* list = Item<plat::ListView>(kList);
  for (int row : slice.rows) AddStringStatus(ids, list->GetItemText(row, kColId), kIdSeparator);
  deleteDescription_ += ids;
}

std::string CDlgQueryAreaInfo::GetParamDescription() { return QueryMode ? queryDescription_ : deleteDescription_; }
