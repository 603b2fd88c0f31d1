// The driver identity report: asked for with an empty request, answered with
// the card reader's state. A card put in and read gives the driver's name,
// qualification code, the issuing authority and the expiry date (the 2019
// edition adds the driver's identity card number); a card that failed to read
// gives the reader's result alone, and a card taken out only the time.
#include "jt808/codec.h"
#include "jt808/codecs/fields.h"
#include "text/json.h"

namespace jt808 {
namespace {
using fields::kByte;
using fields::Unsigned;

constexpr int kRequest = 0x8702;
constexpr uint16_t kReport = 0x0702;

namespace key {
constexpr const char *kState = "STA", *kTime = "DTM", *kReadResult = "ICRST", *kName = "DRNAME",
                     *kQualification = "QUACODE", *kAuthority = "ORGNAME", *kExpiry = "EXPDATE", *kIdCard = "IDCARD";
}  // namespace key

constexpr int kCardIn = 1;
constexpr int kReadOk = 0;
constexpr size_t kQualificationSize = 20, kIdCardSize = 20, kExpirySize = 4;

// A text with its length byte before it.
void Counted(Writer& w, const Json::Value& reply, const char* key) {
  const std::string text = txt::JsonMemberString(reply, key);
  if (text.size() > kByte) throw BodyError(std::string(key) + " is longer than its length byte counts");
  w.U8(text.size()).Raw(text);
}

// The expiry date "YYYY-MM-DD" as four BCD bytes, and back.
void Expiry(Writer& w, const Json::Value& reply) {
  std::string digits;
  for (char c : txt::JsonMemberString(reply, key::kExpiry)) {
    if (c != '-') digits += c;
  }
  if (digits.size() != 2 * kExpirySize) throw BodyError("the expiry is no date");
  w.Bcd(digits, kExpirySize);
}
std::string ReadExpiry(Reader& r) {
  const std::string d = r.Bcd(kExpirySize);
  return d.substr(0, 4) + "-" + d.substr(4, 2) + "-" + d.substr(6, 2);
}

Bytes EncodeReport(const Json::Value& reply, const AnswerContext& context) {
  Writer w;
  const uint32_t state = Unsigned(reply, key::kState, kByte);
  w.U8(state);
  fields::Time(w, reply, key::kTime);
  if (state != kCardIn) return w.Take();
  const uint32_t result = Unsigned(reply, key::kReadResult, kByte);
  w.U8(result);
  if (result != kReadOk) return w.Take();
  Counted(w, reply, key::kName);
  fields::Text(w, reply, key::kQualification, kQualificationSize);
  Counted(w, reply, key::kAuthority);
  Expiry(w, reply);
  if (context.edition == Edition::k2019) fields::Text(w, reply, key::kIdCard, kIdCardSize);
  return w.Take();
}

Json::Value DecodeReport(ByteView body, const AnswerContext& context) {
  Reader r(body);
  Json::Value reply(Json::objectValue);
  const int state = r.U8();
  reply[key::kState] = state;
  reply[key::kTime] = r.BcdTime();
  if (state != kCardIn) return reply;
  const int result = r.U8();
  reply[key::kReadResult] = result;
  if (result != kReadOk) return reply;
  reply[key::kName] = r.RawText(r.U8());
  reply[key::kQualification] = r.FixedText(kQualificationSize);
  reply[key::kAuthority] = r.RawText(r.U8());
  reply[key::kExpiry] = ReadExpiry(r);
  if (context.edition == Edition::k2019) {
    const std::string card = r.FixedText(kIdCardSize);
    if (!card.empty()) reply[key::kIdCard] = card;
  }
  return reply;
}

const RegisterCommand kRequestCodec{kRequest,
                                    {kRequest, kReport, [](const Json::Value&, Edition) { return Bytes{}; },
                                     [](ByteView, Edition) { return Json::Value(); }}};
// The report also comes unasked when a card goes in or out: it names no serial.
const RegisterAnswer kReportCodec{kReport, {false, DecodeReport, EncodeReport}};

}  // namespace
}  // namespace jt808
