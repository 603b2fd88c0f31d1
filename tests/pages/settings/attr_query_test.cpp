// The attribute query pages: each reply becomes its exact block in the text
// box, blocks append in reply order, and a new device-attribute query empties it.
#include <numeric>

#include "command/page_registry.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"
#include "pages/settings/query_audio_video.h"
#include "pages/settings/query_device_attr.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

using fixture::T;

namespace {
const std::string kEnd = CAttrQueryPage::kBlockEnd;

std::string L(int label, const std::string& value, const char* lineEnd = "\r\n") {
  return FormatChineseColon(T(label), value) + lineEnd;
}
// A bit list from {state, label} ids counted from 13600; label 0: the state alone.
std::string Bits(std::initializer_list<std::pair<int, int>> entries) {
  std::string text;
  for (auto [s, l] : entries) AddStringStatus(text, T(13600 + s) + (l ? " " + T(13600 + l) : ""), "\r\n\t");
  return text;
}
std::string Failed(const std::string& vehicle) {
  const std::string bang = GetChineseChar("!");
  return L(13421, vehicle) + T(11012) + bang + bang + bang + kEnd;
}
// The value of a label's line, up to the next label or the end of the block.
std::string ValueOf(const std::string& text, int label) {
  const std::string head = "\r\n" + L(label, "", "");
  const size_t start = text.find(head) + head.size();
  return text.substr(start, std::min(text.find("\r\n<", start), text.find("\r\n\r\n", start)) - start);
}

struct ValueCase { bool audio; std::string reply; int label; std::string value; };

class AttrQueryTest : public PageWorld {
 protected:
  // Devices 1..n answer with the replies, in this order, to a click of get; returns the text box.
  std::string Query(CBaseDlg& page, const std::vector<std::string>& replies) {
    if (!page.IsWindow() && page.CreateDlg(&host)) page.ShowWindow(plat::SW_SHOW);
    std::vector<int> ids(replies.size());
    std::iota(ids.begin(), ids.end(), 1);
    for (int id : ids) hostref::net::SetReply(std::to_string(91000 + id), replies[id - 1]);
    hostref::SetPickerAnswer(ids);
    page.PickerMode = TRUE;
    hostref::net::SetHeld(true);
    page.Item<plat::Button>(ctl::Get)->Click();
    hostref::RunFor(CBaseDlg::kFirstSendDelayMs);
    hostref::net::ReleaseAll();  // in the order sent
    EXPECT_TRUE(Settle());
    return page.GetItemText(CAttrQueryPage::kResultText);
  }
  TestHost host;
};

TEST_F(AttrQueryTest, WholeBlocks) {
  CDlgQueryAudioVideo audio;
  EXPECT_EQ(Query(audio, {R"({"ACODE":6,"ASR":1,"ASB":0,"AFL":320,"AOUT":1,"VCODE":98,"ACHNN":"4","VCHNN":8})"}),
            L(13421, "V1") + L(15100, "G.711A " + T(13457)) + L(15101, "0") + L(15102, "22050 Hz") +
                L(15103, "8 " + T(11013)) + L(15104, "320") + L(15105, T(15106)) + L(15108, "H.264 " + T(13458)) +
                L(15109, "4") + L(15110, "8") + kEnd);
  CDlgQueryDeviceAttr device;
  EXPECT_EQ(Query(device, {"{\"DTYPE\":0,\"MID\":\"\xD6\xD0\xCE\xC4\",\"DMODEL\":\"M1\",\"DID\":\"ID7\","
                           "\"DSIMBCD\":\"8986\",\"DHVER\":\"h\",\"DFVER\":\"f\",\"GNSSA\":15,\"COMMA\":0}"}),
            L(13421, "V1") + L(13601, Bits({{12, 15}, {12, 16}, {12, 17}, {12, 18}, {14, 19}, {20, 0}, {14, 34}})) +
                L(13602, "中文") + L(13603, "M1") + L(13604, "ID7") + L(13605, "8986") + L(13606, "h") +
                L(13607, "f") + L(13608, Bits({{13, 22}, {13, 23}, {13, 24}, {13, 25}})) +
                L(13609, Bits({{14, 26}, {14, 27}, {14, 28}, {14, 29}, {14, 30}, {14, 31}, {14, 33}}), "") + kEnd);
}

TEST_F(AttrQueryTest, ReplyValues) {
  const ValueCase cases[] = {
      {true, R"({"ACODE":257})", 15100, "G.721 " + T(13457)}, {true, R"({"ACODE":29})", 15100, "Unknown:29"},
      {true, R"({"ACODE":0})", 15100, ""},                     {true, R"({"VCODE":91})", 15108, "91"},
      {true, R"({"VCODE":101})", 15108, "SVAC " + T(13458)},   {true, R"({"VCODE":200})", 15108, "Unknown:200"},
      {true, R"({"ASR":3})", 15102, "48000 Hz"},               {true, R"({"ASR":4})", 15102, ""},
      {true, R"({"ASB":2})", 15103, "32 " + T(11013)},         {true, R"({"ASB":3})", 15103, "Unknown:3"},
      {true, R"({"AOUT":0})", 15105, T(15107)},
      {false, R"({"DTYPE":"437"})", 13601, Bits({{11, 15}, {12, 16}, {11, 17}, {12, 18}, {14, 19}, {21, 0}, {13, 34}})},
      {false, R"({"GNSSA":26})", 13608, Bits({{14, 22}, {13, 23}, {14, 24}, {13, 25}})},
      {false, R"({"COMMA":106})", 13609, Bits({{14, 26}, {13, 27}, {14, 28}, {13, 29}, {14, 30}, {13, 31}, {14, 33}})},
      {false, "{\"DSIM\":\"\x89\x86\x01" "ABCDEFGH\"}", 13605, "89860141424344454647"},
      {false, "{\"DSIM\":\"\xA1\\u0000\xFE\",\"DSIMBCD\":\"\"}", 13605, "A100FE00000000000000"},
      {false, "{\"DSIM\":\"\x89\",\"DSIMBCD\":\"8986A1\"}", 13605, "8986A1"},
      {false, R"({"DMODEL":")" + std::string(70, 'M') + "\"}", 13603, std::string(63, 'M')},
  };
  for (const ValueCase& c : cases) {
    CDlgQueryAudioVideo audio;
    CDlgQueryDeviceAttr device;
    EXPECT_EQ(ValueOf(Query(c.audio ? static_cast<CBaseDlg&>(audio) : device, {c.reply}), c.label), c.value) << c.reply;
  }
}

// Bit lists are written once per value in a query and kept: every block of a
// query whose replies mix more values than are kept, some repeated, equals the
// block that value gives alone. (One hundred replies: all sent before the first is released.)
TEST_F(AttrQueryTest, MixedValuesInOneQuery) {
  const int kinds = static_cast<int>(CDlgQueryDeviceAttr::kMaxKeptBitLists) + 6;
  const int devices = 100;
  ASSERT_TRUE(hostref::LoadFleet(fixture::PlainFleet(devices)));
  std::vector<std::string> replies, alone;
  for (int i = 0; i < devices; ++i) {
    const int value = (i * 37) % kinds;
    replies.push_back(R"({"DTYPE":)" + std::to_string(value) + R"(,"GNSSA":)" + std::to_string(value % 16) + "}");
    CDlgQueryDeviceAttr single;
    alone.push_back(Query(single, {replies.back()}));
  }
  CDlgQueryDeviceAttr page;
  const std::string text = Query(page, replies);
  size_t at = 0;
  for (size_t i = 0; i < replies.size(); ++i) {
    const std::string block = alone[i].substr(alone[i].find("\r\n"));  // without the vehicle line
    const size_t found = text.find(block, at);
    ASSERT_NE(found, std::string::npos) << "reply " << i << ": " << replies[i];
    at = found + block.size();
  }
  EXPECT_EQ(at, text.size());
}

// Not JSON, not an object, a non-zero "Error" or "result": the failed block, appended in reply order.
TEST_F(AttrQueryTest, BlocksAppendUntilADeviceAttributeQuery) {
  ASSERT_TRUE(hostref::LoadFleet(R"({"vehicles":[{"name":"V1","devices":[{"id":1,"idno":"91001"}]},
      {"name":"V2","devices":[{"id":2,"idno":"91002"}]}, {"name":"","devices":[{"id":3,"idno":"91003"}]}]})"));
  const std::string three = Failed("V1") + Failed("V2") + Failed("91003");
  const struct { int functionType; std::string command, afterNextQuery; } cases[] = {
      {45, "33031", Failed("V1")}, {40, "36867", three + Failed("V1")}};
  for (const auto& c : cases) {
    const PageEntry* entry = pages::Find(c.functionType, PageHost::kVehicleWindow);
    ASSERT_TRUE(entry && pages::Find(c.functionType, PageHost::kFunctionPage)) << c.functionType;
    std::unique_ptr<CBaseDlg> page = entry->make(c.functionType);
    EXPECT_EQ(Query(*page, {"x", R"({"Error":2,"DTYPE":1})", R"({"Error":0,"result":"4"})"}), three) << c.functionType;
    EXPECT_EQ(Query(*page, {"[0]"}), c.afterNextQuery) << c.functionType;
    const hostref::SentRequest last = hostref::net::Sent().back();
    EXPECT_TRUE(last.envelope.starts_with("{\"Command\":" + c.command + ",") && last.param.empty()) << last.envelope;
  }
}

}  // namespace
