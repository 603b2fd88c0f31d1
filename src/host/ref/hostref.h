// Control surface of the reference host libraries: what a test, the demo or
// the reference host program says about the world the plug-in runs in.
// The plug-in itself never includes this header.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <json/value.h>

namespace hostref {

// ---- hostcore: the world ----------------------------------------------------

// Replaces the fleet model with a JSON text (format in docs/fleet.md);
// false and an explanation in *error when the text is not a fleet.
bool LoadFleet(const std::string& json, std::string* error = nullptr);
// A fleet file larger than kMaxFleetFileBytes is refused unread beyond that.
constexpr size_t kMaxFleetFileBytes = size_t{32} << 20;
bool LoadFleetFile(const std::string& path, std::string* error = nullptr);
// The built-in fleet.
void LoadDefaultFleet();
// Device ids and numbers of the loaded fleet, in fleet order.
std::vector<int> DeviceIds();
// Adds n plain devices numbered from firstIdno, each on a vehicle of its own;
// returns their device ids. For large simulated fleets.
std::vector<int> AddGeneratedDevices(int n, int firstIdno);

void SetPrivilege(int right, bool granted);
void SetVersion(int version, bool on);
void SetTestIP(bool on);
// Check mode (IsCheckMode): the detailed position texts.
void SetCheckMode(bool on);

// Directory of the persisted configuration and local store (SQLite). An empty
// directory keeps both in memory. Opening closes the previous store.
bool OpenDataDir(const std::string& dir);

// Texts of the host's own formatting (function and group names, error texts).
// Loaded from sections "FUNCTION", "GROUP" and "ERROR" of a language file.
bool LoadHostTexts(const std::string& languageFile);
// Texts of the export object's messages (102, 103), from section "EXPORT" of
// a language file: the same file LoadHostTexts reads. Built-in English until then.
bool LoadExportTexts(const std::string& languageFile);

// ---- hostcore: alarms ------------------------------------------------------------

// An alarm record (748 bytes, as the host hands its windows) from a JSON object:
// "devIdno", "guid", "text" (strings), "msgId" (106), "time" (140), "type" (144),
// "flag" (148), "info" (152), "value" (156), "time2" (424), "type2" (684).
// nullopt and *error for a member of the wrong type.
std::optional<std::vector<uint8_t>> MakeAlarmRecord(const Json::Value& alarm, std::string* error = nullptr);
// The fleet's alarms ("alarms" of the fleet), one record each, in order.
std::vector<std::vector<uint8_t>> FleetAlarms();
void SetLayout(bool ver7_21, bool ver7_23, bool ver7_25, bool falseAlarmReason);
void SetSBUploadAlarm(bool on);

// The handling log: every entry released since the store was opened, oldest first.
struct HandleLogEntry {
  std::string text;
  int way = 0;
  std::string time;  // "YYYY-MM-DD hh:mm:ss"
};
std::vector<HandleLogEntry> HandleLog();

// ---- hostcore: what the user sees and does ------------------------------------

struct Tip {
  std::string text;
  std::string title;
  unsigned flags = 0;
};
std::vector<Tip> Tips();
void ClearTips();
void SetTipSink(std::function<void(const Tip&)> sink);

// The answer of the device picker's next Start: device ids, or nullopt to cancel.
// Without an answer the picker cancels.
void SetPickerAnswer(std::optional<std::vector<int>> deviceIds);
// The parameter record given to the last picker.
std::vector<uint8_t> LastPickerParam();
int PickerRuns();
// Called with the parameter record on every run of the picker, before it answers.
void SetPickerObserver(std::function<void(const std::vector<uint8_t>& param)> observer);
// Asked when a run finds no answer given beforehand (the prompt asks the user,
// a desktop program shows the fleet with check boxes): device ids, or nullopt
// when the user cancels; without it such a run cancels. Runs on the thread
// that started the picker, with no lock held.
void SetPickerFallback(std::function<std::optional<std::vector<int>>()> fallback);

// ---- hostlog ------------------------------------------------------------------

// An entry longer than this is cut and ends with " ...[cut, N bytes]".
constexpr size_t kMaxLogEntryBytes = 16384;
// A log file that would grow past this is renamed <module>.log.1 (replacing
// the previous one) and a new one begins.
constexpr size_t kMaxLogFileBytes = size_t{8} << 20;
// Lines logged since the last clear, as "level|module|text"; the newest
// 100,000 and at most 32 MiB of them.
std::vector<std::string> LogLines();
void ClearLog();
// Lines below this level (0 detail, 1 information, 2 error) are dropped
// before they are formatted; 0, the default, keeps every line.
void SetLogLevel(int level);
// Directory for log files; empty keeps lines in memory only.
void SetLogDir(const std::string& dir);
// Called with every line logged, on the thread that logged it, outside the log's lock.
using LogObserver = std::function<void(int level, const std::string& module, const std::string& text)>;
void SetLogObserver(LogObserver observer);

// ---- hostnet: the simulated platform --------------------------------------------

struct SentRequest {
  uint32_t handle = 0;
  std::string devIdno;
  std::string envelope;
  std::string param;
};

// A request of the alarm service: its kind (kMCKind* of hostnet.h), the device
// the record names and the record's bytes as handed in.
struct AlarmRequest {
  uint32_t handle = 0;
  int kind = 0;
  std::string devIdno;
  std::vector<uint8_t> record;
};

namespace net {
// Back to defaults: no held replies, delay 0, every device online, default answers.
// Closes nothing: channels belong to their owners.
void Reset();
void SetSession(const std::string& session);
// Delay before a terminal answers, in milliseconds of real time on the network thread.
void SetDelayMs(int ms);
void SetDeviceDelayMs(const std::string& devIdno, int ms);
// The device answers with this network status (101, 110); with a reply text
// set by SetReply the status comes with that text, otherwise with none.
void SetStatus(const std::string& devIdno, int status);
// The device answers with this reply text.
void SetReply(const std::string& devIdno, const std::string& reply);
// The device's own reply text is forgotten (the responder or default answers again).
void ClearReply(const std::string& devIdno);
// Each answer of the device reaches the callback twice, the second call right
// after the first returned (before the page can have handled the first).
void SetDuplicate(const std::string& devIdno, bool twice);
// Answers computed per request (the simulated terminals); nullopt falls back to the default.
using Responder = std::function<std::optional<std::string>(const SentRequest&)>;
void SetResponder(Responder responder);
// A responder that decides the network status as well (a gateway that finds
// the terminal offline answers 101): status 0 with the reply text, or a
// network status with a text or none. Replaces the responder; nullopt falls
// back to the default like a responder's.
struct ResponderReply {
  int status = 0;
  std::optional<std::string> text;
};
using StatusResponder = std::function<std::optional<ResponderReply>(const SentRequest&)>;
void SetStatusResponder(StatusResponder responder);
// Time the responder's answer takes beyond the device's delay, by request (a
// driver choosing an answer, for example); 0 for none. Not applied to a device
// with its own reply or status, nor to held answers.
using AnswerDelay = std::function<int(const SentRequest&)>;
void SetAnswerDelay(AnswerDelay delay);
// Open or start fails for this device.
void SetFailOpen(const std::string& devIdno, bool fail);
void SetFailStart(const std::string& devIdno, bool fail);

// Held mode: replies wait until released, one at a time, in the order sent.
void SetHeld(bool held);
size_t HeldCount();
// Delivers the oldest held reply on the network thread and returns once its callback returned.
bool ReleaseNext();
size_t ReleaseAll();
// Waits until every started, unheld request has been answered (or its channel stopped).
void WaitIdle();
// True when no unheld answer is waiting or being delivered.
bool Idle();

// Delivers one held answer (by channel handle) like ReleaseNext; false when it is not held.
bool Release(uint32_t handle);
// Handles of the held answers, oldest first.
std::vector<uint32_t> HeldHandles();
// Called on the opening thread with every request opened (the reference host prints them).
void SetOpenObserver(std::function<void(const SentRequest&)> observer);
// Called on the network thread with each answer just before it reaches a channel's callback.
// Called on the opening thread when opening or starting a channel fails by a
// device's rule (SetFailOpen, SetFailStart); step is "open" or "start".
void SetFaultObserver(std::function<void(const std::string& devIdno, const char* step)> observer);
using AnswerObserver = std::function<void(const SentRequest& request, int status, const char* reply)>;
void SetAnswerObserver(AnswerObserver observer);

// Requests opened since the last clear, oldest first: the newest kMaxSentKept
// of them (a channel itself is forgotten once its owner closes it).
constexpr size_t kMaxSentKept = 20000;
std::vector<SentRequest> Sent();
void ClearSent();

// The alarm service's requests (the newest kMaxSentKept): answered like command requests to the device
// the record names (delays, statuses, reply texts, held mode), default success.
// An answer's result is its network status, else "Error"/"result" of its text.
std::vector<AlarmRequest> AlarmRequests();
void ClearAlarmRequests();
// Called on the requesting thread with every alarm request (the reference host prints them).
void SetAlarmObserver(std::function<void(const AlarmRequest&)> observer);
size_t OpenChannels();
}  // namespace net

}  // namespace hostref
