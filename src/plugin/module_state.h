// The plug-in's module-wide objects: the function page window, the hidden
// point-query window, the vehicle function windows the host holds, and the
// application object's start and exit.
#pragma once

#include <memory>
#include <set>

class CDlg808FunctionPage;
class CDlgCallName;
class CDlgMain;

namespace module {
std::unique_ptr<CDlg808FunctionPage>& FunctionPageWindow();
std::unique_ptr<CDlgCallName>& CallNameWindow();
// The vehicle function windows handed to the host and not destroyed yet: a
// pointer the host passes back is used only when it is one of them.
std::set<CDlgMain*>& VehicleWindows();
// At unload: lets the slots go (a window the host left open is abandoned, not destroyed).
void ReleaseSlots();
}  // namespace module

// The application object: its start only reports success; its exit deletes
// the language table.
class CLibMostSetup_808App {
 public:
  bool InitInstance() { return true; }
  int ExitInstance();
};
