// The terminals' dispatch: parses each request, counts it, and hands it to
// the responder registered for its command number.
#include "host/ref/run/terminals.h"

#include <json/json.h>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "text/encoding.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kAttrProtocol2019 = 80;

std::recursive_mutex& Mutex() {
  static std::recursive_mutex mutex;
  return mutex;
}

std::map<int, Responder>& Responders() {
  static std::map<int, Responder> responders;
  return responders;
}

std::map<int, int>& AnswerDelays() {
  static std::map<int, int> delays;
  return delays;
}

// The command number of a request; nullopt when its envelope is not JSON.
std::optional<int> CommandOf(const SentRequest& request) {
  Json::Value envelope;
  if (!txt::ParseJson(request.envelope, envelope)) return std::nullopt;
  return txt::JsonMemberInt(envelope, "Command", -1);
}

std::vector<std::function<void()>>& ClearHooks() {
  static std::vector<std::function<void()>> hooks;
  return hooks;
}

// How many of each command each device got.
DeviceState<std::map<int, size_t>>& Counts() {
  static DeviceState<std::map<int, size_t>> counts;
  return counts;
}

std::optional<std::string> Dispatch(const SentRequest& request) {
  const std::optional<int> parsed = CommandOf(request);
  if (!parsed) return std::nullopt;
  const int command = *parsed;
  Json::Value param;
  if (!request.param.empty() && !txt::ParseJson(request.param, param)) {
    return Reply(Json::Value(Json::objectValue), kResultMessageError);
  }
  return Respond(request.devIdno, command, param);
}

std::vector<int>& Duplicates() {
  static std::vector<int> duplicates;
  return duplicates;
}
}  // namespace

Answer Respond(const std::string& devIdno, int command, const Json::Value& param) {
  auto lock = Locked();
  const size_t count = Counts()[devIdno][command]++;
  auto it = Responders().find(command);
  if (it == Responders().end()) return Reply(Json::Value(Json::objectValue));
  return it->second(TerminalRequest{devIdno, command, param, count});
}

RegisterResponder::RegisterResponder(int command, Responder responder, int answerDelayMs) {
  if (!Responders().emplace(command, std::move(responder)).second) {
    Duplicates().push_back(command);
    return;
  }
  if (answerDelayMs > 0) AnswerDelays()[command] = answerDelayMs;
}

int AnswerDelayMs(int command) {
  auto it = AnswerDelays().find(command);
  return it == AnswerDelays().end() ? 0 : it->second;
}

std::vector<int> DuplicateResponders() { return Duplicates(); }

void AddClearHook(std::function<void()> clear) { ClearHooks().push_back(std::move(clear)); }

std::unique_lock<std::recursive_mutex> Locked() { return std::unique_lock<std::recursive_mutex>(Mutex()); }

std::string Reply(Json::Value body, int result) {
  if (!body.isObject()) body = Json::Value(Json::objectValue);
  body["Error"] = 0;
  body["result"] = result;
  return txt::WriteCompactJson(body);
}

bool Is2019(const std::string& idno) {
  return CVehicleBaseMgr::FindDvsDeviceByIDNO(idno.c_str()).GetDevInt(kAttrProtocol2019) != 0;
}

std::string FormDecode(const std::string& text) { return txt::FormDecode(text); }

std::string TypedText(const Json::Value& param, const char* key) {
  return txt::GbkToUtf8(FormDecode(txt::JsonMemberString(param, key)));
}

void Install() {
  net::SetResponder(&Dispatch);
  net::SetAnswerDelay([](const SentRequest& request) { return AnswerDelayMs(CommandOf(request).value_or(-1)); });
}
void Uninstall() {
  net::SetResponder(nullptr);
  net::SetAnswerDelay(nullptr);
}

void Clear() {
  auto lock = Locked();
  for (const auto& clear : ClearHooks()) clear();
}

size_t QueryCount(const std::string& devIdno, int command) {
  auto lock = Locked();
  const auto* counts = Counts().Find(devIdno);
  if (!counts) return 0;
  auto it = counts->find(command);
  return it == counts->end() ? 0 : it->second;
}

}  // namespace hostref::terminals
