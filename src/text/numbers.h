// Reading integers from text the way the platform's wide-to-integer function
// does: leading blanks, a sign, digits up to the first non-digit; no digits
// give 0; values beyond 32 bits stop at the nearest limit.
#pragma once

#include <string_view>

namespace txt {
// Space, tab, line feed, vertical tab, form feed, carriage return.
constexpr bool IsBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// The text without blanks at either end.
std::string_view TrimBlanks(std::string_view text);

int WToI(std::string_view text);
}  // namespace txt
