// fleetcmd-host: the reference host. Loads the plug-in, gives it a built-in
// fleet and simulated terminals, and runs a script, the demo or the
// interactive prompt. `fleetcmd-host --help` lists the options.
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "command_table.h"
#include "demo_script.h"
#include "host/ref/hostref.h"
#include "host_world.h"
#include "options.h"
#include "paths.h"
#include "prompt.h"
#include "script.h"

namespace {
constexpr int kExitOk = 0;
constexpr int kExitLineFailed = 1;
constexpr int kExitUsage = 2;

// The store: --data, else a fresh temporary directory for --fixed-time runs
// (so they never depend on an earlier run), else the user's data directory.
struct DataDir {
  std::string path;
  bool temporary = false;
  ~DataDir() {
    if (temporary) paths::RemoveTree(path);
  }
};

std::string Banner(const HostOptions& options) {
  return "fleetcmd-host " FC_VERSION ": the plug-in " + options.pluginPath + "\n  language " + options.languageFile +
         ", " + std::to_string(hostref::DeviceIds().size()) + " devices in the built-in fleet, store in " +
         (options.dataDir.empty() ? std::string("memory") : options.dataDir) +
         "\n  Type `help` for the commands, Tab to complete, `quit` or Ctrl-D to leave.\n";
}
}  // namespace

int main(int argc, char** argv) {
  CommandLine line = ParseCommandLine(argc, argv);
  switch (line.action) {
    case CommandLine::Action::Fail:
      std::fprintf(stderr, "fleetcmd-host: %s\n", line.error.c_str());
      return kExitUsage;
    case CommandLine::Action::Help:
      std::fputs(HelpText().c_str(), stdout);
      return kExitOk;
    case CommandLine::Action::Version:
      std::fputs(VersionText().c_str(), stdout);
      return kExitOk;
    case CommandLine::Action::CommandsMarkdown:
      std::fputs(commands::Markdown().c_str(), stdout);
      return kExitOk;
    case CommandLine::Action::Run:
      break;
  }

  std::ifstream file;
  if (!line.demo && !line.script.empty() && line.script != "-") {
    file.open(line.script);
    if (!file) {
      std::fprintf(stderr, "fleetcmd-host: cannot read the script %s (check the name, or use --script - for standard input)\n",
                   line.script.c_str());
      return kExitUsage;
    }
  }

  DataDir data;
  if (!line.dataGiven) {
    data.temporary = line.host.fixedTime;
    data.path = data.temporary ? paths::MakeTempDir() : paths::UserDataDir();
    line.host.dataDir = data.path;
  }

  HostWorld world;
  std::string error;
  if (!world.Start(line.host, &error)) {
    std::fprintf(stderr, "fleetcmd-host: %s\n", error.c_str());
    world.Stop();
    return kExitUsage;
  }
  ScriptRunner runner(world);
  if (line.demo) {
    std::istringstream in(kDemoScript);
    runner.RunStream(in);
  } else if (file.is_open()) {
    runner.RunStream(file);
  } else if (line.script.empty() && isatty(STDIN_FILENO)) {
    const std::string history = line.host.dataDir.empty() ? "" : (std::filesystem::path(line.host.dataDir) / "history").string();
    RunPrompt(runner, {history, Banner(line.host)});
  } else {
    runner.RunStream(std::cin);
  }
  world.Stop();
  return runner.AnyFailed() ? kExitLineFailed : kExitOk;
}
