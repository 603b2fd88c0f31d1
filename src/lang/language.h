// The language table: every visible text of the plug-in by numeric id, read
// from section "STRING" of the language file the host names. Found texts are
// cached until the file changes; empty or missing texts are looked up in the
// file again next time, so they appear as soon as the file has them.
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
  // then nothing changes.
  BOOL SetPath(const std::string& path);
  std::string Path();
  std::string LanguageText(int id);

 private:
  std::recursive_mutex lock_;
  std::string path_;
  std::map<int, std::string> cache_;
  // The file as last read, kept while the file is unchanged on disk.
  std::optional<txt::ProfileFile> file_;
  long long fileStamp_ = -1;
};

std::string LanguageText(int id);
// The host's tip box with the text of an id, an empty title and flags 0.
int ShowLangTip(int id);
