// Two gateway nodes that meet at an MQTT broker (Debian's mosquitto, started
// here on a loopback port): a host on one node's control port reaches
// terminals on either node. Every wait is for a counter or an answer.
#include <netinet/in.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "gateway/control_client.h"
#include "gateway/gateway.h"
#include "gateway/log.h"
#include "gateway/mqtt.h"
#include "gateway/termsim/terminals.h"
#include "host/ref/hostref.h"

extern char** environ;

namespace gw {
namespace {
using namespace std::chrono_literals;
constexpr auto kWait = 20s;
constexpr const char* kBroker = "/usr/sbin/mosquitto";
const std::string kTextEnvelope = R"({"Command":33536})";
const std::string kTextParam = R"({"Flag":8,"TextInfo":"hello","TextType":1})";

uint16_t FreePort() {
  const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  ::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address);
  socklen_t size = sizeof address;
  ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &size);
  ::close(fd);
  return ntohs(address.sin_port);
}

// A broker on a loopback port for the test's lifetime.
class Broker {
 public:
  bool Start() {
    port_ = FreePort();
    dir_ = std::filesystem::temp_directory_path() / ("fleetcmd-broker-" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir_);
    const std::string conf = (dir_ / "mosquitto.conf").string();
    std::ofstream(conf) << "listener " << port_ << " 127.0.0.1\nallow_anonymous true\npersistence false\n";
    std::string program = kBroker, flag = "-c", file = conf;
    char* args[] = {program.data(), flag.data(), file.data(), nullptr};
    return posix_spawn(&pid_, kBroker, nullptr, nullptr, args, environ) == 0;
  }
  ~Broker() {
    if (pid_ > 0) {
      ::kill(pid_, SIGTERM);
      ::waitpid(pid_, nullptr, 0);
    }
    std::error_code ignored;
    std::filesystem::remove_all(dir_, ignored);
  }
  uint16_t Port() const { return port_; }

 private:
  pid_t pid_ = 0;
  uint16_t port_ = 0;
  std::filesystem::path dir_;
};

std::unique_ptr<Gateway> Node(const std::string& name, uint16_t brokerPort) {
  Config config;
  config.terminalPort = 0;
  config.controlPort = 0;
  config.node = name;
  config.brokerHost = "127.0.0.1";
  config.brokerPort = brokerPort;
  auto node = std::make_unique<Gateway>(config);
  std::string error;
  EXPECT_TRUE(node->Open(&error)) << error;
  node->Start();
  return node;
}

TEST(Cluster, AHostOnOneNodeReachesTerminalsOnEither) {
  if (::access(kBroker, X_OK) != 0) GTEST_SKIP() << "no " << kBroker << " (scripts/setup.sh installs it)";
  SetLogLevel(LogLevel::Warn);
  hostref::OpenDataDir("");
  hostref::LoadDefaultFleet();
  Broker broker;
  ASSERT_TRUE(broker.Start());
  auto a = Node("a", broker.Port());
  auto b = Node("b", broker.Port());
  termsim::Options options;
  options.port = a->TerminalPort();
  termsim::Terminals onA(options);
  options.port = b->TerminalPort();
  termsim::Terminals onB(options);
  onA.Start();
  onB.Start();
  ASSERT_TRUE(onA.Add("10001"));
  ASSERT_TRUE(onB.Add("10002"));
  // Each node has heard of the other's terminal through the broker.
  ASSERT_TRUE(a->WaitUntil([](const Counters& c) { return c.authenticated == 1 && c.remoteTerminals == 1; }, kWait));
  ASSERT_TRUE(b->WaitUntil([](const Counters& c) { return c.authenticated == 1 && c.remoteTerminals == 1; }, kWait));

  ControlClient host(kWait);
  std::string error;
  ASSERT_TRUE(host.Connect("127.0.0.1", a->ControlPort(), &error)) << error;
  struct Case {
    const char* dev;
    int status;
    std::optional<std::string> reply;
  } cases[] = {
      {"10001", 0, R"({"Error":0,"result":0})"},  // on the node asked
      {"10002", 0, R"({"Error":0,"result":0})"},  // on the other node
      {"10003", 101, std::nullopt},               // on neither
  };
  for (const Case& c : cases) {
    const control::Answer answer = host.Send(c.dev, kTextEnvelope, kTextParam);
    EXPECT_EQ(answer.status, c.status) << c.dev;
    EXPECT_EQ(answer.reply, c.reply) << c.dev;
  }
  EXPECT_EQ(a->Count().routed, 1u);
  EXPECT_EQ(b->Count().answered, 1u);

  // The terminal leaves the other node: the broker tells, and it is offline everywhere.
  onB.Stop();
  ASSERT_TRUE(a->WaitUntil([](const Counters& c) { return c.remoteTerminals == 0; }, kWait));
  EXPECT_EQ(host.Send("10002", kTextEnvelope, kTextParam).status, control::kStatusOffline);
  host.Close();
  onA.Stop();
  a->Stop();
  b->Stop();
}

TEST(Mqtt, PacketsCarryTheirLengthsAsTheBrokerReadsThem) {
  EXPECT_EQ(mqtt::PingRequest(), std::string("\xC0\x00", 2));
  const std::string connect = mqtt::Connect("n", 60);
  EXPECT_EQ(connect, std::string("\x10\x0D\x00\x04MQTT\x04\x02\x00\x3C\x00\x01n", 15));
  const std::string publish = mqtt::Publish("t", std::string(200, 'x'), true);
  const mqtt::Head head = mqtt::ReadHead(publish);
  EXPECT_EQ(head.type, 3);
  EXPECT_EQ(head.flags, 1);  // retained
  EXPECT_EQ(head.headSize, 3u);  // a length of 203 takes two bytes
  EXPECT_EQ(head.size, publish.size());
  EXPECT_EQ(mqtt::ReadHead(publish.substr(0, 100)).size, 0u);  // not all there yet
  EXPECT_EQ(mqtt::Subscribe(1, {"a/+"}), std::string("\x82\x08\x00\x01\x00\x03" "a/+\x00", 10));
  EXPECT_THROW(mqtt::ReadHead(std::string("\x30\xFF\xFF\xFF\xFF\x01", 6)), std::runtime_error);
}

}  // namespace
}  // namespace gw
