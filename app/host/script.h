// The reference host's script language: one command a line, the same at the
// interactive prompt. docs/scripting.md describes every command.
#pragma once

#include <functional>
#include <istream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host_world.h"

namespace plat {
class Dialog;
}

class ScriptRunner {
 public:
  explicit ScriptRunner(HostWorld& world);
  // Runs every line of a stream; a bad line prints ERROR and the script goes on.
  void RunStream(std::istream& in, bool prompt);
  // Runs one line (numbered for error messages).
  void RunLine(const std::string& line, int number);
  bool QuitRequested() const { return quit_; }

 private:
  struct Context {
    plat::Window* root;  // where control ids are looked up
    int line;
  };
  using Handler = std::function<void(const std::string& rest, const Context& context)>;

  void Register();
  void Fail(const Context& context, const std::string& what) const;
  bool Dispatch(const std::string& command, const std::string& rest, const Context& context, bool controlsOnly);
  plat::Window* Control(const Context& context, const std::string& id);
  void QueueModal(const std::string& rest, int line);

  HostWorld& world_;
  std::map<std::string, Handler> commands_;
  std::map<std::string, Handler> controlCommands_;  // those that also work inside a modal dialog
  std::shared_ptr<std::vector<std::pair<std::string, int>>> modalBatch_;
  bool quit_ = false;
};
