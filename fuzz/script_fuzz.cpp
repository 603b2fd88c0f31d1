// The reference host's script language on arbitrary lines: the host world
// (virtual clock, held network, the plug-in loaded from the build) runs each
// line as a script would. Commands that name files (lang, fleet, export) or
// reload the plug-in (restart) are left out: they reach the disk, not the
// language. After each input the windows it opened are closed and the dialogs
// it queued forgotten.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <sstream>
#include <string>

#include "host/ref/hostref.h"
#include "host_world.h"
#include "platform/dialog.h"
#include "output.h"
#include "script.h"

namespace {
constexpr int kMaxLines = 64;
constexpr int kMaxWindows = 16;

bool LeftOut(const std::string& line) {
  std::istringstream words(line);
  std::string command;
  words >> command;
  for (const char* name : {"lang", "fleet", "export", "restart"}) {
    if (command == name) return true;
  }
  return false;
}

HostWorld& World() {
  static HostWorld* world = [] {
    out::SetStream(std::fopen("/dev/null", "w"));
    auto* w = new HostWorld;
    std::string error;
    if (!w->Start({FC_PLUGIN_PATH, FC_SOURCE_DIR "/data/lang/en.ini", "", true}, &error)) {
      std::fprintf(stderr, "script_fuzz: %s\n", error.c_str());
      std::abort();
    }
    return w;
  }();
  return *world;
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  HostWorld& world = World();
  ScriptRunner runner(world);
  std::istringstream in(std::string(reinterpret_cast<const char*>(data), size));
  std::string line;
  for (int number = 1; number <= kMaxLines && std::getline(in, line) && !runner.QuitRequested(); ++number) {
    if (!LeftOut(line)) runner.RunLine(line, number);
  }
  world.Run();
  for (int i = 0; i < kMaxWindows && world.Current(); ++i) world.DestroyCurrent();
  world.Run();
  // Dialogs queued by `modal` lines belong to this input's runner.
  plat::modal::Clear();
  hostref::ClearLog();
  return 0;
}
