#include "pages/settings/setup_vin.h"

#include "command/description.h"
#include "command/page_registry.h"
#include "command/page_template.h"
#include "lang/language.h"

namespace {
using C = CDlgSetupVIN;
const RegisterPage<C> kPage{{C::kFunctionType, C::kFunctionType2012}, PageHost::kFunctionPage};

constexpr int kRead2003 = 0x06, kRead2012 = 0x05, kWrite = 0x82;
namespace key {
constexpr const char *kVin = "VIN", *kPlate = "CARID", *kClass = "SORT";
}  // namespace key
}  // namespace

plat::DialogTemplate CDlgSetupVIN::Layout() {
  using namespace row;
  return PageTemplate(kTemplate, {600, 200},
                      {{Box(kFrame, "", {10, 10, 590, 150}, kTextFrame2003)},
                       {Static(kVinLabel, "车辆VIN号", {20, 35, 140, 55}, kTextVin),
                        Edit(kVinEdit, {150, 33, 400, 57}, {.limit = kVinChars}),
                        Static(kVinHint, "(小于17字节)", {410, 35, 580, 55}, kTextUnder17)},
                       {Static(kPlateLabel, "车牌号码", {20, 70, 140, 90}, kTextPlate),
                        Edit(kPlateEdit, {150, 68, 400, 92}, {.limit = kPlateChars}),
                        Static(kPlateHint, "(小于12字节)", {410, 70, 580, 90}, kTextUnder12)},
                       {Static(kClassLabel, "分类", {20, 105, 140, 125}, kTextClass),
                        Edit(kClassEdit, {150, 103, 400, 127}, {.limit = kPlateChars}),
                        Static(kClassHint, "(小于12字节)", {410, 105, 580, 125}, kTextUnder12)},
                       {GetButton({400, 160, 490, 188}), SetButton({500, 160, 590, 188})}});
}

CDlgSetupVIN::CDlgSetupVIN(int functionType)
    : CRecorderPage(kTemplate, {kRead2003, kWrite}),
      edition_(functionType == kFunctionType2012 ? kEdition2012 : kEdition2003) {
  SetReadWord(edition_ == kEdition2012 ? kRead2012 : kRead2003);
}

void CDlgSetupVIN::SetEdition(Edition edition) {
  edition_ = edition;
  SetReadWord(edition == kEdition2012 ? kRead2012 : kRead2003);
  if (IsWindow()) SetItemText(kFrame, LanguageText(edition == kEdition2012 ? kTextFrame2012 : kTextFrame2003));
}

void CDlgSetupVIN::ReadEntered() {
  entered_ = {GetItemText(kVinEdit), GetItemText(kPlateEdit), GetItemText(kClassEdit)};
}

void CDlgSetupVIN::WriteEntered(Json::Value& param) const {
  param[key::kVin] = recorder::AnsiText(entered_.vin);
  param[key::kPlate] = recorder::AnsiText(entered_.plate);
  param[key::kClass] = recorder::AnsiText(entered_.plateClass);
}

void CDlgSetupVIN::ReadReply(const Json::Value& reply) {
  readBack_ = {recorder::ReplyText(reply, key::kVin), recorder::ReplyText(reply, key::kPlate),
               recorder::ReplyText(reply, key::kClass)};
}

void CDlgSetupVIN::ShowReadBack() {
  SetItemText(kVinEdit, readBack_.vin);
  SetItemText(kPlateEdit, readBack_.plate);
  SetItemText(kClassEdit, readBack_.plateClass);
}

std::string CDlgSetupVIN::Describe(bool readBack) const {
  const Vehicle& v = readBack ? readBack_ : entered_;
  return Description().Field(kTextVin, v.vin).Field(kTextClass, v.plateClass).Field(kTextPlate, v.plate);
}
