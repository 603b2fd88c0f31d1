// fleetcmd-gw: one gateway node between terminals on the binary protocol and
// hosts on the control port (docs/gateway.md).
#include <getopt.h>

#include <cstdio>
#include <string>

#include "gateway/config.h"
#include "gateway/gateway.h"
#include "gateway/log.h"

namespace {
enum : int { kOptBind = 1000, kOptTerminalPort, kOptControlPort, kOptAnswerTimeout, kOptSilentTimeout, kOptAuth,
             kOptLogLevel, kOptNode, kOptBroker };

constexpr option kOptions[] = {
    {"bind", required_argument, nullptr, kOptBind},
    {"terminal-port", required_argument, nullptr, kOptTerminalPort},
    {"control-port", required_argument, nullptr, kOptControlPort},
    {"answer-timeout", required_argument, nullptr, kOptAnswerTimeout},
    {"silent-timeout", required_argument, nullptr, kOptSilentTimeout},
    {"auth", required_argument, nullptr, kOptAuth},
    {"log-level", required_argument, nullptr, kOptLogLevel},
    {"node", required_argument, nullptr, kOptNode},
    {"broker", required_argument, nullptr, kOptBroker},
    {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'V'},
    {nullptr, 0, nullptr, 0},
};

constexpr const char* kHelp =
    "Usage: fleetcmd-gw [OPTION]...\n"
    "Serve terminals that speak the binary vehicle-terminal protocol on one port,\n"
    "and hosts that send them commands as JSON lines on another (docs/gateway.md).\n"
    "\n"
    "Options:\n"
    "      --bind=ADDRESS          listen on ADDRESS (default 127.0.0.1; 0.0.0.0 for all)\n"
    "      --terminal-port=PORT    the terminals' port (default 7808; 0 for any free one)\n"
    "      --control-port=PORT     the hosts' port (default 7809; 0 for any free one)\n"
    "      --answer-timeout=TIME   a request unanswered this long gets status 110\n"
    "                              (default 30s; TIME is 500ms, 30s, 2m or seconds)\n"
    "      --silent-timeout=TIME   a terminal heard nothing from this long is dropped\n"
    "                              (default 180s)\n"
    "      --auth=POLICY           the terminals' authentication codes: derived[:SECRET]\n"
    "                              (default; each code derived from the phone number),\n"
    "                              fixed:CODE (every terminal gets CODE), or any (codes\n"
    "                              derived, every code accepted)\n"
    "      --log-level=LEVEL       error, warn, info (default) or debug; logs go to\n"
    "                              standard error\n"
    "      --broker=HOST:PORT      meet other nodes at this MQTT broker: a request for\n"
    "                              a terminal on another node goes to that node\n"
    "      --node=NAME             this node's name among them (default: gw-PORT, the\n"
    "                              control port)\n"
    "  -h, --help                  show this help and exit\n"
    "  -V, --version               show the version and exit\n"
    "\n"
    "The ports in use are logged at start. The control port answers the lines\n"
    "{\"op\":\"sessions\"}, {\"op\":\"requests\"} and {\"op\":\"counters\"} as well.\n"
    "The exit status is 2 for a bad command line or a port that cannot be opened.\n";

int Usage(const std::string& what) {
  std::fprintf(stderr, "fleetcmd-gw: %s (fleetcmd-gw --help lists the options)\n", what.c_str());
  return 2;
}
}  // namespace

int main(int argc, char** argv) {
  gw::Config config;
  opterr = 0;
  for (;;) {
    const int previous = optind;
    const int c = getopt_long(argc, argv, ":hV", kOptions, nullptr);
    if (c == -1) break;
    const std::string given = argv[previous < argc ? previous : argc - 1];
    const std::string value = optarg ? optarg : "";
    switch (c) {
      case kOptBind: config.bind = value; break;
      case kOptTerminalPort:
      case kOptControlPort: {
        const auto port = gw::ParsePort(value);
        if (!port) return Usage(given + " takes a port number, not " + value);
        (c == kOptTerminalPort ? config.terminalPort : config.controlPort) = *port;
        break;
      }
      case kOptAnswerTimeout:
      case kOptSilentTimeout: {
        const auto time = gw::ParseDuration(value);
        if (!time || time->count() == 0) return Usage(given + " takes a time such as 500ms or 30s, not " + value);
        (c == kOptAnswerTimeout ? config.answerTimeout : config.silentTimeout) = *time;
        break;
      }
      case kOptAuth: {
        const auto policy = gw::AuthPolicy::Parse(value);
        if (!policy) return Usage("--auth takes derived[:SECRET], fixed:CODE or any, not " + value);
        config.auth = *policy;
        break;
      }
      case kOptLogLevel: {
        const auto level = gw::ParseLogLevel(value);
        if (!level) return Usage("--log-level takes error, warn, info or debug, not " + value);
        gw::SetLogLevel(*level);
        break;
      }
      case kOptNode:
        if (value.empty() || value.find_first_of("/+#") != std::string::npos) {
          return Usage("--node takes a name without /, + or #, not " + value);
        }
        config.node = value;
        break;
      case kOptBroker:
        if (!gw::ParseHostPort(value, &config.brokerHost, &config.brokerPort)) {
          return Usage("--broker takes HOST:PORT, not " + value);
        }
        break;
      case 'h': std::fputs(kHelp, stdout); return 0;
      case 'V': std::puts("fleetcmd-gw " FC_VERSION); return 0;
      case ':': return Usage("option " + given + " needs a value");
      default: return Usage("unknown option " + given);
    }
  }
  if (optind < argc) return Usage(std::string("unexpected argument ") + argv[optind]);

  if (!config.brokerHost.empty() && config.node.empty()) config.node = "gw-" + std::to_string(config.controlPort);
  gw::Gateway gateway(config);
  std::string error;
  if (!gateway.Open(&error)) {
    std::fprintf(stderr, "fleetcmd-gw: %s\n", error.c_str());
    return 2;
  }
  gateway.Run(true);
  return 0;
}
