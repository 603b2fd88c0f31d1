// The attribute queries: the terminal's own attributes (type, maker, model,
// id, SIM card, versions, positioning and communication modules) and its
// audio/video attributes. Both queries have empty bodies; their answers do
// not name the query they answer. The terminal's texts stay in its code page,
// as the pages read them.
#include "jt808/codec.h"
#include "jt808/codecs/fields.h"
#include "text/json.h"

namespace jt808 {
namespace {
constexpr int kQueryAttributes = 0x8107, kQueryAudioVideo = 0x9003;
constexpr uint16_t kAttributesAnswer = 0x0107, kAudioVideoAnswer = 0x1003;

namespace attr {
constexpr const char *kType = "DTYPE", *kMaker = "MID", *kModel = "DMODEL", *kTerminalId = "DID",
                     *kHardware = "DHVER", *kFirmware = "DFVER", *kGnss = "GNSSA", *kComm = "COMMA";
// The SIM card's ICCID goes as the terminal's ten BCD bytes; the page shows
// them in hexadecimal, which are the digits themselves.
constexpr const char* kSim = "DSIM";
constexpr size_t kMakerBytes = 5, kSimBytes = 10;
// The model and the terminal id grew in the 2019 edition.
size_t ModelBytes(Edition edition) { return edition == Edition::k2019 ? 30 : 20; }
size_t TerminalIdBytes(Edition edition) { return edition == Edition::k2019 ? 30 : 7; }
}  // namespace attr

// The audio/video attributes: all bytes but the frame length, a word.
struct AvField {
  const char* key;
  uint32_t max;
};
constexpr AvField kAudioVideoFields[] = {
    {"ACODE", fields::kByte}, {"ACHN", fields::kByte},  {"ASR", fields::kByte},   {"ASB", fields::kByte},
    {"AFL", fields::kWord},   {"AOUT", fields::kByte},  {"VCODE", fields::kByte}, {"ACHNN", fields::kByte},
    {"VCHNN", fields::kByte},
};

Bytes EmptyBody(const Json::Value&, Edition) { return {}; }

Json::Value NoParam(ByteView body, Edition) {
  if (!body.empty()) throw BodyError("a query with a body");
  return Json::Value();
}

Json::Value DecodeAttributes(ByteView body, const AnswerContext& context) {
  Reader r(body);
  Json::Value reply(Json::objectValue);
  reply[attr::kType] = r.U16();
  reply[attr::kMaker] = r.FixedText(attr::kMakerBytes);
  reply[attr::kModel] = r.FixedText(attr::ModelBytes(context.edition));
  reply[attr::kTerminalId] = r.FixedText(attr::TerminalIdBytes(context.edition));
  reply[attr::kSim] = r.RawText(attr::kSimBytes);
  reply[attr::kHardware] = fields::ByteLengthText(r);
  reply[attr::kFirmware] = fields::ByteLengthText(r);
  reply[attr::kGnss] = r.U8();
  reply[attr::kComm] = r.U8();
  return reply;
}

Bytes EncodeAttributes(const Json::Value& reply, const AnswerContext& context) {
  const auto text = [&reply](const char* key) { return txt::JsonMemberString(reply, key); };
  Writer w;
  fields::Word(w, reply, attr::kType);
  fields::FixedText(w, text(attr::kMaker), attr::kMakerBytes);
  fields::FixedText(w, text(attr::kModel), attr::ModelBytes(context.edition));
  fields::FixedText(w, text(attr::kTerminalId), attr::TerminalIdBytes(context.edition));
  fields::FixedText(w, text(attr::kSim), attr::kSimBytes);
  fields::ByteLengthText(w, text(attr::kHardware));
  fields::ByteLengthText(w, text(attr::kFirmware));
  fields::Byte(w, reply, attr::kGnss);
  fields::Byte(w, reply, attr::kComm);
  return w.Take();
}

Json::Value DecodeAudioVideo(ByteView body, const AnswerContext&) {
  Reader r(body);
  Json::Value reply(Json::objectValue);
  for (const AvField& field : kAudioVideoFields) reply[field.key] = field.max == fields::kWord ? r.U16() : r.U8();
  return reply;
}

Bytes EncodeAudioVideo(const Json::Value& reply, const AnswerContext&) {
  Writer w;
  for (const AvField& field : kAudioVideoFields) {
    const uint32_t value = fields::Unsigned(reply, field.key, field.max);
    field.max == fields::kWord ? w.U16(value) : w.U8(value);
  }
  return w.Take();
}

const RegisterCommand kAttributes{kQueryAttributes, {kQueryAttributes, kAttributesAnswer, EmptyBody, NoParam}};
const RegisterCommand kAudioVideo{kQueryAudioVideo, {kQueryAudioVideo, kAudioVideoAnswer, EmptyBody, NoParam}};
const RegisterAnswer kAttributesReply{kAttributesAnswer, {false, DecodeAttributes, EncodeAttributes}};
const RegisterAnswer kAudioVideoReply{kAudioVideoAnswer, {false, DecodeAudioVideo, EncodeAudioVideo}};
}  // namespace
}  // namespace jt808
