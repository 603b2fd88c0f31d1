// The driving recorder behind each simulated terminal. Its data set follows
// from the device number: a driver, a vehicle, and eight days of driving (two
// trips a day, the morning one long enough to count as overtime driving) from
// which every record is derived: per-minute speeds, per-hour positions, the
// samples before each stop, overtime driving, log-ins, power and parameter
// changes and the speed status log. It answers the data-collection command
// in either edition of the recorder standard, within the requested time range
// and block count, newest record first; what the parameter-download command
// writes (driver, vehicle, clock, coefficient ...) later reads back.
#include <json/value.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <optional>
#include <string>
#include <vector>

#include "host/ref/run/terminals.h"
#include "host/ref/run/terminals/recorder_params.h"
#include "platform/clock.h"
#include "text/datetime.h"
#include "text/encoding.h"
#include "text/json.h"
#include "text/numbers.h"

namespace hostref::terminals {
namespace {
constexpr int kRead = 0x8700;
constexpr int kVersion2003 = 2003, kVersion2012 = 2012;

namespace key {
constexpr const char *kVersion = "VER", *kWord = "CDID", *kBegin = "TIMB", *kEnd = "TIME", *kBlocks = "LEN",
                      *kItems = "Item";
}  // namespace key

using Seconds = int64_t;
constexpr Seconds kMinute = 60, kHour = 3600, kDay = 86400;
constexpr int kDays = 8;
constexpr int kSamplesPerMinute = 60, kAccidentSamples = 100, kSpeedStatusSeconds = 60;
constexpr Seconds kOvertime = 4 * kHour;
constexpr int kLogin = 1, kLogout = 2, kPowerOn = 1, kPowerOff = 2, kSpeedNormal = 1, kSpeedAbnormal = 2;

// ---- time ---------------------------------------------------------------------------

int64_t DaysFromCivil(int y, unsigned m, unsigned d) {
  y -= m <= 2;
  const int era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return static_cast<int64_t>(era) * 146097 + static_cast<int64_t>(doe) - 719468;
}
Seconds ToSeconds(const SYSTEMTIME& t) {
  return DaysFromCivil(t.wYear, t.wMonth, t.wDay) * kDay + t.wHour * kHour + t.wMinute * kMinute + t.wSecond;
}
SYSTEMTIME FromSeconds(Seconds s) {
  int64_t z = (s >= 0 ? s : s - (kDay - 1)) / kDay;
  const Seconds inDay = s - z * kDay;
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  const unsigned d = doy - (153 * mp + 2) / 5 + 1;
  const unsigned m = mp < 10 ? mp + 3 : mp - 9;
  SYSTEMTIME t{};
  t.wYear = static_cast<WORD>(static_cast<int64_t>(yoe) + era * 400 + (m <= 2));
  t.wMonth = static_cast<WORD>(m);
  t.wDay = static_cast<WORD>(d);
  t.wHour = static_cast<WORD>(inDay / kHour);
  t.wMinute = static_cast<WORD>(inDay % kHour / kMinute);
  t.wSecond = static_cast<WORD>(inDay % kMinute);
  return t;
}
std::string Text(Seconds s) { return txt::FormatRequestTime(FromSeconds(s)); }
Seconds Now() { return ToSeconds(plat::GetLocalTime()); }

// ---- the data set ---------------------------------------------------------------------

struct Trip {
  Seconds begin, end;  // end is the stop, or now for a trip under way
  Seconds stop;        // when the trip stops (later than end while it is under way)
  bool overtime() const { return end - begin > kOvertime; }
};

struct Recorder {
  uint32_t seed = 0;
  Seconds anchor = 0;  // the data set's "now": records end here
  const RecorderParameters* params = nullptr;  // driver, vehicle, mileage: what the parameter command wrote
  std::vector<Trip> trips;  // newest first
};

DeviceState<std::optional<Recorder>> g_recorders;

uint32_t SeedOf(const std::string& idno) {
  uint32_t seed = 7;
  for (unsigned char c : idno) seed = seed * 31 + c;
  return seed;
}

Recorder Make(const std::string& idno) {
  Recorder r;
  r.seed = SeedOf(idno);
  r.anchor = Now() / kMinute * kMinute;
  const Seconds today = r.anchor / kDay * kDay;
  for (int d = 0; d < kDays; ++d) {
    const Seconds day = today - d * kDay;
    const Seconds afternoon = day + (13 * 60 + 40 + (r.seed * 3 + d) % 25) * kMinute;
    const Seconds morning = day + (7 * 60 + 10 + (r.seed + d) % 20) * kMinute;
    for (Trip trip : {Trip{afternoon, 0, afternoon + 230 * kMinute}, Trip{morning, 0, morning + 255 * kMinute}}) {
      if (trip.begin >= r.anchor) continue;
      trip.end = std::min(trip.stop, r.anchor);
      r.trips.push_back(trip);
    }
  }
  return r;
}

Recorder& RecorderOf(const std::string& idno) {
  std::optional<Recorder>& r = g_recorders[idno];
  if (!r) r = Make(idno);
  r->params = &RecorderParametersOf(idno);
  return *r;
}

// Speed in km/h at a second of a trip: cruising with slow and quick swings, ramps at both ends.
int SpeedAt(const Trip& trip, Seconds at) {
  if (at < trip.begin || at >= trip.end) return 0;
  const double offset = static_cast<double>(at - trip.begin);
  const double ramp = std::min(1.0, std::min(offset, static_cast<double>(trip.stop - at)) / 30.0);
  return static_cast<int>((55 + 20 * std::sin(offset / 300) + 8 * std::sin(offset / 47)) * ramp);
}
int StatusAt(const Trip& trip, Seconds at) {
  const int speed = SpeedAt(trip, at);
  return 0x01 | (speed > 0 ? 0x02 : 0) | (speed < SpeedAt(trip, at - 1) ? 0x10 : 0);
}
int Sample(const Trip& trip, Seconds at) { return SpeedAt(trip, at) << 8 | StatusAt(trip, at); }

// Total mileage in 0.1 km.

// Position in 1/10000 minute, eastwards along the trip.
Json::Value PositionAt(const Recorder& r, const Trip& trip, Seconds at) {
  const Seconds offset = at - trip.begin;
  Json::Value p;
  p["JD"] = static_cast<int>(114.05 * 600000) + static_cast<int>(r.seed % 3000) + static_cast<int>(offset * 3);
  p["WD"] = static_cast<int>(22.54 * 600000) + static_cast<int>(offset / 2 % 4000);
  p["GAODU"] = 30 + static_cast<int>(offset / 60 % 40);
  return p;
}
Json::Value PositionEnd() {
  Json::Value p;
  p["JD"] = -1;
  p["WD"] = -1;
  p["GAODU"] = 0xFFFF;
  p["SPD"] = 0xFF;
  return p;
}
// ---- records of the 2012 edition ---------------------------------------------------

// One record: the time the range is matched against, and the trip it belongs to.
struct Record {
  Seconds at;
  const Trip* trip;
};

// Every record of a word, newest first.
std::vector<Record> RecordTimes(const Recorder& r, int word) {
  std::vector<Record> out;
  for (const Trip& trip : r.trips) {
    const bool morning = trip.begin % kDay < 12 * kHour;
    switch (word) {
      case 0x08:
        for (Seconds m = (trip.end - kMinute) / kMinute * kMinute; m >= trip.begin; m -= kMinute) out.push_back({m, &trip});
        break;
      case 0x09:
        for (Seconds h = (trip.end - 1) / kHour * kHour; h + kHour > trip.begin; h -= kHour) out.push_back({h, &trip});
        break;
      case 0x10:
        if (trip.end < r.anchor) out.push_back({trip.end, &trip});
        break;
      case 0x11:
        if (trip.overtime()) out.push_back({trip.begin, &trip});
        break;
      case 0x12:
        if (trip.end + 3 * kMinute <= r.anchor) out.push_back({trip.end + 3 * kMinute, &trip});
        out.push_back({trip.begin - 5 * kMinute, &trip});
        break;
      case 0x13:
        if (trip.end + 10 * kMinute <= r.anchor) out.push_back({trip.end + 10 * kMinute, &trip});
        out.push_back({trip.begin - 10 * kMinute, &trip});
        break;
      case 0x14:
        // A parameter was changed before the morning trip of every other day.
        if (morning && (r.anchor / kDay - trip.begin / kDay) % 2 == 1) out.push_back({trip.begin - 20 * kMinute, &trip});
        break;
      case 0x15:
        if (morning && trip.begin + kHour + kMinute <= trip.end) out.push_back({trip.begin + kHour, &trip});
        break;
      default:
        break;
    }
  }
  return out;
}

Json::Value Positions(const Recorder& r, const Trip& trip, Seconds hour) {
  Json::Value positions(Json::arrayValue);
  for (int m = 0; m < 60; ++m) {
    const Seconds at = hour + m * kMinute;
    if (at >= trip.end) {
      positions.append(PositionEnd());
      break;
    }
    Json::Value p;
    if (at < trip.begin) {
      p["JD"] = -1, p["WD"] = -1, p["GAODU"] = 0, p["SPD"] = 0;
    } else {
      p = PositionAt(r, trip, at);
      p["SPD"] = SpeedAt(trip, at);
    }
    positions.append(p);
  }
  return positions;
}

Json::Value Write2012(const Recorder& r, int word, const Record& rec) {
  const Trip& trip = *rec.trip;
  Json::Value item;
  switch (word) {
    case 0x08: {
      item["DTM"] = Text(rec.at);
      Json::Value samples(Json::arrayValue);
      for (int i = 0; i < kSamplesPerMinute; ++i) samples.append(Sample(trip, rec.at + i));
      item["SPDSGN"] = samples;
      break;
    }
    case 0x09:
      item["DTM"] = Text(rec.at);
      item["POS"] = Positions(r, trip, rec.at);
      break;
    case 0x10: {
      item = PositionAt(r, trip, trip.end - 1);
      item["ETM"] = Text(trip.end);
      item["GCP"] = r.params->licence;
      // Newest first: the sample at the stop, then every 0.2 s before it (five samples a second).
      Json::Value samples(Json::arrayValue);
      for (int i = 0; i < kAccidentSamples; ++i) samples.append(Sample(trip, trip.end - i / 5));
      item["SPDSGN"] = samples;
      break;
    }
    case 0x11: {
      item["GCP"] = r.params->licence;
      item["BTM"] = Text(trip.begin);
      item["ETM"] = Text(trip.end);
      item["POS"].append(PositionAt(r, trip, trip.begin));
      item["POS"].append(PositionAt(r, trip, trip.end - 1));
      break;
    }
    case 0x12:
      item["DTM"] = Text(rec.at);
      item["GCP"] = r.params->licence;
      item["STA"] = rec.at < trip.begin ? kLogin : kLogout;
      break;
    case 0x13:
      item["DTM"] = Text(rec.at);
      item["STA"] = rec.at < trip.begin ? kPowerOn : kPowerOff;
      break;
    case 0x14: {
      constexpr int kChanged[] = {0x82, 0xC2, 0x84, 0xC3};
      item["DTM"] = Text(rec.at);
      item["STA"] = kChanged[rec.at / kDay % 4];
      break;
    }
    case 0x15: {
      const bool abnormal = rec.at / kDay % 3 == 0;
      item["STA"] = abnormal ? kSpeedAbnormal : kSpeedNormal;
      item["BTM"] = Text(rec.at);
      item["ETM"] = Text(rec.at + kSpeedStatusSeconds - 1);
      Json::Value speeds(Json::arrayValue);
      for (int i = 0; i < kSpeedStatusSeconds; ++i) {
        const int recorded = SpeedAt(trip, rec.at + i);
        const int reference = abnormal ? recorded * 9 / 10 : recorded + (i % 3 == 0 ? 1 : 0);
        speeds.append(recorded << 8 | std::min(reference, 0xFF));
      }
      item["SPD"] = speeds;
      break;
    }
    default:
      break;
  }
  return item;
}

// The words without records (members of the 2012 edition).
void Facts2012(const Recorder& r, int word, Json::Value& a) {
  switch (word) {
    case 0x00: a["YEAR"] = 12, a["MODNUM"] = 0; break;
    case 0x07:
      a["CCCCODE"] = "C000118", a["MODE"] = "FC-TR2012", a["YEAR"] = 2024, a["MONTH"] = 3, a["DAY"] = 1;
      a["SERNM"] = "S" + std::to_string(r.seed % 90000);
      break;
    default: break;
  }
}

bool Named2012(int word) { return word <= 0x09 || (word >= 0x10 && word <= 0x15); }
bool Named2003(int word) { return (word >= 0x01 && word <= 0x09) || word == 0x11; }

// ---- the 2003 edition ----------------------------------------------------------------

const Trip* LastStopped(const Recorder& r) {
  for (const Trip& trip : r.trips) {
    if (trip.end < r.anchor) return &trip;
  }
  return nullptr;
}

void Facts2003(const Recorder& r, int word, Json::Value& a) {
  const Seconds now = Now();
  const Trip* last = r.trips.empty() ? nullptr : &r.trips.front();
  switch (word) {
    case 0x05:
    case 0x09: {
      // Minute speeds of the last hour driven (0x05) or of the last trip (0x09).
      a[key::kItems] = Json::Value(Json::arrayValue);
      if (!last) break;
      const Seconds from = word == 0x05 ? std::max(last->begin, last->end - kHour) : last->begin;
      a["DTM"] = Text(from);
      for (Seconds m = from; m + kMinute <= last->end; m += kMinute) {
        Json::Value item;
        item["SPD"] = SpeedAt(*last, m + 30);
        a[key::kItems].append(item);
      }
      break;
    }
    case 0x07: {
      a[key::kItems] = Json::Value(Json::arrayValue);
      const Trip* stop = LastStopped(r);
      if (!stop) break;
      a["DTM"] = Text(stop->end);
      for (int i = 0; i < kAccidentSamples; ++i) {
        Json::Value item;
        item["SPD"] = SpeedAt(*stop, stop->end - i / 5);
        item["SIN"] = StatusAt(*stop, stop->end - i / 5);
        a[key::kItems].append(item);
      }
      break;
    }
    case 0x08: {
      int tenths = 0;
      for (const Trip& trip : r.trips) {
        if (trip.end > r.anchor - 2 * kDay) tenths += static_cast<int>((trip.end - trip.begin) * 55 / 360);
      }
      a["DTM"] = Text(now), a["MILE"] = tenths;
      break;
    }
    case 0x11:
      a["GDI"] = r.params->driverCode;
      a[key::kItems] = Json::Value(Json::arrayValue);
      for (const Trip& trip : r.trips) {
        if (!trip.overtime() || trip.end <= r.anchor - 2 * kDay) continue;
        Json::Value item;
        item["BTM"] = Text(trip.begin), item["ETM"] = Text(trip.end);
        a[key::kItems].append(item);
      }
      break;
    default: break;
  }
}

// ---- the commands ---------------------------------------------------------------------

std::optional<Seconds> TimeMember(const Json::Value& param, const char* name) {
  if (auto time = txt::ParseDateTimeText(txt::JsonMemberString(param, name))) return ToSeconds(*time);
  return std::nullopt;
}

Answer Read(const TerminalRequest& r) {
  if (!r.param.isObject()) return Reply({}, kResultMessageError);
  const int version = txt::JsonMemberInt(r.param, key::kVersion, 0);
  const int word = txt::JsonMemberInt(r.param, key::kWord, -1);
  if (version != 0 && version != kVersion2003 && version != kVersion2012) return Reply({}, kResultMessageError);
  // Driver, clock, mileage, coefficient, vehicle and signals: what the parameter command keeps.
  if (auto parameters = ReadRecorderParameters(r)) return *parameters;
  const bool has2012 = version != kVersion2003, has2003 = version != kVersion2012;
  if (!(has2012 && Named2012(word)) && !(has2003 && Named2003(word))) return Reply({}, kResultUnsupported);
  Recorder& recorder = RecorderOf(r.devIdno);
  Json::Value answer(Json::objectValue);
  // Without an edition the recorder answers with the members of both (parameter pages read this way).
  answer[key::kVersion] = has2012 ? kVersion2012 : kVersion2003;
  if (has2003) Facts2003(recorder, word, answer);
  if (has2012) Facts2012(recorder, word, answer);
  // The record words of the 2012 edition (0x08 and 0x09 without an edition are the 2003 ones).
  const bool records = word == 0x08 || word == 0x09 || (word >= 0x10 && word <= 0x15);
  if (has2012 && records && !(has2003 && Named2003(word))) {
    const Json::Value* begin = r.param.find(key::kBegin, key::kBegin + 4);
    const Json::Value* end = r.param.find(key::kEnd, key::kEnd + 4);
    const std::optional<Seconds> from = begin ? TimeMember(r.param, key::kBegin) : std::optional<Seconds>(INT64_MIN);
    const std::optional<Seconds> to = end ? TimeMember(r.param, key::kEnd) : std::optional<Seconds>(INT64_MAX);
    if (!from || !to) return Reply({}, kResultMessageError);
    const int blocks = txt::JsonMemberInt(r.param, key::kBlocks, INT32_MAX);
    Json::Value items(Json::arrayValue);
    for (const Record& rec : RecordTimes(recorder, word)) {
      if (static_cast<int>(items.size()) >= blocks) break;
      if (rec.at >= *from && rec.at <= *to) items.append(Write2012(recorder, word, rec));
    }
    answer[key::kItems] = items;
  }
  return Reply(answer);
}

// Writes (0x8701) are the parameters' (settings_recorder.cpp).
const RegisterResponder kReadResponder{kRead, Read};
}  // namespace
}  // namespace hostref::terminals
