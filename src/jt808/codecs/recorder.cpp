// The driving recorder through the terminal: data collection (answered with
// the recorder's data block) and the parameter download. Both carry the
// recorder's command word and, where the recorder needs one, its whole
// command frame.
//
// A recorder of the 2003 edition gets the command word alone: its collection
// commands carry no data. A request of the 2012 edition (or of no edition)
// carries the 2012 command frame, with the time range and block count for the
// record words. The terminal's side reads the edition back from that: the
// word alone is a 2003 request, a range or a word only the 2012 edition has
// is a 2012 one, and otherwise the edition stays unsaid.
#include "jt808/codec.h"
#include "jt808/codecs/fields.h"
#include "jt808/codecs/recorder_blocks.h"
#include "text/json.h"

namespace jt808 {
namespace {
using fields::kByte;
using fields::kThreeBytes;
using fields::kWord;
using fields::Unsigned;
using recorder::Standard;

constexpr int kCollect = 0x8700, kParameters = 0x8701;
constexpr uint16_t kCollectAnswer = 0x0700;

namespace key {
constexpr const char *kWord = "CDID", *kVersion = "VER", *kBegin = "TIMB", *kEnd = "TIME", *kBlocks = "LEN",
                     *kDriverCode = "GDI", *kLicence = "GCP", *kVin = "VIN", *kPlate = "CARID", *kPlateClass = "SORT",
                     *kCoefficient = "FEA", *kRecorderTime = "RDTM", *kInitialMileage = "INITMILE",
                     *kSignalName = "SINNM";
constexpr const char* kTimeParts[] = {"YEAR", "MONTH", "DAY", "HOUR", "MIN", "SEC"};
}  // namespace key

// Parameter words.
enum : int {
  kSetDriver = 0x81, kSetVehicle = 0x82, kSetInstallTime = 0x83, kSetSignals = 0x84, kSetClock = 0xC2,
  kSetCoefficient = 0xC3, kSetInitialMileage = 0xC4,
};
constexpr size_t kLicenceSize = 18, kVinSize = 17, kPlateSize = 12, kPlateClassSize = 12, kSignalNameSize = 10;
constexpr int kSignals = 8, kCenturyStart = 2000;
constexpr size_t kCoefficient2012Size = 8;

int Version(const Json::Value* param) { return param ? txt::JsonMemberInt(*param, key::kVersion, 0) : 0; }

// ---- data collection ----------------------------------------------------------------

Bytes EncodeCollect(const Json::Value& param, Edition) {
  const int word = static_cast<int>(Unsigned(param, key::kWord, kByte));
  Writer w;
  w.U8(word);
  if (Version(&param) == recorder::kVersion2003) return w.Take();
  Writer data;
  if (recorder::IsRangeWord(word)) {
    fields::Time(data, param, key::kBegin);
    fields::Time(data, param, key::kEnd);
    data.U16(Unsigned(param, key::kBlocks, kWord));
  }
  return w.Raw(recorder::CommandFrame(word, data.Data())).Take();
}

Json::Value DecodeCollect(ByteView body, Edition) {
  Reader r(body);
  const int word = r.U8();
  Json::Value param(Json::objectValue);
  param[key::kWord] = word;
  if (r.AtEnd()) {
    param[key::kVersion] = recorder::kVersion2003;
    return param;
  }
  Reader data(recorder::CommandData(r.Rest(), word));
  if (recorder::IsRangeWord(word) && !data.AtEnd()) {
    param[key::kBegin] = data.BcdTime();
    param[key::kEnd] = data.BcdTime();
    param[key::kBlocks] = data.U16();
    param[key::kVersion] = recorder::kVersion2012;
  } else if (recorder::Only2012(word)) {
    param[key::kVersion] = recorder::kVersion2012;
  }
  if (!data.AtEnd()) throw BodyError("recorder command data longer than its word's");
  return param;
}

// The answer: the serial, the command word and the recorder's answer frame.
Json::Value DecodeCollectAnswer(ByteView body, const AnswerContext& context) {
  Reader r(body);
  r.U16();
  const int word = r.U8();
  const ByteView data = recorder::AnswerData(r.Rest(), word);
  return recorder::ReadAnswer(word, recorder::DataStandard(word, data.size(), Version(context.param)), data);
}

Bytes EncodeCollectAnswer(const Json::Value& reply, const AnswerContext& context) {
  if (!context.param) throw BodyError("a recorder answer needs its request's command word");
  const int word = static_cast<int>(Unsigned(*context.param, key::kWord, kByte));
  const Standard standard =
      Version(context.param) == recorder::kVersion2003 ? Standard::k2003 : recorder::ReplyStandard(word, reply);
  const Bytes data = recorder::WriteAnswer(word, standard, reply);
  return Writer().U16(context.serial).U8(word).Raw(recorder::AnswerFrame(word, data)).Take();
}

// ---- parameter download -------------------------------------------------------------------

// A time of the fields "YEAR" ... "SEC", each one BCD byte (the year within its century).
void TimeParts(Writer& w, const Json::Value& param) {
  for (const char* part : key::kTimeParts) {
    uint32_t value = Unsigned(param, part, kCenturyStart + 99);
    if (part == key::kTimeParts[0] && value >= kCenturyStart) value -= kCenturyStart;
    if (value > 99) throw BodyError(std::string(part) + " does not fit a BCD byte");
    w.Bcd(std::to_string(value), 1);
  }
}

void ReadTimeParts(Reader& r, Json::Value& param) {
  for (const char* part : key::kTimeParts) param[part] = fields::ReadDigits(r, 1);
  param[key::kTimeParts[0]] = kCenturyStart + param[key::kTimeParts[0]].asInt();
}

std::string SignalKey(int bit) { return key::kSignalName + std::to_string(bit); }

Bytes ParameterData(int word, const Json::Value& param) {
  Writer w;
  switch (word) {
    case kSetDriver:
      fields::ThreeBytes(w, Unsigned(param, key::kDriverCode, kThreeBytes));
      fields::Text(w, param, key::kLicence, kLicenceSize);
      break;
    case kSetVehicle:
      fields::Text(w, param, key::kVin, kVinSize);
      fields::Text(w, param, key::kPlate, kPlateSize);
      fields::Text(w, param, key::kPlateClass, kPlateClassSize);
      break;
    case kSetInstallTime:
    case kSetClock: TimeParts(w, param); break;
    case kSetSignals:
      for (int bit = 0; bit < kSignals; ++bit) {
        const std::string name = WireText(param, SignalKey(bit).c_str());
        if (name.size() > kSignalNameSize) throw BodyError("a signal name is longer than its field");
        w.Fixed(name, kSignalNameSize);
      }
      break;
    case kSetCoefficient:
      // The 2012 edition sets the recorder's time with its pulse coefficient.
      if (Version(&param) == recorder::kVersion2012) {
        w.Bcd(txt::JsonMemberString(param, key::kRecorderTime), 6).U16(Unsigned(param, key::kCoefficient, kWord));
      } else {
        fields::ThreeBytes(w, Unsigned(param, key::kCoefficient, kThreeBytes));
      }
      break;
    case kSetInitialMileage: w.Bcd(txt::JsonMemberString(param, key::kInitialMileage), 4); break;
    default: break;  // a word the recorder may refuse: sent without data
  }
  return w.Take();
}

void ReadParameterData(int word, Reader& r, Json::Value& param) {
  switch (word) {
    case kSetDriver:
      param[key::kDriverCode] = fields::ReadThreeBytes(r);
      param[key::kLicence] = r.FixedText(kLicenceSize);
      break;
    case kSetVehicle:
      param[key::kVin] = r.FixedText(kVinSize);
      param[key::kPlate] = r.FixedText(kPlateSize);
      param[key::kPlateClass] = r.FixedText(kPlateClassSize);
      break;
    case kSetInstallTime:
    case kSetClock: ReadTimeParts(r, param); break;
    case kSetSignals:
      for (int bit = 0; bit < kSignals; ++bit) param[SignalKey(bit)] = PageText(r.FixedText(kSignalNameSize));
      break;
    case kSetCoefficient:
      if (r.Left() == kCoefficient2012Size) {
        param[key::kVersion] = recorder::kVersion2012;
        param[key::kRecorderTime] = r.Bcd(6);
        param[key::kCoefficient] = r.U16();
      } else {
        param[key::kVersion] = recorder::kVersion2003;
        param[key::kCoefficient] = fields::ReadThreeBytes(r);
      }
      break;
    case kSetInitialMileage: param[key::kInitialMileage] = r.Bcd(4); break;
    default: break;
  }
}

Bytes EncodeParameters(const Json::Value& param, Edition) {
  const int word = static_cast<int>(Unsigned(param, key::kWord, kByte));
  return Writer().U8(word).Raw(recorder::CommandFrame(word, ParameterData(word, param))).Take();
}

Json::Value DecodeParameters(ByteView body, Edition) {
  Reader r(body);
  const int word = r.U8();
  Json::Value param(Json::objectValue);
  param[key::kWord] = word;
  Reader data(recorder::CommandData(r.Rest(), word));
  ReadParameterData(word, data, param);
  if (!data.AtEnd()) throw BodyError("recorder parameter data longer than its word's");
  return param;
}

const RegisterCommand kCollectCodec{kCollect, {kCollect, kCollectAnswer, EncodeCollect, DecodeCollect}};
const RegisterAnswer kCollectAnswerCodec{kCollectAnswer, {true, DecodeCollectAnswer, EncodeCollectAnswer}};
const RegisterCommand kParametersCodec{kParameters, {kParameters, kGeneralReply, EncodeParameters, DecodeParameters}};

}  // namespace
}  // namespace jt808
