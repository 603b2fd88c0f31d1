// A small command page for tests of the base: a text edit sent as "Text",
// set and get buttons, and a record of the page's virtual calls.
#pragma once

#include <string>
#include <vector>

#include "command/base_dlg.h"
#include "command/ids.h"
#include "command/saved_control.h"
#include "platform/dialog.h"
#include "ui/xlist_ctrl.h"

class TestPage : public CBaseDlg {
 public:
  static constexpr int kTemplate = 9990;
  static constexpr int kTextEdit = 5000, kModeCombo = 5001, kFlagCheck = 5002;
  static constexpr int32_t kCommand = 0x8300;
  static inline const uint32_t kSaved[] = {SavedControl::Text(kTextEdit), SavedControl::Combo(kModeCombo, 1),
                                          SavedControl::Check(kFlagCheck, true)};

  TestPage() : CBaseDlg(kTemplate) {
    ReadsSetReplies = TRUE;
    RegisterTemplate();
    Bind(ctl::Set, BN_CLICKED, [this] { Send(false); });
    Bind(ctl::Get, BN_CLICKED, [this] { Send(true); });
  }

  static void RegisterTemplate() {
    using plat::ControlKind;
    static const plat::DialogTemplate tmpl{kTemplate, "test", {400, 300},
                                           {{ctl::Get, ControlKind::PushButton, "get"},
                                            {ctl::Set, ControlKind::PushButton, "set"},
                                            {ctl::Cancel, ControlKind::PushButton, "cancel"},
                                            {kTextEdit, ControlKind::Edit, ""},
                                            {kModeCombo, ControlKind::ComboBox, ""},
                                            {kFlagCheck, ControlKind::CheckBox, "flag"}}};
    plat::templates::Register(tmpl);
  }

  void OnInitPage() override {
    auto* combo = Item<plat::ComboBox>(kModeCombo);
    for (const char* entry : {"a", "b", "c"}) combo->AddString(entry);
  }

  void Send(bool query) {
    QueryMode = query ? TRUE : FALSE;
    StartSend(kCommand);
  }

  void EnableParamControls(BOOL enable) override {
    enabledCalls.push_back(enable != FALSE);
    EnableItem(kTextEdit, enable != FALSE);
  }
  BOOL CheckParam() override { return checkOk ? TRUE : FALSE; }
  Json::Value GetParam() override {
    ++getParamCalls;
    Json::Value param;
    if (!nullParam) {
      param["Text"] = GetItemText(kTextEdit);
      if (BatchMode) param["From"] = batchPosition;
    }
    return param;
  }
  void PrepareBatch(CommandRequest& request) override {
    prepared.push_back(request.itemIndex);
    preparedReplies.push_back(CurrentReply() ? CurrentReply()->toStyledString() : "none");
  }
  void ParseReply(CommandRequest& request) override { parsed.push_back(request.reply); }
  std::string GetParamDescription() override { return "desc"; }
  void UpdateBatchProgress() override { ++batchProgressCalls; }
  void AddPickerColumnsFirst(int32_t* codes, int& count) override {
    for (int32_t code : extraFirst) codes[count++] = code;
  }

  // The send settings the tests set directly.
  using CBaseDlg::BatchMode;
  using CBaseDlg::batchPosition;
  using CBaseDlg::batchStep;
  using CBaseDlg::batchTotal;
  using CBaseDlg::QueryMode;
  using CBaseDlg::SavedControls;
  using CBaseDlg::DeviceKindMask;

  bool checkOk = true;
  bool nullParam = false;
  int getParamCalls = 0;
  int batchProgressCalls = 0;
  std::vector<int32_t> extraFirst;
  std::vector<bool> enabledCalls;
  std::vector<int> prepared;
  std::vector<std::string> preparedReplies;  // the parsed reply each PrepareBatch saw
  std::vector<std::string> parsed;
};

// A hosting window with a result list, as the windows of the shell give pages.
class TestHost : public plat::Window {
 public:
  TestHost() {
    Create(nullptr, 0, "host", RECT{0, 0, 800, 600});
    list.Create(this, 4399, "", RECT{0, 300, 800, 600});
    for (int c = 0; c < 8; ++c) list.InsertColumn(c, "c" + std::to_string(c), 80);
  }
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    messages.push_back(message);
    lparams.push_back(l);
    return plat::Window::WindowProc(message, w, l);
  }
  CXListCtrl list;
  std::vector<UINT> messages;
  std::vector<LPARAM> lparams;
};
