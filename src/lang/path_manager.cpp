#include "lang/path_manager.h"

#include <filesystem>

#include "lang/app_path.h"
#include "text/numbers.h"
#include "text/profile.h"

namespace {
constexpr size_t kFolderChars = 260;
constexpr const char* kFlatDesign = "m_nFlatDesign";
constexpr const char* kBorderStyle = "m_dwBroderStyle";
// The system colours a theme falls back to.
constexpr COLORREF kSystemGrayText = RGB(109, 109, 109);
constexpr COLORREF kSystemDialogFace = RGB(240, 240, 240);

struct BuiltIn {
  const char* key;
  COLORREF value;
};
constexpr BuiltIn kBuiltIns[] = {
    {"m_dwRGBWndPopoTitle[0]", RGB(180, 180, 180)}, {"m_dwRGBWndPopoTitle[1]", RGB(255, 255, 255)},
    {"m_dwRGBWndPopoTitle[2]", RGB(60, 60, 60)},    {"m_dwRGBWndPopoBottom[0]", RGB(255, 255, 255)},
    {"m_dwRGBWndPopoBottom[1]", RGB(180, 180, 180)}, {kFlatDesign, RGB(1, 0, 0)},
    {"m_dwRGBDlgPopupBase", RGB(127, 127, 127)},    {"m_dwRGBDlgPopupBaseBK", RGB(255, 255, 255)},
    {"m_dwRGBDlgPopupBaseCtrlBK", RGB(255, 255, 255)}, {"m_dwRGBDlgPopupBaseCtrlText", RGB(0, 0, 0)},
    {"m_dwRGBListItemBK[0]", RGB(255, 255, 255)},   {"m_dwRGBListItemBK[1]", RGB(255, 255, 255)},
    {"m_dwRGBListHeadCtrlBK[0]", RGB(255, 255, 255)}, {"m_dwRGBListHeadCtrlBK[1]", RGB(255, 255, 255)},
    {"m_dwRGBListItemBKFocus[0]", RGB(255, 255, 255)}, {"m_dwRGBListItemBKFocus[1]", RGB(255, 255, 255)},
    {"m_dwRGBEditText", RGB(0, 0, 0)},              {"m_dwRGBEditTextBK", RGB(255, 255, 255)},
    {"m_dwRGBBtnNormalText", RGB(0, 0, 0)},         {"m_dwRGBBtnOverText", RGB(0, 0, 0)},
    {"m_dwRGBBtnHilightText", RGB(0, 0, 0)},        {"m_dwRGBBtnHilightText2", RGB(0, 0, 0)},
    {"m_dwRGBBtnDisabledText", RGB(127, 127, 127)}, {"m_dwRGBCheckState", RGB(0, 170, 170)},
    {"m_dwRGBTextColor", RGB(0, 0, 0)},             {"m_dwRGBGroupText", kSystemGrayText},
    {"m_dwRGBBorder", RGB(255, 255, 255)},          {"m_dwRGBGroupBK", kSystemDialogFace},
    {"m_dwRGBDlgLeft", RGB(222, 227, 233)},
};
}  // namespace

CPathManager& CPathManager::Instance() {
  static CPathManager manager;
  return manager;
}

void CPathManager::Reload() {
  loaded_ = false;
  colors_.clear();
  Load();
}

COLORREF CPathManager::ParseColor(std::string_view text) {
  int parts[3] = {0, 0, 0};
  for (int i = 0; i < 3; ++i) {
    const size_t comma = text.find(',');
    parts[i] = txt::WToI(text.substr(0, comma));
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  return RGB(parts[0], parts[1], parts[2]);
}

void CPathManager::Load() {
  if (loaded_) return;
  loaded_ = true;
  const std::string app = GetAppPath();
  const auto style = txt::ProfileFile::Load(app + "UIStyle.ini").value_or(txt::ProfileFile::Parse(""));
  style_ = style.GetInt("CONFIG", "UI_STYLE", 0);
  const std::string folder =
      style.GetString("STYLE" + std::to_string(style_), "FOLDER", "Default", kFolderChars);
  theme_ = app + "Theme/" + folder + "/";
  common_ = app + "Theme/Common/";
  logo_ = app + "Theme/Logo/";
  buttonZoom_ = style.GetInt("CONFIG", "ButtonZoomSize", 1);
  showIcon_ = style.GetInt("CONFIG", "IsDlgShowIcon", 1);
  iconId_ = style.GetInt("CONFIG", "DlgShowIconID", 128);

  const auto colors = txt::ProfileFile::Load(theme_ + "color_config.ini").value_or(txt::ProfileFile::Parse(""));
  for (const BuiltIn& builtIn : kBuiltIns) {
    auto value = colors.Find("COLOR", builtIn.key);
    colors_[builtIn.key] = value ? ParseColor(*value) : builtIn.value;
  }
  auto border = colors.Find("COLOR", kBorderStyle);
  colors_[kBorderStyle] = border ? static_cast<COLORREF>(txt::WToI(*border)) : 1;
}

int CPathManager::StyleNumber() { return Load(), style_; }
std::string CPathManager::ThemeFolder() { return Load(), theme_; }
std::string CPathManager::CommonFolder() { return Load(), common_; }
std::string CPathManager::LogoFolder() { return Load(), logo_; }
int CPathManager::ButtonZoomSize() { return Load(), buttonZoom_; }
bool CPathManager::DlgShowIcon() { return Load(), showIcon_ != 0; }
int CPathManager::DlgShowIconId() { return Load(), iconId_; }
int CPathManager::FlatDesign() { return GetRValue(Color(kFlatDesign)); }
int CPathManager::BorderStyle() { return static_cast<int>(Color(kBorderStyle)); }

COLORREF CPathManager::Color(std::string_view key) {
  Load();
  auto it = colors_.find(key);
  return it == colors_.end() ? 0 : it->second;
}

std::string CPathManager::FindImage(const std::string& name) {
  for (const char* ext : {".png", ".jpg"}) {
    const std::string path = ThemeFolder() + name + ext;
    if (std::filesystem::exists(path)) return path;
  }
  return {};
}
