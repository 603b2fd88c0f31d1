#include "paths.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace paths {
namespace {
// The program's directory, from the running executable.
fs::path ProgramDir() {
  std::error_code error;
  const fs::path exe = fs::read_symlink("/proc/self/exe", error);
  return error ? fs::path() : exe.parent_path();
}

// An installed layout first (paths relative to the program's directory, set
// at configure time from the install prefix), else the build tree's.
std::string Pick(const char* relativeToProgram, const char* buildTree) {
  const fs::path dir = ProgramDir();
  std::error_code error;
  if (!dir.empty()) {
    const fs::path installed = (dir / relativeToProgram).lexically_normal();
    if (fs::exists(installed, error)) return installed.string();
  }
  return buildTree;
}
}  // namespace

std::string LanguageDir() { return Pick(FC_INSTALLED_LANG_DIR, FC_DATA_DIR "/lang"); }
std::string DefaultLanguageFile() { return (fs::path(LanguageDir()) / "en.ini").string(); }
std::string DefaultPlugin() { return Pick(FC_INSTALLED_PLUGIN, FC_PLUGIN_PATH); }

std::string UserDataDir() {
  if (const char* xdg = std::getenv("XDG_DATA_HOME"); xdg && *xdg == '/') return (fs::path(xdg) / "fleetcmd").string();
  if (const char* home = std::getenv("HOME"); home && *home) return (fs::path(home) / ".local/share/fleetcmd").string();
  return "";
}

std::string MakeTempDir() {
  std::error_code error;
  fs::path base = fs::temp_directory_path(error);
  if (error) base = "/tmp";
  std::string pattern = (base / "fleetcmd-host.XXXXXX").string();
  return mkdtemp(pattern.data()) ? pattern : "";
}

void RemoveTree(const std::string& dir) {
  std::error_code error;
  if (!dir.empty()) fs::remove_all(dir, error);
}
}  // namespace paths
