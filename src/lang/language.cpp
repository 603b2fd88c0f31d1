// The language table: texts by id from the language file, cached once found.
#include "lang/language.h"

#include <sys/stat.h>

#include <memory>

#include "host/hostcore.h"
#include "lang/file_limit.h"

namespace {
constexpr const char* kSection = "STRING";
// Outlives static destruction: the application object deletes the table at unload.
std::unique_ptr<CLanguage>* g_slot = nullptr;
std::unique_ptr<CLanguage>& Slot() {
  if (!g_slot) g_slot = new std::unique_ptr<CLanguage>();
  return *g_slot;
}
std::mutex g_instanceLock;

}  // namespace

CLanguage::FileStamp CLanguage::StampOf(const std::string& path) {
  struct stat st {};
  if (stat(path.c_str(), &st) != 0) return {};
  return {static_cast<long long>(st.st_mtim.tv_sec) * 1000000000LL + st.st_mtim.tv_nsec,
          static_cast<long long>(st.st_size)};
}

CLanguage& CLanguage::Instance() {
  std::lock_guard guard(g_instanceLock);
  auto& slot = Slot();
  if (!slot) slot = std::make_unique<CLanguage>();
  return *slot;
}

void CLanguage::DeleteInstance() {
  std::lock_guard guard(g_instanceLock);
  delete g_slot;
  g_slot = nullptr;
}

BOOL CLanguage::SetPath(const std::string& path) {
  std::lock_guard guard(lock_);
  if (path == path_) return FALSE;
  const FileStamp stamp = StampOf(path);
  if (!lang::LanguageFileFits(path)) return FALSE;
  auto file = txt::ProfileFile::Load(path);
  if (!file) return FALSE;
  path_ = path;
  cache_.clear();
  file_ = std::move(file);
  fileStamp_ = stamp;
  return TRUE;
}

std::string CLanguage::Path() {
  std::lock_guard guard(lock_);
  return path_;
}

std::string CLanguage::LanguageText(int id) {
  std::lock_guard guard(lock_);
  auto it = cache_.find(id);
  if (it != cache_.end()) return it->second;
  if (path_.empty()) return {};
  // A text not cached is read from the file as it is now.
  const FileStamp stamp = StampOf(path_);
  if (!file_ || stamp != fileStamp_) {
    file_ = lang::LanguageFileFits(path_) ? txt::ProfileFile::Load(path_) : std::nullopt;
    fileStamp_ = stamp;
  }
  if (!file_) return {};
  std::string text = file_->GetString(kSection, std::to_string(id), "", kMaxTextChars + 1);
  if (!text.empty()) cache_.emplace(id, text);
  return text;
}

std::string LanguageText(int id) { return CLanguage::Instance().LanguageText(id); }

int ShowLangTip(int id) { return ShowMsgTipEx(LanguageText(id), "", 0); }
