#include "host_world.h"

#include <algorithm>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "output.h"
#include "platform/controls.h"
#include "platform/loop.h"
#include "text/encoding.h"

namespace {
constexpr RECT kMainRect{0, 0, 1280, 960};
constexpr SYSTEMTIME kFixedTime{2026, 1, 4, 15, 9, 30, 0, 0};
constexpr UINT kFirstHostMessage = 1000;
constexpr UINT kPointQueryAnswer = 13339;

HostWorld* g_world = nullptr;

void CALLBACK OnPointQuery(int32_t result, void* request, uintptr_t) {
  // The record starts with the device number.
  out::Line("CALLBACK " + std::to_string(result) + " " + static_cast<const char*>(request));
}

void CALLBACK OnShown(uintptr_t, int32_t*) {}

// A new row is drawn at the top of a result list: print it.
void OnRowDrawn(plat::ListView& list, int first, int last) {
  if (first != 0 || last != 0 || list.GetDlgCtrlID() != 4399 || list.GetItemCount() == 0) return;
  std::string line = "ROW ";
  for (int c = 0; c < 8; ++c) line += (c ? "|" : "") + out::EscapeControls(list.GetItemText(0, c));
  out::Line(line);
}
}  // namespace

LRESULT HostMainWindow::WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) {
  if (msg >= kFirstHostMessage || msg == WM_CLOSE) {
    // A point-query answer carries the finished request, which starts with the device number.
    const std::string w = msg == kPointQueryAnswer && wParam ? std::string(reinterpret_cast<const char*>(wParam))
                                                              : std::to_string(wParam);
    out::Line("HOSTMSG " + std::to_string(msg) + " " + w + " " + std::to_string(lParam));
    return 0;
  }
  return plat::Window::WindowProc(msg, wParam, lParam);
}

bool HostWorld::Start(const HostOptions& options, std::string* error) {
  g_world = this;
  plat::MessageLoop::Instance().SetClock(&clock_);
  if (options.fixedTime) plat::SetFixedLocalTime(kFixedTime);
  hostref::OpenDataDir("");
  hostref::LoadDefaultFleet();
  hostref::SetTipSink([](const hostref::Tip& tip) { out::Line("TIP " + out::EscapeControls(tip.text)); });
  hostref::net::Reset();
  hostref::terminals::Install();
  hostref::net::SetHeld(true);
  hostref::net::SetOpenObserver([this](const hostref::SentRequest& request) {
    const auto command = request.envelope.find("\"Command\":");
    const int number = command == std::string::npos ? -1 : std::atoi(request.envelope.c_str() + command + 10);
    char hex[16];
    std::snprintf(hex, sizeof hex, "0x%04X", static_cast<unsigned>(number));
    out::Line("SEND " + request.devIdno + " " + hex + " " + out::EscapeBytes(request.param));
    auto delay = deviceDelayMs_.find(request.devIdno);
    due_[request.handle] = clock_.NowMs() + static_cast<uint64_t>(delay != deviceDelayMs_.end() ? delay->second : delayMs_);
  });
  plat::ListView::SetRedrawObserver(&OnRowDrawn);

  if (!api_.Load(options.pluginPath, error)) return false;
  main_.Create(nullptr, 0, "fleetcmd-host", kMainRect);
  if (!options.languageFile.empty()) {
    const std::u16string path = txt::Utf8ToUtf16(options.languageFile);
    api_.SetLangPath(path.c_str());
    hostref::LoadHostTexts(options.languageFile);
  }
  api_.Msg(FLEETCMD_MSG_SHOW_NOTIFY, 0, reinterpret_cast<intptr_t>(&OnShown));
  api_.Msg(FLEETCMD_MSG_POINT_QUERY, reinterpret_cast<intptr_t>(&OnPointQuery), 0);
  return true;
}

void HostWorld::Stop() {
  for (void* window : vehicleWindows_) api_.DestroyWindow(window);
  vehicleWindows_.clear();
  if (funPage_) api_.DestroyFunWindow();
  funPage_ = nullptr;
  current_ = nullptr;
  hostref::net::SetHeld(false);
  hostref::net::ReleaseAll();
  hostref::net::WaitIdle();
  plat::MessageLoop::Instance().RunPending();
  hostref::net::SetOpenObserver(nullptr);
  plat::ListView::SetRedrawObserver(nullptr);
  main_.DestroyWindow();
  plat::MessageLoop::Instance().SetClock(nullptr);
}

plat::Window* HostWorld::NewestChild(size_t before) const {
  return main_.Children().size() > before ? main_.Children().back() : nullptr;
}

bool HostWorld::OpenFunctionPage(std::string* error) {
  const size_t before = main_.Children().size();
  const auto parent = reinterpret_cast<FLEETCMD_HWND>(main_.GetSafeHwnd());
  if (api_.CreateFunPageWindow(parent) != 0) {
    if (error) *error = "the function page window could not be created";
    return false;
  }
  if (!funPage_) funPage_ = NewestChild(before);
  api_.MoveFunPageWindow();
  current_ = funPage_;
  currentVehicle_ = nullptr;
  return true;
}

bool HostWorld::OpenVehicleWindow(int functionType, std::string* error) {
  const size_t before = main_.Children().size();
  void* window = nullptr;
  if (api_.CreateWindow(reinterpret_cast<FLEETCMD_HWND>(main_.GetSafeHwnd()), &window, functionType) != 0) {
    if (error) *error = "the vehicle function window could not be created";
    return false;
  }
  api_.MoveWindow(window);
  vehicleWindows_.push_back(window);
  currentVehicle_ = window;
  current_ = NewestChild(before);
  return true;
}

void HostWorld::ReleaseDue() {
  for (uint32_t handle : hostref::net::HeldHandles()) {
    auto due = due_.find(handle);
    if (due != due_.end() && due->second > clock_.NowMs()) continue;
    hostref::net::Release(handle);
    if (due != due_.end()) due_.erase(due);
  }
}

std::optional<uint64_t> HostWorld::NextDue() const {
  std::optional<uint64_t> next = plat::MessageLoop::Instance().NextTimerDue();
  for (uint32_t handle : hostref::net::HeldHandles()) {
    auto due = due_.find(handle);
    const uint64_t at = due == due_.end() ? clock_.NowMs() : due->second;
    if (!next || at < *next) next = at;
  }
  return next;
}

bool HostWorld::Run(uint64_t limitMs) {
  auto& loop = plat::MessageLoop::Instance();
  const uint64_t end = clock_.NowMs() + limitMs;
  for (;;) {
    do {
      ReleaseDue();
      loop.RunPending();
    } while (loop.HasPosted());
    const auto next = NextDue();
    if (!next) return true;
    if (*next > end) return false;
    clock_.Set(std::max(*next, clock_.NowMs()));
  }
}

void HostWorld::Advance(uint64_t ms) {
  const uint64_t end = clock_.NowMs() + ms;
  Run(ms);
  clock_.Set(std::max(end, clock_.NowMs()));
  Run(0);
}
