// Writes the fuzz targets' seed corpus: the replies the acceptance scripts
// make devices give (`net reply`, `net raw`, ANSWER lines) and what the
// simulated terminals answer to every request the scripts send (SEND lines).
//
//   make_seeds OUT_DIR SCRIPT_FILES...   (tests/scripts/*.fcs and *.out)
//
// OUT_DIR/reply gets each reply after a byte of zero (no network status);
// OUT_DIR/page gets each reply once for every registered page.
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "command/page_registry.h"
#include "host/hostnet.h"
#include "host/ref/hostref.h"
#include "host/ref/run/terminals.h"

namespace {
namespace fs = std::filesystem;

// Undoes the scripts' escapes of bytes outside printable ASCII ("\xHH").
std::string Unescape(const std::string& text) {
  std::string out;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\\' && i + 3 < text.size() && text[i + 1] == 'x' && std::isxdigit(static_cast<unsigned char>(text[i + 2])) &&
        std::isxdigit(static_cast<unsigned char>(text[i + 3]))) {
      out += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16));
      i += 3;
    } else {
      out += text[i];
    }
  }
  return out;
}

// The words of a line after the first n, as they stand.
std::string After(const std::string& line, int n) {
  size_t pos = 0;
  for (int i = 0; i < n && pos != std::string::npos; ++i) {
    pos = line.find(' ', pos);
    if (pos != std::string::npos) ++pos;
  }
  return pos == std::string::npos ? std::string() : line.substr(pos);
}

std::string Ask(const std::string& devIdno, int command, const std::string& param) {
  std::string reply;
  auto callback = [](int32_t, const char* text, void* user) { *static_cast<std::string*>(user) = text ? text : ""; };
  NETHANDLE handle = 0;
  const std::string envelope =
      "{\"Command\":" + std::to_string(command) + ",\"DevIDNO\":\"" + devIdno + "\",\"Session\":\"s\"}";
  if (NETCLIENT_MNOpenNormalCmd(&handle, devIdno.c_str(), envelope.c_str(), param.c_str()) != 0) return {};
  NETCLIENT_MNSetNormalCmdCB(handle, &reply, callback);
  NETCLIENT_MNStartNormalCmd(handle);
  hostref::net::WaitIdle();
  NETCLIENT_MNCloseNormalCmd(handle);
  return reply;
}

void Write(const fs::path& file, const std::string& bytes) {
  std::ofstream out(file, std::ios::binary);
  out << bytes;
}
}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::cerr << "usage: make_seeds OUT_DIR SCRIPT_FILES...\n";
    return 2;
  }
  hostref::OpenDataDir("");
  hostref::LoadDefaultFleet();
  hostref::terminals::Clear();
  hostref::terminals::Install();

  std::set<std::string> replies;
  for (int i = 2; i < argc; ++i) {
    std::ifstream in(argv[i]);
    std::string line;
    while (std::getline(in, line)) {
      if (line.rfind("net reply ", 0) == 0 || line.rfind("net raw ", 0) == 0) {
        replies.insert(Unescape(After(line, 3)));
      } else if (line.rfind("ANSWER ", 0) == 0) {
        replies.insert(Unescape(After(line, 3)));
      } else if (line.rfind("SEND ", 0) == 0) {
        std::istringstream words(line);
        std::string tag, devIdno, command;
        words >> tag >> devIdno >> command;
        const std::string reply = Ask(devIdno, std::stoi(command, nullptr, 16), Unescape(After(line, 3)));
        if (!reply.empty()) replies.insert(reply);
      }
    }
  }
  hostref::terminals::Uninstall();

  const fs::path out = argv[1];
  fs::create_directories(out / "reply");
  fs::create_directories(out / "page");
  const size_t pageCount = pages::RegisteredTypes().size();
  int n = 0;
  for (const std::string& reply : replies) {
    Write(out / "reply" / std::to_string(n), std::string(1, '\0') + reply);
    for (size_t page = 0; page < pageCount && page < 256; ++page) {
      Write(out / "page" / (std::to_string(n) + "-" + std::to_string(page)),
            std::string(1, static_cast<char>(page)) + std::string(1, '\0') + reply);
    }
    ++n;
  }
  std::cout << replies.size() << " replies, " << pageCount << " pages\n";
  return 0;
}
