#include "platform/clock.h"

#include <chrono>
#include <ctime>
#include <mutex>

#include "platform/loop.h"

namespace plat {

uint64_t SteadyClock::NowMs() const {
  using namespace std::chrono;
  return static_cast<uint64_t>(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

DWORD GetTickCount() { return static_cast<DWORD>(MessageLoop::Instance().GetClock().NowMs()); }

namespace {
std::mutex g_timeMutex;
std::optional<SYSTEMTIME> g_fixedTime;
}  // namespace

void SetFixedLocalTime(std::optional<SYSTEMTIME> time) {
  std::lock_guard lock(g_timeMutex);
  g_fixedTime = time;
}

SYSTEMTIME GetLocalTime() {
  {
    std::lock_guard lock(g_timeMutex);
    if (g_fixedTime) return *g_fixedTime;
  }
  using namespace std::chrono;
  const auto now = system_clock::now();
  const std::time_t seconds = system_clock::to_time_t(now);
  std::tm local{};
  localtime_r(&seconds, &local);
  SYSTEMTIME st;
  st.wYear = static_cast<WORD>(local.tm_year + 1900);
  st.wMonth = static_cast<WORD>(local.tm_mon + 1);
  st.wDayOfWeek = static_cast<WORD>(local.tm_wday);
  st.wDay = static_cast<WORD>(local.tm_mday);
  st.wHour = static_cast<WORD>(local.tm_hour);
  st.wMinute = static_cast<WORD>(local.tm_min);
  st.wSecond = static_cast<WORD>(local.tm_sec);
  st.wMilliseconds = static_cast<WORD>(duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000);
  return st;
}

}  // namespace plat
