// The description column of a result row: "label：value" fields joined the
// host's way (FormatChineseColon, AddChineseStringStatus).
//
//   return Description().Field(kTextFlag, flags).Field(kTextInformation, text_);
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

class Description {
 public:
  // The label's language text and the value.
  Description& Field(int label, const std::string& value);
  Description& Field(int label, int64_t value);
  Description& Field(const std::string& label, const std::string& value);
  // A part as it stands.
  Description& Text(const std::string& text);
  operator std::string() const { return text_; }
  const std::string& str() const { return text_; }

 private:
  std::string text_;
};

// Language texts joined the host's way, for a list inside one field.
std::string JoinTexts(std::initializer_list<int> ids);
