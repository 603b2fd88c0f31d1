// Theme paths and colours read from the style and colour files.
#include "lang/path_manager.h"

#include <filesystem>

#include "lang/app_path.h"
#include "text/numbers.h"
#include "text/profile.h"

namespace {
constexpr const char* kStyleFile = "UIStyle.ini";
constexpr const char* kConfig = "CONFIG";
constexpr const char* kColorFile = "color_config.ini";
constexpr const char* kColorSection = "COLOR";
constexpr size_t kFolderChars = 260;
constexpr int kDefaultBorderStyle = 1;
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
  std::lock_guard guard(lock_);
  theme_.reset();
}

COLORREF CPathManager::ParseColor(std::string_view text) {
  int parts[3] = {0, 0, 0};
  for (int& part : parts) {
    const size_t comma = text.find(',');
    part = txt::WToI(text.substr(0, comma));
    if (comma == std::string_view::npos) break;
    text.remove_prefix(comma + 1);
  }
  return RGB(parts[0], parts[1], parts[2]);
}

CPathManager::Theme CPathManager::Read() {
  Theme theme;
  const std::string app = GetAppPath();
  const auto style = txt::ProfileFile::Load(app + kStyleFile).value_or(txt::ProfileFile());
  theme.style = style.GetInt(kConfig, "UI_STYLE", 0);
  const std::string folder = style.GetString("STYLE" + std::to_string(theme.style), "FOLDER", "Default", kFolderChars);
  theme.folder = app + "Theme/" + folder + "/";
  theme.common = app + "Theme/Common/";
  theme.logo = app + "Theme/Logo/";
  theme.buttonZoom = style.GetInt(kConfig, "ButtonZoomSize", 1);
  theme.showIcon = style.GetInt(kConfig, "IsDlgShowIcon", 1);
  theme.iconId = style.GetInt(kConfig, "DlgShowIconID", 128);

  const auto colors = txt::ProfileFile::Load(theme.folder + kColorFile).value_or(txt::ProfileFile());
  for (const BuiltIn& builtIn : kBuiltIns) {
    const auto value = colors.Find(kColorSection, builtIn.key);
    theme.colors[builtIn.key] = value ? ParseColor(*value) : builtIn.value;
  }
  theme.colors[kBorderStyle] = static_cast<COLORREF>(colors.GetInt(kColorSection, kBorderStyle, kDefaultBorderStyle));
  return theme;
}

int CPathManager::StyleNumber() const { return With([](const Theme& t) { return t.style; }); }
std::string CPathManager::ThemeFolder() const { return With([](const Theme& t) { return t.folder; }); }
std::string CPathManager::CommonFolder() const { return With([](const Theme& t) { return t.common; }); }
std::string CPathManager::LogoFolder() const { return With([](const Theme& t) { return t.logo; }); }
int CPathManager::ButtonZoomSize() const { return With([](const Theme& t) { return t.buttonZoom; }); }
bool CPathManager::DlgShowIcon() const { return With([](const Theme& t) { return t.showIcon != 0; }); }
int CPathManager::DlgShowIconId() const { return With([](const Theme& t) { return t.iconId; }); }
int CPathManager::FlatDesign() const { return GetRValue(Color(kFlatDesign)); }
int CPathManager::BorderStyle() const { return static_cast<int>(Color(kBorderStyle)); }

COLORREF CPathManager::Color(std::string_view key) const {
  return With([key](const Theme& t) {
    const auto it = t.colors.find(key);
    return it == t.colors.end() ? COLORREF{0} : it->second;
  });
}

std::string CPathManager::FindImage(const std::string& name) const {
  const std::string folder = ThemeFolder();
  for (const char* ext : {".png", ".jpg"}) {
    std::error_code ec;
    if (std::filesystem::exists(folder + name + ext, ec)) return folder + name + ext;
  }
  return {};
}
