#pragma once
// Name rules of the registry store: how key and value names are folded for
// case-insensitive comparison, and how a key path splits into names.

#include <string>
#include <string_view>
#include <vector>

// Upper-case form used for comparison. UTF-8 letters fold through the C
// library's Unicode tables; bytes that aren't valid UTF-8 stay as they are.
std::string FoldRegName(std::string_view name);

// Deepest key path, as the registry allows; it also bounds the recursion of
// a tree delete.
inline constexpr size_t kMaxRegDepth = 512;

// Splits "A\B\C" into its names. An empty path gives no names (the root);
// one trailing backslash is accepted. False for an empty name inside the
// path (a leading or doubled backslash), a name longer than `maxName`, or
// more than kMaxRegDepth names.
bool SplitRegPath(std::string_view path, size_t maxName, std::vector<std::string_view>* names);
