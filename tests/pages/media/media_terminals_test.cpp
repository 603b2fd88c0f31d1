// The simulated media terminals: a library per device that snapshots and
// recordings add to, searched by channel, type, event and time, and uploads
// that may delete what they uploaded.
#include <json/json.h>

#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "host/ref/run/terminals/media.h"
#include "host/hostnet.h"
#include "support/page_fixture.h"
#include "text/json.h"

namespace {
using hostref::terminals::MediaLibrary;
using hostref::terminals::UploadedMedia;

constexpr const char* kDevice = "91001";
constexpr int kSnapshot = 0x8801, kSearch = 0x8802, kUpload = 0x8803, kRecord = 0x8804, kSingleUpload = 0x8805;

class MediaTerminalsTest : public TerminalWorld {
 protected:
  // The reply the device gives to a command with a parameter text.
  Json::Value Ask(int command, const std::string& param) { return TerminalWorld::Ask(kDevice, command, param); }
  // The ids a search answers.
  std::vector<int> Search(const std::string& filter) {
    std::vector<int> ids;
    const Json::Value reply = Ask(kSearch, filter);
    for (const Json::Value& item : reply["Item"]) ids.push_back(item["MDID"].asInt());
    return ids;
  }
  static std::vector<int> LibraryIds() {
    std::vector<int> ids;
    for (const auto& media : MediaLibrary(kDevice)) ids.push_back(media.id);
    return ids;
  }
};

TEST_F(MediaTerminalsTest, SearchMatchesChannelTypeEventAndTime) {
  const struct {
    const char* filter;
    std::vector<int> ids;
  } cases[] = {
      {R"({"CHID":0,"METY":0,"EVCO":0})", {1}},
      {R"({"CHID":0,"METY":3,"EVCO":0})", {1, 3}},   // every type
      {R"({"CHID":2,"METY":0,"EVCO":1})", {2}},
      {R"({"CHID":1,"METY":0,"EVCO":1})", {}},
      {R"({"CHID":1,"METY":2,"EVCO":2})", {4}},
      {R"({"CHID":0,"METY":3,"EVCO":0,"BTM":"261123063000","ETM":"261123070000"})", {3}},
      {R"({"CHID":0,"METY":3,"EVCO":0,"BTM":"261123060001","ETM":"000000000000"})", {3}},
      {R"({"CHID":0,"METY":3,"EVCO":0,"BTM":"261124000000"})", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(Search(c.filter), c.ids) << c.filter;
  const Json::Value item = Ask(kSearch, R"({"CHID":1,"METY":2,"EVCO":2})")["Item"][0];
  EXPECT_EQ(item["DTM"].asString(), "2026-11-23 07:30:00");
  EXPECT_EQ(item["SPD"].asInt(), 605);
  EXPECT_EQ(item["Flag"].asInt(), 1);
  EXPECT_EQ(item["STA"].asUInt(), 0x3u | (1u << 18) | (1u << 22));
}

TEST_F(MediaTerminalsTest, SnapshotsAndRecordingsAddItems) {
  const Json::Value shot = Ask(kSnapshot, R"({"CHID":2,"SNOR":3,"SNBT":10})");
  EXPECT_EQ(txt::WriteCompactJson(shot), R"({"Error":0,"MDID":[7,8,9],"result":0})");
  EXPECT_EQ(Search(R"({"CHID":2,"METY":0,"EVCO":0,"BTM":"261123083005","ETM":"261123083025"})"), (std::vector<int>{7, 8, 9}));
  EXPECT_EQ(Search(R"({"CHID":2,"METY":0,"EVCO":0,"BTM":"261123083006","ETM":"261123083015"})"), (std::vector<int>{8}));
  EXPECT_EQ(txt::WriteCompactJson(Ask(kSnapshot, R"({"CHID":1,"SNOR":65535})")["MDID"]), "[10]");
  EXPECT_EQ(txt::WriteCompactJson(Ask(kSnapshot, R"({"CHID":1,"SNOR":0})")["MDID"]), "[]");
  EXPECT_EQ(Ask(kSnapshot, R"({"CHID":5,"SNOR":1})")["result"].asInt(), hostref::terminals::kResultUnsupported);
  Ask(kRecord, R"({"SOOR":1,"SOTI":30})");
  Ask(kRecord, R"({"SOOR":0})");
  EXPECT_EQ(MediaLibrary(kDevice).back().type, 1);
  EXPECT_EQ(LibraryIds(), (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
}

TEST_F(MediaTerminalsTest, UploadsAreKeptAndMayDelete) {
  EXPECT_EQ(Ask(kUpload, R"({"CHID":0,"METY":0,"EVCO":0,"DELA":0})")["result"].asInt(), 0);
  EXPECT_EQ(Ask(kUpload, R"({"CHID":1,"METY":3,"EVCO":0,"DELA":1})")["result"].asInt(), 0);
  EXPECT_EQ(UploadedMedia(kDevice), (std::vector<int>{1, 1, 3}));
  EXPECT_EQ(LibraryIds(), (std::vector<int>{2, 4, 5, 6}));
  EXPECT_EQ(Ask(kSingleUpload, R"({"MDID":5,"DELA":1})")["result"].asInt(), 0);
  EXPECT_EQ(Ask(kSingleUpload, R"({"MDID":5,"DELA":0})")["result"].asInt(), hostref::terminals::kResultFailed);
  EXPECT_EQ(LibraryIds(), (std::vector<int>{2, 4, 6}));
  EXPECT_EQ(Ask(kSingleUpload, "")["result"].asInt(), hostref::terminals::kResultMessageError);
  // Another device keeps its own library.
  EXPECT_EQ(MediaLibrary("91002").size(), 6u);
}

}  // namespace
