// The reference host's world: the host's main window that parents the
// plug-in's windows, the loaded plug-in, a virtual clock, and the simulated
// network with answers released in virtual time so that a script gives the
// same lines on every run.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "gateway/termsim/host_link.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "plugin.h"

class HostMainWindow : public plat::Window {
 public:
  LRESULT WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) override;
};

// Where requests go: the simulated platform answers them directly, or
// carries each one over the terminals' binary protocol and back, or hands
// each to a gateway (one started in this process with simulated binary
// terminals, or a running one's control port).
enum class NetMode { Sim, Loop, Gateway };

struct HostOptions {
  std::string pluginPath;
  std::string languageFile;
  std::string dataDir;  // the host's store (SQLite); "" keeps it in memory
  bool fixedTime = false;
  NetMode net = NetMode::Sim;
  std::string gateway = "";  // with NetMode::Gateway: "gw" or "gw://HOST:PORT"
};

// Output lines a script switches on: ENVELOPE, ANSWER, LOG and PICKER.
// Answers and log lines are observed on network threads as well.
struct Observed {
  std::atomic<bool> envelope = false;
  std::atomic<bool> answers = false;
  std::atomic<bool> log = false;
  std::atomic<bool> picker = false;
};

class HostWorld {
 public:
  static constexpr uint64_t kFixedStartMs = 1'000'000;
  static constexpr uint64_t kRunLimitMs = 24ull * 3600 * 1000;

  bool Start(const HostOptions& options, std::string* error);
  void Stop();
  // Closes every window, unloads the plug-in and loads it again; the store is
  // closed and opened again from disk.
  bool Restart(std::string* error);
  // Switches the language of the plug-in and of the host's texts; false when the file cannot be read.
  bool SetLanguage(const std::string& file);

  Observed& Observe() { return observed_; }

  PluginApi& Api() { return api_; }
  HostMainWindow& Main() { return main_; }
  plat::ManualClock& Clock() { return clock_; }

  // Windows the script works in: the function page window, or a vehicle function window.
  plat::Window* Current() const { return current_; }
  bool OpenFunctionPage(std::string* error);
  bool OpenVehicleWindow(int functionType, std::string* error);
  // Destroys the current window through its export; the export's name and result.
  std::pair<const char*, int> DestroyCurrent();
  // A text the host keeps alive for the plug-in (message arguments), returned by address.
  const std::string& KeepText(std::string text);
  const std::u16string& KeepText(std::u16string text);
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
  bool LoadPlugin(std::string* error);
  void CloseWindows();
  void InstallObservers();
  uint64_t DelayOf(const std::string& devIdno) const;
  void ReleaseDue();
  std::optional<uint64_t> NextDue() const;
  plat::Window* NewestChild(size_t before) const;

  HostOptions options_;
  gw::HostLink gateway_;
  Observed observed_;
  PluginApi api_;
  HostMainWindow main_;
  plat::ManualClock clock_{kFixedStartMs};
  plat::Window* current_ = nullptr;
  plat::Window* funPage_ = nullptr;
  void* currentVehicle_ = nullptr;
  std::vector<void*> vehicleWindows_;
  int delayMs_ = 0;
  std::map<std::string, int> deviceDelayMs_;
  std::map<uint32_t, uint64_t> due_;            // held answer -> virtual time it is due
  std::vector<std::unique_ptr<std::string>> texts_;
  std::vector<std::unique_ptr<std::u16string>> wideTexts_;
};
