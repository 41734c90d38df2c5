#pragma once
// Root handles and value types of the registry store. The numbers are those
// that callers of the library have always used, so stored values and code
// that passes roots around keep their meaning.

#include <cstdint>

using HKEY = uint32_t;

// A null root in an optional argument means "the store's own root".
inline constexpr HKEY kNoRoot = 0;
inline constexpr HKEY HKEY_CURRENT_USER = 0x80000001u;
inline constexpr HKEY HKEY_LOCAL_MACHINE = 0x80000002u;

inline constexpr uint32_t REG_SZ = 1;
inline constexpr uint32_t REG_BINARY = 3;
inline constexpr uint32_t REG_DWORD = 4;

// Class name of every key the store creates.
inline constexpr const char* kRegKeyClass = "Tessavane Data";
