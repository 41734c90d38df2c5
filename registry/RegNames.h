#pragma once
// Name rules of the registry store: how key and value names are folded for
// case-insensitive comparison, and how a key path splits into names.

#include <string>
#include <string_view>
#include <vector>

// Upper-case form used for comparison. UTF-8 letters fold through the C
// library's Unicode tables; bytes that aren't valid UTF-8 stay as they are.
std::string FoldRegName(std::string_view name);

// Splits "A\B\C" into its names. An empty path gives no names (the root);
// one trailing backslash is accepted. False for an empty name inside the
// path (a leading or doubled backslash) or a name longer than `maxName`.
bool SplitRegPath(std::string_view path, size_t maxName, std::vector<std::string_view>* names);
