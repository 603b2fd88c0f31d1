#include "desk_fixture.h"

#include <QApplication>
#include <QTest>
#include <deque>

bool DeskFixture::Start(const std::string& languageFile, int delayMs) {
  desk::UseDeskFont(*qApp);
  desk::DeskOptions options;
  options.languageFile = languageFile;
  options.delayMs = delayMs;
  std::string error;
  if (!world_.Start(options, &error) || !world_.OpenFunctionPage(&error)) {
    qWarning("desk world: %s", error.c_str());
    return false;
  }
  started_ = true;
  const std::vector<int> ids = hostref::DeviceIds();
  world_.ChooseDevice(ids.empty() ? 0 : ids.front(), desk::DeskWorld::kFirstFunction);
  window_ = std::make_unique<desk::MainWindow>(world_);
  window_->Modals().SetTipPresenter([this](const hostref::Tip& tip) { tips_.push_back(tip); });
  window_->show();
  window_->Pump();
  QApplication::processEvents();
  window_->Pump();
  return true;
}

void DeskFixture::Stop() {
  // The network threads are done before the loop driver that they wake goes.
  if (started_) world_.Stop();
  started_ = false;
  window_.reset();
}

bool DeskFixture::WaitFor(const std::function<bool()>& done, int limitMs) {
  return QTest::qWaitFor(
      [&] {
        window_->Pump();
        return done();
      },
      limitMs);
}

std::vector<plat::Control*> DeskFixture::ControlsBelow(plat::Window& root) {
  std::vector<plat::Control*> found;
  std::deque<plat::Window*> queue{&root};
  while (!queue.empty()) {
    plat::Window* w = queue.front();
    queue.pop_front();
    for (plat::Window* child : w->Children()) {
      if (auto* control = dynamic_cast<plat::Control*>(child)) found.push_back(control);
      queue.push_back(child);
    }
  }
  return found;
}

plat::Control* DeskFixture::Shown(plat::Window& root, plat::ControlKind kind, int id) {
  for (plat::Control* control : ControlsBelow(root)) {
    if (control->Kind() == kind && (id == 0 || control->GetDlgCtrlID() == id) && control->IsWindowVisible()) return control;
  }
  return nullptr;
}
