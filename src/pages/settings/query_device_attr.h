// The terminal attribute query: terminal type, maker, model, id, SIM card,
// versions and the GNSS and communication modules, one block per device.
#pragma once

#include "pages/settings/attr_query_page.h"

class CDlgQueryDeviceAttr : public CAttrQueryPage {
 public:
  static constexpr int kTemplate = 4056;
  static constexpr int32_t kCommand = 0x8107;
  CDlgQueryDeviceAttr() : CAttrQueryPage(kTemplate, kCommand) {}

 protected:
  std::string ReplyBlock(const Json::Value& reply, const std::string& vehicle) override;
  // A new query starts with an empty text box.
  void BeforeQuery() override { SetItemText(kResultText, ""); }
};
