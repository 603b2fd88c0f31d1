// Turns a terminal attribute reply into its block of ten lines: texts from
// the terminal's code page, the ICCID, and the bit lists of the terminal
// type and the GNSS and communication modules.
#include "pages/settings/query_device_attr.h"

#include <cstdio>

#include "command/page_registry.h"
#include "host/hostcore.h"
#include "lang/language.h"
#include "text/encoding.h"
#include "text/json.h"

namespace {
constexpr int kFunctionType = 45;
const plat::templates::Registration kRegistration{CAttrQueryPage::MakeTemplate(CDlgQueryDeviceAttr::kTemplate)};
const PageRegistration kPage{{kFunctionType}, PageHost::kBoth,
                              [](int) { return std::make_unique<CDlgQueryDeviceAttr>(); }};

enum Text : int {
  kLabelType = 13601, kLabelMaker = 13602, kLabelModel = 13603, kLabelTerminalId = 13604, kLabelIccid = 13605,
  kLabelHardware = 13606, kLabelFirmware = 13607, kLabelGnss = 13608, kLabelComm = 13609,
  kYes = 13611, kNo = 13612, kSupported = 13613, kUnsupported = 13614, kAllInOne = 13620, kSplit = 13621,
};

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
constexpr States kYesNo{kYes, kNo}, kSupport{kSupported, kUnsupported}, kBuild{kSplit, kAllInOne};
struct Bit {
  int bit, label;
  States states;
};
constexpr Bit kTypeBits[] = {{0, 13615, kYesNo},  {1, 13616, kYesNo},     {2, 13617, kYesNo}, {3, 13618, kYesNo},
                             {6, 13619, kSupport}, {7, kNoLabel, kBuild}, {8, 13634, kSupport}};
constexpr Bit kGnssBits[] = {{0, 13622, kSupport}, {1, 13623, kSupport}, {2, 13624, kSupport}, {3, 13625, kSupport}};
constexpr Bit kCommBits[] = {{0, 13626, kSupport}, {1, 13627, kSupport}, {2, 13628, kSupport}, {3, 13629, kSupport},
                             {4, 13630, kSupport}, {5, 13631, kSupport}, {7, 13633, kSupport}};
constexpr const char* kBitSeparator = "\r\n\t";

// One entry per listed bit: "state label", or the state alone.
template <size_t N>
std::string BitText(const Json::Value& reply, const char* member, const Bit (&bits)[N]) {
  const int value = txt::JsonMemberInt(reply, member, 0);
  std::string text;
  for (const Bit& b : bits) {
    std::string entry = LanguageText((value >> b.bit) & 1 ? b.states.set : b.states.clear);
    if (b.label != kNoLabel) entry += " " + LanguageText(b.label);
    AddStringStatus(text, entry, kBitSeparator);
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
  std::string hex;
  for (char byte : raw) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(byte));
    hex += digits;
  }
  return hex;
}
}  // namespace

std::string CDlgQueryDeviceAttr::ReplyBlock(const Json::Value& reply, const std::string& vehicle) {
  return Block(vehicle,
               {{kLabelType, BitText(reply, key::kType, kTypeBits)},
                {kLabelMaker, TerminalText(reply, key::kMaker)},
                {kLabelModel, TerminalText(reply, key::kModel)},
                {kLabelTerminalId, TerminalText(reply, key::kTerminalId)},
                {kLabelIccid, Iccid(reply)},
                {kLabelHardware, TerminalText(reply, key::kHardware)},
                {kLabelFirmware, TerminalText(reply, key::kFirmware)},
                {kLabelGnss, BitText(reply, key::kGnss, kGnssBits)},
                {kLabelComm, BitText(reply, key::kComm, kCommBits)}},
               LastLineBreak::kNo);
}
