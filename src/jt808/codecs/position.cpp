// Position commands: the position query and its answer, temporary position
// tracking, the manual alarm confirmation, the link check, and the vehicle
// control with its answer. Both answers carry the answered serial number and
// a position report (position_body.h).
//
// Devices of the extended family send a tracking attribute ("ATTR") with the
// tracking command and a control type ("Type") with the vehicle control.
// The tracking body has no field for the attribute, so it stays behind. The
// 2013 control flag controls the doors only: any other control type cannot
// travel to such a terminal (it would lock the doors instead). In the 2019
// control list the type picks the control item (doors are the list's own
// item; oil, circuit and the vehicle lock take ids of the user range).
#include <algorithm>
#include <array>
#include <utility>

#include "jt808/codec.h"
#include "jt808/codecs/position_body.h"

namespace jt808 {
namespace {
constexpr int kPositionQuery = 0x8201, kTracking = 0x8202, kConfirmAlarm = 0x8203, kLinkCheck = 0x8204,
              kVehicleControl = 0x8500;
constexpr uint16_t kPositionAnswer = 0x0201, kControlAnswer = 0x0500;
constexpr uint32_t kMaxByte = 0xFF, kMaxWord = 0xFFFF, kMaxDword = 0xFFFFFFFF;

namespace key {
constexpr const char *kInterval = "TIBT", *kValidity = "POTR", *kSerial = "MSGID", *kTypes = "ALTY",
                     *kFlag = "CTLA", *kType = "Type";
}  // namespace key

// The page's control types and the 2019 control items that carry them.
constexpr int kTypeDoors = 2;
constexpr std::array<std::pair<uint32_t, uint16_t>, 4> kControlItems{{
    {0, 0xF001},  // oil
    {1, 0xF002},  // circuit
    {kTypeDoors, 0x0001},
    {3, 0xF003},  // the vehicle lock
}};

void ExpectEnd(const Reader& r) {
  if (!r.AtEnd()) throw BodyError("bytes after the last field");
}

Bytes NoBody(const Json::Value&, Edition) { return {}; }
Json::Value NoParam(ByteView body, Edition) {
  if (!body.empty()) throw BodyError("a body where none belongs");
  return Json::Value();
}

// The answered serial number and a position report.
const AnswerCodec kReportAnswer{
    true,
    [](ByteView body, const AnswerContext&) {
      Reader r(body);
      r.U16();
      Json::Value reply(Json::objectValue);
      position::Read(r, reply);
      return reply;
    },
    [](const Json::Value& reply, const AnswerContext& context) {
      Writer w;
      w.U16(context.serial);
      position::Write(w, reply);
      return w.Take();
    }};

const RegisterAnswer kPositionAnswerCodec{kPositionAnswer, kReportAnswer};
const RegisterAnswer kControlAnswerCodec{kControlAnswer, kReportAnswer};

const RegisterCommand kQuery{kPositionQuery, {kPositionQuery, kPositionAnswer, NoBody, NoParam}};

const RegisterCommand kTrack{kTracking,
                             {kTracking, kGeneralReply,
                              [](const Json::Value& param, Edition) {
                                Writer w;
                                w.U16(position::Unsigned(param, key::kInterval, kMaxWord, std::nullopt))
                                    .U32(position::Unsigned(param, key::kValidity, kMaxDword, std::nullopt));
                                return w.Take();
                              },
                              [](ByteView body, Edition) {
                                Reader r(body);
                                Json::Value param(Json::objectValue);
                                param[key::kInterval] = r.U16();
                                param[key::kValidity] = r.U32();
                                ExpectEnd(r);
                                return param;
                              }}};

const RegisterCommand kConfirm{kConfirmAlarm,
                               {kConfirmAlarm, kGeneralReply,
                                [](const Json::Value& param, Edition) {
                                  return Writer()
                                      .U16(position::Unsigned(param, key::kSerial, kMaxWord, std::nullopt))
                                      .U32(position::Unsigned(param, key::kTypes, kMaxDword, std::nullopt))
                                      .Take();
                                },
                                [](ByteView body, Edition) {
                                  Reader r(body);
                                  Json::Value param(Json::objectValue);
                                  param[key::kSerial] = r.U16();
                                  param[key::kTypes] = r.U32();
                                  ExpectEnd(r);
                                  return param;
                                }}};

// The link check came with the 2019 edition; an older terminal that does not
// know it says so in its general reply.
const RegisterCommand kLink{kLinkCheck, {kLinkCheck, kGeneralReply, NoBody, NoParam}};

uint16_t ControlItem(uint32_t type) {
  for (const auto& [pageType, item] : kControlItems) {
    if (pageType == type) return item;
  }
  throw BodyError("no control item for type " + std::to_string(type));
}

Bytes EncodeControl(const Json::Value& param, Edition edition) {
  const uint32_t flag = position::Unsigned(param, key::kFlag, kMaxByte, std::nullopt);
  const bool typed = param.isMember(key::kType);
  const uint32_t type = position::Unsigned(param, key::kType, kMaxByte, kTypeDoors);
  Writer w;
  if (edition == Edition::k2013) {
    if (typed && type != kTypeDoors) throw BodyError("the 2013 control flag controls the doors only");
    return w.U8(flag).Take();
  }
  constexpr uint16_t kOneItem = 1;
  return w.U16(kOneItem).U16(ControlItem(type)).U8(flag).Take();
}

Json::Value DecodeControl(ByteView body, Edition edition) {
  Reader r(body);
  Json::Value param(Json::objectValue);
  if (edition == Edition::k2013) {
    param[key::kFlag] = r.U8();
    ExpectEnd(r);
    return param;
  }
  const uint16_t count = r.U16();
  for (uint16_t i = 0; i < count; ++i) {
    const uint16_t item = r.U16();
    const uint8_t flag = r.U8();
    const auto* found = std::find_if(kControlItems.begin(), kControlItems.end(),
                                     [item](const auto& entry) { return entry.second == item; });
    if (found == kControlItems.end()) throw BodyError("unknown control item " + std::to_string(item));
    if (i > 0) continue;  // the simulated terminals take one control at a time
    param[key::kFlag] = flag;
    if (found->first != kTypeDoors) param[key::kType] = found->first;
  }
  if (count == 0) throw BodyError("a control list without items");
  ExpectEnd(r);
  return param;
}

const RegisterCommand kControl{kVehicleControl, {kVehicleControl, kControlAnswer, EncodeControl, DecodeControl}};
}  // namespace
}  // namespace jt808
