// The shared mechanics of the attribute query pages: the get button, the
// failed-reply block and the growing text box.
#include "pages/settings/attr_query_page.h"

#include "command/ids.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/json.h"

namespace {
constexpr int kTextVehicle = 13421;
constexpr int kTextQueryFailed = 11012;
constexpr uint32_t kDeviceKinds = 4;
constexpr const char* kKeyError = "Error";
constexpr const char* kKeyResult = "result";
constexpr const char* kLineBreak = "\r\n";

// The vehicle name of a device number, or the number itself when the vehicle has none.
std::string VehicleName(const char* devIdno) {
  std::string name = CVehicleBaseMgr::FindVehicleFromDev(devIdno).GetName();
  return name.empty() ? std::string(devIdno) : name;
}

// A reply the terminal answered: a JSON object whose "Error" and "result" are absent or 0.
bool IsAnswered(const std::string& text, Json::Value& reply) {
  return txt::ParseJson(text, reply) && reply.isObject() && txt::JsonMemberInt(reply, kKeyError, 0) == 0 &&
         txt::JsonMemberInt(reply, kKeyResult, 0) == 0;
}

std::string VehicleLine(const std::string& vehicle) { return FormatChineseColon(LanguageText(kTextVehicle), vehicle); }

// The vehicle line, then the "query failed" text followed by three exclamation marks.
std::string FailedBlock(const std::string& vehicle) {
  const std::string bang = GetChineseChar("!");
  return VehicleLine(vehicle) + kLineBreak + LanguageText(kTextQueryFailed) + bang + bang + bang;
}
}  // namespace

CAttrQueryPage::CAttrQueryPage(int templateId, int32_t command) : CNoParamDlg(templateId), command_(command) {
  QueryMode = TRUE;
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Get, BN_CLICKED, [this] {
    BeforeQuery();
    QueryMode = TRUE;
    StartSend(command_);
  });
}

plat::DialogTemplate CAttrQueryPage::MakeTemplate(int templateId) {
  using plat::ControlKind;
  namespace style = plat::style;
  constexpr int kTextGroup = 1, kButtonGroup = 2;
  return {templateId, "", {600, 380},
          {{kResultText, ControlKind::Edit, "", {10, 10, 590, 330}, style::ReadOnly | style::Multiline, 0, 0, 0, 0,
            kTextGroup},
           {ctl::Get, ControlKind::PushButton, "获取", {500, 340, 590, 368}, 0, 0, 0, 0, 0, kButtonGroup}}};
}

std::string& CAttrQueryPage::GetParamDescription(std::string& description) {
  description.clear();
  return description;
}

std::string CAttrQueryPage::Block(const std::string& vehicle, std::initializer_list<Field> fields,
                                  LastLineBreak lastBreak) {
  std::string text = VehicleLine(vehicle);
  for (const Field& field : fields) text += kLineBreak + FormatChineseColon(LanguageText(field.label), field.value);
  if (lastBreak == LastLineBreak::kYes) text += kLineBreak;
  return text;
}

void CAttrQueryPage::ParseReply(CommandRequest& request) {
  const std::string vehicle = VehicleName(request.devIdno);
  Json::Value reply;
  const std::string block = IsAnswered(request.reply, reply) ? ReplyBlock(reply, vehicle) : FailedBlock(vehicle);
  SetItemText(kResultText, GetItemText(kResultText) + block + kBlockEnd);
}
