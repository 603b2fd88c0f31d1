// Module-wide paths: the application directory (from "AppPath.INI" beside
// the plug-in, else the host executable's directory) and the plug-in's name.
// Both are worked out once and kept.
#pragma once

#include <string>

// Ends with a '/'.
std::string GetAppPath();
// The plug-in's file name without directory and extension.
std::string GetPluginName();
// Tests: the files the two are worked out from; resets the kept values.
void SetModulePathForTest(const std::string& moduleFile, const std::string& exeFile);
