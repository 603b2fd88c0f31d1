#include "gateway/mqtt.h"

#include <stdexcept>

#include <asio.hpp>

#include "gateway/log.h"

namespace gw {
namespace mqtt {
namespace {
constexpr uint8_t kConnect = 1, kConnAck = 2, kPublish = 3, kSubscribe = 8, kPingReq = 12;
constexpr uint8_t kCleanSession = 0x02;
constexpr uint8_t kProtocolLevel = 4;  // 3.1.1

void PutU16(std::string& out, size_t value) {
  out.push_back(static_cast<char>((value >> 8) & 0xFF));
  out.push_back(static_cast<char>(value & 0xFF));
}
void PutText(std::string& out, const std::string& text) {
  PutU16(out, text.size());
  out += text;
}
std::string Packet(uint8_t first, const std::string& body) {
  std::string out(1, static_cast<char>(first));
  size_t length = body.size();
  do {
    uint8_t digit = length % 128;
    length /= 128;
    if (length > 0) digit |= 0x80;
    out.push_back(static_cast<char>(digit));
  } while (length > 0);
  return out + body;
}
}  // namespace

std::string Connect(const std::string& clientId, uint16_t keepAliveSeconds) {
  std::string body;
  PutText(body, "MQTT");
  body.push_back(static_cast<char>(kProtocolLevel));
  body.push_back(static_cast<char>(kCleanSession));
  PutU16(body, keepAliveSeconds);
  PutText(body, clientId);
  return Packet(kConnect << 4, body);
}

std::string Subscribe(uint16_t packetId, const std::vector<std::string>& topics) {
  std::string body;
  PutU16(body, packetId);
  for (const std::string& topic : topics) {
    PutText(body, topic);
    body.push_back(0);  // at most once
  }
  return Packet(kSubscribe << 4 | 0x02, body);
}

std::string Publish(const std::string& topic, const std::string& payload, bool retain) {
  std::string body;
  PutText(body, topic);
  body += payload;
  return Packet(kPublish << 4 | (retain ? 1 : 0), body);
}

std::string PingRequest() { return Packet(kPingReq << 4, ""); }

Head ReadHead(const std::string& bytes) {
  Head head;
  if (bytes.empty()) return head;
  size_t length = 0;
  size_t multiplier = 1;
  for (size_t i = 1;; ++i) {
    if (i > 4) throw std::runtime_error("malformed remaining length");
    if (i >= bytes.size()) return head;
    const uint8_t digit = static_cast<uint8_t>(bytes[i]);
    length += (digit & 0x7F) * multiplier;
    multiplier *= 128;
    if (!(digit & 0x80)) {
      head.headSize = i + 1;
      break;
    }
  }
  head.type = static_cast<uint8_t>(bytes[0]) >> 4;
  head.flags = static_cast<uint8_t>(bytes[0]) & 0x0F;
  if (bytes.size() < head.headSize + length) return Head{};
  head.size = head.headSize + length;
  return head;
}
}  // namespace mqtt

namespace {
using asio::awaitable;
using asio::use_awaitable;
using asio::ip::tcp;
using namespace std::chrono_literals;
constexpr uint16_t kKeepAlive = 60;
constexpr auto kPing = 30s;
constexpr auto kRetry = 200ms;
constexpr const char* kWhere = "mqtt";

void Spawn(asio::io_context& io, awaitable<void> body) {
  asio::co_spawn(io, std::move(body), [](std::exception_ptr failure) {
    if (!failure) return;
    try {
      std::rethrow_exception(failure);
    } catch (const std::exception& e) {
      Log(LogLevel::Error, kWhere, e.what());
    }
  });
}
}  // namespace

struct MqttClient::State : std::enable_shared_from_this<MqttClient::State> {
  State(asio::io_context& i) : io(i), socket(i), timer(i) {}
  asio::io_context& io;
  std::string host;
  uint16_t port = 0;
  std::string clientId;
  OnMessage onMessage;
  std::function<void()> onConnected;
  std::vector<std::string> subscriptions;
  tcp::socket socket;
  asio::steady_timer timer;
  bool connected = false;
  bool closed = false;
  std::deque<std::string> waiting;  // published while not connected
  std::deque<std::string> outbox;
  bool writing = false;
  uint64_t connection = 0;

  void Send(std::string packet) {
    outbox.push_back(std::move(packet));
    if (writing) return;
    writing = true;
    Spawn(io, Write(shared_from_this(), connection));
  }

  awaitable<void> Write([[maybe_unused]] std::shared_ptr<State> self, uint64_t on) {
    while (!outbox.empty() && on == connection) {
      const std::string packet = std::move(outbox.front());
      outbox.pop_front();
      std::error_code ec;
      co_await asio::async_write(socket, asio::buffer(packet), asio::redirect_error(use_awaitable, ec));
      if (ec) break;
    }
    writing = false;
  }

  awaitable<void> Live([[maybe_unused]] std::shared_ptr<State> self) {
    while (!closed) {
      std::error_code ec;
      tcp::resolver resolver(io);
      auto endpoints = co_await resolver.async_resolve(host, std::to_string(port), asio::redirect_error(use_awaitable, ec));
      if (!ec) {
        socket = tcp::socket(io);
        co_await asio::async_connect(socket, endpoints, asio::redirect_error(use_awaitable, ec));
      }
      if (!ec && !closed) co_await Converse();
      connected = false;
      ++connection;
      outbox.clear();
      if (closed) break;
      timer.expires_after(kRetry);
      co_await timer.async_wait(asio::redirect_error(use_awaitable, ec));
    }
  }

  awaitable<void> Converse() {
    const uint64_t on = ++connection;
    Send(mqtt::Connect(clientId, kKeepAlive));
    Spawn(io, Ping(shared_from_this(), on));
    std::string buffer;
    char chunk[4096];
    for (;;) {
      std::error_code ec;
      const size_t n = co_await socket.async_read_some(asio::buffer(chunk), asio::redirect_error(use_awaitable, ec));
      if (ec || closed) break;
      buffer.append(chunk, n);
      for (;;) {
        mqtt::Head head;
        try {
          head = mqtt::ReadHead(buffer);
        } catch (const std::exception& e) {
          Log(LogLevel::Warn, kWhere, e.what());
          co_return;
        }
        if (head.size == 0) break;
        Handle(head, buffer.substr(head.headSize, head.size - head.headSize));
        buffer.erase(0, head.size);
      }
    }
    std::error_code ignored;
    socket.close(ignored);
  }

  void Handle(const mqtt::Head& head, const std::string& body) {
    if (head.type == mqtt::kConnAck) {
      if (body.size() < 2 || body[1] != 0) {
        Log(LogLevel::Warn, kWhere, "the broker refused the connection");
        std::error_code ignored;
        socket.close(ignored);
        return;
      }
      connected = true;
      if (!subscriptions.empty()) Send(mqtt::Subscribe(1, subscriptions));
      Log(LogLevel::Info, kWhere, "connected to the broker " + host + ":" + std::to_string(port));
      if (onConnected) onConnected();
      while (!waiting.empty()) {
        Send(std::move(waiting.front()));
        waiting.pop_front();
      }
      return;
    }
    if (head.type == mqtt::kPublish && body.size() >= 2) {
      const size_t topicSize = static_cast<uint8_t>(body[0]) << 8 | static_cast<uint8_t>(body[1]);
      if (body.size() < 2 + topicSize) return;
      size_t at = 2 + topicSize;
      if ((head.flags >> 1) & 0x03) at += 2;  // a packet id (we subscribe at most once, but a broker may send more)
      if (at > body.size()) return;
      if (onMessage) onMessage(body.substr(2, topicSize), body.substr(at));
    }
  }

  awaitable<void> Ping([[maybe_unused]] std::shared_ptr<State> self, uint64_t on) {
    asio::steady_timer ping(io);
    while (on == connection && !closed) {
      ping.expires_after(kPing);
      std::error_code ec;
      co_await ping.async_wait(asio::redirect_error(use_awaitable, ec));
      if (on != connection || closed) break;
      Send(mqtt::PingRequest());
    }
  }
};

MqttClient::MqttClient(asio::io_context& io, std::string host, uint16_t port, std::string clientId,
                       OnMessage onMessage, std::function<void()> onConnected)
    : state_(std::make_shared<State>(io)) {
  state_->host = std::move(host);
  state_->port = port;
  state_->clientId = std::move(clientId);
  state_->onMessage = std::move(onMessage);
  state_->onConnected = std::move(onConnected);
}

MqttClient::~MqttClient() { Close(); }

void MqttClient::Start(std::vector<std::string> subscriptions) {
  state_->subscriptions = std::move(subscriptions);
  Spawn(state_->io, state_->Live(state_));
}

void MqttClient::Publish(const std::string& topic, const std::string& payload, bool retain) {
  std::string packet = mqtt::Publish(topic, payload, retain);
  if (state_->connected) {
    state_->Send(std::move(packet));
  } else {
    state_->waiting.push_back(std::move(packet));
  }
}

void MqttClient::Close() {
  State& s = *state_;
  if (s.closed) return;
  s.closed = true;
  s.onMessage = nullptr;
  s.onConnected = nullptr;
  std::error_code ignored;
  s.socket.close(ignored);
  s.timer.cancel();
}

bool MqttClient::Connected() const { return state_->connected; }

}  // namespace gw
