// The 2012 edition's answers: the version, driver, clock, mileage, pulse
// coefficient, vehicle, signal configuration and identity words, and the
// record words, whose data is whole records one after another.
#include <string>

#include "jt808/codecs/fields.h"
#include "jt808/codecs/recorder_blocks.h"
#include "jt808/codecs/recorder_layout.h"
#include "text/json.h"

namespace jt808::recorder {
namespace {
using fields::Array;
using fields::kByte;
using fields::kWord;
using fields::Unsigned;


// The end of a record's positions: every bit of the slot set.
bool IsPositionEnd(const Json::Value& p) {
  return txt::JsonMemberInt(p, key::kLongitude, 0) == -1 && txt::JsonMemberInt(p, key::kLatitude, 0) == -1 &&
         (txt::JsonMemberInt(p, key::kAltitude, 0) & 0xFFFF) == 0xFFFF && txt::JsonMemberInt(p, key::kSpeed, 0) == 0xFF;
}

void WriteRecord(Writer& w, int word, const Json::Value& item) {
  switch (word) {
    case kWord8:
      fields::Time(w, item, key::kTime);
      WordList(w, item, key::kSamples, kSecondsPerRecord, kNoSample);
      break;
    case kWord9: {
      fields::Time(w, item, key::kTime);
      const Json::Value& positions = Array(item, key::kPositions);
      if (positions.size() > static_cast<Json::ArrayIndex>(kMinutesPerRecord)) throw BodyError("too many positions");
      for (const Json::Value& p : positions) {
        Place(w, p);
        w.U8(Unsigned(p, key::kSpeed, kByte));
      }
      // The minutes after the record's end hold the end marker.
      for (int i = static_cast<int>(positions.size()); i < kMinutesPerRecord; ++i) w.U32(~0u).U32(~0u).U16(kWord).U8(kByte);
      break;
    }
    case kAccidents:
      fields::Time(w, item, key::kEnd);
      Licence(w, item);
      WordList(w, item, key::kSamples, kAccidentSamples, kNoSample);
      Place(w, item);
      break;
    case kWord11: {
      Licence(w, item);
      fields::Time(w, item, key::kBegin);
      fields::Time(w, item, key::kEnd);
      const Json::Value& positions = Array(item, key::kPositions);
      static const Json::Value kNone(Json::objectValue);
      Place(w, positions.size() > 0 ? positions[0] : kNone);
      Place(w, positions.size() > 1 ? positions[1] : kNone);
      break;
    }
    case kLogins:
      fields::Time(w, item, key::kTime);
      Licence(w, item);
      w.U8(Unsigned(item, key::kEvent, kByte));
      break;
    case kPower:
    case kParameterChanges:
      fields::Time(w, item, key::kTime);
      w.U8(Unsigned(item, key::kEvent, kByte));
      break;
    case kSpeedStatus:
      w.U8(Unsigned(item, key::kEvent, kByte));
      fields::Time(w, item, key::kBegin);
      fields::Time(w, item, key::kEnd);
      WordList(w, item, key::kSpeed, kSecondsPerRecord, 0);
      break;
    default:
      break;
  }
}

Json::Value ReadRecord(Reader& r, int word) {
  Json::Value item(Json::objectValue);
  switch (word) {
    case kWord8:
      item[key::kTime] = r.BcdTime();
      item[key::kSamples] = ReadWordList(r, kSecondsPerRecord);
      break;
    case kWord9: {
      item[key::kTime] = r.BcdTime();
      Json::Value positions(Json::arrayValue);
      bool ended = false;
      for (int i = 0; i < kMinutesPerRecord; ++i) {
        Json::Value p(Json::objectValue);
        ReadPlace(r, p);
        p[key::kSpeed] = r.U8();
        if (!ended) positions.append(p);
        ended = ended || IsPositionEnd(p);
      }
      item[key::kPositions] = positions;
      break;
    }
    case kAccidents:
      item[key::kEnd] = r.BcdTime();
      item[key::kLicence] = ReadLicence(r);
      item[key::kSamples] = ReadWordList(r, kAccidentSamples);
      ReadPlace(r, item);
      break;
    case kWord11: {
      item[key::kLicence] = ReadLicence(r);
      item[key::kBegin] = r.BcdTime();
      item[key::kEnd] = r.BcdTime();
      for (int i = 0; i < 2; ++i) {
        Json::Value p(Json::objectValue);
        ReadPlace(r, p);
        item[key::kPositions].append(p);
      }
      break;
    }
    case kLogins:
      item[key::kTime] = r.BcdTime();
      item[key::kLicence] = ReadLicence(r);
      item[key::kEvent] = r.U8();
      break;
    case kPower:
    case kParameterChanges:
      item[key::kTime] = r.BcdTime();
      item[key::kEvent] = r.U8();
      break;
    case kSpeedStatus:
      item[key::kEvent] = r.U8();
      item[key::kBegin] = r.BcdTime();
      item[key::kEnd] = r.BcdTime();
      item[key::kSpeed] = ReadWordList(r, kSecondsPerRecord);
      break;
    default:
      break;
  }
  return item;
}

}  // namespace

void Write2012(Writer& w, int word, const Json::Value& a) {
  switch (word) {
    case kVersionWord:
      Year(w, a);
      w.Bcd(std::to_string(Unsigned(a, key::kModification, 99)), 1);
      break;
    case kDriver: Licence(w, a); break;
    case kClock: fields::Time(w, a, key::kTime); break;
    case kMileage:
      fields::Time(w, a, key::kRecorderTime);
      fields::Time(w, a, key::kInstallTime);
      fields::Digits(w, a, key::kInitialMileage, 4);
      fields::Digits(w, a, key::kMileage, 4);
      break;
    case kCoefficient:
      fields::Time(w, a, key::kTime);
      w.U16(Unsigned(a, key::kCoefficient, kWord));
      break;
    case kWord5: Vehicle(w, a); break;
    case kWord6: {
      fields::Time(w, a, key::kTime);
      w.U8(Unsigned(a, key::kStatus, kByte));
      const Json::Value& items = Array(a, key::kItems);
      static const Json::Value kNone(Json::objectValue);
      const Json::Value& names = items.empty() ? kNone : items[0];
      for (int bit = 0; bit < kSignals; ++bit) fields::Text(w, names, (key::kSignalName + std::to_string(bit)).c_str(), kSignalNameSize);
      break;
    }
    case kWord7: {
      fields::Text(w, a, key::kCertificate, kCertificateSize);
      fields::Text(w, a, key::kModel, kModelSize);
      Year(w, a);
      w.Bcd(std::to_string(Unsigned(a, key::kMonth, 12)), 1).Bcd(std::to_string(Unsigned(a, key::kDay, 31)), 1);
      // The serial number is a number of four bytes.
      const std::string serial = txt::JsonMemberString(a, key::kSerial);
      if (serial.empty() || serial.size() > 10 || serial.find_first_not_of("0123456789") != std::string::npos ||
          std::stoull(serial) > fields::kDword) {
        throw BodyError("the recorder's serial number is no four-byte number");
      }
      w.U32(static_cast<uint32_t>(std::stoull(serial))).Fixed("", kIdentityReserved);
      break;
    }
    default:
      if (!IsRangeWord(word)) throw BodyError("the 2012 recorder has no word " + std::to_string(word));
      for (const Json::Value& item : Array(a, key::kItems)) WriteRecord(w, word, item);
      break;
  }
}

void Read2012(Reader& r, int word, Json::Value& a) {
  switch (word) {
    case kVersionWord:
      a[key::kYear] = fields::ReadDigits(r, 1);
      a[key::kModification] = fields::ReadDigits(r, 1);
      break;
    case kDriver: a[key::kLicence] = ReadLicence(r); break;
    case kClock: a[key::kTime] = r.BcdTime(); break;
    case kMileage:
      a[key::kRecorderTime] = r.BcdTime();
      a[key::kInstallTime] = r.BcdTime();
      a[key::kInitialMileage] = fields::ReadDigits(r, 4);
      a[key::kMileage] = fields::ReadDigits(r, 4);
      break;
    case kCoefficient:
      a[key::kTime] = r.BcdTime();
      a[key::kCoefficient] = r.U16();
      break;
    case kWord5: ReadVehicle(r, a); break;
    case kWord6: {
      a[key::kTime] = r.BcdTime();
      a[key::kStatus] = r.U8();
      Json::Value names(Json::objectValue);
      for (int bit = 0; bit < kSignals; ++bit) names[key::kSignalName + std::to_string(bit)] = r.FixedText(kSignalNameSize);
      a[key::kItems].append(names);
      break;
    }
    case kWord7:
      a[key::kCertificate] = r.FixedText(kCertificateSize);
      a[key::kModel] = r.FixedText(kModelSize);
      a[key::kYear] = 2000 + fields::ReadDigits(r, 1);
      a[key::kMonth] = fields::ReadDigits(r, 1);
      a[key::kDay] = fields::ReadDigits(r, 1);
      a[key::kSerial] = std::to_string(r.U32());
      r.Raw(kIdentityReserved);
      break;
    default: {
      const size_t size = RecordSize(word);
      if (size == 0 || r.Left() % size != 0) throw BodyError("recorder data is not whole records");
      a[key::kItems] = Json::Value(Json::arrayValue);
      while (!r.AtEnd()) a[key::kItems].append(ReadRecord(r, word));
      break;
    }
  }
}

}  // namespace jt808::recorder
