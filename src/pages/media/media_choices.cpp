// Filling and reading the media pages' drop-down lists.
#include "pages/media/media_choices.h"

#include "host/hostcore.h"
#include "lang/language.h"

namespace media {
namespace {
std::string TextOf(const MediaChoice& choice) { return choice.text ? LanguageText(choice.text) : choice.literal; }
}  // namespace

void FillChoices(plat::Dialog& page, int combo, std::span<const MediaChoice> choices) {
  auto* box = page.Item<plat::ComboBox>(combo);
  if (!box) return;
  box->ResetContent();
  for (const MediaChoice& choice : choices) box->SetItemData(box->AddString(TextOf(choice)), choice.data);
  box->SetCurSel(0);
}

uint32_t SelectedData(const plat::Dialog& page, int combo) {
  const auto* box = page.Item<plat::ComboBox>(combo);
  if (!box || box->GetCurSel() < 0) return 0;
  return box->GetItemData(box->GetCurSel());
}

std::string ChoiceText(std::span<const MediaChoice> choices, uint32_t data) {
  for (const MediaChoice& choice : choices) {
    if (choice.data == data) return TextOf(choice);
  }
  return {};
}

bool FaceCaptureOn() { return CConfigKestrelINI::ReadIniInt(kFaceCaptureSwitch) != 0; }
}  // namespace media
