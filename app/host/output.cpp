#include "output.h"

namespace out {
namespace {
FILE* g_stream = stdout;

std::string Hex(unsigned char c) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  return std::string("\\x") + kHex[c >> 4] + kHex[c & 0xF];
}
}  // namespace

std::string EscapeBytes(std::string_view bytes) {
  std::string text;
  for (char ch : bytes) {
    const auto c = static_cast<unsigned char>(ch);
    text += (c >= 0x20 && c < 0x7F && c != '\\') ? std::string(1, ch) : Hex(c);
  }
  return text;
}

std::string EscapeControls(std::string_view text) {
  std::string escaped;
  for (char ch : text) {
    const auto c = static_cast<unsigned char>(ch);
    escaped += (c < 0x20 || c == 0x7F) ? Hex(c) : std::string(1, ch);
  }
  return escaped;
}

void Line(const std::string& line) {
  std::fputs(line.c_str(), g_stream);
  std::fputc('\n', g_stream);
  std::fflush(g_stream);
}

void Error(const std::string& line) {
  std::fflush(g_stream);
  std::fputs(line.c_str(), stderr);
  std::fputc('\n', stderr);
  std::fflush(stderr);
}

void SetStream(FILE* stream) { g_stream = stream; }
}  // namespace out
