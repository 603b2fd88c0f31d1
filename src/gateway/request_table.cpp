#include "gateway/request_table.h"

#include <algorithm>

namespace gw {

uint64_t RequestTable::Add(Pending pending) {
  pending.key = next_++;
  phones_.emplace(pending.key, pending.phone);
  const uint64_t key = pending.key;
  byPhone_[pending.phone].emplace(key, std::move(pending));
  return key;
}

std::optional<Pending> RequestTable::Remove(std::map<uint64_t, Pending>& open, std::map<uint64_t, Pending>::iterator it,
                                            const std::string& phone) {
  Pending found = std::move(it->second);
  open.erase(it);
  phones_.erase(found.key);
  if (open.empty()) byPhone_.erase(phone);
  return found;
}

std::optional<Pending> RequestTable::Match(const std::string& phone, const jt808::Message& answer) {
  auto terminal = byPhone_.find(phone);
  if (terminal == byPhone_.end()) return std::nullopt;
  auto& open = terminal->second;
  if (const auto serial = jt808::AnsweredSerial(answer)) {
    for (auto it = open.begin(); it != open.end(); ++it) {
      // Serial numbers wrap: the distance from the first package's.
      const uint16_t offset = static_cast<uint16_t>(*serial - it->second.serial);
      if (offset < it->second.packages) return Remove(open, it, phone);
    }
    return std::nullopt;
  }
  for (auto it = open.begin(); it != open.end(); ++it) {
    if (it->second.answer == answer.id) return Remove(open, it, phone);
  }
  return std::nullopt;
}

std::optional<Pending> RequestTable::Take(uint64_t key) {
  auto phone = phones_.find(key);
  if (phone == phones_.end()) return std::nullopt;
  const std::string owner = phone->second;
  auto& open = byPhone_[owner];
  return Remove(open, open.find(key), owner);
}

std::vector<Pending> RequestTable::List() const {
  std::vector<Pending> all;
  for (const auto& [phone, open] : byPhone_) {
    for (const auto& [key, pending] : open) all.push_back(pending);
  }
  std::sort(all.begin(), all.end(), [](const Pending& a, const Pending& b) { return a.key < b.key; });
  return all;
}

}  // namespace gw
