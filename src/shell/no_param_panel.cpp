#include "shell/no_param_panel.h"

#include "command/page_registry.h"
#include "command/page_template.h"

namespace {
const RegisterTemplate<CDlgNotParam> kRegistration;
}  // namespace

plat::DialogTemplate CDlgNotParam::Layout() {
  return PageTemplate(kTemplate, {600, 300}, {{row::Static(kTextId, "无参数", {}, kLangText)}});
}

BOOL CDlgNotParam::OnInitDialog() {
  CDialogBase::OnInitDialog();
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
