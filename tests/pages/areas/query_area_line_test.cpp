// The area and route query: the parameter, each kind's reply as text, the
// every-day time lines, and the failed line for errors, unknown kinds and
// text that is no JSON.
#include "area_support.h"
#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "pages/areas/query_area_line.h"

using areatest::Parse;
using fixture::T;
using Q = CDlgQueryAreaAndLine;

namespace {

std::string L(int label, const std::string& value) { return FormatChineseColon(T(label), value) + "\r\n"; }
std::string L(int label, int value) { return L(label, std::to_string(value)); }
const std::string kPacket = "\r\n\t    ";

class QueryAreaLine : public AreaPageTest {
 protected:
  // The text box after device 2 answered a query with the reply.
  std::string Answer(const std::string& reply) {
    hostref::net::SetReply("91002", reply);
    page->Send(ctl::Get);
    return page->Text(Q::kReplyBox);
  }
  void SetUp() override {
    AreaPageTest::SetUp();
    Open(Q::kFunctionType, areatest::kDevice2019);
  }
};

TEST_F(QueryAreaLine, KindAndIdsAsSent) {
  page->Type(Q::kIdEdit, "1,中");
  EXPECT_EQ(page->Send(ctl::Get), "{\"ATPYE\":1,\"IDS\":\"1,\xD6\xD0\"}");
  page->Click(Q::kRadioRoute);
  page->Click(Q::kQueryAll);
  EXPECT_FALSE(page->Enabled(Q::kIdEdit));
  EXPECT_EQ(page->Send(ctl::Get), R"({"ATPYE":4,"IDS":""})");
  EXPECT_FALSE(page->Enabled(Q::kIdEdit)) << "query all keeps the ids disabled";
  EXPECT_EQ(page->Cell(0, kColDescription), FormatChineseColon(T(12650), T(12654)) + "，" +
                                                 FormatChineseColon(T(12001), T(12657)));
}

TEST_F(QueryAreaLine, RectangleReplyOfOnePacketOfTwoAreas) {
  const std::string text = Answer(
      R"({"Error":0,"result":0,"ATPYE":2,"Count":1,"Item":[{"Setup":1,"Count":2,"Item":[
      {"ID":5,"ATTR":3,"LWD":1,"LJD":2,"RWD":3,"RJD":4,"BTM":"2026-05-01 08:00:00","ETM":"2026-05-02 09:30:00",
       "MSPD":60,"OSTM":5,"NMSPD":40,"ANAME":"北区"},
      {"ID":6,"ATTR":0,"LWD":7,"LJD":8,"RWD":9,"RJD":10,"BTM":"2026-05-01 08:00:00","MSPD":99}]}]})");
  const std::string first = L(12001, 5) + L(12504, "(3)" + T(12401) + "，" + T(12309)) +
                            FormatChineseColon(T(11005) + T(12101), "1") + "\r\n" +
                            FormatChineseColon(T(11005) + T(12102), "2") + "\r\n" +
                            FormatChineseColon(T(11006) + T(12101), "3") + "\r\n" +
                            FormatChineseColon(T(11006) + T(12102), "4") + "\r\n" +
                            L(12408, "2026-05-01 08:00:00") + L(12409, "2026-05-02 09:30:00") + L(12512, 60) +
                            L(12307, 5) + L(12620, 40) + "北区\r\n";
  const std::string second = L(12001, 6) + L(12504, "(0)") + FormatChineseColon(T(11005) + T(12101), "7") + "\r\n" +
                             FormatChineseColon(T(11005) + T(12102), "8") + "\r\n" +
                             FormatChineseColon(T(11006) + T(12101), "9") + "\r\n" +
                             FormatChineseColon(T(11006) + T(12102), "10") + "\r\n";
  EXPECT_EQ(text, L(12650, T(12652)) + L(12655, 1) + kPacket + L(12500, 1) + L(12656, 2) + first + second);
}

TEST_F(QueryAreaLine, CircleEveryDayAndPackets) {
  const std::string text = Answer(
      R"({"ATPYE":1,"Count":3,"Item":[{"Setup":0,"Count":1,"Item":[
      {"ID":1,"ATTR":1,"WD":2,"JD":3,"Radius":70000,"BTM":"2000-00-00 18:00:00","ETM":"2000-00-00 06:30:05"}]},
      {"Setup":0,"Count":5,"Item":[]}]})");
  EXPECT_EQ(text, L(12650, T(12651)) + L(12655, 3) + kPacket + L(12500, 0) + L(12656, 1) + L(12001, 1) +
                      L(12504, "(1)" + T(12401)) + L(12101, 2) + L(12102, 3) + L(12510, 70000) +
                      L(12408, T(12622) + " 18:00:00") + L(12409, T(12622) + " 06:30:05") + kPacket + L(12500, 0) +
                      L(12656, 5))
      << "packets and areas beyond the arrays are not read";
}

TEST_F(QueryAreaLine, PolygonAndRoutePoints) {
  const std::string polygon = Answer(
      R"({"ATPYE":3,"Count":1,"Item":[{"Count":1,"Item":[{"ID":7,"ATTR":0,"PCT":2,
      "PAR":[{"WD":1,"JD":2},{"WD":3,"JD":4}]}]}]})");
  const auto point = [](int lat, int lng) {
    return FormatChineseColon(T(12101), std::to_string(lat)) + "    " + FormatChineseColon(T(12102), std::to_string(lng)) +
           "\r\n";
  };
  EXPECT_EQ(polygon, L(12650, T(12653)) + L(12655, 1) + kPacket + L(12656, 1) + L(12001, 7) + L(12504, "(0)") +
                         L(12410, 2) + point(1, 2) + point(3, 4));

  page->Type(Q::kIdEdit, "");
  const std::string route = Answer(
      R"({"ATPYE":4,"Count":1,"Item":[{"Count":1,"Item":[{"ID":9,"ATTR":4,"PCT":1,"ANAME":"R",
      "PAR":[{"PID":1,"LID":2,"WD":3,"JD":4,"LW":5,"LDA":6,"DOR":7,"DLS":8,"MSPD":9,"LST":10,"NMSPD":11}]}]}]})");
  const std::string block = L(12650, T(12654)) + L(12655, 1) + kPacket + L(12656, 1) + L(12001, 9) +
                            L(12504, "(4)" + T(12403)) + L(12410, 1) + L(12200, 1) + L(12201, 2) + L(12101, 3) +
                            L(12102, 4) + L(12202, 5) + L(12203, "(6)" + T(12309) + "，" + T(12515)) + L(12305, 7) +
                            L(12204, 8) + L(12512, 9) + L(12307, 10) + L(12620, 11) + "R\r\n";
  EXPECT_EQ(route, polygon + Q::kBlockSeparator + block) << "each answer is appended";
}

TEST_F(QueryAreaLine, FailedLine) {
  const std::string failed = FormatChineseColon(T(13421), "B") + "\r\n" + T(11012) + "!!!";
  const struct {
    const char* what;
    std::string reply;
  } cases[] = {
      {"unknown kind", R"({"ATPYE":5,"Count":0})"},
      {"no kind", R"({"Count":0})"},
      {"an error", R"({"Error":0,"result":3,"ATPYE":1})"},
      {"no JSON", "<html>"},
  };
  for (const auto& c : cases) {
    Open(Q::kFunctionType, areatest::kDevice2019);
    EXPECT_EQ(Answer(c.reply), failed) << c.what;
  }
}

}  // namespace
