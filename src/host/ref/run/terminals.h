// Simulated terminals: each device of the fleet answers the commands the
// plug-in sends the way a JT/T 808 terminal would, and remembers what it got.
// Answers are deterministic: the same requests give the same replies.
//
// One responder per command number, registered beside its family's other
// responders in src/host/ref/run/terminals/<family>.cpp:
//
//   const RegisterResponder kText{0x8300, [](const TerminalRequest& r) -> Answer {
//     if (!r.param.isObject()) return Reply({}, kResultMessageError);
//     g_texts[r.devIdno].push_back(...);
//     return Reply({});
//   }};
//
// Responders run on the network thread with the terminals' lock held, so a
// family's per-device state (DeviceState below) needs no lock of its own; a
// test reading that state takes the lock with Locked().
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <json/value.h>

namespace hostref::terminals {

// One command as a terminal receives it.
struct TerminalRequest {
  const std::string& devIdno;
  int command;
  const Json::Value& param;  // null when the request had no parameter text
  size_t count;              // how many of this command the device got before this one
};
// The reply text, or nullopt for the platform's default answer.
using Answer = std::optional<std::string>;
using Responder = std::function<Answer(const TerminalRequest&)>;

// Registers the responder of a command number (at static initialisation),
// and how long the terminal takes to answer it beyond the network's delay
// (a driver choosing an answer, for example). A command has one responder; a
// second registration is kept aside, unused, and listed by
// DuplicateResponders() so a test can catch it.
struct RegisterResponder {
  RegisterResponder(int command, Responder responder, int answerDelayMs = 0);
};
// The time a command's answer takes at the terminal; 0 for at once.
int AnswerDelayMs(int command);

// Result codes a terminal answers with.
constexpr int kResultOk = 0;
constexpr int kResultFailed = 1;
constexpr int kResultMessageError = 2;
constexpr int kResultUnsupported = 3;

// The reply envelope around an answer's members: "Error" 0 and "result".
std::string Reply(Json::Value body, int result = kResultOk);
// The device speaks the 2019 edition (device attribute 80).
bool Is2019(const std::string& devIdno);
// Undoes the form encoding of a text parameter ("+" and "%XX").
std::string FormDecode(const std::string& text);
// A text parameter as the operator typed it: form-decoded, code page 936 to UTF-8.
std::string TypedText(const Json::Value& param, const char* key);

// The terminals' lock, for reading a family's state outside a responder.
std::unique_lock<std::recursive_mutex> Locked();

// Per-device state of a family, emptied by Clear().
template <class T>
class DeviceState {
 public:
  DeviceState() { OnClear([this] { states_.clear(); }); }
  // Call with the terminals' lock held (inside a responder, or under Locked()).
  T& operator[](const std::string& devIdno) { return states_[devIdno]; }
  const T* Find(const std::string& devIdno) const {
    auto it = states_.find(devIdno);
    return it == states_.end() ? nullptr : &it->second;
  }

 private:
  static void OnClear(std::function<void()> clear);
  std::map<std::string, T> states_;
};
void AddClearHook(std::function<void()> clear);
template <class T>
void DeviceState<T>::OnClear(std::function<void()> clear) {
  AddClearHook(std::move(clear));
}

std::vector<int> DuplicateResponders();

// The answer of a device's terminal to one command with its parameter object
// (null when the request had none), as the platform's requests reach it.
Answer Respond(const std::string& devIdno, int command, const Json::Value& param);

// Makes the simulated platform answer through the terminals.
void Install();
void Uninstall();
// Forgets what every terminal got.
void Clear();

size_t QueryCount(const std::string& devIdno, int command);

// What the text message family keeps.
struct ReceivedText {
  int flag = 0;
  int textType = 0;
  std::string text;  // UTF-8, as the operator typed it
};
std::vector<ReceivedText> Texts(const std::string& devIdno);

// What the areas family keeps: a device's stored areas of one kind (the set
// command's number: 0x8600 circles, 0x8602 rectangles, 0x8604 polygons, 0x8606 routes), by
// id, each as the set command's item carried it.
std::map<uint32_t, Json::Value> StoredAreas(const std::string& devIdno, int setCommand);

// What the alarm family keeps: the manual confirmations, oldest first.
struct AlarmConfirmation {
  int serial = 0;      // 0: every alarm of the types
  uint32_t types = 0;  // alarm type bits
};
std::vector<AlarmConfirmation> AlarmConfirmations(const std::string& devIdno);

// What the regional family keeps: transparent data by sub-type, the IC card
// blacklist, and the last inspection setting.
struct TransparentData {
  int subType = 0;  // "SCTYPE"
  int id = -1;      // "SCID", -1 when absent
  int operation = -1;
  std::string note;  // "SCNOTE" as typed
};
std::vector<TransparentData> TransparentDataOf(const std::string& devIdno);
// The answer to the provincial form of the transparent data command.
Answer ProvincialTransparentData(const TerminalRequest& request);
std::vector<std::string> Blacklist(const std::string& devIdno);
struct InspectionState {
  int type = -1;  // the last inspection type set, -1 when none
  int identityRequests = 0;
};
InspectionState Inspection(const std::string& devIdno);

}  // namespace hostref::terminals
