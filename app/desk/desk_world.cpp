#include "desk_world.h"

#include <algorithm>
#include <deque>

#include "fleet.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "platform/controls.h"
#include "platform/loop.h"
#include "text/encoding.h"

namespace desk {
namespace {
// Room the host's frame keeps around a vehicle function window (the window fits itself below t(30), above 8).
constexpr int kFrameTop = 30, kFrameBottom = 8;

std::function<void(int, const std::string&)>& PointQueryObserver() {
  static std::function<void(int, const std::string&)> observer;
  return observer;
}

void CALLBACK OnPointQuery(int32_t result, void* request, uintptr_t) {
  // The record starts with the device number.
  if (auto& observer = PointQueryObserver()) observer(result, request ? static_cast<const char*>(request) : "");
}

FLEETCMD_HWND Handle(plat::Window& window) { return reinterpret_cast<FLEETCMD_HWND>(window.GetSafeHwnd()); }
}  // namespace

bool DeskWorld::Start(const DeskOptions& options, std::string* error) {
  HostOptions hostOptions{options.pluginPath, options.languageFile, options.dataDir, false};
  if (!host_.Start(hostOptions, error)) return false;
  languageFile_ = options.languageFile;
  // Real time: the steady clock, and answers released by the network threads themselves.
  plat::MessageLoop::Instance().SetClock(nullptr);
  hostref::net::SetOpenObserver(nullptr);
  hostref::net::SetHeld(false);
  hostref::net::SetDelayMs(options.delayMs);
  plat::ListView::SetRedrawObserver(nullptr);
  Api().Msg(FLEETCMD_MSG_POINT_QUERY, reinterpret_cast<intptr_t>(&OnPointQuery), 0);
  return true;
}

void DeskWorld::Stop() {
  while (!vehicles_.empty()) CloseVehicleWindow(vehicles_.back().get());
  CloseFunctionPage();
  PointQueryObserver() = nullptr;
  host_.Stop();
}

bool DeskWorld::OpenFunctionPage(std::string* error) {
  if (funPage_) return true;
  const size_t before = Main().Children().size();
  if (Api().CreateFunPageWindow(Handle(Main())) != 0 || Main().Children().size() <= before) {
    if (error) *error = "the function page window could not be created";
    return false;
  }
  funPage_ = Main().Children().back();
  Api().MoveFunPageWindow();
  return true;
}

void DeskWorld::CloseFunctionPage() {
  if (!funPage_) return;
  Api().DestroyFunWindow();
  funPage_ = nullptr;
}

void DeskWorld::ChooseDevice(int devId, int functionType) {
  devId_ = devId;
  Api().FunPageParam(functionType, devId);
}

plat::TreeView* DeskWorld::FunctionTree() const {
  if (!funPage_) return nullptr;
  std::deque<plat::Window*> queue{funPage_};
  while (!queue.empty()) {
    plat::Window* w = queue.front();
    queue.pop_front();
    if (auto* tree = dynamic_cast<plat::TreeView*>(w)) return tree;
    queue.insert(queue.end(), w->Children().begin(), w->Children().end());
  }
  return nullptr;
}

int DeskWorld::CurrentFunctionType() const {
  plat::TreeView* tree = FunctionTree();
  if (!tree || !tree->GetSelectedItem()) return -1;
  return static_cast<int>(static_cast<intptr_t>(tree->GetItemData(tree->GetSelectedItem())));
}

std::vector<int> DeskWorld::TreeFunctionTypes() const {
  std::vector<int> types;
  plat::TreeView* tree = FunctionTree();
  if (!tree) return types;
  // Group items carry no function (a negative number).
  for (plat::HTREEITEM item : tree->Walk()) {
    const auto type = static_cast<intptr_t>(tree->GetItemData(item));
    if (type >= 0 && std::find(types.begin(), types.end(), type) == types.end()) types.push_back(static_cast<int>(type));
  }
  return types;
}

VehicleWindow* DeskWorld::OpenVehicleWindow(int functionType, std::string* error) {
  auto vehicle = std::make_unique<VehicleWindow>();
  vehicle->functionType = functionType;
  vehicle->frame = std::make_unique<HostMainWindow>();
  const int32_t type = functionType;
  const RECT rect{0, 0, Api().GetWindowWidth(&type) + 2, Api().GetWindowHeight(&type) + plat::t(kFrameTop) + kFrameBottom};
  vehicle->frame->Create(nullptr, 0, "", rect);
  if (Api().CreateWindow(Handle(*vehicle->frame), &vehicle->window, functionType) != 0 || !vehicle->window) {
    if (error) *error = "no vehicle function window for function " + std::to_string(functionType);
    return nullptr;
  }
  Api().MoveWindow(vehicle->window);
  vehicles_.push_back(std::move(vehicle));
  if (vehicleObserver_) vehicleObserver_(vehicles_.back().get(), true);
  return vehicles_.back().get();
}

void DeskWorld::ResizeVehicleWindow(VehicleWindow* window, int width, int height) {
  window->frame->MoveWindow({0, 0, width, height});
  Api().MoveWindow(window->window);
}

void DeskWorld::CloseVehicleWindow(VehicleWindow* window) {
  auto it = std::find_if(vehicles_.begin(), vehicles_.end(), [&](const auto& v) { return v.get() == window; });
  if (it == vehicles_.end()) return;
  std::unique_ptr<VehicleWindow> vehicle = std::move(*it);
  vehicles_.erase(it);
  if (vehicleObserver_) vehicleObserver_(vehicle.get(), false);
  Api().DestroyWindow(vehicle->window);
  vehicle->frame->DestroyWindow();
}

bool DeskWorld::SwitchLanguage(const std::string& languageFile, std::string* error) {
  if (!hostref::LoadHostTexts(languageFile)) {
    if (error) *error = "cannot read " + languageFile;
    return false;
  }
  hostref::LoadExportTexts(languageFile);
  languageFile_ = languageFile;
  const std::u16string path = txt::Utf8ToUtf16(languageFile);
  Api().SetLangPath(path.c_str());
  // The windows take their texts when they are made: make them again.
  std::vector<int> types;
  for (const auto& v : vehicles_) types.push_back(v->functionType);
  while (!vehicles_.empty()) CloseVehicleWindow(vehicles_.back().get());
  const int type = CurrentFunctionType();
  CloseFunctionPage();
  if (!OpenFunctionPage(error)) return false;
  ChooseDevice(devId_, type >= 0 ? type : kFirstFunction);
  for (int t : types) OpenVehicleWindow(t, nullptr);
  return true;
}

bool DeskWorld::LoadFleet(const std::string& path, std::string* error) {
  if (path.empty()) hostref::LoadDefaultFleet();
  else if (!hostref::LoadFleetFile(path, error)) return false;
  ResetOnline();
  const std::vector<int> ids = hostref::DeviceIds();
  const int type = CurrentFunctionType();
  CloseFunctionPage();
  if (!OpenFunctionPage(error)) return false;
  ChooseDevice(ids.empty() ? 0 : ids.front(), type >= 0 ? type : kFirstFunction);
  return true;
}

bool DeskWorld::PointQuery(const std::string& devIdno) { return Api().CallName(devIdno.c_str()) == 0; }

void DeskWorld::SetPointQueryObserver(std::function<void(int, const std::string&)> observer) {
  PointQueryObserver() = std::move(observer);
}

}  // namespace desk
