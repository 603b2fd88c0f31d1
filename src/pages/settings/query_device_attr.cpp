// Turns a terminal attribute reply into its block of ten lines: texts from
// the terminal's code page, the ICCID, and the bit lists of the terminal
// type and the GNSS and communication modules.
#include "pages/settings/query_device_attr.h"


#include "command/page_registry.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/encoding.h"
#include "text/json.h"

namespace {
using C = CDlgQueryDeviceAttr;
const RegisterPage<C> kPage{C::kFunctionType};

// Reply keys and the most bytes the terminal's record holds for each text.
struct TextKey {
  const char* key;
  size_t maxBytes;
};
namespace key {
constexpr TextKey kMaker{"MID", 63}, kModel{"DMODEL", 63}, kTerminalId{"DID", 63}, kSim{"DSIM", 31},
    kSimBcd{"DSIMBCD", 31}, kHardware{"DHVER", 255}, kFirmware{"DFVER", 255};
constexpr const char *kType = "DTYPE", *kGnss = "GNSSA", *kComm = "COMMA";
}  // namespace key
constexpr size_t kIccidBytes = 10;

// One listed bit: its label (kNoLabel: the state text alone) and its state texts when set and clear.
constexpr int kNoLabel = 0;
struct States {
  int set, clear;
};
constexpr States kYesNo{C::kYes, C::kNo}, kSupport{C::kSupported, C::kUnsupported}, kBuild{C::kSplit, C::kAllInOne};
struct Bit {
  int bit, label;
  States states;
};
constexpr Bit kTypeBits[] = {{0, C::kBitPassenger, kYesNo}, {1, C::kBitDangerousGoods, kYesNo}, {2, C::kBitFreight, kYesNo},
                             {3, C::kBitTaxi, kYesNo},    {6, C::kBitDiskVideo, kSupport}, {7, kNoLabel, kBuild},
                             {8, C::kBitTrailer, kSupport}};
constexpr Bit kGnssBits[] = {{0, C::kBitGps, kSupport}, {1, C::kBitBeidou, kSupport}, {2, C::kBitGlonass, kSupport},
                             {3, C::kBitGalileo, kSupport}};
constexpr Bit kCommBits[] = {{0, C::kBitGprs, kSupport},    {1, C::kBitCdma, kSupport},     {2, C::kBitTdScdma, kSupport},
                             {3, C::kBitWcdma, kSupport},   {4, C::kBitCdma2000, kSupport}, {5, C::kBitTdLte, kSupport},
                             {7, C::kBitOther, kSupport}};
constexpr const char* kBitSeparator = "\r\n\t";

// One entry per listed bit: "state label", or the state alone.
template <size_t N>
std::string BitText(int value, const Bit (&bits)[N]) {
  std::string text;
  for (const Bit& b : bits) {
    if (!text.empty()) text += kBitSeparator;
    text += LanguageText((value >> b.bit) & 1 ? b.states.set : b.states.clear);
    if (b.label != kNoLabel) text += ' ' + LanguageText(b.label);
  }
  return text;
}

// The bytes of a reply text as the terminal's record holds them.
std::string RecordBytes(const Json::Value& reply, const TextKey& field) {
  return txt::JsonMemberString(reply, field.key).substr(0, field.maxBytes);
}

std::string TerminalText(const Json::Value& reply, const TextKey& field) {
  return txt::GbkToUtf8(RecordBytes(reply, field));
}

// The BCD text when the terminal sent one; otherwise the first ten bytes of
// the raw ICCID (zero where it is shorter) as twenty upper-case hex digits.
std::string Iccid(const Json::Value& reply) {
  std::string bcd = TerminalText(reply, key::kSimBcd);
  if (!bcd.empty()) return bcd;
  std::string raw = RecordBytes(reply, key::kSim);
  raw.resize(kIccidBytes, '\0');
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string hex;
  hex.reserve(2 * kIccidBytes);
  for (char byte : raw) {
    const auto value = static_cast<unsigned char>(byte);
    hex += kDigits[value >> 4];
    hex += kDigits[value & 0x0F];
  }
  return hex;
}

// The bit list of a reply member, kept for the rest of the query: a fleet's
// terminals are of a few models, so the same lists come back reply after reply.
template <size_t N>
const std::string& BitList(C::BitLists& kept, const Json::Value& reply, const char* member, const Bit (&bits)[N]) {
  const int value = txt::JsonMemberInt(reply, member, 0);
  const auto key = std::make_pair(member, value);
  auto found = kept.find(key);
  if (found != kept.end()) return found->second;
  if (kept.size() >= C::kMaxKeptBitLists) kept.clear();
  return kept.emplace(key, BitText(value, bits)).first->second;
}
}  // namespace


std::string CDlgQueryDeviceAttr::ReplyBlock(const Json::Value& reply, const std::string& vehicle) {
  return Block(vehicle,
               {{C::kLabelType, BitList(bitLists_, reply, key::kType, kTypeBits)},
                {C::kLabelMaker, TerminalText(reply, key::kMaker)},
                {C::kLabelModel, TerminalText(reply, key::kModel)},
                {C::kLabelTerminalId, TerminalText(reply, key::kTerminalId)},
                {C::kLabelIccid, Iccid(reply)},
                {C::kLabelHardware, TerminalText(reply, key::kHardware)},
                {C::kLabelFirmware, TerminalText(reply, key::kFirmware)},
                {C::kLabelGnss, BitList(bitLists_, reply, key::kGnss, kGnssBits)},
                {C::kLabelComm, BitList(bitLists_, reply, key::kComm, kCommBits)}},
               LastLineBreak::kNo);
}
