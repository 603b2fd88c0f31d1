// Whole frames of both editions against their exact bytes, the stream reader
// on pieces, noise and damaged frames, and sub-packaged messages put back
// together.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "jt808/frame.h"

namespace jt808 {
namespace {

// Field layouts: JT/T 808-2013 message header table (id, body attributes,
// BCD[6] phone, serial, package item) and body attribute bits (length 0-9,
// encryption 10-12, sub-package 13); JT/T 808-2019 message header table (bit
// 14 version flag, protocol version byte, BCD[10] phone). The check code is
// the exclusive or of header and body; 7e and 7d travel as 7d 02 and 7d 01.
struct Golden {
  const char* what;
  Header header;
  const char* body;
  const char* frame;
};

Header Make(uint16_t id, Edition edition, const char* phone, uint16_t serial, uint8_t encryption = 0,
            uint16_t packages = 0, uint16_t package = 0) {
  Header h;
  h.id = id;
  h.edition = edition;
  h.version = edition == Edition::k2019 ? kVersion2019 : 0;
  h.encryption = encryption;
  h.phone = phone;
  h.serial = serial;
  h.packages = packages;
  h.package = package;
  return h;
}

const Golden kGolden[] = {
    {"2013 position query, no body", Make(0x8201, Edition::k2013, "13800138000", 7), "",
     "7e 82 01 00 00 01 38 00 13 80 00 00 07 2e 7e"},
    {"2019 position query: version flag, version 1, ten-byte phone", Make(0x8201, Edition::k2019, "13800138000", 7), "",
     "7e 82 01 40 00 01 00 00 00 00 01 38 00 13 80 00 00 07 6f 7e"},
    {"2013: 7e and 7d escaped in serial, body and check code", Make(0x8300, Edition::k2013, "10001", 0x7E7D),
     "01 7e 41 7d b8", "7e 83 00 00 05 00 00 00 01 00 01 7d 02 7d 01 01 7d 02 41 7d 01 b8 7d 02 7e"},
    {"2019: twenty-digit phone, 7d as check code", Make(0x8300, Edition::k2019, "12345678901234567890", 0x0102),
     "01 02 7e 7d b9", "7e 83 00 40 05 01 12 34 56 78 90 12 34 56 78 90 01 02 01 02 7d 02 7d 01 b9 7d 01 7e"},
    {"2013 RSA-encrypted body (attribute bit 10)", Make(0x8203, Edition::k2013, "10002", 1, 1), "00 2a 00 00 00 01",
     "7e 82 03 04 06 00 00 00 01 00 02 00 01 00 2a 00 00 00 01 aa 7e"},
    {"2013 first of two packages (bit 13, package item)", Make(0x0801, Edition::k2013, "10003", 9, 0, 2, 1),
     "01 02 03", "7e 08 01 20 03 00 00 00 01 00 03 00 09 00 02 00 01 01 02 03 22 7e"},
    {"2019 second of two packages", Make(0x0801, Edition::k2019, "10003", 10, 0, 2, 2), "04 05",
     "7e 08 01 60 02 01 00 00 00 00 00 00 00 01 00 03 00 0a 00 02 00 02 04 05 63 7e"},
};

// A header's fields in one line, so a failure shows them all.
std::string Describe(const Header& h) {
  return std::to_string(h.id) + (h.edition == Edition::k2019 ? " 2019 v" : " 2013 v") + std::to_string(h.version) +
         " enc " + std::to_string(h.encryption) + " phone " + h.phone + " serial " + std::to_string(h.serial) +
         " package " + std::to_string(h.package) + "/" + std::to_string(h.packages);
}

Bytes Inner(const Bytes& frame) { return Bytes(frame.begin() + 1, frame.end() - 1); }

TEST(Frame, GoldenFramesBothWays) {
  for (const Golden& g : kGolden) {
    const Bytes body = FromHex(g.body);
    EXPECT_EQ(Hex(EncodeFrame({g.header, body})), g.frame) << g.what;
    const auto decoded = DecodeFrame(Inner(FromHex(g.frame)));
    ASSERT_TRUE(decoded) << g.what;
    EXPECT_EQ(Describe(decoded->header), Describe(g.header)) << g.what;
    EXPECT_EQ(Hex(decoded->body), g.body) << g.what;
  }
}

// Every golden frame, with noise before, between and after them (the reader
// takes the noise between two frames for a frame that does not decode).
struct Stream {
  Bytes bytes;
  size_t noise = 0;
};
Stream GoldenStream() {
  Stream s;
  s.bytes = FromHex("01 02 03");  // before the first delimiter: not a frame
  for (const Golden& g : kGolden) {
    const Bytes frame = FromHex(g.frame);
    s.bytes.insert(s.bytes.end(), frame.begin(), frame.end());
    if (&g == &kGolden[2]) {
      const Bytes noise = FromHex("55 aa 7d");
      s.bytes.insert(s.bytes.end(), noise.begin(), noise.end());
      ++s.noise;
    }
  }
  return s;
}

std::vector<Frame> ReadAll(const Bytes& bytes, const std::vector<size_t>& pieces, size_t* dropped) {
  FrameReader reader;
  std::vector<Frame> frames;
  size_t at = 0;
  for (size_t i = 0; at < bytes.size(); ++i) {
    const size_t size = std::min(pieces[i % pieces.size()], bytes.size() - at);
    reader.Feed(ByteView(bytes).subspan(at, size));
    at += size;
    while (auto frame = reader.Next()) frames.push_back(std::move(*frame));
  }
  *dropped = reader.Dropped();
  return frames;
}

TEST(Frame, ReaderTakesFramesInAnyPieces) {
  const Stream stream = GoldenStream();
  const struct {
    const char* what;
    std::vector<size_t> pieces;
  } cases[] = {{"all at once", {stream.bytes.size()}}, {"byte by byte", {1}}, {"odd pieces", {3, 7, 2, 11, 5}}};
  for (const auto& c : cases) {
    size_t dropped = 0;
    const std::vector<Frame> frames = ReadAll(stream.bytes, c.pieces, &dropped);
    ASSERT_EQ(frames.size(), std::size(kGolden)) << c.what;
    for (size_t i = 0; i < frames.size(); ++i) {
      EXPECT_EQ(Describe(frames[i].header), Describe(kGolden[i].header)) << c.what << ": " << kGolden[i].what;
      EXPECT_EQ(Hex(frames[i].body), kGolden[i].body) << c.what << ": " << kGolden[i].what;
    }
    EXPECT_EQ(dropped, stream.noise) << c.what;
  }
}

// Damaged frames are dropped and counted, and the good frame after each is still read.
TEST(Frame, DamagedFramesAreDroppedAndCounted) {
  const struct {
    const char* what;
    const char* frame;
  } cases[] = {
      {"check code off by one", "7e 82 01 00 00 01 38 00 13 80 00 00 07 2f 7e"},
      {"escape of 03", "7e 83 00 00 05 00 00 00 01 00 01 7d 03 7d 01 01 7d 02 41 7d 01 b8 7d 02 7e"},
      {"escape as the last byte", "7e 82 01 00 00 01 38 00 13 80 00 00 07 2e 7d 7e"},
      {"attributes say 1 byte, body has 0", "7e 82 01 00 01 01 38 00 13 80 00 00 07 2f 7e"},
      {"attributes say 6 bytes, body has 5", "7e 82 03 04 06 00 00 00 01 00 02 00 01 00 2a 00 00 01 aa 7e"},
      {"header cut short", "7e 82 01 00 00 01 38 00 13 a9 7e"},
      {"a letter in the phone's BCD", "7e 82 01 00 00 01 3a 00 13 80 00 00 07 2c 7e"},
      {"package 3 of 2", "7e 08 01 20 03 00 00 00 01 00 03 00 09 00 02 00 03 01 02 03 20 7e"},
  };
  const Bytes good = FromHex(kGolden[0].frame);
  for (const auto& c : cases) {
    const Bytes bad = FromHex(c.frame);
    EXPECT_FALSE(DecodeFrame(Inner(bad))) << c.what;
    FrameReader reader;
    reader.Feed(bad);
    reader.Feed(good);
    const auto frame = reader.Next();
    ASSERT_TRUE(frame) << c.what;
    EXPECT_EQ(frame->header.serial, 7) << c.what;
    EXPECT_FALSE(reader.Next()) << c.what;
    EXPECT_EQ(reader.Dropped(), 1u) << c.what;
  }
  FrameReader small(16);
  small.Feed(FromHex(kGolden[2].frame));  // 22 bytes between its delimiters
  small.Feed(good);
  EXPECT_TRUE(small.Next()) << "the frame after one too long";
  EXPECT_EQ(small.Dropped(), 1u) << "a frame too long";
}

TEST(Frame, RefusesWhatTheHeaderCannotCarry) {
  Header h = Make(0x8300, Edition::k2013, "1234567890123", 1);
  EXPECT_THROW(EncodeFrame({h, {}}), BodyError) << "13 digits in a 2013 phone";
  h.edition = Edition::k2019;
  EXPECT_NO_THROW(EncodeFrame({h, {}})) << "13 digits in a 2019 phone";
  h.phone = "1380013800a";
  EXPECT_THROW(EncodeFrame({h, {}}), BodyError) << "a letter in the phone";
  h.phone = "10001";
  EXPECT_THROW(EncodeFrame({h, Bytes(kMaxPackageBody + 1)}), BodyError) << "a body over one package";
}

// ---- sub-packages -------------------------------------------------------------

constexpr size_t kLongBody = 2 * kMaxPackageBody + 454;

Bytes LongBody() {
  Bytes body(kLongBody);
  for (size_t i = 0; i < body.size(); ++i) body[i] = static_cast<uint8_t>(i * 7 + i / 251);  // 7e and 7d among them
  return body;
}

std::vector<Frame> Packages(Edition edition, const char* phone = "13800138000", uint16_t serial = 0xFFFF) {
  std::vector<Frame> frames;
  for (const Bytes& bytes : EncodeMessage(Make(0x0801, edition, phone, serial), LongBody())) {
    auto frame = DecodeFrame(Inner(bytes));
    if (frame) frames.push_back(std::move(*frame));
  }
  return frames;
}

TEST(Frame, LongBodiesGoInNumberedPackages) {
  for (Edition edition : {Edition::k2013, Edition::k2019}) {
    const std::vector<Frame> frames = Packages(edition);
    ASSERT_EQ(frames.size(), 3u);
    const size_t sizes[] = {kMaxPackageBody, kMaxPackageBody, 454};
    const uint16_t serials[] = {0xFFFF, 0, 1};  // each package has its own serial, wrapping
    for (size_t i = 0; i < frames.size(); ++i) {
      EXPECT_EQ(frames[i].header.packages, 3);
      EXPECT_EQ(frames[i].header.package, i + 1);
      EXPECT_EQ(frames[i].header.serial, serials[i]);
      EXPECT_EQ(frames[i].body.size(), sizes[i]);
    }
  }
  EXPECT_EQ(EncodeMessage(Make(0x8300, Edition::k2013, "1", 1), Bytes(kMaxPackageBody)).size(), 1u)
      << "a body of exactly one package";
}

TEST(Frame, ReassemblesPackagesInAnyOrder) {
  const struct {
    const char* what;
    std::vector<size_t> order;  // indexes into the packages
    bool complete;
  } cases[] = {
      {"in order", {0, 1, 2}, true},
      {"last first", {2, 0, 1}, true},
      {"first last", {1, 2, 0}, true},
      {"a package twice", {0, 1, 1, 2}, true},
      {"the first package twice", {0, 1, 0, 2}, true},
      {"the second never comes", {0, 2}, false},
      {"the first never comes", {1, 2}, false},
  };
  for (Edition edition : {Edition::k2013, Edition::k2019}) {
    const std::vector<Frame> frames = Packages(edition);
    for (const auto& c : cases) {
      Reassembler whole;
      std::optional<Frame> done;
      for (size_t i = 0; i < c.order.size(); ++i) {
        done = whole.Add(frames[c.order[i]]);
        if (i + 1 < c.order.size()) {
          EXPECT_FALSE(done) << c.what << " after " << i + 1;
        }
      }
      EXPECT_EQ(done.has_value(), c.complete) << c.what;
      EXPECT_EQ(whole.Open(), c.complete ? 0u : 1u) << c.what;
      if (!done) continue;
      EXPECT_EQ(done->body, LongBody()) << c.what;
      EXPECT_EQ(done->header.serial, 0xFFFF) << c.what << ": the first package's header";
      EXPECT_EQ(done->header.packages, 0) << c.what;
      EXPECT_EQ(done->header.phone, "13800138000") << c.what;
    }
  }
}

TEST(Frame, FirstPackageAgainRestartsTheMessage) {
  const std::vector<Frame> old = Packages(Edition::k2013), fresh = Packages(Edition::k2013, "13800138000", 100);
  Reassembler whole;
  EXPECT_FALSE(whole.Add(old[0]));
  EXPECT_FALSE(whole.Add(old[1]));
  EXPECT_FALSE(whole.Add(fresh[0])) << "a new message of the same kind";
  EXPECT_FALSE(whole.Add(fresh[2])) << "the old message's second package is gone";
  const auto done = whole.Add(fresh[1]);
  ASSERT_TRUE(done);
  EXPECT_EQ(done->header.serial, 100);
}

TEST(Frame, OpenMessagesAreCapped) {
  Reassembler whole;
  std::vector<std::vector<Frame>> messages;
  for (size_t i = 0; i <= Reassembler::kMaxOpen; ++i) {
    messages.push_back(Packages(Edition::k2013, std::to_string(20000 + i).c_str()));
    EXPECT_FALSE(whole.Add(messages.back()[0]));
  }
  EXPECT_EQ(whole.Open(), Reassembler::kMaxOpen);
  EXPECT_FALSE(whole.Add(messages[0][1]));
  EXPECT_FALSE(whole.Add(messages[0][2])) << "the oldest message was dropped for the newest";
  EXPECT_EQ(whole.Open(), Reassembler::kMaxOpen);
  EXPECT_FALSE(whole.Add(messages.back()[1]));
  EXPECT_TRUE(whole.Add(messages.back()[2])) << "the newest completes";
}

TEST(Frame, UnfinishedMessagesHoldABoundedNumberOfBytes) {
  // Three packages of 1023, 1023 and 454 bytes per message; room for three and a half packages.
  constexpr size_t kRoom = 3 * kMaxPackageBody + 500;
  Reassembler whole(kRoom);
  const std::vector<Frame> first = Packages(Edition::k2013, "20001"), second = Packages(Edition::k2013, "20002");
  EXPECT_FALSE(whole.Add(first[0]));
  EXPECT_FALSE(whole.Add(first[1]));
  EXPECT_FALSE(whole.Add(second[0]));
  EXPECT_FALSE(whole.Add(second[1])) << "room made by dropping the older message";
  EXPECT_EQ(whole.Open(), 1u);
  EXPECT_EQ(whole.HeldBytes(), 2 * kMaxPackageBody);
  EXPECT_FALSE(whole.Add(first[2])) << "the dropped message cannot complete";
  EXPECT_TRUE(whole.Add(second[2]));
  EXPECT_EQ(whole.HeldBytes(), first[2].body.size()) << "only the dropped message's last package is left";
}

}  // namespace
}  // namespace jt808
