// The 2003 edition's answers: driver, clock, mileages, coefficient, minute
// speeds, vehicle, the samples before a stop and overtime driving.
#include <string>

#include "jt808/codecs/fields.h"
#include "jt808/codecs/recorder_layout.h"
#include "text/json.h"

namespace jt808::recorder {
namespace {
using fields::Array;
using fields::kByte;
using fields::kThreeBytes;
using fields::Unsigned;

// A start time and one byte per minute (or a time and a status per sample):
// no data at all when the recorder has none.
void TimedList(Writer& w, const Json::Value& a, bool withStatus) {
  const Json::Value& items = Array(a, key::kItems);
  if (items.empty() && txt::JsonMemberString(a, key::kTime).empty()) return;
  fields::Time(w, a, key::kTime);
  for (const Json::Value& item : items) {
    w.U8(Unsigned(item, key::kSpeed, kByte));
    if (withStatus) w.U8(Unsigned(item, key::kStatus, kByte));
  }
}
void ReadTimedList(Reader& r, Json::Value& a, bool withStatus) {
  a[key::kItems] = Json::Value(Json::arrayValue);
  if (r.AtEnd()) return;
  a[key::kTime] = r.BcdTime();
  if (withStatus && r.Left() % 2 != 0) throw BodyError("accident samples come in pairs");
  while (!r.AtEnd()) {
    Json::Value item(Json::objectValue);
    item[key::kSpeed] = r.U8();
    if (withStatus) item[key::kStatus] = r.U8();
    a[key::kItems].append(item);
  }
}

}  // namespace

void Write2003(Writer& w, int word, const Json::Value& a) {
  switch (word) {
    case kDriver:
      fields::ThreeBytes(w, Unsigned(a, key::kDriverCode, kThreeBytes));
      Licence(w, a);
      break;
    case kClock: fields::Time(w, a, key::kTime); break;
    case kMileage:
    case kWord8:
      fields::Time(w, a, key::kTime);
      fields::Digits(w, a, key::kMileage, 3);
      break;
    case kCoefficient: fields::ThreeBytes(w, Unsigned(a, key::kCoefficient, kThreeBytes)); break;
    case kWord5:
    case kWord9: TimedList(w, a, false); break;
    case kWord6: Vehicle(w, a); break;
    case kWord7: TimedList(w, a, true); break;
    case kWord11: {
      fields::ThreeBytes(w, Unsigned(a, key::kDriverCode, kThreeBytes));
      for (const Json::Value& item : Array(a, key::kItems)) {
        fields::Time(w, item, key::kBegin);
        fields::Time(w, item, key::kEnd);
      }
      break;
    }
    default: throw BodyError("the 2003 recorder has no word " + std::to_string(word));
  }
}

void Read2003(Reader& r, int word, Json::Value& a) {
  switch (word) {
    case kDriver:
      a[key::kDriverCode] = fields::ReadThreeBytes(r);
      a[key::kLicence] = ReadLicence(r);
      break;
    case kClock: a[key::kTime] = r.BcdTime(); break;
    case kMileage:
    case kWord8:
      a[key::kTime] = r.BcdTime();
      a[key::kMileage] = fields::ReadDigits(r, 3);
      break;
    case kCoefficient: a[key::kCoefficient] = fields::ReadThreeBytes(r); break;
    case kWord5:
    case kWord9: ReadTimedList(r, a, false); break;
    case kWord6: ReadVehicle(r, a); break;
    case kWord7: ReadTimedList(r, a, true); break;
    case kWord11: {
      a[key::kDriverCode] = fields::ReadThreeBytes(r);
      if (r.Left() % (2 * kTimeSize) != 0) throw BodyError("overtime records are pairs of times");
      a[key::kItems] = Json::Value(Json::arrayValue);
      while (!r.AtEnd()) {
        Json::Value item(Json::objectValue);
        item[key::kBegin] = r.BcdTime();
        item[key::kEnd] = r.BcdTime();
        a[key::kItems].append(item);
      }
      break;
    }
    default: throw BodyError("the 2003 recorder has no word " + std::to_string(word));
  }
}
}  // namespace jt808::recorder
