// Settings terminals: the night-driving and driving-ban rules. A set keeps the
// rule as the terminal received it; the matching query answers it back. A
// terminal that never got a rule answers an empty one.
#include <json/value.h>

#include <string>

#include "host/ref/run/terminals.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kSetNight = 0xA040, kSetBan = 0xA041, kQueryNight = 0xA042, kQueryBan = 0xA043;
constexpr const char* kEmptyTime = "0000-00-00 00:00:00";

struct RuleKeys {
  const char *first, *second;
};
constexpr RuleKeys kNightKeys{"LMT", "PCT"}, kBanKeys{"SEC", "SPD"};

struct Rule {
  std::string begin = kEmptyTime, end = kEmptyTime;
  int first = 0, second = 0;
};
struct Rules {
  Rule night, ban;
};
DeviceState<Rules> g_rules;

Responder Set(Rule Rules::*which, RuleKeys keys) {
  return [which, keys](const TerminalRequest& r) -> Answer {
    const Json::Value& p = r.param;
    if (!p.isObject() || !p.isMember("BTM") || !p.isMember("ETM") || !p.isMember(keys.first) ||
        !p.isMember(keys.second)) {
      return Reply({}, kResultMessageError);
    }
    g_rules[r.devIdno].*which = {txt::JsonMemberString(p, "BTM"), txt::JsonMemberString(p, "ETM"),
                                 txt::JsonMemberInt(p, keys.first, 0), txt::JsonMemberInt(p, keys.second, 0)};
    return Reply({});
  };
}

Responder Query(Rule Rules::*which, RuleKeys keys) {
  return [which, keys](const TerminalRequest& r) -> Answer {
    const Rule& rule = g_rules[r.devIdno].*which;
    Json::Value reply(Json::objectValue);
    reply["BTM"] = rule.begin;
    reply["ETM"] = rule.end;
    reply[keys.first] = rule.first;
    reply[keys.second] = rule.second;
    return Reply(reply);
  };
}

const RegisterResponder kNightSet{kSetNight, Set(&Rules::night, kNightKeys)};
const RegisterResponder kBanSet{kSetBan, Set(&Rules::ban, kBanKeys)};
const RegisterResponder kNightQuery{kQueryNight, Query(&Rules::night, kNightKeys)};
const RegisterResponder kBanQuery{kQueryBan, Query(&Rules::ban, kBanKeys)};
}  // namespace
}  // namespace hostref::terminals
