// The drop-down lists of the media pages: each entry shows a language text
// (or a text of its own) and carries the value the terminal gets. Several
// pages share a list (save flag, delete flag, media type, event code).
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "platform/dialog.h"

struct MediaChoice {
  uint32_t data;
  int text;                      // language id; 0: the literal below
  const char* literal = nullptr;
};

namespace media {
// Language ids of the shared lists.
enum Text : int {
  kTextRealTime = 13447, kTextSave = 13448,
  kTextKeep = 13463, kTextDeleteAfterUpload = 13464,
  kTextImage = 13456, kTextAudio = 13457, kTextVideo = 13458, kTextAllMedia = 13487,
  kTextPlatformCommand = 13459, kTextTimedAction = 13460, kTextRobbery = 13461, kTextCollision = 13462,
  kTextDoorOpened = 13482, kTextDoorClosed = 13483, kTextDoorClosedAtSpeed = 13484, kTextDistance = 13485,
};

// Save flag ("SALA"): upload at once, keep on the terminal, or (by switch) face capture.
inline constexpr uint32_t kSaveFaceCapture = 2;
inline constexpr MediaChoice kSaveFlags[] = {{0, kTextRealTime}, {1, kTextSave}, {kSaveFaceCapture, 0, "人脸抓拍"}};
inline constexpr size_t kSaveFlagsWithoutFace = 2;
// Delete flag ("DELA"): keep the media after the upload, or delete it.
inline constexpr MediaChoice kDeleteFlags[] = {{0, kTextKeep}, {1, kTextDeleteAfterUpload}};
// Media type ("METY").
inline constexpr MediaChoice kMediaTypes[] = {
    {0, kTextImage}, {1, kTextAudio}, {2, kTextVideo}, {3, kTextAllMedia}};
// Event code ("EVCO"): what made the terminal take the media.
inline constexpr MediaChoice kEventCodes[] = {
    {0, kTextPlatformCommand}, {1, kTextTimedAction}, {2, kTextRobbery},          {3, kTextCollision},
    {4, kTextDoorOpened},      {5, kTextDoorClosed},  {6, kTextDoorClosedAtSpeed}, {7, kTextDistance}};

// Empties the combo box, adds the entries with their data and selects the first.
void FillChoices(plat::Dialog& page, int combo, std::span<const MediaChoice> choices);
// The item data of the selected entry; 0 when none is selected.
uint32_t SelectedData(const plat::Dialog& page, int combo);
// The text of the entry carrying data; "" when no entry does.
std::string ChoiceText(std::span<const MediaChoice> choices, uint32_t data);

// The config switch that offers face capture on the camera page and lets its channel stay empty.
constexpr int kFaceCaptureSwitch = 1103;
bool FaceCaptureOn();
}  // namespace media
