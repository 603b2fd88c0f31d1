// How the script language sees controls: their kind names, values and order.
#pragma once

#include <string>
#include <vector>

#include "platform/controls.h"

namespace script {
const char* KindName(plat::ControlKind kind);
// The value `get` and `controls` print.
std::string ValueOf(plat::Window& window);
// Controls below a window, nearest first (breadth first).
std::vector<plat::Control*> ControlsBelow(plat::Window& root);
constexpr const char* kWindowPrefix = "win:";
}  // namespace script
