#include "plugin.h"

#include <dlfcn.h>

namespace {
template <class F>
bool Resolve(void* handle, const char* name, F& out, std::string* error) {
  out = reinterpret_cast<F>(dlsym(handle, name));
  if (!out && error) *error = std::string("the plug-in has no export ") + name;
  return out != nullptr;
}
}  // namespace

bool PluginApi::Load(const std::string& path, std::string* error) {
  handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle_) {
    if (error) *error = dlerror();
    return false;
  }
  return Resolve(handle_, "Dll_SetLangPath", SetLangPath, error) &&
         Resolve(handle_, "Dll_CreateWindow", CreateWindow, error) &&
         Resolve(handle_, "Dll_DestroyWindow", DestroyWindow, error) &&
         Resolve(handle_, "Dll_MoveWindow", MoveWindow, error) &&
         Resolve(handle_, "Dll_GetWindowHeight", GetWindowHeight, error) &&
         Resolve(handle_, "Dll_GetWindowWidth", GetWindowWidth, error) &&
         Resolve(handle_, "Dll_Create808FunPageWindow", CreateFunPageWindow, error) &&
         Resolve(handle_, "Dll_Destroy808FunWindow", DestroyFunWindow, error) &&
         Resolve(handle_, "Dll_Move808FunPageWindow", MoveFunPageWindow, error) &&
         Resolve(handle_, "Dll_Get808FunWindowSize", GetFunWindowSize, error) &&
         Resolve(handle_, "CP808_Msg", Msg, error) && Resolve(handle_, "DLL808_CallName", CallName, error) &&
         Resolve(handle_, "DLL_WindowMsg", WindowMsg, error) &&
         Resolve(handle_, "DLL_808FunPageParam", FunPageParam, error);
}

void PluginApi::Unload() {
  void* handle = handle_;
  *this = PluginApi{};
  if (handle) dlclose(handle);
}
