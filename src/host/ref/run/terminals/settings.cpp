// Settings terminals: the terminal attributes and the audio/video attributes,
// by model (a 2019 terminal is another model than a 2013 one).
#include <json/value.h>

#include "host/ref/run/terminals.h"

namespace hostref::terminals {
namespace {
constexpr int kTerminalAttributes = 0x8107;
constexpr int kAudioVideoAttributes = 0x9003;

// The SIM card number as the terminal reports it: BCD bytes of "8986" and the device number.
std::string SimBytes(const std::string& idno) {
  std::string digits = "8986" + idno + "0000000000000000";
  digits.resize(20);
  std::string bytes;
  for (size_t i = 0; i < digits.size(); i += 2) {
    bytes += static_cast<char>(((digits[i] - '0') << 4) | (digits[i + 1] - '0'));
  }
  return bytes;
}

Json::Value Attributes(const std::string& idno) {
  const bool edition2019 = Is2019(idno);
  Json::Value reply;
  reply["DTYPE"] = edition2019 ? 0x0105 : 0x0006;
  reply["MID"] = "FLEET";
  reply["DMODEL"] = edition2019 ? "T19-A" : "T13-B";
  reply["DID"] = "D" + idno;
  reply["DSIM"] = SimBytes(idno);
  if (edition2019) reply["DSIMBCD"] = "8986" + idno;
  reply["DHVER"] = edition2019 ? "HW2.0" : "HW1.4";
  reply["DFVER"] = edition2019 ? "FW5.1.0" : "FW3.2.7";
  reply["GNSSA"] = edition2019 ? 0x03 : 0x01;
  reply["COMMA"] = edition2019 ? 0x21 : 0x01;
  return reply;
}

Json::Value AudioVideo(const std::string& idno) {
  Json::Value reply;
  reply["ACODE"] = 19;
  reply["ACHN"] = 1;
  reply["ASR"] = 0;
  reply["ASB"] = 1;
  reply["AFL"] = 320;
  reply["AOUT"] = 1;
  reply["VCODE"] = Is2019(idno) ? 99 : 98;
  reply["ACHNN"] = 2;
  reply["VCHNN"] = 4;
  return reply;
}

const RegisterResponder kAttributes{kTerminalAttributes,
                                    [](const TerminalRequest& r) -> Answer { return Reply(Attributes(r.devIdno)); }};
const RegisterResponder kAudioVideo{kAudioVideoAttributes,
                                    [](const TerminalRequest& r) -> Answer { return Reply(AudioVideo(r.devIdno)); }};
}  // namespace
}  // namespace hostref::terminals
