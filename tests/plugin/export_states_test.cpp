// Every export in every state a host can put the plug-in in: before any
// window, with the function page object but no window (a null parent), a
// window created twice, destroyed, or left behind by its parent; vehicle
// function windows passed back null, unknown or already destroyed. Also what
// the library shows the host: its fourteen exports and nothing else.
#include <dlfcn.h>
#include <elf.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <set>
#include <string>
#include <vector>

#include "fleetcmd/fleetcmd.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"
#include "platform/clock.h"
#include "platform/loop.h"
#include "platform/window.h"

namespace {

const std::set<std::string> kExports = {
    "Dll_SetLangPath",          "Dll_CreateWindow",           "Dll_DestroyWindow",       "Dll_MoveWindow",
    "Dll_GetWindowHeight",      "Dll_GetWindowWidth",         "Dll_Create808FunPageWindow",
    "Dll_Destroy808FunWindow",  "Dll_Move808FunPageWindow",   "Dll_Get808FunWindowSize", "CP808_Msg",
    "DLL808_CallName",          "DLL_WindowMsg",              "DLL_808FunPageParam"};

struct Exports {
  explicit Exports(void* handle) : handle(handle) {}
  template <class F>
  F* Get(const char* name) const {
    return reinterpret_cast<F*>(dlsym(handle, name));
  }
  void* handle;
  decltype(&Dll_Create808FunPageWindow) createPage = Get<decltype(Dll_Create808FunPageWindow)>("Dll_Create808FunPageWindow");
  decltype(&Dll_Move808FunPageWindow) movePage = Get<decltype(Dll_Move808FunPageWindow)>("Dll_Move808FunPageWindow");
  decltype(&Dll_Destroy808FunWindow) destroyPage = Get<decltype(Dll_Destroy808FunWindow)>("Dll_Destroy808FunWindow");
  decltype(&DLL_808FunPageParam) param = Get<decltype(DLL_808FunPageParam)>("DLL_808FunPageParam");
  decltype(&Dll_CreateWindow) createWindow = Get<decltype(Dll_CreateWindow)>("Dll_CreateWindow");
  decltype(&Dll_MoveWindow) moveWindow = Get<decltype(Dll_MoveWindow)>("Dll_MoveWindow");
  decltype(&Dll_DestroyWindow) destroyWindow = Get<decltype(Dll_DestroyWindow)>("Dll_DestroyWindow");
  decltype(&DLL_WindowMsg) windowMsg = Get<decltype(DLL_WindowMsg)>("DLL_WindowMsg");
  decltype(&CP808_Msg) cp808 = Get<decltype(CP808_Msg)>("CP808_Msg");
  decltype(&Dll_SetLangPath) setLangPath = Get<decltype(Dll_SetLangPath)>("Dll_SetLangPath");
  decltype(&Dll_GetWindowHeight) height = Get<decltype(Dll_GetWindowHeight)>("Dll_GetWindowHeight");
  decltype(&Dll_Get808FunWindowSize) funPageSize = Get<decltype(Dll_Get808FunWindowSize)>("Dll_Get808FunWindowSize");
};

// What a step calls, and with which handle.
enum class Call {
  CreatePage, MovePage, DestroyPage, Param,            // the function page window
  CreateWindow, MoveWindow, DestroyWindow, WindowMsg,  // a vehicle function window
  ShowHostWindow,                                      // CP808_Msg 13332
  DestroyHost,                                         // the host destroys the parent window
  SetLangPath, Height, FunPageSize,                    // exports without state, given nulls
};
enum class Arg {
  None,
  Null,      // a null handle or pointer
  Host,      // the host's window (alive unless a step destroyed it)
  Spare,     // a second host window that stays alive
  Gone,      // a window handle that no longer exists
  Created,   // the vehicle window of the last CreateWindow (destroyed or not)
  Stranger,  // a pointer the plug-in never handed out
  NoOut,     // CreateWindow with a null out-argument
};
struct Step {
  Call call;
  Arg arg;
  int32_t result;
};
struct Case {
  const char* what;
  std::vector<Step> steps;
};

const Case kCases[] = {
    {"no window yet",
     {{Call::MovePage, Arg::None, 1}, {Call::DestroyPage, Arg::None, 1}, {Call::Param, Arg::None, 0},
      {Call::MovePage, Arg::None, 1}}},
    {"a null parent makes the object without a window",
     {{Call::CreatePage, Arg::Null, 1}, {Call::MovePage, Arg::None, 1}, {Call::Param, Arg::None, 0},
      {Call::CreatePage, Arg::Null, 1}, {Call::MovePage, Arg::None, 1}, {Call::DestroyPage, Arg::None, 0},
      {Call::DestroyPage, Arg::None, 1}, {Call::MovePage, Arg::None, 1}}},
    {"a window after a first call with a null parent",
     {{Call::CreatePage, Arg::Null, 1}, {Call::CreatePage, Arg::Host, 0}, {Call::MovePage, Arg::None, 0},
      {Call::Param, Arg::None, 0}, {Call::DestroyPage, Arg::None, 0}}},
    {"a parent that does not exist",
     {{Call::CreatePage, Arg::Gone, 1}, {Call::MovePage, Arg::None, 1}, {Call::DestroyPage, Arg::None, 0}}},
    {"created twice, then destroyed",
     {{Call::CreatePage, Arg::Host, 0}, {Call::CreatePage, Arg::Spare, 0}, {Call::CreatePage, Arg::Null, 0},
      {Call::MovePage, Arg::None, 0}, {Call::DestroyPage, Arg::None, 0}, {Call::MovePage, Arg::None, 1},
      {Call::Param, Arg::None, 0}, {Call::DestroyPage, Arg::None, 1}}},
    {"the parent destroyed under the window, then a new parent",
     {{Call::CreatePage, Arg::Host, 0}, {Call::Param, Arg::None, 0}, {Call::DestroyHost, Arg::None, 0},
      {Call::MovePage, Arg::None, 1}, {Call::Param, Arg::None, 0}, {Call::CreatePage, Arg::Null, 1},
      {Call::CreatePage, Arg::Spare, 0}, {Call::MovePage, Arg::None, 0}, {Call::Param, Arg::None, 0},
      {Call::DestroyPage, Arg::None, 0}}},
    {"vehicle windows that cannot be made",
     {{Call::CreateWindow, Arg::Null, 1}, {Call::CreateWindow, Arg::Gone, 1}, {Call::CreateWindow, Arg::NoOut, 1}}},
    {"vehicle window handles the plug-in did not hand out",
     {{Call::MoveWindow, Arg::Null, 1}, {Call::MoveWindow, Arg::Stranger, 1}, {Call::WindowMsg, Arg::Null, 1},
      {Call::WindowMsg, Arg::Stranger, 1}, {Call::DestroyWindow, Arg::Null, 1},
      {Call::DestroyWindow, Arg::Stranger, 1}}},
    {"a vehicle window used after it was destroyed",
     {{Call::CreateWindow, Arg::Host, 0}, {Call::MoveWindow, Arg::Created, 0}, {Call::WindowMsg, Arg::Created, 0},
      {Call::DestroyWindow, Arg::Created, 0}, {Call::MoveWindow, Arg::Created, 1},
      {Call::WindowMsg, Arg::Created, 1}, {Call::DestroyWindow, Arg::Created, 1}}},
    {"a vehicle window whose parent was destroyed",
     {{Call::CreateWindow, Arg::Host, 0}, {Call::DestroyHost, Arg::None, 0}, {Call::MoveWindow, Arg::Created, 0},
      {Call::WindowMsg, Arg::Created, 0}, {Call::DestroyWindow, Arg::Created, 0}}},
    {"host windows to show that are null or gone",
     {{Call::ShowHostWindow, Arg::Null, 1}, {Call::ShowHostWindow, Arg::Gone, 1}}},
    {"null arguments",
     {{Call::SetLangPath, Arg::Null, 1}, {Call::Height, Arg::Null, 690}, {Call::FunPageSize, Arg::Null, 0}}},
};

class ExportStates : public ::testing::Test {
 protected:
  void SetUp() override {
    plugin_ = dlopen(FC_PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(plugin_, nullptr) << dlerror();
    plat::MessageLoop::Instance().SetClock(&clock_);
    hostref::OpenDataDir("");
    ASSERT_TRUE(hostref::LoadFleet(R"({"rights":"all","vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001"}]},
      {"name":"B","devices":[{"id":2,"idno":"91002"}]}]})"));
  }
  void TearDown() override { plat::MessageLoop::Instance().SetClock(nullptr); }

  plat::ManualClock clock_{5000};
  void* plugin_ = nullptr;
};

TEST_F(ExportStates, EveryExportIsSafeInEveryState) {
  const Exports dll(plugin_);
  constexpr uint32_t kLoadDeviceCaps = 9;
  constexpr int32_t kTextMessage = 12;
  int stranger = 0;
  int device = 1;
  for (const Case& c : kCases) {
    plat::Window host, spare, gone;
    ASSERT_TRUE(host.Create(nullptr, 0, "host", RECT{0, 0, 1200, 900}));
    ASSERT_TRUE(spare.Create(nullptr, 0, "spare", RECT{0, 0, 1200, 900}));
    ASSERT_TRUE(gone.Create(nullptr, 0, "gone", RECT{0, 0, 10, 10}));
    const HWND goneHandle = gone.GetSafeHwnd();
    gone.DestroyWindow();
    const auto handle = [&](Arg arg) -> HWND {
      switch (arg) {
        case Arg::Host: return host.GetSafeHwnd();
        case Arg::Spare: return spare.GetSafeHwnd();
        case Arg::Gone: return goneHandle;
        default: return nullptr;
      }
    };
    void* created = nullptr;
    const auto vehicle = [&](Arg arg) -> void* {
      if (arg == Arg::Created) return created;
      return arg == Arg::Stranger ? static_cast<void*>(&stranger) : nullptr;
    };
    for (size_t i = 0; i < c.steps.size(); ++i) {
      const Step& step = c.steps[i];
      const auto parent = reinterpret_cast<FLEETCMD_HWND>(handle(step.arg));
      int32_t result = 0;
      switch (step.call) {
        case Call::CreatePage: result = dll.createPage(parent); break;
        case Call::MovePage: result = dll.movePage(); break;
        case Call::DestroyPage: result = dll.destroyPage(); break;
        case Call::Param: result = dll.param(kTextMessage, device = 3 - device); break;  // a new device each time
        case Call::CreateWindow:
          result = dll.createWindow(parent, step.arg == Arg::NoOut ? nullptr : &created, kTextMessage);
          break;
        case Call::MoveWindow: result = dll.moveWindow(vehicle(step.arg)); break;
        case Call::DestroyWindow: result = dll.destroyWindow(vehicle(step.arg)); break;
        case Call::WindowMsg: result = dll.windowMsg(vehicle(step.arg), kLoadDeviceCaps, 0, 1); break;
        case Call::ShowHostWindow:
          result = dll.cp808(FLEETCMD_MSG_SHOW_WINDOW, reinterpret_cast<intptr_t>(handle(step.arg)), 0);
          break;
        case Call::DestroyHost: host.DestroyWindow(); break;
        case Call::SetLangPath: result = dll.setLangPath(nullptr); break;
        case Call::Height: result = dll.height(nullptr); break;
        case Call::FunPageSize: result = dll.funPageSize(nullptr, nullptr); break;
      }
      EXPECT_EQ(result, step.result) << c.what << ", step " << i + 1;
      EXPECT_TRUE(hostref::RunUntilSettled(60000)) << c.what << ", step " << i + 1;
    }
    dll.destroyPage();  // the next case starts without a function page window
  }
}

// The names of the defined, non-local symbols of a 64-bit ELF shared
// library's dynamic symbol table: what a host can look up in it.
std::set<std::string> VisibleSymbols(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  const std::string image{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  const auto read = [&]<class T>(size_t offset, T& out) {
    if (offset > image.size() || image.size() - offset < sizeof(T)) return false;
    std::memcpy(&out, image.data() + offset, sizeof(T));
    return true;
  };
  std::set<std::string> names;
  Elf64_Ehdr header{};
  if (!read(0, header) || header.e_ident[EI_CLASS] != ELFCLASS64) return names;
  const auto section = [&](size_t index) {
    Elf64_Shdr s{};
    read(header.e_shoff + index * sizeof(Elf64_Shdr), s);
    return s;
  };
  for (size_t i = 0; i < header.e_shnum; ++i) {
    const Elf64_Shdr symbols = section(i);
    if (symbols.sh_type != SHT_DYNSYM) continue;
    const Elf64_Shdr strings = section(symbols.sh_link);
    for (size_t n = 0; n < symbols.sh_size / sizeof(Elf64_Sym); ++n) {
      Elf64_Sym symbol{};
      if (!read(symbols.sh_offset + n * sizeof(Elf64_Sym), symbol)) break;
      if (symbol.st_shndx == SHN_UNDEF || ELF64_ST_BIND(symbol.st_info) == STB_LOCAL) continue;
      if (symbol.st_name >= strings.sh_size) continue;
      names.insert(image.c_str() + strings.sh_offset + symbol.st_name);
    }
  }
  return names;
}

TEST(PluginSymbols, OnlyTheFourteenExportsAreVisible) {
  const std::set<std::string> visible = VisibleSymbols(FC_PLUGIN_PATH);
  std::string extra, missing;
  for (const std::string& name : visible) {
    if (!kExports.count(name)) extra += "\n  " + name;
  }
  for (const std::string& name : kExports) {
    if (!visible.count(name)) missing += " " + name;
  }
  EXPECT_TRUE(extra.empty()) << "visible besides the exports:" << extra;
  EXPECT_TRUE(missing.empty()) << "exports not visible:" << missing;
}

}  // namespace
