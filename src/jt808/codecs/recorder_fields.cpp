// The fields both editions of the recorder's data share.
#include <string>

#include "jt808/codecs/fields.h"
#include "jt808/codecs/recorder_layout.h"

namespace jt808::recorder {
using fields::Array;
using fields::kWord;
using fields::Unsigned;

size_t RecordSize(int word) {
  switch (word) {
    case kWord8: return 126;
    case kWord9: return 666;
    case kAccidents: return 234;
    case kWord11: return 50;
    case kLogins: return 25;
    case kPower:
    case kParameterChanges: return 7;
    case kSpeedStatus: return 133;
    default: return 0;
  }
}

void Place(Writer& w, const Json::Value& p) {
  w.U32(static_cast<uint32_t>(fields::Signed(p, key::kLongitude, INT32_MIN, INT32_MAX)));
  w.U32(static_cast<uint32_t>(fields::Signed(p, key::kLatitude, INT32_MIN, INT32_MAX)));
  w.U16(static_cast<uint32_t>(fields::Signed(p, key::kAltitude, INT16_MIN, kWord)));
}
void ReadPlace(Reader& r, Json::Value& p) {
  p[key::kLongitude] = static_cast<int32_t>(r.U32());
  p[key::kLatitude] = static_cast<int32_t>(r.U32());
  p[key::kAltitude] = r.U16();
}

void WordList(Writer& w, const Json::Value& object, const char* key, int count, uint32_t fill) {
  const Json::Value& list = Array(object, key);
  if (list.size() > static_cast<Json::ArrayIndex>(count)) throw BodyError(std::string(key) + " has too many values");
  for (const Json::Value& value : list) {
    Json::Value one(Json::objectValue);
    one[key] = value;
    w.U16(Unsigned(one, key, kWord));
  }
  for (int i = static_cast<int>(list.size()); i < count; ++i) w.U16(fill);
}
Json::Value ReadWordList(Reader& r, int count) {
  Json::Value list(Json::arrayValue);
  for (int i = 0; i < count; ++i) list.append(r.U16());
  return list;
}

void Licence(Writer& w, const Json::Value& o) { fields::Text(w, o, key::kLicence, kLicenceSize); }
std::string ReadLicence(Reader& r) { return r.FixedText(kLicenceSize); }

void Vehicle(Writer& w, const Json::Value& a) {
  fields::Text(w, a, key::kVin, kVinSize);
  fields::Text(w, a, key::kPlate, kPlateSize);
  fields::Text(w, a, key::kPlateClass, kPlateClassSize);
}
void ReadVehicle(Reader& r, Json::Value& a) {
  a[key::kVin] = r.FixedText(kVinSize);
  a[key::kPlate] = r.FixedText(kPlateSize);
  a[key::kPlateClass] = r.FixedText(kPlateClassSize);
}

void Year(Writer& w, const Json::Value& o) { w.Bcd(std::to_string(Unsigned(o, key::kYear, 2099) % 100), 1); }

}  // namespace jt808::recorder
