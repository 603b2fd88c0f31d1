#include "platform/menu.h"

#include <deque>

namespace plat::menu {
namespace {
std::deque<UINT>& Choices() {
  static std::deque<UINT> choices;
  return choices;
}
std::function<void(const std::vector<Entry>&)>& Observer() {
  static std::function<void(const std::vector<Entry>&)> observer;
  return observer;
}
}  // namespace

UINT Track(Window& owner, const std::vector<Entry>& entries) {
  (void)owner;
  if (auto& observer = Observer()) observer(entries);
  if (Choices().empty()) return 0;
  const UINT choice = Choices().front();
  Choices().pop_front();
  for (const Entry& entry : entries) {
    if (entry.command == choice) return entry.enabled ? choice : 0;
  }
  return 0;
}

void PushChoice(UINT command) { Choices().push_back(command); }
void Clear() { Choices().clear(); }
void SetObserver(std::function<void(const std::vector<Entry>&)> observer) { Observer() = std::move(observer); }
}  // namespace plat::menu
