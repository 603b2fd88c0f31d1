// The fleet loader on arbitrary text: a fleet or an explanation, never a crash.
#include <cstddef>
#include <cstdint>
#include <string>

#include "host/ref/hostref.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string json(reinterpret_cast<const char*>(data), size);
  std::string error;
  if (hostref::LoadFleet(json, &error)) (void)hostref::DeviceIds();
  // The host's log keeps every line until cleared (a rejected fleet is logged).
  hostref::ClearLog();
  return 0;
}
