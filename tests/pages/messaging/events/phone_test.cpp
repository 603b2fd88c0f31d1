// The call-back and phone book pages in both forms: flags, contacts, checks,
// descriptions and the terminals' phone books.
#include "pages/messaging/events/call_phone.h"
#include "pages/messaging/events/events_world.h"
#include "pages/messaging/events/setup_phone.h"

using fixture::T;
using P = CPhoneBookPage;
using P905 = CDlgSetupPhone905;

namespace {

class PhoneTest : public EventsWorld {
 protected:
  void Contact(int row, const std::string& name, const std::string& phone, int flagIndex = 0) {
    Fill({{P::kNameEdits[row - 1], name}, {P::kPhoneEdits[row - 1], phone}});
    ASSERT_TRUE(page->Select(P::kFlagCombos[row - 1], flagIndex));
  }
};

TEST_F(PhoneTest, CallBackFlags) {
  struct Case { const char* what; int functionType; std::vector<int> clicks; int comboIndex; std::string sent; std::vector<std::string> flagItems; };
  const Case cases[] = {
      {"normal call", CDlgCallPhone::kFunctionType, {}, 0, R"({"Flag":0,"PHONE":"13800138000"})", {T(13025)}},
      {"listening", CDlgCallPhone::kFunctionType, {}, 1, R"({"Flag":1,"PHONE":"13800138000"})", {T(13026)}},
      {"taxi: GSM normal call", CDlgCallPhone905::kFunctionType, {}, -1, R"({"Flag":0,"PHONE":"13800138000"})",
       {T(13025), T(13028)}},
      {"taxi: listening to a VoIP number", CDlgCallPhone905::kFunctionType,
       {CDlgCallPhone905::kRadioListen, CDlgCallPhone905::kRadioVoip}, -1, R"({"Flag":129,"PHONE":"13800138000"})",
       {T(13026), T(13029)}},
  };
  for (const Case& c : cases) {
    Open(c.functionType, kTaxi);
    for (int radio : c.clicks) page->Click(radio);
    if (c.comboIndex >= 0) page->Select(CDlgCallPhone::kFlagCombo, c.comboIndex);
    Fill({{CCallBackPage::kPhoneEdit, "13800138000"}});
    EXPECT_EQ(page->Send(ctl::Set), c.sent) << c.what;
    std::string expected;
    AddChineseStringStatus(expected, FormatChineseColon(T(12954), c.flagItems[0]));
    if (c.flagItems.size() > 1) AddChineseStringStatus(expected, c.flagItems[1]);
    AddChineseStringStatus(expected, FormatChineseColon(T(13024), "13800138000"));
    EXPECT_EQ(Description(), expected) << c.what;
    EXPECT_EQ(page->Cell(0, kColResult), T(11008)) << c.what << ": the taxi terminal takes it";
  }
  EXPECT_EQ(hostref::terminals::Calls(kTaxiIdno).back().flag, 129);
  page->Type(CCallBackPage::kPhoneEdit, "12a");
  EXPECT_EQ(page->Text(CCallBackPage::kPhoneEdit), "12") << "digits only";
  Fill({{CCallBackPage::kPhoneEdit, ""}});
  hostref::ClearTips();
  EXPECT_EQ(page->Send(ctl::Set), "");
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(13024) + T(12703)});
}

TEST_F(PhoneTest, APlainTerminalRefusesAVoipNumber) {
  Open(CDlgCallPhone905::kFunctionType, kPlain);
  page->Click(CDlgCallPhone905::kRadioVoip);
  Fill({{CCallBackPage::kPhoneEdit, "10086"}});
  page->Send(ctl::Set);
  EXPECT_EQ(page->Cell(0, kColResult), "[" + T(11004) + "]" + IDIRErrorString(2));
  EXPECT_TRUE(hostref::terminals::Calls(kPlainIdno).empty());
}

TEST_F(PhoneTest, ContactsOnTheWire) {
  struct Row { std::string name, phone; int flagIndex; bool voip; };
  struct Case { const char* what; int functionType, radio; std::vector<Row> rows; std::string sent; };
  const Case cases[] = {
      {"names encoded, numbers as typed, a number without a name dropped", CDlgSetupPhone::kFunctionType,
       P::kRadioUpdate, {{"张三", "13800000001", 0, false}, {"", "555", 1, false}, {"A+B", "110", 2, false}},
       R"({"PHIT":[{"Flag":1,"LIMN":")" "\xD5\xC5\xC8\xFD" R"(","PHONE":"13800000001"},{"Flag":3,"LIMN":"A%2BB","PHONE":"110"}],"SETP":1})"},
      {"no names: no PHIT", CDlgSetupPhone::kFunctionType, P::kRadioModify, {{"", "1", 0, false}},
       R"({"SETP":3})"},
      {"taxi: both directions on a VoIP number", P905::kFunctionType, P::kRadioAppend,
       {{"Office", "6001", 2, true}, {"Home", "6002", 1, false}},
       R"({"PHIT":[{"Flag":131,"LIMN":"Office","PHONE":"6001"},{"Flag":2,"LIMN":"Home","PHONE":"6002"}],"SETP":2})"},
  };
  for (const Case& c : cases) {
    Open(c.functionType, kTaxi);
    page->Click(c.radio);
    for (size_t i = 0; i < c.rows.size(); ++i) {
      Contact(static_cast<int>(i) + 1, c.rows[i].name, c.rows[i].phone, c.rows[i].flagIndex);
      if (c.rows[i].voip) page->Click(P905::kVoipRadios[i]);
    }
    EXPECT_EQ(page->Send(ctl::Set), c.sent) << c.what;
  }
}

TEST_F(PhoneTest, RefusedContacts) {
  struct Case { const char* what; std::vector<std::pair<std::string, std::string>> rows; std::string tip; };
  const Case cases[] = {
      {"second contact without a number", {{"A", "1"}, {"B", ""}}, T(13104) + "2" + T(13109)},
      {"the same name twice", {{"A", "1"}, {"", ""}, {"A", "2"}}, T(12707)},
  };
  for (const Case& c : cases) {
    Open(CDlgSetupPhone::kFunctionType);
    for (size_t i = 0; i < c.rows.size(); ++i) Contact(static_cast<int>(i) + 1, c.rows[i].first, c.rows[i].second);
    hostref::ClearTips();
    EXPECT_EQ(page->Send(ctl::Set), "") << c.what;
    EXPECT_EQ(TipTexts(), std::vector<std::string>{c.tip}) << c.what;
  }
  Open(CDlgSetupPhone::kFunctionType);
  Contact(1, "Ann", "1");
  Contact(2, "ann", "2");
  EXPECT_NE(page->Send(ctl::Set), "") << "names that differ in letter case are different";
  Contact(2, "Ann", "");
  page->Click(P::kRadioDeleteAll);
  EXPECT_EQ(page->Send(ctl::Set), R"({"PHIT":[{"Flag":1,"LIMN":"Ann","PHONE":"1"},{"Flag":1,"LIMN":"Ann","PHONE":""}],"SETP":0})")
      << "deleting all checks nothing and still sends the named rows";
  EXPECT_EQ(Description(), Fields({{T(13000), T(13100)}, {T(13104), ""}}));
}

TEST_F(PhoneTest, DescriptionsOfBothForms) {
  Open(CDlgSetupPhone::kFunctionType);
  Contact(1, "A", "1", 2);
  Contact(3, "C", "3", 1);
  page->Send(ctl::Set);
  const std::string both = T(13108) + "/" + T(13107);
  EXPECT_EQ(Description(),
            Fields({{T(13000), T(13101)},
                    {T(13104), T(13104) + "1=A," + T(12954) + "=" + both + "," + T(13024) + "=1;" + T(13104) + "3=C," +
                                   T(12954) + "=" + T(13107) + "," + T(13024) + "=3"}}));

  Open(P905::kFunctionType, kTaxi);
  Contact(2, "B", "2", 0);
  page->Click(P905::kVoipRadios[1]);
  page->Send(ctl::Set);
  std::string contacts;
  AddChineseStringStatus(contacts, FormatChineseColon(T(13104) + "2", "B"));
  AddChineseStringStatus(contacts, FormatChineseColon(T(12954), T(13108)));
  AddChineseStringStatus(contacts, T(13029));
  AddChineseStringStatus(contacts, FormatChineseColon(T(13024), "2"));
  contacts += "\r\n";
  EXPECT_EQ(Description(), Fields({{T(13000), T(13101)}, {T(13104), contacts}}));
}

TEST_F(PhoneTest, TerminalsKeepTheirPhoneBooks) {
  Open(CDlgSetupPhone::kFunctionType);
  const auto send = [&](int radio, std::vector<std::pair<std::string, std::string>> rows) {
    for (int row = 0; row < P::kRows; ++row) {
      const auto& [name, phone] = row < static_cast<int>(rows.size()) ? rows[row] : std::pair<std::string, std::string>{};
      Contact(row + 1, name, phone);
    }
    page->Click(radio);
    page->Send(ctl::Set);
  };
  const auto book = [&] {
    std::vector<std::string> entries;
    for (const auto& c : hostref::terminals::PhoneBook(kPlainIdno)) entries.push_back(c.name + "=" + c.phone);
    return entries;
  };
  send(P::kRadioUpdate, {{"A", "1"}, {"B", "2"}});
  send(P::kRadioAppend, {{"C", "3"}});
  send(P::kRadioModify, {{"B", "22"}, {"Z", "9"}});
  EXPECT_EQ(book(), (std::vector<std::string>{"A=1", "B=22", "C=3"}));
  send(P::kRadioUpdate, {{"D", "4"}});
  EXPECT_EQ(book(), (std::vector<std::string>{"D=4"}));
  send(P::kRadioDeleteAll, {});
  EXPECT_TRUE(book().empty());
}

}  // namespace
