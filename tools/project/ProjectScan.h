#pragma once
// What lies beside a project on disk: its version folders and its backup
// files. Read-only directory listings, sorted by name.

#include <string>
#include <vector>

class CProject;

namespace projecttool {

struct VersionFolder {
  std::string name;
  std::string path;
  int files = 0;  // regular files below it, at any depth
};

std::vector<VersionFolder> ListVersions(CProject& project);
// Paths of the .Bk1 and .Bk2 files of the project folder and of its
// timeline and repository folders.
std::vector<std::string> ListBackups(CProject& project);

}  // namespace projecttool
