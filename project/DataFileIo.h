#pragma once
// Whole-file load and save of a timeline or repository: the path checks,
// the backup rotation in front of a save, and the stream around the object's
// Load or Save.

#include <cstdint>
#include <cstdio>
#include <functional>

// Opens path (a missing file is created), runs load on the stream, closes.
// 0 whatever load gave; -1 for a null path, one that doesn't fit a 260-byte
// buffer, or no stream.
int32_t LoadDataFile(const char* path, const std::function<int32_t(FILE*)>& load);

// Rotates the backups of path (flag 0), opens it, runs save, closes. 0, or
// -1 for a null or over-long path or no stream.
int32_t SaveDataFile(const char* path, const std::function<int32_t(FILE*)>& save);
