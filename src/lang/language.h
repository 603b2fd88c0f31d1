// The language table: every visible text of the plug-in by numeric id, read
// from section "STRING" of the language file the host names. Found texts are
// cached until the path changes; empty or missing texts are looked up in the
// file again next time, so they appear as soon as the file has them. One lock
// guards the table, so any thread may look texts up.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "platform/wintypes.h"
#include "text/profile.h"

class CLanguage {
 public:
  // The longest text kept; longer values are cut.
  static constexpr size_t kMaxTextChars = 258;

  static CLanguage& Instance();
  // Deleted by the application object's exit; the next use makes a new one.
  static void DeleteInstance();

  // FALSE when the path is the current one or the file cannot be opened;
  // then nothing changes. Otherwise keeps the path and empties the cache.
  BOOL SetPath(const std::string& path);
  std::string Path();
  // The text of an id, at most kMaxTextChars characters; "" when missing.
  std::string LanguageText(int id);

 private:
  std::recursive_mutex lock_;
  std::string path_;
  std::map<int, std::string> cache_;
  // When a file was last written, and its size.
  struct FileStamp {
    long long time = -1, size = -1;
    bool operator==(const FileStamp&) const = default;
  };
  static FileStamp StampOf(const std::string& path);

  // The file as last read, kept while it is unchanged on disk, so a text not
  // cached costs one file read only when the file has changed.
  std::optional<txt::ProfileFile> file_;
  FileStamp fileStamp_;
};

std::string LanguageText(int id);
// The host's tip box with the text of an id, an empty title and flags 0.
int ShowLangTip(int id);
