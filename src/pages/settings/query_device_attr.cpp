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
const PageRegistration kPage{{kFunctionType}, PageHost::kBoth, [](int) { return std::make_unique<CDlgQueryDeviceAttr>(); }};

enum Text : int {
  kVehicle = 13421, kType = 13601, kMaker = 13602, kModel = 13603, kTerminalId = 13604, kIccid = 13605,
  kHardware = 13606, kFirmware = 13607, kGnss = 13608, kComm = 13609,
  kYes = 13611, kNo = 13612, kSupported = 13613, kUnsupported = 13614, kOneBody = 13621, kSplit = 13620,
};
constexpr int kNoLabel = 0;
constexpr const char* kBitSeparator = "\r\n\t";
constexpr size_t kIccidBytes = 10;
constexpr size_t kShortText = 63, kSimText = 31, kVersionText = 255;

struct Bit {
  int bit;
  int label;  // kNoLabel: the state text alone
  int set, clear;
};
constexpr Bit kTypeBits[] = {{0, 13615, kYes, kNo},  {1, 13616, kYes, kNo},
                             {2, 13617, kYes, kNo},  {3, 13618, kYes, kNo},
                             {6, 13619, kSupported, kUnsupported}, {7, kNoLabel, kOneBody, kSplit},
                             {8, 13634, kSupported, kUnsupported}};
constexpr Bit kGnssBits[] = {{0, 13622, kSupported, kUnsupported}, {1, 13623, kSupported, kUnsupported},
                             {2, 13624, kSupported, kUnsupported}, {3, 13625, kSupported, kUnsupported}};
constexpr Bit kCommBits[] = {{0, 13626, kSupported, kUnsupported}, {1, 13627, kSupported, kUnsupported},
                             {2, 13628, kSupported, kUnsupported}, {3, 13629, kSupported, kUnsupported},
                             {4, 13630, kSupported, kUnsupported}, {5, 13631, kSupported, kUnsupported},
                             {7, 13633, kSupported, kUnsupported}};

template <size_t N>
std::string BitText(int value, const Bit (&bits)[N]) {
  std::string text;
  for (const Bit& b : bits) {
    std::string entry = LanguageText((value >> b.bit) & 1 ? b.set : b.clear);
    if (b.label != kNoLabel) entry += " " + LanguageText(b.label);
    AddStringStatus(text, entry, kBitSeparator);
  }
  return text;
}

// A text of the reply: terminal bytes in the code page, cut to its field's size.
std::string TerminalText(const Json::Value& reply, const char* key, size_t maxBytes) {
  return txt::GbkToUtf8(txt::JsonMemberString(reply, key).substr(0, maxBytes));
}

std::string Iccid(const Json::Value& reply) {
  const std::string bcd = TerminalText(reply, "DSIMBCD", kSimText);
  if (!bcd.empty()) return bcd;
  const std::string raw = txt::JsonMemberString(reply, "DSIM");
  std::string hex;
  for (size_t i = 0; i < raw.size() && i < kIccidBytes; ++i) {
    char digits[3];
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(raw[i]));
    hex += digits;
  }
  return hex;
}
}  // namespace

std::string CDlgQueryDeviceAttr::ReplyBlock(const Json::Value& reply, const std::string& vehicle) {
  const std::string lines[] = {
      Line(kVehicle, vehicle),
      Line(kType, BitText(txt::JsonMemberInt(reply, "DTYPE", 0), kTypeBits)),
      Line(kMaker, TerminalText(reply, "MID", kShortText)),
      Line(kModel, TerminalText(reply, "DMODEL", kShortText)),
      Line(kTerminalId, TerminalText(reply, "DID", kShortText)),
      Line(kIccid, Iccid(reply)),
      Line(kHardware, TerminalText(reply, "DHVER", kVersionText)),
      Line(kFirmware, TerminalText(reply, "DFVER", kVersionText)),
      Line(kGnss, BitText(txt::JsonMemberInt(reply, "GNSSA", 0), kGnssBits)),
      Line(kComm, BitText(txt::JsonMemberInt(reply, "COMMA", 0), kCommBits)),
  };
  std::string block;
  for (const std::string& line : lines) {
    if (!block.empty()) block += "\r\n";
    block += line;
  }
  return block;
}
