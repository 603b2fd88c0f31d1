// Reading integers from text the way the platform's wide-to-integer function
// does: leading blanks, a sign, digits up to the first non-digit; no digits
// give 0; values beyond 32 bits stop at the nearest limit.
#pragma once

#include <string_view>

namespace txt {
int WToI(std::string_view text);
}  // namespace txt
