// The information menu page: the terminal's information-on-demand menu
// (delete all, update, append, modify), rows of information type and menu
// text. The texts are kept in the host configuration by information type.
#pragma once

#include "pages/messaging/events/event_list_page.h"

class CDlgInfoOnDemand : public CEventListPage {
 public:
  static constexpr int kTemplate = 4014;
  static constexpr int32_t kCommand = 0x8303;
  static constexpr int kFunctionType = 15;
  static constexpr int kConfigId = 710;
  enum Control : int {
    kRadioDeleteAll = 4058, kRadioUpdate = 4097, kRadioAppend = 4098, kRadioModify = 4096, kItemsGroup = 4099,
  };
  enum Text : int { kTextItems = 12955, kTextHint = 12706 };

  static plat::DialogTemplate Layout();
  CDlgInfoOnDemand();
};
