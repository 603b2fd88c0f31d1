#include "pages/regional/transparent_data.h"

#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/alarms/alarm_record.h"
#include "pages/messaging/encode_text.h"
#include "text/numbers.h"

namespace key {
constexpr const char *kScrapyard = "SCRAPYARD", *kType = "SCTYPE", *kNote = "SCNOTE", *kId = "SCID",
                      *kOperation = "SCOPER", *kBusiness = "SCBUSINESS";
}  // namespace key

namespace {
constexpr int kScrapyard = 1, kBusiness = 0;
constexpr int kOperationTexts[] = {0, CTransparentRecordPage::kTextAdd, CTransparentRecordPage::kTextDelete,
                                   CTransparentRecordPage::kTextClear};
}  // namespace

Json::Value CTransparentDataPage::Param(int subType) {
  Json::Value param(Json::objectValue);
  param[key::kScrapyard] = kScrapyard;
  param[key::kType] = subType;
  return param;
}

void CTransparentDataPage::PutNote(Json::Value& param, const std::string& note) {
  if (!note.empty()) param[key::kNote] = EncodeTextParam(note);
}

// ---- text pages -------------------------------------------------------------------

CTransparentTextPage::CTransparentTextPage(int templateId, int subType, int label)
    : CTransparentDataPage(templateId), subType_(subType), label_(label) {
  Bind(ctl::Set, BN_CLICKED, [this] {
    text_ = GetItemText(kText);
    StartSend(Mode::kSet, kCommand);
  });
}

plat::DialogTemplate CTransparentTextPage::TextLayout(int templateId, const char* caption, int label) {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(templateId, {600, 300},
                      {{Static(kLabel, caption, {10, 10, 300, 30}, label),
                        Edit(kText, {10, 35, 590, 240}, {.limit = kMaxChars, .styles = style::Multiline | style::WantReturn})},
                       {SetButton({400, 260, 490, 288}), CancelButton({500, 260, 590, 288})}});
}

Json::Value CTransparentTextPage::GetParam() {
  Json::Value param = Param(subType_);
  PutNote(param, text_);
  return param;
}

std::string CTransparentTextPage::GetParamDescription() { return Description().Field(label_, text_); }

// ---- record pages ---------------------------------------------------------------------

CTransparentRecordPage::CTransparentRecordPage(int templateId, int setType, int queryType)
    : CTransparentDataPage(templateId), setType_(setType), queryType_(queryType) {
  getTextId = kTextQuery;
  Bind(ctl::Get, BN_CLICKED, [this] { OnQuery(); });
  Bind(ctl::Set, BN_CLICKED, [this] { OnSet(); });
}

void CTransparentRecordPage::EnableParamControls(BOOL enable) {
  for (int id : {int{kId}, int{kAdd}, int{kDelete}, int{kClear}, int{kQueryIds}}) EnableItem(id, enable != FALSE);
  for (int id : RecordControls()) EnableItem(id, enable != FALSE);
}

std::vector<int> CTransparentRecordPage::QueryIds(const std::string& text) {
  std::vector<int> ids;
  for (const std::string& piece : SplitText(text, ';'))
    if (!piece.empty()) ids.push_back(txt::WToI(piece));
  return ids;
}

std::string CTransparentRecordPage::FieldText(int control) const {
  std::string text = GetItemText(control);
  std::erase(text, ',');
  return text;
}

void CTransparentRecordPage::OnQuery() {
  queryText_ = GetItemText(kQueryIds);
  StartSend(Mode::kGet, kCommand);
}

void CTransparentRecordPage::OnSet() {
  idText_ = GetItemText(kId);
  operation_ = IsChecked(kAdd) ? kOpAdd : IsChecked(kDelete) ? kOpDelete : IsChecked(kClear) ? kOpClear : kOpAdd;
  ReadRecord();
  StartSend(Mode::kSet, kCommand);
}

Json::Value CTransparentRecordPage::GetParam() {
  if (QueryMode) {
    Json::Value param = Param(queryType_);
    const std::vector<int> ids = QueryIds(queryText_);
    param[key::kId] = ids.empty() ? kAllRecords : ids.front();
    std::string more;
    for (size_t i = 1; i < ids.size(); ++i) AddStringStatus(more, std::to_string(ids[i]), ";");
    PutNote(param, more);
    return param;
  }
  Json::Value param = Param(setType_);
  param[key::kId] = txt::WToI(idText_);
  param[key::kOperation] = operation_;
  param[key::kBusiness] = kBusiness;
  PutNote(param, RecordNote());
  return param;
}

std::string CTransparentRecordPage::GetParamDescription() {
  Description description;
  if (QueryMode) return description.Field(kTextId, queryText_);
  description.Field(kTextId, idText_).Field(kTextOperation, LanguageText(kOperationTexts[operation_]));
  DescribeRecord(description);
  return description;
}
