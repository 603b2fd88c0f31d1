// The text message: its flag byte, the 2019 edition's text type, and the text.
#include "jt808/codec.h"
#include "text/json.h"

namespace jt808 {
namespace {
constexpr int kTextMessage = 0x8300;
constexpr const char *kFlag = "Flag", *kTextType = "TextType", *kTextInfo = "TextInfo";

const RegisterCommand kText{kTextMessage,
                            {kTextMessage, kGeneralReply,
                             [](const Json::Value& param, Edition edition) {
                               Writer w;
                               w.U8(txt::JsonMemberInt(param, kFlag, 0));
                               if (edition == Edition::k2019) w.U8(txt::JsonMemberInt(param, kTextType, 0));
                               return w.Raw(WireText(param, kTextInfo)).Take();
                             },
                             [](ByteView body, Edition edition) {
                               Reader r(body);
                               Json::Value param(Json::objectValue);
                               param[kFlag] = r.U8();
                               if (edition == Edition::k2019) param[kTextType] = r.U8();
                               ByteView text = r.Rest();
                               param[kTextInfo] = PageText(std::string(text.begin(), text.end()));
                               return param;
                             }}};
}  // namespace
}  // namespace jt808
