// The application directory and the plug-in name, worked out from where the
// plug-in and the host executable live.
#include "lang/app_path.h"

#include <dlfcn.h>

#include <filesystem>
#include <mutex>
#include <optional>

#include "text/profile.h"

namespace {
namespace fs = std::filesystem;
constexpr size_t kMaxPath = 260;
constexpr const char* kIniName = "AppPath.INI";
constexpr const char* kSection = "APPPATH";

// Worked out once and kept; the lock makes a first use from two threads safe.
std::mutex g_lock;
std::optional<std::string> g_moduleFile, g_exeFile;
std::string g_appPath, g_pluginName;

std::string ModuleFile() {
  if (g_moduleFile) return *g_moduleFile;
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&GetAppPath), &info) && info.dli_fname) {
    std::error_code ec;
    const fs::path path = fs::absolute(info.dli_fname, ec);
    return ec ? std::string(info.dli_fname) : path.lexically_normal().string();
  }
  return {};
}

std::string ExeFile() {
  if (g_exeFile) return *g_exeFile;
  std::error_code ec;
  const fs::path path = fs::read_symlink("/proc/self/exe", ec);
  return ec ? std::string() : path.string();
}

std::string WithSlash(std::string dir) {
  if (dir.empty() || dir.back() != '/') dir += '/';
  return dir;
}

std::string DirectoryOf(const std::string& file) { return WithSlash(fs::path(file).parent_path().string()); }
}  // namespace

std::string GetAppPath() {
  std::lock_guard guard(g_lock);
  if (!g_appPath.empty()) return g_appPath;
  const std::string moduleDir = DirectoryOf(ModuleFile());
  const auto ini = txt::ProfileFile::Load(moduleDir + kIniName).value_or(txt::ProfileFile());
  if (ini.GetInt(kSection, "SRC_TYPE", 0) != 0) {
    std::string append = ini.GetString(kSection, "APPEND", "", kMaxPath + 1);
    for (char& c : append) {
      if (c == '\\') c = '/';
    }
    g_appPath = append.empty() ? moduleDir : WithSlash(fs::path(moduleDir + append).lexically_normal().string());
  }
  if (g_appPath.empty()) g_appPath = DirectoryOf(ExeFile());
  return g_appPath;
}

std::string GetPluginName() {
  std::lock_guard guard(g_lock);
  if (g_pluginName.empty()) {
    const std::string name = fs::path(ModuleFile()).filename().string();
    g_pluginName = name.substr(0, name.rfind('.'));
  }
  return g_pluginName;
}

void SetModulePathForTest(const std::string& moduleFile, const std::string& exeFile) {
  std::lock_guard guard(g_lock);
  g_moduleFile = moduleFile;
  g_exeFile = exeFile;
  g_appPath.clear();
  g_pluginName.clear();
}
