#include "gateway/gateway.h"

#include <array>
#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <set>
#include <thread>
#include <unordered_map>
#include <utility>

#include <asio.hpp>

#include "gateway/control_protocol.h"
#include "gateway/log.h"
#include "gateway/mqtt.h"
#include "gateway/request_table.h"
#include "gateway/terminal_messages.h"
#include "jt808/frame.h"
#include "text/json.h"

namespace gw {
namespace {
using asio::awaitable;
using asio::use_awaitable;
using asio::ip::tcp;
using jt808::Bytes;
using jt808::ByteView;
using jt808::Edition;
using jt808::Frame;
using jt808::Message;

constexpr size_t kReadBuffer = 4096;
constexpr auto kInspectWait = std::chrono::seconds(5);
constexpr const char* kWhere = "gateway";

std::string PeerOf(const tcp::socket& socket) {
  std::error_code ec;
  const auto peer = socket.remote_endpoint(ec);
  return ec ? std::string("?") : peer.address().to_string() + ":" + std::to_string(peer.port());
}

// A device number as the phone number of a frame header: decimal digits
// without leading zeros; "" when it is no such number.
std::string PhoneOfDevice(const std::string& devIdno) {
  if (devIdno.empty() || devIdno.size() > 20) return "";
  for (char c : devIdno) {
    if (c < '0' || c > '9') return "";
  }
  const size_t first = devIdno.find_first_not_of('0');
  return first == std::string::npos ? "0" : devIdno.substr(first);
}

int EditionYear(Edition edition) { return edition == Edition::k2019 ? 2019 : 2013; }

// Runs a coroutine to its end; a failure inside it is logged, never thrown.
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

// Messages waiting for one connection's socket, written in order by one
// writer at a time.
template <class Buffer>
struct Outbox {
  std::deque<Buffer> queue;
  bool writing = false;

  // Queues a message; true when no writer runs, so the caller starts one.
  bool Push(Buffer message) {
    queue.push_back(std::move(message));
    return !std::exchange(writing, true);
  }

  // The writer: the queued messages in order, until the queue is empty or the
  // connection closed; a failed write closes the connection.
  template <class Connection>
  awaitable<void> Drain(Connection& connection, tcp::socket& socket, const bool& closed) {
    while (!queue.empty() && !closed) {
      const Buffer out = std::move(queue.front());
      queue.pop_front();
      std::error_code ec;
      co_await asio::async_write(socket, asio::buffer(out), asio::redirect_error(use_awaitable, ec));
      if (ec) {
        connection.Close();
        break;
      }
    }
    writing = false;
  }
};

class Session;
class ControlConnection;

// Who asked: a control connection of this node, or another node on a host's behalf.
struct Asker {
  uint64_t control = 0;
  std::string node;
  uint64_t key = 0;
};

// Where nodes meet at the broker: each terminal's node (retained), and each node's requests and answers.
constexpr std::string_view kTerminalTopic = "fleetcmd/gw/terminal/";
std::string NodeTopic(const std::string& node, const char* what) { return "fleetcmd/gw/node/" + node + "/" + what; }
constexpr const char* kRequests = "request";
constexpr const char* kAnswers = "answer";
constexpr const char* kFrom = "from";
constexpr const char* kKey = "key";
constexpr auto kRouteGrace = std::chrono::seconds(1);  // beyond the answer timeout of the node asked
}  // namespace

struct Gateway::Impl {
  explicit Impl(Config c) : config(std::move(c)) {}

  Config config;
  asio::io_context io{1};
  tcp::acceptor terminalAcceptor{io};
  tcp::acceptor controlAcceptor{io};
  std::thread thread;
  bool stopping = false;

  RequestTable requests;
  std::unordered_map<uint64_t, std::unique_ptr<asio::steady_timer>> timers;  // by request key
  std::set<std::shared_ptr<Session>> sessions;                              // every terminal connection
  std::unordered_map<std::string, std::shared_ptr<Session>> online;        // authenticated, by phone
  std::unordered_map<uint64_t, std::shared_ptr<ControlConnection>> controls;
  uint64_t nextControl = 1;

  // Several nodes: the broker's client, where other nodes' terminals are, and
  // the requests handed to them, by this node's number.
  std::unique_ptr<MqttClient> broker;
  std::unordered_map<std::string, std::string> where;
  struct Routed {
    uint64_t control = 0;
    Json::Value id;
    std::unique_ptr<asio::steady_timer> timer;
  };
  std::unordered_map<uint64_t, Routed> routed;
  uint64_t nextRouted = 1;

  mutable std::mutex countMutex;
  mutable std::condition_variable countChanged;
  Counters counts;

  template <class F>
  void Count(F&& change) {
    {
      std::lock_guard lock(countMutex);
      change(counts);
    }
    countChanged.notify_all();
  }

  awaitable<void> AcceptTerminals();
  awaitable<void> AcceptControls();
  void CloseAll();

  // What sessions and control connections hand over.
  void OnAuthenticated(const std::shared_ptr<Session>& session);
  void OnOffline(const std::shared_ptr<Session>& session);
  void OnClosed(const std::shared_ptr<Session>& session);
  void OnAnswer(const Session& session, const Message& answer);
  void OnControlLine(ControlConnection& from, const std::string& text);
  void OnRequest(const Asker& asker, const control::Request& request);
  void Reply(const Asker& asker, const Json::Value& id, int status, const std::optional<std::string>& reply);
  void Route(const Asker& asker, const control::Request& request, const std::string& node);
  void OnBroker(const std::string& topic, const std::string& payload);
  void Announce(const std::string& phone, bool here);
  void StartBroker();
  void Finish(const Pending& pending, int status, const std::optional<std::string>& reply);
  Json::Value InspectHere(const std::string& op);
};

namespace {

// One terminal's connection: frames in, put together, handled; frames out in order.
// Each coroutine holds the session (self) until it ends.
class Session : public std::enable_shared_from_this<Session> {
 public:
  Session(Gateway::Impl& gw, tcp::socket socket)
      : gw_(gw), socket_(std::move(socket)), silence_(gw.io), peer_(PeerOf(socket_)), heard_(Clock::now()) {}

  void Start() {
    Spawn(gw_.io, Read(shared_from_this()), "terminal session");
    Spawn(gw_.io, Watch(shared_from_this()), "silence watch");
  }

  // Sends a message to the terminal; the serial number of its first frame.
  // Throws jt808::BodyError when the message cannot be framed.
  uint16_t Send(uint16_t id, ByteView body) {
    const jt808::Header header = jt808::MessageHeader(id, edition_, phone_, serial_);
    std::vector<Bytes> frames = jt808::EncodeMessage(header, body);
    const uint16_t first = serial_;
    serial_ = static_cast<uint16_t>(serial_ + frames.size());
    gw_.Count([&](Counters& c) { c.framesOut += frames.size(); });
    bool start = false;
    for (Bytes& frame : frames) start |= outbox_.Push(std::move(frame));
    if (start && !closed_) Spawn(gw_.io, Write(shared_from_this()), "terminal write");
    return first;
  }

  void Close() {
    if (closed_) return;
    closed_ = true;
    silence_.cancel();
    if (authenticated_) {
      authenticated_ = false;
      gw_.OnOffline(shared_from_this());
    }
    gw_.OnClosed(shared_from_this());
    // Last, so that a terminal that sees its connection end finds the
    // gateway's counters and sessions already without it.
    std::error_code ignored;
    socket_.shutdown(tcp::socket::shutdown_both, ignored);
    socket_.close(ignored);
  }

  const std::string& Phone() const { return phone_; }
  Edition EditionOf() const { return edition_; }
  bool Authenticated() const { return authenticated_; }
  const std::string& Peer() const { return peer_; }
  Clock::time_point Heard() const { return heard_; }

 private:
  awaitable<void> Read([[maybe_unused]] std::shared_ptr<Session> self) {
    std::array<uint8_t, kReadBuffer> buffer;
    jt808::FrameReader reader;
    while (!closed_) {
      std::error_code ec;
      const size_t n = co_await socket_.async_read_some(asio::buffer(buffer), asio::redirect_error(use_awaitable, ec));
      if (ec) break;
      heard_ = Clock::now();
      const size_t droppedBefore = reader.Dropped();
      reader.Feed(ByteView(buffer.data(), n));
      if (reader.Dropped() != droppedBefore) {
        gw_.Count([&](Counters& c) { c.framesDropped += reader.Dropped() - droppedBefore; });
      }
      while (auto frame = reader.Next()) {
        gw_.Count([](Counters& c) { ++c.framesIn; });
        if (auto whole = whole_.Add(std::move(*frame))) Handle(*whole);
        if (closed_) break;
      }
    }
    Close();
  }

  awaitable<void> Watch([[maybe_unused]] std::shared_ptr<Session> self) {
    while (!closed_) {
      silence_.expires_at(heard_ + gw_.config.silentTimeout);
      std::error_code ec;
      co_await silence_.async_wait(asio::redirect_error(use_awaitable, ec));
      if (closed_) break;
      if (Clock::now() >= heard_ + gw_.config.silentTimeout) {
        Log(LogLevel::Info, kWhere, "terminal " + Name() + " silent too long, dropped");
        gw_.Count([](Counters& c) { ++c.silentDrops; });
        Close();
      }
    }
  }

  // self keeps the session alive while it writes.
  awaitable<void> Write([[maybe_unused]] std::shared_ptr<Session> self) {
    co_await outbox_.Drain(*this, socket_, closed_);
  }

  std::string Name() const { return (phone_.empty() ? std::string("?") : phone_) + " (" + peer_ + ")"; }

  void Answer(const jt808::Header& to, int result) {
    Send(kPlatformGeneral, EncodeGeneralAnswer({to.serial, to.id, result}));
  }

  void Handle(const Frame& frame) {
    const jt808::Header& h = frame.header;
    if (Logging(LogLevel::Debug)) {
      char id[8];
      std::snprintf(id, sizeof id, "0x%04X", h.id);
      Log(LogLevel::Debug, kWhere, "from " + h.phone + ": " + id + " serial " + std::to_string(h.serial) + " body " +
                                       std::to_string(frame.body.size()) + " bytes");
    }
    if (phone_.empty()) phone_ = h.phone;
    if (h.phone != phone_) {
      // One connection is one terminal: a frame of another phone number is refused.
      Log(LogLevel::Warn, kWhere, "terminal " + Name() + " sent a frame of " + h.phone);
      return;
    }
    edition_ = h.edition;
    try {
      switch (h.id) {
        case kRegister: return Register(frame);
        case kAuthenticate: return Authenticate(frame);
        case kLogout:
          Answer(h, jt808::kResultOk);
          if (authenticated_) {
            authenticated_ = false;
            gw_.OnOffline(shared_from_this());
          }
          return;
        default: break;
      }
      if (!authenticated_) return Answer(h, jt808::kResultFailed);
      const Message message{h.id, frame.body};
      if (h.id == kHeartbeat || h.id == kPosition || h.id == kBatchPositions) return Answer(h, jt808::kResultOk);
      if (h.id == jt808::kGeneralReply || jt808::FindAnswer(h.id)) return gw_.OnAnswer(*this, message);
      if (h.id == kMediaData) {
        // The media data answer: the media id and no packages to send again.
        jt808::Reader r(frame.body);
        Send(kMediaDataAnswer, jt808::Writer().U32(r.U32()).U8(0).Take());
        return;
      }
      Answer(h, jt808::kResultOk);
    } catch (const jt808::BodyError& e) {
      Log(LogLevel::Warn, kWhere, "terminal " + Name() + ": unreadable message: " + e.what());
      Answer(h, jt808::kResultMessageError);
    }
  }

  void Register(const Frame& frame) {
    const Registration registration = DecodeRegistration(frame.body, frame.header.edition);
    const std::string code = gw_.config.auth.CodeFor(phone_);
    Send(kRegisterAnswer, EncodeRegisterResult({frame.header.serial, kRegisterOk, code}));
    gw_.Count([](Counters& c) { ++c.registrations; });
    Log(LogLevel::Info, kWhere,
        "terminal " + Name() + " registered (" + std::to_string(EditionYear(edition_)) + ", plate " +
            registration.plate + ")");
  }

  void Authenticate(const Frame& frame) {
    const Authentication authentication = DecodeAuthentication(frame.body, frame.header.edition);
    if (!gw_.config.auth.Accepts(phone_, authentication.code)) {
      Answer(frame.header, jt808::kResultFailed);
      gw_.Count([](Counters& c) { ++c.authFailures; });
      Log(LogLevel::Warn, kWhere, "terminal " + Name() + " gave a wrong authentication code");
      return;
    }
    Answer(frame.header, jt808::kResultOk);
    if (!authenticated_) {
      authenticated_ = true;
      gw_.OnAuthenticated(shared_from_this());
    }
  }

  static constexpr uint16_t kPlatformGeneral = jt808::kPlatformGeneralReply;

  Gateway::Impl& gw_;
  tcp::socket socket_;
  asio::steady_timer silence_;
  std::string peer_;
  Clock::time_point heard_;
  jt808::Reassembler whole_;
  std::string phone_;
  Edition edition_ = Edition::k2013;
  bool authenticated_ = false;
  bool closed_ = false;
  uint16_t serial_ = 0;
  Outbox<Bytes> outbox_;
};

// One host's connection to the control port: lines in, lines out.
class ControlConnection : public std::enable_shared_from_this<ControlConnection> {
 public:
  ControlConnection(Gateway::Impl& gw, tcp::socket socket, uint64_t number)
      : gw_(gw), socket_(std::move(socket)), number_(number), peer_(PeerOf(socket_)) {}

  void Start() { Spawn(gw_.io, Read(shared_from_this()), "control connection"); }

  void Send(std::string line) {
    if (closed_) return;
    line.push_back('\n');
    if (outbox_.Push(std::move(line))) Spawn(gw_.io, Write(shared_from_this()), "control write");
  }

  void Close() {
    if (closed_) return;
    closed_ = true;
    std::error_code ignored;
    socket_.shutdown(tcp::socket::shutdown_both, ignored);
    socket_.close(ignored);
    gw_.controls.erase(number_);
    gw_.Count([](Counters& c) { --c.controls; });
    Log(LogLevel::Info, kWhere, "control connection " + peer_ + " closed");
  }

  uint64_t Number() const { return number_; }

 private:
  awaitable<void> Read([[maybe_unused]] std::shared_ptr<ControlConnection> self) {
    std::string buffer;
    while (!closed_) {
      std::error_code ec;
      const size_t n = co_await asio::async_read_until(
          socket_, asio::dynamic_buffer(buffer, gw_.config.maxControlLine), '\n',
          asio::redirect_error(use_awaitable, ec));
      if (ec) {
        if (ec == asio::error::not_found) Log(LogLevel::Warn, kWhere, "control line from " + peer_ + " too long");
        break;
      }
      std::string line = buffer.substr(0, n - 1);
      buffer.erase(0, n);
      if (!line.empty() && line.back() == '\r') line.pop_back();
      if (!line.empty()) gw_.OnControlLine(*this, line);
    }
    Close();
  }

  // self keeps the connection alive while it writes.
  awaitable<void> Write([[maybe_unused]] std::shared_ptr<ControlConnection> self) {
    co_await outbox_.Drain(*this, socket_, closed_);
  }

  Gateway::Impl& gw_;
  tcp::socket socket_;
  uint64_t number_;
  std::string peer_;
  Outbox<std::string> outbox_;
  bool closed_ = false;
};

}  // namespace

awaitable<void> Gateway::Impl::AcceptTerminals() {
  while (!stopping) {
    std::error_code ec;
    tcp::socket socket = co_await terminalAcceptor.async_accept(asio::redirect_error(use_awaitable, ec));
    if (ec) {
      if (stopping || ec == asio::error::operation_aborted) break;
      Log(LogLevel::Warn, kWhere, "accepting a terminal: " + ec.message());
      continue;
    }
    socket.set_option(tcp::no_delay(true), ec);
    auto session = std::make_shared<Session>(*this, std::move(socket));
    sessions.insert(session);
    Count([](Counters& c) { ++c.connections, ++c.sessions; });
    Log(LogLevel::Debug, kWhere, "terminal connection from " + session->Peer());
    session->Start();
  }
}

awaitable<void> Gateway::Impl::AcceptControls() {
  while (!stopping) {
    std::error_code ec;
    tcp::socket socket = co_await controlAcceptor.async_accept(asio::redirect_error(use_awaitable, ec));
    if (ec) {
      if (stopping || ec == asio::error::operation_aborted) break;
      Log(LogLevel::Warn, kWhere, "accepting a control connection: " + ec.message());
      continue;
    }
    socket.set_option(tcp::no_delay(true), ec);
    const uint64_t number = nextControl++;
    auto connection = std::make_shared<ControlConnection>(*this, std::move(socket), number);
    controls.emplace(number, connection);
    Count([](Counters& c) { ++c.controls; });
    Log(LogLevel::Info, kWhere, "control connection " + std::to_string(number));
    connection->Start();
  }
}

void Gateway::Impl::OnAuthenticated(const std::shared_ptr<Session>& session) {
  auto [it, fresh] = online.try_emplace(session->Phone(), session);
  if (!fresh && it->second != session) {
    // The terminal connected again: the older connection goes.
    std::shared_ptr<Session> older = it->second;
    it->second = session;
    Log(LogLevel::Info, kWhere, "terminal " + session->Phone() + " connected again from " + session->Peer());
    older->Close();
  }
  Count([](Counters& c) { ++c.authenticated; });
  Log(LogLevel::Info, kWhere, "terminal " + session->Phone() + " authenticated from " + session->Peer());
  Announce(session->Phone(), true);
}

void Gateway::Impl::OnOffline(const std::shared_ptr<Session>& session) {
  auto it = online.find(session->Phone());
  if (it != online.end() && it->second == session) {
    online.erase(it);
    Announce(session->Phone(), false);
  }
  Count([](Counters& c) { --c.authenticated; });
  Log(LogLevel::Info, kWhere, "terminal " + session->Phone() + " offline");
}

void Gateway::Impl::OnClosed(const std::shared_ptr<Session>& session) {
  if (sessions.erase(session) == 0) return;
  Count([](Counters& c) { --c.sessions; });
  Log(LogLevel::Debug, kWhere, "terminal connection " + session->Peer() + " closed");
}

void Gateway::Impl::OnAnswer(const Session& session, const Message& answer) {
  std::optional<Pending> pending = requests.Match(session.Phone(), answer);
  if (!pending) {
    Count([](Counters& c) { ++c.unmatched; });
    Log(LogLevel::Debug, kWhere, "an answer of " + session.Phone() + " settles no request");
    return;
  }
  timers.erase(pending->key);  // cancels its timer
  std::string reply;
  try {
    reply = txt::WriteCompactJson(jt808::DecodeAnswer(answer, pending->Context()));
  } catch (const jt808::BodyError& e) {
    Log(LogLevel::Warn, kWhere, "unreadable answer of " + session.Phone() + ": " + e.what());
    reply = control::UnreadableAnswerReply();
  }
  Count([](Counters& c) { ++c.answered; });
  Finish(*pending, control::kStatusAnswered, reply);
}

void Gateway::Impl::Finish(const Pending& pending, int status, const std::optional<std::string>& reply) {
  Reply({pending.origin, pending.originNode, pending.originKey}, pending.id, status, reply);
}

void Gateway::Impl::Reply(const Asker& asker, const Json::Value& id, int status,
                          const std::optional<std::string>& reply) {
  if (asker.node.empty()) {
    auto it = controls.find(asker.control);
    if (it != controls.end()) it->second->Send(control::AnswerLine(id, status, reply));
    return;
  }
  if (!broker) return;
  Json::Value answer(Json::objectValue);
  answer[kKey] = Json::UInt64(asker.key);
  answer[control::kStatus] = status;
  if (reply) answer[control::kReply] = *reply;
  broker->Publish(NodeTopic(asker.node, kAnswers), txt::WriteCompactJson(answer), false);
}

// The terminal's request goes to its node; the answer comes back on this node's answer topic.
void Gateway::Impl::Route(const Asker& asker, const control::Request& request, const std::string& node) {
  const uint64_t key = nextRouted++;
  Json::Value line;
  txt::ParseJson(control::RequestLine(request), line);
  line[kFrom] = config.node;
  line[kKey] = Json::UInt64(key);
  Routed& waiting = routed[key];
  waiting.control = asker.control;
  waiting.id = request.id;
  waiting.timer = std::make_unique<asio::steady_timer>(io, config.answerTimeout + kRouteGrace);
  waiting.timer->async_wait([this, key](std::error_code ec) {
    if (ec) return;
    auto it = routed.find(key);
    if (it == routed.end()) return;
    const Asker asker{it->second.control, "", 0};
    const Json::Value id = it->second.id;
    routed.erase(it);
    Count([](Counters& c) { ++c.timeouts; });
    Reply(asker, id, control::kStatusTimeout, std::nullopt);
  });
  Count([](Counters& c) { ++c.routed; });
  broker->Publish(NodeTopic(node, kRequests), txt::WriteCompactJson(line), false);
}

void Gateway::Impl::Announce(const std::string& phone, bool here) {
  if (!broker) return;
  // Another node's newer claim is left alone.
  if (!here && where.count(phone)) return;
  broker->Publish(std::string(kTerminalTopic) + phone, here ? config.node : "", true);
}

void Gateway::Impl::OnBroker(const std::string& topic, const std::string& payload) {
  if (topic.starts_with(kTerminalTopic)) {
    const std::string phone = topic.substr(kTerminalTopic.size());
    if (payload.empty() || payload == config.node) {
      where.erase(phone);
    } else {
      where[phone] = payload;
    }
    Count([&](Counters& c) { c.remoteTerminals = where.size(); });
    return;
  }
  Json::Value value;
  if (!txt::ParseJson(payload, value) || !value.isObject()) return;
  if (topic == NodeTopic(config.node, kRequests)) {
    const control::Line line = control::Parse(payload);
    const Asker asker{0, txt::JsonMemberString(value, kFrom), value[kKey].isUInt64() ? value[kKey].asUInt64() : 0};
    if (asker.node.empty()) return;
    if (!line.error.empty()) return Reply(asker, line.request.id, control::kStatusOffline, std::nullopt);
    return OnRequest(asker, line.request);
  }
  if (topic == NodeTopic(config.node, kAnswers)) {
    auto it = routed.find(value[kKey].isUInt64() ? value[kKey].asUInt64() : 0);
    if (it == routed.end()) return;
    const Asker asker{it->second.control, "", 0};
    const Json::Value id = it->second.id;
    routed.erase(it);
    std::optional<std::string> reply;
    if (value[control::kReply].isString()) reply = value[control::kReply].asString();
    Reply(asker, id, txt::JsonMemberInt(value, control::kStatus, control::kStatusTimeout), reply);
  }
}

void Gateway::Impl::StartBroker() {
  broker = std::make_unique<MqttClient>(
      io, config.brokerHost, config.brokerPort, "fleetcmd-gw-" + config.node,
      [this](const std::string& topic, const std::string& payload) { OnBroker(topic, payload); },
      [this] {
        // A new connection tells the broker again which terminals are here.
        for (const auto& [phone, session] : online) Announce(phone, true);
      });
  broker->Start({std::string(kTerminalTopic) + "+", NodeTopic(config.node, kRequests), NodeTopic(config.node, kAnswers)});
}

void Gateway::Impl::OnControlLine(ControlConnection& from, const std::string& text) {
  const control::Line line = control::Parse(text);
  if (!line.error.empty()) return from.Send(control::ErrorLine(line.request.id, line.error));
  if (line.op == control::kOpSend) return OnRequest({from.Number(), "", 0}, line.request);
  Json::Value body = InspectHere(line.op);
  if (body.isNull()) return from.Send(control::ErrorLine(line.request.id, "unknown op " + line.op));
  from.Send(control::InspectLine(line.op, body));
}

void Gateway::Impl::OnRequest(const Asker& asker, const control::Request& request) {
  Count([](Counters& c) { ++c.requests; });
  auto answer = [&](int status, const std::optional<std::string>& reply) { Reply(asker, request.id, status, reply); };
  auto noMessage = [&] {
    Count([](Counters& c) { ++c.noMessage; });
    answer(control::kStatusAnswered, control::NoTerminalMessageReply());
  };
  const std::optional<int> command = control::CommandOf(request.envelope);
  Json::Value param;
  if (!command || (!request.param.empty() && !txt::ParseJson(request.param, param))) return noMessage();
  const jt808::CommandCodec* codec = jt808::FindCommand(*command);
  if (!codec || !codec->encode) return noMessage();

  const std::string phone = PhoneOfDevice(request.dev);
  auto terminal = online.find(phone);
  if (terminal == online.end()) {
    // On another node: that node sends it (a request from another node is never passed on).
    if (broker && asker.node.empty()) {
      auto there = where.find(phone);
      if (there != where.end()) return Route(asker, request, there->second);
    }
    Count([](Counters& c) { ++c.offline; });
    return answer(control::kStatusOffline, std::nullopt);
  }
  Session& session = *terminal->second;
  Pending pending;
  pending.origin = asker.control;
  pending.originNode = asker.node;
  pending.originKey = asker.key;
  pending.id = request.id;
  pending.phone = phone;
  pending.command = *command;
  pending.answer = codec->answer;
  pending.edition = session.EditionOf();
  pending.sent = Clock::now();
  try {
    const Message out = jt808::EncodeCommand(*command, param, pending.edition);
    pending.message = out.id;
    pending.packages = static_cast<uint16_t>(std::max<size_t>(1, (out.body.size() + jt808::kMaxPackageBody - 1) /
                                                                     jt808::kMaxPackageBody));
    pending.serial = session.Send(out.id, out.body);
  } catch (const jt808::BodyError& e) {
    Log(LogLevel::Info, kWhere, "command " + std::to_string(*command) + " to " + phone + " not sent: " + e.what());
    return noMessage();
  }
  const uint64_t key = requests.Add(std::move(pending));
  auto timer = std::make_unique<asio::steady_timer>(io, config.answerTimeout);
  timer->async_wait([this, key](std::error_code ec) {
    if (ec) return;
    timers.erase(key);
    if (auto late = requests.Take(key)) {
      Count([](Counters& c) { ++c.timeouts; });
      Log(LogLevel::Info, kWhere, "no answer of " + late->phone + " to command " + std::to_string(late->command));
      Finish(*late, control::kStatusTimeout, std::nullopt);
    }
  });
  timers[key] = std::move(timer);
}

Json::Value Gateway::Impl::InspectHere(const std::string& op) {
  const auto now = Clock::now();
  auto ms = [&](Clock::time_point since) {
    return static_cast<Json::Int64>(std::chrono::duration_cast<std::chrono::milliseconds>(now - since).count());
  };
  if (op == control::kOpSessions) {
    Json::Value list(Json::arrayValue);
    for (const auto& session : sessions) {
      Json::Value item(Json::objectValue);
      item["dev"] = session->Phone();
      item["edition"] = EditionYear(session->EditionOf());
      item["authenticated"] = session->Authenticated();
      item["peer"] = session->Peer();
      item["idleMs"] = ms(session->Heard());
      list.append(item);
    }
    return list;
  }
  if (op == control::kOpRequests) {
    Json::Value list(Json::arrayValue);
    for (const Pending& pending : requests.List()) {
      Json::Value item(Json::objectValue);
      item["id"] = pending.id;
      item["dev"] = pending.phone;
      item["command"] = pending.command;
      item["message"] = pending.message;
      item["serial"] = pending.serial;
      item["answer"] = pending.answer;
      item["ageMs"] = ms(pending.sent);
      list.append(item);
    }
    return list;
  }
  if (op == control::kOpCounters) {
    std::lock_guard lock(countMutex);
    return counts.ToJson();
  }
  return Json::Value();
}

void Gateway::Impl::CloseAll() {
  stopping = true;
  std::error_code ignored;
  terminalAcceptor.close(ignored);
  controlAcceptor.close(ignored);
  for (auto session : std::set<std::shared_ptr<Session>>(sessions)) session->Close();
  std::vector<std::shared_ptr<ControlConnection>> open;
  for (auto& [number, connection] : controls) open.push_back(connection);
  for (auto& connection : open) connection->Close();
  timers.clear();
  routed.clear();
  if (broker) broker->Close();
}

Json::Value Counters::ToJson() const {
  Json::Value out(Json::objectValue);
  const std::pair<const char*, uint64_t> fields[] = {
      {"connections", connections}, {"sessions", sessions},     {"authenticated", authenticated},
      {"registrations", registrations}, {"authFailures", authFailures}, {"silentDrops", silentDrops},
      {"framesIn", framesIn},       {"framesOut", framesOut},   {"framesDropped", framesDropped},
      {"requests", requests},       {"answered", answered},     {"offline", offline},
      {"timeouts", timeouts},       {"noMessage", noMessage},   {"unmatched", unmatched},
      {"controls", controls},       {"routed", routed},         {"remoteTerminals", remoteTerminals},
  };
  for (const auto& [name, value] : fields) out[name] = static_cast<Json::UInt64>(value);
  return out;
}

Gateway::Gateway(Config config) : impl_(std::make_unique<Impl>(std::move(config))) {}

Gateway::~Gateway() { Stop(); }

bool Gateway::Open(std::string* error) {
  Impl& g = *impl_;
  auto open = [&](tcp::acceptor& acceptor, uint16_t port, const char* what) {
    std::error_code ec;
    const auto address = asio::ip::make_address(g.config.bind, ec);
    if (ec) {
      if (error) *error = "cannot listen on " + g.config.bind + ": not an address";
      return false;
    }
    const tcp::endpoint endpoint(address, port);
    acceptor.open(endpoint.protocol(), ec);
    if (!ec) acceptor.set_option(tcp::acceptor::reuse_address(true), ec);
    if (!ec) acceptor.bind(endpoint, ec);
    if (!ec) acceptor.listen(asio::socket_base::max_listen_connections, ec);
    if (ec) {
      if (error) *error = std::string("cannot open the ") + what + " port " + std::to_string(port) + ": " + ec.message();
      std::error_code ignored;
      acceptor.close(ignored);
      return false;
    }
    return true;
  };
  if (!open(g.terminalAcceptor, g.config.terminalPort, "terminal") ||
      !open(g.controlAcceptor, g.config.controlPort, "control")) {
    return false;
  }
  if (!g.config.brokerHost.empty()) g.StartBroker();
  Spawn(g.io, g.AcceptTerminals(), "terminal port");
  Spawn(g.io, g.AcceptControls(), "control port");
  Log(LogLevel::Info, kWhere,
      "terminal port " + std::to_string(TerminalPort()) + ", control port " + std::to_string(ControlPort()) + " on " +
          g.config.bind);
  return true;
}

void Gateway::Run(bool handleSignals) {
  Impl& g = *impl_;
  asio::signal_set signals(g.io);
  if (handleSignals) {
    signals.add(SIGINT);
    signals.add(SIGTERM);
    signals.async_wait([&](std::error_code ec, int) {
      if (ec) return;
      Log(LogLevel::Info, kWhere, "stopping");
      g.CloseAll();
      g.io.stop();
    });
  }
  auto work = asio::make_work_guard(g.io);
  g.io.run();
}

void Gateway::Start() {
  impl_->thread = std::thread([this] { Run(false); });
}

void Gateway::Stop() {
  Impl& g = *impl_;
  if (!g.io.stopped()) {
    asio::post(g.io, [&g] {
      g.CloseAll();
      g.io.stop();
    });
  }
  if (g.thread.joinable()) g.thread.join();
}

uint16_t Gateway::TerminalPort() const {
  std::error_code ec;
  const auto endpoint = impl_->terminalAcceptor.local_endpoint(ec);
  return ec ? 0 : endpoint.port();
}

uint16_t Gateway::ControlPort() const {
  std::error_code ec;
  const auto endpoint = impl_->controlAcceptor.local_endpoint(ec);
  return ec ? 0 : endpoint.port();
}

Json::Value Gateway::Inspect(const std::string& op) {
  Impl& g = *impl_;
  if (g.io.get_executor().running_in_this_thread()) return g.InspectHere(op);
  auto task = std::make_shared<std::packaged_task<Json::Value()>>([&g, op] { return g.InspectHere(op); });
  std::future<Json::Value> result = task->get_future();
  asio::post(g.io, [task] { (*task)(); });
  if (result.wait_for(kInspectWait) != std::future_status::ready) return Json::Value();
  return result.get();
}

Counters Gateway::Count() const {
  std::lock_guard lock(impl_->countMutex);
  return impl_->counts;
}

bool Gateway::WaitUntil(const std::function<bool(const Counters&)>& done, std::chrono::milliseconds limit) const {
  std::unique_lock lock(impl_->countMutex);
  return impl_->countChanged.wait_for(lock, limit, [&] { return done(impl_->counts); });
}

}  // namespace gw
