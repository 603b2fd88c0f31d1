// fleetcmd-host's command line (getopt_long): what to run and the world's options.
#pragma once

#include <string>

#include "host_world.h"

struct CommandLine {
  enum class Action { Run, Help, Version, CommandsMarkdown, Fail };
  Action action = Action::Run;
  HostOptions host;
  std::string script;  // "" : the prompt or standard input; "-": standard input
  bool demo = false;
  bool dataGiven = false;
  std::string error;  // with Action::Fail
};

CommandLine ParseCommandLine(int argc, char** argv);
// --help: the usage, every option, and where the files are.
std::string HelpText();
std::string VersionText();
