// new, backup, versions, version and restore: the subcommands that write
// (all but versions), through the library's own open, save, backup and
// version operations. Each reads the project first with the tool's reader,
// so that a file the library would refuse or half-read is refused here
// with its reason before anything is written.

#include <filesystem>
#include <iostream>
#include <system_error>

#include "files/AppDirectories.h"
#include "files/PathParts.h"
#include "project/ProjectNames.h"
#include "tools/project/ProjectScan.h"
#include "tools/project/ProjectTool.h"

namespace projecttool {

namespace {

namespace fs = std::filesystem;

// Longest project or version name taken: the folders below it must still
// fit a path of the library.
constexpr size_t kLongestName = 120;

// Why name can't be a folder name of ours, or empty.
std::string BadName(const std::string& name) {
  if (name.empty()) return "the name is empty";
  if (name == "." || name == "..") return "the name \"" + name + "\" is not a folder name";
  if (name.find('/') != std::string::npos) return "the name \"" + name + "\" holds a '/'";
  if (name.size() > kLongestName) {
    return "the name is longer than " + std::to_string(kLongestName) + " characters";
  }
  return std::string();
}

std::string FileError(const std::string& file, const std::string& text) {
  return std::string(kProgramName) + ": " + file + ": " + text + "\n";
}

// Opens path with the library for a writing command, after the tool's own
// reader found it usable.
bool OpenForWriting(const std::string& path, CProject& project) {
  CProjectReader reader;
  if (!ReadProjectOrReport(path, project, reader)) return false;
  InitAppDirectories(0);
  if (project.Open(path.c_str(), 1) != 0) {
    std::cerr << FileError(path, "the library could not open it");
    return false;
  }
  return true;
}

// The library's operations run in the application directory: a path the
// user gave relative to where the tool was started must not depend on that.
std::string Absolute(const std::string& path) {
  std::error_code error;
  const fs::path absolute = fs::absolute(path, error);
  return error ? path : absolute.lexically_normal().string();
}

std::string VersionsDir(CProject& project) {
  char dir[kPathBufferSize] = {};
  project.GetVersionsDir(dir);
  return dir;
}

}  // namespace

int RunNew(const std::vector<std::string>& args) {
  const Command& command = CommandNamed("new");
  CommandLine line;
  int code = kExitOk;
  if (!ParseFor(command, args, {}, {}, 2, 2, &line, &code)) return code;
  const std::string& name = line.positional[1];
  if (const std::string bad = BadName(name); !bad.empty()) return UsageError(command, bad);
  std::error_code error;
  const fs::path root = fs::absolute(line.positional[0], error);
  if (error || !fs::is_directory(root, error)) {
    std::cerr << FileError(line.positional[0], "is not a directory");
    return kExitFindings;
  }
  std::string rootText = root.lexically_normal().string();
  if (rootText.back() != '/') rootText += '/';
  const fs::path projectFolder = fs::path(rootText) / name;
  if (fs::exists(projectFolder, error)) {
    std::cerr << FileError(projectFolder.string(), "already exists; nothing was written");
    return kExitFindings;
  }
  InitAppDirectories(0);
  char appDir[kPathBufferSize] = {};
  GetAppDir(appDir);
  const std::string templateFile = std::string(appDir) + "/" + projectnames::kTemplateProjectName +
                                   projectnames::kProjectExtension;
  if (const std::string reason = UnreadableReason(templateFile); !reason.empty()) {
    std::cerr << FileError(templateFile, "the project template " + reason);
    return kExitFindings;
  }
  CProject project;
  project.Create(rootText.c_str(), name.c_str());
  project.EnsureDefaultContent();
  char path[kPathBufferSize] = {};
  if (project.GetProjectFilePath(path) != 0 || project.Save(path) != 0) {
    std::cerr << FileError(projectFolder.string(), "the project could not be saved");
    return kExitFindings;
  }
  std::cout << path << "\n";
  return kExitOk;
}

int RunBackup(const std::vector<std::string>& args) {
  CommandLine line;
  int code = kExitOk;
  if (!ParseFor(CommandNamed("backup"), args, {}, {}, 1, 1, &line, &code)) return code;
  const std::string path = Absolute(line.positional[0]);
  CProject project;
  if (!OpenForWriting(path, project)) return kExitFindings;
  // A backup set is written only for a changed project: asked for by
  // hand, the project as it stands counts as changed.
  project.MarkChanged(0);
  if (project.SaveBackup(path.c_str()) != 0) {
    std::cerr << FileError(path, "the backup set could not be written");
    return kExitFindings;
  }
  for (const std::string& backup : ListBackups(project)) std::cout << backup << "\n";
  return kExitOk;
}

int RunVersions(const std::vector<std::string>& args) {
  CommandLine line;
  int code = kExitOk;
  if (!ParseFor(CommandNamed("versions"), args, {}, {}, 1, 1, &line, &code)) return code;
  CProject project;
  CProjectReader reader;
  if (!ReadProjectOrReport(line.positional[0], project, reader)) return kExitFindings;
  const std::string current =
      FieldString(project.projectData.szVersionName, sizeof(project.projectData.szVersionName));
  const std::vector<VersionFolder> versions = ListVersions(project);
  if (versions.empty()) std::cout << "no versions\n";
  for (const VersionFolder& version : versions) {
    std::cout << (version.name == current ? "* " : "  ") << version.name << " (" << version.files
              << " files)\n";
  }
  return kExitOk;
}

int RunVersion(const std::vector<std::string>& args) {
  const Command& command = CommandNamed("version");
  CommandLine line;
  int code = kExitOk;
  if (!ParseFor(command, args, {}, {}, 1, 2, &line, &code)) return code;
  const bool named = line.positional.size() == 2;
  if (named) {
    if (const std::string bad = BadName(line.positional[1]); !bad.empty()) {
      return UsageError(command, bad);
    }
  }
  CProject project;
  if (!OpenForWriting(Absolute(line.positional[0]), project)) return kExitFindings;
  if (named) {
    project.CreateNamedVersion(line.positional[1].c_str());
  } else {
    project.CreateVersion();
  }
  const std::string name =
      FieldString(project.projectData.szVersionName, sizeof(project.projectData.szVersionName));
  std::cout << VersionsDir(project) << name << "\n";
  return kExitOk;
}

int RunRestore(const std::vector<std::string>& args) {
  const Command& command = CommandNamed("restore");
  CommandLine line;
  int code = kExitOk;
  if (!ParseFor(command, args, {}, {}, 2, 2, &line, &code)) return code;
  const std::string path = Absolute(line.positional[0]);
  const std::string& name = line.positional[1];
  if (const std::string bad = BadName(name); !bad.empty()) return UsageError(command, bad);
  CProject project;
  {
    CProjectReader reader;
    if (!ReadProjectOrReport(path, project, reader)) return kExitFindings;
  }
  const std::string folder = VersionsDir(project) + name;
  std::error_code error;
  if (!fs::is_directory(folder, error)) {
    std::cerr << FileError(path, "has no version \"" + name + "\" (" + folder + ")");
    return kExitFindings;
  }
  if (!OpenForWriting(path, project)) return kExitFindings;
  project.RestoreVersion(folder.c_str());
  // What came back is read again: a version may hold damaged files.
  CProject restored;
  CProjectReader reader;
  if (!ReadProjectOrReport(path, restored, reader)) return kExitFindings;
  std::cout << "restored " << name << " into " << path << "\n";
  return FinishWithFindings(reader);
}

}  // namespace projecttool
