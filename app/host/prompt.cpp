#include "prompt.h"

#include <editline/readline.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>
#include <memory>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "script_args.h"

namespace {
constexpr const char* kPrompt = "fleetcmd> ";
constexpr const char* kPickerPrompt = "devices> ";
constexpr int kHistoryLength = 1000;
constexpr int kPlateField = 28;

// Commands whose words after the first name controls.
constexpr const char* kControlCommands[] = {"text", "check", "choose", "date", "time", "click", "get"};

ScriptRunner* g_runner = nullptr;  // the completion callbacks of libedit take no context
std::vector<std::string> g_candidates;

char* NextCandidate(const char* text, int state) {
  static size_t next = 0;
  if (state == 0) next = 0;
  const size_t length = std::strlen(text);
  while (next < g_candidates.size()) {
    const std::string& candidate = g_candidates[next++];
    if (candidate.compare(0, length, text) == 0) return strdup(candidate.c_str());
  }
  return nullptr;
}

// The first word completes to a command; the word after a control command, or after `help`, to its kind.
char** Complete(const char* text, int start, int /*end*/) {
  rl_attempted_completion_over = 1;  // never file names
  const std::string before(rl_line_buffer, static_cast<size_t>(start));
  const auto [command, rest] = script::Head(before);
  g_candidates.clear();
  if (command.empty()) {
    g_candidates = g_runner->CommandNames();
  } else if (command == "help" && rest.empty()) {
    g_candidates = g_runner->CommandNames();
  } else if (rest.empty()) {
    for (const char* name : kControlCommands) {
      if (command == name) g_candidates = g_runner->ControlIds();
    }
  }
  return rl_completion_matches(text, NextCandidate);
}

// Typing Chinese needs a UTF-8 character type; fall back to C.UTF-8 when the environment has another.
void SetLocale() {
  std::setlocale(LC_ALL, "");
  const char* codeset = nl_langinfo(CODESET);
  if (!codeset || std::strcmp(codeset, "UTF-8") != 0) std::setlocale(LC_CTYPE, "C.UTF-8");
}

// The device picker at the prompt: the fleet's devices, then the user's choice.
std::optional<std::vector<int>> AskPicker() {
  std::printf("The device picker opens. Devices of the fleet:\n");
  for (int id : hostref::DeviceIds()) {
    CDevFunc device = CVehicleBaseMgr::FindDvsDeviceByID(id);
    CVehicleFunc vehicle = CVehicleBaseMgr::FindVechicleFromDevID(id);
    const std::string plate = vehicle.IsValid() ? vehicle.GetDevStr(kPlateField, device.GetData()) : "";
    std::printf("  %s  %s\n", device.GetDevIDNOForChar(), plate.c_str());
  }
  std::printf("Type the device numbers to send to, separated by blanks (an empty line cancels).\n");
  for (;;) {
    std::unique_ptr<char, decltype(&std::free)> line(readline(kPickerPrompt), &std::free);
    if (!line || !*line) return std::nullopt;
    std::vector<int> ids;
    try {
      for (const std::string& word : script::Split(line.get())) {
        ids.push_back(CVehicleBaseMgr::FindDvsDeviceByIDNO(script::FleetDevice(word).c_str()).GetDevID());
      }
    } catch (const script::Error& e) {
      std::fprintf(stderr, "%s\n", e.what.c_str());
      continue;
    }
    if (!ids.empty()) return ids;
  }
}
}  // namespace

void RunPrompt(ScriptRunner& runner, const PromptSettings& settings) {
  SetLocale();
  g_runner = &runner;
  rl_readline_name = "fleetcmd-host";
  rl_attempted_completion_function = Complete;
  using_history();
  stifle_history(kHistoryLength);
  if (!settings.historyFile.empty()) read_history(settings.historyFile.c_str());
  runner.SetPickerAsker(&AskPicker);
  std::fputs(settings.banner.c_str(), stdout);
  std::fflush(stdout);

  int number = 0;
  while (!runner.QuitRequested()) {
    std::unique_ptr<char, decltype(&std::free)> line(readline(kPrompt), &std::free);
    if (!line) {  // Ctrl-D
      std::fputc('\n', stdout);
      break;
    }
    if (*line && script::Head(line.get()).first.size()) add_history(line.get());
    runner.RunLine(line.get(), ++number);
    std::fflush(stdout);
  }
  if (!settings.historyFile.empty() && write_history(settings.historyFile.c_str()) != 0) {
    std::fprintf(stderr, "fleetcmd-host: cannot keep the history in %s\n", settings.historyFile.c_str());
  }
  runner.SetPickerAsker(nullptr);
  g_runner = nullptr;
}
