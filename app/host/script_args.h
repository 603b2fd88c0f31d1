// Reading the words of a script line: splitting, decimal numbers with their
// ranges, on/off switches, escapes, and device numbers of the fleet.
#pragma once

#include <charconv>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace script {

// A line that cannot be carried out: what went wrong and what to do.
struct Error {
  std::string what;
};

using Args = std::vector<std::string>;

Args Split(const std::string& text);
// The first word and the rest of a text.
std::pair<std::string, std::string> Head(const std::string& text);
// Exactly count words, or a usage error.
Args Expect(const std::string& rest, size_t count, const char* usage);

// A decimal number in [low, high]; leading zeros are decimal too ("010" is 10).
long long Number(const std::string& word, long long low, long long high);
template <class T>
T Number(const std::string& word) {
  return static_cast<T>(Number(word, std::numeric_limits<T>::min(), std::numeric_limits<T>::max()));
}
bool OnOff(const std::string& word, const char* usage);

// Script text: \n, \r, \t, \\ and \xHH escapes.
std::string Unescape(const std::string& text);

// A device number the fleet has, or an error naming it.
const std::string& FleetDevice(const std::string& devIdno);

}  // namespace script
