#include "registry/RegDatabase.h"

#include <pwd.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "registry/RegNames.h"

namespace {

constexpr int kDefaultBusyMs = 3000;

// Roots are rows with their handle as id, so that keys of both roots share
// one table and a root's own values need no special case.
constexpr const char* kSchema =
    "CREATE TABLE IF NOT EXISTS reg_keys("
    " id INTEGER PRIMARY KEY,"
    " parent INTEGER REFERENCES reg_keys(id) ON DELETE CASCADE,"
    " name TEXT NOT NULL,"
    " folded TEXT NOT NULL,"
    " class TEXT NOT NULL DEFAULT '',"
    " UNIQUE(parent, folded));"
    "CREATE TABLE IF NOT EXISTS reg_values("
    " key INTEGER NOT NULL REFERENCES reg_keys(id) ON DELETE CASCADE,"
    " name TEXT NOT NULL,"
    " folded TEXT NOT NULL,"
    " type INTEGER NOT NULL,"
    " data BLOB NOT NULL,"
    " PRIMARY KEY(key, folded)) WITHOUT ROWID;"
    "INSERT OR IGNORE INTO reg_keys(id, parent, name, folded) VALUES"
    " (2147483649, NULL, 'HKEY_CURRENT_USER', 'HKEY_CURRENT_USER'),"
    " (2147483650, NULL, 'HKEY_LOCAL_MACHINE', 'HKEY_LOCAL_MACHINE');";

// One prepared statement; a failed prepare makes every step fail.
class Statement {
 public:
  Statement(sqlite3* db, const char* sql) {
    if (db != nullptr) sqlite3_prepare_v2(db, sql, -1, &m_stmt, nullptr);
  }
  ~Statement() { sqlite3_finalize(m_stmt); }
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  void Bind(int index, int64_t value) { sqlite3_bind_int64(m_stmt, index, value); }
  void Bind(int index, std::string_view text) {
    sqlite3_bind_text(m_stmt, index, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
  }
  void BindBlob(int index, const void* data, size_t size) {
    if (size == 0) {
      sqlite3_bind_zeroblob(m_stmt, index, 0);  // empty, not NULL
    } else {
      sqlite3_bind_blob64(m_stmt, index, data, size, SQLITE_TRANSIENT);
    }
  }
  int Step() { return m_stmt == nullptr ? SQLITE_ERROR : sqlite3_step(m_stmt); }
  int64_t Int(int col) { return sqlite3_column_int64(m_stmt, col); }
  std::string Text(int col) {
    const auto* text = sqlite3_column_text(m_stmt, col);
    return text == nullptr ? std::string()
                           : std::string(reinterpret_cast<const char*>(text),
                                         static_cast<size_t>(sqlite3_column_bytes(m_stmt, col)));
  }
  void Blob(int col, std::vector<uint8_t>* out) {
    const auto* data = static_cast<const uint8_t*>(sqlite3_column_blob(m_stmt, col));
    const int size = sqlite3_column_bytes(m_stmt, col);
    if (data == nullptr || size <= 0) {
      out->clear();
    } else {
      out->assign(data, data + size);
    }
  }

 private:
  sqlite3_stmt* m_stmt = nullptr;
};

int64_t RootId(HKEY root) {
  return (root == HKEY_CURRENT_USER || root == HKEY_LOCAL_MACHINE) ? static_cast<int64_t>(root)
                                                                   : -1;
}

std::string HomeDirectory() {
  const char* home = std::getenv("HOME");
  if (home != nullptr && home[0] == '/') return home;
  passwd entry{};
  passwd* found = nullptr;
  char buffer[4096];
  if (getpwuid_r(getuid(), &entry, buffer, sizeof buffer, &found) == 0 && found != nullptr &&
      found->pw_dir != nullptr) {
    return found->pw_dir;
  }
  return {};
}

bool ExplicitStore() {
  const char* env = std::getenv("TACHYRUN_REGISTRY");
  return env != nullptr && env[0] != '\0';
}

// Makes the folders above the default store file, private to the user.
void MakeParentFolders(const std::string& file) {
  for (size_t cut = file.find('/', 1); cut != std::string::npos; cut = file.find('/', cut + 1)) {
    const std::string folder = file.substr(0, cut);
    if (mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return;
  }
}

}  // namespace

std::string RegDatabase::StorePath() {
  if (ExplicitStore()) return std::getenv("TACHYRUN_REGISTRY");
  std::string base;
  const char* xdg = std::getenv("XDG_CONFIG_HOME");
  if (xdg != nullptr && xdg[0] == '/') {
    base = xdg;  // a relative value is ignored, as the base directory rules say
  } else {
    const std::string home = HomeDirectory();
    if (home.empty()) return {};
    base = home + "/.config";
  }
  return base + "/tachyrun/registry.sqlite3";
}

int RegDatabase::BusyTimeoutMs() {
  const char* env = std::getenv("TACHYRUN_REGISTRY_BUSY_MS");
  if (env == nullptr || env[0] == '\0') return kDefaultBusyMs;
  char* end = nullptr;
  const long ms = std::strtol(env, &end, 10);
  if (*end != '\0' || ms < 0 || ms > 600000) return kDefaultBusyMs;
  return static_cast<int>(ms);
}

RegDatabase::~RegDatabase() {
  if (m_inTransaction) Exec("ROLLBACK");
  sqlite3_close_v2(m_db);
}

bool RegDatabase::Exec(const char* sql) {
  return m_db != nullptr && sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool RegDatabase::Open(Mode mode) {
  if (m_db != nullptr) return false;
  const std::string path = StorePath();
  if (path.empty()) return false;
  int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI;
  if (mode == Mode::Write) {
    flags |= SQLITE_OPEN_CREATE;
    if (!ExplicitStore()) MakeParentFolders(path);
  }
  if (sqlite3_open_v2(path.c_str(), &m_db, flags, nullptr) != SQLITE_OK) {
    sqlite3_close_v2(m_db);
    m_db = nullptr;
    return false;
  }
  sqlite3_busy_timeout(m_db, BusyTimeoutMs());
  // Each call opens its own connection; a checkpoint (and its sync) at
  // every close would cost more than the call. The log is folded back into
  // the file by the automatic checkpoint as it grows.
  sqlite3_db_config(m_db, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  Exec("PRAGMA foreign_keys=ON");
  if (mode == Mode::Read) {
    m_inTransaction = Exec("BEGIN");
    return m_inTransaction;
  }
  // Results ignored: a store that can't switch (read-only, busy) still
  // answers, and the write below reports what matters.
  Exec("PRAGMA journal_mode=WAL");
  Exec("PRAGMA synchronous=NORMAL");
  m_inTransaction = Exec("BEGIN IMMEDIATE");
  return m_inTransaction && EnsureSchema();
}

bool RegDatabase::EnsureSchema() {
  return Exec(kSchema);
}

bool RegDatabase::Commit() {
  if (!m_inTransaction || !Exec("COMMIT")) return false;
  m_inTransaction = false;
  return true;
}

int64_t RegDatabase::FindChild(int64_t parent, std::string_view name) {
  Statement st(m_db, "SELECT id FROM reg_keys WHERE parent = ?1 AND folded = ?2");
  st.Bind(1, parent);
  st.Bind(2, FoldRegName(name));
  return st.Step() == SQLITE_ROW ? st.Int(0) : -1;
}

int64_t RegDatabase::AddChild(int64_t parent, std::string_view name) {
  Statement st(m_db, "INSERT INTO reg_keys(parent, name, folded, class) VALUES(?1, ?2, ?3, ?4)");
  st.Bind(1, parent);
  st.Bind(2, name);
  st.Bind(3, FoldRegName(name));
  st.Bind(4, std::string_view(kRegKeyClass));
  return st.Step() == SQLITE_DONE ? sqlite3_last_insert_rowid(m_db) : -1;
}

int64_t RegDatabase::OpenKey(HKEY root, std::string_view path) {
  const int64_t id = RootId(root);
  return id < 0 ? -1 : OpenSubKey(id, path);
}

int64_t RegDatabase::OpenSubKey(int64_t parent, std::string_view path) {
  int64_t id = parent;
  std::vector<std::string_view> names;
  if (id < 0 || m_db == nullptr || !SplitRegPath(path, kMaxKeyName, &names)) return -1;
  for (const std::string_view name : names) {
    id = FindChild(id, name);
    if (id < 0) return -1;
  }
  return id;
}

int64_t RegDatabase::CreateKey(HKEY root, std::string_view path) {
  int64_t id = RootId(root);
  std::vector<std::string_view> names;
  if (id < 0 || m_db == nullptr || !SplitRegPath(path, kMaxKeyName, &names)) return -1;
  for (const std::string_view name : names) {
    int64_t child = FindChild(id, name);
    if (child < 0) child = AddChild(id, name);
    if (child < 0) return -1;
    id = child;
  }
  return id;
}

bool RegDatabase::DeleteKey(int64_t key) {
  if (key < 0 || key == RootId(HKEY_CURRENT_USER) || key == RootId(HKEY_LOCAL_MACHINE)) {
    return false;
  }
  Statement children(m_db, "SELECT 1 FROM reg_keys WHERE parent = ?1 LIMIT 1");
  children.Bind(1, key);
  if (children.Step() != SQLITE_DONE) return false;  // has sub-keys, or the store failed
  Statement st(m_db, "DELETE FROM reg_keys WHERE id = ?1");
  st.Bind(1, key);
  return st.Step() == SQLITE_DONE && sqlite3_changes(m_db) == 1;
}

bool RegDatabase::QueryValue(int64_t key, std::string_view name, RegValue* out) {
  Statement st(m_db, "SELECT type, data FROM reg_values WHERE key = ?1 AND folded = ?2");
  st.Bind(1, key);
  st.Bind(2, FoldRegName(name));
  if (st.Step() != SQLITE_ROW) return false;
  out->type = static_cast<uint32_t>(st.Int(0));
  st.Blob(1, &out->data);
  return true;
}

bool RegDatabase::SetValue(int64_t key, std::string_view name, uint32_t type, const void* data,
                           size_t size) {
  if (data == nullptr && size != 0) return false;
  // An existing value keeps the spelling of its name, as the registry does.
  Statement st(m_db,
               "INSERT INTO reg_values(key, name, folded, type, data) VALUES(?1, ?2, ?3, ?4, ?5)"
               " ON CONFLICT(key, folded) DO UPDATE SET type = excluded.type,"
               " data = excluded.data");
  st.Bind(1, key);
  st.Bind(2, name);
  st.Bind(3, FoldRegName(name));
  st.Bind(4, static_cast<int64_t>(type));
  st.BindBlob(5, data, size);
  return st.Step() == SQLITE_DONE;
}

bool RegDatabase::DeleteValue(int64_t key, std::string_view name) {
  Statement st(m_db, "DELETE FROM reg_values WHERE key = ?1 AND folded = ?2");
  st.Bind(1, key);
  st.Bind(2, FoldRegName(name));
  return st.Step() == SQLITE_DONE && sqlite3_changes(m_db) > 0;
}

RegDatabase::EnumResult RegDatabase::EnumSubKey(int64_t key, uint32_t index, std::string* name) {
  Statement st(m_db,
               "SELECT name FROM reg_keys WHERE parent = ?1 ORDER BY folded LIMIT 1 OFFSET ?2");
  st.Bind(1, key);
  st.Bind(2, static_cast<int64_t>(index));
  switch (st.Step()) {
    case SQLITE_ROW:
      *name = st.Text(0);
      return EnumResult::Found;
    case SQLITE_DONE:
      return EnumResult::NoMore;
    default:
      return EnumResult::Failed;
  }
}

bool RegDatabase::ListNames(const char* sql, int64_t key, std::vector<std::string>* names) {
  names->clear();
  Statement st(m_db, sql);
  st.Bind(1, key);
  int rc = SQLITE_ROW;
  while ((rc = st.Step()) == SQLITE_ROW) names->push_back(st.Text(0));
  return rc == SQLITE_DONE;
}

bool RegDatabase::ListSubKeys(int64_t key, std::vector<std::string>* names) {
  return ListNames("SELECT name FROM reg_keys WHERE parent = ?1 ORDER BY folded", key, names);
}

bool RegDatabase::ListValueNames(int64_t key, std::vector<std::string>* names) {
  return ListNames("SELECT name FROM reg_values WHERE key = ?1 ORDER BY folded", key, names);
}

bool RegDatabase::QueryKeyClass(int64_t key, std::string* keyClass) {
  Statement st(m_db, "SELECT class FROM reg_keys WHERE id = ?1");
  st.Bind(1, key);
  if (st.Step() != SQLITE_ROW) return false;
  *keyClass = st.Text(0);
  return true;
}
