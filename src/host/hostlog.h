// hostlog: the host's log file. One logger per module; lines carry a level
// (0 detail, 1 information, 2 error) and printf-style UTF-8 text.
#pragma once

#include <string>

class CLogFile2 {
 public:
  explicit CLogFile2(std::string moduleName);
  void WriteStrInfoEx(int level, const char* format, ...) __attribute__((format(printf, 3, 4)));
  const std::string& ModuleName() const { return module_; }

 private:
  std::string module_;
};
