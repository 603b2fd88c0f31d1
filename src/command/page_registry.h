// Command pages by function type. Each page registers the function types it
// serves beside its own code; the hosting windows create pages from here.
//
//   static const PageRegistration kReg{{12}, PageHost::kBoth, [](int) { return std::make_unique<CDlgSendText>(); }};
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <vector>

class CBaseDlg;

// Which hosting windows offer a page.
enum class PageHost : unsigned {
  kFunctionPage = 1,   // the function page window with its tree
  kVehicleWindow = 2,  // the vehicle function window
  kBoth = 3,
};

struct PageEntry {
  int functionType = -1;
  PageHost hosts = PageHost::kBoth;
  // Makes the page for a function type (some pages serve several types in different modes).
  std::function<std::unique_ptr<CBaseDlg>(int functionType)> make;
  // The vehicle function window gives the page no result list.
  bool noList = false;
};

namespace pages {
void Register(const PageEntry& entry);
// The entry of a function type for a hosting window; null when no page serves it there.
const PageEntry* Find(int functionType, PageHost host);
std::vector<int> RegisteredTypes();
}  // namespace pages

struct PageRegistration {
  PageRegistration(std::initializer_list<int> functionTypes, PageHost hosts,
                   std::function<std::unique_ptr<CBaseDlg>(int)> make, bool noList = false) {
    for (int type : functionTypes) pages::Register(PageEntry{type, hosts, make, noList});
  }
};
