#pragma once
// CRegStore: typed reads and writes of values under a root key and a base
// path. Each call opens its key, does its one thing and closes it again;
// nothing stays open between calls. A read never creates anything and gives
// its default when the key or value is missing or the store fails; a write
// creates the missing path and gives 1, or 0 on failure. Nothing is thrown.
//
// The optional last two arguments of each value operation replace the base
// path and the root for that call (null: the object's own). The key is the
// base path directly followed by `subKey`.

#include <cstdint>
#include <list>
#include <string>

#include "registry/RegTypes.h"

class CRegStore {
 public:
  CRegStore() = default;

  // Stores `path` with a backslash appended unless it ends in one; an empty
  // path stays empty, so sub-keys then lie directly under the root.
  void SetBase(HKEY root, const std::string& path);

  uint32_t ReadDword(const std::string& subKey, const std::string& name, uint32_t dflt,
                     const std::string* base = nullptr, HKEY root = kNoRoot) const;
  int32_t WriteDword(const std::string& subKey, const std::string& name, uint32_t value,
                     const std::string* base = nullptr, HKEY root = kNoRoot) const;

  void ReadString(const std::string& subKey, const std::string& name, const std::string& dflt,
                  std::string& out, const std::string* base = nullptr, HKEY root = kNoRoot) const;
  int32_t WriteString(const std::string& subKey, const std::string& name, const std::string& value,
                      const std::string* base = nullptr, HKEY root = kNoRoot) const;

  // Numbered lists: values name1, name2, ... without gap; the first missing
  // number ends the list.
  void ReadStringList(const std::string& subKey, const std::string& name,
                      std::list<std::string>& out, const std::string* base = nullptr,
                      HKEY root = kNoRoot) const;
  int32_t WriteStringList(const std::string& subKey, const std::string& name,
                          const std::list<std::string>& list, const std::string* base = nullptr,
                          HKEY root = kNoRoot) const;

  // A new block for the caller to delete[], or null. *size gets the value's
  // size whenever the value exists, also when it isn't binary.
  uint8_t* ReadBinary(const std::string& subKey, const std::string& name, uint32_t* size,
                      const std::string* base = nullptr, HKEY root = kNoRoot) const;
  int32_t WriteBinary(const std::string& subKey, const std::string& name, const void* data,
                      uint32_t size, const std::string* base = nullptr, HKEY root = kNoRoot) const;

  // Deletes `key` (a path from `root`) with all below it, depth first. An
  // empty key gives 0, so no call can delete a root.
  int32_t DeleteKeyTree(HKEY root, std::string key) const;

  std::string m_sBasePath;
  HKEY m_hRoot = HKEY_CURRENT_USER;
};

// Two process-wide stores for callers of the library. The third one, which
// serves the global configuration, is g_CfgRegStore in config/GlobalCfg.h.
// Start slots of the two globals below (platform/StartOrder.h).
inline constexpr int kStartAppRegStore = 1080;
inline constexpr int kStartUserRegStore = 1090;

extern CRegStore g_AppRegStore;
extern CRegStore g_UserRegStore;
