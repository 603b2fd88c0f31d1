// Drives the platform's UI loop from Qt's event loop on the real clock: a
// post from any thread or a new timer wakes it, a pump runs every queued
// message and due timer, then the views catch up with their models, and a
// single-shot timer waits for the next due time.
#pragma once

#include <QObject>
#include <QTimer>
#include <atomic>
#include <functional>

class LoopDriver : public QObject {
  Q_OBJECT
 public:
  explicit LoopDriver(QObject* parent = nullptr);
  ~LoopDriver() override;

  // Runs after every pump (the views flush their changes).
  void SetAfterPump(std::function<void()> after) { after_ = std::move(after); }
  // Asks for a pump soon; safe from any thread, coalesced.
  void Wake();
  // Runs one pump now (UI thread).
  void Pump();
  // Pumps handled since the start, for measurements.
  uint64_t PumpCount() const { return pumps_; }

 private:
  std::atomic<bool> scheduled_{false};
  QTimer timer_;
  std::function<void()> after_;
  uint64_t pumps_ = 0;
};
