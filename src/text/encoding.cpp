// Encodings: UTF-8 inside, code page 936 through iconv at the edges, UTF-16
// at the plug-in boundary, and the form encoding of request texts.
#include "text/encoding.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>

namespace txt {
namespace {

constexpr char kDefaultChar = '?';
constexpr char32_t kReplacement = 0xFFFD;
constexpr std::string_view kReplacementUtf8 = "\xEF\xBF\xBD";

// An iconv descriptor; each thread keeps one per direction.
class Converter {
 public:
  Converter(const char* to, const char* from) : cd_(iconv_open(to, from)) {}
  ~Converter() {
    if (Ok()) iconv_close(cd_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  // Converts all of `in` onto `out`. Where a sequence cannot be converted
  // (no mapping, invalid or cut), appends `replacement` and goes on after the
  // skip(rest) bytes that `skip` says the bad sequence takes (at least one).
  template <class Skip>
  void Convert(std::string_view in, std::string& out, std::string_view replacement, Skip skip) {
    char* src = const_cast<char*>(in.data());
    size_t srcLeft = in.size();
    if (Ok()) iconv(cd_, nullptr, nullptr, nullptr, nullptr);
    char buffer[1024];
    while (srcLeft > 0) {
      char* dst = buffer;
      size_t dstLeft = sizeof buffer;
      const size_t r = Ok() ? iconv(cd_, &src, &srcLeft, &dst, &dstLeft) : static_cast<size_t>(-1);
      out.append(buffer, sizeof buffer - dstLeft);
      if (r != static_cast<size_t>(-1) || (Ok() && errno == E2BIG)) continue;
      out += replacement;
      const size_t n = std::clamp<size_t>(skip(std::string_view(src, srcLeft)), 1, srcLeft);
      src += n;
      srcLeft -= n;
    }
  }

 private:
  bool Ok() const { return cd_ != reinterpret_cast<iconv_t>(-1); }
  iconv_t cd_;
};

// Decodes one UTF-8 character at text[i]; returns its length, 0 when invalid.
size_t DecodeUtf8(std::string_view text, size_t i, char32_t& cp) {
  const auto b = [&](size_t k) { return static_cast<unsigned char>(text[i + k]); };
  const unsigned char c = b(0);
  size_t len;
  if (c < 0x80) {
    cp = c;
    return 1;
  } else if ((c >> 5) == 0x6) {
    len = 2, cp = c & 0x1F;
  } else if ((c >> 4) == 0xE) {
    len = 3, cp = c & 0x0F;
  } else if ((c >> 3) == 0x1E) {
    len = 4, cp = c & 0x07;
  } else {
    return 0;
  }
  if (i + len > text.size()) return 0;
  for (size_t k = 1; k < len; ++k) {
    if ((b(k) & 0xC0) != 0x80) return 0;
    cp = (cp << 6) | (b(k) & 0x3F);
  }
  static constexpr char32_t kMin[] = {0, 0, 0x80, 0x800, 0x10000};
  if (cp < kMin[len] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0;
  return len;
}

void AppendUtf8(std::string& out, char32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else if (cp < 0x10000) {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (cp >> 18));
    out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

bool IsAscii(std::string_view text) {
  for (char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}
}  // namespace

std::string Utf8ToGbk(std::string_view utf8) {
  if (IsAscii(utf8)) return std::string(utf8);
  thread_local Converter converter("CP936", "UTF-8");
  std::string out;
  out.reserve(utf8.size());
  // Invalid bytes are cut out here, so iconv only sees valid runs and each
  // character it refuses is one without a mapping.
  for (size_t i = 0; i < utf8.size();) {
    size_t end = i;
    char32_t cp;
    for (size_t len; end < utf8.size() && (len = DecodeUtf8(utf8, end, cp)) != 0;) end += len;
    converter.Convert(utf8.substr(i, end - i), out, std::string_view(&kDefaultChar, 1),
                      [&](std::string_view rest) { return DecodeUtf8(rest, 0, cp); });
    if (end < utf8.size()) out += kDefaultChar, ++end;
    i = end;
  }
  return out;
}

std::string GbkToUtf8(std::string_view gbk) {
  if (IsAscii(gbk)) return std::string(gbk);
  thread_local Converter converter("UTF-8", "CP936");
  std::string out;
  out.reserve(gbk.size() * 3 / 2);
  converter.Convert(gbk, out, kReplacementUtf8, [](std::string_view) { return size_t{1}; });
  return out;
}

std::u16string Utf8ToUtf16(std::string_view utf8) {
  std::u16string out;
  out.reserve(utf8.size());
  for (size_t i = 0; i < utf8.size();) {
    char32_t cp;
    size_t len = DecodeUtf8(utf8, i, cp);
    if (len == 0) cp = kReplacement, len = 1;
    if (cp >= 0x10000) {
      cp -= 0x10000;
      out += static_cast<char16_t>(0xD800 + (cp >> 10));
      out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
    } else {
      out += static_cast<char16_t>(cp);
    }
    i += len;
  }
  return out;
}

std::string Utf16ToUtf8(std::u16string_view utf16) {
  std::string out;
  out.reserve(utf16.size());
  for (size_t i = 0; i < utf16.size(); ++i) {
    char32_t cp = utf16[i];
    if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < utf16.size() && utf16[i + 1] >= 0xDC00 && utf16[i + 1] <= 0xDFFF) {
      cp = 0x10000 + ((cp - 0xD800) << 10) + (utf16[i + 1] - 0xDC00);
      ++i;
    } else if (cp >= 0xD800 && cp <= 0xDFFF) {
      cp = kReplacement;
    }
    AppendUtf8(out, cp);
  }
  return out;
}

bool IsValidUtf8(std::string_view text) {
  for (size_t i = 0; i < text.size();) {
    char32_t cp;
    const size_t len = DecodeUtf8(text, i, cp);
    if (len == 0) return false;
    i += len;
  }
  return true;
}

std::string SanitizeUtf8(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    char32_t cp;
    const size_t len = DecodeUtf8(text, i, cp);
    if (len == 0) {
      AppendUtf8(out, kReplacement);
      ++i;
    } else {
      out.append(text.substr(i, len));
      i += len;
    }
  }
  return out;
}

size_t Utf8Length(std::string_view text) {
  size_t n = 0;
  for (char c : text) {
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) ++n;
  }
  return n;
}

std::string Utf8Left(std::string_view text, size_t maxChars) {
  size_t chars = 0;
  for (size_t i = 0; i < text.size(); ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
      if (chars == maxChars) return std::string(text.substr(0, i));
      ++chars;
    }
  }
  return std::string(text);
}

std::string FormEncode(std::string_view bytes) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out;
  out.reserve(bytes.size() * 3);
  for (char ch : bytes) {
    const unsigned char c = static_cast<unsigned char>(ch);
    const bool keep = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '*' ||
                      c == '-' || c == '.' || c == '_';
    if (keep) {
      out += static_cast<char>(c);
    } else if (c == ' ') {
      out += '+';
    } else {
      out += '%';
      out += kHex[c >> 4];
      out += kHex[c & 0xF];
    }
  }
  return out;
}

namespace {
int FormHexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}
bool IsEscape(std::string_view text, size_t i) {
  return text[i] == '%' && i + 2 < text.size() && FormHexDigit(text[i + 1]) >= 0 && FormHexDigit(text[i + 2]) >= 0;
}
}  // namespace

std::string FormDecode(std::string_view text) {
  bool encoded = false;
  for (size_t i = 0; i < text.size() && !encoded; ++i) encoded = IsEscape(text, i);
  if (!encoded) return std::string(text);
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '+') {
      out += ' ';
    } else if (IsEscape(text, i)) {
      out += static_cast<char>(FormHexDigit(text[i + 1]) * 16 + FormHexDigit(text[i + 2]));
      i += 2;
    } else {
      out += text[i];
    }
  }
  return out;
}
}  // namespace txt
