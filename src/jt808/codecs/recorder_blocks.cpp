#include "jt808/codecs/recorder_blocks.h"

#include <string>

#include "jt808/codecs/fields.h"
#include "jt808/codecs/recorder_layout.h"
#include "text/json.h"

namespace jt808::recorder {
namespace {
using fields::kWord;

constexpr uint8_t kCommandLead[] = {0xAA, 0x75}, kAnswerLead[] = {0x55, 0x7A};

// Data sizes of the answers whose layout differs between the editions.
constexpr size_t kMileage2003Size = 9, kMileage2012Size = 20, kCoefficient2012Size = 8, kVehicleSize = 41,
                 kSignals2012Size = 87, kIdentitySize = 35;

Bytes Frame(const uint8_t (&lead)[2], int word, ByteView data) {
  if (data.size() > kWord) throw BodyError("recorder data longer than its frame holds");
  Writer w;
  w.U8(lead[0]).U8(lead[1]).U8(word).U16(data.size()).U8(0).Raw(data);
  uint8_t check = 0;
  for (uint8_t byte : w.Data()) check ^= byte;
  return w.U8(check).Take();
}

ByteView Unframe(const uint8_t (&lead)[2], ByteView frame, int word) {
  Reader r(frame);
  if (r.U8() != lead[0] || r.U8() != lead[1]) throw BodyError("not a recorder frame");
  if (r.U8() != word) throw BodyError("recorder frame of another command word");
  const uint16_t size = r.U16();
  r.U8();
  const ByteView data = r.Raw(size);
  uint8_t check = 0;
  for (uint8_t byte : frame.first(frame.size() - r.Left())) check ^= byte;
  if (r.U8() != check || !r.AtEnd()) throw BodyError("recorder frame check failed");
  return data;
}

}  // namespace


bool IsRangeWord(int word) { return RecordSize(word) != 0; }

bool Only2012(int word) { return word == kVersionWord || (IsRangeWord(word) && word != kWord8 && word != kWord9 && word != kWord11); }

Bytes CommandFrame(int word, ByteView data) { return Frame(kCommandLead, word, data); }
Bytes AnswerFrame(int word, ByteView data) { return Frame(kAnswerLead, word, data); }
ByteView CommandData(ByteView frame, int word) { return Unframe(kCommandLead, frame, word); }
ByteView AnswerData(ByteView frame, int word) { return Unframe(kAnswerLead, frame, word); }

Standard ReplyStandard(int word, const Json::Value& reply) {
  if (Only2012(word)) return Standard::k2012;
  // A recorder asked without an edition answers word 6 in both meanings; the vehicle goes.
  if (word == kWord6 && !fields::Member(reply, key::kVin).isNull()) return Standard::k2003;
  return txt::JsonMemberInt(reply, key::kVersion, 0) == kVersion2012 ? Standard::k2012 : Standard::k2003;
}

Standard DataStandard(int word, size_t size, int requested) {
  const bool asked2003 = requested == kVersion2003;
  bool is2012 = false;
  switch (word) {
    case kDriver: is2012 = size == kLicenceSize; break;
    case kClock: is2012 = false; break;
    case kMileage: is2012 = size == kMileage2012Size; break;
    case kCoefficient: is2012 = size == kCoefficient2012Size; break;
    case kWord5: is2012 = size == kVehicleSize && !asked2003; break;
    case kWord6: is2012 = size == kSignals2012Size; break;
    case kWord7: is2012 = size == kIdentitySize; break;
    case kWord8: is2012 = size != kMileage2003Size; break;
    case kWord9: is2012 = size % RecordSize(kWord9) == 0 && !asked2003; break;
    case kWord11: is2012 = size % RecordSize(kWord11) == 0; break;
    default: is2012 = true; break;
  }
  return is2012 ? Standard::k2012 : Standard::k2003;
}

Bytes WriteAnswer(int word, Standard standard, const Json::Value& reply) {
  Writer w;
  standard == Standard::k2012 ? Write2012(w, word, reply) : Write2003(w, word, reply);
  return w.Take();
}

Json::Value ReadAnswer(int word, Standard standard, ByteView data) {
  Reader r(data);
  Json::Value reply(Json::objectValue);
  // The clock reads the same in both editions and says none.
  if (word != kClock) reply[key::kVersion] = standard == Standard::k2012 ? kVersion2012 : kVersion2003;
  standard == Standard::k2012 ? Read2012(r, word, reply) : Read2003(r, word, reply);
  if (!r.AtEnd()) throw BodyError("recorder data longer than its word's");
  return reply;
}

}  // namespace jt808::recorder
