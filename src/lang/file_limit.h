// The size limit of the language file: the plug-in's language table and the
// host's own texts refuse a larger file (a few hundred texts take tens of KiB).
#pragma once

#include <cstddef>
#include <fstream>
#include <string>

namespace lang {
constexpr size_t kMaxLanguageFileBytes = size_t{4} << 20;

// Whether the file opens and ends within kMaxLanguageFileBytes. It is read
// no further than that, so a file that never ends (/dev/zero) is refused too.
inline bool LanguageFileFits(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  char block[16384];
  size_t total = 0;
  while (in.read(block, sizeof block) || in.gcount() > 0) {
    total += static_cast<size_t>(in.gcount());
    if (total > kMaxLanguageFileBytes) return false;
  }
  return true;
}
}  // namespace lang
