// The reference host's world: the host's main window that parents the
// plug-in's windows, the loaded plug-in, a virtual clock, and the simulated
// network with answers released in virtual time so that a script gives the
// same lines on every run.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/window.h"
#include "plugin.h"

class HostMainWindow : public plat::Window {
 public:
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
};

struct HostOptions {
  std::string pluginPath;
  std::string languageFile;
  bool fixedTime = false;
};

class HostWorld {
 public:
  static constexpr uint64_t kFixedStartMs = 1'000'000;
  static constexpr uint64_t kRunLimitMs = 24ull * 3600 * 1000;

  bool Start(const HostOptions& options, std::string* error);
  void Stop();

  PluginApi& Api() { return api_; }
  HostMainWindow& Main() { return main_; }
  plat::ManualClock& Clock() { return clock_; }

  // Windows the script works in: the function page window, or a vehicle function window.
  plat::Window* Current() const { return current_; }
  bool OpenFunctionPage(std::string* error);
  bool OpenVehicleWindow(int functionType, std::string* error);
  void* CurrentVehicleWindow() const { return currentVehicle_; }
  plat::Window* FunctionPageWindow() const { return funPage_; }

  // Virtual network delays (answers are released when their time has come).
  void SetDelay(int ms) { delayMs_ = ms; }
  void SetDeviceDelay(const std::string& devIdno, int ms) { deviceDelayMs_[devIdno] = ms; }

  // Runs until every send is over and no answer is pending (or the limit).
  bool Run(uint64_t limitMs = kRunLimitMs);
  // Advances the virtual clock, handling what comes due.
  void Advance(uint64_t ms);

 private:
  void ReleaseDue();
  std::optional<uint64_t> NextDue() const;
  plat::Window* NewestChild(size_t before) const;

  PluginApi api_;
  HostMainWindow main_;
  plat::ManualClock clock_{kFixedStartMs};
  plat::Window* current_ = nullptr;
  plat::Window* funPage_ = nullptr;
  void* currentVehicle_ = nullptr;
  std::vector<void*> vehicleWindows_;
  int delayMs_ = 0;
  std::map<std::string, int> deviceDelayMs_;
  std::map<uint32_t, uint64_t> due_;  // held answer -> virtual time it is due
};
