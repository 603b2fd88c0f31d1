#include "shell/no_param_panel.h"

#include "lang/language.h"

namespace {
// The template's caption is only the default; the language text replaces it.
const plat::DialogTemplate kPanelTemplate{CDlgNotParam::kTemplate, "", {600, 300},
                                          {{CDlgNotParam::kTextId, plat::ControlKind::Static, "无参数"}}};
const plat::templates::Registration kRegistration{kPanelTemplate};
}  // namespace

BOOL CDlgNotParam::OnInitDialog() {
  CDialogBase::OnInitDialog();
  SetItemText(kTextId, LanguageText(kLangText));
  OnSize();
  return TRUE;
}

void CDlgNotParam::OnSize() {
  if (plat::Window* text = GetDlgItem(kTextId)) text->MoveWindow(GetClientRect());
}

CtlColorAnswer CDlgNotParam::OnCtlColor(plat::Window* control) {
  if (control != GetDlgItem(kTextId)) return CDialogBase::OnCtlColor(control);
  CtlColorAnswer answer = CDialogBase::OnCtlColor(control);
  answer.text = kTextColor;
  return answer;
}
