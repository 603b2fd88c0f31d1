// Event, question, information and phone terminals. Each device keeps its
// event list, information menu and phone book and changes them by the set
// type of the command: 0 delete all, 1 replace, 2 append, 3 modify the items
// it has (unknown ones are ignored), 4 delete the given events. A question is
// answered, once the driver has had time to choose, with one of its answers:
// the choice turns round the answers question by question. Taxi terminals
// (attribute 81, or 117) take the VoIP bit of a call-back and of a contact.
#include "host/ref/run/terminals/events.h"

#include <json/value.h>

#include <algorithm>
#include <iterator>
#include <optional>

#include "host/hostcore.h"
#include "host/ref/run/terminals.h"
#include "text/encoding.h"
#include "text/json.h"

namespace hostref::terminals {
namespace {
constexpr int kSetEvents = 0x8301, kQuestion = 0x8302, kSetInfoMenu = 0x8303, kInfoService = 0x8304,
              kCallBack = 0x8400, kSetPhoneBook = 0x8401;
constexpr int kAttrTaxi = 81, kAttrTaxiPhone = 117;
constexpr int kIdMax = 255;
constexpr int kVoip = 0x80, kListen = 1, kBothDirections = 3;
// A question's answer comes once the driver has read it and chosen.
constexpr int kDriverAnswerMs = 200;

enum SetType { kDeleteAll = 0, kReplace = 1, kAppend = 2, kModify = 3, kDeleteGiven = 4 };

struct PhoneState {
  std::map<int, std::string> events;
  std::map<int, std::string> menu;
  std::vector<Contact> contacts;
  std::vector<PlacedCall> calls;
  std::vector<ReceivedInfo> infos;
  std::vector<AskedQuestion> questions;
};
DeviceState<PhoneState> g_state;

bool SpeaksTaxiForms(const std::string& idno) {
  const CDevFunc device = CVehicleBaseMgr::FindDvsDeviceByIDNO(idno.c_str());
  return device.GetDevInt(kAttrTaxi) != 0 || device.GetDevInt(kAttrTaxiPhone) != 0;
}

std::optional<int> IntIn(const Json::Value& object, const char* key, int min, int max) {
  if (!object.isObject() || !object.isMember(key)) return std::nullopt;
  const auto value = txt::JsonToInt(object[key]);
  if (!value || *value < min || *value > max) return std::nullopt;
  return static_cast<int>(*value);
}

// The items of a list key: absent is none, anything but an array of objects is malformed.
std::optional<std::vector<Json::Value>> Items(const Json::Value& param, const char* key) {
  std::vector<Json::Value> items;
  if (!param.isMember(key)) return items;
  if (!param[key].isArray()) return std::nullopt;
  for (const Json::Value& item : param[key]) {
    if (!item.isObject()) return std::nullopt;
    items.push_back(item);
  }
  return items;
}

// An event list or the information menu changed by "SETP" and "EVIT".
Answer SetTexts(const TerminalRequest& r, std::map<int, std::string> PhoneState::*list, const char* idKey,
                int lastType, const char* countKey) {
  const auto type = IntIn(r.param, "SETP", kDeleteAll, lastType);
  const auto items = r.param.isObject() ? Items(r.param, "EVIT") : std::nullopt;
  if (!type || !items) return Reply({}, kResultMessageError);
  if (countKey && txt::JsonMemberInt(r.param, countKey, -1) != static_cast<int>(items->size())) {
    return Reply({}, kResultMessageError);
  }
  std::map<int, std::string> given;
  for (const Json::Value& item : *items) {
    const auto id = IntIn(item, idKey, 0, kIdMax);
    if (!id) return Reply({}, kResultMessageError);
    given[*id] = TypedText(item, "TEXT");
  }
  auto& texts = g_state[r.devIdno].*list;
  switch (*type) {
    case kDeleteAll: texts.clear(); break;
    case kReplace: texts = given; break;
    case kAppend:
      for (const auto& [id, text] : given) texts[id] = text;
      break;
    case kModify:
      for (const auto& [id, text] : given)
        if (auto it = texts.find(id); it != texts.end()) it->second = text;
      break;
    case kDeleteGiven:
      for (const auto& [id, text] : given) texts.erase(id);
      break;
  }
  return Reply({});
}

const RegisterResponder kEvents{kSetEvents, [](const TerminalRequest& r) -> Answer {
  return SetTexts(r, &PhoneState::events, "EVID", kDeleteGiven, "Count");
}};

const RegisterResponder kMenu{kSetInfoMenu, [](const TerminalRequest& r) -> Answer {
  return SetTexts(r, &PhoneState::menu, "INTY", kModify, nullptr);
}};

const RegisterResponder kAsk{kQuestion, [](const TerminalRequest& r) -> Answer {
  const auto flag = IntIn(r.param, "Flag", 0, 0xFF);
  const auto items = r.param.isObject() ? Items(r.param, "ANSL") : std::nullopt;
  if (!flag || !items) return Reply({}, kResultMessageError);
  AskedQuestion question{*flag, TypedText(r.param, "QS"), {}, -1};
  for (const Json::Value& item : *items) {
    const auto id = IntIn(item, "ASR", 0, 0xFF);
    if (!id) return Reply({}, kResultMessageError);
    question.answers[*id] = TypedText(item, "TEXT");
  }
  Json::Value body(Json::objectValue);
  if (!question.answers.empty()) {
    // The driver's choice: the next answer with each question the device gets.
    auto chosen = question.answers.begin();
    std::advance(chosen, static_cast<long>(r.count % question.answers.size()));
    question.answered = chosen->first;
    body["ASR"] = chosen->first;
  }
  g_state[r.devIdno].questions.push_back(std::move(question));
  return Reply(body);
}, kDriverAnswerMs};

const RegisterResponder kInfo{kInfoService, [](const TerminalRequest& r) -> Answer {
  const auto type = IntIn(r.param, "INTY", 0, 0xFF);
  if (!type) return Reply({}, kResultMessageError);
  g_state[r.devIdno].infos.push_back({*type, TypedText(r.param, "TextInfo")});
  return Reply({});
}};

// A flag whose low bits are in [min, max], with bit 7 only for a taxi terminal.
std::optional<int> PhoneFlag(const TerminalRequest& r, const Json::Value& object, int min, int max) {
  const auto flag = IntIn(object, "Flag", 0, 0xFF);
  if (!flag) return std::nullopt;
  const int kind = *flag & ~kVoip;
  if (kind < min || kind > max) return std::nullopt;
  if ((*flag & kVoip) && !SpeaksTaxiForms(r.devIdno)) return std::nullopt;
  return flag;
}

const RegisterResponder kCall{kCallBack, [](const TerminalRequest& r) -> Answer {
  const auto flag = PhoneFlag(r, r.param, 0, kListen);
  const std::string phone = TypedText(r.param, "PHONE");
  if (!flag || phone.empty()) return Reply({}, kResultMessageError);
  g_state[r.devIdno].calls.push_back({*flag, phone});
  return Reply({});
}};

const RegisterResponder kPhoneBook{kSetPhoneBook, [](const TerminalRequest& r) -> Answer {
  const auto type = IntIn(r.param, "SETP", kDeleteAll, kModify);
  const auto items = r.param.isObject() ? Items(r.param, "PHIT") : std::nullopt;
  if (!type || !items) return Reply({}, kResultMessageError);
  std::vector<Contact> given;
  for (const Json::Value& item : *items) {
    const auto flag = PhoneFlag(r, item, 1, kBothDirections);
    Contact contact{flag.value_or(0), txt::GbkToUtf8(txt::JsonMemberString(item, "PHONE")), TypedText(item, "LIMN")};
    if (!flag || contact.name.empty() || contact.phone.empty()) return Reply({}, kResultMessageError);
    given.push_back(std::move(contact));
  }
  auto& contacts = g_state[r.devIdno].contacts;
  const auto byName = [&](const std::string& name) {
    return std::find_if(contacts.begin(), contacts.end(), [&](const Contact& c) { return c.name == name; });
  };
  switch (*type) {
    case kDeleteAll: contacts.clear(); break;
    case kReplace: contacts = given; break;
    case kAppend:
      for (const Contact& contact : given) {
        if (auto it = byName(contact.name); it != contacts.end()) *it = contact;
        else contacts.push_back(contact);
      }
      break;
    case kModify:
      for (const Contact& contact : given)
        if (auto it = byName(contact.name); it != contacts.end()) *it = contact;
      break;
  }
  return Reply({});
}};

template <class T>
T Read(T PhoneState::*member, const std::string& devIdno) {
  auto lock = Locked();
  const PhoneState* state = g_state.Find(devIdno);
  return state ? state->*member : T{};
}
}  // namespace

std::map<int, std::string> EventList(const std::string& devIdno) { return Read(&PhoneState::events, devIdno); }
std::map<int, std::string> InfoMenu(const std::string& devIdno) { return Read(&PhoneState::menu, devIdno); }
std::vector<Contact> PhoneBook(const std::string& devIdno) { return Read(&PhoneState::contacts, devIdno); }
std::vector<PlacedCall> Calls(const std::string& devIdno) { return Read(&PhoneState::calls, devIdno); }
std::vector<ReceivedInfo> InfoReceived(const std::string& devIdno) { return Read(&PhoneState::infos, devIdno); }
std::vector<AskedQuestion> Questions(const std::string& devIdno) { return Read(&PhoneState::questions, devIdno); }

}  // namespace hostref::terminals
