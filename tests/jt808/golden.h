// Golden bodies of commands: a parameter object as a page sends it, the body
// bytes that carry it, and the object a terminal reads back (the same one
// unless the body leaves something out), checked both ways in each edition.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "jt808/codec.h"
#include "text/json.h"

namespace jt808::golden {

enum class Editions { kBoth, k2013, k2019 };
enum class Way { kBoth, kReadOnly };  // kReadOnly: bytes other senders write, only read back

struct Body {
  std::string what;  // the message, the case and where its layout comes from
  int command;
  std::string param;
  std::string hex;
  std::string decoded = {};  // when the terminal reads something else than param
  Editions editions = Editions::kBoth;
  Way way = Way::kBoth;
};

// A text as the hexadecimal of its bytes, for the readable parts of a body.
inline std::string HexOf(std::string_view text) {
  return Hex(ByteView(reinterpret_cast<const uint8_t*>(text.data()), text.size()));
}

inline Json::Value Parsed(const std::string& json) {
  Json::Value value;
  if (!json.empty()) {
    EXPECT_TRUE(txt::ParseJson(json, value)) << json;
  }
  return value;
}

// JSON written the one way, so that equal objects compare equal as texts.
inline std::string Canonical(const std::string& json) { return txt::WriteCompactJson(Parsed(json)); }

inline void Check(const Body& c) {
  const CommandCodec* codec = FindCommand(c.command);
  ASSERT_NE(codec, nullptr) << c.what;
  for (Edition edition : {Edition::k2013, Edition::k2019}) {
    if ((c.editions == Editions::k2013 && edition != Edition::k2013) ||
        (c.editions == Editions::k2019 && edition != Edition::k2019))
      continue;
    const char* named = edition == Edition::k2013 ? " (2013)" : " (2019)";
    if (c.way == Way::kBoth) {
      try {
        EXPECT_EQ(Hex(codec->encode(Parsed(c.param), edition)), c.hex) << c.what << named;
      } catch (const BodyError& e) {
        ADD_FAILURE() << c.what << named << ": " << e.what();
      }
    }
    try {
      EXPECT_EQ(txt::WriteCompactJson(codec->decode(FromHex(c.hex), edition)),
                Canonical(c.decoded.empty() ? c.param : c.decoded))
          << c.what << named;
    } catch (const BodyError& e) {
      ADD_FAILURE() << c.what << named << ": " << e.what();
    }
  }
}

// What a body cannot carry, or a terminal cannot read.
struct Refusal {
  std::string what;
  int command;
  std::string param;  // refused on the way out; empty: hex is refused on the way in
  std::string hex = {};
};

inline void Check(const Refusal& c) {
  const CommandCodec* codec = FindCommand(c.command);
  ASSERT_NE(codec, nullptr) << c.what;
  if (!c.param.empty()) {
    EXPECT_THROW(codec->encode(Parsed(c.param), Edition::k2013), BodyError) << c.what;
  } else {
    EXPECT_THROW(codec->decode(FromHex(c.hex), Edition::k2013), BodyError) << c.what;
  }
}

}  // namespace jt808::golden
