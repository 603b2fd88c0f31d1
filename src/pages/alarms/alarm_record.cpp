#include "pages/alarms/alarm_record.h"

#include <algorithm>
#include <cstring>

namespace {
bool StartsWithNoCase(std::string_view text, std::string_view prefix) {
  if (text.size() < prefix.size()) return false;
  for (size_t i = 0; i < prefix.size(); ++i) {
    const auto lower = [](char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; };
    if (lower(text[i]) != lower(prefix[i])) return false;
  }
  return true;
}
}  // namespace

std::string AlarmView::Text(size_t offset, size_t size) const {
  const char* text = reinterpret_cast<const char*>(record_.bytes + offset);
  return std::string(text, strnlen(text, size));
}

uint16_t AlarmView::U16(size_t offset) const {
  return static_cast<uint16_t>(record_.bytes[offset] | (record_.bytes[offset + 1] << 8));
}

uint32_t AlarmView::U32(size_t offset) const {
  uint32_t value = 0;
  for (size_t i = 0; i < 4; ++i) value |= static_cast<uint32_t>(record_.bytes[offset + i]) << (8 * i);
  return value;
}

std::string AlarmView::CodeAfter(std::string_view prefix) const {
  const std::string text = AlarmText();
  if (!StartsWithNoCase(text, prefix)) return "";
  const std::string rest = text.substr(prefix.size());
  return rest.substr(0, rest.find(','));
}

void RecordWriter::Put(size_t offset, uint32_t value, size_t width) {
  for (size_t i = 0; i < width && offset + i < bytes_.size(); ++i) bytes_[offset + i] = static_cast<uint8_t>(value >> (8 * i));
}

uint32_t RecordWriter::U32(size_t offset) const {
  uint32_t value = 0;
  for (size_t i = 0; i < 4 && offset + i < bytes_.size(); ++i) value |= static_cast<uint32_t>(bytes_[offset + i]) << (8 * i);
  return value;
}

void RecordWriter::PutText(size_t offset, size_t size, std::string_view text) {
  if (size == 0 || offset + size > bytes_.size()) return;
  size_t n = std::min(text.size(), size - 1);
  // Back off to the start of a character when the cut falls inside one.
  if (n < text.size()) {
    while (n > 0 && (static_cast<unsigned char>(text[n]) & 0xC0) == 0x80) --n;
  }
  std::memcpy(bytes_.data() + offset, text.data(), n);
  std::fill(bytes_.begin() + static_cast<std::ptrdiff_t>(offset + n), bytes_.begin() + static_cast<std::ptrdiff_t>(offset + size), 0);
}

std::vector<std::string> SplitText(const std::string& text, char separator) {
  std::vector<std::string> parts;
  size_t start = 0;
  for (size_t at = text.find(separator); at != std::string::npos; at = text.find(separator, start)) {
    parts.push_back(text.substr(start, at - start));
    start = at + 1;
  }
  parts.push_back(text.substr(start));
  return parts;
}
