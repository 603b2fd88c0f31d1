// Commands about the world: language, fleet, configuration, restart, the
// simulated network, observation switches, time and help.
#include <json/json.h>

#include <fstream>

#include "command_table.h"
#include "lang/file_limit.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "output.h"
#include "script.h"
#include "script_args.h"
#include "text/json.h"

using namespace script;

namespace {
constexpr int kStatusOffline = 101;
constexpr int kMaxDelayMs = 24 * 3600 * 1000;
constexpr const char* kNetUsage =
    "usage: net delay MS [DEVIDNO] | net offline|online DEVIDNO | net status DEVIDNO CODE [TEXT] | "
    "net reply DEVIDNO JSON | net raw DEVIDNO TEXT | net fail-open|fail-start DEVIDNO on|off | "
    "net duplicate DEVIDNO on|off | net session TEXT (`help net` says more)";
}  // namespace

void ScriptRunner::RegisterWorld() {
  commands_["lang"] = [this](const std::string& rest, const Context&) {
    if (rest.empty()) throw Error{"usage: lang FILE"};
    if (!world_.SetLanguage(rest)) {
      const std::string what = std::ifstream(rest).good()
                                   ? "the language file " + rest + " is larger than a language file may be (" +
                                         std::to_string(lang::kMaxLanguageFileBytes >> 20) + " MiB)"
                                   : "cannot read the language file " + rest;
      throw Error{what + "; the language stays as it was (data/lang/en.ini and "
                  "data/lang/zh-CN.ini come with fleetcmd)"};
    }
  };
  commands_["fleet"] = [](const std::string& rest, const Context&) {
    if (rest.empty()) throw Error{"usage: fleet FILE"};
    std::string error;
    if (!hostref::LoadFleetFile(rest, &error)) throw Error{rest + ": " + error + "; the fleet stays as it was (docs/fleet.md has the format)"};
  };
  commands_["config"] = [](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 2, "config ID VALUE");
    CConfigKestrelINI::WriteIniInt(Number<int>(a[0]), Number<int>(a[1]));
  };
  commands_["config-text"] = [](const std::string& rest, const Context&) {
    const auto [id, more] = Head(rest);
    const auto [index, text] = Head(more);
    if (index.empty()) throw Error{"usage: config-text ID INDEX TEXT"};
    CConfigKestrelINI::WriteIniStrEx(Number<int>(id), Number<int>(index), Unescape(text));
  };
  commands_["restart"] = [this](const std::string& rest, const Context&) {
    if (!rest.empty()) throw Error{"usage: restart"};
    std::string error;
    if (!world_.Restart(&error)) throw Error{"the plug-in could not be loaded again: " + error};
  };

  // ---- time and the session ----
  commands_["run"] = [this](const std::string& rest, const Context&) {
    if (!rest.empty()) throw Error{"usage: run"};
    if (!world_.Run()) throw Error{"still sending after a day of virtual time"};
  };
  commands_["advance"] = [this](const std::string& rest, const Context&) {
    const Args a = Expect(rest, 1, "advance MS");
    world_.Advance(static_cast<uint64_t>(Number(a[0], 0, kMaxDelayMs)));
  };
  commands_["help"] = [](const std::string& rest, const Context&) {
    const Args a = Split(rest);
    if (a.size() > 1) throw Error{"usage: help [COMMAND]"};
    if (a.empty()) {
      std::fputs(commands::HelpText().c_str(), stdout);
      return;
    }
    const std::string text = commands::HelpText(a[0]);
    if (text.empty()) throw Error{"no command " + a[0] + " (`help` lists the commands)"};
    std::fputs(text.c_str(), stdout);
  };
  commands_["quit"] = [this](const std::string&, const Context&) { quit_ = true; };
  commands_["exit"] = commands_["quit"];
}

void ScriptRunner::RegisterNetwork() {
  commands_["net"] = [this](const std::string& rest, const Context&) {
    const auto [what, more] = Head(rest);
    const Args a = Split(more);
    const auto [dev, text] = Head(more);  // a device number and the text after it
    if (what == "delay" && (a.size() == 1 || a.size() == 2)) {
      const int ms = static_cast<int>(Number(a[0], 0, kMaxDelayMs));
      a.size() == 1 ? world_.SetDelay(ms) : world_.SetDeviceDelay(FleetDevice(a[1]), ms);
    } else if (what == "offline" && a.size() == 1) {
      hostref::net::SetStatus(FleetDevice(a[0]), kStatusOffline);
      hostref::net::ClearReply(a[0]);
    } else if (what == "online" && a.size() == 1) {
      hostref::net::SetStatus(FleetDevice(a[0]), 0);
      hostref::net::ClearReply(a[0]);
    } else if (what == "status" && a.size() >= 2) {
      const auto [code, reply] = Head(text);
      hostref::net::SetStatus(FleetDevice(dev), Number<int>(code));
      if (reply.empty()) hostref::net::ClearReply(dev);
      else hostref::net::SetReply(dev, Unescape(reply));
    } else if (what == "reply" && a.size() >= 2) {
      Json::Value value;
      if (!txt::ParseJson(text, value)) throw Error{"not JSON: " + text + " (`net raw` sends any text)"};
      hostref::net::SetReply(FleetDevice(dev), text);
    } else if (what == "raw" && !a.empty()) {
      // Any reply text at all, malformed ones included.
      hostref::net::SetReply(FleetDevice(dev), Unescape(text));
    } else if (what == "fail-open" && a.size() == 2) {
      hostref::net::SetFailOpen(FleetDevice(a[0]), OnOff(a[1], "net fail-open DEVIDNO on|off"));
    } else if (what == "fail-start" && a.size() == 2) {
      hostref::net::SetFailStart(FleetDevice(a[0]), OnOff(a[1], "net fail-start DEVIDNO on|off"));
    } else if (what == "duplicate" && a.size() == 2) {
      hostref::net::SetDuplicate(FleetDevice(a[0]), OnOff(a[1], "net duplicate DEVIDNO on|off"));
    } else if (what == "session" && !a.empty()) {
      hostref::net::SetSession(Unescape(more));
    } else {
      throw Error{kNetUsage};
    }
  };
}

void ScriptRunner::RegisterObserve() {
  const auto onOff = [this](const char* name, std::atomic<bool> Observed::*flag) {
    const std::string usage = std::string(name) + " on|off";
    commands_[name] = [this, flag, usage](const std::string& rest, const Context&) {
      const Args a = Expect(rest, 1, usage.c_str());
      world_.Observe().*flag = OnOff(a[0], usage.c_str());
    };
  };
  onOff("envelope", &Observed::envelope);
  onOff("answers", &Observed::answers);
  onOff("log", &Observed::log);
  onOff("picker", &Observed::picker);
}
