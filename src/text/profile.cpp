// Profile (INI) files: decoding, parsing into a table, and lookups with the
// platform's rules.
#include "text/profile.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

#include "text/encoding.h"
#include "text/numbers.h"

namespace txt {
namespace {

std::string Lower(std::string_view s) {
  std::string out(s);
  for (char& c : out) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return out;
}

// The table key of a name pair: "section\nkey", trimmed and lower-cased.
std::string Key(std::string_view section, std::string_view key) {
  return Lower(TrimBlanks(section)) + "\n" + Lower(TrimBlanks(key));
}

// The file's text as UTF-8, whatever its encoding.
std::string Decode(const std::string& bytes) {
  if (bytes.size() >= 2 && static_cast<unsigned char>(bytes[0]) == 0xFF && static_cast<unsigned char>(bytes[1]) == 0xFE) {
    std::u16string wide((bytes.size() - 2) / 2, u'\0');
    for (size_t i = 0; i < wide.size(); ++i) {
      wide[i] = static_cast<char16_t>(static_cast<unsigned char>(bytes[2 + 2 * i]) |
                                      (static_cast<unsigned char>(bytes[3 + 2 * i]) << 8));
    }
    return Utf16ToUtf8(wide);
  }
  if (bytes.size() >= 3 && bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) return SanitizeUtf8(bytes.substr(3));
  return SanitizeUtf8(bytes);
}

// A value enclosed in matching single or double quotation marks loses them.
std::string_view Unquote(std::string_view value) {
  if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front()) {
    return value.substr(1, value.size() - 2);
  }
  return value;
}
}  // namespace

ProfileFile ProfileFile::Parse(std::string_view text) {
  ProfileFile file;
  std::set<std::string> seenSections;
  std::string section;
  bool reading = false;  // inside the first section of its name
  while (!text.empty()) {
    const size_t end = text.find('\n');
    std::string_view line = TrimBlanks(text.substr(0, end));
    text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '[') {
      const size_t close = line.find(']');
      section = std::string(line.substr(1, close == std::string_view::npos ? std::string_view::npos : close - 1));
      reading = seenSections.insert(Lower(TrimBlanks(section))).second;
      continue;
    }
    const size_t eq = line.find('=');
    if (!reading || eq == std::string_view::npos) continue;
    file.values_.emplace(Key(section, line.substr(0, eq)), std::string(Unquote(TrimBlanks(line.substr(eq + 1)))));
  }
  return file;
}

std::optional<ProfileFile> ProfileFile::Load(const std::string& path) {
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) return std::nullopt;
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  return Parse(Decode(bytes));
}

std::optional<std::string> ProfileFile::Find(std::string_view section, std::string_view key) const {
  auto it = values_.find(Key(section, key));
  if (it == values_.end()) return std::nullopt;
  return it->second;
}

std::string ProfileFile::GetString(std::string_view section, std::string_view key, std::string_view defaultValue,
                                   size_t bufferChars) const {
  if (bufferChars == 0) return {};
  auto value = Find(section, key);
  return Utf8Left(value ? *value : std::string(defaultValue), bufferChars - 1);
}

int ProfileFile::GetInt(std::string_view section, std::string_view key, int defaultValue) const {
  auto value = Find(section, key);
  return value ? WToI(*value) : defaultValue;
}

std::string GetPrivateProfileString(std::string_view section, std::string_view key, std::string_view defaultValue,
                                    size_t bufferChars, const std::string& path) {
  return ProfileFile::Load(path).value_or(ProfileFile()).GetString(section, key, defaultValue, bufferChars);
}

int GetPrivateProfileInt(std::string_view section, std::string_view key, int defaultValue, const std::string& path) {
  return ProfileFile::Load(path).value_or(ProfileFile()).GetInt(section, key, defaultValue);
}
}  // namespace txt
