// The tachograph record page: word lists and requests of both editions, the
// time-range check, the decoded text of every kind of record (and of empty,
// mistyped and truncated answers), the growing text box, and the simulated
// recorder's time range and block count.
#include <algorithm>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "host/ref/run/settle.h"
#include "host/ref/run/terminals.h"
#include "pages/control/gather_record.h"
#include "support/page_fixture.h"
#include "support/page_harness.h"
#include "text/json.h"

using fixture::T;
using recorder::Edition;
using C = CDlgGatherRecord;

namespace {

std::string L(int label, const std::string& value) { return FormatChineseColon(T(label), value) + "\r\n"; }
std::string C2(int label, const std::string& value) { return FormatChineseColon(T(label), value); }

class GatherRecordTest : public PageWorld {
 protected:
  void SetUp() override {
    PageWorld::SetUp();
    hostref::terminals::Clear();
    hostref::terminals::Install();
  }
  void TearDown() override {
    page.reset();
    PageWorld::TearDown();
    hostref::terminals::Uninstall();
  }
  void Open(Edition edition) {
    CConfigKestrelINI::WriteIniInt(C::kEditionConfig, edition == Edition::k2012 ? 1 : 0);
    page = std::make_unique<PageHarness>(C::kFunctionType);
    ASSERT_TRUE(page->IsOpen());
    page->UseDevice(1);
  }
  plat::ComboBox& Words() { return *page->Page().Item<plat::ComboBox>(C::kWordList); }
  void ChooseWord(int word) { ASSERT_TRUE(page->Select(C::kWordList, Words().FindItemData(static_cast<uint32_t>(word)))); }
  void SetRange(const SYSTEMTIME& begin, const SYSTEMTIME& end) {
    for (auto [id, t] : {std::pair{C::kBeginDate, begin}, std::pair{C::kBeginTime, begin}, std::pair{C::kEndDate, end},
                         std::pair{C::kEndTime, end}}) {
      page->Page().Item<plat::DateTimePicker>(id)->UserSetTime(t);
    }
  }
  std::unique_ptr<PageHarness> page;
};

TEST_F(GatherRecordTest, WordListsAndAllWordsOfEachEdition) {
  struct Case { Edition edition; std::vector<int> words; int version; };
  const Case cases[] = {
      {Edition::k2003, {1, 2, 3, 4, 5, 6, 7, 8, 9, 0x11}, 2003},
      {Edition::k2012, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 0x10, 0x11, 0x12, 0x13, 0x14, 0x15}, 2012},
  };
  for (const Case& c : cases) {
    Open(c.edition);
    ASSERT_EQ(Words().GetCount(), static_cast<int>(c.words.size()) + 1) << c.version;
    EXPECT_EQ(Words().GetLBText(0), T(13313));
    EXPECT_EQ(Words().GetCurSel(), 0);
    EXPECT_EQ(Words().GetLBText(2), T(c.version == 2003 ? 13302 : 13321) + (c.version == 2003 ? "(02H)" : "(01H)"));
    page->Send(ctl::Get);
    const auto params = page->Params();
    ASSERT_EQ(params.size(), c.words.size()) << c.version;
    for (size_t i = 0; i < params.size(); ++i) {
      Json::Value sent;
      ASSERT_TRUE(txt::ParseJson(params[i], sent));
      EXPECT_EQ(std::make_pair(sent["CDID"].asInt(), sent["VER"].asInt()), std::make_pair(c.words[i], c.version));
      EXPECT_EQ(sent.isMember("TIMB"), recorder::IsRecordWord(c.words[i])) << params[i];
    }
    EXPECT_EQ(page->Rows(), static_cast<int>(c.words.size())) << "one row per word";
  }
  EXPECT_EQ(Words().GetLBText(16), T(13335) + "(15H)");
  EXPECT_EQ(Words().GetLBText(9), T(13328) + "(08H)");
}

TEST_F(GatherRecordTest, EditionChoiceIsStoredAndRefillsTheWords) {
  Open(Edition::k2003);
  EXPECT_FALSE(page->Shown(C::kBeginDate));
  ASSERT_TRUE(page->Select(C::kEditionList, 1));
  EXPECT_EQ(CConfigKestrelINI::ReadIniInt(C::kEditionConfig), 1);
  EXPECT_EQ(Words().GetCount(), 17);
  EXPECT_TRUE(page->Shown(C::kBeginDate)) << "all words in 2012 take a range";
  ChooseWord(0x07);
  EXPECT_FALSE(page->Shown(C::kBlockEdit));
  ChooseWord(0x15);
  EXPECT_TRUE(page->Shown(C::kBlockEdit));
  ASSERT_TRUE(page->Select(C::kEditionList, 0));
  EXPECT_EQ(CConfigKestrelINI::ReadIniInt(C::kEditionConfig), 0);
  EXPECT_EQ(Words().GetCount(), 11);
}

TEST_F(GatherRecordTest, RequestKeysAndTheTimeRangeCheck) {
  Open(Edition::k2012);
  SetRange({2026, 11, 0, 20, 6, 0, 0, 0}, {2026, 11, 0, 22, 18, 30, 0, 0});
  ASSERT_TRUE(page->Type(C::kBlockEdit, "5"));
  ChooseWord(0x08);
  EXPECT_EQ(page->Send(ctl::Get), R"({"CDID":8,"LEN":5,"TIMB":"2026-11-20 06:00:00","TIME":"2026-11-22 18:30:00","VER":2012})");
  ChooseWord(0x01);
  EXPECT_EQ(page->Send(ctl::Get), R"({"CDID":1,"VER":2012})");
  ChooseWord(0x12);
  SetRange({2026, 11, 0, 22, 18, 30, 0, 0}, {2026, 11, 0, 22, 18, 30, 0, 0});
  ASSERT_TRUE(page->Type(C::kBlockEdit, "99999"));
  EXPECT_EQ(page->Text(C::kBlockEdit), "65635");
  page->Type(C::kBlockEdit, "5");
  EXPECT_EQ(page->Send(ctl::Get), "");
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(12411)});
  page->Select(C::kEditionList, 0);
  ChooseWord(0x08);
  EXPECT_EQ(page->Send(ctl::Get), R"({"CDID":8,"LEN":5,"TIMB":"2026-11-22 18:30:00","TIME":"2026-11-22 18:30:00","VER":2003})")
      << "the 2003 edition is not checked";
}

struct DecodeCase {
  const char* what;
  Edition edition;
  int word;
  std::string answer, text;
};

TEST_F(GatherRecordTest, DecodesEveryKindOfAnswer) {
  const std::string heads = T(12102) + "\t" + T(12101) + "\t" + T(20013) + "\t" + T(20004) + "\r\n";
  const DecodeCase cases[] = {
      {"2003 driver", Edition::k2003, 0x01, R"({"GDI":123456,"GCP":"L9"})", L(13426, "123456") + L(20000, "L9")},
      {"2003 mileage in tenths", Edition::k2003, 0x03, R"({"MILE":12345,"DTM":"26-11-20 10:00:00"})",
       L(20001, "2026-11-20 10:00:00") + L(20002, "1234.5 " + T(20012))},
      {"2003 coefficient", Edition::k2003, 0x04, R"({"FEA":"3600"})", L(20003, "3600")},
      {"2003 vehicle, plate from the terminal's code page", Edition::k2003, 0x06,
       "{\"VIN\":\"V1\",\"CARID\":\"\xD4\xC1" "B1\",\"SORT\":\"k\"}", L(20007, "V1") + L(20005, "粤B1") + L(20006, "k")},
      {"2003 speeds", Edition::k2003, 0x05, R"({"DTM":"2026-11-20 10:00:00","Item":[{"SPD":50},{"SPD":"x"}]})",
       L(20001, "2026-11-20 10:00:00") + "001\t\t50 km/h \r\n002\t\t0 km/h \r\n"},
      {"2003 accident samples", Edition::k2003, 0x07, R"({"DTM":"2026-11-20 10:00:00","Item":[{"SPD":7,"SIN":3}]})",
       L(20001, "2026-11-20 10:00:00") + "001 " + C2(20008, "03") + "\t\t" + C2(20004, "7") + " km/h \r\n"},
      {"2003 two-day speeds", Edition::k2003, 0x09, R"({"Item":[{"SPD":9}]})",
       L(20001, "") + " 1\t" + T(20004) + "\t\t9 km\\h \r\n"},
      {"2003 overtime", Edition::k2003, 0x11, R"({"GDI":5,"Item":[{"BTM":"2026-11-20 07:00:00","ETM":"2026-11-20 11:30:00"}]})",
       L(20009, "5") + C2(20010, "2026-11-20 07:00:00") + "\t\t" + C2(20011, "2026-11-20 11:30:00") + "\r\n"},
      {"2012 standard", Edition::k2012, 0x00, R"({"VER":2012,"YEAR":12,"MODNUM":0})", L(20103, "12") + L(20104, "0")},
      {"2012 mileage", Edition::k2012, 0x03,
       R"({"VER":2012,"RDTM":"2026-11-23 08:30:05","IDTM":"2024-03-15 09:00:00","INITMILE":1200,"MILE":1234567})",
       L(20001, "2026-11-23 08:30:05") + L(20105, "2024-03-15 09:00:00") + L(20106, "120.0 " + T(20012)) +
           L(20107, "123456.7 " + T(20012))},
      {"2012 signals, D7 first", Edition::k2012, 0x06,
       R"({"VER":2012,"DTM":"2026-11-20 10:00:00","SIN":3,"Item":[{"SINNM0":"a","SINNM7":"h"}]})",
       L(20001, "2026-11-20 10:00:00") + L(20109, "03") + T(20200) + "\r\nD7=h\tD6=\tD5=\tD4=\r\nD3=\tD2=\tD1=\tD0=a\r\n"},
      {"2012 identity", Edition::k2012, 0x07,
       R"({"VER":2012,"CCCCODE":"C1","MODE":"M","YEAR":2024,"MONTH":3,"DAY":1,"SERNM":"77"})",
       L(20111, "C1") + L(20112, "M") + L(20113, "2024-3-1") + L(20114, "77")},
      {"2012 speed record ends at 65535", Edition::k2012, 0x08,
       R"({"VER":2012,"Item":[{"DTM":"2026-11-20 10:00:00","SPDSGN":[15363,65535,1]}]})",
       T(20201) + "\r\n" + C2(12408, "2026-11-20 10:00:00") + "\r\n1\t" + C2(20008, "03") + "\t" + C2(20004, "60") +
           "\r\n\r\n"},
      {"2012 positions: degrees, unknowns, the end mark", Edition::k2012, 0x09,
       R"({"VER":2012,"Item":[{"DTM":"2026-11-20 10:00:00","POS":[{"JD":69120000,"WD":13524000,"GAODU":65534,"SPD":60},
          {"JD":-1,"WD":4294967295,"GAODU":0,"SPD":255},{"JD":-1,"WD":-1,"GAODU":65535,"SPD":255},{"JD":1,"WD":1}]}]})",
       T(20202) + "\r\n" + C2(12408, "2026-11-20 10:00:00") + "\r\n" + heads + "115.2000\t22.5400\t-2\t60\r\n" + T(12103) +
           "\t" + T(12103) + "\t0\t" + T(12103) + "\r\n"},
      {"2012 overtime", Edition::k2012, 0x11,
       R"({"VER":2012,"Item":[{"GCP":"L","BTM":"2026-11-20 07:00:00","ETM":"2026-11-20 11:30:00",
          "POS":[{"JD":600000,"WD":600000,"GAODU":10},{"JD":-1,"WD":1200000,"GAODU":-5}]}]})",
       T(20206) + "\r\n" + L(20009, "L") + L(20118, "2026-11-20 07:00:00") + L(20119, "2026-11-20 11:30:00") + T(20120) +
           " " + C2(12102, "1.0000") + "  " + C2(12101, "1.0000") + "  " + C2(20013, "10") + "\r\n" + T(20121) + " " +
           C2(12102, T(12103)) + "  " + C2(12101, "2.0000") + "  " + C2(20013, "-5") + "\r\n\r\n"},
      {"2012 log-ins, other events in hex", Edition::k2012, 0x12,
       R"({"VER":2012,"Item":[{"DTM":"2026-11-20 07:00:00","GCP":"L1","STA":1},{"DTM":"x","GCP":"L2","STA":5}]})",
       T(20207) + "\r\n" + L(20122, "2026-11-20 07:00:00") + L(20009, "L1") + L(20123, T(12104)) + "\r\n" + T(20207) +
           "\r\n" + L(20122, "x") + L(20009, "L2") + L(20123, "05") + "\r\n"},
      {"2012 power", Edition::k2012, 0x13, R"({"VER":2012,"Item":[{"DTM":"2026-11-20 07:00:00","STA":2}]})",
       T(20208) + "\r\n" + L(20122, "2026-11-20 07:00:00") + L(20123, T(20125)) + "\r\n"},
      {"2012 parameter change named", Edition::k2012, 0x14, R"({"VER":2012,"Item":[{"DTM":"2026-11-20 07:00:00","STA":130}]})",
       T(20209) + "\r\n" + L(20122, "2026-11-20 07:00:00") + L(20123, "82 " + T(20144)) + "\r\n"},
      {"2012 speed status", Edition::k2012, 0x15,
       R"({"VER":2012,"Item":[{"STA":2,"BTM":"2026-11-20 08:00:00","ETM":"2026-11-20 08:00:59","SPD":[15418]}]})",
       T(20210) + "\r\n" + L(20128, T(20130)) + L(20131, "2026-11-20 08:00:00") + L(20132, "2026-11-20 08:00:59") +
           T(13431) + "\t" + T(20126) + "\t" + T(20127) + "\r\n00\t60\t58\r\n\r\n"},
      {"an answer of the other edition (2012 page)", Edition::k2012, 0x01, R"({"VER":2003,"GCP":"L"})", T(20102)},
      {"an answer of the other edition (2003 page)", Edition::k2003, 0x01, R"({"VER":2012,"GCP":"L"})", T(20101)},
      {"the clock is never checked", Edition::k2012, 0x02, R"({"DTM":"2026-11-23 08:30:05"})", L(20001, "2026-11-23 08:30:05")},
      {"an empty answer", Edition::k2012, 0x12, R"({"VER":2012})", ""},
      {"an empty accident answer keeps its title", Edition::k2012, 0x10, R"({"VER":2012,"Item":[]})", T(20203) + "\r\n"},
      {"mistyped records are skipped", Edition::k2012, 0x13, R"({"VER":2012,"Item":[5,"x",{"STA":"1"}]})",
       T(20208) + "\r\n" + L(20122, "") + L(20123, T(20124)) + "\r\n"},
      {"records that are no list", Edition::k2012, 0x09, R"({"VER":2012,"Item":{"POS":1}})", ""},
      {"a truncated position record", Edition::k2012, 0x09, R"({"VER":2012,"Item":[{"POS":[{"JD":600000}, 7]}]})",
       T(20202) + "\r\n" + C2(12408, "") + "\r\n" + heads + "1.0000\t0.0000\t0\t0\r\n0.0000\t0.0000\t0\t0\r\n"},
      {"mistyped samples", Edition::k2012, 0x08, R"({"VER":2012,"Item":[{"SPDSGN":"x"},{"SPDSGN":[true]}]})",
       T(20201) + "\r\n" + C2(12408, "") + "\r\n\r\n" + T(20201) + "\r\n" + C2(12408, "") + "\r\n1\t" + C2(20008, "01") +
           "\t" + C2(20004, "0") + "\r\n\r\n"},
  };
  for (const DecodeCase& c : cases) {
    Json::Value answer;
    ASSERT_TRUE(txt::ParseJson(c.answer, answer)) << c.what;
    EXPECT_EQ(recorder::DecodeAnswer(c.edition, c.word, answer), c.text) << c.what;
  }
}

TEST_F(GatherRecordTest, AnswersAppendToTheBoxAndDescribeTheRows) {
  ASSERT_TRUE(hostref::LoadFleet(R"({"vehicles":[{"name":"V1","devices":[{"id":1,"idno":"91001"}]},
      {"name":"V2","devices":[{"id":2,"idno":"91002"}]},{"name":"","devices":[{"id":3,"idno":"91003"}]},
      {"name":"V4","devices":[{"id":4,"idno":"91004"}]}]})"));
  Open(Edition::k2012);
  ChooseWord(0x01);
  hostref::net::SetReply("91001", R"({"VER":2012,"GCP":"L1"})");
  hostref::net::SetReply("91002", R"({"Error":0,"result":3})");
  hostref::net::SetReply("91003", "not json");
  hostref::net::SetStatus("91004", 101);
  // Answers in the order sent.
  const auto query = [&] {
    hostref::SetPickerAnswer(std::vector<int>{1, 2, 3, 4});
    page->Page().PickerMode = TRUE;
    hostref::net::SetHeld(true);
    page->Page().Item<plat::Button>(ctl::Get)->Click();
    hostref::RunFor(CBaseDlg::kFirstSendDelayMs);
    hostref::net::ReleaseAll();
    ASSERT_TRUE(Settle());
  };
  query();
  const std::string name = T(13321) + "(01H)\r\n";
  const auto block = [&](const std::string& vehicle, const std::string& text) {
    return "\r\n" + FormatChineseColon(GetLanguageStr(1), vehicle) + "\r\n" + name + text + "\r\n";
  };
  const std::string expected = block("V1", L(20009, "L1")) + block("V2", IDIRErrorString(3)) +
                               block("91003", T(20102)) + block("V4", IDIRErrorString(101));
  EXPECT_EQ(page->Text(C::kInfoText), expected);
  ASSERT_EQ(page->Rows(), 4);
  EXPECT_EQ(page->Cell(3, kColDescription), name + L(20009, "L1") + "\r\n");
  EXPECT_EQ(page->Cell(0, kColDescription), name + IDIRErrorString(101) + "\r\n");
  query();
  EXPECT_EQ(page->Text(C::kInfoText), expected) << "a new get empties the box first";
}

// The simulated recorder: records newest first, inside the range, at most the block count.
TEST_F(GatherRecordTest, RecorderHonoursRangeAndBlockCount) {
  Open(Edition::k2012);
  struct Case { int word; const char* blocks; SYSTEMTIME begin, end; size_t count; };
  const Case cases[] = {
      {0x08, "99", {2026, 11, 0, 22, 0, 0, 0, 0}, {2026, 11, 0, 22, 23, 0, 0, 0}, 99},
      {0x09, "5", {2026, 11, 0, 15, 0, 0, 0, 0}, {2026, 11, 0, 23, 8, 30, 0, 0}, 5},
      {0x12, "99", {2026, 11, 0, 21, 0, 0, 0, 0}, {2026, 11, 0, 21, 23, 59, 59, 0}, 4},
      {0x13, "0", {2026, 11, 0, 21, 0, 0, 0, 0}, {2026, 11, 0, 21, 23, 59, 59, 0}, 0},
      {0x10, "99", {2026, 11, 0, 23, 0, 0, 0, 0}, {2026, 11, 0, 23, 8, 30, 0, 0}, 0},
      {0x11, "99", {2026, 11, 0, 16, 0, 0, 0, 0}, {2026, 11, 0, 23, 8, 30, 0, 0}, 7},
  };
  for (const Case& c : cases) {
    ChooseWord(c.word);
    SetRange(c.begin, c.end);
    page->Type(C::kBlockEdit, c.blocks);
    hostref::net::ClearSent();
    page->Page().Item<plat::Button>(ctl::Get)->Click();
    ASSERT_TRUE(Settle());
    ASSERT_EQ(hostref::net::Sent().size(), 1u);
    const std::string text = page->Text(C::kInfoText);
    const size_t titles = [&] {
      size_t n = 0;
      const std::string title = T(c.word == 0x09 ? 20202 : c.word == 0x08 ? 20201 : c.word == 0x12 ? 20207
                                  : c.word == 0x13 ? 20208 : c.word == 0x10 ? 20115 : 20118);
      for (size_t at = text.find(title); at != std::string::npos; at = text.find(title, at + 1)) ++n;
      return n;
    }();
    EXPECT_EQ(titles, c.count) << "word " << c.word;
  }
}

// Every record the recorder gives for a range lies inside it, newest first.
TEST_F(GatherRecordTest, RecorderRecordsLieInsideTheRange) {
  Open(Edition::k2012);
  ChooseWord(0x12);
  SetRange({2026, 11, 0, 19, 12, 0, 0, 0}, {2026, 11, 0, 21, 12, 0, 0, 0});
  page->Type(C::kBlockEdit, "99");
  page->Send(ctl::Get);
  const std::string text = page->Text(C::kInfoText);
  std::vector<std::string> times;
  const std::string label = FormatChineseColon(T(20122), "");
  for (size_t at = text.find(label); at != std::string::npos; at = text.find(label, at + 1)) {
    times.push_back(text.substr(at + label.size(), 19));
  }
  ASSERT_EQ(times.size(), 8u) << text;
  EXPECT_TRUE(std::is_sorted(times.rbegin(), times.rend()));
  EXPECT_GE(times.back(), "2026-11-19 12:00:00");
  EXPECT_LE(times.front(), "2026-11-21 12:00:00");
}

}  // namespace
