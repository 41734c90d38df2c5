#include "registry/RegStore.h"
#include "platform/StartOrder.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "registry/RegDatabase.h"
#include "registry/RegNames.h"

CRegStore g_AppRegStore TACHYRUN_START_ORDER(kStartAppRegStore);
CRegStore g_UserRegStore TACHYRUN_START_ORDER(kStartUserRegStore);

namespace {

std::string KeyPath(const CRegStore& store, const std::string& subKey, const std::string* base) {
  return (base != nullptr ? *base : store.m_sBasePath) + subKey;
}

HKEY RootOf(const CRegStore& store, HKEY root) {
  return root != kNoRoot ? root : store.m_hRoot;
}

// Runs `op` on the key opened for query. False when the key isn't there or
// the store can't be read; a store failure never leaves this function as an
// exception.
template <typename Op>
bool InReadKey(HKEY root, const std::string& path, Op op) {
  try {
    RegDatabase db;
    if (!db.Open(RegDatabase::Mode::Read)) return false;
    const int64_t key = db.OpenKey(root, path);
    if (key < 0) return false;
    op(db, key);
    return true;
  } catch (...) {
    return false;
  }
}

// Runs `op` on the key, created when missing, in one write transaction.
// 1 when `op` succeeded and the change is stored, else 0 and nothing stored.
template <typename Op>
int32_t InWriteKey(HKEY root, const std::string& path, Op op) {
  try {
    RegDatabase db;
    if (!db.Open(RegDatabase::Mode::Write)) return 0;
    const int64_t key = db.CreateKey(root, path);
    if (key < 0) return 0;
    // A write that fails changes nothing: the transaction is rolled back.
    return (op(db, key) && db.Commit()) ? 1 : 0;
  } catch (...) {
    return 0;
  }
}

// A stored value read as text ends at its first NUL, or at its end when it
// has none (the registry doesn't promise a terminator).
std::string AsText(const std::vector<uint8_t>& data) {
  if (data.empty()) return {};
  const auto* begin = reinterpret_cast<const char*>(data.data());
  const auto* nul = static_cast<const char*>(std::memchr(begin, '\0', data.size()));
  return std::string(begin, nul != nullptr ? static_cast<size_t>(nul - begin) : data.size());
}

bool WriteText(RegDatabase& db, int64_t key, const std::string& name, const std::string& text) {
  return db.SetValue(key, name, REG_SZ, text.c_str(), text.size() + 1);
}

// Depth first below the opened key `key`; `depth` bounds the recursion
// however the stored tree looks.
int32_t DeleteTree(RegDatabase& db, int64_t key, size_t depth) {
  if (key < 0 || depth > kMaxRegDepth) return 0;
  int32_t result = 1;
  while (result == 1) {
    // Always index 0: each child is gone when the next round comes.
    std::string child;
    const RegDatabase::EnumResult found = db.EnumSubKey(key, 0, &child);
    if (found == RegDatabase::EnumResult::NoMore) {
      result = db.DeleteKey(key) ? 1 : 0;
      break;  // the key is gone, so the next enumeration would end the loop anyway
    }
    if (found == RegDatabase::EnumResult::Failed) break;
    result = DeleteTree(db, db.OpenSubKey(key, child), depth + 1);
  }
  return result;
}

}  // namespace

void CRegStore::SetBase(HKEY root, const std::string& path) {
  m_sBasePath = path;
  if (!m_sBasePath.empty() && m_sBasePath.back() != '\\') m_sBasePath += '\\';
  m_hRoot = root;
}

uint32_t CRegStore::ReadDword(const std::string& subKey, const std::string& name, uint32_t dflt,
                              const std::string* base, HKEY root) const {
  uint32_t result = dflt;
  InReadKey(RootOf(*this, root), KeyPath(*this, subKey, base), [&](RegDatabase& db, int64_t key) {
    RegValue value;
    // The type isn't looked at: up to four bytes of any value land over the
    // default, so a shorter value keeps the default's upper bytes. A longer
    // value doesn't fit the four-byte query, which fails: the default stands.
    if (db.QueryValue(key, name, &value) && !value.data.empty() &&
        value.data.size() <= sizeof result) {
      std::memcpy(&result, value.data.data(), std::min<size_t>(sizeof result, value.data.size()));
    }
  });
  return result;
}

int32_t CRegStore::WriteDword(const std::string& subKey, const std::string& name, uint32_t value,
                              const std::string* base, HKEY root) const {
  return InWriteKey(RootOf(*this, root), KeyPath(*this, subKey, base),
                    [&](RegDatabase& db, int64_t key) {
                      return db.SetValue(key, name, REG_DWORD, &value, sizeof value);
                    });
}

void CRegStore::ReadString(const std::string& subKey, const std::string& name,
                           const std::string& dflt, std::string& out, const std::string* base,
                           HKEY root) const {
  out = dflt;
  InReadKey(RootOf(*this, root), KeyPath(*this, subKey, base), [&](RegDatabase& db, int64_t key) {
    RegValue value;
    if (db.QueryValue(key, name, &value)) out = AsText(value.data);
  });
}

int32_t CRegStore::WriteString(const std::string& subKey, const std::string& name,
                               const std::string& value, const std::string* base, HKEY root) const {
  return InWriteKey(RootOf(*this, root), KeyPath(*this, subKey, base),
                    [&](RegDatabase& db, int64_t key) { return WriteText(db, key, name, value); });
}

void CRegStore::ReadStringList(const std::string& subKey, const std::string& name,
                               std::list<std::string>& out, const std::string* base,
                               HKEY root) const {
  out.clear();
  InReadKey(RootOf(*this, root), KeyPath(*this, subKey, base), [&](RegDatabase& db, int64_t key) {
    RegValue value;
    for (int n = 1; db.QueryValue(key, name + std::to_string(n), &value); ++n) {
      out.push_back(AsText(value.data));
    }
  });
}

int32_t CRegStore::WriteStringList(const std::string& subKey, const std::string& name,
                                   const std::list<std::string>& list, const std::string* base,
                                   HKEY root) const {
  return InWriteKey(RootOf(*this, root), KeyPath(*this, subKey, base),
                    [&](RegDatabase& db, int64_t key) {
                      bool ok = true;
                      int n = 1;
                      for (const std::string& text : list) {
                        if (!WriteText(db, key, name + std::to_string(n), text)) {
                          ok = false;
                          break;
                        }
                        ++n;
                      }
                      // A shorter list leaves no stale tail behind it.
                      RegValue stale;
                      for (; db.QueryValue(key, name + std::to_string(n), &stale); ++n) {
                        if (!db.DeleteValue(key, name + std::to_string(n))) break;
                      }
                      return ok;
                    });
}

uint8_t* CRegStore::ReadBinary(const std::string& subKey, const std::string& name, uint32_t* size,
                               const std::string* base, HKEY root) const {
  if (size == nullptr) return nullptr;
  uint8_t* block = nullptr;
  InReadKey(RootOf(*this, root), KeyPath(*this, subKey, base), [&](RegDatabase& db, int64_t key) {
    RegValue value;
    if (!db.QueryValue(key, name, &value)) return;
    *size = static_cast<uint32_t>(value.data.size());
    if (value.type != REG_BINARY) return;
    block = new (std::nothrow) uint8_t[std::max<size_t>(value.data.size(), 1)];
    if (block != nullptr && !value.data.empty()) {
      std::memcpy(block, value.data.data(), value.data.size());
    }
  });
  return block;
}

int32_t CRegStore::WriteBinary(const std::string& subKey, const std::string& name, const void* data,
                               uint32_t size, const std::string* base, HKEY root) const {
  return InWriteKey(
      RootOf(*this, root), KeyPath(*this, subKey, base),
      [&](RegDatabase& db, int64_t key) { return db.SetValue(key, name, REG_BINARY, data, size); });
}

int32_t CRegStore::DeleteKeyTree(HKEY root, std::string key) const {
  if (key.empty()) return 0;
  try {
    RegDatabase db;
    if (!db.Open(RegDatabase::Mode::Write)) return 0;
    const int32_t result = DeleteTree(db, db.OpenKey(root, key), 1);
    // All or nothing: a delete that stops half way is rolled back.
    return (result == 1 && db.Commit()) ? 1 : 0;
  } catch (...) {
    return 0;
  }
}
