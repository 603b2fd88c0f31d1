// The reference host's script language: one command a line, the same at the
// interactive prompt. The commands are listed in command_table.cpp (help and
// docs/scripting.md come from there); their handlers live in script_*.cpp.
#pragma once

#include <functional>
#include <istream>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host_world.h"

namespace plat {
class Control;
class Dialog;
}  // namespace plat

class ScriptRunner {
 public:
  // Asks a person for the device picker's answer (the prompt); nullopt cancels.
  using PickerAsker = std::function<std::optional<std::vector<int>>()>;

  explicit ScriptRunner(HostWorld& world);
  ~ScriptRunner();

  // Runs every line of a stream; a bad line prints ERROR and the script goes on.
  void RunStream(std::istream& in);
  // Runs one line (numbered for error messages); false when it failed.
  bool RunLine(const std::string& line, int number);
  bool QuitRequested() const { return quit_; }
  // Whether any line failed so far (the exit status).
  bool AnyFailed() const { return failed_; }
  void SetPickerAsker(PickerAsker asker) { asker_ = std::move(asker); }

  // Command names, and the control ids of the current window (for completion).
  std::vector<std::string> CommandNames() const;
  std::vector<std::string> ControlIds() const;

  struct Context {
    plat::Window* root;  // where control ids are looked up
    int line;
  };
  using Handler = std::function<void(const std::string& rest, const Context& context)>;

 private:
  void RegisterWorld();
  void RegisterNetwork();
  void RegisterWindows();
  void RegisterPage();
  void RegisterResults();
  void RegisterObserve();
  void Fail(const Context& context, const std::string& what);
  bool Dispatch(const std::string& command, const std::string& rest, const Context& context, bool controlsOnly);
  // The control an id names (see the guide: the page's first, `win:` for the window's own).
  plat::Window* Control(const Context& context, const std::string& id) const;
  plat::Window* FunctionTree() const;
  void QueueModal(const std::string& rest, int line);
  void CheckPicker(const Context& context);

  HostWorld& world_;
  std::map<std::string, Handler> commands_;
  std::map<std::string, Handler> controlCommands_;  // those that also work inside a modal dialog
  std::shared_ptr<std::vector<std::pair<std::string, int>>> modalBatch_;
  PickerAsker asker_;
  bool pickerUnanswered_ = false;
  bool cancelPicker_ = false;  // `pick none`: the next run cancels on purpose
  bool quit_ = false;
  bool failed_ = false;      // any line
  bool lineFailed_ = false;  // the line running now
};
