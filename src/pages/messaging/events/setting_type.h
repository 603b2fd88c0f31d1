// Setting-type radios: each radio of a page's type group stands for one value
// of the command's "SETP". A click stores that value in the page.
#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "platform/dialog.h"

struct SettingTypeRadio {
  int control;
  uint8_t value;
};

// Binds the radios once: a click calls chosen with the radio's value.
void BindSettingTypes(plat::Dialog& page, std::span<const SettingTypeRadio> radios,
                      std::function<void(uint8_t)> chosen);
// Checks the radio of a value (and clears the others of the group).
void CheckSettingType(plat::Dialog& page, std::span<const SettingTypeRadio> radios, uint8_t value);
