// The shipped language files have a text for every language id the code
// uses (the templates' rows and the code's text constants), the same ids in
// every language, and a name for every function.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>

#include "command/page_registry.h"
#include "platform/dialog.h"
#include "text/profile.h"

namespace {
namespace fs = std::filesystem;
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

// The values of a block of text constants ("kTextFlag = 12954, ...").
void AddValues(const std::string& block, std::set<int>& ids) {
  static const std::regex kValue(R"(=\s*(\d{5})\b)");
  for (std::sregex_iterator it(block.begin(), block.end(), kValue), end; it != end; ++it) {
    ids.insert(std::stoi((*it)[1]));
  }
}

// Language ids the code uses: every template row's text, and the text
// constants of the code: enums named for texts ("enum Text : int {...}"), the
// command base's txtid namespace, and single constants named kText...
std::set<int> UsedIds() {
  std::set<int> used;
  for (const plat::DialogTemplate* dialog : plat::templates::All()) {
    for (const plat::ControlEntry& row : dialog->controls) {
      if (row.textId != 0) used.insert(row.textId);
    }
  }
  static const std::regex kBlock(R"((?:enum\s+(?:class\s+)?\w*Text\w*\s*(?::\s*\w+)?|namespace\s+txtid)\s*\{([^}]*)\})");
  static const std::regex kSingle(R"(\bk\w*Text\w*\s*=\s*(\d{5})\b)");
  const fs::path src = fs::path(FC_SOURCE_DIR) / "src";
  for (const auto& entry : fs::recursive_directory_iterator(src)) {
    const auto ext = entry.path().extension();
    if (ext != ".h" && ext != ".cpp") continue;
    const std::string code = CodeOnly(Read(entry.path()));
    for (std::sregex_iterator it(code.begin(), code.end(), kBlock), end; it != end; ++it) AddValues((*it)[1], used);
    for (std::sregex_iterator it(code.begin(), code.end(), kSingle), end; it != end; ++it) {
      used.insert(std::stoi((*it)[1]));
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
