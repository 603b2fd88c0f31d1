#include "jt808/bytes.h"

#include "text/encoding.h"

namespace jt808 {
namespace {
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

int HexValue(char c) {
  if (IsDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}
}  // namespace

Writer& Writer::U8(uint32_t value) {
  bytes_.push_back(static_cast<uint8_t>(value));
  return *this;
}

Writer& Writer::U16(uint32_t value) { return U8(value >> 8).U8(value); }

Writer& Writer::U32(uint32_t value) { return U16(value >> 16).U16(value); }

Writer& Writer::Raw(ByteView bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

Writer& Writer::Raw(std::string_view bytes) {
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  return *this;
}

Writer& Writer::Bcd(std::string_view digits, size_t size) {
  if (digits.size() > 2 * size) throw BodyError("too many digits for " + std::to_string(size) + " BCD bytes");
  std::string padded(2 * size - digits.size(), '0');
  padded += digits;
  for (size_t i = 0; i < padded.size(); i += 2) {
    if (!IsDigit(padded[i]) || !IsDigit(padded[i + 1])) throw BodyError("not a decimal digit: " + std::string(digits));
    U8(((padded[i] - '0') << 4) | (padded[i + 1] - '0'));
  }
  return *this;
}

Writer& Writer::BcdTime(std::string_view time) {
  std::string digits;
  for (char c : time) {
    if (IsDigit(c)) digits += c;
  }
  // A written time has its century; bare digits have not.
  const size_t wanted = digits.size() == time.size() ? 12 : 14;
  if (digits.size() != wanted) throw BodyError("not a time: " + std::string(time));
  if (wanted == 14) digits.erase(0, 2);
  return Bcd(digits, 6);
}

Writer& Writer::Gbk(std::string_view utf8) { return Raw(txt::Utf8ToGbk(utf8)); }

Writer& Writer::Fixed(std::string_view bytes, size_t size, uint8_t fill) {
  const size_t n = std::min(bytes.size(), size);
  Raw(bytes.substr(0, n));
  bytes_.insert(bytes_.end(), size - n, fill);
  return *this;
}

void Writer::PatchU8(size_t at, uint32_t value) { bytes_.at(at) = static_cast<uint8_t>(value); }

void Writer::PatchU16(size_t at, uint32_t value) {
  bytes_.at(at) = static_cast<uint8_t>(value >> 8);
  bytes_.at(at + 1) = static_cast<uint8_t>(value);
}

void Reader::Need(size_t size) const {
  if (size > Left()) {
    throw BodyError("body ends at byte " + std::to_string(bytes_.size()) + ", " + std::to_string(size) +
                    " more wanted at " + std::to_string(at_));
  }
}

uint8_t Reader::U8() {
  Need(1);
  return bytes_[at_++];
}

uint16_t Reader::U16() {
  const uint16_t high = U8();
  return static_cast<uint16_t>((high << 8) | U8());
}

uint32_t Reader::U32() {
  const uint32_t high = U16();
  return (high << 16) | U16();
}

ByteView Reader::Raw(size_t size) {
  Need(size);
  ByteView part = bytes_.subspan(at_, size);
  at_ += size;
  return part;
}

std::string Reader::RawText(size_t size) {
  ByteView part = Raw(size);
  return std::string(part.begin(), part.end());
}

std::string Reader::Bcd(size_t size) {
  std::string digits;
  for (uint8_t byte : Raw(size)) {
    if ((byte >> 4) > 9 || (byte & 0x0F) > 9) throw BodyError("not a BCD byte");
    digits += static_cast<char>('0' + (byte >> 4));
    digits += static_cast<char>('0' + (byte & 0x0F));
  }
  return digits;
}

std::string Reader::BcdTime() {
  const std::string d = Bcd(6);
  return "20" + d.substr(0, 2) + "-" + d.substr(2, 2) + "-" + d.substr(4, 2) + " " + d.substr(6, 2) + ":" +
         d.substr(8, 2) + ":" + d.substr(10, 2);
}

std::string Reader::Gbk(size_t size) { return txt::GbkToUtf8(RawText(size)); }

std::string Reader::FixedText(size_t size) {
  std::string text = RawText(size);
  while (!text.empty() && (text.back() == '\0' || text.back() == ' ')) text.pop_back();
  return text;
}

ByteView Reader::Rest() { return Raw(Left()); }

std::string Hex(ByteView bytes) {
  static constexpr char kDigits[] = "0123456789abcdef";
  std::string text;
  for (uint8_t byte : bytes) {
    if (!text.empty()) text += ' ';
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0x0F];
  }
  return text;
}

Bytes FromHex(std::string_view hex) {
  Bytes bytes;
  int high = -1;
  for (char c : hex) {
    if (c == ' ') continue;
    const int value = HexValue(c);
    if (value < 0) throw BodyError("not hexadecimal: " + std::string(hex));
    if (high < 0) {
      high = value;
    } else {
      bytes.push_back(static_cast<uint8_t>(high << 4 | value));
      high = -1;
    }
  }
  if (high >= 0) throw BodyError("odd number of hexadecimal digits");
  return bytes;
}

}  // namespace jt808
