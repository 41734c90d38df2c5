#pragma once
// The storage under CRegStore: a hierarchical key/value store kept in one
// SQLite file, with the calls a registry offers (open or create a key by
// path, query, set and delete values, enumerate and delete keys). One object
// is one connection with one transaction; it lives for a single operation,
// so nothing stays open between calls and a forked child inherits nothing.
//
// Key and value names compare case-insensitively; the folded form is kept
// in its own column with the uniqueness constraint, since SQLite's NOCASE
// folds ASCII letters only.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "registry/RegTypes.h"

struct sqlite3;

struct RegValue {
  uint32_t type = 0;
  std::vector<uint8_t> data;
};

class RegDatabase {
 public:
  enum class Mode { Read, Write };
  enum class EnumResult { Found, NoMore, Failed };

  RegDatabase() = default;
  // Rolls back what was not committed and closes the connection.
  ~RegDatabase();
  RegDatabase(const RegDatabase&) = delete;
  RegDatabase& operator=(const RegDatabase&) = delete;

  // The store file: $TACHYRUN_REGISTRY (a path or an SQLite "file:" URI),
  // else $XDG_CONFIG_HOME/tachyrun/registry.sqlite3, else
  // ~/.config/tachyrun/registry.sqlite3. Empty when no home can be found.
  static std::string StorePath();
  // Milliseconds a call waits for another connection's write to end:
  // $TACHYRUN_REGISTRY_BUSY_MS when set to a number, else 3000.
  static int BusyTimeoutMs();

  // Opens the store and begins a transaction. A read never creates the
  // file; a write creates it (and the default folder) and takes the write
  // lock at once, so a later statement can't fail on a lock upgrade.
  bool Open(Mode mode);
  bool Commit();

  // Key ids, or -1 when the key is missing or the store fails. An empty
  // path is the root itself; components are separated by a backslash.
  int64_t OpenKey(HKEY root, std::string_view path);
  // The same below an opened key.
  int64_t OpenSubKey(int64_t parent, std::string_view path);
  // Opens the key, creating every missing component with the store's class.
  int64_t CreateKey(HKEY root, std::string_view path);
  // Deletes a key that has no sub-keys, with its values; never a root.
  bool DeleteKey(int64_t key);

  bool QueryValue(int64_t key, std::string_view name, RegValue* out);
  bool SetValue(int64_t key, std::string_view name, uint32_t type, const void* data, size_t size);
  bool DeleteValue(int64_t key, std::string_view name);

  // Sub-keys and value names in name order.
  EnumResult EnumSubKey(int64_t key, uint32_t index, std::string* name);
  bool ListSubKeys(int64_t key, std::vector<std::string>* names);
  bool ListValueNames(int64_t key, std::vector<std::string>* names);
  bool QueryKeyClass(int64_t key, std::string* keyClass);

  // Longest key name, as the registry allows.
  static constexpr size_t kMaxKeyName = 255;

 private:
  bool Exec(const char* sql);
  bool EnsureSchema();
  int64_t FindChild(int64_t parent, std::string_view name);
  int64_t AddChild(int64_t parent, std::string_view name);
  bool ListNames(const char* sql, int64_t key, std::vector<std::string>* names);

  sqlite3* m_db = nullptr;
  bool m_inTransaction = false;
};
