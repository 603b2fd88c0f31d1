// The audio/video attribute query: the terminal's input audio coding,
// channels and sampling, audio output, video coding and channel counts, one
// block of text per answering device.
#pragma once

#include "pages/settings/attr_query_page.h"

class CDlgQueryAudioVideo : public CAttrQueryPage {
 public:
  static constexpr int kTemplate = 4045;
  static constexpr int32_t kCommand = 0x9003;
  CDlgQueryAudioVideo() : CAttrQueryPage(kTemplate, kCommand) {}

 protected:
  std::string ReplyBlock(const Json::Value& reply, const std::string& vehicle) override;
};
