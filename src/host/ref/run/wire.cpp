#include "host/ref/run/wire.h"

#include <atomic>

#include "host/ref/run/terminals.h"
#include "text/json.h"

namespace hostref::wire {
namespace {
using jt808::Bytes;
using jt808::Edition;
using jt808::Frame;
using jt808::Message;

std::atomic<uint16_t> g_serial{0};

// Frames through a reader and a reassembler, as the receiving side gets them.
std::optional<Frame> Receive(const std::vector<Bytes>& frames) {
  jt808::FrameReader reader;
  jt808::Reassembler whole;
  std::optional<Frame> message;
  for (const Bytes& bytes : frames) {
    reader.Feed(bytes);
    while (auto frame = reader.Next()) {
      if (auto done = whole.Add(std::move(*frame))) message = std::move(done);
    }
  }
  return message;
}

std::optional<int> CommandOf(const std::string& envelope) {
  Json::Value value;
  if (!txt::ParseJson(envelope, value)) return std::nullopt;
  return txt::JsonMemberInt(value, "Command", -1);
}
}  // namespace

std::string NoTerminalMessageReply() {
  Json::Value reply(Json::objectValue);
  reply["Error"] = kNoTerminalMessage;
  return txt::WriteCompactJson(reply);
}

Edition EditionOf(const std::string& devIdno) {
  return terminals::Is2019(devIdno) ? Edition::k2019 : Edition::k2013;
}

std::optional<std::string> PhoneOf(const std::string& devIdno, Edition edition) {
  const size_t digits = edition == Edition::k2019 ? 20 : 12;
  if (devIdno.empty() || devIdno.size() > digits) return std::nullopt;
  for (char c : devIdno) {
    if (c < '0' || c > '9') return std::nullopt;
  }
  return devIdno;
}

Message TerminalAnswer(const std::string& devIdno, const Frame& command) {
  jt808::AnswerContext context;
  context.serial = command.header.serial;
  context.request = command.header.id;
  context.command = command.header.id;
  context.edition = command.header.edition;
  const jt808::CommandCodec* codec = jt808::FindCommand(command.header.id);
  Json::Value failed(Json::objectValue);
  if (!codec || !codec->decode) {
    failed["result"] = jt808::kResultUnsupported;
    return jt808::EncodeAnswer(failed, context);
  }
  Json::Value param;
  try {
    param = codec->decode(command.body, command.header.edition);
  } catch (const jt808::BodyError&) {
    failed["result"] = jt808::kResultMessageError;
    return jt808::EncodeAnswer(failed, context);
  }
  context.param = &param;
  Json::Value reply;
  const terminals::Answer answer = terminals::Respond(devIdno, command.header.id, param);
  if (!answer || !txt::ParseJson(*answer, reply)) reply = failed;  // failed is still {}: a plain success
  return jt808::EncodeAnswer(reply, context);
}

std::optional<std::string> ThroughWire(const SentRequest& request) {
  const std::optional<int> command = CommandOf(request.envelope);
  if (!command) return std::nullopt;
  Json::Value param;
  if (!request.param.empty() && !txt::ParseJson(request.param, param)) return NoTerminalMessageReply();
  const Edition edition = EditionOf(request.devIdno);
  const std::optional<std::string> phone = PhoneOf(request.devIdno, edition);
  if (!phone) return NoTerminalMessageReply();

  Message out;
  try {
    out = jt808::EncodeCommand(*command, param, edition);
  } catch (const jt808::BodyError&) {
    return NoTerminalMessageReply();
  }
  const uint16_t serial = g_serial.fetch_add(1);
  const auto atTerminal = Receive(jt808::EncodeMessage(jt808::MessageHeader(out.id, edition, *phone, serial), out.body));
  if (!atTerminal) return std::nullopt;

  const Message answer = TerminalAnswer(request.devIdno, *atTerminal);
  const auto atPlatform = Receive(jt808::EncodeMessage(jt808::MessageHeader(answer.id, edition, *phone, serial), answer.body));
  if (!atPlatform) return std::nullopt;
  jt808::AnswerContext context{serial, out.id, *command, edition, &param};
  try {
    return txt::WriteCompactJson(jt808::DecodeAnswer({atPlatform->header.id, atPlatform->body}, context));
  } catch (const jt808::BodyError&) {
    return std::nullopt;
  }
}

void Install() {
  terminals::Install();
  net::SetResponder(&ThroughWire);
}

}  // namespace hostref::wire
