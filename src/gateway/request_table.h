// The requests a gateway sent to terminals and waits for: each found again by
// the answer a terminal sends. An answer that names a serial number settles
// the request sent with it (any package's serial of a sub-packaged command);
// an answer without one settles the oldest open request of that terminal
// waiting for that answer message.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <json/value.h>

#include "jt808/codec.h"

namespace gw {

using Clock = std::chrono::steady_clock;

struct Pending {
  uint64_t key = 0;     // the table's own number, from 1, in the order sent
  uint64_t origin = 0;  // the control connection that asked
  std::string originNode;   // or the node that asked on a host's behalf
  uint64_t originKey = 0;   // and that node's number for the request
  Json::Value id;       // the asker's id, handed back with the answer
  std::string phone;    // the terminal's phone number
  int command = 0;
  uint16_t message = 0;  // the message id the command went out as
  uint16_t answer = jt808::kGeneralReply;  // the command's own answer message
  uint16_t serial = 0;   // the first package's serial number
  uint16_t packages = 1;
  jt808::Edition edition = jt808::Edition::k2013;
  Clock::time_point sent;

  jt808::AnswerContext Context() const { return {serial, message, command, edition}; }
};

class RequestTable {
 public:
  // Keeps the request; returns its key.
  uint64_t Add(Pending pending);
  // The request a terminal's answer settles, taken out of the table.
  std::optional<Pending> Match(const std::string& phone, const jt808::Message& answer);
  // A request by key (its time ran out), taken out of the table.
  std::optional<Pending> Take(uint64_t key);
  size_t Size() const { return phones_.size(); }
  // Open requests, oldest first.
  std::vector<Pending> List() const;

 private:
  std::optional<Pending> Remove(std::map<uint64_t, Pending>& open, std::map<uint64_t, Pending>::iterator it,
                                const std::string& phone);
  std::unordered_map<std::string, std::map<uint64_t, Pending>> byPhone_;
  std::unordered_map<uint64_t, std::string> phones_;  // key to phone
  uint64_t next_ = 1;
};

}  // namespace gw
