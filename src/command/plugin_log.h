// The plug-in's one logger, named after the plug-in's file, made on first use.
#pragma once

#include "host/hostlog.h"

CLogFile2& PluginLog();
