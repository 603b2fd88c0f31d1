#include "support/page_harness.h"

#include <gtest/gtest.h>

#include "command/device_caps.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"

PageHarness::PageHarness(int functionType, PageHost host) {
  const PageEntry* entry = pages::Find(functionType, host);
  if (!entry) return;
  page_ = entry->make(functionType);
  if (!page_ || !page_->CreateDlg(&host_)) {
    page_.reset();
    return;
  }
  page_->ShowWindow(plat::SW_SHOW);
  // Only the vehicle function window leaves a page without a list.
  const bool noList = entry->noList && host == PageHost::kVehicleWindow;
  HostPage(*page_, noList ? nullptr : &host_.list, functionType, PageButtons::kOwn);
}

PageHarness::~PageHarness() {
  if (page_) page_->DestroyWindow();
}

void PageHarness::UseDevice(int devId) {
  SharedDeviceCaps().LoadShared(devId);
  page_->ProtocolUpdatePending = TRUE;
  page_->AttachToHost();
}

void PageHarness::Pick(const std::vector<int>& devIds) {
  hostref::SetPickerAnswer(devIds);
  page_->PickerMode = TRUE;
}

bool PageHarness::Type(int control, const std::string& text) {
  auto* edit = page_->Item<plat::Edit>(control);
  return edit && edit->UserType(text);
}

bool PageHarness::Click(int control) {
  auto* button = page_->Item<plat::Button>(control);
  return button && button->Click();
}

bool PageHarness::Select(int combo, int index) {
  auto* box = page_->Item<plat::ComboBox>(combo);
  return box && box->UserSelect(index);
}

std::string PageHarness::Text(int control) const { return page_->GetItemText(control); }
bool PageHarness::Checked(int control) const { return page_->IsChecked(control); }

bool PageHarness::Shown(int control) const {
  const plat::Window* w = page_->GetDlgItem(control);
  return w && w->IsShown();
}

bool PageHarness::Enabled(int control) const {
  const plat::Window* w = page_->GetDlgItem(control);
  return w && w->IsWindowEnabled();
}

std::string PageHarness::Send(int button) {
  hostref::net::ClearSent();
  Click(button);
  EXPECT_TRUE(hostref::RunUntilSettled(120000)) << "the send did not settle";
  const auto& sent = hostref::net::Sent();
  return sent.empty() ? "" : sent[0].param;
}

std::vector<std::string> PageHarness::Params() const {
  std::vector<std::string> params;
  for (const auto& sent : hostref::net::Sent()) params.push_back(sent.param);
  return params;
}
