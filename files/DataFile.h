#pragma once
// Positioned file access shared by every persistent object of the library:
// one way to open a data file, one to close it, a positioned read and write,
// a file copy, the single-message error file and an existence test.
// Free functions on streams the caller owns; none of them throws.

#include <cstdint>
#include <cstdio>

// Opens `path` positioned at its start. Read-only: "rb" only. Otherwise
// "rb+", then "wb+" (creates it), then "rb" as the last resort; the caller is
// not told which one succeeded. Null when none did, and for anything but a
// regular file (directory, pipe, device), which is never waited on.
FILE* OpenDataFile(const char* path, bool readOnly);

// Closes `stream`; a null stream is accepted.
void CloseDataFile(FILE* stream);

// Seeks to `start` and reads end - start bytes into `buffer`. Returns the
// count read, or 0 without seeking when end - start (a 32-bit difference
// that wraps) is below 1. The seek result isn't examined: file positions
// end at 2 GB.
int32_t ReadFileRange(int32_t start, int32_t end, void* buffer, FILE* stream);

// Seeks to `start` and writes end - start bytes from `buffer`. Returns the
// count written, or 0 without seeking when end - start is below 1.
int32_t WriteFileRange(int32_t start, int32_t end, const void* buffer, FILE* stream);

// Copies `source` over `target` (target first). A missing (or null) source
// is success and leaves the target alone, and so is a target that is the
// source itself. 0, or -1 when the target can't be opened.
int32_t CopyDataFile(const char* target, const char* source);

// Replaces "FileErr.txt" in the current directory with `text` (no line end).
void WriteFileErrorLog(const char* text);

// 0 when `path` can be opened for reading as a file, -1 when not (a
// directory included).
int32_t FileExists(const char* path);
