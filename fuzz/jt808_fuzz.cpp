// The terminals' binary protocol on arbitrary bytes: the stream reader (in
// pieces whose size the first byte picks) and the reassembler, then every
// registered answer codec and every registered command codec (a terminal's
// side) on each message read and on the whole input as a body, in both
// editions; what a decoder reads is encoded again. BodyError is the one way
// to refuse a body; any other exception escapes and is a finding.
#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "jt808/codec.h"
#include "jt808/frame.h"

namespace {
using namespace jt808;

void AllDecoders(ByteView body, Edition edition, uint16_t serial) {
  for (uint16_t id : Answers()) {
    const AnswerCodec* codec = FindAnswer(id);
    if (!codec->decode) continue;
    const AnswerContext context{serial, 0, 0, edition};
    try {
      const Json::Value reply = codec->decode(body, context);
      if (codec->encode) (void)codec->encode(reply, context);
    } catch (const BodyError&) {
    }
  }
  for (int command : Commands()) {
    const CommandCodec* codec = FindCommand(command);
    if (!codec->decode) continue;
    try {
      const Json::Value param = codec->decode(body, edition);
      if (codec->encode) (void)codec->encode(param, edition);
    } catch (const BodyError&) {
    }
  }
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const ByteView input(data, size);
  const size_t piece = size == 0 ? 1 : data[0] % 16 + 1;
  FrameReader reader;
  Reassembler whole;
  for (size_t at = 0; at < size; at += piece) {
    reader.Feed(input.subspan(at, std::min(piece, size - at)));
    while (auto frame = reader.Next()) {
      if (auto message = whole.Add(std::move(*frame))) {
        AllDecoders(message->body, message->header.edition, message->header.serial);
        (void)EncodeMessage(message->header, message->body);
      }
    }
  }
  (void)reader.Dropped();
  AllDecoders(input, Edition::k2013, 0);
  AllDecoders(input, Edition::k2019, 0);
  return 0;
}
