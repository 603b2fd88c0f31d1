// The members of every reply that decide its result.
#pragma once

namespace replykey {
constexpr const char* kError = "Error";
constexpr const char* kResult = "result";
}  // namespace replykey
