// The simulated control terminals and the recorder: what they refuse as a
// terminal decoding the message would, what they keep, and what reads back.
#include "host/hostnet.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"
#include "support/page_fixture.h"
#include "text/json.h"

namespace {

class ControlTerminalsTest : public TerminalWorld {
 protected:
  // The reply object device 91001 gives to a command with a parameter text.
  Json::Value Ask(int command, const std::string& param) { return TerminalWorld::Ask("91001", command, param); }
};

TEST_F(ControlTerminalsTest, ResultsOfWellAndBadlyFormedCommands) {
  struct Case { int command; std::string param; int result; };
  const Case cases[] = {
      {0x8500, R"({"CTLA":1})", 0},           {0x8500, R"({"CTLA":2})", 2},
      {0x8500, R"({"CTLA":1,"Type":4})", 2},  {0x8500, "x", 2},
      {0x8F00, R"({"CTLA":2})", 0},           {0x8F00, R"({"CTLA":3})", 2},
      {0x8105, R"({"Command":4})", 0},        {0x8105, R"({"Command":9})", 2},
      {0x8105, R"({"Command":8,"Flag":60})", 0}, {0x8105, R"({"Command":8,"Flag":0})", 2},
      {0x8B0A, "", 0},                        {0x8B0B, R"({"a":1})", 2},
      {0xA006, R"({"DTM":"2026-12-01 08:00:00","STA":85})", 0}, {0xA006, R"({"DTM":"soon","STA":1})", 2},
      {0x8900, R"({"CMC":"x","CMT":255})", 0}, {0x8900, R"({"CMC":"x","CMT":256})", 2},
      {0x8A00, R"({"E":65537,"N_S":"AB"})", 0}, {0x8A00, R"({"E":65537,"N_S":""})", 2},
      {0x8204, "", 0},                        {0x8702, "", 0},
      {0x8202, R"({"POTR":60,"TIBT":5})", 0}, {0x8202, R"({"POTR":60,"TIBT":70000})", 2},
      {0x8202, R"({"ATTR":256,"POTR":60,"TIBT":5})", 2},
      {0x8700, R"({"CDID":32,"VER":2012})", 3}, {0x8700, R"({"CDID":0,"VER":2003})", 3},
      {0x8700, R"({"CDID":1,"VER":2020})", 2}, {0x8700, R"({"CDID":9,"VER":2012,"TIMB":"x"})", 2},
      {0x8701, R"({"CDID":153})", 3},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Ask(c.command, c.param)["result"].asInt(), c.result) << std::hex << c.command << " " << c.param;
  }
}

// The answer to a vehicle control is the status word that follows from every control so far.
TEST_F(ControlTerminalsTest, VehicleControlStatusAccumulates) {
  const std::pair<std::string, int> steps[] = {
      {R"({"CTLA":1})", 0x1000}, {R"({"CTLA":1,"Type":0})", 0x1400}, {R"({"CTLA":1,"Type":1})", 0x1C00},
      {R"({"CTLA":0,"Type":2})", 0x0C00}, {R"({"CTLA":0,"Type":3})", 0}};
  for (const auto& [param, status] : steps) EXPECT_EQ(Ask(0x8500, param)["Status"].asInt(), status) << param;
}

// What the parameter download writes, the data collection reads back (the edition only for the 2012 words).
TEST_F(ControlTerminalsTest, RecorderWritesReadBack) {
  Ask(0x8701, R"({"CDID":129,"GDI":42,"GCP":"L42"})");
  Json::Value driver = Ask(0x8700, R"({"CDID":1})");
  EXPECT_EQ(std::make_tuple(driver["GDI"].asInt(), driver["GCP"].asString(), driver["VER"].asInt()),
            std::make_tuple(42, std::string("L42"), 0));
  Ask(0x8701, R"({"CDID":195,"VER":2003,"FEA":4000})");
  EXPECT_EQ(Ask(0x8700, R"({"CDID":4,"VER":2003})")["FEA"].asInt(), 4000);
  Ask(0x8701, R"({"CDID":194,"YEAR":2027,"MONTH":2,"DAY":3,"HOUR":4,"MIN":5,"SEC":6})");
  EXPECT_EQ(Ask(0x8700, R"({"CDID":2})")["DTM"].asString(), "2027-02-03 04:05:06");
  Ask(0x8701, R"({"CDID":196,"INITMILE":"00001234"})");
  EXPECT_EQ(Ask(0x8700, R"({"CDID":3,"VER":2012})")["INITMILE"].asInt(), 1234);
  Ask(0x8701, R"({"CDID":132,"SINNM3":"Brake%2B"})");
  EXPECT_EQ(Ask(0x8700, R"({"CDID":6,"VER":2012})")["Item"][0]["SINNM3"].asString(), "Brake+");
  EXPECT_EQ(Ask(0x8700, R"({"CDID":6})")["VIN"].asString().size(), 17u) << "the 2003 vehicle members as well";
}

// Position records: at most sixty positions an hour, each hour's record inside the range.
TEST_F(ControlTerminalsTest, PositionRecordsAreWholeHours) {
  const Json::Value answer =
      Ask(0x8700, R"({"CDID":9,"VER":2012,"TIMB":"2026-11-20 00:00:00","TIME":"2026-11-20 23:59:59","LEN":99})");
  const Json::Value& items = answer["Item"];
  ASSERT_EQ(items.size(), 10u) << "five hours in each of the day's two trips";
  for (const Json::Value& item : items) {
    const std::string time = item["DTM"].asString();
    EXPECT_TRUE(time.starts_with("2026-11-20 ") && time.ends_with(":00:00")) << time;
    EXPECT_LE(item["POS"].size(), 60u);
  }
  EXPECT_GT(items[0]["DTM"].asString(), items[9]["DTM"].asString()) << "newest first";
}

}  // namespace
