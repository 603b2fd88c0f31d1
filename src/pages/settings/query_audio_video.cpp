// Turns an audio/video attribute reply into its block of ten lines.
#include "pages/settings/query_audio_video.h"

#include "command/page_registry.h"
#include "lang/language.h"
#include "text/json.h"

namespace {
using C = CDlgQueryAudioVideo;
const RegisterPage<C> kPage{C::kFunctionType};

// Reply keys.
constexpr const char *kKeyAudioCoding = "ACODE", *kKeyAudioChannels = "ACHN", *kKeySampleRate = "ASR",
                     *kKeySampleSize = "ASB", *kKeyFrameLength = "AFL", *kKeyAudioOut = "AOUT",
                     *kKeyVideoCoding = "VCODE", *kKeyMaxAudioChannels = "ACHNN", *kKeyMaxVideoChannels = "VCHNN";

// The coding table: audio codings from 1, video codings from 98.
constexpr const char* kAudioCodings[] = {"G.721",    "G.722",   "G.723",        "G.728",      "G.729",     "G.711A",
                                         "G.711U",   "G.726",   "G.729A",       "DVI4_3",     "DVI4_4",    "DVI4_8K",
                                         "DVI4_16K", "LPC",     "S16BE_STEREO", "S16BE_MONO", "MPEGAUDIO", "LPCM",
                                         "AAC",      "WMA9STD", "HEAAC",        "PCM_VOICE",  "PCM_AUDIO", "AACLC",
                                         "MP3",      "ADPCMA",  "MP4AUDIO",     "AMR"};
constexpr const char* kVideoCodings[] = {"H.264", "H.265", "AVS", "SVAC"};
constexpr int kFirstAudioCoding = 1, kFirstVideoCoding = 98;
constexpr int kTransparentCoding = 91;  // shown as its number
constexpr int kNoCoding = 0;            // shown as nothing
constexpr int kCodingMask = 0xFF;

constexpr const char* kSampleRates[] = {"8000 Hz", "22050 Hz", "44100 Hz", "48000 Hz"};
constexpr const char* kSampleSizes[] = {"8", "16", "32"};

std::string Unknown(int value) { return "Unknown:" + std::to_string(value); }

// The name of a table entry when code names one: first code .. first code + N - 1.
template <size_t N>
const char* TableName(const char* const (&names)[N], int first, int code) {
  return code >= first && code < first + static_cast<int>(N) ? names[code - first] : nullptr;
}

std::string CodingName(int value) {
  const int code = value & kCodingMask;
  if (const char* audio = TableName(kAudioCodings, kFirstAudioCoding, code)) {
    return std::string(audio) + " " + LanguageText(C::kAudioSuffix);
  }
  if (const char* video = TableName(kVideoCodings, kFirstVideoCoding, code)) {
    return std::string(video) + " " + LanguageText(C::kVideoSuffix);
  }
  if (code == kTransparentCoding) return std::to_string(code);
  if (code == kNoCoding) return {};
  return Unknown(code);
}

std::string SampleRate(int code) {
  const char* rate = TableName(kSampleRates, 0, code);
  return rate ? rate : "";
}

std::string SampleSize(int code) {
  const char* size = TableName(kSampleSizes, 0, code);
  return size ? std::string(size) + " " + LanguageText(C::kBits) : Unknown(code);
}
}  // namespace

std::string CDlgQueryAudioVideo::ReplyBlock(const Json::Value& reply, const std::string& vehicle) {
  const auto number = [&](const char* key) { return txt::JsonMemberInt(reply, key, 0); };
  const auto decimal = [&](const char* key) { return std::to_string(number(key)); };
  return Block(vehicle,
               {{C::kAudioCoding, CodingName(number(kKeyAudioCoding))},
                {C::kAudioChannels, decimal(kKeyAudioChannels)},
                {C::kSampleRate, SampleRate(number(kKeySampleRate))},
                {C::kSampleSize, SampleSize(number(kKeySampleSize))},
                {C::kFrameLength, decimal(kKeyFrameLength)},
                {C::kAudioOut, LanguageText(number(kKeyAudioOut) != 0 ? C::kSupported : C::kUnsupported)},
                {C::kVideoCoding, CodingName(number(kKeyVideoCoding))},
                {C::kMaxAudioChannels, decimal(kKeyMaxAudioChannels)},
                {C::kMaxVideoChannels, decimal(kKeyMaxVideoChannels)}},
               LastLineBreak::kYes);
}
