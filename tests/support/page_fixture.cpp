#include "support/page_fixture.h"

#include <fstream>

#include "command/device_caps.h"
#include "host/ref/hostref.h"
#include "host/hostnet.h"
#include "host/ref/run/settle.h"
#include "host/ref/run/terminals.h"
#include "text/json.h"
#include "lang/language.h"
#include "platform/clock.h"
#include "platform/dialog.h"
#include "platform/loop.h"

namespace fixture {

std::string T(int id) { return "<" + std::to_string(id) + ">"; }

const std::string& LanguageFile() {
  static const std::string path = [] {
    const auto file = std::filesystem::temp_directory_path() / ("fleetcmd-test-lang-" + std::to_string(::getpid()) + ".ini");
    std::ofstream out(file);
    out << "[STRING]\n";
    for (int id = 10000; id < 21000; ++id) out << id << "=" << T(id) << "\n";
    return file.string();
  }();
  return path;
}

std::string PlainFleet(int n) {
  std::string json = R"({"rights":"all","vehicles":[)";
  for (int i = 1; i <= n; ++i) {
    if (i > 1) json += ",";
    json += R"({"name":"V)" + std::to_string(i) + R"(","devices":[{"id":)" + std::to_string(i) + R"(,"idno":"9)" +
            std::to_string(1000 + i) + R"("}]})";
  }
  return json + "]}";
}

}  // namespace fixture

void PageWorld::SetUp() {
  plat::MessageLoop::Instance().SetClock(&clock);
  plat::modal::Clear();
  hostref::net::Reset();
  hostref::net::ClearSent();
  hostref::OpenDataDir("");
  hostref::ClearTips();
  hostref::ClearLog();
  hostref::SetTestIP(false);
  hostref::SetPickerAnswer(std::nullopt);
  std::string error;
  ASSERT_TRUE(hostref::LoadFleet(fixture::PlainFleet(4), &error)) << error;
  SharedDeviceCaps() = DeviceCaps{};
  CLanguage::Instance().SetPath(fixture::LanguageFile());
  plat::SetFixedLocalTime(SYSTEMTIME{2026, 11, 1, 23, 8, 30, 5, 0});
}

void PageWorld::TearDown() {
  hostref::net::SetHeld(false);
  hostref::net::ReleaseAll();
  hostref::net::WaitIdle();
  plat::MessageLoop::Instance().RunPending();
  plat::MessageLoop::Instance().SetClock(nullptr);
  plat::SetFixedLocalTime(std::nullopt);
  SharedDeviceCaps() = DeviceCaps{};
}

bool PageWorld::Settle(uint64_t maxMs) { return hostref::RunUntilSettled(maxMs); }

void TerminalWorld::SetUp() {
  PageWorld::SetUp();
  hostref::terminals::Clear();
  hostref::terminals::Install();
}

void TerminalWorld::TearDown() {
  hostref::terminals::Uninstall();
  PageWorld::TearDown();
}

std::string TerminalWorld::AskText(const std::string& devIdno, int command, const std::string& param) {
  std::string reply;
  auto callback = [](int32_t, const char* text, void* user) { *static_cast<std::string*>(user) = text ? text : ""; };
  NETHANDLE handle = 0;
  const std::string envelope =
      "{\"Command\":" + std::to_string(command) + ",\"DevIDNO\":\"" + devIdno + "\",\"Session\":\"s\"}";
  NETCLIENT_MNOpenNormalCmd(&handle, devIdno.c_str(), envelope.c_str(), param.c_str());
  NETCLIENT_MNSetNormalCmdCB(handle, &reply, callback);
  NETCLIENT_MNStartNormalCmd(handle);
  hostref::net::WaitIdle();
  NETCLIENT_MNCloseNormalCmd(handle);
  return reply;
}

Json::Value TerminalWorld::Ask(const std::string& devIdno, int command, const std::string& param) {
  Json::Value value;
  txt::ParseJson(AskText(devIdno, command, param), value);
  return value;
}

std::vector<std::string> PageWorld::TipTexts() const {
  std::vector<std::string> texts;
  for (const auto& tip : hostref::Tips()) texts.push_back(tip.text);
  return texts;
}
