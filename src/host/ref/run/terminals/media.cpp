// Media terminals: each device keeps a library of stored media, each item
// with its channel, event, time and the position, alarms and status at that
// moment. A snapshot or a recording adds items and answers their ids; the
// search answers the items a filter matches; the uploads are accepted and
// may delete what they uploaded.
#include "host/ref/run/terminals/media.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <string_view>

#include <json/value.h>

#include "host/ref/run/terminals.h"
#include "platform/clock.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kSnapshot = 0x8801, kSearch = 0x8802, kUpload = 0x8803, kRecord = 0x8804, kSingleUpload = 0x8805;

enum MediaType : int { kImage = 0, kAudio = 1, kVideo = 2 };
constexpr int kEventPlatform = 0;
constexpr int kCameras = 4;            // channels 1 to 4 have a camera
constexpr int kMostPhotos = 10;        // a shot of more pictures stores this many
constexpr int kShootVideo = 65535, kStopShooting = 0;
constexpr int kStartRecording = 1;
constexpr int kDeleteAfterUpload = 1;
constexpr int kAnyChannel = 0;
constexpr size_t kTimeDigits = 12;

// Where the simulated vehicles stand, degrees x 10^6, and their status:
// ACC on, positioned, by GPS; bit 22 while moving.
constexpr int kBaseLatitude = 22543000, kBaseLongitude = 114057000;
constexpr uint32_t kStatusParked = 0x3 | (1u << 18), kStatusMoving = 1u << 22;

struct Item {
  StoredMedia media;
  std::string digits;  // the time as "YYMMDDhhmmss", as filters compare it
  int latitude = 0, longitude = 0, altitude = 0, speed = 0, direction = 0;
  uint32_t alarms = 0, status = 0;
};

struct Library {
  bool seeded = false;
  int nextId = 1;
  std::vector<Item> items;
  std::vector<int> uploaded;
};
DeviceState<Library> g_libraries;

SYSTEMTIME AddSeconds(SYSTEMTIME t, int seconds) {
  std::tm tm{};
  tm.tm_year = t.wYear - 1900, tm.tm_mon = t.wMonth - 1, tm.tm_mday = t.wDay;
  tm.tm_hour = t.wHour, tm.tm_min = t.wMinute, tm.tm_sec = t.wSecond + seconds;
  const std::time_t when = timegm(&tm);
  gmtime_r(&when, &tm);
  SYSTEMTIME out{};
  out.wYear = static_cast<WORD>(tm.tm_year + 1900), out.wMonth = static_cast<WORD>(tm.tm_mon + 1);
  out.wDay = static_cast<WORD>(tm.tm_mday), out.wHour = static_cast<WORD>(tm.tm_hour);
  out.wMinute = static_cast<WORD>(tm.tm_min), out.wSecond = static_cast<WORD>(tm.tm_sec);
  return out;
}

// A number of the device, so each device stands somewhere of its own.
int DeviceNumber(const std::string& idno) {
  int n = 0;
  for (char c : idno) n = c >= '0' && c <= '9' ? (n * 10 + (c - '0')) % 1000 : n;
  return n;
}

Item& AddItem(Library& library, const std::string& idno, int type, int channel, int event, const SYSTEMTIME& t,
              int speed, uint32_t alarms) {
  Item item;
  item.media = {library.nextId++, type, channel, event, {}};
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", t.wYear, t.wMonth, t.wDay, t.wHour, t.wMinute,
                t.wSecond);
  item.media.time = text;
  std::snprintf(text, sizeof text, "%02d%02d%02d%02d%02d%02d", t.wYear % 100, t.wMonth, t.wDay, t.wHour, t.wMinute,
                t.wSecond);
  item.digits = text;
  const int n = DeviceNumber(idno), step = static_cast<int>(library.items.size());
  item.latitude = kBaseLatitude + n * 1000 + step * 60;
  item.longitude = kBaseLongitude + n * 1000 + step * 45;
  item.altitude = 20 + step;
  item.speed = speed;
  item.direction = step * 45 % 360;
  item.alarms = alarms;
  item.status = kStatusParked | (speed > 0 ? kStatusMoving : 0);
  library.items.push_back(item);
  return library.items.back();
}

// A device's library, with what it took earlier today on first use.
Library& LibraryOf(const std::string& idno) {
  Library& library = g_libraries[idno];
  if (library.seeded) return library;
  library.seeded = true;
  SYSTEMTIME day = plat::GetLocalTime();
  day.wHour = day.wMinute = day.wSecond = day.wMilliseconds = 0;
  struct Seed {
    int type, channel, event, minutes, speed;
    uint32_t alarms;
  };
  constexpr Seed kSeeds[] = {{kImage, 1, 0, 360, 0, 0},      {kImage, 2, 1, 390, 352, 0},
                             {kAudio, 1, 0, 420, 0, 0},      {kVideo, 1, 2, 450, 605, 1u << 0},
                             {kImage, 1, 4, 480, 0, 0},      {kImage, 3, 3, 495, 718, 1u << 29}};
  for (const Seed& s : kSeeds) AddItem(library, idno, s.type, s.channel, s.event, AddSeconds(day, s.minutes * 60), s.speed, s.alarms);
  return library;
}

// A filter time of twelve digits; anything else (or all zeros) sets no bound.
std::string FilterTime(const Json::Value& param, const char* key) {
  const std::string text = txt::JsonMemberString(param, key);
  const bool digits = text.size() == kTimeDigits && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  return digits && text != std::string(kTimeDigits, '0') ? text : "";
}

// Channel 0 is every channel; a media type beyond video is every type.
struct Filter {
  int channel, type, event;
  std::string from, to;
  explicit Filter(const Json::Value& param)
      : channel(txt::JsonMemberInt(param, "CHID", kAnyChannel)),
        type(txt::JsonMemberInt(param, "METY", kImage)),
        event(txt::JsonMemberInt(param, "EVCO", kEventPlatform)),
        from(FilterTime(param, "BTM")),
        to(FilterTime(param, "ETM")) {}
  bool Matches(const Item& item) const {
    const StoredMedia& m = item.media;
    return (channel == kAnyChannel || m.channel == channel) && (type > kVideo || m.type == type) && m.event == event &&
           (from.empty() || item.digits >= from) && (to.empty() || item.digits <= to);
  }
};

Json::Value ItemReply(const Item& item) {
  Json::Value value(Json::objectValue);
  value["MDID"] = item.media.id;
  value["CHID"] = item.media.channel;
  value["METY"] = item.media.type;
  value["EVCO"] = item.media.event;
  value["Flag"] = item.alarms;
  value["STA"] = item.status;
  value["JD"] = item.longitude;
  value["WD"] = item.latitude;
  value["GAODU"] = item.altitude;
  value["SPD"] = item.speed;
  value["HS"] = item.direction;
  value["DTM"] = item.media.time;
  return value;
}

void Upload(Library& library, const std::vector<int>& ids, bool deleteAfter) {
  library.uploaded.insert(library.uploaded.end(), ids.begin(), ids.end());
  if (!deleteAfter) return;
  std::erase_if(library.items, [&](const Item& item) { return std::find(ids.begin(), ids.end(), item.media.id) != ids.end(); });
}

// Pictures (or a video) taken now on a channel, every interval seconds; answers their ids.
const RegisterResponder kShoot{kSnapshot, [](const TerminalRequest& r) -> Answer {
  if (!r.param.isObject()) return Reply({}, kResultMessageError);
  const int channel = std::max(1, txt::JsonMemberInt(r.param, "CHID", 1));
  if (channel > kCameras) return Reply({}, kResultUnsupported);
  const int order = txt::JsonMemberInt(r.param, "SNOR", kStopShooting);
  const int interval = std::max(0, txt::JsonMemberInt(r.param, "SNBT", 0));
  Library& library = LibraryOf(r.devIdno);
  Json::Value ids(Json::arrayValue);
  const SYSTEMTIME now = plat::GetLocalTime();
  if (order == kShootVideo) {
    ids.append(AddItem(library, r.devIdno, kVideo, channel, kEventPlatform, now, 0, 0).media.id);
  } else {
    for (int shot = 0; shot < std::min(order, kMostPhotos); ++shot) {
      ids.append(AddItem(library, r.devIdno, kImage, channel, kEventPlatform, AddSeconds(now, shot * interval), 0, 0).media.id);
    }
  }
  Json::Value body(Json::objectValue);
  body["MDID"] = ids;
  return Reply(body);
}};

// A recording started now is stored as one audio item.
const RegisterResponder kRecording{kRecord, [](const TerminalRequest& r) -> Answer {
  if (!r.param.isObject()) return Reply({}, kResultMessageError);
  Library& library = LibraryOf(r.devIdno);
  if (txt::JsonMemberInt(r.param, "SOOR", 0) == kStartRecording) {
    AddItem(library, r.devIdno, kAudio, 1, kEventPlatform, plat::GetLocalTime(), 0, 0);
  }
  return Reply({});
}};

const RegisterResponder kFind{kSearch, [](const TerminalRequest& r) -> Answer {
  if (!r.param.isObject()) return Reply({}, kResultMessageError);
  const Filter filter(r.param);
  Json::Value items(Json::arrayValue);
  for (const Item& item : LibraryOf(r.devIdno).items) {
    if (filter.Matches(item)) items.append(ItemReply(item));
  }
  Json::Value body(Json::objectValue);
  body["Item"] = items;
  return Reply(body);
}};

const RegisterResponder kUploadMatching{kUpload, [](const TerminalRequest& r) -> Answer {
  if (!r.param.isObject()) return Reply({}, kResultMessageError);
  const Filter filter(r.param);
  Library& library = LibraryOf(r.devIdno);
  std::vector<int> ids;
  for (const Item& item : library.items) {
    if (filter.Matches(item)) ids.push_back(item.media.id);
  }
  Upload(library, ids, txt::JsonMemberInt(r.param, "DELA", 0) == kDeleteAfterUpload);
  return Reply({});
}};

// One item by id; an id the library does not hold fails.
const RegisterResponder kUploadOne{kSingleUpload, [](const TerminalRequest& r) -> Answer {
  if (!r.param.isObject()) return Reply({}, kResultMessageError);
  const int id = txt::JsonMemberInt(r.param, "MDID", 0);
  Library& library = LibraryOf(r.devIdno);
  const bool held = std::any_of(library.items.begin(), library.items.end(), [id](const Item& item) { return item.media.id == id; });
  if (!held) return Reply({}, kResultFailed);
  Upload(library, {id}, txt::JsonMemberInt(r.param, "DELA", 0) == kDeleteAfterUpload);
  return Reply({});
}};
}  // namespace

std::vector<StoredMedia> MediaLibrary(const std::string& devIdno) {
  auto lock = Locked();
  std::vector<StoredMedia> media;
  for (const Item& item : LibraryOf(devIdno).items) media.push_back(item.media);
  return media;
}

std::vector<int> UploadedMedia(const std::string& devIdno) {
  auto lock = Locked();
  const Library* library = g_libraries.Find(devIdno);
  return library ? library->uploaded : std::vector<int>{};
}

}  // namespace hostref::terminals
