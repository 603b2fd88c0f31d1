// The control port's line protocol: one JSON object per line, both ways
// (docs/gateway.md describes it).
//
//   request   {"id":7,"dev":"10001","envelope":"{\"Command\":33536,...}","param":"{...}"}
//   answer    {"id":7,"status":0,"reply":"{\"Error\":0,\"result\":0}"}
//             {"id":7,"status":101}        the terminal is not connected or not authenticated
//             {"id":7,"status":110}        no answer in time
//   inspect   {"op":"sessions"}  {"op":"requests"}  {"op":"counters"}
//             answered by one line with the same "op" and the list or object
//   a line that cannot be read: {"id":...,"error":"what is wrong"}
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <json/value.h>

namespace gw::control {

constexpr const char* kOp = "op";
constexpr const char* kId = "id";
constexpr const char* kDev = "dev";
constexpr const char* kEnvelope = "envelope";
constexpr const char* kParam = "param";
constexpr const char* kStatus = "status";
constexpr const char* kReply = "reply";
constexpr const char* kError = "error";
constexpr const char* kCommand = "Command";  // the envelope's command number

constexpr const char* kOpSend = "send";  // the default op
constexpr const char* kOpSessions = "sessions";
constexpr const char* kOpRequests = "requests";
constexpr const char* kOpCounters = "counters";

constexpr int kStatusAnswered = 0;
constexpr int kStatusOffline = 101;
constexpr int kStatusTimeout = 110;

// The reply of a command that has no terminal message (the platform's own
// numbers), or whose parameter a terminal message cannot carry.
constexpr int kNoTerminalMessage = 120;
std::string NoTerminalMessageReply();
// The reply of an answer whose body could not be read: a general "message error".
std::string UnreadableAnswerReply();

struct Request {
  Json::Value id;
  std::string dev;
  std::string envelope;
  std::string param;
};

struct Line {
  std::string op;  // kOpSend for a request
  Request request;
  std::string error;  // what is wrong with the line; empty when it reads
};
Line Parse(std::string_view text);

std::string RequestLine(const Request& request);
std::string AnswerLine(const Json::Value& id, int status, const std::optional<std::string>& reply);
std::string ErrorLine(const Json::Value& id, std::string_view error);
// {"op":op, op:body}
std::string InspectLine(const std::string& op, const Json::Value& body);

// An answer line read back by a client; nullopt when the line is no answer.
struct Answer {
  Json::Value id;
  int status = kStatusAnswered;
  std::optional<std::string> reply;
};
std::optional<Answer> ParseAnswer(std::string_view text);

// The command number of an envelope; nullopt when it is not JSON or names none.
std::optional<int> CommandOf(const std::string& envelope);

}  // namespace gw::control
