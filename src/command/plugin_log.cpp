#include "command/plugin_log.h"

#include "lang/app_path.h"

CLogFile2& PluginLog() {
  static CLogFile2 log(GetPluginName());
  return log;
}
