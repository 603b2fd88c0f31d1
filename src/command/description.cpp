#include "command/description.h"

#include "host/hostcore.h"
#include "lang/language.h"

Description& Description::Field(int label, const std::string& value) { return Field(LanguageText(label), value); }

Description& Description::Field(int label, int64_t value) { return Field(label, std::to_string(value)); }

Description& Description::Field(const std::string& label, const std::string& value) {
  return Text(FormatChineseColon(label, value));
}

Description& Description::Text(const std::string& text) {
  AddChineseStringStatus(text_, text);
  return *this;
}

std::string JoinTexts(std::initializer_list<int> ids) {
  std::string text;
  for (int id : ids) AddChineseStringStatus(text, LanguageText(id));
  return text;
}
