// Transparent data (0x8900) comes in two forms: the plain one, a message
// type and its content ("CMT", "CMC"), and the provincial one of the regional
// pages, whose sub-type ("SCTYPE") is the message type and whose content
// carries the record fields. The control family's codec of 0x8900 serves
// both; the provincial content is read and written here.
#pragma once

#include <cstdint>

#include <json/value.h>

#include "jt808/bytes.h"

namespace jt808::transparent {

// The parameter object is of the provincial form.
bool IsProvincial(const Json::Value& param);
// A message type that a terminal reads as provincial data.
bool IsProvincialType(uint8_t type);
// The whole body of the provincial form, the sub-type first; BodyError for a
// sub-type the terminals do not know or a field that does not fit.
Bytes EncodeProvincial(const Json::Value& param);
// The content after the message type back to the provincial parameter object.
Json::Value DecodeProvincial(uint8_t type, Reader& r);

}  // namespace jt808::transparent
