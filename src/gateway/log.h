// The gateway's log: one line per event on standard error (or a sink a test
// gives), with a level threshold. Safe from any thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace gw {

enum class LogLevel { Error, Warn, Info, Debug };

// "error", "warn", "info" or "debug"; nullopt for anything else.
std::optional<LogLevel> ParseLogLevel(std::string_view text);
const char* LevelName(LogLevel level);

void SetLogLevel(LogLevel level);
bool Logging(LogLevel level);
// Lines go to the sink instead of standard error; null restores standard error.
void SetLogSink(std::function<void(const std::string& line)> sink);
// "LEVEL where: text" when the level is on.
void Log(LogLevel level, std::string_view where, std::string_view text);

}  // namespace gw
