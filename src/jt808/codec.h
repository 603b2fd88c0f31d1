// Commands and answers as they travel to and from a terminal. Each command
// number the pages send has one CommandCodec: from the parameter object of
// the request to the message body, and back again on a terminal's side. Each
// answer message has one AnswerCodec: from its body to the reply object the
// pages read, and back again on a terminal's side. A family registers its
// codecs beside each other in src/jt808/codecs/<family>.cpp:
//
//   const RegisterCommand kText{0x8300, {0x8300, kGeneralReply,
//       [](const Json::Value& param, Edition) { ... return w.Take(); },
//       [](ByteView body, Edition) { ... return param; }}};
//
// A command number without a codec is the platform's own and never reaches a
// terminal. Encoders and decoders throw BodyError on what they cannot carry.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <json/value.h>

#include "jt808/bytes.h"

namespace jt808 {

// The edition of the protocol a terminal speaks; it decides the header and
// the layout of some bodies.
enum class Edition { k2013, k2019 };

constexpr uint16_t kGeneralReply = 0x0001;          // a terminal's general answer
constexpr uint16_t kPlatformGeneralReply = 0x8001;  // the platform's general answer

// Results a general reply carries (and the "result" of the reply object).
constexpr int kResultOk = 0;
constexpr int kResultFailed = 1;
constexpr int kResultMessageError = 2;
constexpr int kResultUnsupported = 3;

struct CommandCodec {
  uint16_t message = 0;                // the message id on the wire
  uint16_t answer = kGeneralReply;     // the answer that settles the command when it succeeds
  // The parameter object (null when the request had none) to the body.
  std::function<Bytes(const Json::Value& param, Edition edition)> encode;
  // A terminal's side: the body back to a parameter object its responder reads.
  std::function<Json::Value(ByteView body, Edition edition)> decode;
};

// What an answer is read against: the request it answers.
struct AnswerContext {
  uint16_t serial = 0;   // the serial number of the request's message
  uint16_t request = 0;  // the message id of the request
  int command = 0;       // the command number of the request
  Edition edition = Edition::k2013;
  const Json::Value* param = nullptr;  // the request's parameter object, where the reader kept it
};

struct AnswerCodec {
  // The body starts with the serial number of the request it answers; an
  // answer without one settles the oldest open request it can answer.
  bool leadsWithSerial = true;
  // The whole body to the reply members the pages read ("Error" and
  // "result" are added by the caller).
  std::function<Json::Value(ByteView body, const AnswerContext& context)> decode;
  // A terminal's side: the reply object to the whole body (serial included);
  // no bytes when the reply is not this answer's to give (the general reply
  // then carries its result).
  std::function<Bytes(const Json::Value& reply, const AnswerContext& context)> encode;
};

// Registration at static initialisation; a second registration of a number is
// kept aside and listed by DuplicateCodecs() so a test can catch it.
struct RegisterCommand {
  RegisterCommand(int command, CommandCodec codec);
};
struct RegisterAnswer {
  RegisterAnswer(uint16_t message, AnswerCodec codec);
};

const CommandCodec* FindCommand(int command);
const AnswerCodec* FindAnswer(uint16_t message);
std::vector<int> Commands();
std::vector<uint16_t> Answers();
std::vector<int> DuplicateCodecs();

// ---- the round trip, as the gateway and the binary terminals use it ----------

struct Message {
  uint16_t id = 0;
  Bytes body;
};

// The message a command travels as; throws BodyError when the command has no
// codec (the platform's own numbers) or its parameter cannot be carried.
Message EncodeCommand(int command, const Json::Value& param, Edition edition);

// A terminal's answer to a reply object of the simulated terminals: the
// command's own answer when the reply succeeded and its codec can carry it,
// otherwise a general reply with the reply's "result".
Message EncodeAnswer(const Json::Value& reply, const AnswerContext& context);

// An answer back to the reply object the pages read: "Error" 0, "result"
// (the general reply's result, 0 for a specific answer) and the answer's
// members. Throws BodyError on a body its codec cannot read.
Json::Value DecodeAnswer(const Message& answer, const AnswerContext& context);

// The serial number an answer names, when its body leads with one.
std::optional<uint16_t> AnsweredSerial(const Message& answer);

// ---- texts of the parameter objects -------------------------------------------

// A text member as the pages send it (form-encoded code page 936) to the
// bytes on the wire.
std::string WireText(const Json::Value& param, const char* key);
// Bytes from the wire back to the form a page sends.
std::string PageText(std::string_view wireBytes);

}  // namespace jt808
