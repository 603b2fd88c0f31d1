// Point queries (position information query, no parameters).
// CDlgCallName: the hidden page behind the point-query export; each call
// queues a device number, and every answer goes to the host's callback
// instead of a result row.
// CDlgNewCallName: the function page's point-query function; every answer
// adds a row and tells the host's window, the last one with lParam 1.
#pragma once

#include <deque>
#include <string>

#include "command/base_dlg.h"

constexpr int32_t kCmdPositionQuery = 0x8201;

class CDlgCallName : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4063;
  static plat::DialogTemplate Layout();
  CDlgCallName();
  // Queues a device number and starts a send.
  void CallName(const std::string& devIdno);
  size_t PendingCount() const { return pending_.size(); }

  void CollectTargets(std::deque<std::string>& targets) override;
  void AddResultRow(CommandRequest& request) override;

 private:
  std::deque<std::string> pending_;
};

class CDlgNewCallName : public CBaseDlg {
 public:
  static constexpr int kTemplate = 4065;
  static plat::DialogTemplate Layout();
  CDlgNewCallName();
  void PrepareBatch(CommandRequest& request) override;
};
