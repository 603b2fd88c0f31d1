// The language table's path and cache rules, the application path and the theme.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "lang/app_path.h"
#include "lang/file_limit.h"
#include "lang/language.h"
#include "lang/path_manager.h"

namespace {
namespace fs = std::filesystem;

// A fresh directory and a fresh language table per test.
class LangTest : public ::testing::Test {
 protected:
  void SetUp() override {
    CLanguage::DeleteInstance();
    const auto* info = testing::UnitTest::GetInstance()->current_test_info();
    dir = fs::path(testing::TempDir()) / ("lang-" + std::to_string(::getpid()) + "-" + info->name());
    fs::remove_all(dir);
    fs::create_directories(dir);
  }
  void TearDown() override {
    CLanguage::DeleteInstance();
    fs::remove_all(dir);
  }
  std::string Write(const fs::path& relative, const std::string& text) {
    const fs::path path = dir / relative;
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
    return path.string();
  }
  fs::path dir;
};

TEST_F(LangTest, PathAndCacheRules) {
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

  for (const fs::path& unusable : {dir / "missing.ini", dir}) {
    EXPECT_FALSE(lang.SetPath(unusable.string())) << unusable;
    EXPECT_EQ(lang.Path(), a);
    EXPECT_EQ(lang.LanguageText(11004), "Set");
  }
  EXPECT_TRUE(lang.SetPath(Write("b.ini", "[STRING]\n11004=" + std::string(300, 'x') + "\n")));
  EXPECT_EQ(lang.LanguageText(11004), std::string(258, 'x'));
  EXPECT_TRUE(lang.SetPath(Write("bad.ini", "\x01\x02 not a profile [[[")));
  EXPECT_EQ(lang.LanguageText(11004), "");
}

// A file above the limit, or one that never ends, is refused and the old texts stay.
TEST_F(LangTest, FilesAboveTheLimitAreRefused) {
  CLanguage& table = CLanguage::Instance();
  const std::string a = Write("a.ini", "[STRING]\n11004=Set\n");
  ASSERT_TRUE(table.SetPath(a));
  const std::string big = Write("big.ini", "[STRING]\n11004=Big\n;" + std::string(lang::kMaxLanguageFileBytes, 'x'));
  for (const std::string& path : {big, std::string("/dev/zero")}) {
    EXPECT_FALSE(lang::LanguageFileFits(path)) << path;
    EXPECT_FALSE(table.SetPath(path)) << path;
    EXPECT_EQ(table.Path(), a) << path;
    EXPECT_EQ(table.LanguageText(11004), "Set") << path;
  }
  fs::resize_file(big, lang::kMaxLanguageFileBytes);
  EXPECT_TRUE(table.SetPath(big)) << "a file of the limit's size is read";
  EXPECT_EQ(table.LanguageText(11004), "Big");
}

TEST_F(LangTest, AppPathFromAppPathIni) {
  const fs::path plugin = dir / "bin" / "plugins";
  const std::string moduleFile = (plugin / "libfleetcmd.so").string(), exe = (dir / "host" / "client").string();
  struct Case {
    const char* ini;
    fs::path expected;
  };
  const Case cases[] = {
      {nullptr, dir / "host"},
      {"[APPPATH]\nSRC_TYPE=1\nAPPEND=..\\\n", dir / "bin"},
      {"[apppath]\nsrc_type=1\nappend=.\\data\\..\\cfg\n", plugin / "cfg"},
      {"[APPPATH]\nSRC_TYPE=1\n", plugin},
      {"[APPPATH]\nSRC_TYPE=0\nAPPEND=..\\\n", dir / "host"},
  };
  for (const Case& c : cases) {
    fs::remove(plugin / "AppPath.INI");
    if (c.ini) Write("bin/plugins/AppPath.INI", c.ini);
    SetModulePathForTest(moduleFile, exe);
    EXPECT_EQ(GetAppPath(), c.expected.string() + "/") << (c.ini ? c.ini : "no AppPath.INI");
  }
  EXPECT_EQ(GetPluginName(), "libfleetcmd");
}

TEST_F(LangTest, ThemeFoldersAndColours) {
  SetModulePathForTest((dir / "libfleetcmd.so").string(), (dir / "client").string());
  Write("AppPath.INI", "[APPPATH]\nSRC_TYPE=1\nAPPEND=app\n");
  const std::string app = (dir / "app").string() + "/";
  Write("app/UIStyle.ini", "[CONFIG]\nUI_STYLE=2\nButtonZoomSize=3\n[STYLE2]\nFOLDER=Blue\n");
  Write("app/Theme/Blue/color_config.ini",
        "[COLOR]\nm_dwRGBTextColor=12,34,56\nm_dwRGBEditText=300,0,0\nm_dwBroderStyle=7\n");
  Write("app/Theme/Blue/logo.jpg", "");
  CPathManager& theme = CPathManager::Instance();
  theme.Reload();
  EXPECT_EQ(theme.StyleNumber(), 2);
  EXPECT_EQ(theme.ThemeFolder(), app + "Theme/Blue/");
  EXPECT_EQ(theme.CommonFolder(), app + "Theme/Common/");
  EXPECT_EQ(theme.ButtonZoomSize(), 3);
  EXPECT_EQ(theme.DlgShowIconId(), 128);
  EXPECT_EQ(theme.FindImage("logo"), app + "Theme/Blue/logo.jpg");
  EXPECT_EQ(theme.FindImage("none"), "");

  const std::pair<const char*, COLORREF> colours[] = {
      {"m_dwRGBTextColor", RGB(12, 34, 56)},
      {"m_dwRGBEditText", RGB(44, 0, 0)},  // 300 keeps its low byte
      {"m_dwRGBDlgLeft", RGB(222, 227, 233)},
      {"m_dwRGBGroupBK", RGB(240, 240, 240)},
  };
  for (const auto& [key, colour] : colours) EXPECT_EQ(theme.Color(key), colour) << key;
  EXPECT_EQ(theme.FlatDesign(), 1);
  EXPECT_EQ(theme.BorderStyle(), 7);
}

}  // namespace
