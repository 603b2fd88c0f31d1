// The reference host's world on the real clock: HostWorld loads the plug-in
// and the built-in fleet; here the loop runs on the steady clock, answers are
// not held (the simulated terminals answer after their delays on network
// threads), and the desk opens and closes the plug-in's windows itself, so a
// language switch can make them again.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host_world.h"
#include "platform/controls.h"

namespace desk {

struct DeskOptions {
  std::string pluginPath = FC_PLUGIN_PATH;
  std::string languageFile = FC_DATA_DIR "/lang/en.ini";
  int delayMs = 300;    // how long a simulated terminal takes to answer
  std::string dataDir;  // the host's store (configuration, remembered inputs); "" keeps it in memory
};

// A vehicle function window: the plug-in's window inside a frame of the host's.
struct VehicleWindow {
  int functionType = 0;
  std::unique_ptr<HostMainWindow> frame;
  void* window = nullptr;
};

class DeskWorld {
 public:
  static constexpr int kFirstFunction = 12;  // the text message page

  bool Start(const DeskOptions& options, std::string* error);
  void Stop();

  PluginApi& Api() { return host_.Api(); }
  HostMainWindow& Main() { return host_.Main(); }
  const std::string& LanguageFile() const { return languageFile_; }

  // The function page window (made again by a language switch); null before Start.
  plat::Window* FunctionPage() const { return funPage_; }
  bool OpenFunctionPage(std::string* error);
  void CloseFunctionPage();
  // Makes a device current in the function page window and shows a function.
  void ChooseDevice(int devId, int functionType);
  int CurrentDevice() const { return devId_; }
  // The function the page window's tree has selected (-1: none).
  int CurrentFunctionType() const;
  // The function types the function page window's tree offers, in tree order.
  std::vector<int> TreeFunctionTypes() const;

  // Vehicle function windows, each in a frame of its own.
  VehicleWindow* OpenVehicleWindow(int functionType, std::string* error);
  void CloseVehicleWindow(VehicleWindow* window);
  void ResizeVehicleWindow(VehicleWindow* window, int width, int height);
  // Tells the host about vehicle windows opened and closed (the desk shows them).
  void SetVehicleWindowObserver(std::function<void(VehicleWindow*, bool opened)> observer) {
    vehicleObserver_ = std::move(observer);
  }

  // Switches the plug-in's and the host's texts and makes the windows again.
  bool SwitchLanguage(const std::string& languageFile, std::string* error);
  // Loads a fleet file (empty: the built-in fleet); the windows are made again for it.
  bool LoadFleet(const std::string& path, std::string* error);
  // A position query by device number; the answer comes to the point-query observer.
  bool PointQuery(const std::string& devIdno);
  void SetPointQueryObserver(std::function<void(int result, const std::string& record)> observer);

 private:
  plat::TreeView* FunctionTree() const;
  HostWorld host_;
  std::string languageFile_;
  plat::Window* funPage_ = nullptr;
  int devId_ = 0;
  std::vector<std::unique_ptr<VehicleWindow>> vehicles_;
  std::function<void(VehicleWindow*, bool)> vehicleObserver_;
};

}  // namespace desk
