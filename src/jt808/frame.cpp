#include "jt808/frame.h"

#include <algorithm>

namespace jt808 {
namespace {
constexpr uint16_t kLengthMask = 0x03FF;
constexpr int kEncryptionShift = 10;
constexpr uint16_t kEncryptionMask = 0x07;
constexpr uint16_t kSubPackaged = 1 << 13;
constexpr uint16_t kVersionFlag = 1 << 14;
constexpr size_t kPhoneBytes2013 = 6;
constexpr size_t kPhoneBytes2019 = 10;

size_t PhoneBytes(Edition edition) { return edition == Edition::k2019 ? kPhoneBytes2019 : kPhoneBytes2013; }

void PutEscaped(Bytes& out, uint8_t byte) {
  if (byte == kFlag || byte == kEscape) {
    out.push_back(kEscape);
    out.push_back(byte == kFlag ? 0x02 : 0x01);
  } else {
    out.push_back(byte);
  }
}

std::string TrimZeros(std::string digits) {
  const size_t first = digits.find_first_not_of('0');
  return first == std::string::npos ? "0" : digits.substr(first);
}
}  // namespace

Header MessageHeader(uint16_t id, Edition edition, const std::string& phone, uint16_t serial) {
  Header header;
  header.id = id;
  header.edition = edition;
  header.version = edition == Edition::k2019 ? kVersion2019 : 0;
  header.phone = phone;
  header.serial = serial;
  return header;
}

Bytes EncodeFrame(const Frame& frame) {
  const Header& h = frame.header;
  if (frame.body.size() > kMaxPackageBody) throw BodyError("body of " + std::to_string(frame.body.size()) + " bytes");
  uint16_t attributes = static_cast<uint16_t>(frame.body.size());
  attributes |= static_cast<uint16_t>((h.encryption & kEncryptionMask) << kEncryptionShift);
  if (h.packages > 0) attributes |= kSubPackaged;
  if (h.edition == Edition::k2019) attributes |= kVersionFlag;
  Writer w;
  w.U16(h.id).U16(attributes);
  if (h.edition == Edition::k2019) w.U8(h.version);
  w.Bcd(h.phone, PhoneBytes(h.edition)).U16(h.serial);
  if (h.packages > 0) w.U16(h.packages).U16(h.package);
  w.Raw(frame.body);
  uint8_t check = 0;
  for (uint8_t byte : w.Data()) check ^= byte;
  w.U8(check);

  Bytes out;
  out.reserve(w.Size() + w.Size() / 8 + 2);
  out.push_back(kFlag);
  for (uint8_t byte : w.Data()) PutEscaped(out, byte);
  out.push_back(kFlag);
  return out;
}

std::vector<Bytes> EncodeMessage(const Header& header, ByteView body) {
  if (body.size() <= kMaxPackageBody) {
    Header single = header;
    single.packages = single.package = 0;
    return {EncodeFrame({single, Bytes(body.begin(), body.end())})};
  }
  const size_t count = (body.size() + kMaxPackageBody - 1) / kMaxPackageBody;
  if (count > 0xFFFF) throw BodyError("message too long for sub-packages");
  std::vector<Bytes> frames;
  for (size_t i = 0; i < count; ++i) {
    Header part = header;
    part.packages = static_cast<uint16_t>(count);
    part.package = static_cast<uint16_t>(i + 1);
    part.serial = static_cast<uint16_t>(header.serial + i);
    const size_t from = i * kMaxPackageBody;
    const size_t size = std::min(kMaxPackageBody, body.size() - from);
    frames.push_back(EncodeFrame({part, Bytes(body.begin() + from, body.begin() + from + size)}));
  }
  return frames;
}

std::optional<Frame> DecodeFrame(ByteView escaped) {
  Bytes raw;
  raw.reserve(escaped.size());
  for (size_t i = 0; i < escaped.size(); ++i) {
    if (escaped[i] == kFlag) return std::nullopt;
    if (escaped[i] != kEscape) {
      raw.push_back(escaped[i]);
      continue;
    }
    if (++i == escaped.size() || (escaped[i] != 0x01 && escaped[i] != 0x02)) return std::nullopt;
    raw.push_back(escaped[i] == 0x01 ? kEscape : kFlag);
  }
  if (raw.empty()) return std::nullopt;
  uint8_t check = 0;
  for (size_t i = 0; i + 1 < raw.size(); ++i) check ^= raw[i];
  if (check != raw.back()) return std::nullopt;
  try {
    Reader r(ByteView(raw).first(raw.size() - 1));
    Frame frame;
    Header& h = frame.header;
    h.id = r.U16();
    const uint16_t attributes = r.U16();
    h.edition = (attributes & kVersionFlag) ? Edition::k2019 : Edition::k2013;
    h.encryption = static_cast<uint8_t>((attributes >> kEncryptionShift) & kEncryptionMask);
    if (h.edition == Edition::k2019) h.version = r.U8();
    h.phone = TrimZeros(r.Bcd(PhoneBytes(h.edition)));
    h.serial = r.U16();
    if (attributes & kSubPackaged) {
      h.packages = r.U16();
      h.package = r.U16();
      if (h.packages == 0 || h.package == 0 || h.package > h.packages) return std::nullopt;
    }
    const size_t length = attributes & kLengthMask;
    if (r.Left() != length) return std::nullopt;
    ByteView body = r.Rest();
    frame.body.assign(body.begin(), body.end());
    return frame;
  } catch (const BodyError&) {
    return std::nullopt;
  }
}

FrameReader::FrameReader(size_t maxFrame) : maxFrame_(maxFrame) {}

void FrameReader::Feed(ByteView bytes) {
  if (readyAt_ == ready_.size()) {
    ready_.clear();
    readyAt_ = 0;
  }
  for (uint8_t byte : bytes) {
    if (byte != kFlag) {
      if (!inFrame_) continue;  // noise between frames
      if (pending_.size() >= maxFrame_) {
        // Too long for a frame: drop it and wait for the next delimiter.
        ++dropped_;
        pending_.clear();
        inFrame_ = false;
        continue;
      }
      pending_.push_back(byte);
      continue;
    }
    // A delimiter ends the frame being read (if any) and may start the next:
    // "7e ... 7e 7e ... 7e" and "7e ... 7e ... 7e" both read as two frames.
    if (inFrame_ && !pending_.empty()) {
      if (auto frame = DecodeFrame(pending_)) {
        ready_.push_back(std::move(*frame));
      } else {
        ++dropped_;
      }
    }
    pending_.clear();
    inFrame_ = true;
  }
}

std::optional<Frame> FrameReader::Next() {
  if (readyAt_ == ready_.size()) return std::nullopt;
  return std::move(ready_[readyAt_++]);
}

void Reassembler::Erase(std::map<Key, Partial>::iterator it) {
  held_ -= it->second.bytes;
  open_.erase(it);
}

void Reassembler::DropOldest() {
  Erase(std::min_element(open_.begin(), open_.end(),
                         [](const auto& a, const auto& b) { return a.second.order < b.second.order; }));
}

std::optional<Frame> Reassembler::Add(Frame frame) {
  const Header& h = frame.header;
  if (h.packages == 0) return frame;
  if (h.package == 0 || h.package > h.packages || frame.body.size() > maxHeld_) return std::nullopt;
  const auto key = std::make_pair(h.phone, h.id);
  auto it = open_.find(key);
  // Another first package (not the same one sent twice) or another package
  // count starts the message again; packages may otherwise come in any order.
  const bool again =
      it != open_.end() && (it->second.first.packages != h.packages ||
                            (h.package == 1 && it->second.parts.contains(1) && it->second.first.serial != h.serial));
  if (again) {
    Erase(it);
    it = open_.end();
  }
  if (it == open_.end()) {
    if (open_.size() >= kMaxOpen) DropOldest();
    Partial fresh;
    fresh.first = h;
    fresh.order = order_++;
    it = open_.emplace(key, std::move(fresh)).first;
  }
  Partial* partial = &it->second;
  if (h.package == 1) partial->first = h;
  auto old = partial->parts.find(h.package);
  if (old != partial->parts.end()) {
    partial->bytes -= old->second.size();
    held_ -= old->second.size();
  }
  while (held_ + frame.body.size() > maxHeld_) {
    // The oldest unfinished messages make room; when this one is the oldest, it goes.
    const bool self = std::min_element(open_.begin(), open_.end(), [](const auto& a, const auto& b) {
                        return a.second.order < b.second.order;
                      })->first == key;
    DropOldest();
    if (self) return std::nullopt;
  }
  partial->bytes += frame.body.size();
  held_ += frame.body.size();
  partial->parts[h.package] = std::move(frame.body);
  if (partial->parts.size() < partial->first.packages) return std::nullopt;
  Frame whole;
  whole.header = partial->first;
  whole.header.packages = whole.header.package = 0;
  whole.body.reserve(partial->bytes);
  for (auto& [number, part] : partial->parts) whole.body.insert(whole.body.end(), part.begin(), part.end());
  Erase(it);
  return whole;
}

}  // namespace jt808
