// The recorder parameters each simulated terminal keeps: written with the
// tachograph parameter command (0x8701) and read back through the data
// collection command (0x8700) with the matching command word. The record
// collection reads the same values (driver, vehicle) into its records.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "host/ref/run/terminals.h"
#include "platform/wintypes.h"

namespace hostref::terminals {
constexpr int kRecorderSignals = 8;

// What a recorder holds; texts as code page 936 bytes.
struct RecorderParameters {
  int driverCode = 0;
  std::string licence;
  std::string vin, plate, plateClass;
  SYSTEMTIME clock{2026, 1, 4, 1, 8, 0, 0, 0};
  SYSTEMTIME installed{2025, 6, 0, 1, 9, 0, 0, 0};
  int initialMileage = 0;
  int coefficient = 3600;
  std::array<std::string, kRecorderSignals> signalNames;
};

// The parameters of a device's recorder, as written at the factory until a
// write changes them. Call with the terminals' lock held.
RecorderParameters& RecorderParametersOf(const std::string& devIdno);

// The answer to a 0x8700 read of a parameter word (0x01 to 0x06); nullopt for
// any other word, which the record collection answers.
std::optional<Answer> ReadRecorderParameters(const TerminalRequest& request);
}  // namespace hostref::terminals
