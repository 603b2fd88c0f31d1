// Command pages by function type. Each page registers itself, its template
// and the function types it serves in one line beside its own code; the
// hosting windows create pages from here.
//
//   const RegisterPage<CDlgSendText> kPage{12};
//   const RegisterPage<CDlgNewCallName> kPage{{57}, PageHost::kFunctionPage};
//
// The page class gives its template as `static plat::DialogTemplate Layout()`;
// a page that serves several function types in different modes takes the
// type in its constructor.
#pragma once

#include <functional>
#include <initializer_list>
#include <memory>
#include <type_traits>
#include <vector>

#include "platform/dialog.h"

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

// Whether the vehicle function window gives the page a result list.
enum class PageList { kShown, kNone };

// A dialog's template, registered from its `static plat::DialogTemplate Layout()`.
template <class Dialog>
struct RegisterTemplate {
  RegisterTemplate() { plat::templates::Register(Dialog::Layout()); }
};

template <class Page>
struct RegisterPage {
  explicit RegisterPage(std::initializer_list<int> functionTypes, PageHost hosts = PageHost::kBoth,
                        PageList list = PageList::kShown) {
    plat::templates::Register(Page::Layout());
    for (int type : functionTypes) pages::Register(PageEntry{type, hosts, &Make, list == PageList::kNone});
  }

 private:
  static std::unique_ptr<CBaseDlg> Make(int functionType) {
    if constexpr (std::is_constructible_v<Page, int>) {
      return std::make_unique<Page>(functionType);
    } else {
      (void)functionType;
      return std::make_unique<Page>();
    }
  }
};

struct PageRegistration {
  PageRegistration(std::initializer_list<int> functionTypes, PageHost hosts,
                   std::function<std::unique_ptr<CBaseDlg>(int)> make, bool noList = false) {
    for (int type : functionTypes) pages::Register(PageEntry{type, hosts, make, noList});
  }
};
