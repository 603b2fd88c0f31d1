// fleetcmd-termsim: simulated binary terminals that connect to a gateway, one
// connection per device of a fleet, and answer from the simulated terminals.
#include <getopt.h>

#include <cstdio>
#include <string>

#include "gateway/config.h"
#include "gateway/log.h"
#include "gateway/termsim/terminals.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"

namespace {
enum : int { kOptHost = 1000, kOptPort, kOptFleet, kOptGenerate, kOptFirst, kOptHeartbeat, kOptRetry, kOptLogLevel };

constexpr option kOptions[] = {
    {"host", required_argument, nullptr, kOptHost},
    {"port", required_argument, nullptr, kOptPort},
    {"fleet", required_argument, nullptr, kOptFleet},
    {"generate", required_argument, nullptr, kOptGenerate},
    {"first", required_argument, nullptr, kOptFirst},
    {"heartbeat", required_argument, nullptr, kOptHeartbeat},
    {"retry", required_argument, nullptr, kOptRetry},
    {"log-level", required_argument, nullptr, kOptLogLevel},
    {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'V'},
    {nullptr, 0, nullptr, 0},
};

constexpr const char* kHelp =
    "Usage: fleetcmd-termsim [OPTION]...\n"
    "Connect one simulated binary terminal per device to a gateway's terminal port:\n"
    "each registers, authenticates, sends heartbeats and answers every command the\n"
    "way the simulated terminals of fleetcmd-host do.\n"
    "\n"
    "Options:\n"
    "      --host=ADDRESS      the gateway's address (default 127.0.0.1)\n"
    "      --port=PORT         its terminal port (default 7808)\n"
    "      --fleet=FILE        the devices of a fleet file (docs/fleet.md); without it\n"
    "                          and without --generate, the built-in fleet's devices\n"
    "      --generate=N        N generated devices instead, numbered from --first\n"
    "      --first=NUMBER      the first generated device number (default 20000000)\n"
    "      --heartbeat=TIME    time between heartbeats (default 30s; 500ms, 30s, 2m)\n"
    "      --retry=TIME        pause before connecting again (default 1s)\n"
    "      --log-level=LEVEL   error, warn (default), info or debug\n"
    "  -h, --help              show this help and exit\n"
    "  -V, --version           show the version and exit\n"
    "\n"
    "Devices whose attribute 80 is set speak the 2019 edition, the others 2013.\n"
    "Runs until interrupted; the exit status is 2 for a bad command line.\n";

int Usage(const std::string& what) {
  std::fprintf(stderr, "fleetcmd-termsim: %s (fleetcmd-termsim --help lists the options)\n", what.c_str());
  return 2;
}
}  // namespace

int main(int argc, char** argv) {
  gw::termsim::Options options;
  std::string fleet;
  int generate = 0;
  long long first = 20'000'000;
  gw::SetLogLevel(gw::LogLevel::Warn);
  opterr = 0;
  for (;;) {
    const int previous = optind;
    const int c = getopt_long(argc, argv, ":hV", kOptions, nullptr);
    if (c == -1) break;
    const std::string given = argv[previous < argc ? previous : argc - 1];
    const std::string value = optarg ? optarg : "";
    switch (c) {
      case kOptHost: options.host = value; break;
      case kOptPort: {
        const auto port = gw::ParsePort(value);
        if (!port || *port == 0) return Usage("--port takes a port number, not " + value);
        options.port = *port;
        break;
      }
      case kOptFleet: fleet = value; break;
      case kOptGenerate:
      case kOptFirst: {
        char* end = nullptr;
        const long long number = std::strtoll(value.c_str(), &end, 10);
        if (value.empty() || *end || number < 0 || number > 2'000'000'000LL ||
            (c == kOptGenerate && number > 1'000'000)) {
          return Usage(given + " takes a number, not " + value);
        }
        (c == kOptGenerate ? void(generate = static_cast<int>(number)) : void(first = number));
        break;
      }
      case kOptHeartbeat:
      case kOptRetry: {
        const auto time = gw::ParseDuration(value);
        if (!time || time->count() == 0) return Usage(given + " takes a time such as 500ms or 30s, not " + value);
        (c == kOptHeartbeat ? options.heartbeat : options.retry) = *time;
        break;
      }
      case kOptLogLevel: {
        const auto level = gw::ParseLogLevel(value);
        if (!level) return Usage("--log-level takes error, warn, info or debug, not " + value);
        gw::SetLogLevel(*level);
        break;
      }
      case 'h': std::fputs(kHelp, stdout); return 0;
      case 'V': std::puts("fleetcmd-termsim " FC_VERSION); return 0;
      case ':': return Usage("option " + given + " needs a value");
      default: return Usage("unknown option " + given);
    }
  }
  if (optind < argc) return Usage(std::string("unexpected argument ") + argv[optind]);

  hostref::OpenDataDir("");
  std::string error;
  if (!fleet.empty() && !hostref::LoadFleetFile(fleet, &error)) return Usage("cannot load " + fleet + ": " + error);
  if (fleet.empty()) hostref::LoadDefaultFleet();
  if (generate > 0) {
    if (fleet.empty()) hostref::LoadFleet(R"({"vehicles":[]})");
    hostref::AddGeneratedDevices(generate, static_cast<int>(first));
  }
  hostref::terminals::Clear();

  gw::termsim::Terminals terminals(options);
  size_t added = 0;
  for (const std::string& devIdno : gw::termsim::FleetDevices()) {
    if (terminals.Add(devIdno)) {
      ++added;
    } else {
      gw::Log(gw::LogLevel::Warn, "termsim", "device " + devIdno + " has no phone number; no terminal");
    }
  }
  gw::Log(gw::LogLevel::Info, "termsim", std::to_string(added) + " terminals for " + options.host + ":" +
                                             std::to_string(options.port));
  terminals.Run(true);
  return 0;
}
