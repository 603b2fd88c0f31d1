// Terminal control (its command word and the word's parameters as one text),
// transparent data and the platform's RSA public key.
#include <algorithm>
#include <span>

#include "jt808/codec.h"
#include "jt808/codecs/fields.h"
#include "jt808/codecs/transparent.h"

namespace jt808 {
namespace {
constexpr int kTerminalControl = 0x8105, kTransparentData = 0x8900, kRsaKey = 0x8A00;

// ---- terminal control ------------------------------------------------------------

constexpr const char* kCommandKey = "Command";
constexpr int kUpgrade = 1, kConnect = 2, kWake = 8;
constexpr char kSeparator = ';';

// One parameter of a command word: a text, or a number written in decimal
// digits (max above 0) that the page sends as a JSON integer.
struct Parameter {
  const char* key;
  int64_t max = 0;
};
using Parameters = std::span<const Parameter>;

constexpr Parameter kUpgradeParameters[] = {{"URL"}, {"DINA"}, {"DICT"}, {"DIPWD"}, {"ADD"}, {"TCP"},
                                            {"UDP"}, {"PRID"}, {"HAV"},  {"SOV"},   {"LITI"}};
// The taxi terminals' upgrade: the device type first, then their own list.
constexpr Parameter kTaxiUpgradeParameters[] = {
    {"DTYPE", fields::kByte}, {"PRID"}, {"HAV"}, {"SOV"}, {"DINA"}, {"DICT"}, {"DIPWD"}, {"ADD"},
    {"TCP"},                     {"USR"},  {"PSW"}, {"FIV"}, {"URL"},  {"FFN"},  {"FFS"}};
constexpr Parameter kConnectParameters[] = {{"COCT", fields::kByte}, {"AUT"}, {"DINA"}, {"DICT"}, {"DIPWD"},
                                            {"ADD"},                    {"TCP"}, {"UDP"},  {"LITI"}};
// Switching back to the default server needs nothing after the connection control.
constexpr size_t kSwitchBackParameters = 1;
// Waking a terminal for a given number of seconds; without them it wakes for its own time.
constexpr Parameter kWakeParameters[] = {{"Flag", fields::kWord}};

// The parameters a command word's object carries.
Parameters ParametersOf(int word, const Json::Value& param) {
  switch (word) {
    case kUpgrade:
      return param.isMember(kTaxiUpgradeParameters[0].key) ? Parameters(kTaxiUpgradeParameters)
                                                           : Parameters(kUpgradeParameters);
    case kConnect: return kConnectParameters;
    case kWake: return param.isMember(kWakeParameters[0].key) ? Parameters(kWakeParameters) : Parameters();
    default: return {};
  }
}

// The parameters a terminal finds in a text of count fields.
Parameters ParametersRead(int word, size_t count) {
  const auto fits = [count](Parameters list) { return count == list.size(); };
  switch (word) {
    case kUpgrade:
      if (fits(kUpgradeParameters)) return kUpgradeParameters;
      if (fits(kTaxiUpgradeParameters)) return kTaxiUpgradeParameters;
      break;
    case kConnect:
      if (fits(kConnectParameters)) return kConnectParameters;
      if (count == kSwitchBackParameters) return Parameters(kConnectParameters).first(kSwitchBackParameters);
      break;
    case kWake:
      if (count <= std::size(kWakeParameters)) return Parameters(kWakeParameters).first(count);
      break;
    default: return {};  // the other words take no parameters
  }
  throw BodyError("command word " + std::to_string(word) + " with " + std::to_string(count) + " parameters");
}

std::vector<std::string> SplitFields(const std::string& text) {
  std::vector<std::string> pieces;
  if (text.empty()) return pieces;
  size_t start = 0;
  for (size_t at; (at = text.find(kSeparator, start)) != std::string::npos; start = at + 1)
    pieces.push_back(text.substr(start, at - start));
  pieces.push_back(text.substr(start));
  return pieces;
}

// A number parameter: decimal digits within the parameter's range.
int64_t DecimalField(const std::string& text, const Parameter& parameter) {
  constexpr size_t kMaxDigits = 10;  // a double word
  const bool digits = std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
  if (text.empty() || text.size() > kMaxDigits || !digits)
    throw BodyError(std::string("\"") + parameter.key + "\" is not a number: " + text);
  const int64_t value = std::stoll(text);
  if (value > parameter.max) throw BodyError(std::string("\"") + parameter.key + "\" is out of range");
  return value;
}

const RegisterCommand kControl{
    kTerminalControl,
    {kTerminalControl, kGeneralReply,
     [](const Json::Value& param, Edition) {
       const int word = static_cast<int>(fields::Int(param, kCommandKey, 0, fields::kByte));
       std::string text;
       bool first = true;
       for (const Parameter& parameter : ParametersOf(word, param)) {
         const std::string field = parameter.max ? std::to_string(fields::Int(param, parameter.key, 0, parameter.max))
                                                 : WireText(param, parameter.key);
         if (field.find(kSeparator) != std::string::npos)
           throw BodyError(std::string("\"") + parameter.key + "\" holds the separator");
         if (!first) text += kSeparator;
         text += field;
         first = false;
       }
       return Writer().U8(word).Raw(text).Take();
     },
     [](ByteView body, Edition) {
       Reader r(body);
       Json::Value param(Json::objectValue);
       const int word = r.U8();
       param[kCommandKey] = word;
       const std::vector<std::string> texts = SplitFields(fields::RestText(r));
       const Parameters parameters = ParametersRead(word, texts.size());
       for (size_t i = 0; i < parameters.size(); ++i) {
         const Parameter& parameter = parameters[i];
         param[parameter.key] =
             parameter.max ? Json::Value(static_cast<Json::Int64>(DecimalField(texts[i], parameter))) : PageText(texts[i]);
       }
       return param;
     }}};

// ---- transparent data ------------------------------------------------------------

namespace key {
constexpr const char *kType = "CMT", *kContent = "CMC", *kExponent = "E", *kModulus = "N_S";
}  // namespace key

// The message type and its content, which takes the rest of the body.
const RegisterCommand kTransparent{
    kTransparentData,
    {kTransparentData, kGeneralReply,
     [](const Json::Value& param, Edition) {
       if (transparent::IsProvincial(param)) return transparent::EncodeProvincial(param);
       return Writer().U8(fields::Int(param, key::kType, 0, fields::kByte)).Raw(WireText(param, key::kContent)).Take();
     },
     [](ByteView body, Edition) {
       Reader r(body);
       const uint8_t type = r.U8();
       if (transparent::IsProvincialType(type)) return transparent::DecodeProvincial(type, r);
       Json::Value param(Json::objectValue);
       param[key::kType] = type;
       param[key::kContent] = PageText(fields::RestText(r));
       return param;
     }}};

// ---- RSA key ------------------------------------------------------------------------

// The exponent and the modulus in a field of 128 bytes. The page writes the
// modulus as hexadecimal digits; a shorter one fills the field from the right
// (leading zero bytes keep the number), and a terminal shows it back without them.
constexpr size_t kModulusBytes = 128;

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

Bytes ModulusBytes(std::string digits) {
  if (digits.size() % 2) digits.insert(digits.begin(), '0');
  if (digits.size() > 2 * kModulusBytes) throw BodyError("a modulus of over 128 bytes");
  Bytes bytes(kModulusBytes - digits.size() / 2, 0);
  for (size_t i = 0; i < digits.size(); i += 2) {
    const int high = HexDigit(digits[i]), low = HexDigit(digits[i + 1]);
    if (high < 0 || low < 0) throw BodyError("the modulus is not hexadecimal: " + digits);
    bytes.push_back(static_cast<uint8_t>(high << 4 | low));
  }
  return bytes;
}

std::string ModulusDigits(ByteView bytes) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  const auto first = std::find_if(bytes.begin(), bytes.end(), [](uint8_t b) { return b != 0; });
  std::string digits;
  for (auto it = first; it != bytes.end(); ++it) {
    digits += kDigits[*it >> 4];
    digits += kDigits[*it & 0x0F];
  }
  return digits;
}

const RegisterCommand kRsa{kRsaKey,
                           {kRsaKey, kGeneralReply,
                            [](const Json::Value& param, Edition) {
                              Writer w;
                              w.U32(fields::Int(param, key::kExponent, 0, fields::kDword));
                              return w.Raw(ModulusBytes(WireText(param, key::kModulus))).Take();
                            },
                            [](ByteView body, Edition) {
                              Reader r(body);
                              Json::Value param(Json::objectValue);
                              param[key::kExponent] = static_cast<Json::Int64>(r.U32());
                              param[key::kModulus] = ModulusDigits(r.Raw(kModulusBytes));
                              return param;
                            }}};

}  // namespace
}  // namespace jt808
