// The simulated binary terminals against a gateway node: the fleet's devices
// come online in their editions and answer from the simulated terminals'
// state; a hundred terminals take text messages paced as the pages pace them;
// and the host's platform answers through the gateway.
#include <gtest/gtest.h>

#include "gateway/control_client.h"
#include "gateway/gateway.h"
#include "gateway/log.h"
#include "gateway/termsim/host_link.h"
#include "gateway/termsim/terminals.h"
#include "host/hostnet.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "text/encoding.h"

namespace gw {
namespace {
using namespace std::chrono_literals;
constexpr auto kWait = 20s;
constexpr int kText = 0x8300;
const std::string kTextEnvelope = R"({"Command":33536})";

std::string TextParam(const std::string& text) {
  return R"({"Flag":8,"TextInfo":")" + txt::FormEncode(txt::Utf8ToGbk(text)) + R"(","TextType":1})";
}

class TermsimTest : public ::testing::Test {
 protected:
  void SetUp() override {
    SetLogLevel(LogLevel::Warn);
    hostref::OpenDataDir("");
    hostref::LoadDefaultFleet();
    hostref::terminals::Clear();
    Config config;
    config.terminalPort = 0;
    config.controlPort = 0;
    gateway_ = std::make_unique<Gateway>(config);
    std::string error;
    ASSERT_TRUE(gateway_->Open(&error)) << error;
    gateway_->Start();
    termsim::Options options;
    options.port = gateway_->TerminalPort();
    terminals_ = std::make_unique<termsim::Terminals>(options);
    terminals_->Start();
    ASSERT_TRUE(client_.Connect("127.0.0.1", gateway_->ControlPort(), &error)) << error;
  }
  void TearDown() override {
    client_.Close();
    terminals_->Stop();
    gateway_->Stop();
    hostref::LoadDefaultFleet();
  }
  // Terminals for the devices; true once all are online.
  bool Connect(const std::vector<std::string>& devices) {
    for (const std::string& devIdno : devices) EXPECT_TRUE(terminals_->Add(devIdno)) << devIdno;
    return terminals_->WaitUntil([&](const termsim::Stats& s) { return s.online == devices.size(); }, kWait);
  }

  std::unique_ptr<Gateway> gateway_;
  std::unique_ptr<termsim::Terminals> terminals_;
  ControlClient client_{kWait};
};

TEST_F(TermsimTest, TheFleetsTerminalsAnswerInTheirEditionsFromTheSimulatedTerminals) {
  ASSERT_TRUE(Connect(termsim::FleetDevices()));
  const Json::Value sessions = gateway_->Inspect("sessions");
  ASSERT_EQ(sessions.size(), termsim::FleetDevices().size());
  for (const Json::Value& session : sessions) {
    EXPECT_EQ(session["edition"].asInt(), hostref::terminals::Is2019(session["dev"].asString()) ? 2019 : 2013)
        << session["dev"].asString();
  }
  // A long text goes out in packages and is put back together by the terminal.
  const std::string longText(1500, 'z');
  struct Case {
    std::string dev;
    std::string text;
  } cases[] = {{"10001", "回电 please"}, {"10002", "2013-edition"}, {"10003", longText}};
  for (const Case& c : cases) {
    const control::Answer answer = client_.Send(c.dev, kTextEnvelope, TextParam(c.text));
    EXPECT_EQ(answer.status, control::kStatusAnswered) << c.dev;
    EXPECT_EQ(answer.reply, R"({"Error":0,"result":0})") << c.dev;
    const auto texts = hostref::terminals::Texts(c.dev);
    ASSERT_EQ(texts.size(), 1u) << c.dev;
    EXPECT_EQ(texts[0].text, c.text) << c.dev;
  }
}

TEST_F(TermsimTest, ADeviceWhoseEditionChangesGetsATerminalInTheNewEdition) {
  ASSERT_TRUE(Connect({"10001"}));
  const jt808::Edition before = hostref::terminals::Is2019("10001") ? jt808::Edition::k2019 : jt808::Edition::k2013;
  const jt808::Edition after = before == jt808::Edition::k2019 ? jt808::Edition::k2013 : jt808::Edition::k2019;
  ASSERT_TRUE(terminals_->Add("10001", after));
  ASSERT_TRUE(terminals_->WaitOnline("10001", kWait));
  ASSERT_TRUE(gateway_->WaitUntil([](const Counters& c) { return c.sessions == 1 && c.authenticated == 1; }, kWait));
  const Json::Value sessions = gateway_->Inspect("sessions");
  ASSERT_EQ(sessions.size(), 1u);
  EXPECT_EQ(sessions[0]["edition"].asInt(), after == jt808::Edition::k2019 ? 2019 : 2013);
  EXPECT_EQ(client_.Send("10001", kTextEnvelope, TextParam("again")).reply, R"({"Error":0,"result":0})");
  EXPECT_EQ(terminals_->Count().terminals, 1u);
}

TEST_F(TermsimTest, AHundredTerminalsTakePacedTextsAndEveryAnswerComesBack) {
  constexpr int kTerminals = 100;
  constexpr size_t kOutstanding = 100;  // the pages' limit
  hostref::LoadFleet(R"({"vehicles":[]})");
  hostref::AddGeneratedDevices(kTerminals, 30'000'000);
  const std::vector<std::string> devices = termsim::FleetDevices();
  ASSERT_EQ(devices.size(), static_cast<size_t>(kTerminals));
  ASSERT_TRUE(Connect(devices));
  std::vector<control::Request> requests;
  for (int round = 0; round < 3; ++round) {
    for (const std::string& dev : devices) {
      control::Request request;
      request.dev = dev;
      request.envelope = kTextEnvelope;
      request.param = TextParam("round " + std::to_string(round));
      requests.push_back(request);
    }
  }
  const std::vector<control::Answer> answers = SendPaced(client_, requests, kOutstanding);
  for (size_t i = 0; i < answers.size(); ++i) {
    EXPECT_EQ(answers[i].status, control::kStatusAnswered) << requests[i].dev;
    EXPECT_EQ(answers[i].reply, R"({"Error":0,"result":0})") << requests[i].dev;
  }
  for (const std::string& dev : devices) EXPECT_EQ(hostref::terminals::Texts(dev).size(), 3u) << dev;
  const Counters counts = gateway_->Count();
  EXPECT_EQ(counts.answered, requests.size());
  EXPECT_EQ(counts.timeouts + counts.offline + counts.unmatched, 0u);
}

// The host's platform through the gateway: the plug-in's channel sees the
// terminal's answer, or the status the gateway gave.
struct Delivered {
  std::mutex mutex;
  std::condition_variable arrived;
  std::vector<std::pair<int, std::string>> answers;
};
void CALLBACK OnAnswer(int32_t status, const char* reply, void* user) {
  auto* delivered = static_cast<Delivered*>(user);
  std::lock_guard lock(delivered->mutex);
  delivered->answers.emplace_back(status, reply ? reply : "(none)");
  delivered->arrived.notify_all();
}

TEST(HostLink, ThePlatformsChannelsAnswerThroughAGatewayInTheProcess) {
  SetLogLevel(LogLevel::Warn);
  hostref::OpenDataDir("");
  hostref::LoadDefaultFleet();
  hostref::net::Reset();
  hostref::terminals::Install();
  HostLink link;
  std::string error;
  ASSERT_TRUE(link.Start(*HostLink::Parse("gw"), &error)) << error;
  hostref::net::SetStatus("10004", 101);  // a device's own rule still comes first
  struct Case {
    const char* dev;
    std::string envelope;
    int status;
    std::string reply;
  } cases[] = {
      {"10001", kTextEnvelope, 0, R"({"Error":0,"result":0})"},
      {"10001", R"({"Command":39321})", 0, R"({"Error":120})"},
      {"10004", kTextEnvelope, 101, "(none)"},
      {"A-1", kTextEnvelope, 101, "(none)"},  // the gateway's own status: no terminal can have that number
  };
  Delivered delivered;
  for (const Case& c : cases) {
    NETHANDLE handle = 0;
    ASSERT_EQ(NETCLIENT_MNOpenNormalCmd(&handle, c.dev, c.envelope.c_str(), TextParam("x").c_str()), 0);
    NETCLIENT_MNSetNormalCmdCB(handle, &delivered, &OnAnswer);
    ASSERT_EQ(NETCLIENT_MNStartNormalCmd(handle), 0);
    {
      std::unique_lock lock(delivered.mutex);
      ASSERT_TRUE(delivered.arrived.wait_for(lock, kWait, [&] { return !delivered.answers.empty(); })) << c.dev;
      EXPECT_EQ(delivered.answers.back().first, c.status) << c.dev << " " << c.envelope;
      EXPECT_EQ(delivered.answers.back().second, c.reply) << c.dev << " " << c.envelope;
      delivered.answers.clear();
    }
    NETCLIENT_MNStopNormalCmd(handle);
    NETCLIENT_MNCloseNormalCmd(handle);
  }
  link.Stop();
  hostref::net::Reset();
  hostref::terminals::Uninstall();
}

TEST(HostLink, ReadsItsTargets) {
  struct Case {
    const char* text;
    bool reads;
    bool inProcess;
    const char* host;
    uint16_t port;
  } cases[] = {
      {"gw", true, true, "", 0},
      {"gw://127.0.0.1:7809", true, false, "127.0.0.1", 7809},
      {"gw://gateway.example:1", true, false, "gateway.example", 1},
      {"gw://[::1]:7809", true, false, "::1", 7809},
      {"gw://host", false, false, "", 0},
      {"gw://:7809", false, false, "", 0},
      {"gw://host:0", false, false, "", 0},
      {"gw://host:99999", false, false, "", 0},
      {"gateway", false, false, "", 0},
  };
  for (const Case& c : cases) {
    const auto target = HostLink::Parse(c.text);
    ASSERT_EQ(target.has_value(), c.reads) << c.text;
    if (!target) continue;
    EXPECT_EQ(target->inProcess, c.inProcess) << c.text;
    EXPECT_EQ(target->host, c.host) << c.text;
    EXPECT_EQ(target->port, c.port) << c.text;
  }
}

}  // namespace
}  // namespace gw
