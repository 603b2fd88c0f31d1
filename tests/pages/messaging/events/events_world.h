// The world of the event and phone page tests: a plain device, a second plain
// one and a taxi device, whose simulated terminals keep what they get.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "host/ref/run/terminals/events.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"

class EventsWorld : public PageWorld {
 protected:
  static constexpr int kPlain = 1, kSecond = 2, kTaxi = 3;
  static constexpr const char* kPlainIdno = "91001";
  static constexpr const char* kSecondIdno = "91002";
  static constexpr const char* kTaxiIdno = "91003";

  void SetUp() override {
    PageWorld::SetUp();
    ASSERT_TRUE(hostref::LoadFleet(R"({"vehicles":[{"name":"A","devices":[{"id":1,"idno":"91001"}]},
      {"name":"B","devices":[{"id":2,"idno":"91002"}]},
      {"name":"T","devices":[{"id":3,"idno":"91003","attrs":{"81":1}}]}]})"));
    hostref::terminals::Clear();
    hostref::terminals::Install();
  }
  void TearDown() override {
    page.reset();
    hostref::terminals::Uninstall();
    PageWorld::TearDown();
  }
  void Open(int functionType, int device = kPlain) {
    page = std::make_unique<PageHarness>(functionType);
    ASSERT_TRUE(page->IsOpen()) << functionType;
    page->UseDevice(device);
  }
  // Types into several edits: {control, text} pairs.
  void Fill(const std::vector<std::pair<int, std::string>>& typed) {
    for (const auto& [control, text] : typed) ASSERT_TRUE(page->Type(control, text)) << control;
  }
  std::string Description() const { return page->Cell(0, kColDescription); }
  // Description fields joined the host's way.
  static std::string Fields(const std::vector<std::pair<std::string, std::string>>& fields) {
    std::string text;
    for (const auto& [label, value] : fields) AddChineseStringStatus(text, FormatChineseColon(label, value));
    return text;
  }

  std::unique_ptr<PageHarness> page;
};
