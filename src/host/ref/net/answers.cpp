// The choice of a request's answer: network status, the device's own text,
// the responder (the simulated terminals) or the default reply.
#include "host/ref/net/answers.h"

#include <algorithm>

#include "host/ref/net/guard.h"

namespace netsim {
namespace {

const ReplyText& DefaultReply() {
  static const ReplyText text = std::make_shared<const std::string>(R"({"Error":0,"result":0})");
  return text;
}

}  // namespace

Answer::Delivery Answer::Decide(const hostref::SentRequest& request) const {
  if (fixed || status != kStatusAnswered) return {status, fixed};
  if (responder && *responder) {
    auto computed = Guarded("hostnet responder", std::optional<hostref::net::ResponderReply>(),
                            [&] { return (*responder)(request); });
    if (computed) {
      ReplyText text = computed->text ? std::make_shared<const std::string>(std::move(*computed->text)) : nullptr;
      return {computed->status, std::move(text)};
    }
  }
  return {kStatusAnswered, DefaultReply()};
}

const DeviceRule& Settings::RuleOf(const std::string& devIdno) const {
  static const DeviceRule kNoRule;
  auto it = devices.find(devIdno);
  return it == devices.end() ? kNoRule : it->second;
}

int Settings::DelayOf(const std::string& devIdno) const {
  return std::max(0, RuleOf(devIdno).delayMs.value_or(delayMs));
}

int Settings::DelayOf(const hostref::SentRequest& request) const {
  const DeviceRule& rule = RuleOf(request.devIdno);
  int extra = 0;
  if (answerDelay && *answerDelay && rule.status == kStatusAnswered && !rule.reply && responder) {
    extra = std::max(0, Guarded("hostnet answer delay", 0, [&] { return (*answerDelay)(request); }));
  }
  return DelayOf(request.devIdno) + extra;
}

Answer Settings::AnswerFor(const std::string& devIdno) const {
  const DeviceRule& rule = RuleOf(devIdno);
  return {rule.status, rule.reply, responder, rule.duplicate};
}

}  // namespace netsim
