// Preset texts: up to 20 reusable texts kept in the host configuration
// (indexed entries, an empty entry is a free slot), the manager popup that
// lists, adds, modifies and deletes them, and the one-text editor popup.
#pragma once

#include <string>

#include "command/dialog_base.h"

namespace presettext {
constexpr int kConfigId = 718;  // host configuration id of the entries
constexpr int kSlots = 20;      // entries 0..19; an empty one is free
// Language texts of the manager and the editor.
enum Text : int {
  kTextOk = 11002, kTextCancel = 11003, kTextTooLong = 20301, kTextEmpty = 20302, kTextAtMost20 = 20303,
  kTextAdd = 20304, kTextModify = 20305, kTextDelete = 20306,
};
std::string Read(int index);
void Write(int index, const std::string& text);
}  // namespace presettext

// Edits one text. The owner sets the title and text (and, if it wants, the
// checks), runs it with DoModal and reads the text back when the result is
// kAccepted (1); cancel, Escape and the close box give kRejected (0).
class CDlgADealText : public CDlgPopupBase {
 public:
  static constexpr int kTemplate = 4092;
  enum Control : int { kEdit = 4440, kOk = 4441, kCancelButton = 4442, kCounter = 4435 };
  enum Result : int { kRejected = 0, kAccepted = 1 };
  static constexpr int kDefaultMaxLength = 255;

  static plat::DialogTemplate Layout();
  CDlgADealText();
  // Runs the editor modally: kAccepted or kRejected (never the framework's IDCANCEL).
  int DoModal(plat::Window* owner);

  std::string text;
  std::string title;
  bool checkLength = true;
  int maxLength = kDefaultMaxLength;
  bool allowEmpty = false;
  bool singleLine = false;

 protected:
  BOOL OnInitDialog() override;
  void OnOK() override;

 private:
  void UpdateCounter();
};

class CDlgSetDealText : public CDlgPopupBase {
 public:
  static constexpr int kTemplate = 349;
  enum Control : int { kList = 1257, kAdd = 1451, kModify = 1452, kDelete = 1004, kHint = 1252 };

  // A row's text handed to the editor is cut to this many characters.
  static constexpr int kMaxEditChars = CDlgADealText::kDefaultMaxLength;

  static plat::DialogTemplate Layout();
  CDlgSetDealText();

 protected:
  BOOL OnInitDialog() override;

 private:
  plat::ListView& List() const { return *Item<plat::ListView>(kList); }
  void Select(int row);
  void OnAdd();
  void OnModify();
  void OnDelete();
  // Runs the editor; true with the new text when the user confirmed.
  bool Edit(int titleId, std::string& text);
};
