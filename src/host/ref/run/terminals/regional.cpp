// Regional and taxi terminals: transparent data is kept by its sub-type, the
// IC card blacklist is extended or cleared, and the inspection settings are
// kept so that a later look shows the last one.
#include <json/value.h>

#include "host/ref/run/terminals.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kBlacklist = 0x8106, kInspect = 0x9720, kDriverIdentity = 0x9706;
constexpr int kAbsent = -1;

DeviceState<std::vector<TransparentData>> g_transparent;
DeviceState<std::vector<std::string>> g_blacklists;
DeviceState<InspectionState> g_inspections;


const RegisterResponder kCards{kBlacklist, [](const TerminalRequest& r) -> Answer {
  const int count = txt::JsonMemberInt(r.param, "Count", kAbsent);
  const Json::Value& items = r.param.isObject() ? r.param["icItem"] : Json::Value::nullSingleton();
  if (count < 0 || !items.isArray() || items.size() != static_cast<Json::ArrayIndex>(count))
    return Reply({}, kResultMessageError);
  std::vector<std::string>& list = g_blacklists[r.devIdno];
  if (count == 0) list.clear();
  for (const Json::Value& item : items) list.push_back(item.isString() ? item.asString() : "");
  return Reply({});
}};

const RegisterResponder kInspection{kInspect, [](const TerminalRequest& r) -> Answer {
  const int type = txt::JsonMemberInt(r.param, "Type", kAbsent);
  if (type < 0) return Reply({}, kResultMessageError);
  g_inspections[r.devIdno].type = type;
  return Reply({});
}};

const RegisterResponder kIdentity{kDriverIdentity, [](const TerminalRequest& r) -> Answer {
  ++g_inspections[r.devIdno].identityRequests;
  return Reply({});
}};
}  // namespace

// The provincial form of the transparent data command (0x8900, answered by
// the pass-through responder): kept by sub-type.
Answer ProvincialTransparentData(const TerminalRequest& r) {
  const int type = txt::JsonMemberInt(r.param, "SCTYPE", kAbsent);
  if (type == kAbsent) return Reply({}, kResultMessageError);
  g_transparent[r.devIdno].push_back({type, txt::JsonMemberInt(r.param, "SCID", kAbsent),
                                      txt::JsonMemberInt(r.param, "SCOPER", kAbsent), TypedText(r.param, "SCNOTE")});
  return Reply({});
}

std::vector<TransparentData> TransparentDataOf(const std::string& devIdno) {
  auto lock = Locked();
  const auto* data = g_transparent.Find(devIdno);
  return data ? *data : std::vector<TransparentData>{};
}

std::vector<std::string> Blacklist(const std::string& devIdno) {
  auto lock = Locked();
  const auto* list = g_blacklists.Find(devIdno);
  return list ? *list : std::vector<std::string>{};
}

InspectionState Inspection(const std::string& devIdno) {
  auto lock = Locked();
  const auto* state = g_inspections.Find(devIdno);
  return state ? *state : InspectionState{};
}

}  // namespace hostref::terminals
