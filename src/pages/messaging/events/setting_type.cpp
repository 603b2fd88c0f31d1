#include "pages/messaging/events/setting_type.h"

void BindSettingTypes(plat::Dialog& page, std::span<const SettingTypeRadio> radios,
                      std::function<void(uint8_t)> chosen) {
  for (const SettingTypeRadio& radio : radios) {
    page.Bind(radio.control, BN_CLICKED, [chosen, value = radio.value] { chosen(value); });
  }
}

void CheckSettingType(plat::Dialog& page, std::span<const SettingTypeRadio> radios, uint8_t value) {
  for (const SettingTypeRadio& radio : radios) page.SetChecked(radio.control, radio.value == value);
}
