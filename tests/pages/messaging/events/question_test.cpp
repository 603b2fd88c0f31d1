// The question page and the information service page: numbered answers, the
// answer the terminal reports, the type box.
#include <chrono>

#include "pages/messaging/events/events_world.h"
#include "pages/messaging/events/info_service.h"
#include "pages/messaging/events/send_question.h"

using fixture::T;
using Q = CDlgSendQuition;
using S = CDlgInfoService;

namespace {

class QuestionTest : public EventsWorld {
 protected:
  void SetUp() override {
    EventsWorld::SetUp();
    Open(Q::kFunctionType);
  }
  void Ask(const std::string& question, const std::vector<std::string>& answers) {
    Fill({{Q::kQuestionEdit, question}});
    for (int i = 0; i < Q::kAnswers; ++i) Fill({{Q::kAnswerEdits[i], answers[i]}});
  }
  std::string Expected(const std::string& flags, const std::string& question, const std::string& answers,
                       const std::string& given) {
    return Fields({{T(12954), flags}, {T(13020), question}, {T(13021), answers}, {T(13027), given}});
  }
};

TEST_F(QuestionTest, AnswersAreNumberedOverTheFilledBoxes) {
  struct Case { const char* what; std::vector<int> checks; std::vector<std::string> answers; std::string sent; };
  const Case cases[] = {
      {"boxes 1 and 3", {Q::kCheckUrgent}, {"是", "", "否 50%", ""},
       R"({"ANSL":[{"ASR":0,"TEXT":")" "\xCA\xC7" R"("},{"ASR":1,"TEXT":"%B7%F1+50%25"}],"Flag":1,"QS":"Ready?"})"},
      {"no answers: no ANSL", {Q::kCheckTts, Q::kCheckAdScreen}, {"", "", "", ""}, R"({"Flag":24,"QS":"Ready?"})"},
  };
  for (const Case& c : cases) {
    Open(Q::kFunctionType);
    for (int box : c.checks) page->Click(box);
    Ask("Ready?", c.answers);
    EXPECT_EQ(page->Send(ctl::Set), c.sent) << c.what;
  }
  EXPECT_EQ(Description(), Expected(T(12952) + "，" + T(12953), "Ready?", "", "")) << "flag texts joined";
}

TEST_F(QuestionTest, TheTerminalsAnswerIsShownAndDescribed) {
  Ask("Ready?", {"Yes", "", "No", "Later"});
  page->Pick({kPlain, kSecond});
  page->Send(ctl::Set);
  // Each terminal's driver picks an answer of its own: the first question gets the first answer.
  EXPECT_EQ(page->Text(Q::kGivenEdit), "Yes");
  const std::string answers = T(13021) + "1=Yes;" + T(13021) + "3=No;" + T(13021) + "4=Later";
  EXPECT_EQ(Description(), Expected("", "Ready?", answers, "Yes"));
  page->Pick({kPlain});
  page->Send(ctl::Set);
  EXPECT_EQ(page->Text(Q::kGivenEdit), "No") << "the second question to a terminal gets its second answer";
  const auto asked = hostref::terminals::Questions(kPlainIdno);
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[1].answers, (std::map<int, std::string>{{0, "Yes"}, {1, "No"}, {2, "Later"}}));
  EXPECT_EQ(asked[1].answered, 1);
}

TEST_F(QuestionTest, TheDriverTakesTimeToAnswer) {
  const int delay = hostref::terminals::AnswerDelayMs(Q::kCommand);
  ASSERT_GT(delay, 0);
  EXPECT_EQ(hostref::terminals::AnswerDelayMs(CDlgInfoService::kCommand), 0) << "information is taken at once";
  Ask("Q", {"A", "", "", ""});
  const auto start = std::chrono::steady_clock::now();
  page->Send(ctl::Set);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(delay));
  EXPECT_EQ(page->Text(Q::kGivenEdit), "A");
}

TEST_F(QuestionTest, RepliesWithoutAKnownAnswerKeepTheBox) {
  Ask("Q", {"A", "B", "", ""});
  page->Send(ctl::Set);
  ASSERT_EQ(page->Text(Q::kGivenEdit), "A");
  const char* replies[] = {"not json", R"({"result":0})", R"({"ASR":7})", R"({"ASR":4294967296})", R"({"ASR":"x"})"};
  for (const char* reply : replies) {
    hostref::net::SetReply(kPlainIdno, reply);
    page->Send(ctl::Set);
    EXPECT_EQ(page->Text(Q::kGivenEdit), "A") << reply;
    EXPECT_EQ(Description(), Expected("", "Q", T(13021) + "1=A;" + T(13021) + "2=B", "")) << reply;
  }
  hostref::net::SetReply(kPlainIdno, R"({"ASR":"1","result":3})");
  page->Send(ctl::Set);
  EXPECT_EQ(page->Text(Q::kGivenEdit), "B") << "a failed row still names the answer it carries";
}

TEST_F(QuestionTest, InformationServiceSendsItsType) {
  Open(S::kFunctionType);
  EXPECT_EQ(page->Text(S::kTypeEdit), "0");
  Fill({{S::kTextEdit, "Rain\nahead"}});
  EXPECT_EQ(page->Send(ctl::Set), R"({"INTY":0,"TextInfo":"Rain\r\nahead"})");
  EXPECT_EQ(Description(), Fields({{T(13022), "0"}, {T(13023), "Rain\r\nahead"}}));
  Fill({{S::kTypeEdit, "255"}, {S::kTextEdit, "天气+"}});
  EXPECT_EQ(page->Send(ctl::Set), R"({"INTY":255,"TextInfo":"%CC%EC%C6%F8%2B"})");
  EXPECT_FALSE(page->Type(S::kTypeEdit, "256")) << "the type box keeps its range";
  Fill({{S::kTypeEdit, ""}});
  hostref::ClearTips();
  EXPECT_EQ(page->Send(ctl::Set), "");
  EXPECT_EQ(TipTexts(), std::vector<std::string>{T(13022) + T(12703)});
  const auto infos = hostref::terminals::InfoReceived(kPlainIdno);
  ASSERT_EQ(infos.size(), 2u);
  EXPECT_EQ(infos[1].text, "天气+");
  EXPECT_EQ(infos[1].type, 255);
}

}  // namespace
