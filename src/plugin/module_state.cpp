#include "plugin/module_state.h"

#include "lang/language.h"
#include "shell/call_name.h"
#include "shell/function_page.h"

namespace module {
namespace {
// The slots outlive static destruction: the host destroys its windows before
// it unloads the plug-in, and nothing may run on a torn-down loop. The
// application object's exit lets them go.
std::unique_ptr<CDlg808FunctionPage>* g_functionPage = nullptr;
std::unique_ptr<CDlgCallName>* g_callName = nullptr;
std::set<CDlgMain*>* g_vehicleWindows = nullptr;

template <class T>
T& Slot(T*& slot) {
  if (!slot) slot = new T();
  return *slot;
}

// A window the host left open is not destroyed at unload: its loop may be gone.
template <class W>
void Release(std::unique_ptr<W>*& slot) {
  if (slot) (void)slot->release();
  delete slot;
  slot = nullptr;
}
}  // namespace

std::unique_ptr<CDlg808FunctionPage>& FunctionPageWindow() { return Slot(g_functionPage); }
std::unique_ptr<CDlgCallName>& CallNameWindow() { return Slot(g_callName); }
std::set<CDlgMain*>& VehicleWindows() { return Slot(g_vehicleWindows); }

void ReleaseSlots() {
  Release(g_functionPage);
  Release(g_callName);
  delete g_vehicleWindows;
  g_vehicleWindows = nullptr;
}
}  // namespace module

int CLibMostSetup_808App::ExitInstance() {
  module::ReleaseSlots();
  CLanguage::DeleteInstance();
  return 0;
}

namespace {
CLibMostSetup_808App theApp;

__attribute__((constructor)) void OnLoad() { theApp.InitInstance(); }
__attribute__((destructor)) void OnUnload() { theApp.ExitInstance(); }
}  // namespace
