// Alarm terminals: a manual alarm confirmation clears the confirmed alarm
// types on the terminal; each terminal keeps the confirmations it got.
#include <json/value.h>

#include "host/ref/run/terminals.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kConfirmAlarm = 0x8203;
constexpr int kAbsent = -1;

DeviceState<std::vector<AlarmConfirmation>> g_confirmations;

const RegisterResponder kConfirm{kConfirmAlarm, [](const TerminalRequest& r) -> Answer {
  const int serial = txt::JsonMemberInt(r.param, "MSGID", kAbsent);
  const int types = txt::JsonMemberInt(r.param, "ALTY", kAbsent);
  if (serial < 0 || types == kAbsent) return Reply({}, kResultMessageError);
  g_confirmations[r.devIdno].push_back({serial, static_cast<uint32_t>(types)});
  return Reply({});
}};
}  // namespace

std::vector<AlarmConfirmation> AlarmConfirmations(const std::string& devIdno) {
  auto lock = Locked();
  const auto* confirmations = g_confirmations.Find(devIdno);
  return confirmations ? *confirmations : std::vector<AlarmConfirmation>{};
}

}  // namespace hostref::terminals
