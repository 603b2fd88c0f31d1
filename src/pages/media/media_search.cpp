// The media search page: template, list columns, the reply turned into list
// rows and table text, the description and the list's export.
#include "pages/media/media_search.h"

#include <cstdio>

#include "command/page_registry.h"
#include "command/page_template.h"
#include "command/param_check.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/media/media_choices.h"
#include "pages/media/media_position.h"
#include "platform/menu.h"
#include "shell/export.h"

namespace {
using C = CDlgMediaSearch;
const RegisterPage<C> kPage{C::kFunctionType};

constexpr const char* kKeyItems = "Item";
constexpr const char* kLineBreak = "\r\n";
constexpr const char* kCellSeparator = "\t";
constexpr int kNoTrailingColumns = 0;

constexpr CMediaFilterPage::Controls kFilter{C::kChannelEdit, C::kTypeCombo, C::kEventCombo, C::kStartDate,
                                             C::kStartTime,   C::kEndDate,   C::kEndTime};
constexpr CMediaFilterPage::Labels kFilterLabels{C::kChannelLabel, C::kChannelNote, C::kTypeLabel,
                                                  C::kEventLabel,   C::kStartLabel,  C::kEndLabel};

struct ColumnSpec {
  int title;
  int width;
};
constexpr ColumnSpec kColumnSpecs[C::kColumns] = {
    {C::kTextNumber, 80},          {C::kTextMediaId, 80},         {CMediaFilterPage::kTextChannel, 160},
    {CMediaFilterPage::kTextType, 160}, {CMediaFilterPage::kTextEvent, 160}, {C::kTextTime, 160},
    {C::kTextPosition, 160}};

// The seven texts joined by a separator.
template <class Texts>
std::string Joined(const Texts& texts) {
  std::string line;
  for (size_t c = 0; c < std::size(texts); ++c) {
    if (c) line += kCellSeparator;
    line += texts[c];
  }
  return line;
}
}  // namespace

plat::DialogTemplate CDlgMediaSearch::Layout() {
  using namespace row;
  std::vector<TemplateRows> sections = FilterRows(kFilter, kFilterLabels);
  sections.back().push_back(GetButton({500, 112, 590, 140}));
  sections.push_back({List(kList, {10, 150, 590, 460})});
  return PageTemplate(kTemplate, {600, 470}, sections);
}

CDlgMediaSearch::CDlgMediaSearch() : CMediaFilterPage(kTemplate, kFilter) {
  QueryMode = TRUE;
  Bind(ctl::Get, BN_CLICKED, [this] {
    if (auto* list = Item<plat::ListView>(kList)) list->DeleteAllItems();
    ReadFilter();
    StartSend(Mode::kGet, kCommand);
  });
  BindNotify(kList, LVN_RCLICK, [this](const plat::NMITEM&) { OnListRightClick(); });
}

void CDlgMediaSearch::OnInitPage() {
  CMediaFilterPage::OnInitPage();
  auto* list = Item<plat::ListView>(kList);
  for (int c = 0; c < kColumns; ++c) list->InsertColumn(c, LanguageText(kColumnSpecs[c].title), kColumnSpecs[c].width);
}

BOOL CDlgMediaSearch::CheckParam() {
  ParamCheck check(*this);
  return CheckFilter(check).Ok();
}

void CDlgMediaSearch::OnNoAnswer(CommandRequest&) { table_.clear(); }

void CDlgMediaSearch::OnAnswer(CommandRequest&, const Json::Value& reply) {
  table_.clear();
  if (!reply.isMember(kKeyItems)) return;
  std::array<std::string, kColumns> titles;
  for (int c = 0; c < kColumns; ++c) titles[c] = LanguageText(kColumnSpecs[c].title);
  table_ = kLineBreak + Joined(titles);

  const Json::Value& items = reply[kKeyItems];
  const bool detailed = IsCheckMode() != FALSE;
  std::vector<Row> rows;
  rows.reserve(items.isArray() ? items.size() : 0);
  if (items.isArray()) {
    for (const Json::Value& value : items) {
      const media::MediaItem item = media::ReadMediaItem(value);
      Row& row = rows.emplace_back();
      row[kColNumber] = std::to_string(rows.size());
      row[kColId] = std::to_string(item.id);
      row[kColChannel] = std::to_string(item.channel);
      row[kColType] = media::ChoiceText(media::kMediaTypes, static_cast<uint32_t>(item.type));
      row[kColEvent] = media::ChoiceText(media::kEventCodes, static_cast<uint32_t>(item.event));
      row[kColTime] = item.time;
      row[kColPosition] = media::PositionText(item, detailed);
      AddStringStatus(table_, Joined(row), kLineBreak);
    }
  }
  FillList(rows);
}

// The reply's rows go in front of the rows already listed, first item on top;
// each is added at the top, the last first, so the cost is the reply's alone.
void CDlgMediaSearch::FillList(const std::vector<Row>& rows) {
  auto* list = Item<plat::ListView>(kList);
  if (!list) return;
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    list->InsertItem(0, (*row)[0]);
    for (int c = 1; c < kColumns; ++c) list->SetItemText(0, c, (*row)[c]);
  }
}

std::string CDlgMediaSearch::GetParamDescription() {
  std::string text = kLineBreak + FormatChineseColon(LanguageText(kTextTitle), kLineBreak);
  Description filter;
  DescribeFilter(filter);
  AddChineseStringStatus(text, filter);
  return text + kLineBreak + FormatChineseColon(LanguageText(kTextResult), table_);
}

void CDlgMediaSearch::OnListRightClick() {
  auto* list = Item<plat::ListView>(kList);
  if (!list) return;
  const UINT command = plat::menu::Track(*this, {{kCmdExport, LanguageText(kTextExport), list->GetItemCount() > 0}});
  if (command != kCmdExport) return;
  CExportData exporter;
  Export(exporter, LanguageText(kTextTitle), *list, kNoTrailingColumns);
}
