// The network library's logger and the logging of failures caught at its edges.
#include "host/ref/net/guard.h"

#include <stdexcept>

#include "host/hostlog.h"

namespace netsim {

CLogFile2& Log() {
  static CLogFile2 log("hostnet");
  return log;
}

void LogFailure(const char* where, std::exception_ptr failure) noexcept {
  try {
    try {
      std::rethrow_exception(failure);
    } catch (const std::exception& e) {
      Log().WriteStrInfoEx(kLogError, "%s failed: %s", where, e.what());
    } catch (...) {
      Log().WriteStrInfoEx(kLogError, "%s failed", where);
    }
  } catch (...) {
    // Nothing more can be done when logging itself fails.
  }
}

}  // namespace netsim
