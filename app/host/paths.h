// Where the reference host finds its files: the plug-in and the language files
// beside the program (installed: relative to the install prefix; in a build
// tree: the build's plug-in and the source tree's data), and the user's data
// directory for the host's store.
#pragma once

#include <string>

namespace paths {
// The directory of the language files (…/share/fleetcmd/lang or the source tree's data/lang).
std::string LanguageDir();
std::string DefaultLanguageFile();
std::string DefaultPlugin();
// $XDG_DATA_HOME/fleetcmd, else ~/.local/share/fleetcmd; "" when neither is known.
std::string UserDataDir();
// A fresh directory under the system's temporary directory; "" when none can be made.
std::string MakeTempDir();
void RemoveTree(const std::string& dir);
}  // namespace paths
