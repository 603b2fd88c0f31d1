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

// Every run shows its record to the observer; only a run without an answer asks the fallback.
TEST(Picker, ObserverSeesEveryRunAndTheFallbackAnswersWhenNothingWasSet) {
  std::unique_ptr<CDevListDataBase, PickerDeleter> picker(CreateDevListObject());
  ASSERT_NE(picker, nullptr);
  auto param = std::make_unique<_tagFillTreeParamEx_S>();
  param->bytes[132] = 2;
  picker->SetParam(param.get());
  int observed = 0, asked = 0;
  hostref::SetPickerObserver([&](const std::vector<uint8_t>& record) { observed += record.at(132); });
  hostref::SetPickerFallback([&]() -> std::optional<std::vector<int>> { return ++asked == 1 ? std::optional(std::vector<int>{5}) : std::nullopt; });

  hostref::SetPickerAnswer(std::vector<int>{1});
  EXPECT_EQ(picker->Start(), 1) << "an answer given beforehand";
  EXPECT_EQ(asked, 0);
  EXPECT_EQ(picker->Start(), 1) << "the fallback's answer";
  int* ids = nullptr;
  int count = 0;
  picker->GetMultiVehiID(&ids, &count);
  ASSERT_EQ(count, 1);
  EXPECT_EQ(ids[0], 5);
  LIBCOMMON_Release(ids);
  EXPECT_EQ(picker->Start(), 0) << "the fallback cancelled";
  hostref::SetPickerObserver(nullptr);
  hostref::SetPickerFallback(nullptr);
  EXPECT_EQ(observed, 6);
  EXPECT_EQ(asked, 2);
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
