// A gateway node under load on loopback: N binary terminals
// (fleetcmd-termsim, a process of its own) connect; a text message goes to
// each of them through the control port, at most 100 out at a time as the
// pages send them, for a few rounds; every answer must come back. Prints the
// frames per second the node handled and its memory per session (the growth
// of this process's resident memory while the sessions opened).
// Usage: gw_load [TERMINALS [ROUNDS]]   (default 1000 terminals, 5 rounds)
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

#include "gateway/control_client.h"
#include "gateway/gateway.h"
#include "gateway/log.h"

extern char** environ;

namespace {
using namespace std::chrono_literals;
constexpr size_t kOutstanding = 100;  // the pages' limit of requests out at a time
constexpr long kFirstDevice = 40'000'000;

// Resident memory of this process in kilobytes.
long ResidentKb() {
  std::ifstream status("/proc/self/status");
  std::string key;
  long value = 0;
  while (status >> key) {
    if (key == "VmRSS:") {
      status >> value;
      return value;
    }
    status.ignore(4096, '\n');
  }
  return 0;
}
}  // namespace

int main(int argc, char** argv) {
  const int terminals = argc > 1 ? std::atoi(argv[1]) : 1000;
  const int rounds = argc > 2 ? std::atoi(argv[2]) : 5;
  if (terminals <= 0 || rounds <= 0) {
    std::fprintf(stderr, "usage: gw_load [TERMINALS [ROUNDS]]\n");
    return 2;
  }
  gw::SetLogLevel(gw::LogLevel::Warn);
  gw::Config config;
  config.terminalPort = 0;
  config.controlPort = 0;
  gw::Gateway gateway(config);
  std::string error;
  if (!gateway.Open(&error)) {
    std::fprintf(stderr, "gw_load: %s\n", error.c_str());
    return 1;
  }
  gateway.Start();
  const long before = ResidentKb();

  const std::string port = std::to_string(gateway.TerminalPort());
  const std::string count = std::to_string(terminals);
  const std::string first = std::to_string(kFirstDevice);
  std::vector<std::string> args = {FC_TERMSIM, "--port", port, "--generate", count, "--first", first};
  std::vector<char*> argvSim;
  for (auto& a : args) argvSim.push_back(a.data());
  argvSim.push_back(nullptr);
  pid_t sim = 0;
  if (posix_spawn(&sim, FC_TERMSIM, nullptr, nullptr, argvSim.data(), environ) != 0) {
    std::fprintf(stderr, "gw_load: cannot start %s\n", FC_TERMSIM);
    return 1;
  }
  const auto connectStart = std::chrono::steady_clock::now();
  const bool online = gateway.WaitUntil(
      [&](const gw::Counters& c) { return c.authenticated == static_cast<uint64_t>(terminals); }, 120s);
  const double connectSeconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - connectStart).count();
  const long after = ResidentKb();
  int status = 1;
  if (!online) {
    std::fprintf(stderr, "gw_load: only %llu of %d terminals came online\n",
                 static_cast<unsigned long long>(gateway.Count().authenticated), terminals);
  } else {
    gw::ControlClient client(60s);
    if (!client.Connect("127.0.0.1", gateway.ControlPort(), &error)) {
      std::fprintf(stderr, "gw_load: %s\n", error.c_str());
    } else {
      std::vector<gw::control::Request> requests;
      for (int round = 0; round < rounds; ++round) {
        for (int i = 0; i < terminals; ++i) {
          gw::control::Request request;
          request.dev = std::to_string(kFirstDevice + i);
          request.envelope = R"({"Command":33536})";
          request.param = R"({"Flag":8,"TextInfo":"Please+return+to+the+depot%2E","TextType":1})";
          requests.push_back(request);
        }
      }
      const gw::Counters start = gateway.Count();
      const auto t0 = std::chrono::steady_clock::now();
      const auto answers = gw::SendPaced(client, requests, kOutstanding);
      const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
      const gw::Counters end = gateway.Count();
      size_t good = 0;
      for (const auto& a : answers) good += a.status == 0 && a.reply == R"({"Error":0,"result":0})" ? 1 : 0;
      const double frames = static_cast<double>((end.framesIn - start.framesIn) + (end.framesOut - start.framesOut));
      std::printf("terminals %d, connected in %.2f s; memory per session %.1f KiB (%ld KiB for all)\n", terminals,
                  connectSeconds, static_cast<double>(after - before) / terminals, after - before);
      std::printf("text messages %zu (%d rounds, at most %zu out): %zu answered, %.2f s, %.0f requests/s, "
                  "%.0f frames/s\n",
                  requests.size(), rounds, kOutstanding, good, seconds, requests.size() / seconds, frames / seconds);
      status = good == requests.size() ? 0 : 1;
    }
  }
  kill(sim, SIGTERM);
  waitpid(sim, nullptr, 0);
  gateway.Stop();
  return status;
}
