// The loaded fleet as the desk shows it: vehicles in fleet order with their
// devices, and whether the simulated platform has each device online.
#pragma once

#include <string>
#include <vector>

namespace desk {

struct FleetDevice {
  int id = 0;
  std::string idno;
  bool online = true;
};

struct FleetVehicle {
  std::string name;
  std::vector<FleetDevice> devices;
};

std::vector<FleetVehicle> ReadFleet();
// Takes a device on or off line in the simulated platform (answers 101 while off).
void SetOnline(const std::string& idno, bool online);
bool IsOnline(const std::string& idno);
// Every device back on line (a new fleet).
void ResetOnline();

}  // namespace desk
