// One request to one device. The host reads this record (the point-query
// callback gets a pointer to it), so the fields keep their order and widths.
#pragma once

#include <cstdint>
#include <string>

#include "host/hostnet.h"

class CBaseDlg;

struct CommandRequest {
  static constexpr size_t kDevIdnoSize = 64;

  char devIdno[kDevIdnoSize] = {};  // NUL-terminated, at most 63 characters
  NETHANDLE handle = 0;             // 0 while no channel is open
  CBaseDlg* owner = nullptr;
  int32_t result = 0;               // 0 = success
  std::string reply;
  int32_t reserved = 0;
  int32_t itemIndex = 0;            // first item this request carries
  int32_t itemCount = 1;            // items this request carries

  void SetDevIdno(const std::string& idno);
};
