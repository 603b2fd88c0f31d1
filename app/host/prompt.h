// The interactive prompt: libedit line editing, history kept in the data
// directory between runs, Tab completion of commands and control ids, and the
// device picker asking the user when no answer was given.
#pragma once

#include <string>

#include "script.h"

struct PromptSettings {
  std::string historyFile;  // "" : history for this run only
  std::string banner;
};

// Runs lines typed at the terminal until quit, exit or Ctrl-D.
void RunPrompt(ScriptRunner& runner, const PromptSettings& settings);
