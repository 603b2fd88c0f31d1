#include "jt808/codec.h"

#include <map>

#include "text/encoding.h"
#include "text/json.h"

namespace jt808 {
namespace {

std::map<int, CommandCodec>& CommandCodecs() {
  static std::map<int, CommandCodec> codecs;
  return codecs;
}

std::map<uint16_t, AnswerCodec>& AnswerCodecs() {
  static std::map<uint16_t, AnswerCodec> codecs;
  return codecs;
}

std::vector<int>& Duplicates() {
  static std::vector<int> duplicates;
  return duplicates;
}

// The general reply: the request's serial, its message id and the result.
const RegisterAnswer kGeneral{kGeneralReply,
                              {true,
                               [](ByteView body, const AnswerContext&) {
                                 Reader r(body);
                                 r.U16();
                                 r.U16();
                                 Json::Value reply(Json::objectValue);
                                 reply["result"] = r.U8();
                                 return reply;
                               },
                               [](const Json::Value& reply, const AnswerContext& context) {
                                 const int result = txt::JsonMemberInt(reply, "result", kResultOk);
                                 return Writer()
                                     .U16(context.serial)
                                     .U16(context.request)
                                     .U8(result < 0 || result > 0xFF ? kResultFailed : result)
                                     .Take();
                               }}};

}  // namespace

RegisterCommand::RegisterCommand(int command, CommandCodec codec) {
  if (!CommandCodecs().emplace(command, std::move(codec)).second) Duplicates().push_back(command);
}

RegisterAnswer::RegisterAnswer(uint16_t message, AnswerCodec codec) {
  if (!AnswerCodecs().emplace(message, std::move(codec)).second) Duplicates().push_back(message);
}

const CommandCodec* FindCommand(int command) {
  auto it = CommandCodecs().find(command);
  return it == CommandCodecs().end() ? nullptr : &it->second;
}

const AnswerCodec* FindAnswer(uint16_t message) {
  auto it = AnswerCodecs().find(message);
  return it == AnswerCodecs().end() ? nullptr : &it->second;
}

std::vector<int> Commands() {
  std::vector<int> numbers;
  for (const auto& [number, codec] : CommandCodecs()) numbers.push_back(number);
  return numbers;
}

std::vector<uint16_t> Answers() {
  std::vector<uint16_t> numbers;
  for (const auto& [number, codec] : AnswerCodecs()) numbers.push_back(number);
  return numbers;
}

std::vector<int> DuplicateCodecs() { return Duplicates(); }

Message EncodeCommand(int command, const Json::Value& param, Edition edition) {
  const CommandCodec* codec = FindCommand(command);
  if (!codec || !codec->encode) throw BodyError("command " + std::to_string(command) + " has no terminal message");
  return {codec->message, codec->encode(param, edition)};
}

Message EncodeAnswer(const Json::Value& reply, const AnswerContext& context) {
  const CommandCodec* command = FindCommand(context.command);
  const bool succeeded = txt::JsonMemberInt(reply, "Error", 0) == 0 &&
                         txt::JsonMemberInt(reply, "result", kResultOk) == kResultOk;
  if (succeeded && command && command->answer != kGeneralReply) {
    const AnswerCodec* own = FindAnswer(command->answer);
    if (own && own->encode) {
      try {
        Bytes body = own->encode(reply, context);
        if (!body.empty()) return {command->answer, std::move(body)};
      } catch (const BodyError&) {
        // A reply the answer cannot carry goes back as a failed general reply.
        Json::Value failed(Json::objectValue);
        failed["result"] = kResultFailed;
        return {kGeneralReply, FindAnswer(kGeneralReply)->encode(failed, context)};
      }
    }
  }
  return {kGeneralReply, FindAnswer(kGeneralReply)->encode(reply, context)};
}

Json::Value DecodeAnswer(const Message& answer, const AnswerContext& context) {
  const AnswerCodec* codec = FindAnswer(answer.id);
  if (!codec || !codec->decode) throw BodyError("no reader for answer " + std::to_string(answer.id));
  Json::Value reply = codec->decode(answer.body, context);
  if (!reply.isObject()) reply = Json::Value(Json::objectValue);
  if (!reply.isMember("result")) reply["result"] = kResultOk;
  reply["Error"] = 0;
  return reply;
}

std::optional<uint16_t> AnsweredSerial(const Message& answer) {
  const AnswerCodec* codec = FindAnswer(answer.id);
  if (!codec || !codec->leadsWithSerial || answer.body.size() < 2) return std::nullopt;
  return static_cast<uint16_t>(answer.body[0] << 8 | answer.body[1]);
}

std::string WireText(const Json::Value& param, const char* key) {
  return txt::FormDecode(txt::JsonMemberString(param, key));
}

// As a page writes a text: form-encoded only when it holds "+" or "%".
std::string PageText(std::string_view wireBytes) {
  return wireBytes.find_first_of("+%") == std::string_view::npos ? std::string(wireBytes) : txt::FormEncode(wireBytes);
}

}  // namespace jt808
