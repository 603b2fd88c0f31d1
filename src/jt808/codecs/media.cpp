// The media commands: shoot now (answered with the ids taken), the stored
// media search (answered with the items found and where each was taken), the
// uploads by filter and by id, and audio recording.
#include <algorithm>

#include "jt808/codec.h"
#include "jt808/codecs/fields.h"
#include "text/json.h"

namespace jt808 {
namespace {
using fields::kByte;
using fields::kDword;
using fields::kWord;
using fields::Unsigned;

constexpr int kShoot = 0x8801, kSearch = 0x8802, kUploadMatching = 0x8803, kRecord = 0x8804, kUploadOne = 0x8805;
constexpr uint16_t kShootAnswer = 0x0805, kSearchAnswer = 0x0802;

namespace key {
constexpr const char *kChannel = "CHID", *kCommand = "SNOR", *kInterval = "SNBT", *kSave = "SALA",
                     *kResolution = "PIX", *kQuality = "PIC", *kBrightness = "BRI", *kContrast = "CT",
                     *kSaturation = "HUE", *kChroma = "COLOR", *kType = "METY", *kEvent = "EVCO", *kBegin = "BTM",
                     *kEnd = "ETM", *kDelete = "DELA", *kId = "MDID", *kItems = "Item", *kRecordCommand = "SOOR",
                     *kRecordTime = "SOTI", *kSampleRate = "VOICE", *kResult = "result";
}  // namespace key

// A member that travels as one byte / one word.
struct Member {
  const char* key;
  uint32_t max;
};

// The shot's fields in body order: channel, command, interval, save flag,
// resolution, quality, brightness, contrast, saturation, chroma.
constexpr Member kShotFields[] = {{key::kChannel, kByte},     {key::kCommand, kWord},    {key::kInterval, kWord},
                                  {key::kSave, kByte},        {key::kResolution, kByte}, {key::kQuality, kByte},
                                  {key::kBrightness, kByte},  {key::kContrast, kByte},   {key::kSaturation, kByte},
                                  {key::kChroma, kByte}};
constexpr Member kRecordFields[] = {
    {key::kRecordCommand, kByte}, {key::kRecordTime, kWord}, {key::kSave, kByte}, {key::kSampleRate, kByte}};

template <size_t N>
Bytes WriteMembers(const Json::Value& param, const Member (&members)[N]) {
  Writer w;
  for (const Member& m : members) m.max == kWord ? w.U16(Unsigned(param, m.key, m.max)) : w.U8(Unsigned(param, m.key, m.max));
  return w.Take();
}

template <size_t N>
Json::Value ReadMembers(ByteView body, const Member (&members)[N]) {
  Reader r(body);
  Json::Value param(Json::objectValue);
  for (const Member& m : members) param[m.key] = m.max == kWord ? r.U16() : r.U8();
  return param;
}

// A filter time: twelve digits "YYMMDDhhmmss"; anything else sets no bound (all zeros).
void FilterTime(Writer& w, const Json::Value& param, const char* key) {
  const std::string text = txt::JsonMemberString(param, key);
  const bool digits = text.size() == 12 && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  w.Bcd(digits ? text : "", 6);
}

// Media type, channel, event and the time range, as the search and the upload by filter share them.
void WriteFilter(Writer& w, const Json::Value& param) {
  w.U8(Unsigned(param, key::kType, kByte)).U8(Unsigned(param, key::kChannel, kByte)).U8(Unsigned(param, key::kEvent, kByte));
  FilterTime(w, param, key::kBegin);
  FilterTime(w, param, key::kEnd);
}

Json::Value ReadFilter(Reader& r) {
  Json::Value param(Json::objectValue);
  param[key::kType] = r.U8();
  param[key::kChannel] = r.U8();
  param[key::kEvent] = r.U8();
  param[key::kBegin] = r.Bcd(6);
  param[key::kEnd] = r.Bcd(6);
  return param;
}

const RegisterCommand kShootCodec{kShoot,
                                  {kShoot, kShootAnswer, [](const Json::Value& p, Edition) { return WriteMembers(p, kShotFields); },
                                   [](ByteView body, Edition) { return ReadMembers(body, kShotFields); }}};

const RegisterCommand kRecordCodec{kRecord,
                                   {kRecord, kGeneralReply, [](const Json::Value& p, Edition) { return WriteMembers(p, kRecordFields); },
                                    [](ByteView body, Edition) { return ReadMembers(body, kRecordFields); }}};

const RegisterCommand kSearchCodec{kSearch,
                                   {kSearch, kSearchAnswer,
                                    [](const Json::Value& p, Edition) {
                                      Writer w;
                                      WriteFilter(w, p);
                                      return w.Take();
                                    },
                                    [](ByteView body, Edition) {
                                      Reader r(body);
                                      return ReadFilter(r);
                                    }}};

const RegisterCommand kUploadMatchingCodec{kUploadMatching,
                                           {kUploadMatching, kGeneralReply,
                                            [](const Json::Value& p, Edition) {
                                              Writer w;
                                              WriteFilter(w, p);
                                              return w.U8(Unsigned(p, key::kDelete, kByte)).Take();
                                            },
                                            [](ByteView body, Edition) {
                                              Reader r(body);
                                              Json::Value param = ReadFilter(r);
                                              param[key::kDelete] = r.U8();
                                              return param;
                                            }}};

const RegisterCommand kUploadOneCodec{kUploadOne,
                                      {kUploadOne, kGeneralReply,
                                       [](const Json::Value& p, Edition) {
                                         return Writer().U32(Unsigned(p, key::kId, kDword)).U8(Unsigned(p, key::kDelete, kByte)).Take();
                                       },
                                       [](ByteView body, Edition) {
                                         Reader r(body);
                                         Json::Value param(Json::objectValue);
                                         param[key::kId] = r.U32();
                                         param[key::kDelete] = r.U8();
                                         return param;
                                       }}};

// The shot's answer: the serial, a result and, when it succeeded, the ids taken.
const RegisterAnswer kShootAnswerCodec{
    kShootAnswer,
    {true,
     [](ByteView body, const AnswerContext&) {
       Reader r(body);
       r.U16();
       Json::Value reply(Json::objectValue);
       const int result = r.U8();
       if (result != kResultOk) {
         reply[key::kResult] = result;
         return reply;
       }
       Json::Value ids(Json::arrayValue);
       for (uint16_t n = r.U16(); n > 0; --n) ids.append(r.U32());
       reply[key::kId] = ids;
       return reply;
     },
     [](const Json::Value& reply, const AnswerContext& context) {
       Writer w;
       w.U16(context.serial).U8(kResultOk);
       const Json::Value& ids = fields::Member(reply, key::kId);
       if (!ids.isArray() || ids.size() > kWord) throw BodyError("the shot's ids are no list that fits");
       w.U16(ids.size());
       for (const Json::Value& id : ids) {
         Json::Value one(Json::objectValue);
         one[key::kId] = id;
         w.U32(Unsigned(one, key::kId, kDword));
       }
       return w.Take();
     }}};

// The search's answer: the serial, the count and per item its id, type,
// channel, event and the basic position block of when it was taken.
const RegisterAnswer kSearchAnswerCodec{
    kSearchAnswer,
    {true,
     [](ByteView body, const AnswerContext&) {
       Reader r(body);
       r.U16();
       Json::Value items(Json::arrayValue);
       for (uint16_t n = r.U16(); n > 0; --n) {
         Json::Value item(Json::objectValue);
         item[key::kId] = r.U32();
         item[key::kType] = r.U8();
         item[key::kChannel] = r.U8();
         item[key::kEvent] = r.U8();
         fields::ReadPositionBasics(r, item);
         items.append(item);
       }
       Json::Value reply(Json::objectValue);
       reply[key::kItems] = items;
       return reply;
     },
     [](const Json::Value& reply, const AnswerContext& context) {
       const Json::Value& items = fields::Member(reply, key::kItems);
       if (!items.isArray() || items.size() > kWord) throw BodyError("the search's items are no list that fits");
       Writer w;
       w.U16(context.serial).U16(items.size());
       for (const Json::Value& item : items) {
         w.U32(Unsigned(item, key::kId, kDword)).U8(Unsigned(item, key::kType, kByte));
         w.U8(Unsigned(item, key::kChannel, kByte)).U8(Unsigned(item, key::kEvent, kByte));
         fields::WritePositionBasics(w, item);
       }
       return w.Take();
     }}};

}  // namespace
}  // namespace jt808
