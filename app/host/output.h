// The reference host's event lines, written in order of events:
// SEND, ROW, TIP, HOSTMSG, CALLBACK, ERROR and the answers of queries.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace out {
// Bytes outside printable ASCII as \xHH (the exact bytes of a request).
std::string EscapeBytes(std::string_view bytes);
// Control characters as \xHH; other text (UTF-8) as it is.
std::string EscapeControls(std::string_view text);
void Line(const std::string& line);
// A failure, on standard error (after what standard output holds so far).
void Error(const std::string& line);
void SetStream(FILE* stream);
}  // namespace out
