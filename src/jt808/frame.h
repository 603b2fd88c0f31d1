// The frame around every message: 0x7E at both ends, 0x7D escaping between,
// a header (message id, body attributes, the terminal's phone number in BCD,
// the serial number, and the package numbers of a sub-packaged message) and a
// check code (the exclusive or of header and body).
//
// The 2013 edition's header carries a 6-byte phone number; the 2019 edition
// sets bit 14 of the body attributes, adds a protocol version byte and
// carries a 10-byte phone number. A body longer than kMaxPackageBody goes out
// in sub-packages that the receiver puts back together.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "jt808/bytes.h"
#include "jt808/codec.h"

namespace jt808 {

constexpr uint8_t kFlag = 0x7E;
constexpr uint8_t kEscape = 0x7D;
constexpr size_t kMaxPackageBody = 1023;
constexpr uint8_t kVersion2019 = 1;

struct Header {
  uint16_t id = 0;
  Edition edition = Edition::k2013;
  uint8_t version = 0;    // the 2019 edition's protocol version (1)
  uint8_t encryption = 0; // bits 10-12 of the body attributes (1: RSA)
  std::string phone;      // decimal digits, leading zeros of the BCD field removed
  uint16_t serial = 0;
  uint16_t packages = 0;  // 0: not sub-packaged; otherwise how many packages
  uint16_t package = 0;   // this package's number, from 1
};

// The header of a message to or from a terminal of the edition (the 2019
// edition's protocol version included).
Header MessageHeader(uint16_t id, Edition edition, const std::string& phone, uint16_t serial);

struct Frame {
  Header header;
  Bytes body;
};

// One frame with its delimiters, escaped, check code included. Throws
// BodyError for a body over kMaxPackageBody or a phone number that does not fit.
Bytes EncodeFrame(const Frame& frame);

// A message as the frames that carry it: one frame, or sub-packages numbered
// from 1 with serial numbers from header.serial on when the body is longer
// than kMaxPackageBody.
std::vector<Bytes> EncodeMessage(const Header& header, ByteView body);

// The frame between two delimiters (neither included), unescaped and checked;
// nullopt for a bad escape, a bad check code or a header that does not fit.
std::optional<Frame> DecodeFrame(ByteView escaped);

// Frames out of a byte stream that arrives in pieces: Feed what was read,
// then take the complete frames. Bytes before the first delimiter are
// skipped; frames that do not decode (noise between two frames reads as one)
// and frames longer than maxFrame are dropped and counted.
class FrameReader {
 public:
  explicit FrameReader(size_t maxFrame = 4 * kMaxPackageBody);
  void Feed(ByteView bytes);
  std::optional<Frame> Next();
  size_t Dropped() const { return dropped_; }

 private:
  size_t maxFrame_;
  Bytes pending_;     // escaped bytes of the frame being read
  bool inFrame_ = false;
  std::vector<Frame> ready_;
  size_t readyAt_ = 0;
  size_t dropped_ = 0;
};

// Puts sub-packaged messages back together, per terminal phone and message
// id; a frame that is not sub-packaged passes straight through. Packages may
// come in any order. A message whose packages do not all arrive is dropped
// when another first package of the same kind comes (not the same one again)
// or another package count, or when kMaxOpen messages are open and another
// one begins.
class Reassembler {
 public:
  static constexpr size_t kMaxOpen = 64;
  // What the unfinished messages may hold together: a terminal that starts
  // messages and never ends them cannot make the receiver hold more; the
  // oldest unfinished messages go first.
  static constexpr size_t kMaxHeldBytes = 16u << 20;
  explicit Reassembler(size_t maxHeldBytes = kMaxHeldBytes) : maxHeld_(maxHeldBytes) {}
  // The whole message once its last package arrived; the header is the first
  // package's, with packages and package set to 0.
  std::optional<Frame> Add(Frame frame);
  size_t Open() const { return open_.size(); }
  size_t HeldBytes() const { return held_; }

 private:
  struct Partial {
    Header first;
    std::map<uint16_t, Bytes> parts;
    uint64_t order = 0;
    size_t bytes = 0;
  };
  using Key = std::pair<std::string, uint16_t>;
  void Erase(std::map<Key, Partial>::iterator it);
  void DropOldest();
  std::map<Key, Partial> open_;
  uint64_t order_ = 0;
  size_t maxHeld_;
  size_t held_ = 0;
};

}  // namespace jt808
