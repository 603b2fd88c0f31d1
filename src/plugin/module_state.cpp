#include "plugin/module_state.h"

#include "lang/language.h"
#include "shell/call_name.h"
#include "shell/function_page.h"

namespace module {
std::unique_ptr<CDlg808FunctionPage>& FunctionPageWindow() {
  static std::unique_ptr<CDlg808FunctionPage> window;
  return window;
}

std::unique_ptr<CDlgCallName>& CallNameWindow() {
  static std::unique_ptr<CDlgCallName> window;
  return window;
}
}  // namespace module

int CLibMostSetup_808App::ExitInstance() {
  CLanguage::DeleteInstance();
  return 0;
}

namespace {
CLibMostSetup_808App theApp;

__attribute__((constructor)) void OnLoad() { theApp.InitInstance(); }
__attribute__((destructor)) void OnUnload() {
  // Windows the host left open go before the language table.
  module::FunctionPageWindow().reset();
  module::CallNameWindow().reset();
  theApp.ExitInstance();
}
}  // namespace
