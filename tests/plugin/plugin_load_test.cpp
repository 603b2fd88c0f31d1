// The plug-in as a host sees it: loaded with dlopen, reached only through its
// fourteen exports and its windows.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <algorithm>
#include <functional>

#include "fleetcmd/fleetcmd.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"
#include "platform/controls.h"
#include "platform/loop.h"
#include "text/encoding.h"

namespace {

struct Plugin {
  void* handle = nullptr;
  template <class F>
  F* Get(const char* name) {
    return reinterpret_cast<F*>(dlsym(handle, name));
  }
};

// The record the plug-in hands the point-query callback starts with the device number.
struct Answer {
  int32_t result;
  std::string devIdno;
};
std::vector<Answer> g_answers;
int g_shown = 0;

void CALLBACK OnPointQuery(int32_t result, void* request, uintptr_t) {
  g_answers.push_back({result, static_cast<const char*>(request)});
}
void CALLBACK OnShown(uintptr_t, int32_t* value) { g_shown += 1 + *value; }

plat::Window* FindControl(plat::Window& root, int id, bool shownOnly) {
  for (plat::Window* child : root.Children()) {
    if (child->GetDlgCtrlID() == id && (!shownOnly || child->IsWindowVisible())) return child;
    if (plat::Window* found = FindControl(*child, id, shownOnly)) return found;
  }
  return nullptr;
}

class HostWindow : public plat::Window {
 public:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    received.push_back({message, w, l});
    return 0;
  }
  struct Message {
    UINT msg;
    WPARAM w;
    LPARAM l;
  };
  std::vector<Message> received;
};

TEST(PluginBoundary, DrivenThroughItsExportsAsAHostDoes) {
  const char* names[] = {"Dll_SetLangPath", "Dll_CreateWindow", "Dll_DestroyWindow", "Dll_MoveWindow",
                         "Dll_GetWindowHeight", "Dll_GetWindowWidth", "Dll_Create808FunPageWindow",
                         "Dll_Destroy808FunWindow", "Dll_Move808FunPageWindow", "Dll_Get808FunWindowSize",
                         "CP808_Msg", "DLL808_CallName", "DLL_WindowMsg", "DLL_808FunPageParam"};
  Plugin plugin{dlopen(FC_PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL)};
  ASSERT_NE(plugin.handle, nullptr) << dlerror();
  for (const char* name : names) EXPECT_NE(dlsym(plugin.handle, name), nullptr) << name;
  EXPECT_EQ(dlsym(plugin.handle, "_ZN8CBaseDlg9StartSendEi"), nullptr) << "only the exports are visible";

  plat::ManualClock clock(5000);
  plat::MessageLoop::Instance().SetClock(&clock);
  hostref::OpenDataDir("");
  ASSERT_TRUE(hostref::LoadFleet(R"({"rights":"all","vehicles":[
    {"name":"A","devices":[{"id":1,"idno":"91001"}]},{"name":"B","devices":[{"id":2,"idno":"91002"}]},
    {"name":"C","devices":[{"id":3,"idno":"91003"}]}]})"));
  const std::string lang = testing::TempDir() + "plugin-lang.ini";
  std::ofstream(lang) << "[STRING]\n11008=ok\n12812=no device\n";

  const std::u16string langWide = txt::Utf8ToUtf16(lang);
  EXPECT_EQ(plugin.Get<decltype(Dll_SetLangPath)>("Dll_SetLangPath")(langWide.c_str()), 1);
  auto cp808 = plugin.Get<decltype(CP808_Msg)>("CP808_Msg");
  EXPECT_EQ(cp808(FLEETCMD_MSG_SHOW_NOTIFY, 9, reinterpret_cast<intptr_t>(&OnShown)), 1);
  EXPECT_EQ(cp808(FLEETCMD_MSG_POINT_QUERY, reinterpret_cast<intptr_t>(&OnPointQuery), 0), 1);

  HostWindow host;
  ASSERT_TRUE(host.Create(nullptr, 0, "host", RECT{0, 0, 1200, 900}));
  cp808(FLEETCMD_MSG_SHOW_WINDOW, 0, 0);
  EXPECT_EQ(g_shown, 0) << "a null window is not shown";
  cp808(FLEETCMD_MSG_SHOW_WINDOW, reinterpret_cast<intptr_t>(host.GetSafeHwnd()), 0);
  EXPECT_EQ(g_shown, 1);

  int32_t width = 0, height = 0;
  EXPECT_EQ(plugin.Get<decltype(Dll_Get808FunWindowSize)>("Dll_Get808FunWindowSize")(&width, &height), 0);
  EXPECT_EQ(width, 900);
  EXPECT_EQ(height, 815);
  const int32_t type50 = 50;
  EXPECT_EQ(plugin.Get<decltype(Dll_GetWindowHeight)>("Dll_GetWindowHeight")(&type50), 410);

  auto hwnd = reinterpret_cast<FLEETCMD_HWND>(host.GetSafeHwnd());
  EXPECT_EQ(plugin.Get<decltype(Dll_Create808FunPageWindow)>("Dll_Create808FunPageWindow")(hwnd), 0);
  EXPECT_EQ(plugin.Get<decltype(Dll_Move808FunPageWindow)>("Dll_Move808FunPageWindow")(), 0);
  EXPECT_EQ(plugin.Get<decltype(DLL_808FunPageParam)>("DLL_808FunPageParam")(12, 1), 0);

  // A text message to three devices through the batch-set button and the picker.
  plat::Window* textBox = FindControl(host, 4167, true);
  ASSERT_NE(textBox, nullptr) << "the text message page is shown";
  static_cast<plat::Edit*>(textBox)->UserType("hello");
  hostref::SetPickerAnswer(std::vector<int>{1, 2, 3});
  auto* batchSet = static_cast<plat::Button*>(FindControl(host, 1602, true));
  ASSERT_NE(batchSet, nullptr);
  batchSet->Click();
  ASSERT_TRUE(hostref::RunUntilSettled(60000));
  ASSERT_EQ(hostref::net::Sent().size(), 3u);
  for (const auto& sent : hostref::net::Sent()) EXPECT_EQ(sent.param, R"({"Flag":0,"TextInfo":"hello","TextType":1})");
  bool told = false;
  for (const auto& m : host.received) told |= m.msg == 13336 && m.w == 1 && m.l == 12;
  EXPECT_TRUE(told) << "the host hears which function was chosen";

  // The same device and function again selects nothing; a new device reselects even the same function.
  auto param = plugin.Get<decltype(DLL_808FunPageParam)>("DLL_808FunPageParam");
  const auto chosen = [&] {
    return std::count_if(host.received.begin(), host.received.end(), [](const auto& m) { return m.msg == 13336; });
  };
  const auto before = chosen();
  param(12, 1);
  EXPECT_EQ(chosen(), before);
  param(12, 2);
  EXPECT_EQ(chosen(), before + 1);
  param(58, 2);
  EXPECT_EQ(host.received.back().l, 59) << "58 selects its first function, 59";
  EXPECT_EQ(plugin.Get<decltype(Dll_Create808FunPageWindow)>("Dll_Create808FunPageWindow")(nullptr), 0)
      << "a second call shows the window it has, whatever the parent";

  // Three point queries become one send with three callbacks.
  hostref::net::ClearSent();
  plugin.Get<decltype(DLL_808FunPageParam)>("DLL_808FunPageParam")(12, 0);
  auto callName = plugin.Get<decltype(DLL808_CallName)>("DLL808_CallName");
  for (const char* dev : {"91001", "91002", "91003"}) EXPECT_EQ(callName(dev), 0);
  ASSERT_TRUE(hostref::RunUntilSettled(60000));
  EXPECT_EQ(hostref::net::Sent().size(), 3u);
  ASSERT_EQ(g_answers.size(), 3u);

  // A vehicle function window for an unknown type stays empty but works.
  void* window = nullptr;
  EXPECT_EQ(plugin.Get<decltype(Dll_CreateWindow)>("Dll_CreateWindow")(hwnd, &window, 70001), 0);
  EXPECT_EQ(plugin.Get<decltype(DLL_WindowMsg)>("DLL_WindowMsg")(window, 7, 0, 0), 0);
  EXPECT_EQ(plugin.Get<decltype(Dll_DestroyWindow)>("Dll_DestroyWindow")(window), 0);
  EXPECT_EQ(plugin.Get<decltype(Dll_DestroyWindow)>("Dll_DestroyWindow")(nullptr), 1);
  EXPECT_EQ(plugin.Get<decltype(Dll_Destroy808FunWindow)>("Dll_Destroy808FunWindow")(), 0);
  EXPECT_EQ(plugin.Get<decltype(Dll_Destroy808FunWindow)>("Dll_Destroy808FunWindow")(), 1);
  plat::MessageLoop::Instance().SetClock(nullptr);
}

}  // namespace
