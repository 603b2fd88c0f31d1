// The event setting page: the terminal's event list (delete all, update,
// append, modify, delete the given events), rows of event id and text. The
// texts are kept in the host configuration by event id.
#pragma once

#include "pages/messaging/events/event_list_page.h"

class CDlgSetupEvent : public CEventListPage {
 public:
  static constexpr int kTemplate = 4013;
  static constexpr int32_t kCommand = 0x8301;
  static constexpr int kFunctionType = 13;
  static constexpr int kConfigId = 709;
  enum Control : int {
    kRadioDeleteAll = 4058, kRadioUpdate = 4061, kRadioAppend = 4060, kRadioModify = 4059, kRadioDeleteGiven = 4062,
    kItemsGroup = 4063,
    // Unused by the page, kept hidden in its template.
    kSpareIdLabel = 4076, kSpareContentLabel = 4169, kSpareNote = 4170, kSpareEdit1 = 4064, kSpareEdit2 = 4161,
  };
  enum Text : int { kTextEvents = 13006, kTextEventId = 13007 };

  static plat::DialogTemplate Layout();
  CDlgSetupEvent();
};
