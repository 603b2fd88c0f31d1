// The gateway's own pieces without a network: a terminal's registration and
// authentication bodies in both editions, the authentication code policies,
// the control line protocol, and the matching of answers to requests.
#include <gtest/gtest.h>

#include "gateway/config.h"
#include "gateway/control_protocol.h"
#include "gateway/request_table.h"
#include "gateway/terminal_messages.h"
#include "host/ref/run/wire.h"

namespace gw {
namespace {
using jt808::Edition;
using jt808::Hex;

TEST(TerminalMessages, RegistrationBodiesHaveEachEditionsFieldSizes) {
  Registration r;
  r.province = 44;
  r.city = 300;
  r.maker = "FC";
  r.model = "M1";
  r.terminalId = "T7";
  r.plateColor = 1;
  r.plate = "粤B1";
  // 2013: province, city, maker 5, model 20, terminal id 7, colour, plate in code page 936.
  EXPECT_EQ(Hex(EncodeRegistration(r, Edition::k2013)),
            "00 2c 01 2c 46 43 00 00 00 4d 31 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 54 37 00 00 00 00 "
            "00 01 d4 c1 42 31");
  for (Edition edition : {Edition::k2013, Edition::k2019}) {
    const jt808::Bytes body = EncodeRegistration(r, edition);
    EXPECT_EQ(body.size(), edition == Edition::k2019 ? 4u + 11 + 30 + 30 + 1 + 4 : 4u + 5 + 20 + 7 + 1 + 4);
    const Registration back = DecodeRegistration(body, edition);
    EXPECT_EQ(back.province, 44);
    EXPECT_EQ(back.city, 300);
    EXPECT_EQ(back.maker, "FC");
    EXPECT_EQ(back.model, "M1");
    EXPECT_EQ(back.terminalId, "T7");
    EXPECT_EQ(back.plateColor, 1);
    EXPECT_EQ(back.plate, "粤B1");
  }
  EXPECT_THROW(DecodeRegistration(jt808::Bytes(10, 0), Edition::k2013), jt808::BodyError);
}

TEST(TerminalMessages, AuthenticationAndAnswersRoundTrip) {
  const Authentication a{"c0de", "861234567890123", "1.0"};
  EXPECT_EQ(Hex(EncodeAuthentication(a, Edition::k2013)), "63 30 64 65");
  const jt808::Bytes body2019 = EncodeAuthentication(a, Edition::k2019);
  EXPECT_EQ(body2019.size(), 1u + 4 + 15 + 20);
  EXPECT_EQ(body2019[0], 4);
  const Authentication back = DecodeAuthentication(body2019, Edition::k2019);
  EXPECT_EQ(back.code, "c0de");
  EXPECT_EQ(back.imei, "861234567890123");
  EXPECT_EQ(back.software, "1.0");
  EXPECT_EQ(DecodeAuthentication(EncodeAuthentication(a, Edition::k2013), Edition::k2013).code, "c0de");
  EXPECT_THROW(DecodeAuthentication(jt808::Bytes{9, 'a'}, Edition::k2019), jt808::BodyError);

  EXPECT_EQ(Hex(EncodeRegisterResult({0x0102, kRegisterOk, "ab"})), "01 02 00 61 62");
  EXPECT_EQ(Hex(EncodeRegisterResult({0x0102, kRegisterNoTerminal, "ab"})), "01 02 04");
  EXPECT_EQ(DecodeRegisterResult(EncodeRegisterResult({7, kRegisterOk, "xyz"})).code, "xyz");
  EXPECT_EQ(Hex(EncodeGeneralAnswer({0x0A0B, kHeartbeat, jt808::kResultOk})), "0a 0b 00 02 00");
}

TEST(AuthPolicy, ParsesEachPolicyAndChecksCodes) {
  struct Case {
    const char* text;
    bool parses;
    bool acceptsOwnCode, acceptsOtherCode;
  } cases[] = {
      {"derived", true, true, false}, {"derived:s3cret", true, true, false}, {"fixed:ABC", true, true, false},
      {"any", true, true, true},      {"fixed:", false, false, false},       {"derived:", false, false, false},
      {"", false, false, false},      {"open", false, false, false},
  };
  for (const Case& c : cases) {
    const auto policy = AuthPolicy::Parse(c.text);
    ASSERT_EQ(policy.has_value(), c.parses) << c.text;
    if (!policy) continue;
    EXPECT_EQ(policy->Accepts("10001", policy->CodeFor("10001")), c.acceptsOwnCode) << c.text;
    EXPECT_EQ(policy->Accepts("10001", "wrong"), c.acceptsOtherCode) << c.text;
  }
  EXPECT_EQ(AuthPolicy::Parse("fixed:ABC")->CodeFor("10002"), "ABC");
  const AuthPolicy derived = *AuthPolicy::Parse("derived:x");
  EXPECT_NE(derived.CodeFor("10001"), derived.CodeFor("10002"));
  EXPECT_NE(derived.CodeFor("10001"), AuthPolicy::Parse("derived:y")->CodeFor("10001"));
  EXPECT_FALSE(derived.Accepts("10002", derived.CodeFor("10001")));
}

TEST(Config, ReadsDurationsAndPorts) {
  EXPECT_EQ(ParseDuration("250ms"), std::chrono::milliseconds(250));
  EXPECT_EQ(ParseDuration("30"), std::chrono::seconds(30));
  EXPECT_EQ(ParseDuration("2m"), std::chrono::minutes(2));
  for (const char* bad : {"", "ms", "5h", "-1s", "1.5s"}) EXPECT_FALSE(ParseDuration(bad)) << bad;
  EXPECT_EQ(ParsePort("7808"), 7808);
  for (const char* bad : {"", "65536", "80a", "-1"}) EXPECT_FALSE(ParsePort(bad)) << bad;
}

TEST(ControlProtocol, ReadsRequestsAndInspectionsAndSaysWhatIsWrong) {
  struct Case {
    const char* line;
    const char* op;
    const char* error;  // "" when the line reads
  } cases[] = {
      {R"({"id":7,"dev":"10001","envelope":"{}","param":"{}"})", "send", ""},
      {R"({"id":"a","dev":"10001","envelope":"{}"})", "send", ""},
      {R"({"dev":"10001","envelope":"{}","param":null})", "send", ""},
      {R"({"op":"sessions"})", "sessions", ""},
      {R"({"id":7,"envelope":"{}"})", "send", "dev is no text"},
      {R"({"id":7,"dev":10001,"envelope":"{}"})", "send", "dev is no text"},
      {R"({"id":7,"dev":"1","envelope":"{}","param":{}})", "send", "param is no text"},
      {R"({"id":[1],"dev":"1","envelope":"{}"})", "", "the id is no number or text"},
      {R"(not json)", "", "not a JSON object"},
      {R"([1,2])", "", "not a JSON object"},
  };
  for (const Case& c : cases) {
    const control::Line line = control::Parse(c.line);
    EXPECT_EQ(line.error, c.error) << c.line;
    if (!*c.error) {
      EXPECT_EQ(line.op, c.op) << c.line;
    }
  }
  const control::Line request = control::Parse(R"({"id":7,"dev":"10001","envelope":"E","param":"P"})");
  EXPECT_EQ(request.request.id.asInt(), 7);
  EXPECT_EQ(request.request.dev, "10001");
  EXPECT_EQ(request.request.envelope, "E");
  EXPECT_EQ(request.request.param, "P");
  EXPECT_EQ(control::RequestLine(request.request), R"({"dev":"10001","envelope":"E","id":7,"param":"P"})");
}

TEST(ControlProtocol, AnswersCarryTheirStatusAndReplyBack) {
  EXPECT_EQ(control::AnswerLine(Json::Value(3), 0, std::string(R"({"Error":0})")),
            R"({"id":3,"reply":"{\"Error\":0}","status":0})");
  EXPECT_EQ(control::AnswerLine(Json::Value("x"), 101, std::nullopt), R"({"id":"x","status":101})");
  const auto answer = control::ParseAnswer(control::AnswerLine(Json::Value(3), 0, std::string("{\"a\":\"\n\"}")));
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->reply, "{\"a\":\"\n\"}");
  EXPECT_FALSE(control::ParseAnswer(R"({"op":"counters","counters":{}})"));
  EXPECT_EQ(control::CommandOf(R"({"Command":33536})"), 33536);
  EXPECT_FALSE(control::CommandOf(R"({"Other":1})"));
  EXPECT_FALSE(control::CommandOf(""));
}

TEST(ControlProtocol, ThePlatformsOwnNumbersReadAsTheSimulatedPlatformSaysThem) {
  EXPECT_EQ(control::NoTerminalMessageReply(), hostref::wire::NoTerminalMessageReply());
}

// ---- matching answers to requests -------------------------------------------

jt808::Message GeneralReplyTo(uint16_t serial) {
  return {jt808::kGeneralReply, jt808::Writer().U16(serial).U16(0x8300).U8(0).Take()};
}

Pending Request(const std::string& phone, uint16_t serial, uint16_t packages = 1,
                uint16_t answer = jt808::kGeneralReply) {
  Pending p;
  p.phone = phone;
  p.serial = serial;
  p.packages = packages;
  p.answer = answer;
  return p;
}

TEST(RequestTable, AnswersSettleTheRequestTheyName) {
  struct Case {
    const char* what;
    std::vector<Pending> open;
    std::string from;
    jt808::Message answer;
    std::optional<size_t> settles;  // index into open
  } cases[] = {
      {"by serial", {Request("1", 5), Request("1", 6)}, "1", GeneralReplyTo(6), 1},
      {"another terminal's serial", {Request("1", 5)}, "2", GeneralReplyTo(5), std::nullopt},
      {"a serial nobody waits for", {Request("1", 5)}, "1", GeneralReplyTo(4), std::nullopt},
      {"a later package's serial", {Request("1", 10, 3)}, "1", GeneralReplyTo(12), 0},
      {"past the last package", {Request("1", 10, 3)}, "1", GeneralReplyTo(13), std::nullopt},
      {"packages across the wrap", {Request("1", 0xFFFF, 3)}, "1", GeneralReplyTo(1), 0},
      {"an unknown answer without serial", {Request("1", 5, 1, 0x0F77)}, "1", {0x0F78, {}}, std::nullopt},
  };
  for (const Case& c : cases) {
    RequestTable table;
    std::vector<uint64_t> keys;
    for (const Pending& p : c.open) keys.push_back(table.Add(p));
    const auto settled = table.Match(c.from, c.answer);
    ASSERT_EQ(settled.has_value(), c.settles.has_value()) << c.what;
    if (!settled) continue;
    EXPECT_EQ(settled->key, keys[*c.settles]) << c.what;
    EXPECT_EQ(table.Size(), c.open.size() - 1) << c.what;
    EXPECT_FALSE(table.Match(c.from, c.answer)) << c.what << ": settled twice";
  }
}

TEST(RequestTable, TimedOutRequestsLeaveAndTheRestListInOrder) {
  RequestTable table;
  const uint64_t first = table.Add(Request("1", 1));
  const uint64_t second = table.Add(Request("2", 1));
  const uint64_t third = table.Add(Request("1", 2));
  ASSERT_TRUE(table.Take(second));
  EXPECT_FALSE(table.Take(second));
  const std::vector<Pending> open = table.List();
  ASSERT_EQ(open.size(), 2u);
  EXPECT_EQ(open[0].key, first);
  EXPECT_EQ(open[1].key, third);
  EXPECT_FALSE(table.Match("2", GeneralReplyTo(1)));
}

}  // namespace
}  // namespace gw
