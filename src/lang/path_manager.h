// Theme paths and colours: the style chosen in "UIStyle.ini" beside the
// application, its theme folder, and the colours of "color_config.ini" in that
// folder, each with a built-in value when the file does not name it. The files
// are read on first use and kept.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "platform/wintypes.h"

class CPathManager {
 public:
  static CPathManager& Instance();
  // Reads the files again on next use.
  void Reload();

  int StyleNumber() const;
  // Folders end with '/'.
  std::string ThemeFolder() const;
  std::string CommonFolder() const;
  std::string LogoFolder() const;
  int ButtonZoomSize() const;
  bool DlgShowIcon() const;
  int DlgShowIconId() const;
  // A colour by its key in "color_config.ini" (also the two numbers kept
  // among the colours); 0 for a key the theme does not have.
  COLORREF Color(std::string_view key) const;
  // "m_nFlatDesign" (its red part) and "m_dwBroderStyle".
  int FlatDesign() const;
  int BorderStyle() const;
  // An image of the theme folder by name: ".png", then ".jpg"; "" when neither exists.
  std::string FindImage(const std::string& name) const;

  // "r,g,b" in decimal, each part cut to its low byte.
  static COLORREF ParseColor(std::string_view text);

 private:
  struct Theme {
    int style = 0;
    std::string folder, common, logo;
    int buttonZoom = 1, showIcon = 1, iconId = 128;
    std::map<std::string, COLORREF, std::less<>> colors;
  };
  static Theme Read();
  // Runs read(theme) under the lock, reading the files first when needed.
  template <class F>
  auto With(F read) const {
    std::lock_guard guard(lock_);
    if (!theme_) theme_ = Read();
    return read(*theme_);
  }

  mutable std::mutex lock_;
  mutable std::optional<Theme> theme_;
};
