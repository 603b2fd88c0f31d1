// The audio/video attribute query: the terminal's input audio coding,
// channels and sampling, audio output, video coding and channel counts, one
// block of text per answering device.
#pragma once

#include "pages/settings/attr_query_page.h"

class CDlgQueryAudioVideo : public CAttrQueryPage {
 public:
  static constexpr int kTemplate = 4045;
  static constexpr int32_t kCommand = 0x9003;
  static constexpr int kFunctionType = 40;
  enum Text : int {
    kAudioCoding = 15100, kAudioChannels = 15101, kSampleRate = 15102, kSampleSize = 15103, kFrameLength = 15104,
    kAudioOut = 15105, kSupported = 15106, kUnsupported = 15107, kVideoCoding = 15108, kMaxAudioChannels = 15109,
    kMaxVideoChannels = 15110, kAudioSuffix = 13457, kVideoSuffix = 13458, kBits = 11013,
  };
  static plat::DialogTemplate Layout() { return MakeTemplate(kTemplate); }
  CDlgQueryAudioVideo() : CAttrQueryPage(kTemplate, kCommand) {}

 protected:
  std::string ReplyBlock(const Json::Value& reply, const std::string& vehicle) override;
};
