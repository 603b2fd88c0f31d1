// Profile (INI) files read with the platform's rules: UTF-16LE with a byte
// order mark, or UTF-8; section and key names compared without case; names
// and values trimmed; the first matching key of the first matching section
// wins; lines starting with ';' are comments. A value is cut to the caller's
// buffer: bufferChars - 1 characters.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace txt {

class ProfileFile {
 public:
  static std::optional<ProfileFile> Load(const std::string& path);
  static ProfileFile Parse(std::string_view utf8Text);
  std::optional<std::string> Find(std::string_view section, std::string_view key) const;
  std::string GetString(std::string_view section, std::string_view key, std::string_view defaultValue,
                        size_t bufferChars) const;
  int GetInt(std::string_view section, std::string_view key, int defaultValue) const;

 private:
  // "section\nkey", both lower-cased.
  std::map<std::string, std::string, std::less<>> values_;
};

std::string GetPrivateProfileString(std::string_view section, std::string_view key, std::string_view defaultValue,
                                    size_t bufferChars, const std::string& path);
int GetPrivateProfileInt(std::string_view section, std::string_view key, int defaultValue, const std::string& path);

}  // namespace txt
