// Message numbers, control ids, timer ids and language ids shared by the
// command base, the hosting windows and the pages.
#pragma once

#include "platform/wintypes.h"

// Window messages inside the plug-in and to the host.
namespace msg {
enum : UINT {
  AlarmAnswer = 1041,          // alarm service answer posted to a handling page (wParam: the answer)
  InspectionAnswer = 1056,     // alarm service answer posted to the check-post answer page
  Reply = 1282,                // network reply posted to a page (wParam: the request)
  SendControlsChanged = 1283,  // page to parent: its send buttons changed state
  ClosePage = 12544,           // page to parent: close me
  PlatformAnswer = 13313,       // superior platform's answer posted to a page (wParam: the answer)
  // Page to hosting window, passed on to the host unchanged:
  AlarmHandled = 13318,         // before and after each alarm is handled (0, 2 when all are done)
  HandlingLogged = 13319,       // the handling log entry of a run; the host's answer is returned
  AlarmConfirmed = 13330,       // a confirmation was answered (the result code)
  ReservedForward1 = 13335,     // passed on; no page of the plug-in sends it
  FunctionChosen = 13336,       // tree to function page; function page to host
  SupervisionAnswered = 13337,  // every supervised alarm was answered
  ReservedForward2 = 13338,     // passed on; no page of the plug-in sends it
  PointQueryAnswer = 13339,    // point-query page to host
};
}  // namespace msg

// Buttons every page and hosting window shares.
namespace ctl {
enum : int {
  Get = 1600,
  Set = 1601,
  Cancel = 1602,   // on a page: cancel; in the function page window: batch set
  BatchGet = 1603,
};
}  // namespace ctl

namespace timer {
enum : UINT_PTR {
  Send = 6700,  // sends the next round of requests
  Done = 6701,  // waits for the last reply
};
}  // namespace timer

// Language ids of the texts the command base shows.
namespace txtid {
enum : int {
  Cancel = 11003,
  Set = 11004,
  SetSucceeded = 11008,
  GetSucceeded = 11011,
  Get = 13312,
  NoTargetDevice = 12812,
};
}  // namespace txtid
