// Profile (INI) files read with the platform's rules: UTF-16LE with a byte
// order mark, or UTF-8; section and key names compared without case; names
// and values trimmed, a value in matching quotation marks loses them; only the
// first section of a name counts and its first matching key wins; lines
// starting with ';' are comments. A value is cut to the caller's buffer:
// bufferChars - 1 characters (Unicode characters; a buffer of 0 gives "").
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace txt {

// One file read once; an empty ProfileFile answers every lookup with its default.
class ProfileFile {
 public:
  // nullopt when the path is no regular file or cannot be read.
  static std::optional<ProfileFile> Load(const std::string& path);
  static ProfileFile Parse(std::string_view utf8Text);
  // The trimmed value, or nullopt when the key is missing.
  std::optional<std::string> Find(std::string_view section, std::string_view key) const;
  std::string GetString(std::string_view section, std::string_view key, std::string_view defaultValue,
                        size_t bufferChars) const;
  int GetInt(std::string_view section, std::string_view key, int defaultValue) const;

 private:
  // "section\nkey", both lower-cased.
  std::map<std::string, std::string, std::less<>> values_;
};

// One lookup in a file read for the call; a missing file gives the default.
std::string GetPrivateProfileString(std::string_view section, std::string_view key, std::string_view defaultValue,
                                    size_t bufferChars, const std::string& path);
int GetPrivateProfileInt(std::string_view section, std::string_view key, int defaultValue, const std::string& path);

}  // namespace txt
