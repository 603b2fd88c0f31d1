// The terminal attribute query: terminal type, maker, model, terminal id, SIM
// card ICCID, hardware and firmware versions, GNSS and communication modules,
// one block of text per answering device. A new query empties the text box.
#pragma once

#include "pages/settings/attr_query_page.h"

class CDlgQueryDeviceAttr : public CAttrQueryPage {
 public:
  static constexpr int kTemplate = 4056;
  static constexpr int32_t kCommand = 0x8107;
  CDlgQueryDeviceAttr() : CAttrQueryPage(kTemplate, kCommand) {}

 protected:
  std::string ReplyBlock(const Json::Value& reply, const std::string& vehicle) override;
  void BeforeQuery() override { SetItemText(kResultText, ""); }
};
