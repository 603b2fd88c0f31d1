// What the upgrade and server-connection pages share: the terminal control
// command (0x8105) with its command word in "Command", a column of text fields
// each sent as a JSON string under its key (through EncodeTextParam) and
// described under its label, and the ";" rule of the text fields.
#pragma once

#include <json/value.h>

#include <span>
#include <string>
#include <vector>

#include "command/base_dlg.h"
#include "command/description.h"
#include "command/param_check.h"

class CTerminalControlPage : public CBaseDlg {
 public:
  static constexpr int32_t kCommand = 0x8105;
  static constexpr int kTextNoSemicolon = 12710;  // the field must not hold ";"

  // A text field: its edit, its key and its label's language id.
  struct TextField {
    int edit;
    const char* key;
    int label;
    size_t keepChars = 0;  // only this many characters are sent and described (0: all)
  };

  Json::Value GetParam() override;

 protected:
  CTerminalControlPage(int templateId, int commandWord, std::span<const TextField> fields);

  // Set button, after the text fields were read: the page's other inputs.
  virtual void ReadChoices() {}
  // Members besides "Command" and the texts (choices of radio buttons or lists).
  virtual void PutChoices(Json::Value& param) const { (void)param; }
  // The text of a field as the set button read it.
  const std::string& Value(int edit) const;
  // Adds the items of the text fields to a description, in their order.
  Description& DescribeFields(Description& description) const;
  // The field's text must not hold ";": tip "<label>：<12710>", focus on it.
  void NoSemicolon(ParamCheck& check, int edit) const;
  // The label of a field's edit.
  int LabelOf(int edit) const;

  std::span<const TextField> Fields() const { return fields_; }

 private:
  const int commandWord_;
  std::span<const TextField> fields_;
  std::vector<std::string> values_;
};
