// Commands on the current window's result list: its context menu, a double
// click on a row, and the spreadsheet export.
#include <unistd.h>

#include <cstdio>

#include "host/ref/hostref.h"
#include "output.h"
#include "platform/controls.h"
#include "platform/dialog.h"
#include "platform/loop.h"
#include "platform/menu.h"
#include "script.h"
#include "script_args.h"
#include "script_controls.h"

using namespace script;

namespace {
constexpr int kResultList = 4399;
constexpr int kExportFileName = 1152;
constexpr UINT kMenuExport = 32771;
constexpr UINT kMenuClear = 32772;
constexpr UINT kMenuDismissed = 0;
constexpr const char* kLogErrorLevel = "2|";
constexpr const char* kExportLogMark = "|Export";

// Standard error goes to a temporary file while it lives: the spreadsheet
// writer prints its own complaints there, and they are not ours to show raw.
class QuietStderr {
 public:
  QuietStderr() : file_(std::tmpfile()) {
    std::fflush(stderr);
    saved_ = dup(STDERR_FILENO);
    if (file_ && saved_ >= 0) dup2(fileno(file_), STDERR_FILENO);
  }
  ~QuietStderr() {
    std::fflush(stderr);
    if (saved_ >= 0) {
      dup2(saved_, STDERR_FILENO);
      close(saved_);
    }
    if (file_) std::fclose(file_);
  }
  QuietStderr(const QuietStderr&) = delete;
  QuietStderr& operator=(const QuietStderr&) = delete;

 private:
  std::FILE* file_;
  int saved_ = -1;
};

// The error lines about the export logged after the first `since` lines.
std::string ExportFault(size_t since) {
  const std::vector<std::string> lines = hostref::LogLines();
  for (size_t i = since; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    if (line.rfind(kLogErrorLevel, 0) == 0 && line.find(kExportLogMark) != std::string::npos) {
      return line.substr(line.find('|', 2) + 1);
    }
  }
  return "";
}
}  // namespace

void ScriptRunner::RegisterResults() {
  const auto resultList = [this](const Context& context) {
    auto* list = dynamic_cast<plat::ListView*>(Control(context, std::string(kWindowPrefix) + std::to_string(kResultList)));
    if (!list) throw Error{"no result list here"};
    return list;
  };
  commands_["list"] = [this, resultList](const std::string& rest, const Context& context) {
    const Args a = Split(rest);
    plat::ListView* list = resultList(context);
    if (a == Args{"menu"} || a == Args{"clear"}) {
      plat::menu::PushChoice(a[0] == "clear" ? kMenuClear : kMenuDismissed);
      list->UserRightClick(-1);
      plat::MessageLoop::Instance().RunPending();
    } else if (a.size() == 2 && a[0] == "open") {
      if (list->GetItemCount() == 0) throw Error{"the result list is empty"};
      const int row = static_cast<int>(Number(a[1], 0, list->GetItemCount() - 1));
      list->UserDoubleClick(row);
      plat::MessageLoop::Instance().RunPending();
    } else {
      throw Error{"usage: list menu | list clear | list open ROW"};
    }
  };
  commands_["export"] = [this, resultList](const std::string& rest, const Context& context) {
    if (rest.empty()) throw Error{"usage: export FILE"};
    plat::ListView* list = resultList(context);
    if (list->GetItemCount() == 0) throw Error{"the result list is empty: nothing to export"};
    // As a user does it: the list's context menu, then the file name in the save dialog.
    const std::string file = Unescape(rest);
    plat::modal::Push([file](plat::Dialog& dialog) {
      if (auto* name = dialog.Item<plat::Edit>(kExportFileName)) name->SetWindowText(file);
      if (auto* save = dialog.Item<plat::Button>(IDOK)) save->Click();
    });
    const size_t logged = hostref::LogLines().size();
    {
      QuietStderr quiet;
      plat::menu::PushChoice(kMenuExport);
      list->UserRightClick(-1);
      plat::MessageLoop::Instance().RunPending();
    }
    const std::string fault = ExportFault(logged);
    if (!fault.empty()) throw Error{"the export to " + file + " failed (" + fault + "); check that its folder exists and can be written"};
  };
}
