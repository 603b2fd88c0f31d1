#include "command/page_registry.h"

#include <map>
#include <utility>

namespace pages {
namespace {
std::multimap<int, PageEntry>& Table() {
  static std::multimap<int, PageEntry> table;
  return table;
}
}  // namespace

void Register(const PageEntry& entry) { Table().emplace(entry.functionType, entry); }

const PageEntry* Find(int functionType, PageHost host) {
  auto [first, last] = Table().equal_range(functionType);
  for (auto it = first; it != last; ++it) {
    if (static_cast<unsigned>(it->second.hosts) & static_cast<unsigned>(host)) return &it->second;
  }
  return nullptr;
}

std::vector<int> RegisteredTypes() {
  std::vector<int> types;
  for (const auto& [type, entry] : Table()) {
    if (types.empty() || types.back() != type) types.push_back(type);
  }
  return types;
}
}  // namespace pages
