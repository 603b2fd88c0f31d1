// The desk as a test drives it: the world on the real clock, the main window
// offscreen, tips recorded instead of shown, and waits that end when what the
// test waits for has happened (or fail after a limit), never a fixed sleep.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "desk_world.h"
#include "host/ref/hostref.h"
#include "main_window.h"
#include "platform/controls.h"

class DeskFixture {
 public:
  static constexpr int kWaitLimitMs = 10000;

  bool Start(const std::string& languageFile, int delayMs = 20);
  void Stop();
  desk::DeskWorld& World() { return world_; }
  desk::MainWindow& Window() { return *window_; }
  const std::vector<hostref::Tip>& Tips() const { return tips_; }

  // Runs Qt's and the platform's loops until done() holds; false after the limit.
  bool WaitFor(const std::function<bool()>& done, int limitMs = kWaitLimitMs);
  // Every control below a model window, in window order.
  static std::vector<plat::Control*> ControlsBelow(plat::Window& root);
  // The first shown control of a kind (and id, when not 0) below a model window.
  static plat::Control* Shown(plat::Window& root, plat::ControlKind kind, int id = 0);
  QWidget* WidgetOf(const plat::Window* model) { return window_->WidgetOf(model); }

 private:
  desk::DeskWorld world_;
  std::unique_ptr<desk::MainWindow> window_;
  std::vector<hostref::Tip> tips_;
  bool started_ = false;
};
