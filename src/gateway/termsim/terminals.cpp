#include "gateway/termsim/terminals.h"

#include <array>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <unordered_map>

#include <asio.hpp>

#include "gateway/log.h"
#include "gateway/terminal_messages.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/wire.h"
#include "jt808/frame.h"

namespace gw::termsim {
namespace {
using asio::awaitable;
using asio::use_awaitable;
using asio::ip::tcp;
using jt808::Bytes;
using jt808::ByteView;
using jt808::Edition;
using jt808::Frame;

constexpr size_t kReadBuffer = 4096;
constexpr const char* kWhere = "termsim";
constexpr const char* kMaker = "FCSIM";
constexpr const char* kModel = "fleetcmd-termsim";

class Terminal;
}  // namespace

struct Terminals::Impl {
  explicit Impl(Options o) : options(std::move(o)) {}

  Options options;
  asio::io_context io{1};
  std::thread thread;
  bool stopping = false;  // on the connections' thread
  std::unordered_map<std::string, std::shared_ptr<Terminal>> terminals;

  // A device's terminal: a device whose edition changes gets a new
  // terminal (a new generation), and the older one's news no longer counts.
  struct Entry {
    bool online = false;
    uint64_t generation = 0;
    Edition edition = Edition::k2013;
  };
  mutable std::mutex mutex;  // guards stats and the entries below
  mutable std::condition_variable changed;
  Stats stats;
  std::unordered_map<std::string, Entry> entries;

  template <class F>
  void Count(F&& change) {
    {
      std::lock_guard lock(mutex);
      change(stats);
    }
    changed.notify_all();
  }
  void SetOnline(const std::string& devIdno, uint64_t generation, bool on) {
    {
      std::lock_guard lock(mutex);
      Entry& entry = entries[devIdno];
      if (entry.generation != generation || entry.online == on) return;
      entry.online = on;
      on ? ++stats.online : --stats.online;
    }
    changed.notify_all();
  }
};

namespace {

void Spawn(asio::io_context& io, awaitable<void> body, const char* what) {
  asio::co_spawn(io, std::move(body), [what](std::exception_ptr failure) {
    if (!failure) return;
    try {
      std::rethrow_exception(failure);
    } catch (const std::exception& e) {
      Log(LogLevel::Error, kWhere, std::string(what) + ": " + e.what());
    }
  });
}

// One device's terminal: connects, registers, authenticates, answers; again
// after a pause when the connection ends.
class Terminal : public std::enable_shared_from_this<Terminal> {
 public:
  Terminal(Terminals::Impl& sim, std::string devIdno, std::string phone, Edition edition, uint64_t generation)
      : sim_(sim), devIdno_(std::move(devIdno)), phone_(std::move(phone)), edition_(edition),
        generation_(generation), socket_(sim.io), timer_(sim.io) {}

  void Start() { Spawn(sim_.io, Live(shared_from_this()), "terminal"); }

  // Ends the terminal for good (its device has a new one).
  void Retire() {
    retired_ = true;
    Close();
  }

  void Close() {
    std::error_code ignored;
    socket_.shutdown(tcp::socket::shutdown_both, ignored);
    socket_.close(ignored);
    timer_.cancel();
  }

 private:
  enum class Stage { Registering, Authenticating, Online };

  awaitable<void> Live([[maybe_unused]] std::shared_ptr<Terminal> self) {
    const auto endpoint = tcp::endpoint(asio::ip::make_address(sim_.options.host), sim_.options.port);
    while (!sim_.stopping && !retired_) {
      std::error_code ec;
      socket_ = tcp::socket(sim_.io);
      co_await socket_.async_connect(endpoint, asio::redirect_error(use_awaitable, ec));
      if (!ec && !sim_.stopping) {
        socket_.set_option(tcp::no_delay(true), ec);
        sim_.Count([](Stats& s) { ++s.connects; });
        co_await Converse();
      }
      sim_.SetOnline(devIdno_, generation_, false);
      if (sim_.stopping || retired_) break;
      timer_.expires_after(sim_.options.retry);
      co_await timer_.async_wait(asio::redirect_error(use_awaitable, ec));
    }
  }

  // One connection, from registration until it ends.
  awaitable<void> Converse() {
    stage_ = Stage::Registering;
    jt808::FrameReader reader;
    jt808::Reassembler whole;
    const uint64_t connection = ++connection_;
    Register();
    std::array<uint8_t, kReadBuffer> buffer;
    Spawn(sim_.io, Beat(shared_from_this(), connection), "heartbeat");
    for (;;) {
      std::error_code ec;
      const size_t n = co_await socket_.async_read_some(asio::buffer(buffer), asio::redirect_error(use_awaitable, ec));
      if (ec || sim_.stopping) break;
      reader.Feed(ByteView(buffer.data(), n));
      while (auto frame = reader.Next()) {
        sim_.Count([](Stats& s) { ++s.framesIn; });
        if (auto message = whole.Add(std::move(*frame))) Handle(*message);
      }
    }
    ++connection_;  // ends this connection's heartbeats and writes
    outbox_.clear();
    std::error_code ignored;
    socket_.close(ignored);
  }

  awaitable<void> Beat([[maybe_unused]] std::shared_ptr<Terminal> self, uint64_t connection) {
    asio::steady_timer beat(sim_.io);
    while (!sim_.stopping && connection == connection_) {
      beat.expires_after(sim_.options.heartbeat);
      std::error_code ec;
      co_await beat.async_wait(asio::redirect_error(use_awaitable, ec));
      if (ec || sim_.stopping || connection != connection_) break;
      if (stage_ == Stage::Online) {
        Send(kHeartbeat, {});
        sim_.Count([](Stats& s) { ++s.heartbeats; });
      }
    }
  }

  void Register() {
    Registration registration;
    registration.maker = kMaker;
    registration.model = kModel;
    registration.terminalId = phone_.substr(phone_.size() > 7 ? phone_.size() - 7 : 0);
    registration.plate = devIdno_;
    registerSerial_ = Send(kRegister, EncodeRegistration(registration, edition_));
  }

  void Handle(const Frame& frame) {
    const jt808::Header& h = frame.header;
    try {
      if (h.id == kRegisterAnswer) {
        const RegisterResult result = DecodeRegisterResult(frame.body);
        if (result.serial != registerSerial_) return;
        if (result.result != kRegisterOk) {
          Log(LogLevel::Warn, kWhere, "terminal " + devIdno_ + " not registered: " + std::to_string(result.result));
          return Close();
        }
        stage_ = Stage::Authenticating;
        Authentication authentication;
        authentication.code = result.code;
        authentication.imei = "86" + phone_;
        authentication.software = kModel;
        authSerial_ = Send(kAuthenticate, EncodeAuthentication(authentication, edition_));
        return;
      }
      if (h.id == jt808::kPlatformGeneralReply) {
        const GeneralAnswer answer = DecodeGeneralAnswer(frame.body);
        if (answer.message != kAuthenticate || answer.serial != authSerial_) return;
        if (answer.result != jt808::kResultOk) {
          Log(LogLevel::Warn, kWhere, "terminal " + devIdno_ + " not authenticated; registering again");
          stage_ = Stage::Registering;
          return Register();
        }
        stage_ = Stage::Online;
        sim_.SetOnline(devIdno_, generation_, true);
        return;
      }
      if (h.id == kMediaDataAnswer) return;
    } catch (const jt808::BodyError& e) {
      Log(LogLevel::Warn, kWhere, "terminal " + devIdno_ + ": unreadable platform message: " + e.what());
      return;
    }
    // A command: the simulated terminal's answer.
    const jt808::Message answer = hostref::wire::TerminalAnswer(devIdno_, frame);
    Send(answer.id, answer.body);
    sim_.Count([](Stats& s) { ++s.commands; });
  }

  uint16_t Send(uint16_t id, ByteView body) {
    const jt808::Header header = jt808::MessageHeader(id, edition_, phone_, serial_);
    std::vector<Bytes> frames;
    try {
      frames = jt808::EncodeMessage(header, body);
    } catch (const jt808::BodyError& e) {
      Log(LogLevel::Warn, kWhere, "terminal " + devIdno_ + ": message not sent: " + e.what());
      return serial_;
    }
    const uint16_t first = serial_;
    serial_ = static_cast<uint16_t>(serial_ + frames.size());
    sim_.Count([&](Stats& s) { s.framesOut += frames.size(); });
    for (Bytes& frame : frames) outbox_.push_back(std::move(frame));
    if (!writing_) {
      writing_ = true;
      Spawn(sim_.io, Write(shared_from_this()), "terminal write");
    }
    return first;
  }

  // Writes the frames of the connection it started on; frames of a later
  // connection get a writer of their own.
  awaitable<void> Write([[maybe_unused]] std::shared_ptr<Terminal> self) {
    const uint64_t connection = connection_;
    while (!outbox_.empty() && connection == connection_) {
      const Bytes frame = std::move(outbox_.front());
      outbox_.pop_front();
      std::error_code ec;
      co_await asio::async_write(socket_, asio::buffer(frame), asio::redirect_error(use_awaitable, ec));
      if (ec) break;
    }
    writing_ = false;
    if (!outbox_.empty() && connection != connection_) {
      writing_ = true;
      Spawn(sim_.io, Write(shared_from_this()), "terminal write");
    }
  }

  Terminals::Impl& sim_;
  std::string devIdno_;
  std::string phone_;
  Edition edition_;
  uint64_t generation_;
  bool retired_ = false;
  tcp::socket socket_;
  asio::steady_timer timer_;
  Stage stage_ = Stage::Registering;
  uint16_t serial_ = 0;
  uint16_t registerSerial_ = 0;
  uint16_t authSerial_ = 0;
  uint64_t connection_ = 0;
  std::deque<Bytes> outbox_;
  bool writing_ = false;
};

}  // namespace

std::vector<std::string> FleetDevices() {
  std::vector<std::string> numbers;
  for (int id : hostref::DeviceIds()) {
    const char* idno = CVehicleBaseMgr::FindDvsDeviceByID(id).GetDevIDNOForChar();
    if (idno && *idno) numbers.emplace_back(idno);
  }
  return numbers;
}

Terminals::Terminals(Options options) : impl_(std::make_unique<Impl>(std::move(options))) {}

Terminals::~Terminals() { Stop(); }

void Terminals::Run(bool handleSignals) {
  Impl& t = *impl_;
  asio::signal_set signals(t.io);
  if (handleSignals) {
    signals.add(SIGINT);
    signals.add(SIGTERM);
    signals.async_wait([&](std::error_code ec, int) {
      if (!ec) t.io.stop();
    });
  }
  auto work = asio::make_work_guard(t.io);
  t.io.run();
}

void Terminals::Start() {
  impl_->thread = std::thread([this] { Run(false); });
}

void Terminals::Stop() {
  Impl& t = *impl_;
  if (!t.io.stopped()) {
    asio::post(t.io, [&t] {
      t.stopping = true;
      for (auto& [devIdno, terminal] : t.terminals) terminal->Close();
      t.io.stop();
    });
  }
  if (t.thread.joinable()) t.thread.join();
}

bool Terminals::Add(const std::string& devIdno) { return Add(devIdno, hostref::wire::EditionOf(devIdno)); }

bool Terminals::Add(const std::string& devIdno, Edition edition) {
  const std::optional<std::string> phone = hostref::wire::PhoneOf(devIdno, edition);
  if (!phone) return false;
  Impl& t = *impl_;
  uint64_t generation;
  {
    std::lock_guard lock(t.mutex);
    auto [it, fresh] = t.entries.try_emplace(devIdno);
    Impl::Entry& entry = it->second;
    if (!fresh && entry.edition == edition) return true;
    if (fresh) ++t.stats.terminals;
    if (entry.online) --t.stats.online;
    entry.online = false;
    entry.edition = edition;
    generation = ++entry.generation;
  }
  asio::post(t.io, [&t, devIdno, phone = *phone, edition, generation] {
    auto terminal = std::make_shared<Terminal>(t, devIdno, phone, edition, generation);
    auto [it, fresh] = t.terminals.try_emplace(devIdno, terminal);
    if (!fresh) {
      it->second->Retire();
      it->second = terminal;
    }
    if (!t.stopping) terminal->Start();
  });
  return true;
}

bool Terminals::Online(const std::string& devIdno) const {
  std::lock_guard lock(impl_->mutex);
  auto it = impl_->entries.find(devIdno);
  return it != impl_->entries.end() && it->second.online;
}

bool Terminals::WaitOnline(const std::string& devIdno, std::chrono::milliseconds limit) const {
  std::unique_lock lock(impl_->mutex);
  return impl_->changed.wait_for(lock, limit, [&] {
    auto it = impl_->entries.find(devIdno);
    return it != impl_->entries.end() && it->second.online;
  });
}

Stats Terminals::Count() const {
  std::lock_guard lock(impl_->mutex);
  return impl_->stats;
}

bool Terminals::WaitUntil(const std::function<bool(const Stats&)>& done, std::chrono::milliseconds limit) const {
  std::unique_lock lock(impl_->mutex);
  return impl_->changed.wait_for(lock, limit, [&] { return done(impl_->stats); });
}

}  // namespace gw::termsim
