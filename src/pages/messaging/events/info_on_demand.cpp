#include "pages/messaging/events/info_on_demand.h"

#include "command/page_registry.h"

namespace {
using C = CDlgInfoOnDemand;
constexpr SettingTypeRadio kRadios[] = {{C::kRadioDeleteAll, C::kDeleteAll},
                                        {C::kRadioUpdate, C::kUpdate},
                                        {C::kRadioAppend, C::kAppend},
                                        {C::kRadioModify, C::kModify}};

const CEventListPage::Kind kKind{
    .templateId = C::kTemplate, .command = C::kCommand, .deviceKinds = 0x1, .radios = kRadios,
    .startType = C::kAppend, .idKey = "INTY", .sendsCount = false, .configId = C::kConfigId,
    .itemsGroup = C::kItemsGroup, .itemsText = C::kTextItems, .itemsCaption = "信息项",
    .rowLabelText = 0, .hintText = C::kTextHint};
const RegisterPage<C> kPage{C::kFunctionType};
}  // namespace

plat::DialogTemplate CDlgInfoOnDemand::Layout() {
  using namespace row;
  namespace style = plat::style;
  return MakeTemplate(kKind,
                      {Box(kTypeGroup, "设置类型", {10, 10, 590, 70}, kTextType),
                       Radio(kRadioDeleteAll, "删除所有事件", {20, 35, 150, 55}, kTextDeleteAll, style::Group),
                       Radio(kRadioUpdate, "更新信息菜单", {160, 35, 290, 55}, kTextUpdate),
                       Radio(kRadioAppend, "追加信息菜单", {300, 35, 430, 55}, kTextAppend),
                       Radio(kRadioModify, "修改信息菜单", {440, 35, 570, 55}, kTextModify)},
                      {});
}

CDlgInfoOnDemand::CDlgInfoOnDemand() : CEventListPage(kKind) {}
