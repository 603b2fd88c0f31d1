// Writes the seed corpus of jt808_fuzz: whole frames of both editions (a
// query, commands, answers with position reports, bodies with bytes that are
// escaped), a message long enough for sub-packages, and one stream of them
// all with noise between.
//
//   jt808_seeds OUT_DIR
#include <filesystem>
#include <fstream>
#include <iostream>

#include "jt808/frame.h"

namespace {
namespace fs = std::filesystem;
using namespace jt808;

struct Seed {
  uint16_t id;
  const char* body;
};
constexpr Seed kSeeds[] = {
    {0x8201, ""},
    {0x8202, "00 1e 00 00 0e 10"},
    {0x8203, "00 7b 10 00 00 09"},
    {0x8500, "00 01 00 01 00"},
    {0x8300, "01 7e 41 7d b8"},
    {0x0001, "00 07 82 01 00"},
    {0x0500, "00 09 00 00 00 00 00 00 10 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00"},
    {0x0201, "00 07 00 00 00 01 00 00 00 03 01 57 fb 10 06 cc 5f 82 00 34 01 68 00 0f 26 01 15 09 30 00 01 04 00 00 30"
             " 39 02 02 01 f4 11 05 01 00 00 00 07 12 06 02 00 00 00 09 01 13 07 00 00 00 65 02 58 00 e1 02 ab cd"},
};
constexpr size_t kLongBody = 2500;

void Write(const fs::path& file, const Bytes& bytes) {
  std::ofstream out(file, std::ios::binary);
  out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}
}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: jt808_seeds OUT_DIR\n";
    return 2;
  }
  const fs::path out = argv[1];
  fs::create_directories(out);
  Bytes stream;
  int n = 0;
  const auto add = [&](const std::vector<Bytes>& frames) {
    Bytes seed;
    for (const Bytes& frame : frames) seed.insert(seed.end(), frame.begin(), frame.end());
    Write(out / std::to_string(n++), seed);
    stream.insert(stream.end(), seed.begin(), seed.end());
    stream.push_back(0x55);  // noise between frames
  };
  for (Edition edition : {Edition::k2013, Edition::k2019}) {
    Header header;
    header.edition = edition;
    header.version = edition == Edition::k2019 ? kVersion2019 : 0;
    header.phone = "13800138000";
    for (const Seed& seed : kSeeds) {
      header.id = seed.id;
      ++header.serial;
      add(EncodeMessage(header, FromHex(seed.body)));
    }
    Bytes body(kLongBody);
    for (size_t i = 0; i < body.size(); ++i) body[i] = static_cast<uint8_t>(i * 7);
    header.id = 0x0801;
    add(EncodeMessage(header, body));
  }
  Write(out / "stream", stream);
  std::cout << n << " frame seeds and a stream\n";
  return 0;
}
