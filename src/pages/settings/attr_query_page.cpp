// The shared mechanics of the attribute query pages: the get button, the
// failed-reply block and the growing text box.
#include "pages/settings/attr_query_page.h"

#include "command/ids.h"
#include "command/page_template.h"
#include "host/hostcore.h"
#include "lang/language.h"

namespace {
constexpr int kTextVehicle = 13421;
constexpr int kTextQueryFailed = 11012;
constexpr const char* kLineBreak = "\r\n";

// The vehicle name of a device number, or the number itself when the vehicle has none.
std::string VehicleName(const char* devIdno) {
  std::string name = CVehicleBaseMgr::FindVehicleFromDev(devIdno).GetName();
  return name.empty() ? std::string(devIdno) : name;
}

std::string VehicleLine(const std::string& vehicle) { return FormatChineseColon(LanguageText(kTextVehicle), vehicle); }

// The vehicle line, then the "query failed" text followed by three exclamation marks.
std::string FailedBlock(const std::string& vehicle) {
  const std::string bang = GetChineseChar("!");
  return VehicleLine(vehicle) + kLineBreak + LanguageText(kTextQueryFailed) + bang + bang + bang;
}
}  // namespace

CAttrQueryPage::CAttrQueryPage(int templateId, int32_t command) : CBaseDlg(templateId), command_(command) {
  QueryMode = TRUE;
  DeviceKindMask = kDeviceKinds;
  Bind(ctl::Get, BN_CLICKED, [this] {
    BeforeQuery();
    StartSend(Mode::kGet, command_);
  });
}

plat::DialogTemplate CAttrQueryPage::MakeTemplate(int templateId) {
  using namespace row;
  namespace style = plat::style;
  return PageTemplate(templateId, {600, 380},
                      {{Edit(kResultText, {10, 10, 590, 330}, {.styles = style::ReadOnly | style::Multiline})},
                       {GetButton({500, 340, 590, 368})}});
}

std::string CAttrQueryPage::Block(const std::string& vehicle, std::initializer_list<Field> fields,
                                  LastLineBreak lastBreak) {
  std::string text = VehicleLine(vehicle);
  for (const Field& field : fields) {
    text += kLineBreak;
    text += FormatChineseColon(LanguageText(field.label), field.value);
  }
  if (lastBreak == LastLineBreak::kYes) text += kLineBreak;
  return text;
}

void CAttrQueryPage::OnAnswer(CommandRequest& request, const Json::Value& reply) {
  AppendText(kResultText, ReplyBlock(reply, VehicleName(request.devIdno)) + kBlockEnd);
}

void CAttrQueryPage::OnNoAnswer(CommandRequest& request) {
  AppendText(kResultText, FailedBlock(VehicleName(request.devIdno)) + kBlockEnd);
}
