// The event and information menu pages: rows by setting type, the identifier
// checks, "EVIT", the stored texts and the terminals' lists.
#include <unistd.h>

#include <filesystem>

#include "pages/messaging/events/info_on_demand.h"
#include "pages/messaging/events/setup_event.h"
#include "pages/messaging/events/send_question.h"
#include "pages/messaging/events/events_world.h"

using fixture::T;
using E = CDlgSetupEvent;
using M = CDlgInfoOnDemand;

namespace {

class EventListTest : public EventsWorld {
 protected:
  // Types identifier and text of a row (1 to 4).
  void Row(int row, const std::string& id, const std::string& text) {
    Fill({{E::kIdEdits[row - 1], id}, {E::kTextEdits[row - 1], text}});
  }
  static std::string Stored(int configId, int entry) { return CConfigKestrelINI::ReadIniStrEx(configId, entry); }
};

TEST_F(EventListTest, BoxesFollowTheSettingType) {
  struct Case { int functionType, radio; bool ids, texts; };
  const Case cases[] = {
      {E::kFunctionType, E::kRadioDeleteAll, false, false}, {E::kFunctionType, E::kRadioUpdate, true, true},
      {E::kFunctionType, E::kRadioAppend, true, true},      {E::kFunctionType, E::kRadioModify, true, true},
      {E::kFunctionType, E::kRadioDeleteGiven, true, false}, {M::kFunctionType, M::kRadioDeleteAll, false, false},
      {M::kFunctionType, M::kRadioUpdate, true, true},      {M::kFunctionType, M::kRadioModify, true, true},
  };
  for (const Case& c : cases) {
    Open(c.functionType);
    page->Click(c.radio);
    for (int row = 0; row < CEventListPage::kRows; ++row) {
      EXPECT_EQ(page->Enabled(E::kIdEdits[row]), c.ids) << c.functionType << " radio " << c.radio << " row " << row;
      EXPECT_EQ(page->Enabled(E::kTextEdits[row]), c.texts) << c.functionType << " radio " << c.radio << " row " << row;
    }
  }
  Open(E::kFunctionType);
  EXPECT_TRUE(page->Checked(E::kRadioDeleteAll)) << "the event page starts by deleting all";
  EXPECT_FALSE(page->Enabled(E::kIdEdits[0]));
  Open(M::kFunctionType);
  EXPECT_TRUE(page->Checked(M::kRadioAppend)) << "the menu page starts by appending";
  EXPECT_EQ(page->Text(E::kRowLabels[0]), "ID1") << "the menu's rows keep their own labels";
  EXPECT_EQ(page->Text(CEventListPage::kHint), T(12706));
}

TEST_F(EventListTest, RowsOnTheWire) {
  struct Case {
    const char* what;
    int functionType, radio;
    std::vector<std::pair<std::string, std::string>> rows;  // rows 1..4: identifier, text
    std::string sent;
  };
  const Case cases[] = {
      {"rows 1 and 3", E::kFunctionType, E::kRadioUpdate, {{"7", "刹车"}, {"", "skipped"}, {"9", "50%"}, {"", ""}},
       R"({"Count":2,"EVIT":[{"EVID":7,"TEXT":")" "\xC9\xB2\xB3\xB5" R"("},{"EVID":9,"TEXT":"50%25"}],"SETP":1})"},
      {"an empty text", E::kFunctionType, E::kRadioModify, {{"255", ""}, {"0", "a b"}, {"", ""}, {"", ""}},
       R"({"Count":2,"EVIT":[{"EVID":255,"TEXT":""},{"EVID":0,"TEXT":"a b"}],"SETP":3})"},
      {"menu: INTY and no Count", M::kFunctionType, M::kRadioAppend, {{"", ""}, {"3", "Weather"}, {"", ""}, {"4", "News"}},
       R"({"EVIT":[{"INTY":3,"TEXT":"Weather"},{"INTY":4,"TEXT":"News"}],"SETP":2})"},
  };
  for (const Case& c : cases) {
    Open(c.functionType);
    page->Click(c.radio);
    for (int row = 0; row < 4; ++row) Row(row + 1, c.rows[row].first, c.rows[row].second);
    EXPECT_EQ(page->Send(ctl::Set), c.sent) << c.what;
  }
}

TEST_F(EventListTest, DisabledBoxesStillSendTheirRows) {
  Open(E::kFunctionType);
  page->Click(E::kRadioUpdate);
  Row(1, "5", "kept");
  Row(2, "6", "gone");
  page->Click(E::kRadioDeleteGiven);
  EXPECT_EQ(page->Send(ctl::Set), R"({"Count":2,"EVIT":[{"EVID":5,"TEXT":"kept"},{"EVID":6,"TEXT":"gone"}],"SETP":4})");
  EXPECT_EQ(Description(), Fields({{T(13000), T(13004)}, {T(13006), T(13007) + "1=5;" + T(13007) + "2=6"}}));
  EXPECT_TRUE(page->Enabled(E::kIdEdits[0]) && page->Enabled(E::kRadioUpdate));
  EXPECT_FALSE(page->Enabled(E::kTextEdits[0])) << "the end of the send enables the boxes the type uses, no more";
  page->Click(E::kRadioDeleteAll);
  EXPECT_EQ(page->Send(ctl::Set), R"({"Count":2,"EVIT":[{"EVID":5,"TEXT":"kept"},{"EVID":6,"TEXT":"gone"}],"SETP":0})");
  EXPECT_EQ(Description(), Fields({{T(13000), T(13001)}, {T(13006), ""}}));
}

TEST_F(EventListTest, RefusedIdentifiers) {
  struct Case { const char* what; int functionType, radio; std::vector<std::string> ids; int tip; };
  const Case cases[] = {
      {"no identifier", E::kFunctionType, E::kRadioAppend, {"", "", "", ""}, 12711},
      {"7 and 007 are one number", E::kFunctionType, E::kRadioAppend, {"7", "", "007", ""}, 12705},
      {"duplicates refused when deleting given", E::kFunctionType, E::kRadioDeleteGiven, {"1", "1", "", ""}, 12705},
      {"menu without identifier", M::kFunctionType, M::kRadioModify, {"", "", "", ""}, 12711},
  };
  for (const Case& c : cases) {
    Open(c.functionType);
    page->Click(c.radio);
    for (int row = 0; row < 4; ++row) Fill({{E::kIdEdits[row], c.ids[row]}});
    hostref::ClearTips();
    EXPECT_EQ(page->Send(ctl::Set), "") << c.what;
    EXPECT_EQ(TipTexts(), std::vector<std::string>{T(c.tip)}) << c.what;
  }
  Open(E::kFunctionType);
  page->Click(E::kRadioUpdate);
  Fill({{E::kIdEdits[0], "3"}, {E::kIdEdits[1], "3"}});
  page->Click(E::kRadioDeleteAll);
  hostref::ClearTips();
  EXPECT_EQ(page->Send(ctl::Set), "") << "deleting all still refuses a duplicate";
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(12705)});
  EXPECT_FALSE(page->Enabled(E::kIdEdits[0])) << "a refused send leaves the boxes as the type wants";
}

TEST_F(EventListTest, MenuDescriptionNamesItsRowsById) {
  Open(M::kFunctionType);
  Row(2, "3", "Weather");
  page->Send(ctl::Set);
  EXPECT_EQ(Description(), Fields({{T(13000), T(13005)}, {T(12955), "ID2=3," + T(13008) + "2=Weather"}}));
}

// Every row added records the texts by identifier; deleting all clears the 256 entries.
TEST_F(EventListTest, StoredTextsFollowEachRowAndSurviveARestart) {
  const auto dir = std::filesystem::temp_directory_path() / ("fleetcmd-events-" + std::to_string(::getpid()));
  std::filesystem::remove_all(dir);
  ASSERT_TRUE(hostref::OpenDataDir(dir.string()));
  CConfigKestrelINI::WriteIniStrEx(E::kConfigId, 200, "old");
  Open(E::kFunctionType);
  page->Click(E::kRadioAppend);
  Row(1, "7", "刹车检查");
  Row(2, "8", "到站");
  page->Send(ctl::Set);
  Open(M::kFunctionType);
  Row(1, "3", "天气");
  page->Send(ctl::Set);
  Open(CDlgSendQuition::kFunctionType);
  Fill({{CDlgSendQuition::kAnswerEdits[0], "是"}, {CDlgSendQuition::kAnswerEdits[2], "否"}});
  page->Send(ctl::Set);
  page.reset();

  ASSERT_TRUE(hostref::OpenDataDir(dir.string())) << "the host starts again";
  EXPECT_EQ(std::vector<std::string>({Stored(709, 7), Stored(709, 8), Stored(709, 200), Stored(710, 3)}),
            std::vector<std::string>({"刹车检查", "到站", "old", "天气"}));
  EXPECT_EQ(std::vector<std::string>({Stored(711, 0), Stored(711, 1), Stored(711, 2), Stored(711, 3)}),
            std::vector<std::string>({"是", "", "否", ""}));

  Open(E::kFunctionType);
  page->Click(E::kRadioDeleteGiven);
  Fill({{E::kIdEdits[0], "8"}});
  page->Send(ctl::Set);
  EXPECT_EQ(Stored(709, 8), "");
  EXPECT_EQ(Stored(709, 7), "刹车检查");
  page->Click(E::kRadioDeleteAll);
  page->Send(ctl::Set);
  for (int entry : {0, 7, 200, 255}) EXPECT_EQ(Stored(709, entry), "") << entry;
  EXPECT_EQ(Stored(710, 3), "天气") << "the menu's texts are its own";
  hostref::OpenDataDir("");
  std::filesystem::remove_all(dir);
}

TEST_F(EventListTest, TerminalsKeepTheirListsBySettingType) {
  Open(E::kFunctionType);
  const auto send = [&](int radio, std::vector<std::pair<std::string, std::string>> rows) {
    page->Click(E::kRadioUpdate);  // boxes enabled for typing
    for (int row = 0; row < 4; ++row) {
      const auto& [id, text] = row < static_cast<int>(rows.size()) ? rows[row] : std::pair<std::string, std::string>{};
      Row(row + 1, id, text);
    }
    page->Click(radio);
    page->Send(ctl::Set);
  };
  using List = std::map<int, std::string>;
  send(E::kRadioUpdate, {{"1", "a"}, {"2", "b"}});
  send(E::kRadioAppend, {{"3", "c"}});
  EXPECT_EQ(hostref::terminals::EventList(kPlainIdno), (List{{1, "a"}, {2, "b"}, {3, "c"}}));
  send(E::kRadioModify, {{"2", "B"}, {"9", "unknown"}});
  send(E::kRadioDeleteGiven, {{"1", ""}});
  EXPECT_EQ(hostref::terminals::EventList(kPlainIdno), (List{{2, "B"}, {3, "c"}}));
  send(E::kRadioUpdate, {{"5", "only"}});
  EXPECT_EQ(hostref::terminals::EventList(kPlainIdno), (List{{5, "only"}}));
  send(E::kRadioDeleteAll, {});
  EXPECT_TRUE(hostref::terminals::EventList(kPlainIdno).empty());
  EXPECT_TRUE(hostref::terminals::InfoMenu(kPlainIdno).empty()) << "the menu is another list";
}

}  // namespace
