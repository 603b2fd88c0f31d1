#include "options.h"

#include <getopt.h>

#include "paths.h"

namespace {
enum : int { kOptFixedTime = 1000, kOptDemo, kOptLang, kOptPlugin, kOptData, kOptNet, kOptCommandsMarkdown };

constexpr option kOptions[] = {
    {"script", required_argument, nullptr, 's'},
    {"demo", no_argument, nullptr, kOptDemo},
    {"fixed-time", no_argument, nullptr, kOptFixedTime},
    {"lang", required_argument, nullptr, kOptLang},
    {"plugin", required_argument, nullptr, kOptPlugin},
    {"data", required_argument, nullptr, kOptData},
    {"net", required_argument, nullptr, kOptNet},
    {"help", no_argument, nullptr, 'h'},
    {"version", no_argument, nullptr, 'V'},
    {"commands-markdown", no_argument, nullptr, kOptCommandsMarkdown},
    {nullptr, 0, nullptr, 0},
};

std::string Fail(CommandLine& line, const std::string& what) {
  line.action = CommandLine::Action::Fail;
  line.error = what + " (fleetcmd-host --help lists the options)";
  return line.error;
}

bool ParseNet(const std::string& text, HostOptions* host) {
  if (text == "sim") host->net = NetMode::Sim;
  else if (text == "loop") host->net = NetMode::Loop;
  else if (gw::HostLink::Parse(text)) host->net = NetMode::Gateway, host->gateway = text;
  else return false;
  return true;
}
}  // namespace

CommandLine ParseCommandLine(int argc, char** argv) {
  CommandLine line;
  line.host.pluginPath = paths::DefaultPlugin();
  line.host.languageFile = paths::DefaultLanguageFile();
  opterr = 0;  // the messages below name the option and what to do
  optind = 1;
  for (;;) {
    const int previous = optind;
    const int c = getopt_long(argc, argv, ":s:hV", kOptions, nullptr);
    if (c == -1) break;
    const std::string given = argv[previous < argc ? previous : argc - 1];
    switch (c) {
      case 's': line.script = optarg; break;
      case kOptDemo: line.demo = true; break;
      case kOptFixedTime: line.host.fixedTime = true; break;
      case kOptLang: line.host.languageFile = optarg; break;
      case kOptPlugin: line.host.pluginPath = optarg; break;
      case kOptData:
        line.host.dataDir = optarg;
        line.dataGiven = true;
        break;
      case kOptNet:
        if (!ParseNet(optarg, &line.host)) {
          Fail(line, "--net takes sim, loop, gw or gw://HOST:PORT, not " + std::string(optarg));
          return line;
        }
        break;
      case 'h': line.action = CommandLine::Action::Help; return line;
      case 'V': line.action = CommandLine::Action::Version; return line;
      case kOptCommandsMarkdown: line.action = CommandLine::Action::CommandsMarkdown; return line;
      case ':': Fail(line, "option " + given + " needs a value"); return line;
      default: Fail(line, "unknown option " + given); return line;
    }
  }
  if (optind < argc) Fail(line, std::string("unexpected argument ") + argv[optind]);
  else if (line.demo && !line.script.empty()) Fail(line, "--demo and --script cannot go together");
  return line;
}

std::string HelpText() {
  return "Usage: fleetcmd-host [OPTION]...\n"
         "Load the fleetcmd plug-in into a simulated vehicle-monitoring host and drive it\n"
         "with a script, the built-in demo, or an interactive prompt.\n"
         "\n"
         "Without --script or --demo: the prompt when standard input is a terminal,\n"
         "otherwise the script on standard input.\n"
         "\n"
         "Options:\n"
         "  -s, --script=FILE    run the script FILE ('-' for standard input)\n"
         "      --demo           run the built-in demo script\n"
         "      --fixed-time     pin the clock, so a script prints the same lines on every\n"
         "                       run; the store is a fresh temporary directory unless\n"
         "                       --data is given\n"
         "      --lang=FILE      the language file (default: en.ini of share/fleetcmd/lang\n"
         "                       beside the program, or of data/lang in a build tree)\n"
         "      --plugin=FILE    load another build of the plug-in\n"
         "      --data=DIR       keep configuration and remembered inputs in DIR\n"
         "                       (default: $XDG_DATA_HOME/fleetcmd or ~/.local/share/fleetcmd)\n"
         "      --net=MODE       how requests reach the terminals: sim (default) answers\n"
         "                       them at once; loop carries each one over the terminals'\n"
         "                       binary protocol and back, in this process; gw starts a\n"
         "                       gateway and a binary terminal per device on loopback\n"
         "                       ports in this process and sends through it;\n"
         "                       gw://HOST:PORT sends to a running fleetcmd-gw's control\n"
         "                       port (docs/gateway.md)\n"
         "  -h, --help           show this help and exit\n"
         "  -V, --version        show the version and exit\n"
         "      --commands-markdown  print the command tables of the scripting guide\n"
         "\n"
         "At the prompt, 'help' lists the commands and 'help COMMAND' explains one.\n"
         "The exit status is 0 when every line ran, 1 when a line failed, 2 for a bad\n"
         "command line or a host that cannot start.\n";
}

std::string VersionText() { return "fleetcmd-host " FC_VERSION "\n"; }
