#include "script_args.h"

#include <cctype>
#include <sstream>

#include "host/hostcore.h"

namespace script {

Args Split(const std::string& text) {
  std::istringstream in(text);
  Args words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

std::pair<std::string, std::string> Head(const std::string& text) {
  const size_t start = text.find_first_not_of(" \t");
  if (start == std::string::npos) return {};
  const size_t end = text.find_first_of(" \t", start);
  if (end == std::string::npos) return {text.substr(start), ""};
  const size_t rest = text.find_first_not_of(" \t", end);
  return {text.substr(start, end - start), rest == std::string::npos ? "" : text.substr(rest)};
}

Args Expect(const std::string& rest, size_t count, const char* usage) {
  Args args = Split(rest);
  if (args.size() != count) throw Error{std::string("usage: ") + usage};
  return args;
}

long long Number(const std::string& word, long long low, long long high) {
  long long value = 0;
  const char* end = word.data() + word.size();
  const auto [stop, error] = std::from_chars(word.data(), end, value, 10);
  const std::string range = " (a decimal number from " + std::to_string(low) + " to " + std::to_string(high) + ")";
  if (word.empty() || stop != end || (error != std::errc() && error != std::errc::result_out_of_range)) {
    throw Error{"not a number: " + word + range};
  }
  if (error == std::errc::result_out_of_range || value < low || value > high) {
    throw Error{"number out of range: " + word + range};
  }
  return value;
}

bool OnOff(const std::string& word, const char* usage) {
  if (word == "on") return true;
  if (word == "off") return false;
  throw Error{std::string("usage: ") + usage};
}

std::string Unescape(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 >= text.size()) {
      out += text[i];
      continue;
    }
    const char c = text[++i];
    if (c == 'n') out += '\n';
    else if (c == 'r') out += '\r';
    else if (c == 't') out += '\t';
    else if (c == 'x' && i + 2 < text.size() && std::isxdigit(static_cast<unsigned char>(text[i + 1])) &&
             std::isxdigit(static_cast<unsigned char>(text[i + 2]))) {
      out += static_cast<char>(std::stoi(text.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else out += c;
  }
  return out;
}

const std::string& FleetDevice(const std::string& devIdno) {
  if (!CVehicleBaseMgr::FindDvsDeviceByIDNO(devIdno.c_str()).IsValid()) {
    throw Error{"the fleet has no device " + devIdno + " (device numbers look like 10001; `fleet FILE` loads another fleet)"};
  }
  return devIdno;
}

}  // namespace script
