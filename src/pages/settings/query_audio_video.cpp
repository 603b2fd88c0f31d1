#include "pages/settings/query_audio_video.h"

#include "command/page_registry.h"
#include "lang/language.h"
#include "text/json.h"

namespace {
constexpr int kFunctionType = 40;
const plat::templates::Registration kRegistration{CAttrQueryPage::MakeTemplate(CDlgQueryAudioVideo::kTemplate)};
const PageRegistration kPage{{kFunctionType}, PageHost::kBoth, [](int) { return std::make_unique<CDlgQueryAudioVideo>(); }};

enum Text : int {
  kVehicle = 13421, kAudioCoding = 15100, kAudioChannels = 15101, kSampleRate = 15102, kSampleSize = 15103,
  kFrameLength = 15104, kAudioOut = 15105, kSupported = 15106, kUnsupported = 15107, kVideoCoding = 15108,
  kMaxAudioChannels = 15109, kMaxVideoChannels = 15110, kAudio = 13457, kVideo = 13458, kBits = 11013,
};

constexpr const char* kAudioCodings[] = {"G.721",    "G.722",    "G.723",     "G.728",        "G.729",      "G.711A",
                                         "G.711U",   "G.726",    "G.729A",    "DVI4_3",       "DVI4_4",     "DVI4_8K",
                                         "DVI4_16K", "LPC",      "S16BE_STEREO", "S16BE_MONO", "MPEGAUDIO", "LPCM",
                                         "AAC",      "WMA9STD",  "HEAAC",     "PCM_VOICE",    "PCM_AUDIO",  "AACLC",
                                         "MP3",      "ADPCMA",   "MP4AUDIO",  "AMR"};
constexpr const char* kVideoCodings[] = {"H.264", "H.265", "AVS", "SVAC"};
constexpr int kFirstVideoCoding = 98, kPassThrough = 91;
constexpr const char* kSampleRates[] = {"8000 Hz", "22050 Hz", "44100 Hz", "48000 Hz"};
constexpr const char* kSampleSizes[] = {"8", "16", "32"};

std::string Unknown(int value) { return "Unknown:" + std::to_string(value); }

std::string SampleRate(int code) { return code >= 0 && code < 4 ? kSampleRates[code] : ""; }

std::string SampleSize(int code) {
  return code >= 0 && code < 3 ? std::string(kSampleSizes[code]) + " " + LanguageText(kBits) : Unknown(code);
}
}  // namespace

std::string CDlgQueryAudioVideo::CodingName(int value) {
  const int code = value & 0xFF;
  if (code >= 1 && code <= 28) return std::string(kAudioCodings[code - 1]) + " " + LanguageText(kAudio);
  if (code >= kFirstVideoCoding && code < kFirstVideoCoding + 4) {
    return std::string(kVideoCodings[code - kFirstVideoCoding]) + " " + LanguageText(kVideo);
  }
  if (code == kPassThrough) return std::to_string(code);
  if (code == 0) return {};
  return Unknown(code);
}

std::string CDlgQueryAudioVideo::ReplyBlock(const Json::Value& reply, const std::string& vehicle) {
  const auto get = [&](const char* key) { return txt::JsonMemberInt(reply, key, 0); };
  const std::string lines[] = {
      Line(kVehicle, vehicle),
      Line(kAudioCoding, CodingName(get("ACODE"))),
      Line(kAudioChannels, std::to_string(get("ACHN"))),
      Line(kSampleRate, SampleRate(get("ASR"))),
      Line(kSampleSize, SampleSize(get("ASB"))),
      Line(kFrameLength, std::to_string(get("AFL"))),
      Line(kAudioOut, LanguageText(get("AOUT") != 0 ? kSupported : kUnsupported)),
      Line(kVideoCoding, CodingName(get("VCODE"))),
      Line(kMaxAudioChannels, std::to_string(get("ACHNN"))),
      Line(kMaxVideoChannels, std::to_string(get("VCHNN"))),
  };
  std::string block;
  for (const std::string& line : lines) block += line + "\r\n";
  return block;
}
