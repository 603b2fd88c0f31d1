// Reads the fleet model from JSON (format in docs/fleet.md). Every member is
// checked for its type; the first fault names its place and rejects the text.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <memory>

#include <json/json.h>

#include "host/ref/core/fleet.h"
#include "host/ref/hostref.h"
#include "text/json.h"

namespace hostcore_detail {
namespace {

// Collects the first fault with the path of the member where it happened.
class Reader {
 public:
  bool Fail(const std::string& where, const std::string& what) {
    if (error_.empty()) error_ = where + ": " + what;
    return false;
  }
  const std::string& Error() const { return error_; }

 private:
  std::string error_;
};

std::optional<int> DecimalKey(const std::string& key) {
  int value = 0;
  const char* end = key.data() + key.size();
  auto [ptr, ec] = std::from_chars(key.data(), end, value);
  if (ec != std::errc() || ptr != end || key.empty()) return std::nullopt;
  return value;
}

bool IsIntLike(const Json::Value& value) { return value.isInt() || value.isBool(); }
int IntLike(const Json::Value& value) { return value.isBool() ? (value.asBool() ? 1 : 0) : value.asInt(); }

bool ReadString(Reader& r, const Json::Value& object, const char* key, std::string& out,
                const std::string& where = "") {
  if (!object.isMember(key)) return true;
  const Json::Value& v = object[key];
  if (!v.isString()) return r.Fail(where + key, "expected a string");
  out = v.asString();
  return true;
}

bool ReadBool(Reader& r, const Json::Value& object, const char* key, bool& out) {
  if (!object.isMember(key)) return true;
  const Json::Value& v = object[key];
  if (!v.isBool()) return r.Fail(key, "expected true or false");
  out = v.asBool();
  return true;
}

bool ReadIntList(Reader& r, const Json::Value& list, const std::string& where, std::unordered_set<int>& out) {
  if (!list.isArray()) return r.Fail(where, "expected an array of integers");
  for (const Json::Value& v : list) {
    if (!v.isInt()) return r.Fail(where, "expected an array of integers");
    out.insert(v.asInt());
  }
  return true;
}

// An object of decimal keys and integer values ("attrs", "config").
template <typename Sink>
bool ReadIntMap(Reader& r, const Json::Value& object, const std::string& where, Sink&& sink) {
  if (!object.isObject()) return r.Fail(where, "expected an object of numbered integers");
  for (const std::string& key : object.getMemberNames()) {
    const auto number = DecimalKey(key);
    if (!number) return r.Fail(where + "." + key, "key is not a decimal number");
    if (!IsIntLike(object[key])) return r.Fail(where + "." + key, "expected an integer");
    sink(*number, IntLike(object[key]));
  }
  return true;
}

bool ReadRights(Reader& r, const Json::Value& root, Fleet& fleet) {
  if (!root.isMember("rights")) return true;
  const Json::Value& v = root["rights"];
  if (v.isString() && v.asString() == "all") return true;
  fleet.allRights = false;
  return ReadIntList(r, v, "rights", fleet.rights);
}

bool ReadConfigText(Reader& r, const Json::Value& root, Fleet& fleet) {
  if (!root.isMember("configText")) return true;
  const Json::Value& texts = root["configText"];
  if (!texts.isObject()) return r.Fail("configText", "expected an object");
  for (const std::string& idKey : texts.getMemberNames()) {
    const std::string where = "configText." + idKey;
    const auto id = DecimalKey(idKey);
    const Json::Value& list = texts[idKey];
    if (!id) return r.Fail(where, "key is not a decimal number");
    if (!list.isObject()) return r.Fail(where, "expected an object of numbered texts");
    for (const std::string& indexKey : list.getMemberNames()) {
      const auto index = DecimalKey(indexKey);
      if (!index) return r.Fail(where + "." + indexKey, "key is not a decimal number");
      if (!list[indexKey].isString()) return r.Fail(where + "." + indexKey, "expected a string");
      fleet.configText[{*id, *index}] = list[indexKey].asString();
    }
  }
  return true;
}

bool ReadDevice(Reader& r, const Json::Value& v, const std::string& where, DeviceRecord& device) {
  if (!v.isObject()) return r.Fail(where, "expected an object");
  // Id 0 means "no device" to the plug-in, so ids start at 1.
  if (!v["id"].isInt() || v["id"].asInt() <= 0) return r.Fail(where + ".id", "expected a positive integer");
  if (!v["idno"].isString() || v["idno"].asString().empty())
    return r.Fail(where + ".idno", "expected a non-empty string");
  device.id = v["id"].asInt();
  device.idno = v["idno"].asString();
  if (v.isMember("attrs") &&
      !ReadIntMap(r, v["attrs"], where + ".attrs", [&](int key, int value) { device.attrs.emplace_back(key, value); }))
    return false;
  std::sort(device.attrs.begin(), device.attrs.end());
  return true;
}

bool ReadVehicles(Reader& r, const Json::Value& root, Fleet& fleet) {
  if (!root.isMember("vehicles")) return true;
  const Json::Value& vehicles = root["vehicles"];
  if (!vehicles.isArray()) return r.Fail("vehicles", "expected an array");
  for (Json::ArrayIndex i = 0; i < vehicles.size(); ++i) {
    const std::string where = "vehicles[" + std::to_string(i) + "]";
    const Json::Value& v = vehicles[i];
    if (!v.isObject()) return r.Fail(where, "expected an object");
    std::string name;
    if (!ReadString(r, v, "name", name, where + ".")) return false;
    const Json::Value& list = v.isMember("devices") ? v["devices"] : Json::Value(Json::arrayValue);
    if (!list.isArray()) return r.Fail(where + ".devices", "expected an array");
    std::vector<DeviceRecord> devices(list.size());
    for (Json::ArrayIndex d = 0; d < list.size(); ++d)
      if (!ReadDevice(r, list[d], where + ".devices[" + std::to_string(d) + "]", devices[d])) return false;
    std::string duplicate;
    if (!fleet.AddVehicle(std::move(name), std::move(devices), &duplicate)) return r.Fail(where, duplicate);
  }
  return true;
}

// The alarms a host hands its windows, as the host's alarm records.
bool ReadAlarms(Reader& r, const Json::Value& root, Fleet& fleet) {
  if (!root.isMember("alarms")) return true;
  const Json::Value& alarms = root["alarms"];
  if (!alarms.isArray()) return r.Fail("alarms", "expected an array");
  for (Json::ArrayIndex i = 0; i < alarms.size(); ++i) {
    const std::string where = "alarms[" + std::to_string(i) + "]";
    if (!alarms[i].isObject()) return r.Fail(where, "expected an object");
    std::string error;
    auto record = hostref::MakeAlarmRecord(alarms[i], &error);
    if (!record) return r.Fail(where, error);
    fleet.alarms.push_back(std::move(*record));
  }
  return true;
}

bool ReadFleet(Reader& r, const Json::Value& root, Fleet& fleet) {
  if (!root.isObject()) return r.Fail("fleet", "expected a JSON object");
  if (!ReadString(r, root, "session", fleet.session) || !ReadRights(r, root, fleet) ||
      !ReadBool(r, root, "testIP", fleet.testIP) || !ReadBool(r, root, "checkMode", fleet.checkMode) || !ReadString(r, root, "dirSvrIP", fleet.dirSvrIP) ||
      !ReadBool(r, root, "ver7_21", fleet.ver7_21) || !ReadBool(r, root, "ver7_23", fleet.ver7_23) ||
      !ReadBool(r, root, "ver7_25", fleet.ver7_25) || !ReadBool(r, root, "falseAlarmReason", fleet.falseAlarmReason) ||
      !ReadBool(r, root, "sbUploadAlarm", fleet.sbUploadAlarm))
    return false;
  if (root.isMember("versions") && !ReadIntList(r, root["versions"], "versions", fleet.versions)) return false;
  if (root.isMember("config") &&
      !ReadIntMap(r, root["config"], "config", [&](int id, int value) { fleet.config[id] = value; }))
    return false;
  if (!ReadConfigText(r, root, fleet) || !ReadVehicles(r, root, fleet) || !ReadAlarms(r, root, fleet)) return false;
  // Map markers and lines are kept as given for the map services.
  if (root.isMember("markers")) fleet.markers = root["markers"];
  if (root.isMember("lines")) fleet.lines = root["lines"];
  std::string why;
  if (!ReadMarkers(fleet.markers, fleet, &why)) return r.Fail("markers", why);
  if (!ReadLines(fleet.lines, fleet, &why)) return r.Fail("lines", why);
  return true;
}

// Where and why a text is not JSON: "line L, column C: what" from the reader's first error.
std::string JsonFault(const std::string& json) {
  Json::CharReaderBuilder builder;
  builder["failIfExtra"] = true;
  std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string errors;
  Json::Value ignored;
  try {
    if (reader->parse(json.data(), json.data() + json.size(), &ignored, &errors)) return "not JSON";
  } catch (const std::exception& e) {
    return std::string("not JSON: ") + e.what();
  }
  // The reader writes "* Line 3, Column 5\n  Missing ',' ...\n" for each error.
  int line = 0, column = 0;
  if (std::sscanf(errors.c_str(), "* Line %d, Column %d", &line, &column) != 2) return "not JSON";
  const size_t text = errors.find_first_not_of(" ", errors.find('\n') + 1);
  const std::string what = text == std::string::npos ? "" : errors.substr(text, errors.find('\n', text) - text);
  return "not JSON at line " + std::to_string(line) + ", column " + std::to_string(column) + ": " + what;
}

}  // namespace

std::unique_ptr<Fleet> ParseFleet(const std::string& json, std::string* error) {
  Reader reader;
  auto fleet = std::make_unique<Fleet>();
  Json::Value root;
  try {
    if (!txt::ParseJson(json, root))
      reader.Fail("fleet", JsonFault(json));
    else
      ReadFleet(reader, root, *fleet);
  } catch (const std::exception& e) {
    reader.Fail("fleet", e.what());
  }
  if (reader.Error().empty()) return fleet;
  if (error) *error = reader.Error();
  return nullptr;
}

}  // namespace hostcore_detail
