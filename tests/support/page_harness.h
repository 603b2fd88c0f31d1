// A registered page opened the way the vehicle function window opens it:
// found by function type in the registry, made from its template inside a
// host window with a result list, shown and attached. Registration, template
// and captions are exercised with every test that uses it.
//
//   PageHarness h(CDlgSendText::kFunctionType);
//   h.Type(CDlgSendText::kTextEdit, "hello");
//   EXPECT_EQ(h.Send(ctl::Set), R"({"Flag":0,...})");
//   EXPECT_EQ(h.Cell(0, kColResult), T(11008));
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "command/base_dlg.h"
#include "command/page_registry.h"
#include "command/result_columns.h"
#include "support/test_page.h"

class PageHarness {
 public:
  explicit PageHarness(int functionType, PageHost host = PageHost::kVehicleWindow);
  ~PageHarness();

  bool IsOpen() const { return page_ != nullptr; }
  CBaseDlg& Page() const { return *page_; }
  template <class P>
  P& As() const {
    return dynamic_cast<P&>(*page_);
  }

  // The current device: the page's edition follows it, as when the host selects a vehicle.
  void UseDevice(int devId);
  // Sends to these devices through the device picker on the next click.
  void Pick(const std::vector<int>& devIds);

  // What a user does; false when the control refuses (absent, disabled, hidden, filtered).
  bool Type(int control, const std::string& text);
  bool Click(int control);
  bool Select(int combo, int index);
  std::string Text(int control) const;
  bool Checked(int control) const;
  bool Shown(int control) const;
  bool Enabled(int control) const;

  // Clicks a send button and runs until every reply is handled; the parameter
  // text of the first request sent ("" when nothing went out).
  std::string Send(int button);
  // The parameter texts of every request sent since the last Send.
  std::vector<std::string> Params() const;
  int Rows() const { return host_.list.GetItemCount(); }
  std::string Cell(int row, ResultColumn column) const { return host_.list.GetItemText(row, column); }
  TestHost& Host() { return host_; }

 private:
  TestHost host_;
  std::unique_ptr<CBaseDlg> page_;
};
