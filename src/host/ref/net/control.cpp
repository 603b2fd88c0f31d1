// The control surface of the simulated platform: what tests and the
// reference host say about sessions, answers, delays and held replies.
#include "host/ref/hostref.h"
#include "host/ref/net/guard.h"
#include "host/ref/net/platform.h"

namespace hostref::net {
namespace {

using netsim::Guarded;
using netsim::Platform;
using netsim::Settings;

// Applies a change to the settings under the platform's lock.
template <class F>
void Change(const char* where, F&& change) {
  Guarded(where, [&] { Platform::Get().Edit(change); });
}

}  // namespace

void Reset() {
  Guarded("net::Reset", [] { Platform::Get().Reset(); });
}

void SetSession(const std::string& session) {
  Change("net::SetSession", [&](Settings& s) { s.session = session; });
}

void SetDelayMs(int ms) {
  Change("net::SetDelayMs", [&](Settings& s) { s.delayMs = ms; });
}

void SetDeviceDelayMs(const std::string& devIdno, int ms) {
  Change("net::SetDeviceDelayMs", [&](Settings& s) { s.Rule(devIdno).delayMs = ms; });
}

void SetStatus(const std::string& devIdno, int status) {
  Change("net::SetStatus", [&](Settings& s) { s.Rule(devIdno).status = status; });
}

void SetReply(const std::string& devIdno, const std::string& reply) {
  auto text = Guarded("net::SetReply", netsim::ReplyText(), [&] { return std::make_shared<const std::string>(reply); });
  Change("net::SetReply", [&](Settings& s) { s.Rule(devIdno).reply = std::move(text); });
}

void ClearReply(const std::string& devIdno) {
  Change("net::ClearReply", [&](Settings& s) { s.Rule(devIdno).reply = nullptr; });
}

void SetDuplicate(const std::string& devIdno, bool twice) {
  Change("net::SetDuplicate", [&](Settings& s) { s.Rule(devIdno).duplicate = twice; });
}

void SetResponder(Responder responder) {
  if (!responder) return SetStatusResponder(nullptr);
  SetStatusResponder([text = std::move(responder)](const SentRequest& request) -> std::optional<ResponderReply> {
    std::optional<std::string> answer = text(request);
    if (!answer) return std::nullopt;
    return ResponderReply{netsim::kStatusAnswered, std::move(answer)};
  });
}

void SetStatusResponder(StatusResponder responder) {
  auto shared = responder ? std::make_shared<const StatusResponder>(std::move(responder)) : nullptr;
  Change("net::SetStatusResponder", [&](Settings& s) { s.responder = std::move(shared); });
}

void SetAnswerDelay(AnswerDelay delay) {
  auto shared = delay ? std::make_shared<const AnswerDelay>(std::move(delay)) : nullptr;
  Change("net::SetAnswerDelay", [&](Settings& s) { s.answerDelay = std::move(shared); });
}

void SetFailOpen(const std::string& devIdno, bool fail) {
  Change("net::SetFailOpen", [&](Settings& s) { s.Rule(devIdno).failOpen = fail; });
}

void SetFailStart(const std::string& devIdno, bool fail) {
  Change("net::SetFailStart", [&](Settings& s) { s.Rule(devIdno).failStart = fail; });
}

void SetHeld(bool held) {
  Change("net::SetHeld", [&](Settings& s) { s.held = held; });
}

size_t HeldCount() { return Guarded("net::HeldCount", size_t{0}, [] { return Platform::Get().HeldCount(); }); }

bool ReleaseNext() {
  return Guarded("net::ReleaseNext", false, [] { return Platform::Get().Release(std::nullopt); });
}

size_t ReleaseAll() {
  size_t released = 0;
  while (ReleaseNext()) ++released;
  return released;
}

void WaitIdle() {
  Guarded("net::WaitIdle", [] { Platform::Get().WaitIdle(); });
}

bool Idle() {
  return Guarded("net::Idle", true, [] { return Platform::Get().Idle(); });
}

bool Release(uint32_t handle) {
  return Guarded("net::Release", false, [&] { return Platform::Get().Release(handle); });
}

std::vector<uint32_t> HeldHandles() {
  return Guarded("net::HeldHandles", std::vector<uint32_t>(), [] { return Platform::Get().HeldHandles(); });
}

void SetOpenObserver(std::function<void(const SentRequest&)> observer) {
  Guarded("net::SetOpenObserver", [&] { Platform::Get().SetOpenObserver(std::move(observer)); });
}

void SetFaultObserver(std::function<void(const std::string&, const char*)> observer) {
  Guarded("net::SetFaultObserver", [&] { Platform::Get().SetFaultObserver(std::move(observer)); });
}

void SetAnswerObserver(AnswerObserver observer) {
  Guarded("net::SetAnswerObserver", [&] { Platform::Get().SetAnswerObserver(std::move(observer)); });
}

std::vector<SentRequest> Sent() {
  return Guarded("net::Sent", std::vector<SentRequest>(), [] { return Platform::Get().Sent(); });
}

void ClearSent() {
  Guarded("net::ClearSent", [] { Platform::Get().ClearSent(); });
}

size_t OpenChannels() {
  return Guarded("net::OpenChannels", size_t{0}, [] { return Platform::Get().OpenChannels(); });
}

}  // namespace hostref::net

namespace hostref::net {
std::vector<AlarmRequest> AlarmRequests() {
  return Guarded("net::AlarmRequests", std::vector<AlarmRequest>(), [] { return Platform::Get().AlarmRequests(); });
}

void ClearAlarmRequests() {
  Guarded("net::ClearAlarmRequests", [] { Platform::Get().ClearAlarmRequests(); });
}

void SetAlarmObserver(std::function<void(const AlarmRequest&)> observer) {
  Guarded("net::SetAlarmObserver", [&] { Platform::Get().SetAlarmObserver(std::move(observer)); });
}
}  // namespace hostref::net
