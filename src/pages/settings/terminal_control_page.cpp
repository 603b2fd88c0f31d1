#include "pages/settings/terminal_control_page.h"

#include "command/ids.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "pages/messaging/encode_text.h"
#include "text/encoding.h"

namespace {
constexpr const char* kCommandKey = "Command";
}  // namespace

CTerminalControlPage::CTerminalControlPage(int templateId, int commandWord, std::span<const TextField> fields)
    : CBaseDlg(templateId), commandWord_(commandWord), fields_(fields), values_(fields.size()) {
  Bind(ctl::Set, BN_CLICKED, [this] {
    for (size_t i = 0; i < fields_.size(); ++i) {
      values_[i] = GetItemText(fields_[i].edit);
      if (fields_[i].keepChars != 0) values_[i] = txt::Utf8Left(values_[i], fields_[i].keepChars);
    }
    ReadChoices();
    StartSend(Mode::kSet, kCommand);
  });
}

const std::string& CTerminalControlPage::Value(int edit) const {
  static const std::string kNone;
  for (size_t i = 0; i < fields_.size(); ++i) {
    if (fields_[i].edit == edit) return values_[i];
  }
  return kNone;
}

int CTerminalControlPage::LabelOf(int edit) const {
  for (const TextField& field : fields_) {
    if (field.edit == edit) return field.label;
  }
  return 0;
}

Json::Value CTerminalControlPage::GetParam() {
  Json::Value param(Json::objectValue);
  param[kCommandKey] = commandWord_;
  PutChoices(param);
  for (size_t i = 0; i < fields_.size(); ++i) param[fields_[i].key] = EncodeTextParam(values_[i]);
  return param;
}

Description& CTerminalControlPage::DescribeFields(Description& description) const {
  for (size_t i = 0; i < fields_.size(); ++i) description.Field(fields_[i].label, values_[i]);
  return description;
}

void CTerminalControlPage::NoSemicolon(ParamCheck& check, int edit) const {
  const int label = LabelOf(edit);
  check.That(Value(edit).find(';') == std::string::npos,
             FormatChineseColon(LanguageText(label), LanguageText(kTextNoSemicolon)), edit);
}
