// Messaging terminals: text messages are kept as the operator typed them.
#include <json/value.h>

#include "host/ref/run/terminals.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kTextMessage = 0x8300;

DeviceState<std::vector<ReceivedText>> g_texts;

const RegisterResponder kText{kTextMessage, [](const TerminalRequest& r) -> Answer {
  if (!r.param.isObject()) return Reply({}, kResultMessageError);
  g_texts[r.devIdno].push_back({txt::JsonMemberInt(r.param, "Flag", 0), txt::JsonMemberInt(r.param, "TextType", 0),
                                TypedText(r.param, "TextInfo")});
  return Reply({});
}};
}  // namespace

std::vector<ReceivedText> Texts(const std::string& devIdno) {
  auto lock = Locked();
  const auto* texts = g_texts.Find(devIdno);
  return texts ? *texts : std::vector<ReceivedText>{};
}

}  // namespace hostref::terminals
