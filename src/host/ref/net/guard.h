// Keeps exceptions inside the network library: a call that fails is logged
// through the host's log and answers with its fallback value.
#pragma once

#include <exception>

class CLogFile2;

namespace netsim {

constexpr int kLogError = 2;

CLogFile2& Log();
void LogFailure(const char* where, std::exception_ptr failure) noexcept;

template <class R, class F>
R Guarded(const char* where, R fallback, F&& body) noexcept {
  try {
    return body();
  } catch (...) {
    LogFailure(where, std::current_exception());
    return fallback;
  }
}

template <class F>
void Guarded(const char* where, F&& body) noexcept {
  try {
    body();
  } catch (...) {
    LogFailure(where, std::current_exception());
  }
}

}  // namespace netsim
