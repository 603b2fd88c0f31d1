#include "fleet.h"

#include <set>

#include "host/hostcore.h"
#include "host/ref/hostref.h"

namespace desk {
namespace {
constexpr int kStatusOffline = 101;

std::set<std::string>& Offline() {
  static std::set<std::string> offline;
  return offline;
}
}  // namespace

std::vector<FleetVehicle> ReadFleet() {
  std::vector<FleetVehicle> vehicles;
  for (int id : hostref::DeviceIds()) {
    const CDevFunc device = CVehicleBaseMgr::FindDvsDeviceByID(id);
    if (!device.IsValid()) continue;
    const std::string name = CVehicleBaseMgr::FindVechicleFromDevID(id).GetName();
    if (vehicles.empty() || vehicles.back().name != name) vehicles.push_back({name, {}});
    const std::string idno = device.GetDevIDNOForChar();
    vehicles.back().devices.push_back({id, idno, IsOnline(idno)});
  }
  return vehicles;
}

void SetOnline(const std::string& idno, bool online) {
  hostref::net::SetStatus(idno, online ? 0 : kStatusOffline);
  if (online) Offline().erase(idno);
  else Offline().insert(idno);
}

bool IsOnline(const std::string& idno) { return !Offline().count(idno); }

void ResetOnline() {
  for (const std::string& idno : Offline()) hostref::net::SetStatus(idno, 0);
  Offline().clear();
}

}  // namespace desk
