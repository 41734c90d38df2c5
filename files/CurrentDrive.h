#pragma once
// The current drive number of the process (1 for drive A, 3 for drive C).
// Linux has no drives: the number is kept by the process alone and changes
// nothing on the file system, but the code that saves, changes and restores
// drive and directory together keeps its shape and its results.

#include <cstdint>

// The current drive number; 3 (drive C) until something changes it.
int32_t GetCurrentDrive();

// Makes `drive` current when it names a drive letter (1 to 26) and returns 0;
// any other number leaves the current drive as it is and returns -1.
int32_t ChangeCurrentDrive(int32_t drive);

// The drive a path names: its first character upper-cased, minus 64, so
// "C:/x" and "c:/x" give 3. Nothing tests for a colon: a relative path gives
// the drive of its first letter, "/x" gives -17 and "" gives -64. A null path
// gives 3.
int32_t GetDriveNumber(const char* path);

// Changes to the drive of `path` (when its number is above 0), then to the
// directory `path`. 0 for a null path, otherwise 0 or -1 from the directory
// change.
int32_t ChangeDriveAndDir(const char* path);
