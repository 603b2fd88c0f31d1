// Date-time texts of requests and replies.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/wintypes.h"

namespace txt {
// "YYYY-MM-DD hh:mm:ss", the form of every time in a request.
std::string FormatRequestTime(const SYSTEMTIME& time);
// A date-time text of a reply: up to six integers separated by any runs of
// non-digits (year, month, day, hour, minute, second; missing ones are 0).
// Fails when fewer than three were read, the year is 0, or a field is out of
// range; a year from 1 to 98 is taken as 2001 to 2098.
std::optional<SYSTEMTIME> ParseDateTimeText(std::string_view text);
}  // namespace txt
