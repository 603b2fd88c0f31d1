// The export object of the reference host: its message texts come from the
// "EXPORT" section of the host's language file (English built in), and its
// messages go to the tip box.
#include <mutex>
#include <optional>
#include <string>

#include "host/hostcore.h"
#include "host/ref/hostref.h"
#include "text/profile.h"

namespace {

constexpr const char* kSectionExport = "EXPORT";

struct ExportTexts {
  std::mutex mutex;
  std::optional<txt::ProfileFile> file;
};

ExportTexts& Texts() {
  static ExportTexts texts;
  return texts;
}

std::string BuiltInText(int number) {
  switch (number) {
    case CExportData::kMsgNoWriter:
      return "No spreadsheet writer is available";
    case CExportData::kMsgFinished:
      return "Export finished: ";
    default:
      return {};
  }
}

}  // namespace

std::string CExportData::GetMessageText(int number) {
  std::lock_guard lock(Texts().mutex);
  if (Texts().file) {
    if (auto text = Texts().file->Find(kSectionExport, std::to_string(number))) return *text;
  }
  return BuiltInText(number);
}

void CExportData::ShowMessage(const std::string& text) { ShowMsgTipEx(text, "", 0); }

namespace hostref {
bool LoadExportTexts(const std::string& languageFile) {
  auto file = txt::ProfileFile::Load(languageFile);
  std::lock_guard lock(Texts().mutex);
  Texts().file = std::move(file);
  return Texts().file.has_value();
}
}  // namespace hostref
