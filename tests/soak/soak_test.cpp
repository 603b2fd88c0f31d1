// A soak in virtual time: the plug-in, loaded as a host loads it, sends to a
// large fleet whose terminals answer after random delays, some offline, some
// with malformed replies, while the operator switches pages, the window goes
// away mid-send and the plug-in is unloaded and loaded again.
//
// Every reply is held by the simulated network and released when the manual
// clock reaches its due time, so thirty seconds of delay cost nothing and a
// run is the same every time (a fixed seed).
//
// Beside it, the bytes a huge reply holds on its way.
//
// FC_SOAK_DEVICES sets the fleet's size (default 10,000; the sanitizer run
// in CI uses a smaller one).
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <mutex>
#include <queue>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "command/result_columns.h"
#include "fleetcmd/fleetcmd.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "platform/clock.h"
#include "platform/controls.h"
#include "platform/loop.h"
#include "support/heap_count.h"
#include "text/encoding.h"

namespace {

constexpr int kDefaultDevices = 10000;
constexpr int kFirstIdno = 700001;
constexpr int kTypeText = 12;         // text message: a set to every picked device
constexpr int kTypeAttributes = 45;   // terminal attributes: a get, answers collected in a text box
constexpr int kTextBox = 4167;
constexpr int kListId = 4399;
constexpr int kButtonSet = 1601, kButtonBatchSet = 1602, kButtonBatchGet = 1603;
constexpr int kStatusOffline = 101;
constexpr uint32_t kMaxDelayMs = 30000;
constexpr uint32_t kSeed = 20261123;
constexpr uint64_t kVirtualLimitMs = 24ull * 3600 * 1000;
constexpr uint64_t kDoneWithinMs = 2000;  // a page's done timer looks every 500 ms

const char* const kMalformed[] = {R"({"Error":)", "not json at all", R"({"Error":"x","result":[1]})", "",
                                  "\xff\xfe\x01", R"([1,2,3])", R"({"Error":0,"result":0}trailing)"};

int Devices() {
  const char* size = std::getenv("FC_SOAK_DEVICES");
  const int n = size ? std::atoi(size) : kDefaultDevices;
  return n > 0 ? n : kDefaultDevices;
}

std::string Idno(int i) { return std::to_string(kFirstIdno + i); }

// The command a request's envelope names.
int CommandOf(const std::string& envelope) {
  const std::string key = "\"Command\":";
  const size_t at = envelope.find(key);
  return at == std::string::npos ? -1 : std::atoi(envelope.c_str() + at + key.size());
}

plat::Window* FindControl(plat::Window& root, int id) {
  for (plat::Window* child : root.Children()) {
    if (child->GetDlgCtrlID() == id && child->IsWindowVisible()) return child;
    if (plat::Window* found = FindControl(*child, id)) return found;
  }
  return nullptr;
}

// The plug-in library, loaded as a host loads it.
class Plugin {
 public:
  Plugin() : handle_(dlopen(FC_PLUGIN_PATH, RTLD_NOW | RTLD_LOCAL)) {}
  ~Plugin() {
    if (handle_) dlclose(handle_);
  }
  bool Loaded() const { return handle_ != nullptr; }
  template <class F>
  F* Get(const char* name) const {
    return reinterpret_cast<F*>(dlsym(handle_, name));
  }

 private:
  void* handle_;
};

// What the network saw, from its observers (network and UI threads).
struct Traffic {
  std::mutex mutex;
  std::map<int, int> answered;  // by command
  std::set<std::string> answeredOffline, answeredMalformed;
  uint32_t lastClosedHandle = 0;  // every handle up to it belongs to a closed window
  int lateAnswers = 0;            // answers to a closed window's request
  int opened = 0;
};

class Soak : public ::testing::Test {
 protected:
  void SetUp() override {
    plat::MessageLoop::Instance().SetClock(&clock_);
    hostref::OpenDataDir("");
    hostref::SetLogDir("");
    hostref::ClearLog();
    hostref::net::Reset();
    hostref::net::ClearSent();
    ASSERT_TRUE(hostref::LoadFleet(R"({"rights":"all","vehicles":[]})"));
    devices_ = hostref::AddGeneratedDevices(Devices(), kFirstIdno);
    ASSERT_EQ(static_cast<int>(devices_.size()), Devices());
    hostref::terminals::Clear();
    hostref::terminals::Install();
    // Every tenth device offline, every twentieth of the rest answers malformed text.
    for (int i = 0; i < static_cast<int>(devices_.size()); ++i) {
      if (i % 10 == 3) {
        hostref::net::SetStatus(Idno(i), kStatusOffline);
        offline_.insert(Idno(i));
      } else if (i % 20 == 7) {
        hostref::net::SetReply(Idno(i), kMalformed[i % std::size(kMalformed)]);
        malformed_.insert(Idno(i));
      }
    }
    hostref::net::SetHeld(true);
    hostref::net::SetOpenObserver([this](const hostref::SentRequest&) {
      std::lock_guard lock(traffic_.mutex);
      ++traffic_.opened;
    });
    hostref::net::SetAnswerObserver([this](const hostref::SentRequest& request, int, const char*) {
      std::lock_guard lock(traffic_.mutex);
      if (request.handle <= traffic_.lastClosedHandle) ++traffic_.lateAnswers;
      ++traffic_.answered[CommandOf(request.envelope)];
      if (offline_.count(request.devIdno)) traffic_.answeredOffline.insert(request.devIdno);
      if (malformed_.count(request.devIdno)) traffic_.answeredMalformed.insert(request.devIdno);
    });
    language_ = testing::TempDir() + "soak-lang.ini";
    std::ofstream(language_) << "[STRING]\n11008=ok\n";
    ASSERT_TRUE(host_.Create(nullptr, 0, "host", RECT{0, 0, 1200, 900}));
  }

  void TearDown() override {
    hostref::net::SetOpenObserver(nullptr);
    hostref::net::SetAnswerObserver(nullptr);
    hostref::net::SetHeld(false);
    hostref::net::ReleaseAll();
    hostref::net::Reset();
    hostref::net::ClearSent();
    hostref::terminals::Uninstall();
    hostref::ClearLog();
    plat::MessageLoop::Instance().RunPending();
    plat::MessageLoop::Instance().SetClock(nullptr);
  }

  // Loads the plug-in and opens the function page window in the host.
  void Load() {
    plugin_ = std::make_unique<Plugin>();
    ASSERT_TRUE(plugin_->Loaded()) << dlerror();
    const std::u16string path = txt::Utf8ToUtf16(language_);
    plugin_->Get<decltype(Dll_SetLangPath)>("Dll_SetLangPath")(path.c_str());
    ASSERT_EQ(plugin_->Get<decltype(Dll_Create808FunPageWindow)>("Dll_Create808FunPageWindow")(
                  reinterpret_cast<FLEETCMD_HWND>(host_.GetSafeHwnd())),
              0);
  }

  // Closes the window (its requests outstanding or not) and unloads the plug-in.
  void Unload() {
    {
      std::lock_guard lock(traffic_.mutex);
      traffic_.lastClosedHandle = UINT32_MAX;  // no answer may reach the closing window
    }
    EXPECT_EQ(plugin_->Get<decltype(Dll_Destroy808FunWindow)>("Dll_Destroy808FunWindow")(), 0);
    plat::MessageLoop::Instance().RunPending();
    EXPECT_EQ(hostref::net::OpenChannels(), 0u) << "every channel of the window is closed";
    EXPECT_EQ(hostref::net::HeldCount(), 0u) << "no answer waits for a closed channel";
    plugin_.reset();
    std::lock_guard lock(traffic_.mutex);
    traffic_.lastClosedHandle = LastHandle();
  }

  static uint32_t LastHandle() {
    const auto sent = hostref::net::Sent();
    return sent.empty() ? 0 : sent.back().handle;
  }

  void Show(int type) { plugin_->Get<decltype(DLL_808FunPageParam)>("DLL_808FunPageParam")(type, devices_[0]); }

  bool Click(int id) {
    auto* button = dynamic_cast<plat::Button*>(FindControl(host_, id));
    if (!button || !button->IsWindowEnabled()) return false;
    button->Click();
    return true;
  }
  bool Enabled(int id) {
    plat::Window* control = FindControl(host_, id);
    return control && control->IsWindowEnabled();
  }
  plat::ListView& List() { return *dynamic_cast<plat::ListView*>(FindControl(host_, kListId)); }

  // Rows of the list by function text, and whether any (function, device) pair repeats.
  std::map<std::string, int> RowsByFunction(int* repeated) {
    std::map<std::string, int> rows;
    std::set<std::pair<std::string, std::string>> seen;
    plat::ListView& list = List();
    for (int row = 0; row < list.GetItemCount(); ++row) {
      const std::string function = list.GetItemText(row, kColFunction);
      ++rows[function];
      if (!seen.emplace(function, list.GetItemText(row, kColVehicle)).second) ++*repeated;
    }
    return rows;
  }

  int Answered(int command) {
    std::lock_guard lock(traffic_.mutex);
    return traffic_.answered[command];
  }

  // One step of virtual time: gives every newly held answer its due time,
  // moves the clock to the next answer or timer, releases what is due and
  // handles what it posted. False when nothing is left to happen.
  bool Step() {
    auto& loop = plat::MessageLoop::Instance();
    loop.RunPending();
    for (uint32_t handle : hostref::net::HeldHandles()) {
      if (scheduled_.insert(handle).second) due_.push({clock_.NowMs() + delay_(random_), handle});
    }
    std::optional<uint64_t> next = loop.NextTimerDue();
    if (!due_.empty() && (!next || due_.top().first < *next)) next = due_.top().first;
    if (!next) return false;
    if (*next > clock_.NowMs()) clock_.Set(*next);
    while (!due_.empty() && due_.top().first <= clock_.NowMs()) {
      hostref::net::Release(due_.top().second);  // false once its channel was closed
      due_.pop();
    }
    loop.RunPending();
    return true;
  }
  // Steps until the condition holds; false when the world settled first, or
  // a day of virtual time went by.
  template <class F>
  bool RunUntil(F&& condition) {
    const uint64_t limit = clock_.NowMs() + kVirtualLimitMs;
    while (!condition()) {
      if (clock_.NowMs() > limit || !Step()) return condition();
    }
    return true;
  }

  plat::ManualClock clock_{1'000'000};
  plat::Window host_;
  std::unique_ptr<Plugin> plugin_;
  std::string language_;
  std::vector<int> devices_;
  std::set<std::string> offline_, malformed_;
  Traffic traffic_;
  std::mt19937 random_{kSeed};
  std::uniform_int_distribution<uint32_t> delay_{0, kMaxDelayMs};
  using Due = std::pair<uint64_t, uint32_t>;
  std::priority_queue<Due, std::vector<Due>, std::greater<>> due_;
  std::set<uint32_t> scheduled_;
};

TEST_F(Soak, EveryAnswerOneRowThroughSwitchesCloseAndRestart) {
  const int n = static_cast<int>(devices_.size());
  const uint64_t start = clock_.NowMs();
  constexpr int kTextCommand = 0x8300, kAttributeCommand = 0x8107;

  ASSERT_NO_FATAL_FAILURE(Load());
  Show(kTypeText);
  auto* text = dynamic_cast<plat::Edit*>(FindControl(host_, kTextBox));
  ASSERT_NE(text, nullptr) << "the text message page is shown";
  text->UserType("Return to the depot");
  hostref::SetPickerAnswer(devices_);
  ASSERT_TRUE(Click(kButtonBatchSet));

  // A third of the way through, the operator opens the attribute query and sends it to everyone too.
  ASSERT_TRUE(RunUntil([&] { return Answered(kTextCommand) >= n / 3; }));
  EXPECT_FALSE(Enabled(kButtonBatchSet)) << "the sending page's buttons stay off";
  Show(kTypeAttributes);
  hostref::SetPickerAnswer(devices_);
  ASSERT_TRUE(Click(kButtonBatchGet));

  // The hidden text page finishes on its own; back on it, its controls are back.
  ASSERT_TRUE(RunUntil([&] { return Answered(kTextCommand) == n; }));
  const uint64_t doneBy = clock_.NowMs() + kDoneWithinMs;
  ASSERT_TRUE(RunUntil([&] { return clock_.NowMs() >= doneBy; }));
  Show(kTypeText);
  EXPECT_TRUE(Enabled(kButtonSet) && Enabled(kButtonBatchSet) && Enabled(kTextBox));

  // Halfway through the query, the window closes with its requests outstanding.
  Show(kTypeAttributes);
  ASSERT_TRUE(RunUntil([&] { return Answered(kAttributeCommand) >= n / 2; }));
  int repeated = 0;
  auto rows = RowsByFunction(&repeated);
  EXPECT_EQ(repeated, 0) << "no device has two rows of one function";
  ASSERT_EQ(rows.size(), 2u);
  int textRows = 0, attributeRows = 0;
  for (const auto& [function, count] : rows) (count == n ? textRows : attributeRows) = count;
  EXPECT_EQ(textRows, n) << "one row per answered text request";
  EXPECT_EQ(attributeRows, Answered(kAttributeCommand)) << "one row per answered query, none for the rest";
  const int firstRows = textRows + attributeRows;
  ASSERT_NO_FATAL_FAILURE(Unload());

  // Loaded again, a text to a tenth of the fleet, to the end.
  ASSERT_NO_FATAL_FAILURE(Load());
  Show(kTypeText);
  text = dynamic_cast<plat::Edit*>(FindControl(host_, kTextBox));
  ASSERT_NE(text, nullptr);
  text->UserType("Again");
  const std::vector<int> tenth(devices_.begin(), devices_.begin() + std::max(1, n / 10));
  hostref::SetPickerAnswer(tenth);
  const int textBefore = Answered(kTextCommand);
  ASSERT_TRUE(Click(kButtonBatchSet));
  const uint64_t limit = clock_.NowMs() + kVirtualLimitMs;
  EXPECT_FALSE(RunUntil([] { return false; }));
  EXPECT_LT(clock_.NowMs(), limit) << "the world settles";
  EXPECT_EQ(Answered(kTextCommand) - textBefore, static_cast<int>(tenth.size()));
  EXPECT_EQ(List().GetItemCount(), static_cast<int>(tenth.size())) << "the new window's list has the new rows only";
  EXPECT_TRUE(Enabled(kButtonSet) && Enabled(kButtonBatchSet) && Enabled(kTextBox)) << "controls back when done";
  ASSERT_NO_FATAL_FAILURE(Unload());

  std::lock_guard lock(traffic_.mutex);
  EXPECT_EQ(traffic_.lateAnswers, 0) << "no answer reached a closed window";
  EXPECT_GT(traffic_.answeredOffline.size(), 0u);
  EXPECT_GT(traffic_.answeredMalformed.size(), 0u);
  const double virtualSeconds = (clock_.NowMs() - start) / 1000.0;
  std::printf("soak: %d devices, %d requests, %d answered, %d rows, %zu offline and %zu malformed devices answered, "
              "%.0f s of virtual time\n",
              n, traffic_.opened, traffic_.answered[kTextCommand] + traffic_.answered[kAttributeCommand],
              firstRows + static_cast<int>(tenth.size()), traffic_.answeredOffline.size(),
              traffic_.answeredMalformed.size(), virtualSeconds);
}

}  // namespace

namespace {

// A reply of 50 MB: the plug-in keeps one copy for the page, the log a cut
// entry; what operator new holds on its way stays within two reply sizes.
// (The parsed object's strings are jsoncpp's own malloc blocks, not counted.)
TEST_F(Soak, AHugeReplyIsCopiedAtMostTwiceOnItsWay) {
  constexpr size_t kReplyBytes = size_t{50} << 20;
  constexpr double kMostCopies = 2;
  {
    const std::string reply = R"({"Error":0,"result":0,"Text":")" + std::string(kReplyBytes, 'x') + "\"}";
    hostref::net::SetReply(Idno(0), reply);  // the host's own copy, made before the count
  }
  ASSERT_NO_FATAL_FAILURE(Load());
  Show(kTypeText);
  auto* text = dynamic_cast<plat::Edit*>(FindControl(host_, kTextBox));
  ASSERT_NE(text, nullptr);
  text->UserType("hi");
  hostref::SetPickerAnswer(std::vector<int>{devices_[0]});
  const long long before = heapcount::Live();
  heapcount::ResetPeak();
  ASSERT_TRUE(Click(kButtonBatchSet));
  RunUntil([] { return false; });
  const double copies = static_cast<double>(heapcount::Peak() - before) / kReplyBytes;
  EXPECT_EQ(List().GetItemCount(), 1);
  EXPECT_LE(copies, kMostCopies) << "bytes live on the reply's way, in reply sizes";
  std::printf("a reply of %zu MiB: at most %.2f times its size live on its way\n", kReplyBytes >> 20, copies);
  ASSERT_NO_FATAL_FAILURE(Unload());
}

}  // namespace
