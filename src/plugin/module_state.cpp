#include "plugin/module_state.h"

#include "lang/language.h"
#include "shell/call_name.h"
#include "shell/function_page.h"

namespace module {
// The slots outlive static destruction: the host destroys its windows
// before it unloads the plug-in, and nothing may run on a torn-down loop.
std::unique_ptr<CDlg808FunctionPage>& FunctionPageWindow() {
  static auto* window = new std::unique_ptr<CDlg808FunctionPage>();
  return *window;
}

std::unique_ptr<CDlgCallName>& CallNameWindow() {
  static auto* window = new std::unique_ptr<CDlgCallName>();
  return *window;
}

std::set<CDlgMain*>& VehicleWindows() {
  static auto* windows = new std::set<CDlgMain*>();
  return *windows;
}
}  // namespace module

int CLibMostSetup_808App::ExitInstance() {
  CLanguage::DeleteInstance();
  return 0;
}

namespace {
CLibMostSetup_808App theApp;

__attribute__((constructor)) void OnLoad() { theApp.InitInstance(); }
__attribute__((destructor)) void OnUnload() { theApp.ExitInstance(); }
}  // namespace
