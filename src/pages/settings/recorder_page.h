// What the tachograph parameter pages share. Each page deals with one group of
// the recorder's parameters: its get button reads them with the recorder's
// read command word (0x8700), its set button writes the typed values with the
// write command word (0x8701). The word travels in "CDID".
//
// A page keeps two sets of values: the entered ones, read from the controls
// by the set button, and the read-back ones, taken from the last reply (and
// emptied first, so a failed reply leaves them empty). After a get the
// read-back values are shown in the controls; the result row describes the
// values of the last send.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <string>

#include "command/base_dlg.h"

class CRecorderPage : public CBaseDlg {
 public:
  static constexpr int32_t kReadCommand = 0x8700;
  static constexpr int32_t kWriteCommand = 0x8701;
  static constexpr int kEdition2003 = 2003, kEdition2012 = 2012;
  // The frame around the page's fields, hidden with the send buttons.
  static constexpr int kFrame = 4385;

  // The recorder command words of the page's read and write.
  struct Words {
    int read;
    int write;
  };
  CRecorderPage(int templateId, Words words);

  void HideSendButtons() override;
  Json::Value GetParam() final;
  std::string GetParamDescription() final;

 protected:
  // Set button: copies the controls into the entered values.
  virtual void ReadEntered() = 0;
  // The written values besides "CDID".
  virtual void WriteEntered(Json::Value& param) const = 0;
  // Empties the read-back values.
  virtual void ClearReadBack() = 0;
  // Takes the read-back values from an answering reply.
  virtual void ReadReply(const Json::Value& reply) = 0;
  // Shows the read-back values in the controls (after a get).
  virtual void ShowReadBack() = 0;
  // The row's description of the read-back (after a get) or the entered values.
  virtual std::string Describe(bool readBack) const = 0;

  void SetReadWord(int word) { words_.read = word; }

  void OnAnswer(CommandRequest& request, const Json::Value& reply) final;
  void OnNoAnswer(CommandRequest& request) final;

 private:
  Words words_;
};

// Helpers of the recorder pages.
namespace recorder {
constexpr size_t kReplyTextBytes = 258;  // the most bytes of a reply text the pages keep

// The reply is of the 2012 edition: its "VER" is 2012.
bool Is2012(const Json::Value& reply);
// A text of the reply, at most maxBytes of code page 936, as UTF-8.
std::string ReplyText(const Json::Value& reply, const char* key, size_t maxBytes = kReplyTextBytes);
// An integer of the reply as decimal text; empty when the reply lacks it.
std::string ReplyNumber(const Json::Value& reply, const char* key);
// A date-time text of the reply; all zero when absent or unreadable.
SYSTEMTIME ReplyTime(const Json::Value& reply, const char* key, size_t maxBytes);
// "YEAR", "MONTH", "DAY", "HOUR", "MIN", "SEC" of a time.
void PutTimeFields(Json::Value& param, const SYSTEMTIME& time);
// The host's text of a time; empty for an empty (all zero) time.
std::string TimeText(const SYSTEMTIME& time);
// A typed text in the recorder's code page (936).
std::string AnsiText(const std::string& text);
}  // namespace recorder
