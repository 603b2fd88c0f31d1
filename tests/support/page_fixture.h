// A world for page tests: the UI loop on a manual clock, a small fleet, the
// simulated network with default answers, a fresh in-memory host store, and a
// language file in which each id's text names the id ("<11004>"), so a test
// can tell which text a tip or a row used.
#pragma once

#include <gtest/gtest.h>
#include <json/value.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/loop.h"

namespace fixture {
// "<id>", the text every language id has in the test language file.
std::string T(int id);
// Writes the test language file (once per process) and returns its path.
const std::string& LanguageFile();
// A fleet JSON with devices 1..n numbered "9000"+i, none with attributes.
std::string PlainFleet(int n);
}  // namespace fixture

class PageWorld : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;
  // Advances the clock and answers replies until everything settled.
  bool Settle(uint64_t maxMs = 120000);
  std::vector<std::string> TipTexts() const;

  plat::ManualClock clock{1'000'000};
};

// A page world whose devices answer through the simulated terminals, which
// start each test with nothing kept.
class TerminalWorld : public PageWorld {
 protected:
  void SetUp() override;
  void TearDown() override;
  // The reply text a device's terminal gives to a command with a parameter
  // text, asked directly through a command channel.
  static std::string AskText(const std::string& devIdno, int command, const std::string& param);
  // The same, parsed (null when the reply is not JSON).
  static Json::Value Ask(const std::string& devIdno, int command, const std::string& param);
};
