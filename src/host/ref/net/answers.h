// What the simulated platform answers: the settings a test gives for every
// device and per device, and the choice of one request's answer from them.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "host/ref/hostref.h"

namespace netsim {

constexpr const char* kDefaultSession = "5f2c9a01d3e84b7690a1c2e3f4a5b6c7";
constexpr int kStatusAnswered = 0;  // the platform answered with a reply text

using ReplyText = std::shared_ptr<const std::string>;
using ResponderPtr = std::shared_ptr<const hostref::net::StatusResponder>;
using AnswerDelayPtr = std::shared_ptr<const hostref::net::AnswerDelay>;

// One request's answer, decided under the platform's lock. Text() runs
// without the lock, since a responder may take its time.
struct Answer {
  int status = kStatusAnswered;
  ReplyText fixed;  // the device's own reply text
  ResponderPtr responder;
  bool twice = false;  // the callback runs a second time right after the first

  // The status and text handed to the callback: with a network status the
  // device's own text or null; otherwise the device's own text, else the
  // responder's answer (with its status), else the default reply.
  // A responder that throws counts as having no answer.
  struct Delivery {
    int status = kStatusAnswered;
    ReplyText text;
  };
  Delivery Decide(const hostref::SentRequest& request) const;
};

struct DeviceRule {
  std::optional<int> delayMs;
  int status = kStatusAnswered;
  ReplyText reply;
  bool failOpen = false;
  bool failStart = false;
  bool duplicate = false;  // the callback runs twice for each answer
};

struct Settings {
  std::string session = kDefaultSession;
  int delayMs = 0;
  bool held = false;
  std::unordered_map<std::string, DeviceRule> devices;
  ResponderPtr responder;
  AnswerDelayPtr answerDelay;

  DeviceRule& Rule(const std::string& devIdno) { return devices[devIdno]; }
  // The device's rule, or the defaults when it has none.
  const DeviceRule& RuleOf(const std::string& devIdno) const;
  int DelayOf(const std::string& devIdno) const;
  // The device's delay, and the responder's own time when the responder answers.
  int DelayOf(const hostref::SentRequest& request) const;
  Answer AnswerFor(const std::string& devIdno) const;
};

}  // namespace netsim
