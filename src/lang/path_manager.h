// Theme paths and colours: the style chosen in "UIStyle.ini" beside the
// application, its theme folder, and the colours of "color_config.ini" in that
// folder, each with a built-in value when the file does not name it.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/wintypes.h"

class CPathManager {
 public:
  static CPathManager& Instance();
  // Reads the files again (they are read on first use).
  void Reload();

  int StyleNumber();
  std::string ThemeFolder();
  std::string CommonFolder();
  std::string LogoFolder();
  int ButtonZoomSize();
  bool DlgShowIcon();
  int DlgShowIconId();
  // A colour (or one of the two numbers kept as colours) by its key.
  COLORREF Color(std::string_view key);
  int FlatDesign();
  int BorderStyle();
  // An image of the theme folder by name: ".png", then ".jpg"; "" when neither exists.
  std::string FindImage(const std::string& name);

  // "r,g,b" with each part cut to its low byte.
  static COLORREF ParseColor(std::string_view text);

 private:
  void Load();
  bool loaded_ = false;
  int style_ = 0;
  std::string theme_, common_, logo_;
  int buttonZoom_ = 1, showIcon_ = 1, iconId_ = 128;
  std::map<std::string, COLORREF, std::less<>> colors_;
};
