// The loaded fleet and the host's vehicle, rights, version and switch
// services on top of it. Lookups come from the UI and network threads, so the
// fleet is guarded by a shared mutex; records themselves never change.
#include "host/ref/core/fleet.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <sstream>

#include "host/hostcore.h"
#include "host/hostlog.h"
#include "host/ref/hostref.h"

namespace hostcore_detail {

int DeviceRecord::Attr(int attribute) const {
  for (const auto& [key, value] : attrs)
    if (key == attribute) return value;
  return 0;
}

bool Fleet::AddVehicle(std::string name, std::vector<DeviceRecord> list, std::string* error) {
  for (size_t i = 0; i < list.size(); ++i) {
    const DeviceRecord& d = list[i];
    const auto sameId = [&](const DeviceRecord& o) { return o.id == d.id; };
    const auto sameIdno = [&](const DeviceRecord& o) { return o.idno == d.idno; };
    if (byId.count(d.id) || std::any_of(list.begin(), list.begin() + i, sameId)) {
      *error = "duplicate device id " + std::to_string(d.id);
      return false;
    }
    if (byIdno.count(d.idno) || std::any_of(list.begin(), list.begin() + i, sameIdno)) {
      *error = "duplicate device number " + d.idno;
      return false;
    }
  }
  VehicleRecord& vehicle = vehicles.emplace_back();
  vehicle.name = std::move(name);
  for (DeviceRecord& d : list) {
    DeviceRecord& stored = devices.emplace_back(std::move(d));
    stored.vehicle = &vehicle;
    vehicle.devices.push_back(&stored);
    byId.emplace(stored.id, &stored);
    byIdno.emplace(stored.idno, &stored);
    maxId = std::max(maxId, stored.id);
  }
  return true;
}

namespace {

// The fleet and what the reference host overrides until the next load.
struct World {
  std::shared_mutex mutex;
  std::unique_ptr<Fleet> fleet = std::make_unique<Fleet>();
  std::unordered_map<int, bool> privileges;
  std::unordered_map<int, bool> versions;
  std::optional<bool> testIP;
  std::optional<bool> checkMode;
};

World& TheWorld() {
  static World world;
  return world;
}

template <typename Result, typename Read>
Result ReadFleet(Read&& read) {
  World& w = TheWorld();
  std::shared_lock lock(w.mutex);
  return read(w);
}

// Records are never changed once added, so they are read without the lock.
const DeviceRecord* FindDevice(int devId) {
  return ReadFleet<const DeviceRecord*>([&](World& w) -> const DeviceRecord* {
    auto it = w.fleet->byId.find(devId);
    return it == w.fleet->byId.end() ? nullptr : it->second;
  });
}

const DeviceRecord* FindDevice(const char* devIdno) {
  if (!devIdno) return nullptr;
  return ReadFleet<const DeviceRecord*>([&](World& w) -> const DeviceRecord* {
    auto it = w.fleet->byIdno.find(std::string_view(devIdno));
    return it == w.fleet->byIdno.end() ? nullptr : it->second;
  });
}

CVehicleFunc VehicleOf(const DeviceRecord* device) {
  return device ? CVehicleFunc(device->vehicle, device) : CVehicleFunc();
}

}  // namespace

CLogFile2& CoreLog() {
  static CLogFile2 log("hostcore");
  return log;
}

std::optional<int> FleetConfigInt(int id) {
  return ReadFleet<std::optional<int>>([&](World& w) -> std::optional<int> {
    auto it = w.fleet->config.find(id);
    if (it == w.fleet->config.end()) return std::nullopt;
    return it->second;
  });
}

std::optional<std::string> FleetConfigText(int id, int index) {
  return ReadFleet<std::optional<std::string>>([&](World& w) -> std::optional<std::string> {
    auto it = w.fleet->configText.find({id, index});
    if (it == w.fleet->configText.end()) return std::nullopt;
    return it->second;
  });
}

// Marker records never change once loaded, so they are read without the lock.
const Fleet& LoadedMarkers() {
  return *ReadFleet<const Fleet*>([](World& w) { return w.fleet.get(); });
}

}  // namespace hostcore_detail

using hostcore_detail::DeviceRecord;
using hostcore_detail::ReadFleet;
using hostcore_detail::World;

// ---- records ------------------------------------------------------------------

namespace {
enum : int { kDevInfoDevice = 7 };

const DeviceRecord* DeviceOf(const hostcore_detail::VehicleRecord* vehicle, const DeviceRecord* device) {
  if (device) return device;
  if (vehicle && !vehicle->devices.empty()) return vehicle->devices.front();
  return nullptr;
}
}  // namespace

const char* CDevFunc::GetDevIDNOForChar() const { return record_ ? record_->idno.c_str() : ""; }
int CDevFunc::GetDevID() const { return record_ ? record_->id : 0; }
int CDevFunc::GetDevInt(int attribute) const { return record_ ? record_->Attr(attribute) : 0; }

int CVehicleFunc::GetDevInt(int attribute) const {
  const DeviceRecord* device = DeviceOf(vehicle_, device_);
  return device ? device->Attr(attribute) : 0;
}

std::string CVehicleFunc::GetDevStr(int what, const void* /*deviceData*/) const {
  if (!vehicle_ || what != kDevStrVehicleAndDevice) return "";
  return vehicle_->name;
}

CDevFunc CVehicleFunc::GetDevInfo(int kind, int index) const {
  if (!vehicle_ || kind != kDevInfoDevice || index < 0) return CDevFunc();
  if (index == 0) return CDevFunc(DeviceOf(vehicle_, device_));
  if (static_cast<size_t>(index) < vehicle_->devices.size()) return CDevFunc(vehicle_->devices[index]);
  return CDevFunc();
}

std::string CVehicleFunc::GetName() const { return vehicle_ ? vehicle_->name : ""; }

CVehicleFunc CVehicleBaseMgr::FindVechicleFromDevID(int devId) {
  return hostcore_detail::VehicleOf(hostcore_detail::FindDevice(devId));
}

CDevFunc CVehicleBaseMgr::FindDvsDeviceByID(int devId) { return CDevFunc(hostcore_detail::FindDevice(devId)); }

CVehicleFunc CVehicleBaseMgr::FindVehicleFromDev(const char* devIdno) {
  return hostcore_detail::VehicleOf(hostcore_detail::FindDevice(devIdno));
}

CDevFunc CVehicleBaseMgr::FindDvsDeviceByIDNO(const char* devIdno) {
  return CDevFunc(hostcore_detail::FindDevice(devIdno));
}

// ---- rights, versions, switches -------------------------------------------------

BOOL CUserPrivilegeManger::IsPrivilege(int right) {
  return ReadFleet<BOOL>([&](World& w) {
    auto it = w.privileges.find(right);
    if (it != w.privileges.end()) return it->second ? TRUE : FALSE;
    return (w.fleet->allRights || w.fleet->rights.count(right)) ? TRUE : FALSE;
  });
}

BOOL CVersionsMgr::IsVersions(int version, int /*sub*/) {
  return ReadFleet<BOOL>([&](World& w) {
    auto it = w.versions.find(version);
    if (it != w.versions.end()) return it->second ? TRUE : FALSE;
    return w.fleet->versions.count(version) ? TRUE : FALSE;
  });
}

BOOL CLayoutMgr::IsSupportVer7_21() {
  return ReadFleet<BOOL>([](World& w) { return w.fleet->ver7_21 ? TRUE : FALSE; });
}

BOOL CLayoutMgr::IsSupportVer7_23() {
  return ReadFleet<BOOL>([](World& w) { return w.fleet->ver7_23 ? TRUE : FALSE; });
}

BOOL CLayoutMgr::IsSupportVer7_25() {
  return ReadFleet<BOOL>([](World& w) { return w.fleet->ver7_25 ? TRUE : FALSE; });
}

BOOL CLayoutMgr::IsSupportFalseAlarmResaon() {
  return ReadFleet<BOOL>([](World& w) { return w.fleet->falseAlarmReason ? TRUE : FALSE; });
}

// The reference host has one client kind for all alarms: the fleet says which.
BOOL IsSBUploadAlarmClient(const _GPSVehicleAlarm* alarm) {
  if (!alarm) return FALSE;
  return ReadFleet<BOOL>([](World& w) { return w.fleet->sbUploadAlarm ? TRUE : FALSE; });
}

BOOL CMgrAppInfo::IsTestIP() {
  return ReadFleet<BOOL>([](World& w) { return w.testIP.value_or(w.fleet->testIP) ? TRUE : FALSE; });
}

BOOL IsCheckMode() {
  return ReadFleet<BOOL>([](World& w) { return w.checkMode.value_or(w.fleet->checkMode) ? TRUE : FALSE; });
}

std::string CMgrAppInfo::GetDirSvrIP() {
  return ReadFleet<std::string>([](World& w) { return w.fleet->dirSvrIP; });
}

// ---- the reference host's control of the fleet -----------------------------------

namespace {
// Generated vehicles carry a plate-like name: the prefix and the device number.
constexpr const char* kGeneratedPlatePrefix = "测A";
}  // namespace

namespace hostref {

bool LoadFleet(const std::string& json, std::string* error) {
  std::string why;
  std::unique_ptr<hostcore_detail::Fleet> fleet = hostcore_detail::ParseFleet(json, &why);
  if (!fleet) {
    hostcore_detail::CoreLog().WriteStrInfoEx(2, "LoadFleet rejected: %s", why.c_str());
    if (error) *error = why;
    return false;
  }
  World& w = hostcore_detail::TheWorld();
  {
    std::unique_lock lock(w.mutex);
    std::swap(w.fleet, fleet);
    w.privileges.clear();
    w.versions.clear();
    w.testIP.reset();
    w.checkMode.reset();
  }
  return true;  // the old fleet is freed here, outside the lock
}

// Read in blocks up to the limit, so that a device or a pipe that never ends
// (/dev/zero) is refused as soon as it passed the limit.
bool LoadFleetFile(const std::string& path, std::string* error) {
  std::ifstream file(path, std::ios::binary);
  if (!file) {
    if (error) *error = "cannot read " + path;
    return false;
  }
  constexpr size_t kBlock = 64 * 1024;
  std::string text;
  while (file && text.size() <= kMaxFleetFileBytes) {
    const size_t at = text.size();
    text.resize(at + kBlock);
    file.read(text.data() + at, kBlock);
    text.resize(at + static_cast<size_t>(file.gcount()));
  }
  if (text.size() > kMaxFleetFileBytes) {
    if (error) *error = "the file is larger than a fleet file may be (" + std::to_string(kMaxFleetFileBytes >> 20) + " MiB)";
    return false;
  }
  return LoadFleet(text, error);
}

std::vector<int> DeviceIds() {
  return ReadFleet<std::vector<int>>([](World& w) {
    std::vector<int> ids;
    ids.reserve(w.fleet->devices.size());
    for (const DeviceRecord& d : w.fleet->devices) ids.push_back(d.id);
    return ids;
  });
}

std::vector<int> AddGeneratedDevices(int n, int firstIdno) {
  std::vector<int> ids;
  if (n <= 0) return ids;
  ids.reserve(n);
  World& w = hostcore_detail::TheWorld();
  std::unique_lock lock(w.mutex);
  hostcore_detail::Fleet& fleet = *w.fleet;
  fleet.byId.reserve(fleet.byId.size() + n);
  fleet.byIdno.reserve(fleet.byIdno.size() + n);
  std::string error;
  for (int i = 0; i < n; ++i) {
    DeviceRecord device;
    device.id = fleet.maxId + 1;
    device.idno = std::to_string(static_cast<long long>(firstIdno) + i);
    std::string name = kGeneratedPlatePrefix + device.idno;
    const int id = device.id;
    std::vector<DeviceRecord> one;
    one.push_back(std::move(device));
    if (fleet.AddVehicle(std::move(name), std::move(one), &error)) ids.push_back(id);
  }
  return ids;
}

void SetPrivilege(int right, bool granted) {
  World& w = hostcore_detail::TheWorld();
  std::unique_lock lock(w.mutex);
  w.privileges[right] = granted;
}

void SetVersion(int version, bool on) {
  World& w = hostcore_detail::TheWorld();
  std::unique_lock lock(w.mutex);
  w.versions[version] = on;
}

std::vector<std::vector<uint8_t>> FleetAlarms() {
  return ReadFleet<std::vector<std::vector<uint8_t>>>([](World& w) { return w.fleet->alarms; });
}

void SetLayout(bool ver7_21, bool ver7_23, bool ver7_25, bool falseAlarmReason) {
  World& w = hostcore_detail::TheWorld();
  std::unique_lock lock(w.mutex);
  w.fleet->ver7_21 = ver7_21;
  w.fleet->ver7_23 = ver7_23;
  w.fleet->ver7_25 = ver7_25;
  w.fleet->falseAlarmReason = falseAlarmReason;
}

void SetSBUploadAlarm(bool on) {
  World& w = hostcore_detail::TheWorld();
  std::unique_lock lock(w.mutex);
  w.fleet->sbUploadAlarm = on;
}

void SetTestIP(bool on) {
  World& w = hostcore_detail::TheWorld();
  std::unique_lock lock(w.mutex);
  w.testIP = on;
}

void SetCheckMode(bool on) {
  World& w = hostcore_detail::TheWorld();
  std::unique_lock lock(w.mutex);
  w.checkMode = on;
}

}  // namespace hostref
