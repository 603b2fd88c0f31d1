#include "host_world.h"

#include <algorithm>
#include <cstring>
#include <fstream>

#include "host/hostcore.h"
#include "host/hostnet.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "host/ref/run/wire.h"
#include "lang/file_limit.h"
#include "output.h"
#include "platform/controls.h"
#include "platform/loop.h"
#include "platform/menu.h"
#include "text/encoding.h"

namespace {
constexpr RECT kMainRect{0, 0, 1280, 960};
constexpr SYSTEMTIME kFixedTime{2026, 1, 4, 15, 9, 30, 0, 0};
constexpr UINT kFirstHostMessage = 1000;
// Before and after each alarm a page handles: the alarm's record and the answer (0 before it).
constexpr UINT kAlarmHandled = 13318;
// The handling log entry of a run.
constexpr UINT kHandlingLogged = 13319;
constexpr size_t kRecordGuid = 32, kRecordGuidBytes = 40;
constexpr UINT kPointQueryAnswer = 13339;

HostWorld* g_world = nullptr;

void CALLBACK OnPointQuery(int32_t result, void* request, uintptr_t) {
  // The record starts with the device number.
  out::Line("CALLBACK " + std::to_string(result) + " " + static_cast<const char*>(request));
}

void CALLBACK OnShown(uintptr_t, int32_t*) {}

// Opens, and ends within the language file's limit (read no further than it).
bool Readable(const std::string& file) { return std::ifstream(file).good() && lang::LanguageFileFits(file); }

// The picker's parameter record: its non-zero words, then both lists of attribute codes.
std::string PickerLine(const std::vector<uint8_t>& param) {
  constexpr size_t kFirstList = 152, kSecondList = 200, kListsEnd = 236;
  const auto word = [&](size_t at) {
    int32_t value = 0;
    if (at + 4 <= param.size()) std::memcpy(&value, param.data() + at, 4);
    return value;
  };
  const auto list = [&](size_t from, size_t to) {
    std::string codes;
    for (size_t at = from; at < to && word(at) != 0; at += 4) codes += (codes.empty() ? "" : ",") + std::to_string(word(at));
    return codes;
  };
  std::string line = "PICKER";
  for (size_t at = 0; at + 4 <= param.size(); at += 4) {
    if ((at < kFirstList || at >= kListsEnd) && word(at) != 0) line += " " + std::to_string(at) + "=" + std::to_string(word(at));
  }
  return line + " first=" + list(kFirstList, kSecondList) + " second=" + list(kSecondList, kListsEnd);
}

// A request of the alarm service: device, kind, the record's size and the texts it holds,
// in order, joined by "|": the handling text, the alarm's identifier, device numbers, codes.
// A text is a run of bytes ended by a zero byte with four printable ASCII characters in a
// row somewhere in it: a summary, in which a number whose bytes all happen to be printable
// can show up.
std::string AlarmLine(const hostref::AlarmRequest& request) {
  constexpr size_t kAsciiInARow = 4;
  const auto isText = [](uint8_t byte) { return byte >= 0x20 || byte == '\r' || byte == '\n' || byte == '\t'; };
  const auto isAscii = [](uint8_t byte) { return byte >= 0x20 && byte < 0x7F; };
  std::string texts;
  const auto& record = request.record;
  for (size_t at = 0; at < record.size();) {
    size_t end = at, row = 0, longest = 0;
    for (; end < record.size() && isText(record[end]); ++end) {
      row = isAscii(record[end]) ? row + 1 : 0;
      longest = std::max(longest, row);
    }
    if (longest >= kAsciiInARow && (end == record.size() || record[end] == 0)) {
      texts += (texts.empty() ? "" : "|") + out::EscapeBytes(std::string(record.begin() + at, record.begin() + end));
    }
    at = end + 1;
  }
  return "ALARMREC " + request.devIdno + " " + std::to_string(request.kind) + " " + std::to_string(record.size()) +
         " " + (texts.empty() ? std::string("(none)") : texts);
}

// A new row is drawn at the top of a result list: print it.
void OnRowDrawn(plat::ListView& list, int first, int last) {
  if (first != 0 || last != 0 || list.GetDlgCtrlID() != 4399 || list.GetItemCount() == 0) return;
  std::string line = "ROW ";
  for (int c = 0; c < 8; ++c) line += (c ? "|" : "") + out::EscapeControls(list.GetItemText(0, c));
  out::Line(line);
}
}  // namespace

LRESULT HostMainWindow::WindowProc(UINT msg, WPARAM wParam, LPARAM lParam) {
  if (msg >= kFirstHostMessage || msg == WM_CLOSE) {
    // A point-query answer carries the finished request, which starts with the device number.
    if (msg == kPointQueryAnswer && wParam) {
      out::Line("HOSTMSG " + std::to_string(msg) + " " + reinterpret_cast<const char*>(wParam) + " " +
                std::to_string(lParam));
      return 0;
    }
    // Messages that carry addresses print what they point at, so that a script's lines repeat.
    if (msg == kAlarmHandled && wParam) {
      // The alarm's record (device number, then its identifier) and, after its answer, the answer's result.
      const char* record = reinterpret_cast<const char*>(wParam);
      const std::string alarm = std::string(record, strnlen(record, kRecordGuid)) + "/" +
                                std::string(record + kRecordGuid, strnlen(record + kRecordGuid, kRecordGuidBytes));
      const std::string answer =
          lParam ? "result=" + std::to_string(NETCLIENT_MCMsgResult(reinterpret_cast<const void*>(lParam))) : "0";
      out::Line("HOSTMSG " + std::to_string(msg) + " " + alarm + " " + answer);
      return 0;
    }
    if (msg == kHandlingLogged) {
      out::Line("HOSTMSG " + std::to_string(msg) + " " + (wParam ? "log" : "0") + " " + std::to_string(lParam));
      return 0;
    }
    out::Line("HOSTMSG " + std::to_string(msg) + " " + std::to_string(wParam) + " " + std::to_string(lParam));
    return 0;
  }
  return plat::Window::WindowProc(msg, wParam, lParam);
}

bool HostWorld::Start(const HostOptions& options, std::string* error) {
  g_world = this;
  options_ = options;
  plat::MessageLoop::Instance().SetClock(&clock_);
  if (options.fixedTime) plat::SetFixedLocalTime(kFixedTime);
  if (!options.languageFile.empty() && !Readable(options.languageFile)) {
    if (error) {
      *error = "cannot read the language file " + options.languageFile + ", or it is larger than " +
               std::to_string(lang::kMaxLanguageFileBytes >> 20) + " MiB (give a readable one with --lang)";
    }
    return false;
  }
  if (!hostref::OpenDataDir(options.dataDir)) {
    if (error) *error = "cannot open the store in " + options.dataDir + " (choose a writable directory with --data)";
    return false;
  }
  hostref::LoadDefaultFleet();
  hostref::SetTipSink([](const hostref::Tip& tip) { out::Line("TIP " + out::EscapeControls(tip.text)); });
  hostref::net::Reset();
  if (options.net == NetMode::Loop) {
    hostref::wire::Install();
  } else {
    hostref::terminals::Install();
  }
  if (options.net == NetMode::Gateway) {
    const auto target = gw::HostLink::Parse(options.gateway);
    std::string why;
    if (!target || !gateway_.Start(*target, &why)) {
      if (error) *error = "cannot use the gateway " + options.gateway + ": " + why;
      return false;
    }
  }
  hostref::net::SetHeld(true);
  InstallObservers();
  main_.Create(nullptr, 0, "fleetcmd-host", kMainRect);
  return LoadPlugin(error);
}

void HostWorld::InstallObservers() {
  hostref::net::SetOpenObserver([this](const hostref::SentRequest& request) {
    const auto command = request.envelope.find("\"Command\":");
    const int number = command == std::string::npos ? -1 : std::atoi(request.envelope.c_str() + command + 10);
    char hex[16];
    std::snprintf(hex, sizeof hex, "0x%04X", static_cast<unsigned>(number));
    out::Line("SEND " + request.devIdno + " " + hex + " " + out::EscapeBytes(request.param));
    if (observed_.envelope) out::Line("ENVELOPE " + request.devIdno + " " + out::EscapeBytes(request.envelope));
    // The network's delay, and the time the terminal itself takes (a driver choosing an answer).
    due_[request.handle] = clock_.NowMs() + DelayOf(request.devIdno) + hostref::terminals::AnswerDelayMs(number);
  });
  hostref::net::SetAnswerObserver([this](const hostref::SentRequest& request, int status, const char* reply) {
    if (observed_.answers) {
      out::Line("ANSWER " + request.devIdno + " " + std::to_string(status) + " " +
                (reply ? out::EscapeBytes(reply) : std::string("(none)")));
    }
  });
  hostref::net::SetAlarmObserver([](const hostref::AlarmRequest& request) { out::Line(AlarmLine(request)); });
  hostref::net::SetFaultObserver([](const std::string& devIdno, const char* step) {
    out::Line("FAULT " + devIdno + " " + step);
  });
  hostref::SetLogObserver([this](int level, const std::string& module, const std::string& text) {
    if (observed_.log) out::Line("LOG " + std::to_string(level) + " " + module + ": " + out::EscapeControls(text));
  });
  hostref::SetPickerObserver([this](const std::vector<uint8_t>& param) {
    if (observed_.picker) out::Line(PickerLine(param));
  });
  plat::ListView::SetRedrawObserver(&OnRowDrawn);
  plat::menu::SetObserver([](const std::vector<plat::menu::Entry>& entries) {
    for (const auto& entry : entries) {
      out::Line("MENU " + std::to_string(entry.command) + " \"" + out::EscapeControls(entry.text) + "\" " +
                (entry.enabled ? "enabled" : "disabled"));
    }
  });
}

bool HostWorld::LoadPlugin(std::string* error) {
  if (!api_.Load(options_.pluginPath, error)) {
    if (error) *error += " (name the plug-in with --plugin)";
    return false;
  }
  if (!options_.languageFile.empty()) SetLanguage(options_.languageFile);
  api_.Msg(FLEETCMD_MSG_SHOW_NOTIFY, 0, reinterpret_cast<intptr_t>(&OnShown));
  api_.Msg(FLEETCMD_MSG_POINT_QUERY, reinterpret_cast<intptr_t>(&OnPointQuery), 0);
  return true;
}

bool HostWorld::SetLanguage(const std::string& file) {
  // The plug-in keeps its old texts for a file it cannot read, but the host's would go blank: check first.
  if (!Readable(file)) return false;
  const std::u16string path = txt::Utf8ToUtf16(file);
  api_.SetLangPath(path.c_str());
  options_.languageFile = file;
  return hostref::LoadHostTexts(file);
}

void HostWorld::CloseWindows() {
  for (void* window : vehicleWindows_) api_.DestroyWindow(window);
  vehicleWindows_.clear();
  if (funPage_) api_.DestroyFunWindow();
  funPage_ = nullptr;
  current_ = nullptr;
  currentVehicle_ = nullptr;
}

void HostWorld::Stop() {
  CloseWindows();
  hostref::net::SetHeld(false);
  hostref::net::ReleaseAll();
  hostref::net::WaitIdle();
  plat::MessageLoop::Instance().RunPending();
  gateway_.Stop();
  hostref::net::SetOpenObserver(nullptr);
  hostref::net::SetAnswerObserver(nullptr);
  hostref::net::SetFaultObserver(nullptr);
  hostref::net::SetAlarmObserver(nullptr);
  hostref::SetLogObserver(nullptr);
  hostref::SetPickerObserver(nullptr);
  hostref::SetPickerFallback(nullptr);
  plat::ListView::SetRedrawObserver(nullptr);
  plat::menu::SetObserver(nullptr);
  main_.DestroyWindow();
  plat::MessageLoop::Instance().SetClock(nullptr);
}

bool HostWorld::Restart(std::string* error) {
  CloseWindows();
  Run();
  api_.Unload();
  if (!hostref::OpenDataDir(options_.dataDir)) {
    if (error) *error = "cannot open the store in " + options_.dataDir + " again";
    return false;
  }
  return LoadPlugin(error);
}

std::pair<const char*, int> HostWorld::DestroyCurrent() {
  if (currentVehicle_) {
    void* window = currentVehicle_;
    std::erase(vehicleWindows_, window);
    currentVehicle_ = nullptr;
    current_ = nullptr;
    return {"Dll_DestroyWindow", api_.DestroyWindow(window)};
  }
  if (current_ && current_ == funPage_) {
    funPage_ = nullptr;
    current_ = nullptr;
    return {"Dll_Destroy808FunWindow", api_.DestroyFunWindow()};
  }
  return {nullptr, 0};
}

const std::string& HostWorld::KeepText(std::string text) {
  texts_.push_back(std::make_unique<std::string>(std::move(text)));
  return *texts_.back();
}

const std::u16string& HostWorld::KeepText(std::u16string text) {
  wideTexts_.push_back(std::make_unique<std::u16string>(std::move(text)));
  return *wideTexts_.back();
}

uint64_t HostWorld::DelayOf(const std::string& devIdno) const {
  auto delay = deviceDelayMs_.find(devIdno);
  return static_cast<uint64_t>(delay != deviceDelayMs_.end() ? delay->second : delayMs_);
}

plat::Window* HostWorld::NewestChild(size_t before) const {
  return main_.Children().size() > before ? main_.Children().back() : nullptr;
}

bool HostWorld::OpenFunctionPage(std::string* error) {
  const size_t before = main_.Children().size();
  const auto parent = reinterpret_cast<FLEETCMD_HWND>(main_.GetSafeHwnd());
  if (api_.CreateFunPageWindow(parent) != 0) {
    if (error) *error = "the function page window could not be created";
    return false;
  }
  if (!funPage_) funPage_ = NewestChild(before);
  api_.MoveFunPageWindow();
  current_ = funPage_;
  currentVehicle_ = nullptr;
  return true;
}

bool HostWorld::OpenVehicleWindow(int functionType, std::string* error) {
  const size_t before = main_.Children().size();
  void* window = nullptr;
  if (api_.CreateWindow(reinterpret_cast<FLEETCMD_HWND>(main_.GetSafeHwnd()), &window, functionType) != 0) {
    if (error) *error = "the vehicle function window could not be created";
    return false;
  }
  api_.MoveWindow(window);
  vehicleWindows_.push_back(window);
  currentVehicle_ = window;
  current_ = NewestChild(before);
  return true;
}

void HostWorld::ReleaseDue() {
  for (uint32_t handle : hostref::net::HeldHandles()) {
    auto due = due_.find(handle);
    if (due != due_.end() && due->second > clock_.NowMs()) continue;
    if (due != due_.end()) due_.erase(due);
    hostref::net::Release(handle);
  }
}

std::optional<uint64_t> HostWorld::NextDue() const {
  std::optional<uint64_t> next = plat::MessageLoop::Instance().NextTimerDue();
  for (uint32_t handle : hostref::net::HeldHandles()) {
    auto due = due_.find(handle);
    const uint64_t at = due == due_.end() ? clock_.NowMs() : due->second;
    if (!next || at < *next) next = at;
  }
  return next;
}

bool HostWorld::Run(uint64_t limitMs) {
  auto& loop = plat::MessageLoop::Instance();
  const uint64_t end = clock_.NowMs() + limitMs;
  for (;;) {
    do {
      ReleaseDue();
      loop.RunPending();
    } while (loop.HasPosted());
    const auto next = NextDue();
    if (!next) return true;
    if (*next > end) return false;
    clock_.Set(std::max(*next, clock_.NowMs()));
  }
}

void HostWorld::Advance(uint64_t ms) {
  const uint64_t end = clock_.NowMs() + ms;
  Run(ms);
  clock_.Set(std::max(end, clock_.NowMs()));
  Run(0);
}
