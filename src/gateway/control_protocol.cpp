#include "gateway/control_protocol.h"

#include "jt808/codec.h"
#include "text/json.h"

namespace gw::control {
namespace {
bool IsScalar(const Json::Value& v) { return v.isNull() || v.isString() || v.isIntegral() || v.isDouble(); }
}  // namespace

std::string NoTerminalMessageReply() {
  Json::Value reply(Json::objectValue);
  reply["Error"] = kNoTerminalMessage;
  return txt::WriteCompactJson(reply);
}

std::string UnreadableAnswerReply() {
  Json::Value reply(Json::objectValue);
  reply["Error"] = 0;
  reply["result"] = jt808::kResultMessageError;
  return txt::WriteCompactJson(reply);
}

Line Parse(std::string_view text) {
  Line line;
  Json::Value value;
  if (!txt::ParseJson(text, value) || !value.isObject()) {
    line.error = "not a JSON object";
    return line;
  }
  line.request.id = value.get(kId, Json::Value());
  if (!IsScalar(line.request.id)) {
    line.request.id = Json::Value();
    line.error = "the id is no number or text";
    return line;
  }
  const Json::Value& op = value[kOp];
  line.op = op.isString() ? op.asString() : kOpSend;
  if (!op.isNull() && !op.isString()) line.error = "op is no text";
  if (line.op != kOpSend) return line;
  auto member = [&](const char* key, std::string& out, bool required) {
    const Json::Value& field = value[key];
    if (field.isString()) {
      out = field.asString();
    } else if (required || !field.isNull()) {
      if (line.error.empty()) line.error = std::string(key) + " is no text";
    }
  };
  member(kDev, line.request.dev, true);
  member(kEnvelope, line.request.envelope, true);
  member(kParam, line.request.param, false);
  return line;
}

std::string RequestLine(const Request& request) {
  Json::Value line(Json::objectValue);
  line[kId] = request.id;
  line[kDev] = request.dev;
  line[kEnvelope] = request.envelope;
  line[kParam] = request.param;
  return txt::WriteCompactJson(line);
}

std::string AnswerLine(const Json::Value& id, int status, const std::optional<std::string>& reply) {
  Json::Value line(Json::objectValue);
  line[kId] = id;
  line[kStatus] = status;
  if (reply) line[kReply] = *reply;
  return txt::WriteCompactJson(line);
}

std::string ErrorLine(const Json::Value& id, std::string_view error) {
  Json::Value line(Json::objectValue);
  line[kId] = id;
  line[kError] = std::string(error);
  return txt::WriteCompactJson(line);
}

std::string InspectLine(const std::string& op, const Json::Value& body) {
  Json::Value line(Json::objectValue);
  line[kOp] = op;
  line[op] = body;
  return txt::WriteCompactJson(line);
}

std::optional<Answer> ParseAnswer(std::string_view text) {
  Json::Value value;
  if (!txt::ParseJson(text, value) || !value.isObject() || !value.isMember(kStatus)) return std::nullopt;
  Answer answer;
  answer.id = value[kId];
  answer.status = txt::JsonMemberInt(value, kStatus, kStatusTimeout);
  if (value[kReply].isString()) answer.reply = value[kReply].asString();
  return answer;
}

std::optional<int> CommandOf(const std::string& envelope) {
  Json::Value value;
  if (!txt::ParseJson(envelope, value) || !value.isObject()) return std::nullopt;
  const int command = txt::JsonMemberInt(value, kCommand, -1);
  if (command < 0) return std::nullopt;
  return command;
}

}  // namespace gw::control
