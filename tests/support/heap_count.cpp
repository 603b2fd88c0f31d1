#include "support/heap_count.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<long long> g_live{0};
std::atomic<long long> g_peak{0};

void* Allocate(std::size_t size) {
  void* p = std::malloc(size ? size : 1);
  if (!p) throw std::bad_alloc();
  const long long now = g_live.fetch_add(static_cast<long long>(malloc_usable_size(p))) +
                        static_cast<long long>(malloc_usable_size(p));
  long long peak = g_peak.load();
  while (now > peak && !g_peak.compare_exchange_weak(peak, now)) {
  }
  return p;
}
void Release(void* p) noexcept {
  if (!p) return;
  g_live.fetch_sub(static_cast<long long>(malloc_usable_size(p)));
  std::free(p);
}
}  // namespace

namespace heapcount {
long long Live() { return g_live.load(); }
long long Peak() { return g_peak.load(); }
void ResetPeak() { g_peak.store(g_live.load()); }
}  // namespace heapcount

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return Allocate(size);
  } catch (...) {
    return nullptr;
  }
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  try {
    return Allocate(size);
  } catch (...) {
    return nullptr;
  }
}
void operator delete(void* p) noexcept { Release(p); }
void operator delete[](void* p) noexcept { Release(p); }
void operator delete(void* p, std::size_t) noexcept { Release(p); }
void operator delete[](void* p, std::size_t) noexcept { Release(p); }
