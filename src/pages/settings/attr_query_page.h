// What the two attribute query pages share: a get button, a read-only text
// box that grows by one block per answering device, and the block shown for
// a failed reply.
#pragma once

#include <string>

#include <json/value.h>

#include "command/base_dlg.h"

class CAttrQueryPage : public CNoParamDlg {
 public:
  static constexpr int kResultText = 4368;
  static constexpr const char* kBlockEnd = "\r\n\r\n\r\n";

  CAttrQueryPage(int templateId, int32_t command);
  void ParseReply(CommandRequest& request) override;

  // The template of such a page: the get button and the text box.
  static plat::DialogTemplate MakeTemplate(int templateId);

 protected:
  // The block for a successful reply.
  virtual std::string ReplyBlock(const Json::Value& reply, const std::string& vehicle) = 0;
  // Called by the get button before the send.
  virtual void BeforeQuery() {}
  // "label：value".
  static std::string Line(int labelId, const std::string& value);

 private:
  const int32_t command_;
};

// The vehicle name of a device number, or the number when it has none.
std::string VehicleName(const char* devIdno);
