// The fleet model behind hostcore: vehicles and devices with their numbered
// attributes, rights, versions, switches and configuration defaults. Records
// live in stable containers and stay valid until the fleet is replaced.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include <json/value.h>
#include <cstdint>

#include "host/hostcore.h"

class CLogFile2;

namespace hostcore_detail {

struct VehicleRecord;

struct DeviceRecord {
  int id = 0;
  std::string idno;
  // (attribute, value), sorted by attribute; a device carries a handful at most.
  std::vector<std::pair<int, int>> attrs;
  const VehicleRecord* vehicle = nullptr;

  int Attr(int attribute) const;
};

struct VehicleRecord {
  std::string name;
  std::vector<const DeviceRecord*> devices;
};

// Lets the IDNO map be searched with a string_view, without a copy.
struct TextHash {
  using is_transparent = void;
  size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
};

// A map marker of the fleet: the host's record, its name, and the lists an
// out-of-line marker's record points to.
struct MarkerEntry {
  _tagGPSMapMarkerEx record{};
  std::string name;
  std::string lngList, latList;
};

struct LineEntry {
  _tagGPSMapLineEx record;
  std::string name;
};

struct Fleet {
  std::string session;
  bool allRights = true;
  std::unordered_set<int> rights;
  std::unordered_set<int> versions;
  bool testIP = false;
  bool checkMode = false;
  std::string dirSvrIP;
  bool ver7_21 = false;
  bool ver7_23 = false;
  bool ver7_25 = false;
  bool falseAlarmReason = false;
  bool sbUploadAlarm = false;
  std::vector<std::vector<uint8_t>> alarms;  // _GPSVehicleAlarm records
  std::unordered_map<int, int> config;
  std::map<std::pair<int, int>, std::string> configText;  // (id, index) -> text
  Json::Value markers{Json::arrayValue};
  Json::Value lines{Json::arrayValue};
  std::deque<MarkerEntry> markerRecords;  // fleet order
  std::unordered_map<int, const MarkerEntry*> markerById;
  std::deque<LineEntry> lineRecords;  // fleet order
  std::unordered_map<int, const LineEntry*> lineById;

  std::deque<VehicleRecord> vehicles;
  std::deque<DeviceRecord> devices;  // fleet order
  std::unordered_map<int, const DeviceRecord*> byId;
  std::unordered_map<std::string, const DeviceRecord*, TextHash, std::equal_to<>> byIdno;
  int maxId = 0;

  // Adds a vehicle; false (and *error) when a device id or IDNO is taken.
  bool AddVehicle(std::string name, std::vector<DeviceRecord> devices, std::string* error);
};

// Builds a fleet from its JSON text; null and *error when it is no fleet.
std::unique_ptr<Fleet> ParseFleet(const std::string& json, std::string* error);

// Builds the marker records from the fleet's "markers"; false and *error on a bad marker.
bool ReadMarkers(const Json::Value& markers, Fleet& fleet, std::string* error);
// Builds the line records from the fleet's "lines"; false and *error on a bad line.
bool ReadLines(const Json::Value& lines, Fleet& fleet, std::string* error);
// The marker records of the loaded fleet, valid until the next load.
const Fleet& LoadedMarkers();

// Defaults of the configuration from the loaded fleet ("config", "configText").
std::optional<int> FleetConfigInt(int id);
std::optional<std::string> FleetConfigText(int id, int index);

// The library's own logger.
CLogFile2& CoreLog();

}  // namespace hostcore_detail
