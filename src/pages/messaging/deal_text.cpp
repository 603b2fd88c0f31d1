// The preset text store, the manager popup and the one-text editor popup.
#include "pages/messaging/deal_text.h"

#include <cstdio>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/encoding.h"

using namespace presettext;

namespace {
constexpr int kListColumnWidth = 200;

const RegisterTemplate<CDlgADealText> kEditorTemplate;
const RegisterTemplate<CDlgSetDealText> kManagerTemplate;
}  // namespace

// Sections: the editor is the text, its counter, then the buttons; the
// manager is the list with its buttons beside it, then the hint.
plat::DialogTemplate CDlgADealText::Layout() {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(kTemplate, {360, 220},
                      {{Edit(kEdit, {10, 40, 350, 150}, {.styles = style::Multiline | style::WantReturn})},
                       {Static(kCounter, "", {10, 155, 200, 175}, 0, style::Hidden)},
                       {Button(kOk, "确定", {170, 180, 250, 208}, kTextOk, style::Group),
                        Button(kCancelButton, "取消", {260, 180, 340, 208}, kTextCancel)}});
}

plat::DialogTemplate CDlgSetDealText::Layout() {
  using namespace row;
  return PageTemplate(kTemplate, {320, 360},
                      {{row::List(kList, {10, 40, 220, 320}), Button(kAdd, "添加", {230, 40, 310, 68}, kTextAdd),
                        Button(kModify, "修改", {230, 80, 310, 108}, kTextModify),
                        Button(kDelete, "删除", {230, 120, 310, 148}, kTextDelete)},
                       {Static(kHint, "最多添加20句", {10, 325, 310, 345}, kTextAtMost20)}});
}

namespace presettext {
std::string Read(int index) { return CConfigKestrelINI::ReadIniStrEx(kConfigId, index); }
void Write(int index, const std::string& text) { CConfigKestrelINI::WriteIniStrEx(kConfigId, index, text); }
}  // namespace presettext

// ---- the editor -----------------------------------------------------------------

CDlgADealText::CDlgADealText() : CDlgPopupBase(kTemplate) {
  Bind(kOk, BN_CLICKED, [this] { OnOK(); });
  Bind(kCancelButton, BN_CLICKED, [this] { OnCancel(); });
  Bind(kEdit, EN_CHANGE, [this] { UpdateCounter(); });
}

int CDlgADealText::DoModal(plat::Window* owner) {
  return CDlgPopupBase::DoModal(owner) == IDOK ? kAccepted : kRejected;
}

BOOL CDlgADealText::OnInitDialog() {
  CDlgPopupBase::OnInitDialog();
  SetWindowText(title);
  auto* edit = Item<plat::Edit>(kEdit);
  if (checkLength && maxLength != 0) {
    ShowItem(kCounter, true);
    edit->SetLimitText(static_cast<size_t>(maxLength));
  }
  if (singleLine) edit->SetMultiline(false, false);
  edit->SetWindowText(text);
  UpdateCounter();
  edit->SetFocus();
  const int end = static_cast<int>(txt::Utf8Length(text));
  edit->SetSel(end, end);
  return TRUE;
}

void CDlgADealText::UpdateCounter() {
  if (!checkLength || maxLength == 0) return;
  char counter[32];
  std::snprintf(counter, sizeof counter, "(%zu/%d)", txt::Utf8Length(GetItemText(kEdit)), maxLength);
  SetItemText(kCounter, counter);
}

void CDlgADealText::OnOK() {
  text = GetItemText(kEdit);
  if (checkLength) {
    if (text.empty() && !allowEmpty) {
      ShowLangTip(kTextEmpty);
      GetDlgItem(kEdit)->SetFocus();
      return;
    }
    if (maxLength != 0 && txt::Utf8Length(text) > static_cast<size_t>(maxLength)) {
      ShowMsgTipEx(FormatStringInt(LanguageText(kTextTooLong), maxLength), "", 0);
      return;
    }
  }
  EndDialog(IDOK);
}

// ---- the manager ----------------------------------------------------------------

CDlgSetDealText::CDlgSetDealText() : CDlgPopupBase(kTemplate) {
  Bind(kAdd, BN_CLICKED, [this] { OnAdd(); });
  Bind(kModify, BN_CLICKED, [this] { OnModify(); });
  Bind(kDelete, BN_CLICKED, [this] { OnDelete(); });
  BindNotify(kList, LVN_DBLCLK, [this](const plat::NMITEM& nm) { nm.item >= 0 ? OnModify() : OnAdd(); });
}

BOOL CDlgSetDealText::OnInitDialog() {
  CDlgPopupBase::OnInitDialog();
  List().InsertColumn(0, "", kListColumnWidth);
  for (int index = 0; index < presettext::kSlots; ++index) {
    const std::string entry = presettext::Read(index);
    if (entry.empty()) continue;
    const int row = List().InsertItem(List().GetItemCount(), entry);
    List().SetItemData(row, static_cast<uintptr_t>(index));
  }
  if (List().GetItemCount() > 0) Select(0);
  return TRUE;
}

void CDlgSetDealText::Select(int row) {
  for (int r = 0; r < List().GetItemCount(); ++r) List().SetSelected(r, r == row);
  List().SetFocus();
}

bool CDlgSetDealText::Edit(int titleId, std::string& text) {
  CDlgADealText editor;
  editor.title = LanguageText(titleId);
  editor.text = text;
  if (editor.DoModal(this) != CDlgADealText::kAccepted) return false;
  text = editor.text;
  return true;
}

void CDlgSetDealText::OnAdd() {
  if (List().GetItemCount() >= presettext::kSlots) {
    ShowLangTip(kTextAtMost20);
    return;
  }
  std::string text;
  if (!Edit(kTextAdd, text)) return;
  for (int index = 0; index < presettext::kSlots; ++index) {
    if (!presettext::Read(index).empty()) continue;
    presettext::Write(index, text);
    const int row = List().InsertItem(List().GetItemCount(), text);
    List().SetItemData(row, static_cast<uintptr_t>(index));
    Select(row);
    return;
  }
}

void CDlgSetDealText::OnModify() {
  const int row = List().GetFirstSelected();
  if (row < 0) return;
  std::string text = txt::Utf8Left(List().GetItemText(row, 0), kMaxEditChars);
  if (!Edit(kTextModify, text)) return;
  presettext::Write(static_cast<int>(List().GetItemData(row)), text);
  List().SetItemText(row, 0, text);
}

void CDlgSetDealText::OnDelete() {
  const int row = List().GetFirstSelected();
  if (row < 0) return;
  const std::string text = List().GetItemText(row, 0);
  // The first entry holding the same text is cleared, which is not always the row's own.
  for (int index = 0; index < presettext::kSlots; ++index) {
    if (presettext::Read(index) == text) {
      presettext::Write(index, "");
      break;
    }
  }
  const int count = List().GetItemCount();
  List().DeleteItem(row);
  if (count > 1) Select(row < count - 1 ? row : row - 1);
}
