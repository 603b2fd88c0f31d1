#include "pages/messaging/events/setup_event.h"

#include "command/page_registry.h"

namespace {
using C = CDlgSetupEvent;
constexpr SettingTypeRadio kRadios[] = {{C::kRadioDeleteAll, C::kDeleteAll}, {C::kRadioUpdate, C::kUpdate},
                                        {C::kRadioAppend, C::kAppend},       {C::kRadioModify, C::kModify},
                                        {C::kRadioDeleteGiven, C::kDeleteGiven}};

const CEventListPage::Kind kKind{
    .templateId = C::kTemplate, .command = C::kCommand, .deviceKinds = 0x401, .radios = kRadios,
    .startType = C::kDeleteAll, .idKey = "EVID", .sendsCount = true, .configId = C::kConfigId,
    .itemsGroup = C::kItemsGroup, .itemsText = C::kTextEvents, .itemsCaption = "事件项",
    .rowLabelText = C::kTextEventId, .hintText = 0};
const RegisterPage<C> kPage{C::kFunctionType};
}  // namespace

plat::DialogTemplate CDlgSetupEvent::Layout() {
  using namespace row;
  namespace style = plat::style;
  return MakeTemplate(
      kKind,
      {Box(kTypeGroup, "设置类型", {10, 10, 590, 70}, kTextType),
       Radio(kRadioDeleteAll, "删除所有事件", {20, 35, 130, 55}, kTextDeleteAll, style::Group),
       Radio(kRadioUpdate, "更新事件", {135, 35, 235, 55}, kTextUpdate),
       Radio(kRadioAppend, "追加事件", {240, 35, 340, 55}, kTextAppend),
       Radio(kRadioModify, "修改事件", {345, 35, 445, 55}, kTextModify),
       Radio(kRadioDeleteGiven, "删除特定事件", {450, 35, 580, 55}, kTextDeleteGiven)},
      {Static(kSpareIdLabel, "事件ID", {0, 0, 1, 1}, kTextEventId, style::Hidden),
       Static(kSpareContentLabel, "内容", {0, 0, 1, 1}, kTextContent, style::Hidden),
       Static(kSpareNote, "(小于127字符)", {0, 0, 1, 1}, kTextNote, style::Hidden),
       Edit(kSpareEdit1, {0, 0, 1, 1}, {.styles = style::Hidden}),
       Edit(kSpareEdit2, {0, 0, 1, 1}, {.styles = style::Hidden})});
}

CDlgSetupEvent::CDlgSetupEvent() : CEventListPage(kKind) {}
