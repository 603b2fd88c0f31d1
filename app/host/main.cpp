// fleetcmd-host: the reference host. Loads the plug-in, gives it a built-in
// fleet and simulated terminals, and runs a script (or the interactive prompt).
//
//   fleetcmd-host [--script FILE|-] [--demo] [--fixed-time] [--lang FILE] [--plugin FILE]
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>

#include "demo_script.h"
#include "host_world.h"
#include "script.h"

namespace {
void Usage() {
  std::fprintf(stderr,
               "usage: fleetcmd-host [--script FILE|-] [--demo] [--fixed-time] [--lang FILE] [--plugin FILE]\n"
               "  without --script: the prompt on a terminal, else the script on standard input\n");
}
}  // namespace

int main(int argc, char** argv) {
  HostOptions options{FC_PLUGIN_PATH, FC_DATA_DIR "/lang/en.ini", false};
  std::string script;
  bool demo = false;
  for (int i = 1; i < argc; ++i) {
    const std::string arg = argv[i];
    const bool hasValue = i + 1 < argc;
    if (arg == "--script" && hasValue) script = argv[++i];
    else if (arg == "--lang" && hasValue) options.languageFile = argv[++i];
    else if (arg == "--plugin" && hasValue) options.pluginPath = argv[++i];
    else if (arg == "--fixed-time") options.fixedTime = true;
    else if (arg == "--demo") demo = true;
    else {
      Usage();
      return 2;
    }
  }

  HostWorld world;
  std::string error;
  if (!world.Start(options, &error)) {
    std::fprintf(stderr, "fleetcmd-host: %s\n", error.c_str());
    return 1;
  }
  ScriptRunner runner(world);
  if (demo) {
    std::istringstream in(kDemoScript);
    runner.RunStream(in, false);
  } else if (script.empty() || script == "-") {
    runner.RunStream(std::cin, script.empty() && isatty(STDIN_FILENO));
  } else {
    std::ifstream in(script);
    if (!in) {
      std::fprintf(stderr, "fleetcmd-host: cannot read %s\n", script.c_str());
      world.Stop();
      return 1;
    }
    runner.RunStream(in, false);
  }
  world.Stop();
  return 0;
}
