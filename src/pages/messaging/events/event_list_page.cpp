// The shared event list mechanics: type radios, row boxes by type, the
// identifier checks, the "EVIT" rows, the configuration entries and the
// description.
#include "pages/messaging/events/event_list_page.h"

#include <iterator>
#include <set>

#include "command/description.h"
#include "command/ids.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"
#include "text/numbers.h"

namespace {
using C = CEventListPage;

namespace key {
constexpr const char *kType = "SETP", *kItems = "EVIT", *kText = "TEXT", *kCount = "Count";
}  // namespace key

constexpr int kTypeTexts[] = {C::kTextDeleteAll, C::kTextUpdate, C::kTextAppend, C::kTextModify, C::kTextDeleteGiven};
constexpr const char* kLiteralIdLabel = "ID";
constexpr const char* kItemSeparator = ";";

// Which boxes a setting type uses.
bool UsesIds(uint8_t type) { return type != C::kDeleteAll; }
bool UsesTexts(uint8_t type) { return type == C::kUpdate || type == C::kAppend || type == C::kModify; }

int IdOf(const std::string& text) { return txt::WToI(text); }
bool IsEntry(int id) { return id >= 0 && id <= C::kIdMax; }
}  // namespace

plat::DialogTemplate CEventListPage::MakeTemplate(const Kind& kind, TemplateSection radios, TemplateSection extras) {
  using namespace row;
  namespace style = plat::style;
  static const char* const kRowCaptions[kRows] = {"ID1", "ID2", "ID3", "ID4"};
  static const char* const kContentCaptions[kRows] = {"内容1", "内容2", "内容3", "内容4"};
  const auto top = [](int i) { return 100 + 45 * i; };
  const auto label = [&](int i) {
    return Static(kRowLabels[i], kRowCaptions[i], {20, top(i), 90, top(i) + 22}, kind.rowLabelText);
  };
  const auto id = [&](int i) { return Number(kIdEdits[i], {95, top(i), 150, top(i) + 22}, 0, kIdMax); };
  const auto content = [&](int i) {
    return Static(kContentLabels[i], kContentCaptions[i], {160, top(i), 220, top(i) + 22}, kTextContent);
  };
  const auto text = [&](int i) { return Edit(kTextEdits[i], {225, top(i), 460, top(i) + 22}, {.limit = kTextChars}); };
  const auto note = [&](int i) {
    return Static(kNotes[i], "(小于127字符)", {465, top(i), 585, top(i) + 22}, kTextNote);
  };
  return PageTemplate(
      kind.templateId, {600, 340},
      {radios,
       {Box(kind.itemsGroup, kind.itemsCaption, {10, 80, 590, 280}, kind.itemsText, style::Group),
        label(0), id(0), content(0), text(0), note(0),
        label(1), id(1), content(1), text(1), note(1),
        label(2), id(2), content(2), text(2), note(2),
        label(3), id(3), content(3), text(3), note(3)},
       {Static(kHint, "", {10, 285, 590, 300}, kind.hintText, style::Hidden)},
       extras,
       {SetButton({400, 305, 490, 333}), CancelButton({500, 305, 590, 333})}});
}

CEventListPage::CEventListPage(const Kind& kind) : CBaseDlg(kind.templateId), kind_(kind), type_(kind.startType) {
  DeviceKindMask = kind.deviceKinds;
  BindSettingTypes(*this, kind.radios, [this](uint8_t type) {
    type_ = type;
    EnableRows(controlsEnabled_);
  });
  Bind(ctl::Set, BN_CLICKED, [this] { OnSend(); });
}

void CEventListPage::OnInitPage() {
  type_ = kind_.startType;
  CheckSettingType(*this, kind_.radios, type_);
  EnableRows(true);
}

void CEventListPage::EnableRows(bool enable) {
  for (int i = 0; i < kRows; ++i) {
    EnableItem(kIdEdits[i], enable && UsesIds(type_));
    EnableItem(kTextEdits[i], enable && UsesTexts(type_));
  }
}

void CEventListPage::EnableParamControls(BOOL enable) {
  controlsEnabled_ = enable != FALSE;
  for (const SettingTypeRadio& radio : kind_.radios) EnableItem(radio.control, controlsEnabled_);
  EnableRows(controlsEnabled_);
}

void CEventListPage::OnSend() {
  for (int i = 0; i < kRows; ++i) {
    ids_[i] = GetItemText(kIdEdits[i]);
    texts_[i] = GetItemText(kTextEdits[i]);
  }
  StartSend(Mode::kSet, kind_.command);
}

BOOL CEventListPage::CheckParam() {
  bool anyId = false, duplicate = false;
  std::set<int> seen;
  for (const std::string& id : ids_) {
    if (id.empty()) continue;
    anyId = true;
    if (!seen.insert(IdOf(id)).second) duplicate = true;
  }
  // The duplicate check holds for every type, deleting all included.
  return ParamCheck(*this).That(type_ == kDeleteAll || anyId, kTextNoId).That(!duplicate, kTextDuplicateId).Ok();
}

Json::Value CEventListPage::GetParam() {
  Json::Value param(Json::objectValue);
  param[key::kType] = type_;
  int count = 0;
  for (int i = 0; i < kRows; ++i) {
    if (ids_[i].empty()) continue;
    // The text goes with every row, also when the type left its box disabled.
    Json::Value item(Json::objectValue);
    item[kind_.idKey] = IdOf(ids_[i]);
    item[key::kText] = EncodeTextParam(texts_[i]);
    param[key::kItems].append(std::move(item));
    ++count;
  }
  if (kind_.sendsCount) param[key::kCount] = count;
  return param;
}

void CEventListPage::UpdateStore() {
  if (type_ == kDeleteAll) {
    // Only entries that hold a text need clearing.
    for (int id = 0; id <= kIdMax; ++id) {
      if (!CConfigKestrelINI::ReadIniStrEx(kind_.configId, id).empty()) CConfigKestrelINI::WriteIniStrEx(kind_.configId, id, "");
    }
    return;
  }
  for (int i = 0; i < kRows; ++i) {
    if (ids_[i].empty() || !IsEntry(IdOf(ids_[i]))) continue;
    CConfigKestrelINI::WriteIniStrEx(kind_.configId, IdOf(ids_[i]), type_ == kDeleteGiven ? "" : texts_[i]);
  }
}

std::string CEventListPage::IdLabel() const {
  return kind_.rowLabelText ? LanguageText(kind_.rowLabelText) : kLiteralIdLabel;
}

std::string CEventListPage::GetParamDescription() {
  UpdateStore();
  std::string items;
  if (type_ != kDeleteAll) {
    const std::string idLabel = IdLabel(), contentLabel = LanguageText(kTextContent);
    for (int i = 0; i < kRows; ++i) {
      if (ids_[i].empty()) continue;
      const std::string row = std::to_string(i + 1);
      std::string item = idLabel + row + "=" + ids_[i];
      if (type_ != kDeleteGiven) item += "," + contentLabel + row + "=" + texts_[i];
      AddStringStatus(items, item, kItemSeparator);
    }
  }
  const std::string typeText = type_ < std::size(kTypeTexts) ? LanguageText(kTypeTexts[type_]) : std::string();
  return Description().Field(kTextType, typeText).Field(kind_.itemsText, items);
}
