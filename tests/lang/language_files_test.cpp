// The shipped language files have a text for every language id the code
// uses, the same ids in every language, and a name for every function.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "command/page_registry.h"
#include "text/profile.h"

namespace {
namespace fs = std::filesystem;
constexpr int kFirstTextId = 10000, kEndTextId = 30000;
const char* kLanguages[] = {"zh-CN.ini", "en.ini"};

std::string Read(const fs::path& path) {
  std::ifstream in(path);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// Source text without comments and string literals.
std::string CodeOnly(const std::string& text) {
  static const std::regex kNoise(R"re(//[^\n]*|/\*[\s\S]*?\*/|R"\([\s\S]*?\)"|"(\\.|[^"\\\n])*"|'(\\.|[^'\\\n])*')re");
  return std::regex_replace(text, kNoise, " ");
}

std::set<int> Numbers(const std::string& code) {
  std::set<int> numbers;
  static const std::regex kNumber(R"(\b([12]\d{4})\b)");
  for (std::sregex_iterator it(code.begin(), code.end(), kNumber), end; it != end; ++it) {
    const int n = std::stoi((*it)[1]);
    if (n >= kFirstTextId && n < kEndTextId) numbers.insert(n);
  }
  return numbers;
}

// Language ids the code uses: five-digit numbers, less the window messages.
std::set<int> UsedIds() {
  const fs::path src = fs::path(FC_SOURCE_DIR) / "src";
  const std::string ids = Read(src / "command" / "ids.h");
  const size_t begin = ids.find("namespace msg"), end = ids.find("}  // namespace msg");
  const std::set<int> messages = Numbers(CodeOnly(ids.substr(begin, end - begin)));
  std::set<int> used;
  for (const auto& entry : fs::recursive_directory_iterator(src)) {
    const auto ext = entry.path().extension();
    if (ext != ".h" && ext != ".cpp") continue;
    for (int n : Numbers(CodeOnly(Read(entry.path())))) {
      if (!messages.count(n)) used.insert(n);
    }
  }
  return used;
}

TEST(LanguageFiles, EveryUsedIdAndFunctionHasATextInEveryLanguage) {
  const std::set<int> used = UsedIds();
  ASSERT_GT(used.size(), 50u);
  for (const char* name : kLanguages) {
    auto file = txt::ProfileFile::Load((fs::path(FC_SOURCE_DIR) / "data" / "lang" / name).string());
    ASSERT_TRUE(file) << name;
    std::string missing;
    for (int id : used) {
      if (file->GetString("STRING", std::to_string(id), "", 300).empty()) missing += " " + std::to_string(id);
    }
    for (int type : pages::RegisteredTypes()) {
      if (type < 9000 && !file->Find("FUNCTION", std::to_string(type))) missing += " function " + std::to_string(type);
    }
    for (const char* root : {"-1.808", "-1.905"}) {
      if (!file->Find("GROUP", root)) missing += std::string(" group ") + root;
    }
    EXPECT_TRUE(missing.empty()) << name << " lacks:" << missing;
  }
}

TEST(LanguageFiles, LanguagesHaveTheSameIds) {
  std::set<std::string> keys[2];
  for (int i = 0; i < 2; ++i) {
    const std::string text = Read(fs::path(FC_SOURCE_DIR) / "data" / "lang" / kLanguages[i]);
    static const std::regex kKey(R"((^|\n)([-0-9.]+)=)");
    for (std::sregex_iterator it(text.begin(), text.end(), kKey), end; it != end; ++it) keys[i].insert((*it)[2]);
  }
  EXPECT_EQ(keys[0], keys[1]);
}

}  // namespace
