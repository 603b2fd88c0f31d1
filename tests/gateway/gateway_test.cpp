// A gateway node on loopback ports, driven by a terminal written out frame by
// frame and by a host on the control port: the handshake, answers to
// terminal messages, requests and their answers, 101, 110, 120 and silent
// sessions. Every wait is for an event (a frame, a line, a counter), bounded
// by a receive timeout so a fault fails instead of hanging.
#include <sys/socket.h>
#include <netinet/in.h>
#include <arpa/inet.h>
#include <unistd.h>

#include <future>

#include <gtest/gtest.h>

#include "gateway/control_client.h"
#include "gateway/gateway.h"
#include "gateway/log.h"
#include "gateway/terminal_messages.h"
#include "jt808/frame.h"
#include "text/json.h"

namespace gw {
namespace {
using namespace std::chrono_literals;
using jt808::Bytes;
using jt808::Edition;
using jt808::Frame;

constexpr auto kWait = 5s;  // the bound of every wait; never reached when the gateway works

// A command whose answer names no serial number, for the oldest-request rule.
constexpr int kProbeCommand = 0xF0F0;
constexpr uint16_t kProbeMessage = 0x8F0F;
constexpr uint16_t kProbeAnswer = 0x0F0F;
const jt808::RegisterCommand kProbe{kProbeCommand,
                                    {kProbeMessage, kProbeAnswer,
                                     [](const Json::Value& param, Edition) {
                                       return jt808::Writer().U8(txt::JsonMemberInt(param, "n", 0)).Take();
                                     },
                                     nullptr}};
const jt808::RegisterAnswer kProbeReply{kProbeAnswer,
                                        {false,
                                         [](jt808::ByteView body, const jt808::AnswerContext&) {
                                           Json::Value reply(Json::objectValue);
                                           reply["n"] = jt808::Reader(body).U8();
                                           return reply;
                                         },
                                         nullptr}};

// A terminal written out by hand: frames in and out on a blocking socket.
class RawTerminal {
 public:
  RawTerminal(uint16_t port, std::string phone, Edition edition) : phone_(std::move(phone)), edition_(edition) {
    fd_ = ::socket(AF_INET, SOCK_STREAM, 0);
    timeval limit{static_cast<time_t>(std::chrono::seconds(kWait).count()), 0};
    ::setsockopt(fd_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    connected_ = ::connect(fd_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
  }
  ~RawTerminal() { ::close(fd_); }

  bool Connected() const { return connected_; }

  uint16_t Send(uint16_t id, const Bytes& body) {
    const jt808::Header header = jt808::MessageHeader(id, edition_, phone_, serial_);
    const uint16_t first = serial_;
    for (const Bytes& frame : jt808::EncodeMessage(header, body)) {
      ++serial_;
      SendBytes(frame);
    }
    return first;
  }
  void SendBytes(const Bytes& bytes) { ::send(fd_, bytes.data(), bytes.size(), MSG_NOSIGNAL); }

  // The next whole message from the gateway; nullopt when the connection ended (or the wait did).
  std::optional<Frame> Receive() {
    for (;;) {
      if (auto frame = reader_.Next()) {
        if (auto whole = whole_.Add(std::move(*frame))) return whole;
        continue;
      }
      uint8_t buffer[2048];
      const ssize_t n = ::recv(fd_, buffer, sizeof buffer, 0);
      if (n <= 0) return std::nullopt;
      reader_.Feed(jt808::ByteView(buffer, static_cast<size_t>(n)));
    }
  }

  // Registers and authenticates with the code the registration answer gave.
  bool LogIn() {
    const uint16_t serial = Send(kRegister, EncodeRegistration({}, edition_));
    auto answer = Receive();
    if (!answer || answer->header.id != kRegisterAnswer) return false;
    const RegisterResult result = DecodeRegisterResult(answer->body);
    if (result.serial != serial || result.result != kRegisterOk) return false;
    return Authenticate(result.code) == jt808::kResultOk;
  }
  int Authenticate(const std::string& code) {
    const uint16_t serial = Send(kAuthenticate, EncodeAuthentication({code, "", ""}, edition_));
    return GeneralAnswerTo(serial, kAuthenticate);
  }
  // The result of the platform's general answer to the message just sent; -1 for none or another.
  int GeneralAnswerTo(uint16_t serial, uint16_t id) {
    auto answer = Receive();
    if (!answer || answer->header.id != jt808::kPlatformGeneralReply) return -1;
    const GeneralAnswer general = DecodeGeneralAnswer(answer->body);
    return general.serial == serial && general.message == id ? general.result : -1;
  }

 private:
  int fd_ = -1;
  bool connected_ = false;
  std::string phone_;
  Edition edition_;
  uint16_t serial_ = 0;
  jt808::FrameReader reader_;
  jt808::Reassembler whole_;
};

class GatewayTest : public ::testing::Test {
 protected:
  void StartGateway(Config config = {}) {
    SetLogLevel(LogLevel::Warn);
    config.terminalPort = 0;
    config.controlPort = 0;
    gateway_ = std::make_unique<Gateway>(config);
    std::string error;
    ASSERT_TRUE(gateway_->Open(&error)) << error;
    gateway_->Start();
    ASSERT_TRUE(client_.Connect("127.0.0.1", gateway_->ControlPort(), &error)) << error;
  }
  void TearDown() override {
    client_.Close();
    if (gateway_) gateway_->Stop();
  }
  std::unique_ptr<RawTerminal> Terminal(const std::string& phone, Edition edition = Edition::k2013) {
    auto terminal = std::make_unique<RawTerminal>(gateway_->TerminalPort(), phone, edition);
    EXPECT_TRUE(terminal->Connected());
    return terminal;
  }
  std::future<control::Answer> Ask(const std::string& dev, int command, const std::string& param) {
    const std::string envelope = R"({"Command":)" + std::to_string(command) + "}";
    return std::async(std::launch::async, [this, dev, envelope, param] { return client_.Send(dev, envelope, param); });
  }
  bool WaitFor(const std::function<bool(const Counters&)>& done) { return gateway_->WaitUntil(done, kWait); }

  std::unique_ptr<Gateway> gateway_;
  ControlClient client_{kWait};
};

constexpr int kText = 0x8300;

TEST_F(GatewayTest, TerminalsRegisterAuthenticateAndGetTheirMessagesAnswered) {
  StartGateway();
  std::vector<std::unique_ptr<RawTerminal>> terminals;
  for (Edition edition : {Edition::k2013, Edition::k2019}) {
    const std::string phone = edition == Edition::k2013 ? "13800000001" : "13800000002";
    terminals.push_back(Terminal(phone, edition));
    RawTerminal* terminal = terminals.back().get();
    // Before authentication nothing but registration and authentication is accepted.
    EXPECT_EQ(terminal->GeneralAnswerTo(terminal->Send(kHeartbeat, {}), kHeartbeat), jt808::kResultFailed);
    const uint16_t serial = terminal->Send(kRegister, EncodeRegistration({}, edition));
    auto registered = terminal->Receive();
    ASSERT_TRUE(registered);
    EXPECT_EQ(registered->header.id, kRegisterAnswer);
    EXPECT_EQ(registered->header.edition, edition);
    EXPECT_EQ(registered->header.phone, phone);
    const RegisterResult result = DecodeRegisterResult(registered->body);
    EXPECT_EQ(result.serial, serial);
    EXPECT_EQ(result.code, Config().auth.CodeFor(phone));
    EXPECT_EQ(terminal->Authenticate("not the code"), jt808::kResultFailed);
    EXPECT_EQ(terminal->Authenticate(result.code), jt808::kResultOk);
    struct Case {
      uint16_t id;
      Bytes body;
    } messages[] = {{kHeartbeat, {}},
                    {kPosition, EmptyPosition()},
                    {0x0900, {0xF0, 1, 2}},
                    {0x0900, Bytes(2000, 0x7E)}};  // in two packages, answered once as a whole
    for (const Case& m : messages) {
      EXPECT_EQ(terminal->GeneralAnswerTo(terminal->Send(m.id, m.body), m.id), jt808::kResultOk) << m.id;
    }
    // The media data answer names the media id and asks for nothing again.
    terminal->Send(kMediaData, jt808::Writer().U32(0x01020304).U8(0).Take());
    auto media = terminal->Receive();
    ASSERT_TRUE(media);
    EXPECT_EQ(media->header.id, kMediaDataAnswer);
    EXPECT_EQ(jt808::Hex(media->body), "01 02 03 04 00");
  }
  const Counters counts = gateway_->Count();
  EXPECT_EQ(counts.registrations, 2u);
  EXPECT_EQ(counts.authFailures, 2u);
  EXPECT_EQ(counts.authenticated, 2u);
  EXPECT_EQ(gateway_->Inspect("sessions").size(), 2u);
}

TEST_F(GatewayTest, AFixedCodeIsTheOnlyCodeAccepted) {
  Config config;
  config.auth = *AuthPolicy::Parse("fixed:K1");
  StartGateway(config);
  auto terminal = Terminal("10001");
  EXPECT_EQ(terminal->Authenticate(Config().auth.CodeFor("10001")), jt808::kResultFailed);
  EXPECT_EQ(terminal->Authenticate("K1"), jt808::kResultOk);
}

TEST_F(GatewayTest, RequestsGoOutWithTheSessionsSerialAndTheAnswerComesBack) {
  StartGateway();
  auto terminal = Terminal("10001", Edition::k2019);
  ASSERT_TRUE(terminal->LogIn());
  for (int round = 0; round < 2; ++round) {
    auto answer = Ask("10001", kText, R"({"Flag":8,"TextInfo":"hi","TextType":1})");
    auto command = terminal->Receive();
    ASSERT_TRUE(command);
    EXPECT_EQ(command->header.id, 0x8300);
    EXPECT_EQ(command->header.edition, Edition::k2019);  // the edition the terminal registered with
    EXPECT_EQ(jt808::Hex(command->body), "08 01 68 69");
    // A stray answer first: it settles nothing.
    terminal->Send(jt808::kGeneralReply, jt808::Writer().U16(command->header.serial + 100).U16(0x8300).U8(0).Take());
    terminal->Send(jt808::kGeneralReply,
                   jt808::Writer().U16(command->header.serial).U16(0x8300).U8(jt808::kResultUnsupported).Take());
    const control::Answer got = answer.get();
    EXPECT_EQ(got.status, control::kStatusAnswered);
    EXPECT_EQ(got.reply, R"({"Error":0,"result":3})");
  }
  EXPECT_EQ(gateway_->Count().unmatched, 2u);
  EXPECT_EQ(gateway_->Count().answered, 2u);
}

TEST_F(GatewayTest, AnAnswerWithoutSerialSettlesTheOldestRequestWaitingForIt) {
  StartGateway();
  auto terminal = Terminal("10001");
  ASSERT_TRUE(terminal->LogIn());
  auto first = Ask("10001", kProbeCommand, R"({"n":1})");
  ASSERT_TRUE(terminal->Receive());
  auto second = Ask("10001", kProbeCommand, R"({"n":2})");
  ASSERT_TRUE(terminal->Receive());
  terminal->Send(kProbeAnswer, {41});
  EXPECT_EQ(first.get().reply, R"({"Error":0,"n":41,"result":0})");
  terminal->Send(kProbeAnswer, {42});
  EXPECT_EQ(second.get().reply, R"({"Error":0,"n":42,"result":0})");
}

TEST_F(GatewayTest, LongCommandsGoOutInPackagesAndLongAnswersComeBackWhole) {
  StartGateway();
  auto terminal = Terminal("10001");
  ASSERT_TRUE(terminal->LogIn());
  const std::string text(2500, 'x');
  auto answer = Ask("10001", kText, R"({"Flag":1,"TextInfo":")" + text + R"("})");
  auto command = terminal->Receive();  // put back together by the terminal's reassembler
  ASSERT_TRUE(command);
  EXPECT_EQ(command->body.size(), 1 + text.size());
  // Answered with the serial of the last package: still that request.
  terminal->Send(jt808::kGeneralReply, jt808::Writer().U16(command->header.serial + 2).U16(0x8300).U8(0).Take());
  EXPECT_EQ(answer.get().reply, R"({"Error":0,"result":0})");
  EXPECT_EQ(gateway_->Count().framesOut, 2u /*login*/ + 3u);
}

TEST_F(GatewayTest, OfflineTimedOutAndPlatformOnlyRequestsGetTheirStatus) {
  Config config;
  config.answerTimeout = 50ms;
  StartGateway(config);
  auto terminal = Terminal("10001");
  ASSERT_TRUE(terminal->LogIn());
  auto registeredOnly = Terminal("10002");
  registeredOnly->Send(kRegister, EncodeRegistration({}, Edition::k2013));
  ASSERT_TRUE(registeredOnly->Receive());

  struct Case {
    const char* what;
    std::string dev;
    int command;
    std::string param;
    int status;
    std::optional<std::string> reply;
  } cases[] = {
      {"no terminal", "10009", kText, "{}", control::kStatusOffline, std::nullopt},
      {"registered, not authenticated", "10002", kText, "{}", control::kStatusOffline, std::nullopt},
      {"not a phone number", "A-1", kText, "{}", control::kStatusOffline, std::nullopt},
      {"the platform's own number", "10001", 0x9999, "{}", 0, R"({"Error":120})"},
      {"a parameter that is no JSON", "10001", kText, "{", 0, R"({"Error":120})"},
      {"no answer", "10001", kText, "{}", control::kStatusTimeout, std::nullopt},
  };
  for (const Case& c : cases) {
    const control::Answer answer = Ask(c.dev, c.command, c.param).get();
    EXPECT_EQ(answer.status, c.status) << c.what;
    EXPECT_EQ(answer.reply, c.reply) << c.what;
  }
  const Counters counts = gateway_->Count();
  EXPECT_EQ(counts.offline, 3u);
  EXPECT_EQ(counts.noMessage, 2u);
  EXPECT_EQ(counts.timeouts, 1u);
  EXPECT_EQ(gateway_->Inspect("requests").size(), 0u);
  // The late answer settles nothing.
  auto command = terminal->Receive();
  ASSERT_TRUE(command);
  terminal->Send(jt808::kGeneralReply, jt808::Writer().U16(command->header.serial).U16(0x8300).U8(0).Take());
  EXPECT_TRUE(WaitFor([](const Counters& c) { return c.unmatched == 1; }));
}

TEST_F(GatewayTest, SilentSessionsAreDroppedAndTalkingOnesKept) {
  Config config;
  config.silentTimeout = 150ms;
  StartGateway(config);
  auto silent = Terminal("10001");
  ASSERT_TRUE(silent->LogIn());
  auto talking = Terminal("10002");
  ASSERT_TRUE(talking->LogIn());
  // The talking terminal keeps sending heartbeats until the silent one is gone.
  while (gateway_->Count().silentDrops == 0) {
    ASSERT_EQ(talking->GeneralAnswerTo(talking->Send(kHeartbeat, {}), kHeartbeat), jt808::kResultOk);
  }
  EXPECT_FALSE(silent->Receive());  // the gateway closed the connection
  const Counters counts = gateway_->Count();
  EXPECT_EQ(counts.silentDrops, 1u);
  EXPECT_EQ(counts.authenticated, 1u);
  EXPECT_EQ(Ask("10001", kText, "{}").get().status, control::kStatusOffline);
}

TEST_F(GatewayTest, ATerminalConnectingAgainReplacesItsOlderSession) {
  StartGateway();
  auto older = Terminal("10001");
  ASSERT_TRUE(older->LogIn());
  auto newer = Terminal("10001");
  ASSERT_TRUE(newer->LogIn());
  EXPECT_FALSE(older->Receive());
  auto answer = Ask("10001", kText, "{}");
  auto command = newer->Receive();
  ASSERT_TRUE(command);
  newer->Send(jt808::kGeneralReply, jt808::Writer().U16(command->header.serial).U16(0x8300).U8(0).Take());
  EXPECT_EQ(answer.get().status, control::kStatusAnswered);
  EXPECT_TRUE(WaitFor([](const Counters& c) { return c.sessions == 1 && c.authenticated == 1; }));
}

TEST_F(GatewayTest, BadFramesAreCountedAndTheStreamGoesOn) {
  StartGateway();
  auto terminal = Terminal("10001");
  ASSERT_TRUE(terminal->LogIn());
  terminal->SendBytes({0x7E, 0x00, 0x02, 0x00, 0x00, 0x7E});  // a check code that does not match
  terminal->SendBytes({0x7E, 0x7D, 0x05, 0x7E});              // a bad escape
  EXPECT_EQ(terminal->GeneralAnswerTo(terminal->Send(kHeartbeat, {}), kHeartbeat), jt808::kResultOk);
  EXPECT_EQ(gateway_->Count().framesDropped, 2u);
}

}  // namespace
}  // namespace gw
