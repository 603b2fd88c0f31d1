// The text message: its flag byte, the 2019 edition's text type, and the
// text. The call-back and the phone book: flags, numbers and names.
#include "jt808/codec.h"
#include "jt808/codecs/fields.h"
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

constexpr int kCallBack = 0x8400, kSetPhoneBook = 0x8401;
namespace key {
constexpr const char *kFlag = "Flag", *kPhone = "PHONE", *kType = "SETP", *kContacts = "PHIT", *kName = "LIMN";
}  // namespace key
constexpr size_t kMaxCallNumber = 20;  // bytes of the number to call
constexpr int kDeleteAllContacts = 0;

// The flag and the number, which takes the rest of the body.
const RegisterCommand kCall{kCallBack,
                            {kCallBack, kGeneralReply,
                             [](const Json::Value& param, Edition) {
                               Writer w;
                               w.U8(fields::Int(param, key::kFlag, 0, fields::kByte));
                               const std::string number = WireText(param, key::kPhone);
                               if (number.size() > kMaxCallNumber) throw BodyError("a number to call of over 20 bytes");
                               return w.Raw(number).Take();
                             },
                             [](ByteView body, Edition) {
                               Reader r(body);
                               Json::Value param(Json::objectValue);
                               param[key::kFlag] = r.U8();
                               param[key::kPhone] = PageText(fields::RestText(r));
                               return param;
                             }}};

// Setting type, contact count, then per contact its flag, its number and its
// name, each text with a byte for its length. Deleting all sends no
// contacts, whatever rows the page sent along. The page sends the number as
// plain text, the name form-encoded.
const RegisterCommand kPhoneBook{
    kSetPhoneBook,
    {kSetPhoneBook, kGeneralReply,
     [](const Json::Value& param, Edition) {
       Writer w;
       const int type = static_cast<int>(fields::Int(param, key::kType, 0, fields::kByte));
       w.U8(type);
       const std::vector<Json::Value> contacts =
           type == kDeleteAllContacts ? std::vector<Json::Value>() : fields::Items(param, key::kContacts);
       w.U8(contacts.size());
       for (const Json::Value& contact : contacts) {
         w.U8(fields::Int(contact, key::kFlag, 0, fields::kByte));
         fields::ByteLengthText(w, txt::JsonMemberString(contact, key::kPhone));
         fields::ByteLengthText(w, WireText(contact, key::kName));
       }
       return w.Take();
     },
     [](ByteView body, Edition) {
       Reader r(body);
       Json::Value param(Json::objectValue);
       param[key::kType] = r.U8();
       for (int i = 0, count = r.U8(); i < count; ++i) {
         Json::Value contact(Json::objectValue);
         contact[key::kFlag] = r.U8();
         contact[key::kPhone] = fields::ByteLengthText(r);
         contact[key::kName] = PageText(fields::ByteLengthText(r));
         param[key::kContacts].append(std::move(contact));
       }
       return param;
     }}};
}  // namespace
}  // namespace jt808
