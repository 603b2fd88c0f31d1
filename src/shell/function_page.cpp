#include "shell/function_page.h"

#include "command/base_dlg.h"
#include "command/device_caps.h"
#include "command/ids.h"
#include "command/page_registry.h"
#include "lang/language.h"
#include "shell/fun_tree.h"
#include "shell/no_param_panel.h"
#include "shell/result_list.h"
#include "ui/xlist_ctrl.h"

namespace {
constexpr int kButtonWidth = 90, kButtonHeight = 28;

const plat::DialogTemplate kWindowTemplate{
    CDlg808FunctionPage::kTemplate, "", {900, 815},
    {{resultlist::kFrameId, plat::ControlKind::GroupBox, "结果"},
     {resultlist::kListId, plat::ControlKind::ListView, ""},
     {ctl::Get, plat::ControlKind::PushButton, "获取", {0, 0, kButtonWidth, kButtonHeight}},
     {ctl::Set, plat::ControlKind::PushButton, "设置", {0, 0, kButtonWidth, kButtonHeight}},
     {ctl::Cancel, plat::ControlKind::PushButton, "批量设置", {0, 0, kButtonWidth + 20, kButtonHeight}},
     {ctl::BatchGet, plat::ControlKind::PushButton, "批量获取", {0, 0, kButtonWidth + 20, kButtonHeight}}}};
const plat::templates::Registration kRegistration{kWindowTemplate};

// The captions of the four buttons in each caption mode: get, set, batch set, batch get.
// Texts of the window's four buttons.
enum Text : int {
  kTextGet = 13312, kTextSet = 11004, kTextBatchSet = 11015, kTextBatchGet = 11056,
  kTextSend = 13464, kTextBatchSend = 11055,
};
struct ButtonCaptions {
  int get, set, batchSet, batchGet;
};
constexpr ButtonCaptions kCaptionModes[] = {{kTextGet, kTextSet, kTextBatchSet, kTextBatchGet},
                                            {kTextGet, kTextSend, kTextBatchSend, kTextBatchGet}};

// The function types the tree offers under another number.
int TreeType(int type) {
  if (type == 58) return 59;
  if (type == 63) return 64;
  return type;
}
}  // namespace

CDlg808FunctionPage::CDlg808FunctionPage() : CResultListWindow(kTemplate) {
  for (int button : {ctl::Get, ctl::Set, ctl::Cancel, ctl::BatchGet}) {
    Bind(button, BN_CLICKED, [this, button] { OnWindowButton(button); });
  }
}

CDlg808FunctionPage::~CDlg808FunctionPage() { DestroyWindow(); }

BOOL CDlg808FunctionPage::OnInitDialog() {
  CResultListWindow::OnInitDialog();
  tree_ = std::make_unique<CDlg808FunTree>();
  tree_->CreateDlg(this);
  tree_->ShowWindow(plat::SW_SHOW);
  noParamPanel_ = std::make_unique<CDlgNotParam>();
  noParamPanel_->CreateDlg(this);
  SetButtonCaptions(1);
  Layout();
  return TRUE;
}

void CDlg808FunctionPage::OnDestroy() {
  tree_.reset();
  noParamPanel_.reset();
  pages_.clear();  // each page stops its open requests as it goes
  CResultListWindow::OnDestroy();
}

CBaseDlg* CDlg808FunctionPage::FindOrCreatePage(int type, bool create) {
  auto it = pages_.find(type);
  if (it != pages_.end()) return it->second.get();
  if (!create) return nullptr;
  const PageEntry* entry = pages::Find(type, PageHost::kFunctionPage);
  if (!entry) return nullptr;
  std::unique_ptr<CBaseDlg> page = entry->make(type);
  if (!page || !page->CreateDlg(this)) return nullptr;
  page->MoveWindow(pageRect_);
  HostPage(*page, ResultList(), type, PageButtons::kWindow);
  return pages_.emplace(type, std::move(page)).first->second.get();
}

void CDlg808FunctionPage::ShowFunction(int type) {
  if (!IsWindow()) return;
  int previousMode = 0;
  if (CBaseDlg* current = FindOrCreatePage(currentType_, false)) {
    current->ShowWindow(plat::SW_HIDE);
    previousMode = current->ButtonTextMode;
  }
  currentType_ = type;
  CBaseDlg* page = FindOrCreatePage(type, true);
  if (!page) return;

  page->HideSendButtons();
  const bool hasSet = page->HasItem(ctl::Set), hasGet = page->HasItem(ctl::Get);
  ShowItem(ctl::Set, hasSet);
  ShowItem(ctl::Cancel, hasSet);
  ShowItem(ctl::Get, hasGet);
  ShowItem(ctl::BatchGet, hasGet && !hasSet);
  PlaceButtons();
  MirrorButtons(*page);

  if (page->UsesNoParamPanel) {
    noParamPanel_->MoveWindow(pageRect_);
    noParamPanel_->ShowWindow(plat::SW_SHOW);
  } else {
    noParamPanel_->ShowWindow(plat::SW_HIDE);
    page->AttachToHost();
    page->ShowWindow(plat::SW_SHOW);
  }
  if (page->ButtonTextMode != previousMode) SetButtonCaptions(page->ButtonTextMode);
}

void CDlg808FunctionPage::MirrorButtons(CBaseDlg& page) {
  const auto enabled = [&](int id) {
    const plat::Window* w = page.GetDlgItem(id);
    return w && w->IsWindowEnabled();
  };
  EnableItem(ctl::Set, enabled(ctl::Set));
  EnableItem(ctl::Cancel, enabled(ctl::Set));
  EnableItem(ctl::Get, enabled(ctl::Get));
  EnableItem(ctl::BatchGet, enabled(ctl::Get));
}

void CDlg808FunctionPage::PlaceButtons() {
  plat::Window* set = GetDlgItem(ctl::Set);
  plat::Window* get = GetDlgItem(ctl::Get);
  const RECT setRect{buttonSpot_.right - set->GetRect().Width(), buttonSpot_.top, buttonSpot_.right,
                     buttonSpot_.top + set->GetRect().Height()};
  set->MoveWindow(setRect);
  const int getWidth = get->GetRect().Width(), getHeight = get->GetRect().Height();
  if (set->IsShown() && get->IsShown()) {
    // Both stand on one spot: the get button steps left of the set button.
    const int right = buttonSpot_.right - getWidth - plat::s(22);
    get->MoveWindow({right - getWidth, buttonSpot_.top, right, buttonSpot_.top + getHeight});
  } else {
    get->MoveWindow({buttonSpot_.right - getWidth, buttonSpot_.top, buttonSpot_.right, buttonSpot_.top + getHeight});
  }
}

void CDlg808FunctionPage::SetButtonCaptions(int mode) {
  const ButtonCaptions& captions = kCaptionModes[mode == 2 ? 1 : 0];
  SetItemText(ctl::Get, LanguageText(captions.get));
  SetItemText(ctl::Set, LanguageText(captions.set));
  SetItemText(ctl::Cancel, LanguageText(captions.batchSet));
  SetItemText(ctl::BatchGet, LanguageText(captions.batchGet));
}

void CDlg808FunctionPage::OnWindowButton(int button) {
  CBaseDlg* page = FindOrCreatePage(currentType_, false);
  if (!page) return;
  const bool batch = button == ctl::Cancel || button == ctl::BatchGet;
  const bool get = button == ctl::Get || button == ctl::BatchGet;
  page->PickerMode = batch ? TRUE : FALSE;
  page->PostClick(get ? ctl::Get : ctl::Set);
}

void CDlg808FunctionPage::SelectFunctionType(int type, bool onlyOnChange) {
  if (onlyOnChange && type == selectedType_) return;
  selectedType_ = type;
  if (!tree_ || !tree_->IsWindow()) return;
  tree_->SetWantedType(TreeType(type));
  tree_->Rebuild();
}

void CDlg808FunctionPage::MarkProtocolUpdatePending() {
  for (auto& [type, page] : pages_) page->ProtocolUpdatePending = TRUE;
}

LRESULT CDlg808FunctionPage::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case msg::FunctionChosen:
      ShowFunction(static_cast<int>(wParam));
      if (GetParent()) {
        GetParent()->SendMessage(msg::FunctionChosen, static_cast<WPARAM>(SharedDeviceCaps().sharedDevId),
                                 static_cast<LPARAM>(currentType_));
      }
      return 0;
    case msg::ClosePage:
      if (GetParent()) GetParent()->SendMessage(WM_CLOSE, wParam, lParam);
      return 0;
    case msg::SendControlsChanged:
      if (CBaseDlg* page = FindOrCreatePage(currentType_, false)) MirrorButtons(*page);
      return 0;
    default:
      return CResultListWindow::WindowProc(message, wParam, lParam);
  }
}

void CDlg808FunctionPage::Layout() {
  using plat::s;
  using plat::t;
  // An object without its window (created with no parent, or its parent gone) has nothing to lay out.
  if (!IsWindow()) return;
  if (Window* parent = GetParent()) {
    const RECT client = parent->GetClientRect();
    MoveWindow({client.left + 1, client.top + t(30), client.right - 1, client.bottom - 9});
  }
  const int W = GetRect().Width(), H = GetRect().Height();
  if (tree_) tree_->MoveWindow({1, 1, 1 + s(300) - 2, 1 + H - 2});
  const RECT frame{s(300) + 1, H - s(270) + 1, W - s(8), H - s(6)};
  if (Window* w = GetDlgItem(resultlist::kFrameId)) w->MoveWindow(frame);
  if (Window* w = GetDlgItem(resultlist::kListId)) {
    w->MoveWindow({frame.left + s(8), frame.top + s(20), frame.right - s(8), frame.bottom - s(8)});
  }
  pageRect_ = {s(300) + 1, 1, W - s(8), H - s(38) - s(270) - 1};
  for (auto& [type, page] : pages_) page->MoveWindow(pageRect_);
  if (noParamPanel_) noParamPanel_->MoveWindow(pageRect_);

  const int top = pageRect_.bottom + s(8) + 1;
  plat::Window* batchSet = GetDlgItem(ctl::Cancel);
  plat::Window* batchGet = GetDlgItem(ctl::BatchGet);
  const int batchRight = W - s(100);
  for (plat::Window* batch : {batchSet, batchGet}) {
    const int width = batch->GetRect().Width(), height = batch->GetRect().Height();
    batch->MoveWindow({batchRight - width, top, batchRight, top + height});
  }
  const int batchLeft = batchRight - batchSet->GetRect().Width();
  buttonSpot_ = {0, top, batchLeft - s(22), top + kButtonHeight};
  PlaceButtons();
}
