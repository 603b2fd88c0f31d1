// The audio/video attribute query: the terminal's audio and video codings,
// channels and sampling, one block per answering device.
#pragma once

#include "pages/settings/attr_query_page.h"

class CDlgQueryAudioVideo : public CAttrQueryPage {
 public:
  static constexpr int kTemplate = 4045;
  static constexpr int32_t kCommand = 0x9003;
  CDlgQueryAudioVideo() : CAttrQueryPage(kTemplate, kCommand) {}

  // The name of a coding value (its low 8 bits).
  static std::string CodingName(int value);

 protected:
  std::string ReplyBlock(const Json::Value& reply, const std::string& vehicle) override;
};
