// Golden bodies of commands: a parameter object as a page sends it, the body
// bytes that carry it in both editions, and the object a terminal reads back
// (the same one unless the body leaves something out).
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "jt808/codec.h"
#include "text/json.h"

namespace jt808::bodies {

struct Body {
  std::string what;  // the message, the case and where its layout comes from
  int command;
  std::string param;
  std::string hex;
  std::string decoded = {};  // what the terminal reads when it is not param
  bool readOnly = false;     // bytes other senders write: only read back
};

// A text as the hexadecimal of its bytes, for the readable parts of a body.
inline std::string HexOf(std::string_view text) {
  return Hex(ByteView(reinterpret_cast<const uint8_t*>(text.data()), text.size()));
}

inline Json::Value Parsed(const std::string& json) {
  Json::Value value;
  EXPECT_TRUE(txt::ParseJson(json, value)) << json;
  return value;
}

inline void Check(const Body& c) {
  const CommandCodec* codec = FindCommand(c.command);
  ASSERT_NE(codec, nullptr) << c.what;
  const std::string decoded = txt::WriteCompactJson(Parsed(c.decoded.empty() ? c.param : c.decoded));
  for (Edition edition : {Edition::k2013, Edition::k2019}) {
    const std::string what = c.what + (edition == Edition::k2013 ? " (2013)" : " (2019)");
    try {
      if (!c.readOnly) {
        EXPECT_EQ(Hex(codec->encode(Parsed(c.param), edition)), c.hex) << what;
      }
      EXPECT_EQ(txt::WriteCompactJson(codec->decode(FromHex(c.hex), edition)), decoded) << what;
    } catch (const BodyError& e) {
      ADD_FAILURE() << what << ": " << e.what();
    }
  }
}

// What a body cannot carry (param), or a terminal cannot read (hex).
struct Refusal {
  std::string what;
  int command;
  std::string param;
  std::string hex = {};
};

inline void Check(const Refusal& c) {
  const CommandCodec* codec = FindCommand(c.command);
  ASSERT_NE(codec, nullptr) << c.what;
  if (c.hex.empty()) {
    EXPECT_THROW(codec->encode(Parsed(c.param), Edition::k2013), BodyError) << c.what;
  } else {
    EXPECT_THROW(codec->decode(FromHex(c.hex), Edition::k2013), BodyError) << c.what;
  }
}

}  // namespace jt808::bodies
