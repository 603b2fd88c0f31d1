// The host's device picker: it answers with what the reference host said
// beforehand (SetPickerAnswer), once, or else with what the fallback returns
// (the prompt or the desktop program asks the user); and remembers the
// parameter record it was given.
#include <cstdlib>
#include <cstring>
#include <functional>
#include <mutex>
#include <new>
#include <utility>

#include "host/hostcore.h"
#include "host/ref/hostref.h"

namespace {

constexpr int kConfirmed = 1, kCancelled = 0;

struct PickerWorld {
  std::mutex mutex;
  std::optional<std::vector<int>> answer;
  std::vector<uint8_t> lastParam;
  int runs = 0;
  std::function<void(const std::vector<uint8_t>&)> observer;
  std::function<std::optional<std::vector<int>>()> fallback;
};

PickerWorld& World() {
  static PickerWorld world;
  return world;
}

class DevicePicker : public CDevListDataBase {
 public:
  void SetMultiSelect(int /*multi*/) override {}

  void SetParam(const _tagFillTreeParamEx_S* param) override {
    if (!param) return;
    std::lock_guard lock(World().mutex);
    World().lastParam.assign(param->bytes, param->bytes + sizeof param->bytes);
  }

  // The observer and the fallback run without the lock: the fallback may ask a person.
  int Start() override {
    std::optional<std::vector<int>> answer;
    std::vector<uint8_t> param;
    std::function<void(const std::vector<uint8_t>&)> observer;
    std::function<std::optional<std::vector<int>>()> fallback;
    {
      std::lock_guard lock(World().mutex);
      ++World().runs;
      chosen_.clear();
      answer = std::exchange(World().answer, std::nullopt);
      param = World().lastParam;
      observer = World().observer;
      if (!answer) fallback = World().fallback;
    }
    if (observer) observer(param);
    if (fallback) answer = fallback();
    if (!answer) return kCancelled;
    chosen_ = std::move(*answer);
    return kConfirmed;
  }

  void GetMultiVehiID(int** ids, int* count) override {
    if (!ids || !count) return;
    *ids = nullptr;
    *count = 0;
    if (chosen_.empty()) return;
    auto* array = static_cast<int*>(std::malloc(chosen_.size() * sizeof(int)));
    if (!array) return;
    std::memcpy(array, chosen_.data(), chosen_.size() * sizeof(int));
    *ids = array;
    *count = static_cast<int>(chosen_.size());
  }

 private:
  std::vector<int> chosen_;
};

}  // namespace

CDevListDataBase* CreateDevListObject() { return new (std::nothrow) DevicePicker(); }
void DeleteDevListObject(CDevListDataBase* object) { delete object; }
void LIBCOMMON_Release(void* memory) { std::free(memory); }

namespace hostref {

void SetPickerAnswer(std::optional<std::vector<int>> deviceIds) {
  std::lock_guard lock(World().mutex);
  World().answer = std::move(deviceIds);
}

std::vector<uint8_t> LastPickerParam() {
  std::lock_guard lock(World().mutex);
  return World().lastParam;
}

void SetPickerObserver(std::function<void(const std::vector<uint8_t>&)> observer) {
  std::lock_guard lock(World().mutex);
  World().observer = std::move(observer);
}

void SetPickerFallback(std::function<std::optional<std::vector<int>>()> fallback) {
  std::lock_guard lock(World().mutex);
  World().fallback = std::move(fallback);
}

int PickerRuns() {
  std::lock_guard lock(World().mutex);
  return World().runs;
}

}  // namespace hostref
