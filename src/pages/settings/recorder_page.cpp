// The recorder pages' get and set buttons, request, reply and description.
#include "pages/settings/recorder_page.h"

#include <algorithm>

#include "command/ids.h"
#include "host/hostcore.h"
#include "text/datetime.h"
#include "text/encoding.h"
#include "text/json.h"

namespace {
namespace key {
constexpr const char *kWord = "CDID", *kEdition = "VER";
constexpr const char *kYear = "YEAR", *kMonth = "MONTH", *kDay = "DAY", *kHour = "HOUR", *kMinute = "MIN",
                     *kSecond = "SEC";
}  // namespace key
}  // namespace

CRecorderPage::CRecorderPage(int templateId, Words words) : CBaseDlg(templateId), words_(words) {
  Bind(ctl::Get, BN_CLICKED, [this] { StartSend(Mode::kGet, kReadCommand); });
  Bind(ctl::Set, BN_CLICKED, [this] {
    ReadEntered();
    StartSend(Mode::kSet, kWriteCommand);
  });
}

void CRecorderPage::HideSendButtons() {
  CBaseDlg::HideSendButtons();
  ShowItem(kFrame, false);
}

Json::Value CRecorderPage::GetParam() {
  Json::Value param(Json::objectValue);
  if (QueryMode) {
    param[key::kWord] = words_.read;
  } else {
    WriteEntered(param);
    param[key::kWord] = words_.write;
  }
  return param;
}

std::string CRecorderPage::GetParamDescription() {
  if (QueryMode) ShowReadBack();
  return Describe(QueryMode != FALSE);
}

void CRecorderPage::OnAnswer(CommandRequest&, const Json::Value& reply) {
  ClearReadBack();
  ReadReply(reply);
}

void CRecorderPage::OnNoAnswer(CommandRequest&) { ClearReadBack(); }

namespace recorder {

bool Is2012(const Json::Value& reply) { return txt::JsonMemberInt(reply, key::kEdition, 0) == CRecorderPage::kEdition2012; }

std::string ReplyText(const Json::Value& reply, const char* key, size_t maxBytes) {
  return txt::GbkToUtf8(txt::JsonMemberString(reply, key).substr(0, std::min(maxBytes, kReplyTextBytes)));
}

std::string ReplyNumber(const Json::Value& reply, const char* key) {
  if (!reply.isMember(key)) return {};
  const auto number = txt::JsonToInt(reply[key]);
  return number ? std::to_string(static_cast<int32_t>(*number)) : std::string();
}

SYSTEMTIME ReplyTime(const Json::Value& reply, const char* key, size_t maxBytes) {
  return txt::ParseDateTimeText(ReplyText(reply, key, maxBytes)).value_or(SYSTEMTIME{});
}

void PutTimeFields(Json::Value& param, const SYSTEMTIME& time) {
  param[key::kYear] = time.wYear;
  param[key::kMonth] = time.wMonth;
  param[key::kDay] = time.wDay;
  param[key::kHour] = time.wHour;
  param[key::kMinute] = time.wMinute;
  param[key::kSecond] = time.wSecond;
}

std::string TimeText(const SYSTEMTIME& time) {
  return time == SYSTEMTIME{} ? std::string() : FormatSystemTime(time);
}

std::string AnsiText(const std::string& text) { return txt::Utf8ToGbk(text); }

}  // namespace recorder
