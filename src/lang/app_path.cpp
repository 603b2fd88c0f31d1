#include "lang/app_path.h"

#include <dlfcn.h>
#include <unistd.h>

#include <filesystem>
#include <optional>

#include "text/profile.h"

namespace {
namespace fs = std::filesystem;
constexpr size_t kMaxPath = 260;

std::optional<std::string> g_moduleFile, g_exeFile;
std::string g_appPath, g_pluginName;

std::string ModuleFile() {
  if (g_moduleFile) return *g_moduleFile;
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(&GetAppPath), &info) && info.dli_fname) {
    std::error_code ec;
    const fs::path path = fs::canonical(info.dli_fname, ec);
    return ec ? std::string(info.dli_fname) : path.string();
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
  if (!g_appPath.empty()) return g_appPath;
  const std::string moduleDir = DirectoryOf(ModuleFile());
  const std::string ini = moduleDir + "AppPath.INI";
  if (txt::GetPrivateProfileInt("APPPATH", "SRC_TYPE", 0, ini) != 0) {
    std::string append = txt::GetPrivateProfileString("APPPATH", "APPEND", "", kMaxPath + 1, ini);
    for (char& c : append) {
      if (c == '\\') c = '/';
    }
    g_appPath = append.empty() ? moduleDir : WithSlash(fs::path(moduleDir + append).lexically_normal().string());
  }
  if (g_appPath.empty()) g_appPath = DirectoryOf(ExeFile());
  return g_appPath;
}

std::string GetPluginName() {
  if (g_pluginName.empty()) g_pluginName = fs::path(ModuleFile()).stem().string();
  return g_pluginName;
}

void SetModulePathForTest(const std::string& moduleFile, const std::string& exeFile) {
  g_moduleFile = moduleFile;
  g_exeFile = exeFile;
  g_appPath.clear();
  g_pluginName.clear();
}
