#include "files/FileEntryObj.h"

#include <cstdio>
#include <cstring>

FileEntryObj::FileEntryObj() {
  std::memset(sFileName, 0, sizeof(sFileName));
  std::memset(sFullPath, 0, sizeof(sFullPath));
  std::memset(sDateTime, 0, sizeof(sDateTime));
}

void FileEntryObj::SetWriteTime(time_t writeTime) {
  int day = 0, month = 0, year = 0, hour = -1, minute = -1, second = -1;
  struct tm local {};
  if (localtime_r(&writeTime, &local) != nullptr) {
    day = local.tm_mday;
    month = local.tm_mon + 1;
    year = local.tm_year + 1900;
    hour = local.tm_hour;
    minute = local.tm_min;
    second = local.tm_sec;
  }
  std::snprintf(sDateTime, sizeof(sDateTime), "%02d/%02d/%04d  %02d:%02d:%02d", day, month, year,
                hour, minute, second);
}
