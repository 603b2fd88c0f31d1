// Golden bodies: a parameter or reply object beside the exact body it travels
// as, checked both ways (the object encodes to the body, the body decodes to
// the object), with the case's description in every failure.
#pragma once

#include <cstdint>
#include <functional>

#include <json/value.h>

#include "jt808/codec.h"

namespace jt808::golden {

struct CommandCase {
  const char* what;  // where the layout comes from, and what the case shows
  int command;
  Edition edition;
  const char* param;  // JSON; nullptr for a request without parameters
  const char* hex;
  const char* decoded = nullptr;  // what the terminal reads back, when it is not param itself
};
void Check(const CommandCase& c);

struct AnswerCase {
  const char* what;
  uint16_t answer;
  Edition edition;
  uint16_t serial;
  const char* request;  // the request's parameter object (JSON) the answer is read against
  const char* reply;    // the reply members
  const char* hex;
};
void Check(const AnswerCase& c);

struct Refusal {
  const char* what;
  std::function<void()> run;
};
void Check(const Refusal& c);

Json::Value Parse(const char* json);
// The body a command's codec makes of a parameter object given as JSON.
Bytes Encode(int command, const char* param, Edition edition = Edition::k2013);
Json::Value DecodeCommand(int command, const char* hex, Edition edition = Edition::k2013);
Json::Value DecodeAnswer(uint16_t answer, const char* request, const char* hex, Edition edition = Edition::k2013);

}  // namespace jt808::golden
