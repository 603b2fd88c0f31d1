#include "gateway/termsim/host_link.h"

#include <chrono>

#include "gateway/control_client.h"
#include "gateway/gateway.h"
#include "gateway/log.h"
#include "gateway/termsim/terminals.h"
#include "host/ref/hostref.h"

namespace gw {
namespace {
using namespace std::chrono_literals;
constexpr std::string_view kInProcess = "gw", kRemotePrefix = "gw://";
// In process: how long a terminal may take to come online, and a request its answer.
constexpr auto kOnlineWait = 10s;
constexpr auto kLocalAnswerTimeout = 10s;
constexpr auto kLocalClientWait = 15s;
// A running gateway answers 110 itself after its own timeout (30 s by default).
constexpr auto kRemoteClientWait = 45s;
}  // namespace

struct HostLink::Impl {
  std::unique_ptr<Gateway> gateway;
  // Shared with the responder, which may still run on a network thread when the link stops.
  std::shared_ptr<termsim::Terminals> terminals;
  std::shared_ptr<ControlClient> client;
};

std::optional<HostLink::Target> HostLink::Parse(std::string_view text) {
  Target target;
  if (text == kInProcess) return target;
  if (!text.starts_with(kRemotePrefix)) return std::nullopt;
  if (!ParseHostPort(text.substr(kRemotePrefix.size()), &target.host, &target.port)) return std::nullopt;
  target.inProcess = false;
  return target;
}

HostLink::HostLink() : impl_(std::make_unique<Impl>()) {}

HostLink::~HostLink() { Stop(); }

bool HostLink::Start(const Target& target, std::string* error) {
  Stop();
  Impl& l = *impl_;
  std::string host = target.host;
  uint16_t port = target.port;
  if (target.inProcess) {
    // Only what goes wrong is logged: the host's own lines are the output.
    SetLogLevel(LogLevel::Error);
    Config config;
    config.terminalPort = 0;
    config.controlPort = 0;
    config.answerTimeout = kLocalAnswerTimeout;
    l.gateway = std::make_unique<Gateway>(config);
    if (!l.gateway->Open(error)) {
      l.gateway.reset();
      return false;
    }
    l.gateway->Start();
    termsim::Options options;
    options.port = l.gateway->TerminalPort();
    l.terminals = std::make_shared<termsim::Terminals>(options);
    l.terminals->Start();
    size_t added = 0;
    for (const std::string& devIdno : termsim::FleetDevices()) added += l.terminals->Add(devIdno) ? 1 : 0;
    if (!l.terminals->WaitUntil([&](const termsim::Stats& s) { return s.online >= added; }, kOnlineWait)) {
      if (error) *error = "the simulated terminals did not all come online";
      Stop();
      return false;
    }
    host = "127.0.0.1";
    port = l.gateway->ControlPort();
  }
  l.client = std::make_shared<ControlClient>(target.inProcess ? kLocalClientWait : kRemoteClientWait);
  if (!l.client->Connect(host, port, error)) {
    Stop();
    return false;
  }
  hostref::net::SetStatusResponder(
      [terminals = l.terminals, client = l.client](const hostref::SentRequest& request) -> std::optional<hostref::net::ResponderReply> {
        // A request without a command (the alarm service's) gets the platform's default answer.
        if (!control::CommandOf(request.envelope)) return std::nullopt;
        if (terminals && terminals->Add(request.devIdno)) terminals->WaitOnline(request.devIdno, kOnlineWait);
        control::Answer answer = client->Send(request.devIdno, request.envelope, request.param);
        return hostref::net::ResponderReply{answer.status, std::move(answer.reply)};
      });
  return true;
}

void HostLink::Stop() {
  Impl& l = *impl_;
  if (l.client) {
    // A responder running now finds the connection closed and answers 110 at once.
    hostref::net::SetStatusResponder(nullptr);
    l.client->Close();
  }
  if (l.terminals) l.terminals->Stop();
  if (l.gateway) l.gateway->Stop();
  l.client.reset();
  l.terminals.reset();
  l.gateway.reset();
}

}  // namespace gw
