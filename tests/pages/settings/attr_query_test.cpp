// The attribute query pages turn replies into the exact text blocks.
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/settings/query_audio_video.h"
#include "pages/settings/query_device_attr.h"
#include "support/page_fixture.h"
#include "support/test_page.h"

using fixture::T;

namespace {

std::string L(int label, const std::string& value) { return FormatChineseColon(T(label), value); }

class AttrQueryTest : public PageWorld {
 protected:
  // Sends the page's query to the given devices with their replies; returns the text box.
  std::string Query(CAttrQueryPage& page, const std::vector<std::pair<std::string, std::string>>& replies) {
    if (!page.IsWindow()) {
      EXPECT_TRUE(page.CreateDlg(&host));
      page.ResultList = &host.list;
      page.ShowWindow(plat::SW_SHOW);
    }
    std::vector<int> ids;
    for (const auto& [dev, reply] : replies) {
      hostref::net::SetReply(dev, reply);
      ids.push_back(std::stoi(dev) - 91000);
    }
    hostref::SetPickerAnswer(ids);
    page.PickerMode = TRUE;
    page.Item<plat::Button>(ctl::Get)->Click();
    EXPECT_TRUE(Settle());
    return page.GetItemText(CAttrQueryPage::kResultText);
  }
  TestHost host;
};

TEST_F(AttrQueryTest, AudioVideoBlock) {
  CDlgQueryAudioVideo page;
  const std::string text = Query(page, {{"91001", R"({"ACODE":6,"ACHN":2,"ASR":4,"ASB":3,"AFL":320,"AOUT":1,
                                                    "VCODE":98,"ACHNN":"4","VCHNN":8})"}});
  EXPECT_EQ(text, L(13421, "V1") + "\r\n" + L(15100, "G.711A " + T(13457)) + "\r\n" + L(15101, "2") + "\r\n" +
                      L(15102, "") + "\r\n" + L(15103, "Unknown:3") + "\r\n" + L(15104, "320") + "\r\n" +
                      L(15105, T(15106)) + "\r\n" + L(15108, "H.264 " + T(13458)) + "\r\n" + L(15109, "4") + "\r\n" +
                      L(15110, "8") + "\r\n" + "\r\n\r\n\r\n");
  EXPECT_EQ(hostref::net::Sent()[0].envelope.find("\"Command\":36867") != std::string::npos, true);
}

class AudioVideoCoding : public PageWorld {};

TEST_F(AudioVideoCoding, Names) {
  const std::pair<int, std::string> cases[] = {{6, "G.711A " + T(13457)}, {28, "AMR " + T(13457)},
                                               {101, "SVAC " + T(13458)}, {91, "91"},
                                               {0, ""},                    {200, "Unknown:200"},
                                               {0x100 + 1, "G.721 " + T(13457)}};
  for (const auto& [code, name] : cases) EXPECT_EQ(CDlgQueryAudioVideo::CodingName(code), name) << code;
}

TEST_F(AttrQueryTest, DeviceAttributeBlock) {
  CDlgQueryDeviceAttr page;
  // DSIM carries raw bytes: the first ten are shown as hexadecimal.
  const std::string text = Query(page, {{"91002", "{\"DTYPE\":65,\"MID\":\"\xD6\xD0\",\"DMODEL\":\"M1\",\"DID\":\"ID7\","
                                                  "\"DSIM\":\"\x89\x86\x01" "ABCDEFGH\",\"DHVER\":\"h\",\"DFVER\":\"f\","
                                                  "\"GNSSA\":5,\"COMMA\":128}"}});
  const std::string typeBits = T(13611) + " " + T(13615) + "\r\n\t" + T(13612) + " " + T(13616) + "\r\n\t" + T(13612) +
                               " " + T(13617) + "\r\n\t" + T(13612) + " " + T(13618) + "\r\n\t" + T(13613) + " " +
                               T(13619) + "\r\n\t" + T(13620) + "\r\n\t" + T(13614) + " " + T(13634);
  const std::string gnss = T(13613) + " " + T(13622) + "\r\n\t" + T(13614) + " " + T(13623) + "\r\n\t" + T(13613) + " " +
                           T(13624) + "\r\n\t" + T(13614) + " " + T(13625);
  std::string comm;
  for (int label : {13626, 13627, 13628, 13629, 13630, 13631}) comm += T(13614) + " " + T(label) + "\r\n\t";
  comm += T(13613) + " " + T(13633);
  EXPECT_EQ(text, L(13421, "V2") + "\r\n" + L(13601, typeBits) + "\r\n" + L(13602, "中") + "\r\n" + L(13603, "M1") +
                      "\r\n" + L(13604, "ID7") + "\r\n" + L(13605, "89860141424344454647") + "\r\n" +
                      L(13606, "h") + "\r\n" + L(13607, "f") + "\r\n" + L(13608, gnss) + "\r\n" + L(13609, comm) +
                      "\r\n\r\n\r\n");
}

TEST_F(AttrQueryTest, FailedRepliesBlocksAppendAndANewQueryEmpties) {
  CDlgQueryDeviceAttr page;
  const std::string failed = L(13421, "V3") + "\r\n" + T(11012) + "！！！\r\n\r\n\r\n";
  EXPECT_EQ(Query(page, {{"91003", R"({"Error":0,"result":4})"}}), failed);
  EXPECT_EQ(Query(page, {{"91003", "not json"}}), failed) << "a new query empties the box first";
  EXPECT_EQ(Query(page, {{"91003", R"({"DSIMBCD":"8986"})"}}).find(L(13605, "8986")) != std::string::npos, true);

  CDlgQueryAudioVideo audio;
  const std::string three = Query(audio, {{"91001", "x"}, {"91002", "x"}, {"91003", "x"}});
  EXPECT_EQ(three.size(), 3 * failed.size()) << "three devices, three blocks";
  EXPECT_EQ(Query(audio, {{"91001", "x"}}).size(), 4 * failed.size()) << "the audio/video box keeps growing";
}

}  // namespace
