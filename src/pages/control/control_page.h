// What the vehicle control pages share: a set button that copies the page's
// controls into its fields and sends the page's one command, radio-button
// choices that stand for a value, and the pages that need no input at all.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "command/base_dlg.h"

// One radio button of a choice: its control, the value it stands for and its caption's text.
struct RadioChoice {
  int control;
  int value;
  int text;
};
// The checked radio button of a choice; null when none is.
const RadioChoice* CheckedChoice(const plat::Dialog& page, std::span<const RadioChoice> choices);

class CControlPage : public CBaseDlg {
 public:
  CControlPage(int templateId, int32_t command, uint32_t deviceKinds);

 protected:
  // Copies the controls into the page's fields; false: nothing is sent.
  virtual bool ReadControls() { return true; }
  // Reads the controls and sends the command.
  void OnSet();

  int32_t command_;  // the command the set button sends
};

// A page whose radio buttons choose the one value it sends under its key (no
// key: the choice picks the command itself, sent without parameters).
class CChoicePage : public CControlPage {
 public:
  Json::Value GetParam() override;
  std::string GetParamDescription() override;

 protected:
  CChoicePage(int templateId, int32_t command, uint32_t deviceKinds, std::span<const RadioChoice> choices,
              const char* key, int label);
  // Nothing is sent while no button is checked.
  bool ReadControls() override;
  const RadioChoice* chosen_ = nullptr;

 private:
  std::span<const RadioChoice> choices_;
  const char* key_;
  int label_;
};

// A command without parameters, sent to devices chosen in the picker; the
// function page window shows its no-parameter panel in place of the page.
class CNoParamPage : public CBaseDlg {
 public:
  CNoParamPage(int templateId, int32_t command, uint32_t deviceKinds);
  // The template of such a page: its confirm button alone.
  static plat::DialogTemplate MakeTemplate(int templateId);
};
