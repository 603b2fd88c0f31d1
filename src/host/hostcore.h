// hostcore: the host's vehicle, configuration, rights, formatting, tip, local
// store and device-picker services, as the plug-in calls them. Every text is
// UTF-8. A deployment swaps the library behind this header for the host's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "platform/wintypes.h"

namespace hostcore_detail {
struct DeviceRecord;
struct VehicleRecord;
}  // namespace hostcore_detail

// One device of the fleet; a default-constructed one is invalid.
class CDevFunc {
 public:
  CDevFunc() = default;
  explicit CDevFunc(const hostcore_detail::DeviceRecord* record) : record_(record) {}
  BOOL IsValid() const { return record_ != nullptr; }
  // The device number (IDNO); "" for an invalid device.
  const char* GetDevIDNOForChar() const;
  int GetDevID() const;
  // A numbered device attribute; 0 when the device has none.
  int GetDevInt(int attribute) const;
  // The device's record, as CVehicleFunc::GetDevStr takes it.
  const void* GetData() const { return record_; }

 private:
  const hostcore_detail::DeviceRecord* record_ = nullptr;
};

// One vehicle of the fleet; a default-constructed one is invalid.
class CVehicleFunc {
 public:
  CVehicleFunc() = default;
  CVehicleFunc(const hostcore_detail::VehicleRecord* vehicle, const hostcore_detail::DeviceRecord* device)
      : vehicle_(vehicle), device_(device) {}
  BOOL IsValid() const { return vehicle_ != nullptr; }
  // Attribute of the device the vehicle was found through (its first device otherwise).
  int GetDevInt(int attribute) const;
  // Texts of a device of this vehicle. 28: the vehicle and device text of a result row.
  std::string GetDevStr(int what, const void* deviceData) const;
  // The device of a kind and index; (7, 0) is the device the function tree reads.
  CDevFunc GetDevInfo(int kind, int index) const;
  std::string GetName() const;

 private:
  const hostcore_detail::VehicleRecord* vehicle_ = nullptr;
  const hostcore_detail::DeviceRecord* device_ = nullptr;
};

enum : int { kDevStrVehicleAndDevice = 28 };

class CVehicleBaseMgr {
 public:
  static CVehicleFunc FindVechicleFromDevID(int devId);
  static CDevFunc FindDvsDeviceByID(int devId);
  static CVehicleFunc FindVehicleFromDev(const char* devIdno);
  static CDevFunc FindDvsDeviceByIDNO(const char* devIdno);
};

// The host's configuration, by numeric id (and an index for lists of texts).
class CConfigKestrelINI {
 public:
  static int ReadIniInt(int id, int defaultValue = 0);
  static BOOL WriteIniInt(int id, int value);
  static std::string ReadIniStrEx(int id, int index);
  static BOOL WriteIniStrEx(int id, int index, const std::string& text);
};

class CUserPrivilegeManger {
 public:
  static BOOL IsPrivilege(int right);
};

class CVersionsMgr {
 public:
  static BOOL IsVersions(int version, int sub);
};

namespace plat {
struct ImageList;
}

// The device-state images of the host, for a tree of devices or functions.
class CMgrDevImg {
 public:
  static void InitDevStateImgList(plat::ImageList& images);
};

class CLayoutMgr {
 public:
  static BOOL IsSupportVer7_21();
  static BOOL IsSupportVer7_23();
  static BOOL IsSupportVer7_25();
  // A false-alarm reason may be given when an alarm is handled as a false alarm.
  static BOOL IsSupportFalseAlarmResaon();
};

class CMgrAppInfo {
 public:
  static BOOL IsTestIP();
  static std::string GetDirSvrIP();
};

class FormatStringMgr {
 public:
  // Display name of a function type; flag 0 is the plain name.
  static std::string Format808FunctionType(int functionType, int flag);
  // Display name of a function group; group -1 is the root (flag 808 or 905).
  static std::string Format808FunctionGroup(int group, int flag);
  // Name of a JT/T 905 (taxi) device type; empty for a number without a device.
  static std::string GetTerminalType905(int type);
  // Names of the alarm handling ways, handling report kinds, false-alarm
  // reasons and handling results of the superior platform.
  static std::string FormatAlarmHandleStr(int way);
  static std::string FormatAlarmHandleReportStr(int kind);
  static std::string FormatAlarmFalseReasonStr(int reason);
  static std::string GetHandleResult(int result);
};

// ---- alarms ------------------------------------------------------------------

// One alarm as the host keeps it: 748 bytes, little-endian, read by offset.
// The alarm information part starts at offset 32. Offsets the plug-in reads:
//   0 device id text (32)   32 identifier text (40)   106 platform message id (16-bit)
//   140 time (32-bit)   144 type (16-bit)   148 inquiry flag (byte)   152 information type (32-bit)
//   156 inquiry value (32-bit)   164 alarm text (260)   424 second time (32-bit)   684 second type (16-bit)
struct _GPSVehicleAlarm {
  BYTE bytes[748];
};
static_assert(sizeof(_GPSVehicleAlarm) == 748);

// The host's description of an alarm of the superior platform (supervision, inquiry).
std::string GetJT809AlarmDesc(const _GPSVehicleAlarm* alarm);
// Whether the alarm came from a client that uploads platform alarm codes.
BOOL IsSBUploadAlarmClient(const _GPSVehicleAlarm* alarm);

// One entry of the host's alarm handling log: what was done, how and when.
class CAlarmHandleInfo {
 public:
  virtual ~CAlarmHandleInfo() = default;
  virtual void SetHandleText(const std::string& text) = 0;
  virtual void SetHandleWay(int way) = 0;
  virtual void SetHandleTime(const SYSTEMTIME& time) = 0;
};

// The handling log. An entry made with CreateObject is kept when it is released.
class CAlarmHandleInfoMgr {
 public:
  static CAlarmHandleInfo* CreateObject();
  static void ReleaseObject(CAlarmHandleInfo* info);
};

// label + full-width colon + value.
std::string FormatChineseColon(const std::string& label, const std::string& value);
// Appends item to status with the host's separator (none before the first item).
void AddChineseStringStatus(std::string& status, const std::string& item);
// Appends item to status with the given separator (none before the first item).
void AddStringStatus(std::string& status, const std::string& item, const std::string& separator);
// Formats a text holding one integer placeholder.
std::string FormatStringInt(const std::string& format, int number);
// "YYYY-MM-DD hh:mm:ss".
std::string FormatSystemTime(const SYSTEMTIME& time);
// A number of seconds as "hh:mm:ss" (hours beyond 23 kept).
std::string FormatSecond(int seconds);
// Readable text of a result code (network statuses and terminal error codes).
std::string IDIRErrorString(int code);
// The host's own text of an id (1: its word for a vehicle); "" when it has none.
std::string GetLanguageStr(int id);
// The full-width form of an ASCII character text, for example "!" -> "！".
std::string GetChineseChar(const std::string& ascii);

// Position and alarm texts of the host.
// The degrees of a coordinate given in millionths of a degree: "22.543000".
std::string GetLat(int millionths);
// A speed in km/h with one decimal: "60.5".
std::string FormatSpeedToString(float kmh);
// The short position text of a longitude and a latitude in millionths of a degree.
std::string FormatGPSToStrEx(int longitude, int latitude);
// Whether the host is in check mode, in which the detailed position texts are wanted.
BOOL IsCheckMode();

// The host's JT/T 808 texts, on its one object.
class CMgrJTT {
 public:
  static CMgrJTT& Instance();
  // The names of the alarms set in an alarm flag word, joined by commas; "" when none is set.
  std::string GetAlarmMaskString(uint32_t flags) const;
};

// The host's tip box; returns IDOK.
int ShowMsgTipEx(const std::string& text, const std::string& title, UINT flags);

// The local store of remembered control values, keyed by module name, dialog
// template id and control descriptor. Get returns FALSE when nothing is stored.
class CLocalDatabaseMgr {
 public:
  static BOOL US_GetWndCtrlData(const std::string& module, int templateId, UINT descriptor, std::string& value);
  static BOOL US_SetWndCtrlData(const std::string& module, int templateId, UINT descriptor, const std::string& value);
};

// The device picker's parameter record: 244 bytes, filled by offset.
struct _tagFillTreeParamEx_S {
  BYTE bytes[244];
};
static_assert(sizeof(_tagFillTreeParamEx_S) == 244);

class CDevListDataBase {
 public:
  virtual ~CDevListDataBase() = default;
  virtual void SetMultiSelect(int multi) = 0;
  virtual void SetParam(const _tagFillTreeParamEx_S* param) = 0;
  // Shows the picker modally; 1 when the user confirmed a choice.
  virtual int Start() = 0;
  // The chosen device ids; the array is released with LIBCOMMON_Release.
  virtual void GetMultiVehiID(int** ids, int* count) = 0;
};

CDevListDataBase* CreateDevListObject();
void DeleteDevListObject(CDevListDataBase* object);
void LIBCOMMON_Release(void* memory);

// One of the user's own map markers, laid out as the host lays it out; the
// plug-in only reads it. Coordinates are decimal degree texts, lists
// comma-separated. A marker of shape type kMarkerOutOfLine keeps its lists
// behind the two pointers (the host's 32-bit layout has them at 672 and 676;
// here they are pointer-sized, from 672).
struct _tagGPSMapMarkerEx {
  int32_t nID;             // 0
  int32_t nType;           // 4: shape type
  int32_t nFenceType;      // 8: fence class
  char reserved1[40];
  char szJingDu[256];      // 52: longitude text
  char szWeiDu[256];       // 308: latitude text
  char reserved2[74];
  uint16_t uRadiusLow;     // 638: radius in metres, low half
  uint16_t uMapType;       // 640: map type of the coordinates
  char reserved3[6];
  uint16_t uRadiusHigh;    // 648: radius in metres, high half
  char reserved4[22];
  const char* pJingDu;     // 672: longitude list of an out-of-line marker
  const char* pWeiDu;      // latitude list of an out-of-line marker
};
static_assert(offsetof(_tagGPSMapMarkerEx, nFenceType) == 8 && offsetof(_tagGPSMapMarkerEx, szJingDu) == 52 &&
              offsetof(_tagGPSMapMarkerEx, szWeiDu) == 308 && offsetof(_tagGPSMapMarkerEx, uRadiusLow) == 638 &&
              offsetof(_tagGPSMapMarkerEx, uMapType) == 640 && offsetof(_tagGPSMapMarkerEx, uRadiusHigh) == 648 &&
              offsetof(_tagGPSMapMarkerEx, pJingDu) == 672);

// Marker shape types.
enum : int32_t {
  kMarkerRectangle = 2,
  kMarkerPolygon = 3,
  kMarkerCircle = 10,
  kMarkerOutOfLine = -3,  // a polygon whose lists are held out of line
};

// One of the user's map lines: its width and its points, longitude and
// latitude as decimal degree texts in the line's map type.
struct _tagGPSMapLineEx {
  int32_t nID = 0;
  uint16_t uMapType = 0;
  uint16_t uWidth = 0;  // metres
  std::vector<std::pair<std::string, std::string>> points;
};

// The kind that lists the user's lines (GetAllMyMapMarkerEx).
enum : int32_t { kMapLineKind = -17 };

// The user's own map markers and lines.
class CVMgrMyMapInfomation {
 public:
  // Copies the line into *line; FALSE when there is no such line.
  static BOOL FindMapLine(int id, _tagGPSMapLineEx* line);
  // The ids of the user's objects of a kind (kMapLineKind: lines), released with LIBCOMMON_Release.
  static void GetAllMyMapMarkerEx(int** ids, int* count, int kind);
  // Copies the marker into *marker; FALSE when there is no such marker.
  static BOOL FindMapMarkerEx(int id, _tagGPSMapMarkerEx* marker);
  static std::string GetMarkerName(const _tagGPSMapMarkerEx* marker);
  // The name of a marker, or else of a line, by id.
  static std::string GetMarkerName(int id);
  // The ids of the markers whose shape type is one of types, in the host's
  // order; the array is released with LIBCOMMON_Release.
  static void GetAllMyMapMarkerExFormType(int** ids, int* count, const int* types, int typeCount);
  // The marker's longitude and latitude texts in a map type (-1: GPS).
  static BOOL GetMapJingWeiDu(const _tagGPSMapMarkerEx* marker, std::string& lng, std::string& lat, int mapType);
};

// The coordinate system of a map type.
int MapType2MapGPSType(int mapType);
class CGpsConvert {
 public:
  // Converts a point from a coordinate system to GPS, in place.
  static BOOL Convert(double& lng, double& lat, int gpsType);
};

// The spreadsheet export object, made by the caller for one export. A path set
// before the export is where the file goes; otherwise the export asks the user
// and keeps the chosen path here.
class CExportData {
 public:
  enum : int {
    kMsgNoWriter = 102,  // no spreadsheet writer is available
    kMsgFinished = 103,  // the export is finished (the path follows)
  };
  virtual ~CExportData() = default;
  // The host's text of a message number; "" for an unknown number.
  virtual std::string GetMessageText(int number);
  // Shows a message text to the user (the tip box).
  virtual void ShowMessage(const std::string& text);

  std::string m_strPath;
};
