#include "host/ref/run/terminals.h"

#include <map>
#include <optional>
#include <mutex>

#include <json/json.h>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "text/encoding.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {

enum Command : int {
  kTextMessage = 0x8300,
  kTerminalAttributes = 0x8107,
  kAudioVideoAttributes = 0x9003,
  kPositionQuery = 0x8201,
};
constexpr int kResultMessageError = 2;
constexpr int kAttrProtocol2019 = 80;
// Where the simulated vehicles stand, degrees x 10^6, and how far a query moves them.
constexpr int kBaseLatitude = 22543000, kBaseLongitude = 114057000, kStepLatitude = 120, kStepLongitude = 90;

struct Terminal {
  std::vector<ReceivedText> texts;
  std::map<int, size_t> queries;
};

std::mutex g_mutex;
std::map<std::string, Terminal> g_terminals;

std::string Reply(Json::Value reply, int result = 0) {
  reply["Error"] = 0;
  reply["result"] = result;
  return txt::WriteCompactJson(reply);
}

bool Is2019(const std::string& idno) {
  return CVehicleBaseMgr::FindDvsDeviceByIDNO(idno.c_str()).GetDevInt(kAttrProtocol2019) != 0;
}

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

Json::Value Position(size_t query) {
  const int step = static_cast<int>(query);
  Json::Value reply;
  reply["Lat"] = kBaseLatitude + step * kStepLatitude;
  reply["Lng"] = kBaseLongitude + step * kStepLongitude;
  reply["Speed"] = 350 + step % 7 * 10;
  reply["Direction"] = (step * 15) % 360;
  reply["Alarm"] = 0;
  reply["Status"] = 3;
  return reply;
}

std::optional<std::string> Answer(const SentRequest& request) {
  Json::Value envelope;
  if (!txt::ParseJson(request.envelope, envelope)) return std::nullopt;
  const int command = txt::JsonMemberInt(envelope, "Command", -1);
  Json::Value param;
  const bool hasParam = !request.param.empty();
  if (hasParam && !txt::ParseJson(request.param, param)) return Reply(Json::Value(Json::objectValue), kResultMessageError);

  std::lock_guard lock(g_mutex);
  Terminal& terminal = g_terminals[request.devIdno];
  const size_t count = terminal.queries[command]++;
  switch (command) {
    case kTextMessage: {
      if (!param.isObject()) return Reply(Json::Value(Json::objectValue), kResultMessageError);
      terminal.texts.push_back({txt::JsonMemberInt(param, "Flag", 0), txt::JsonMemberInt(param, "TextType", 0),
                                txt::GbkToUtf8(FormDecode(txt::JsonMemberString(param, "TextInfo")))});
      return Reply(Json::Value(Json::objectValue));
    }
    case kTerminalAttributes:
      return Reply(Attributes(request.devIdno));
    case kAudioVideoAttributes:
      return Reply(AudioVideo(request.devIdno));
    case kPositionQuery:
      return Reply(Position(count));
    default:
      return Reply(Json::Value(Json::objectValue));
  }
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}
}  // namespace

std::string FormDecode(const std::string& text) {
  // Only a form-encoded text has "%XX"; a plain one went out as typed.
  bool encoded = false;
  for (size_t i = 0; i + 2 < text.size() && !encoded; ++i) {
    encoded = text[i] == '%' && HexDigit(text[i + 1]) >= 0 && HexDigit(text[i + 2]) >= 0;
  }
  if (!encoded) return text;
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '+') {
      out += ' ';
    } else if (text[i] == '%' && i + 2 < text.size() && HexDigit(text[i + 1]) >= 0 && HexDigit(text[i + 2]) >= 0) {
      out += static_cast<char>(HexDigit(text[i + 1]) * 16 + HexDigit(text[i + 2]));
      i += 2;
    } else {
      out += text[i];
    }
  }
  return out;
}

void Install() { net::SetResponder(&Answer); }
void Uninstall() { net::SetResponder(nullptr); }

void Clear() {
  std::lock_guard lock(g_mutex);
  g_terminals.clear();
}

std::vector<ReceivedText> Texts(const std::string& devIdno) {
  std::lock_guard lock(g_mutex);
  auto it = g_terminals.find(devIdno);
  return it == g_terminals.end() ? std::vector<ReceivedText>{} : it->second.texts;
}

size_t QueryCount(const std::string& devIdno, int command) {
  std::lock_guard lock(g_mutex);
  auto it = g_terminals.find(devIdno);
  if (it == g_terminals.end()) return 0;
  auto q = it->second.queries.find(command);
  return q == it->second.queries.end() ? 0 : q->second;
}

}  // namespace hostref::terminals
