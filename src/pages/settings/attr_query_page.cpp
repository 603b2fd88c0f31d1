#include "pages/settings/attr_query_page.h"

#include "command/ids.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/json.h"

namespace {
constexpr int kTextVehicle = 13421;
constexpr int kTextQueryFailed = 11012;
constexpr int kDeviceKinds = 4;
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
  return {templateId, "", {600, 380},
          {{kResultText, ControlKind::Edit, "", {10, 10, 590, 330}, style::ReadOnly | style::Multiline | style::WantReturn},
           {ctl::Get, ControlKind::PushButton, "获取", {500, 340, 590, 368}}}};
}

std::string CAttrQueryPage::Line(int labelId, const std::string& value) {
  return FormatChineseColon(LanguageText(labelId), value);
}

std::string VehicleName(const char* devIdno) {
  const std::string name = CVehicleBaseMgr::FindVehicleFromDev(devIdno).GetName();
  return name.empty() ? std::string(devIdno) : name;
}

void CAttrQueryPage::ParseReply(CommandRequest& request) {
  const std::string vehicle = VehicleName(request.devIdno);
  Json::Value reply;
  const bool parsed = txt::ParseJson(request.reply, reply) && reply.isObject();
  const bool failed = !parsed || txt::JsonMemberInt(reply, "Error", 0) != 0 || txt::JsonMemberInt(reply, "result", 0) != 0;
  std::string block;
  if (failed) {
    const std::string bang = GetChineseChar("!");
    block = Line(kTextVehicle, vehicle) + "\r\n" + LanguageText(kTextQueryFailed) + bang + bang + bang;
  } else {
    block = ReplyBlock(reply, vehicle);
  }
  SetItemText(kResultText, GetItemText(kResultText) + block + kBlockEnd);
}
