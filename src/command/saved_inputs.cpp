// CBaseDlg: remembered inputs, kept in the host's local store between runs.
#include "command/base_dlg.h"
#include "command/saved_control.h"
#include "host/hostcore.h"
#include "lang/app_path.h"
#include "text/numbers.h"

void CBaseDlg::RestoreInputs() {
  const std::string module = GetPluginName();
  for (const uint32_t descriptor : SavedControls) {
    const int id = SavedControl::ControlOf(descriptor);
    std::string value;
    const bool stored = CLocalDatabaseMgr::US_GetWndCtrlData(module, TemplateId(), descriptor, value) != FALSE;
    switch (SavedControl::KindOf(descriptor)) {
      case SavedControl::kText:
        if (stored) SetItemText(id, value);
        break;
      case SavedControl::kCombo:
        if (auto* combo = Item<plat::ComboBox>(id)) {
          const int index = stored ? txt::WToI(value) : -1;
          combo->SetCurSel(index >= 0 && index < combo->GetCount() ? index : SavedControl::DefaultOf(descriptor));
        }
        break;
      case SavedControl::kCheck:
        SetChecked(id, stored ? txt::WToI(value) != 0 : SavedControl::DefaultOf(descriptor) != 0);
        break;
    }
  }
}

void CBaseDlg::SaveInputs() {
  const std::string module = GetPluginName();
  for (const uint32_t descriptor : SavedControls) {
    const int id = SavedControl::ControlOf(descriptor);
    std::string value;
    switch (SavedControl::KindOf(descriptor)) {
      case SavedControl::kText:
        value = GetItemText(id);
        break;
      case SavedControl::kCombo: {
        auto* combo = Item<plat::ComboBox>(id);
        value = std::to_string(combo ? combo->GetCurSel() : -1);
        break;
      }
      case SavedControl::kCheck:
        value.assign(1, IsChecked(id) ? '1' : '0');
        break;
    }
    CLocalDatabaseMgr::US_SetWndCtrlData(module, TemplateId(), descriptor, value);
  }
}
