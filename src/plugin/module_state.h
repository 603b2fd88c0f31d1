// The plug-in's module-wide objects: the function page window, the hidden
// point-query window, and the application object's start and exit.
#pragma once

#include <memory>

class CDlg808FunctionPage;
class CDlgCallName;

namespace module {
std::unique_ptr<CDlg808FunctionPage>& FunctionPageWindow();
std::unique_ptr<CDlgCallName>& CallNameWindow();
}  // namespace module

// The application object: its start only reports success; its exit deletes
// the language table.
class CLibMostSetup_808App {
 public:
  bool InitInstance() { return true; }
  int ExitInstance();
};
