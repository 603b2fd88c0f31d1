// fleetcmd-desk: the plug-in's pages in a desktop window, on the built-in
// fleet and simulated terminals.
//
//   fleetcmd-desk [--lang FILE] [--plugin FILE] [--data DIR] [--delay MS] [--dpi N] [--screenshot PNG]
//
// --dpi scales the pages as on a screen of that many dots per inch (s(n), t(n));
// --screenshot saves a picture of the window once it is shown, and quits.
#include <QApplication>
#include <QFont>
#include <QTimer>
#include <cstdio>
#include <cstring>

#include "desk_world.h"
#include "fleet.h"
#include "platform/window.h"
#include "main_window.h"
#include "paths.h"

namespace {
constexpr int kScreenshotDelayMs = 300;
}  // namespace

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  desk::DeskOptions options;
  options.dataDir = paths::UserDataDir();
  QString screenshot;
  const QStringList args = app.arguments();
  for (int i = 1; i < args.size(); ++i) {
    const bool hasValue = i + 1 < args.size();
    if (args[i] == "--lang" && hasValue) options.languageFile = args[++i].toStdString();
    else if (args[i] == "--plugin" && hasValue) options.pluginPath = args[++i].toStdString();
    else if (args[i] == "--delay" && hasValue) options.delayMs = args[++i].toInt();
    else if (args[i] == "--data" && hasValue) options.dataDir = args[++i].toStdString();
    else if (args[i] == "--screenshot" && hasValue) screenshot = args[++i];
    else if (args[i] == "--dpi" && hasValue) plat::SetDpi(args[++i].toInt());
    else {
      std::fprintf(stderr, "usage: fleetcmd-desk [--lang FILE] [--plugin FILE] [--delay MS] [--dpi N] [--screenshot PNG]\n");
      return 2;
    }
  }
  desk::UseDeskFont(app);
  desk::DeskWorld world;
  std::string error;
  if (!world.Start(options, &error) || !world.OpenFunctionPage(&error)) {
    std::fprintf(stderr, "fleetcmd-desk: %s\n", error.c_str());
    return 1;
  }
  const std::vector<desk::FleetVehicle> fleet = desk::ReadFleet();
  world.ChooseDevice(fleet.empty() || fleet.front().devices.empty() ? 0 : fleet.front().devices.front().id,
                     desk::DeskWorld::kFirstFunction);
  int result = 0;
  {
    desk::MainWindow window(world);
    window.show();
    if (!screenshot.isEmpty()) {
      QTimer::singleShot(kScreenshotDelayMs, &window, [&] {
        window.Pump();
        window.grab().save(screenshot);
        app.quit();
      });
    }
    result = app.exec();
    // The world stops while its views still listen: the network threads are done before the loop driver goes.
    world.Stop();
  }
  return result;
}
