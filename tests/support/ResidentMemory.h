#pragma once
// Resident memory of this process, for tests that show a load stays flat.

#include <unistd.h>

#include <cstdio>

// Resident set size in KiB, or -1 when /proc can't tell.
inline long ResidentKiB() {
  long pages = 0;
  long resident = -1;
  FILE* statm = std::fopen("/proc/self/statm", "r");
  if (statm == nullptr) return -1;
  if (std::fscanf(statm, "%ld %ld", &pages, &resident) != 2) resident = -1;
  std::fclose(statm);
  return resident < 0 ? -1 : resident * (sysconf(_SC_PAGESIZE) / 1024);
}
