// A remembered control, described in one 32-bit word: bits 28-31 the kind,
// bits 16-27 the default (combo index or check state), bits 0-15 the control id.
// For a text control the whole word is the control id.
#pragma once

#include <cstdint>

namespace SavedControl {
enum Kind : uint32_t { kText = 0, kCombo = 1, kCheck = 2 };

constexpr uint32_t Text(int id) { return static_cast<uint32_t>(id); }
constexpr uint32_t Combo(int id, int defaultIndex) {
  return (kCombo << 28) | ((static_cast<uint32_t>(defaultIndex) & 0xFFF) << 16) | (static_cast<uint32_t>(id) & 0xFFFF);
}
constexpr uint32_t Check(int id, bool defaultChecked) {
  return (kCheck << 28) | ((defaultChecked ? 1u : 0u) << 16) | (static_cast<uint32_t>(id) & 0xFFFF);
}
constexpr Kind KindOf(uint32_t d) { return static_cast<Kind>(d >> 28); }
constexpr int DefaultOf(uint32_t d) { return static_cast<int>((d >> 16) & 0xFFF); }
constexpr int ControlOf(uint32_t d) {
  return KindOf(d) == kText ? static_cast<int>(d) : static_cast<int>(d & 0xFFFF);
}
}  // namespace SavedControl
