// The host's persisted configuration (integers and texts by numeric id) and
// the local store of remembered control values, in one SQLite database per
// data directory. Stored values win over the fleet's configuration defaults.
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <new>
#include <mutex>
#include <optional>
#include <string>

#include "host/hostcore.h"
#include "host/hostlog.h"
#include "host/ref/core/fleet.h"
#include "host/ref/hostref.h"

namespace {

constexpr const char* kDatabaseFile = "host.sqlite";
constexpr const char* kInMemory = ":memory:";

constexpr const char* kSchema =
    "CREATE TABLE IF NOT EXISTS config_int(id INTEGER PRIMARY KEY, value INTEGER NOT NULL);"
    "CREATE TABLE IF NOT EXISTS config_text(id INTEGER, idx INTEGER, value TEXT NOT NULL, PRIMARY KEY(id, idx));"
    "CREATE TABLE IF NOT EXISTS ctrl_data(module TEXT, template INTEGER, descriptor INTEGER, value TEXT NOT NULL,"
    " PRIMARY KEY(module, template, descriptor));"
    "CREATE TABLE IF NOT EXISTS alarm_handle(seq INTEGER PRIMARY KEY AUTOINCREMENT, text TEXT NOT NULL,"
    " way INTEGER NOT NULL, time TEXT NOT NULL);";

enum Statement { kGetInt, kSetInt, kGetText, kSetText, kGetCtrl, kSetCtrl, kAddHandle, kListHandles, kStatementCount };

constexpr const char* kStatementText[kStatementCount] = {
    "SELECT value FROM config_int WHERE id = ?1",
    "INSERT OR REPLACE INTO config_int(id, value) VALUES(?1, ?2)",
    "SELECT value FROM config_text WHERE id = ?1 AND idx = ?2",
    "INSERT OR REPLACE INTO config_text(id, idx, value) VALUES(?1, ?2, ?3)",
    "SELECT value FROM ctrl_data WHERE module = ?1 AND template = ?2 AND descriptor = ?3",
    "INSERT OR REPLACE INTO ctrl_data(module, template, descriptor, value) VALUES(?1, ?2, ?3, ?4)",
    "INSERT INTO alarm_handle(text, way, time) VALUES(?1, ?2, ?3)",
    "SELECT text, way, time FROM alarm_handle ORDER BY seq",
};

// A bound parameter: an integer or a text.
struct Param {
  Param(long long v) : isText(false), number(v) {}
  Param(const std::string& v) : isText(true), text(&v) {}
  bool isText;
  sqlite3_int64 number = 0;
  const std::string* text = nullptr;
};

class Store {
 public:
  ~Store() { Close(); }

  bool Open(const std::string& dir) {
    std::lock_guard lock(mutex_);
    Close();
    std::string path = kInMemory;
    if (!dir.empty()) {
      std::error_code ec;
      std::filesystem::create_directories(dir, ec);
      path = (std::filesystem::path(dir) / kDatabaseFile).string();
    }
    if (OpenPath(path)) return true;
    hostcore_detail::CoreLog().WriteStrInfoEx(2, "OpenDataDir: cannot open %s; keeping values in memory", path.c_str());
    Close();
    OpenPath(kInMemory);
    return false;
  }

  // The text of the first column of the statement's row, if any.
  std::optional<std::string> Get(Statement s, std::initializer_list<Param> params) {
    std::lock_guard lock(mutex_);
    sqlite3_stmt* stmt = Prepared(s, params);
    std::optional<std::string> value;
    if (stmt && sqlite3_step(stmt) == SQLITE_ROW) {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, 0));
      value = text ? std::string(text, sqlite3_column_bytes(stmt, 0)) : std::string();
    }
    if (stmt) sqlite3_reset(stmt);
    return value;
  }

  std::optional<int> GetInt(Statement s, std::initializer_list<Param> params) {
    std::lock_guard lock(mutex_);
    sqlite3_stmt* stmt = Prepared(s, params);
    std::optional<int> value;
    if (stmt && sqlite3_step(stmt) == SQLITE_ROW) value = sqlite3_column_int(stmt, 0);
    if (stmt) sqlite3_reset(stmt);
    return value;
  }

  // Every row of the statement, as texts of its first `columns` columns.
  std::vector<std::vector<std::string>> Rows(Statement s, int columns) {
    std::lock_guard lock(mutex_);
    std::vector<std::vector<std::string>> rows;
    sqlite3_stmt* stmt = Prepared(s, {});
    if (!stmt) return rows;
    while (sqlite3_step(stmt) == SQLITE_ROW) {
      auto& row = rows.emplace_back();
      for (int c = 0; c < columns; ++c) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(stmt, c));
        row.emplace_back(text ? std::string(text, sqlite3_column_bytes(stmt, c)) : std::string());
      }
    }
    sqlite3_reset(stmt);
    return rows;
  }

  bool Put(Statement s, std::initializer_list<Param> params) {
    std::lock_guard lock(mutex_);
    sqlite3_stmt* stmt = Prepared(s, params);
    if (!stmt) return false;
    const bool done = sqlite3_step(stmt) == SQLITE_DONE;
    if (!done) hostcore_detail::CoreLog().WriteStrInfoEx(2, "store write failed: %s", sqlite3_errmsg(db_));
    sqlite3_reset(stmt);
    return done;
  }

 private:
  bool OpenPath(const std::string& path) {
    if (sqlite3_open(path.c_str(), &db_) != SQLITE_OK) return false;
    if (sqlite3_exec(db_, kSchema, nullptr, nullptr, nullptr) != SQLITE_OK) return false;
    for (int i = 0; i < kStatementCount; ++i)
      if (sqlite3_prepare_v2(db_, kStatementText[i], -1, &statements_[i], nullptr) != SQLITE_OK) return false;
    return true;
  }

  void Close() {
    for (sqlite3_stmt*& stmt : statements_) {
      sqlite3_finalize(stmt);
      stmt = nullptr;
    }
    if (db_) sqlite3_close(db_);
    db_ = nullptr;
  }

  // Opens the in-memory store on first use, then binds the parameters.
  sqlite3_stmt* Prepared(Statement s, std::initializer_list<Param> params) {
    if (!db_ && !OpenPath(kInMemory)) return nullptr;
    sqlite3_stmt* stmt = statements_[s];
    if (!stmt) return nullptr;
    int index = 1;
    for (const Param& p : params) {
      if (p.isText)
        sqlite3_bind_text(stmt, index++, p.text->data(), static_cast<int>(p.text->size()), SQLITE_TRANSIENT);
      else
        sqlite3_bind_int64(stmt, index++, p.number);
    }
    return stmt;
  }

  std::mutex mutex_;
  sqlite3* db_ = nullptr;
  sqlite3_stmt* statements_[kStatementCount] = {};
};

Store& TheStore() {
  static Store store;
  return store;
}

}  // namespace

int CConfigKestrelINI::ReadIniInt(int id, int defaultValue) {
  if (auto stored = TheStore().GetInt(kGetInt, {id})) return *stored;
  return hostcore_detail::FleetConfigInt(id).value_or(defaultValue);
}

BOOL CConfigKestrelINI::WriteIniInt(int id, int value) { return TheStore().Put(kSetInt, {id, value}) ? TRUE : FALSE; }

std::string CConfigKestrelINI::ReadIniStrEx(int id, int index) {
  if (auto stored = TheStore().Get(kGetText, {id, index})) return *stored;
  return hostcore_detail::FleetConfigText(id, index).value_or("");
}

BOOL CConfigKestrelINI::WriteIniStrEx(int id, int index, const std::string& text) {
  return TheStore().Put(kSetText, {id, index, text}) ? TRUE : FALSE;
}

BOOL CLocalDatabaseMgr::US_GetWndCtrlData(const std::string& module, int templateId, UINT descriptor,
                                          std::string& value) {
  auto stored = TheStore().Get(kGetCtrl, {module, templateId, descriptor});
  if (!stored) return FALSE;
  value = *stored;
  return TRUE;
}

BOOL CLocalDatabaseMgr::US_SetWndCtrlData(const std::string& module, int templateId, UINT descriptor,
                                          const std::string& value) {
  return TheStore().Put(kSetCtrl, {module, templateId, descriptor, value}) ? TRUE : FALSE;
}

// ---- the alarm handling log ----------------------------------------------------

namespace {
class HandleEntry : public CAlarmHandleInfo {
 public:
  void SetHandleText(const std::string& text) override { text_ = text; }
  void SetHandleWay(int way) override { way_ = way; }
  void SetHandleTime(const SYSTEMTIME& time) override { time_ = FormatSystemTime(time); }
  void Keep() const { TheStore().Put(kAddHandle, {text_, way_, time_}); }

 private:
  std::string text_;
  long long way_ = 0;
  std::string time_;
};
}  // namespace

CAlarmHandleInfo* CAlarmHandleInfoMgr::CreateObject() { return new (std::nothrow) HandleEntry(); }

void CAlarmHandleInfoMgr::ReleaseObject(CAlarmHandleInfo* info) {
  auto* entry = dynamic_cast<HandleEntry*>(info);
  if (entry) entry->Keep();
  delete info;
}

namespace hostref {
bool OpenDataDir(const std::string& dir) { return TheStore().Open(dir); }

std::vector<HandleLogEntry> HandleLog() {
  std::vector<HandleLogEntry> log;
  for (auto& row : TheStore().Rows(kListHandles, 3)) log.push_back({row[0], std::atoi(row[1].c_str()), row[2]});
  return log;
}
}  // namespace hostref
