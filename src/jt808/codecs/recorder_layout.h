// The recorder's data blocks field by field: the member names of the reply
// objects, the command words, the field sizes and the fields both editions
// share. Only the recorder's codecs use it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include <json/value.h>

#include "jt808/bytes.h"

namespace jt808::recorder {

namespace key {
constexpr const char *kVersion = "VER", *kItems = "Item", *kTime = "DTM", *kDriverCode = "GDI", *kLicence = "GCP",
                     *kMileage = "MILE", *kCoefficient = "FEA", *kSpeed = "SPD", *kVin = "VIN", *kPlate = "CARID",
                     *kPlateClass = "SORT", *kStatus = "SIN", *kBegin = "BTM", *kEnd = "ETM", *kYear = "YEAR",
                     *kModification = "MODNUM", *kRecorderTime = "RDTM", *kInstallTime = "IDTM",
                     *kInitialMileage = "INITMILE", *kSignalName = "SINNM", *kCertificate = "CCCCODE",
                     *kModel = "MODE", *kMonth = "MONTH", *kDay = "DAY", *kSerial = "SERNM", *kSamples = "SPDSGN",
                     *kPositions = "POS", *kLongitude = "JD", *kLatitude = "WD", *kAltitude = "GAODU",
                     *kEvent = "STA";
}  // namespace key

enum Word : int {
  kVersionWord = 0x00, kDriver = 0x01, kClock = 0x02, kMileage = 0x03, kCoefficient = 0x04, kWord5 = 0x05,
  kWord6 = 0x06, kWord7 = 0x07, kWord8 = 0x08, kWord9 = 0x09, kAccidents = 0x10, kWord11 = 0x11, kLogins = 0x12,
  kPower = 0x13, kParameterChanges = 0x14, kSpeedStatus = 0x15,
};

constexpr size_t kLicenceSize = 18, kVinSize = 17, kPlateSize = 12, kPlateClassSize = 12, kSignalNameSize = 10,
                 kCertificateSize = 7, kModelSize = 16, kIdentityReserved = 5, kTimeSize = 6;
constexpr int kSignals = 8, kSecondsPerRecord = 60, kMinutesPerRecord = 60, kAccidentSamples = 100;
constexpr uint32_t kNoSample = 0xFFFF;

// The size of one record of a 2012 record word; 0 for any other word.
size_t RecordSize(int word);

// Longitude and latitude (1/10000 minute, signed) and altitude, ten bytes.
void Place(Writer& w, const Json::Value& p);
void ReadPlace(Reader& r, Json::Value& p);
// count words of an array member, padded with `fill`; BodyError when it holds more.
void WordList(Writer& w, const Json::Value& object, const char* key, int count, uint32_t fill);
Json::Value ReadWordList(Reader& r, int count);
void Licence(Writer& w, const Json::Value& o);
std::string ReadLicence(Reader& r);
// VIN, plate number and plate class.
void Vehicle(Writer& w, const Json::Value& a);
void ReadVehicle(Reader& r, Json::Value& a);
// A year of four digits (or two) as one BCD byte.
void Year(Writer& w, const Json::Value& o);

// The data of each edition's answers.
void Write2012(Writer& w, int word, const Json::Value& a);
void Read2012(Reader& r, int word, Json::Value& a);
void Write2003(Writer& w, int word, const Json::Value& a);
void Read2003(Reader& r, int word, Json::Value& a);

}  // namespace jt808::recorder
