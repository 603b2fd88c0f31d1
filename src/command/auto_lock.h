// The page lock: re-entrant, taken with the scoped CAutoLock.
#pragma once

#include <mutex>

class CMutexLock {
 public:
  void Lock() { mutex_.lock(); }
  void Unlock() { mutex_.unlock(); }

 private:
  std::recursive_mutex mutex_;
};

class CAutoLock {
 public:
  explicit CAutoLock(CMutexLock& lock) : lock_(lock) { lock_.Lock(); }
  ~CAutoLock() { lock_.Unlock(); }
  CAutoLock(const CAutoLock&) = delete;
  CAutoLock& operator=(const CAutoLock&) = delete;

 private:
  CMutexLock& lock_;
};
