// The plug-in's exported entry points. The host reaches the plug-in only
// through these; nothing throws across them.
#include "fleetcmd/fleetcmd.h"

#include <string>

#include "command/device_caps.h"
#include "command/plugin_log.h"
#include "lang/language.h"
#include "platform/window.h"
#include "plugin/module_state.h"
#include "shell/call_name.h"
#include "shell/dlg_main.h"
#include "shell/function_page.h"
#include "shell/plugin_callbacks.h"
#include "shell/window_sizes.h"
#include "text/encoding.h"

namespace {
constexpr int32_t kOk = 0, kFailed = 1;
constexpr int32_t kFunPageWidth = 900, kFunPageHeight = 815;

template <class F>
int32_t Guarded(const char* name, int32_t onError, F&& body) {
  try {
    return body();
  } catch (const std::exception& e) {
    PluginLog().WriteStrInfoEx(2, "%s failed: %s", name, e.what());
  } catch (...) {
    PluginLog().WriteStrInfoEx(2, "%s failed", name);
  }
  return onError;
}

plat::Window* ParentWindow(FLEETCMD_HWND parent) { return plat::Window::FromHandle(reinterpret_cast<HWND>(parent)); }

// A vehicle function window the host passes back; null for a pointer that
// Dll_CreateWindow did not hand out or that was destroyed since.
CDlgMain* VehicleWindow(void* window) {
  auto* candidate = static_cast<CDlgMain*>(window);
  return module::VehicleWindows().count(candidate) ? candidate : nullptr;
}

}  // namespace

extern "C" {

FLEETCMD_API int32_t FLEETCMD_CALL Dll_SetLangPath(const char16_t* path) {
  return Guarded("Dll_SetLangPath", 1, [&] {
    CLanguage::Instance().SetPath(path ? txt::Utf16ToUtf8(path) : std::string());
    return 1;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL Dll_CreateWindow(FLEETCMD_HWND parent, void** window, int32_t functionType) {
  return Guarded("Dll_CreateWindow", kFailed, [&] {
    plat::Window* parentWindow = ParentWindow(parent);
    if (!parentWindow || !window) return kFailed;
    auto created = std::make_unique<CDlgMain>(functionType);
    if (!created->CreateDlg(parentWindow)) return kFailed;
    created->ShowWindow(plat::SW_SHOW);
    module::VehicleWindows().insert(created.get());
    *window = created.release();
    return kOk;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL Dll_DestroyWindow(void* window) {
  return Guarded("Dll_DestroyWindow", kFailed, [&] {
    CDlgMain* known = VehicleWindow(window);
    if (!known) return kFailed;
    module::VehicleWindows().erase(known);
    delete known;
    return kOk;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL Dll_MoveWindow(void* window) {
  return Guarded("Dll_MoveWindow", kFailed, [&] {
    CDlgMain* known = VehicleWindow(window);
    if (!known) return kFailed;
    known->FitIntoParent();
    return kOk;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL Dll_GetWindowHeight(const int32_t* functionType) {
  return functionType ? PreferredWindowHeight(*functionType) : PreferredWindowHeight(-1);
}

FLEETCMD_API int32_t FLEETCMD_CALL Dll_GetWindowWidth(const int32_t* functionType) {
  return functionType ? PreferredWindowWidth(*functionType) : PreferredWindowWidth(-1);
}

FLEETCMD_API int32_t FLEETCMD_CALL Dll_Create808FunPageWindow(FLEETCMD_HWND parent) {
  return Guarded("Dll_Create808FunPageWindow", kFailed, [&] {
    auto& window = module::FunctionPageWindow();
    if (!window) window = std::make_unique<CDlg808FunctionPage>();
    if (!window->IsWindow()) {
      plat::Window* parentWindow = ParentWindow(parent);
      if (!parentWindow || !window->CreateDlg(parentWindow)) return kFailed;
    }
    window->ShowWindow(plat::SW_SHOW);
    return kOk;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL Dll_Destroy808FunWindow(void) {
  return Guarded("Dll_Destroy808FunWindow", kFailed, [&] {
    auto& window = module::FunctionPageWindow();
    if (!window) return kFailed;
    window.reset();
    return kOk;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL Dll_Move808FunPageWindow(void) {
  return Guarded("Dll_Move808FunPageWindow", kFailed, [&] {
    auto& window = module::FunctionPageWindow();
    // The object without its window (a first call with no parent) is no window to lay out.
    if (!window || !window->IsWindow()) return kFailed;
    window->Layout();
    return kOk;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL Dll_Get808FunWindowSize(int32_t* first, int32_t* second) {
  if (first) *first = kFunPageWidth;
  if (second) *second = kFunPageHeight;
  return kOk;
}

FLEETCMD_API int32_t FLEETCMD_CALL CP808_Msg(int32_t code, intptr_t a, intptr_t b) {
  return Guarded("CP808_Msg", 1, [&] {
    switch (code) {
      case FLEETCMD_MSG_SHOW_NOTIFY:
        ShowNotifyCallback() = {reinterpret_cast<FUNShowNotify>(b), static_cast<uintptr_t>(a)};
        break;
      case FLEETCMD_MSG_SHOW_WINDOW:
        if (plat::Window* window = plat::Window::FromHandle(reinterpret_cast<HWND>(a))) {
          window->ShowWindow(plat::SW_SHOWNORMAL);
          const ShowNotifyCallbackSlot& notify = ShowNotifyCallback();
          if (notify.function && notify.context) {
            int32_t zero = 0;
            notify.function(notify.context, &zero);
          }
        }
        break;
      case FLEETCMD_MSG_POINT_QUERY:
        PointQueryResultCallback() = {reinterpret_cast<FUNPointQueryResult>(a), static_cast<uintptr_t>(b)};
        break;
      default:
        break;
    }
    return 1;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL DLL808_CallName(const char* deviceNumber) {
  return Guarded("DLL808_CallName", kFailed, [&] {
    auto& window = module::CallNameWindow();
    if (!window) {
      window = std::make_unique<CDlgCallName>();
      if (!window->CreateDlg(nullptr)) {
        window.reset();
        return kFailed;
      }
    }
    window->ShowWindow(plat::SW_HIDE);
    window->CallName(deviceNumber ? deviceNumber : "");
    return kOk;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL DLL_WindowMsg(void* window, uint32_t message, uintptr_t wParam, intptr_t lParam) {
  return Guarded("DLL_WindowMsg", kFailed, [&] {
    CDlgMain* known = VehicleWindow(window);
    if (!known) return kFailed;
    known->OnHostMessage(message, wParam, lParam);
    return kOk;
  });
}

FLEETCMD_API int32_t FLEETCMD_CALL DLL_808FunPageParam(int32_t functionType, int32_t deviceId) {
  return Guarded("DLL_808FunPageParam", kOk, [&] {
    DeviceCaps& shared = SharedDeviceCaps();
    const bool deviceChanged = deviceId != shared.sharedDevId;
    auto& window = module::FunctionPageWindow();
    if (deviceChanged) {
      shared.LoadShared(deviceId);
      if (window) window->MarkProtocolUpdatePending();
    }
    if (window) window->SelectFunctionType(functionType, !deviceChanged);
    return kOk;
  });
}

}  // extern "C"
