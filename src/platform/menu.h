// Popup menus. Track shows a menu and returns the command the user chose, or
// 0 when the user dismissed it. The choice comes from menu::PushChoice (a
// test or script); a disabled entry cannot be chosen.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/wintypes.h"

namespace plat {
class Window;

namespace menu {
struct Entry {
  UINT command = 0;
  std::string text;
  bool enabled = true;
};
UINT Track(Window& owner, const std::vector<Entry>& entries);
// The user's choice in the next menu (a command), or 0 to dismiss it.
void PushChoice(UINT command);
void Clear();
// Called with every menu shown (the reference host lists them).
void SetObserver(std::function<void(const std::vector<Entry>&)> observer);
}  // namespace menu
}  // namespace plat
