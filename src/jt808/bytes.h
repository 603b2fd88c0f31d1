// Message bodies as the terminals see them: big-endian words, BCD digits and
// code page 936 texts. A Writer appends fields; a Reader takes them in order
// and throws BodyError when the body ends early or a field cannot be read, so
// a decoder reads straight through and its caller turns the error into the
// message's fallback.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace jt808 {

using Bytes = std::vector<uint8_t>;
using ByteView = std::span<const uint8_t>;

class BodyError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class Writer {
 public:
  Writer& U8(uint32_t value);
  Writer& U16(uint32_t value);
  Writer& U32(uint32_t value);
  Writer& Raw(ByteView bytes);
  Writer& Raw(std::string_view bytes);
  // Decimal digits packed two per byte, left-padded with '0' to 2*size
  // digits; throws BodyError when the text is not digits or is too long.
  Writer& Bcd(std::string_view digits, size_t size);
  // "YYMMDDhhmmss" from "YYYY-MM-DD hh:mm:ss" (or the twelve digits themselves), six BCD bytes.
  Writer& BcdTime(std::string_view time);
  // A UTF-8 text as code page 936 bytes, unterminated.
  Writer& Gbk(std::string_view utf8);
  // Bytes padded with `fill` (or cut) to exactly size bytes.
  Writer& Fixed(std::string_view bytes, size_t size, uint8_t fill = 0);
  // Overwrites a word written earlier (a count known only at the end).
  void PatchU8(size_t at, uint32_t value);
  void PatchU16(size_t at, uint32_t value);

  size_t Size() const { return bytes_.size(); }
  const Bytes& Data() const { return bytes_; }
  Bytes Take() { return std::move(bytes_); }

 private:
  Bytes bytes_;
};

class Reader {
 public:
  explicit Reader(ByteView bytes) : bytes_(bytes) {}

  uint8_t U8();
  uint16_t U16();
  uint32_t U32();
  ByteView Raw(size_t size);
  std::string RawText(size_t size);
  // 2*size decimal digits; throws BodyError on a nibble above 9.
  std::string Bcd(size_t size);
  // Six BCD bytes as "YYYY-MM-DD hh:mm:ss" (20YY).
  std::string BcdTime();
  // size code page 936 bytes as UTF-8.
  std::string Gbk(size_t size);
  // A fixed field with its trailing fill bytes (0 and space) removed.
  std::string FixedText(size_t size);
  ByteView Rest();

  size_t Left() const { return bytes_.size() - at_; }
  bool AtEnd() const { return Left() == 0; }
  size_t Offset() const { return at_; }

 private:
  void Need(size_t size) const;
  ByteView bytes_;
  size_t at_ = 0;
};

// Lower-case hexadecimal with a space between bytes ("7e 01 02"), for logs and test failures.
std::string Hex(ByteView bytes);
// The inverse of Hex: spaces ignored; throws BodyError on anything else.
Bytes FromHex(std::string_view hex);

}  // namespace jt808
