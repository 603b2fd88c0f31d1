// A small MQTT 3.1.1 client for the gateway's own thread: connects to a
// broker (again after a pause when the connection ends), subscribes, keeps
// the connection alive and publishes at most once (QoS 0), retained or not.
// Messages published while it is not connected wait until it is.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <asio/io_context.hpp>

namespace gw {

class MqttClient {
 public:
  using OnMessage = std::function<void(const std::string& topic, const std::string& payload)>;
  // onConnected runs after every connection's subscriptions went out (to publish what the broker should know).
  MqttClient(asio::io_context& io, std::string host, uint16_t port, std::string clientId, OnMessage onMessage,
             std::function<void()> onConnected);
  ~MqttClient();

  void Start(std::vector<std::string> subscriptions);
  void Publish(const std::string& topic, const std::string& payload, bool retain);
  void Close();
  bool Connected() const;

  struct State;

 private:
  std::shared_ptr<State> state_;
};

// The packets, for the client and its tests.
namespace mqtt {
std::string Connect(const std::string& clientId, uint16_t keepAliveSeconds);
std::string Subscribe(uint16_t packetId, const std::vector<std::string>& topics);
std::string Publish(const std::string& topic, const std::string& payload, bool retain);
std::string PingRequest();
// A packet's fixed header read from the front of bytes: type (high nibble of
// the first byte), flags and the whole packet's size; 0 when more bytes are needed.
struct Head {
  uint8_t type = 0;
  uint8_t flags = 0;
  size_t headSize = 0;
  size_t size = 0;
};
// nullopt-like: size 0 means incomplete; throws std::runtime_error on a malformed length.
Head ReadHead(const std::string& bytes);
}  // namespace mqtt

}  // namespace gw
