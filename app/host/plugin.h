// The plug-in as the reference host reaches it: loaded with dlopen, its
// fourteen exports resolved by name. Nothing else of it is visible.
#pragma once

#include <string>

#include "fleetcmd/fleetcmd.h"

struct PluginApi {
  decltype(&Dll_SetLangPath) SetLangPath = nullptr;
  decltype(&Dll_CreateWindow) CreateWindow = nullptr;
  decltype(&Dll_DestroyWindow) DestroyWindow = nullptr;
  decltype(&Dll_MoveWindow) MoveWindow = nullptr;
  decltype(&Dll_GetWindowHeight) GetWindowHeight = nullptr;
  decltype(&Dll_GetWindowWidth) GetWindowWidth = nullptr;
  decltype(&Dll_Create808FunPageWindow) CreateFunPageWindow = nullptr;
  decltype(&Dll_Destroy808FunWindow) DestroyFunWindow = nullptr;
  decltype(&Dll_Move808FunPageWindow) MoveFunPageWindow = nullptr;
  decltype(&Dll_Get808FunWindowSize) GetFunWindowSize = nullptr;
  decltype(&CP808_Msg) Msg = nullptr;
  decltype(&DLL808_CallName) CallName = nullptr;
  decltype(&DLL_WindowMsg) WindowMsg = nullptr;
  decltype(&DLL_808FunPageParam) FunPageParam = nullptr;

  // Loads the library; false and *error when it or an export is missing.
  bool Load(const std::string& path, std::string* error);
  // Unloads the library; every export is unset. Its windows must be gone.
  void Unload();

 private:
  void* handle_ = nullptr;
};
