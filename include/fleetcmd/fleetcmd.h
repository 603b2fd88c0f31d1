/* fleetcmd: the command-page plug-in of a vehicle-monitoring client.
 *
 * The host loads the plug-in and reaches it only through these functions.
 * Wide texts are UTF-16 (char16_t), window handles are the host's UI
 * platform handles, and every function returns 0 for success and 1 for
 * failure unless its comment says otherwise. All of them are called on the
 * host's UI thread; none of them throws.
 */
#ifndef FLEETCMD_FLEETCMD_H
#define FLEETCMD_FLEETCMD_H

#include <stdint.h>

#if defined(_WIN32) && !defined(_WIN64)
#define FLEETCMD_CALL __stdcall
#else
#define FLEETCMD_CALL
#endif

#if defined(_WIN32)
#define FLEETCMD_API __declspec(dllexport)
#else
#define FLEETCMD_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

struct HWND__;
typedef struct HWND__* FLEETCMD_HWND;

/* Switches the language file (section STRING, decimal ids). Always 1. */
FLEETCMD_API int32_t FLEETCMD_CALL Dll_SetLangPath(const char16_t* path);

/* Vehicle function window: one page of one function type. */
FLEETCMD_API int32_t FLEETCMD_CALL Dll_CreateWindow(FLEETCMD_HWND parent, void** window, int32_t functionType);
FLEETCMD_API int32_t FLEETCMD_CALL Dll_DestroyWindow(void* window);
FLEETCMD_API int32_t FLEETCMD_CALL Dll_MoveWindow(void* window);
/* Preferred size of a vehicle function window, in pixels. */
FLEETCMD_API int32_t FLEETCMD_CALL Dll_GetWindowHeight(const int32_t* functionType);
FLEETCMD_API int32_t FLEETCMD_CALL Dll_GetWindowWidth(const int32_t* functionType);
/* Host message to a vehicle function window (1, 2, 4, 5, 7, 9, 65535). */
FLEETCMD_API int32_t FLEETCMD_CALL DLL_WindowMsg(void* window, uint32_t message, uintptr_t wParam, intptr_t lParam);

/* The function page window (tree, page area, result list). */
FLEETCMD_API int32_t FLEETCMD_CALL Dll_Create808FunPageWindow(FLEETCMD_HWND parent);
FLEETCMD_API int32_t FLEETCMD_CALL Dll_Destroy808FunWindow(void);
FLEETCMD_API int32_t FLEETCMD_CALL Dll_Move808FunPageWindow(void);
/* Writes 900 and 815. Always 0. */
FLEETCMD_API int32_t FLEETCMD_CALL Dll_Get808FunWindowSize(int32_t* first, int32_t* second);
/* Makes a device current and selects a function in the function page window. Always 0. */
FLEETCMD_API int32_t FLEETCMD_CALL DLL_808FunPageParam(int32_t functionType, int32_t deviceId);

/* Queues a position query for a device number; answers go to the callback of code 13334. */
FLEETCMD_API int32_t FLEETCMD_CALL DLL808_CallName(const char* deviceNumber);

/* Callback registry. 13329: a = context, b = show-notify function;
 * 13332: a = a host window to show; 13334: a = point-query function, b = context. Always 1. */
FLEETCMD_API int32_t FLEETCMD_CALL CP808_Msg(int32_t code, intptr_t a, intptr_t b);

#define FLEETCMD_MSG_SHOW_NOTIFY 13329
#define FLEETCMD_MSG_SHOW_WINDOW 13332
#define FLEETCMD_MSG_POINT_QUERY 13334

#ifdef __cplusplus
}
#endif

#endif /* FLEETCMD_FLEETCMD_H */
