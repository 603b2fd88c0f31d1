// What the two attribute query pages share: a get button that sends the
// page's query without parameters, and a read-only text box that grows by one
// block of text per answering device. A reply that is not JSON or carries a
// non-zero "Error" or "result" gives the failed-reply block; any other reply
// is turned into text by the page.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <initializer_list>
#include <string>

#include "command/base_dlg.h"

class CAttrQueryPage : public CBaseDlg {
 public:
  static constexpr int kResultText = 4368;
  static constexpr int kDeviceKinds = 4;
  // What follows every block in the text box.
  static constexpr const char* kBlockEnd = "\r\n\r\n\r\n";

  CAttrQueryPage(int templateId, int32_t command);

  // The template of such a page: the text box and the get button.
  static plat::DialogTemplate MakeTemplate(int templateId);

 protected:
  void OnAnswer(CommandRequest& request, const Json::Value& reply) final;
  void OnNoAnswer(CommandRequest& request) final;

  // One line of a block: a label's language text and its value.
  struct Field {
    int label;
    std::string value;
  };
  enum class LastLineBreak { kNo, kYes };

  // The block for a successful reply; vehicle is the name of the answering device's vehicle.
  virtual std::string ReplyBlock(const Json::Value& reply, const std::string& vehicle) = 0;
  // Called by the get button before the query is sent.
  virtual void BeforeQuery() {}
  // The vehicle line, then one "label：value" line per field, joined with
  // "\r\n", with or without a line break after the last.
  static std::string Block(const std::string& vehicle, std::initializer_list<Field> fields, LastLineBreak lastBreak);

 private:
  const int32_t command_;
};
