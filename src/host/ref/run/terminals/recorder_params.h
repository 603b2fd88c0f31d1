// The recorder parameters each simulated terminal keeps: written with the
// tachograph parameter command (0x8701) and read back through the data
// collection command (0x8700) with the matching command word.
#pragma once

#include <optional>

#include "host/ref/run/terminals.h"

namespace hostref::terminals {
// The answer to a 0x8700 read of a parameter word (0x01 to 0x06); nullopt for
// any other word, which the record collection answers.
std::optional<Answer> ReadRecorderParameters(const TerminalRequest& request);
}  // namespace hostref::terminals
