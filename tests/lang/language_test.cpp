// The language table's path and cache rules, the application path and the theme.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "lang/app_path.h"
#include "lang/language.h"
#include "lang/path_manager.h"

namespace {
namespace fs = std::filesystem;

class LanguageTest : public ::testing::Test {
 protected:
  void SetUp() override {
    CLanguage::DeleteInstance();
    dir = fs::path(testing::TempDir()) / ("lang-" + std::to_string(::getpid()));
    fs::create_directories(dir);
  }
  void TearDown() override { CLanguage::DeleteInstance(); }
  std::string Write(const std::string& name, const std::string& text) {
    const std::string path = (dir / name).string();
    std::ofstream(path) << text;
    return path;
  }
  fs::path dir;
};

TEST_F(LanguageTest, PathAndCacheRules) {
  CLanguage& lang = CLanguage::Instance();
  EXPECT_EQ(lang.LanguageText(11004), "") << "no file named yet";
  const std::string a = Write("a.ini", "[STRING]\n11004=Set\n11005=\n");
  EXPECT_TRUE(lang.SetPath(a));
  EXPECT_EQ(lang.LanguageText(11004), "Set");
  EXPECT_EQ(lang.LanguageText(11005), "");

  Write("a.ini", "[STRING]\n11004=Changed\n11005=Now here\n");
  EXPECT_FALSE(lang.SetPath(a)) << "the same path keeps the cache";
  EXPECT_EQ(lang.LanguageText(11004), "Set");
  EXPECT_EQ(lang.LanguageText(11005), "Now here") << "an empty text is looked up again";

  EXPECT_FALSE(lang.SetPath((dir / "missing.ini").string()));
  EXPECT_EQ(lang.Path(), a);
  EXPECT_TRUE(lang.SetPath(Write("b.ini", "[STRING]\n11004=" + std::string(300, 'x') + "\n")));
  EXPECT_EQ(lang.LanguageText(11004), std::string(258, 'x'));
  EXPECT_TRUE(lang.SetPath(Write("bad.ini", "\x01\x02 not a profile [[[")));
  EXPECT_EQ(lang.LanguageText(11004), "");
}

TEST_F(LanguageTest, AppPathAndTheme) {
  const fs::path plugin = dir / "bin" / "plugins";
  fs::create_directories(plugin);
  SetModulePathForTest((plugin / "libfleetcmd.so").string(), (dir / "host" / "client").string());
  EXPECT_EQ(GetAppPath(), (dir / "host").string() + "/") << "no AppPath.INI: the host's directory";
  EXPECT_EQ(GetPluginName(), "libfleetcmd");

  std::ofstream(plugin / "AppPath.INI") << "[APPPATH]\nSRC_TYPE=1\nAPPEND=..\\\n";
  SetModulePathForTest((plugin / "libfleetcmd.so").string(), (dir / "host" / "client").string());
  const std::string app = (dir / "bin").string() + "/";
  EXPECT_EQ(GetAppPath(), app);

  fs::create_directories(dir / "bin" / "Theme" / "Blue");
  std::ofstream(dir / "bin" / "UIStyle.ini") << "[CONFIG]\nUI_STYLE=2\n[STYLE2]\nFOLDER=Blue\n";
  std::ofstream(dir / "bin" / "Theme" / "Blue" / "color_config.ini")
      << "[COLOR]\nm_dwRGBTextColor=12,34,56\nm_dwRGBEditText=300,0,0\n";
  CPathManager& theme = CPathManager::Instance();
  theme.Reload();
  EXPECT_EQ(theme.ThemeFolder(), app + "Theme/Blue/");
  EXPECT_EQ(theme.Color("m_dwRGBTextColor"), RGB(12, 34, 56));
  EXPECT_EQ(GetRValue(theme.Color("m_dwRGBEditText")), 44);
  EXPECT_EQ(theme.Color("m_dwRGBDlgLeft"), RGB(222, 227, 233)) << "built-in value";
  EXPECT_EQ(theme.FlatDesign(), 1);
  EXPECT_EQ(theme.BorderStyle(), 1);
}

}  // namespace
