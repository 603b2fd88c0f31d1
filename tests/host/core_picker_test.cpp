// The device picker answers once with what was set beforehand and keeps a
// copy of its parameter record; tips are recorded and reach the sink.
#include <gtest/gtest.h>

#include <memory>

#include "host/hostcore.h"
#include "host/ref/hostref.h"

namespace {

struct PickerDeleter {
  void operator()(CDevListDataBase* picker) const { DeleteDevListObject(picker); }
};

TEST(Picker, AnswerIsConsumedByOneStartAndTheRecordIsCopied) {
  const int runsBefore = hostref::PickerRuns();
  std::unique_ptr<CDevListDataBase, PickerDeleter> picker(CreateDevListObject());
  ASSERT_NE(picker, nullptr);
  auto param = std::make_unique<_tagFillTreeParamEx_S>();
  param->bytes[0] = 7;
  param->bytes[243] = 9;
  picker->SetParam(param.get());
  param.reset();
  EXPECT_EQ(hostref::LastPickerParam().size(), 244u);
  EXPECT_EQ(hostref::LastPickerParam()[243], 9);

  hostref::SetPickerAnswer(std::vector<int>{3, 1});
  EXPECT_EQ(picker->Start(), 1);
  int* ids = nullptr;
  int count = 0;
  picker->GetMultiVehiID(&ids, &count);
  ASSERT_EQ(count, 2);
  EXPECT_EQ(ids[0], 3);
  EXPECT_EQ(ids[1], 1);
  LIBCOMMON_Release(ids);

  EXPECT_EQ(picker->Start(), 0) << "the answer was consumed";
  hostref::SetPickerAnswer(std::nullopt);
  EXPECT_EQ(picker->Start(), 0);
  picker->GetMultiVehiID(&ids, &count);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(hostref::PickerRuns(), runsBefore + 3);
}

TEST(Picker, PromptAnswersWhenNothingWasSetBeforehand) {
  std::unique_ptr<CDevListDataBase, PickerDeleter> picker(CreateDevListObject());
  int prompted = 0;
  std::optional<std::vector<int>> choice = std::vector<int>{5};
  hostref::SetPickerPrompt([&] {
    ++prompted;
    // The prompt runs without the picker's lock: it may itself ask the picker world.
    hostref::PickerRuns();
    return choice;
  });
  hostref::SetPickerAnswer(std::vector<int>{2});
  EXPECT_EQ(picker->Start(), 1);
  EXPECT_EQ(prompted, 0) << "an answer set beforehand wins";
  EXPECT_EQ(picker->Start(), 1);
  int* ids = nullptr;
  int count = 0;
  picker->GetMultiVehiID(&ids, &count);
  ASSERT_EQ(count, 1);
  EXPECT_EQ(ids[0], 5);
  LIBCOMMON_Release(ids);
  choice = std::nullopt;
  EXPECT_EQ(picker->Start(), 0) << "the user cancelled";
  EXPECT_EQ(prompted, 2);
  hostref::SetPickerPrompt(nullptr);
}

TEST(Tips, RecordedAndPassedToTheSink) {
  hostref::ClearTips();
  std::vector<std::string> seen;
  hostref::SetTipSink([&](const hostref::Tip& tip) { seen.push_back(tip.title + ":" + tip.text); });
  EXPECT_EQ(ShowMsgTipEx("no device", "", 0x40), 1);
  hostref::SetTipSink(nullptr);
  ShowMsgTipEx("second", "T", 0);
  EXPECT_EQ(seen, (std::vector<std::string>{":no device"}));
  ASSERT_EQ(hostref::Tips().size(), 2u);
  EXPECT_EQ(hostref::Tips()[0].flags, 0x40u);
}

}  // namespace
