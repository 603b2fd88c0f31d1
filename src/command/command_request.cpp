#include "command/command_request.h"

#include <algorithm>
#include <cstring>

void CommandRequest::SetDevIdno(const std::string& idno) {
  const size_t n = std::min(idno.size(), kDevIdnoSize - 1);
  std::memcpy(devIdno, idno.data(), n);
  devIdno[n] = '\0';
}
