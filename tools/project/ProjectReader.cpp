#include "tools/project/ProjectReader.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <functional>
#include <memory>

#include "project/ProjectFileAccess.h"
#include "project/ProjectFileList.h"
#include "project/ProjectNames.h"
#include "project/Repository.h"
#include "project/RepositoryList.h"
#include "project/Timeline.h"
#include "project/TimelineList.h"

namespace projecttool {

namespace {

namespace fs = std::filesystem;

// Closes a stream at the end of a scope.
struct StreamCloser {
  void operator()(FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<FILE, StreamCloser>;

Stream OpenForReading(const std::string& path) {
  return Stream(std::fopen(path.c_str(), "rb"));
}

int64_t FileSize(FILE* stream) {
  const long at = std::ftell(stream);
  std::fseek(stream, 0, SEEK_END);
  const long size = std::ftell(stream);
  std::fseek(stream, at, SEEK_SET);
  return size;
}

// The record of a timeline or repository file as it stands, before any
// loader corrects its counts: the size prefix, then up to sizeof(Record)
// bytes over the constructor's defaults. False when not even the prefix is
// there.
template <class Record>
bool ReadRawRecord(FILE* stream, int32_t* size, Record* record) {
  std::rewind(stream);
  if (std::fread(size, sizeof(*size), 1, stream) != 1) return false;
  const size_t want = *size > 0 ? std::min<size_t>(static_cast<size_t>(*size), sizeof(Record)) : 0;
  const size_t got = std::fread(static_cast<void*>(record), 1, want, stream);
  std::rewind(stream);
  return got == want;
}

// The bytes item takes when saved.
template <class Item>
int64_t SavedSize(Item& item) {
  Stream scratch(std::tmpfile());
  if (!scratch) return 0;
  item.Save(scratch.get());
  return std::ftell(scratch.get());
}

std::string Describe(int64_t declared, int64_t found, const char* what) {
  return "declares " + std::to_string(declared) + " " + what + ", holds " + std::to_string(found);
}

// Loads each named file into list: a missing, odd or damaged file is a
// finding and stays out of the list.
template <class Item, class Record, class List, class CountCheck>
void LoadNamed(std::vector<NamedFile>& files, List& list, const char* kindName, int32_t recordSize,
               CountCheck checkCounts,
               const std::function<void(const std::string&, const std::string&)>& add) {
  for (NamedFile& file : files) {
    if (file.name.empty()) continue;  // reported with the entries
    const std::string reason = UnreadableReason(file.path);
    if (!reason.empty()) {
      add(file.path, std::string(kindName) + " \"" + file.name + "\": " + reason);
      continue;
    }
    Stream stream = OpenForReading(file.path);
    if (!stream) {
      add(file.path, std::string("cannot be opened: ") + std::strerror(errno));
      continue;
    }
    int32_t size = 0;
    Record raw;
    if (!ReadRawRecord(stream.get(), &size, &raw)) {
      add(file.path, "too short for its record");
      continue;
    }
    if (size < 1 || size > recordSize) {
      add(file.path, "record size " + std::to_string(size) + ", this program's is " +
                         std::to_string(recordSize));
      continue;
    }
    auto item = std::make_unique<Item>();
    int32_t status = -1;
    try {
      status = item->Load(stream.get());
    } catch (...) {
      status = -1;
    }
    if (status != 0) {
      add(file.path, "does not load as a " + std::string(kindName) + " file");
      continue;
    }
    checkCounts(raw, *item, file.path);
    // A list load fills what the file lacks with default records, so a
    // count larger than the file holds shows only in the size.
    const int64_t fileSize = FileSize(stream.get());
    const int64_t wanted = SavedSize(*item);
    if (wanted > fileSize) {
      add(file.path, "ends " + std::to_string(wanted - fileSize) +
                         " bytes short of the records its counts declare");
    } else if (const int64_t rest = fileSize - std::ftell(stream.get()); rest > 0) {
      add(file.path, std::to_string(rest) + " bytes after the last record");
    }
    std::memset(item->szName, 0, sizeof(item->szName));
    std::memcpy(item->szName, file.name.data(),
                std::min(file.name.size(), sizeof(item->szName) - 1));
    list.m_aItems.Add(item.release());
    file.loaded = true;
  }
}

}  // namespace

std::string FieldString(const char* field, size_t size) {
  return std::string(field, ::strnlen(field, size));
}

std::string UnreadableReason(const std::string& path) {
  struct stat info {};
  if (::stat(path.c_str(), &info) != 0) {
    return errno == ENOENT ? "does not exist"
                           : std::string("cannot be read: ") + std::strerror(errno);
  }
  if (S_ISDIR(info.st_mode)) return "is a directory, not a file";
  if (!S_ISREG(info.st_mode)) return "is not a regular file";
  if (::access(path.c_str(), R_OK) != 0) return "cannot be read: permission denied";
  return std::string();
}

void CProjectReader::Add(const std::string& file, const std::string& text) {
  m_Findings.push_back({file, text});
}

bool CProjectReader::Read(const std::string& path, CProject& project) {
  project.Close();
  m_ProjectPath = path;
  const std::string reason = UnreadableReason(path);
  if (!reason.empty()) {
    Add(path, reason);
    return false;
  }
  Stream stream = OpenForReading(path);
  if (!stream) {
    Add(path, std::string("cannot be opened: ") + std::strerror(errno));
    return false;
  }
  if (!ReadHead(stream.get(), project)) return false;
  ReadEntries(stream.get(), project);
  ReadVideoMode(stream.get(), project);
  LoadTimelines(project);
  LoadRepositories(project);
  project.bOpen = 1;
  return true;
}

bool CProjectReader::ReadHead(FILE* stream, CProject& project) {
  int32_t size = 0;
  if (std::fread(&size, sizeof(size), 1, stream) != 1) {
    Add(m_ProjectPath, "too short to hold a project record");
    return false;
  }
  if (size < 1 || size > kProjectRecordSize) {
    Add(m_ProjectPath, "record size " + std::to_string(size) + ", this program's is " +
                           std::to_string(kProjectRecordSize));
    return false;
  }
  if (FileSize(stream) < size) {
    Add(m_ProjectPath, "record size " + std::to_string(size) + " runs past the end of the file (" +
                           std::to_string(FileSize(stream)) + " bytes)");
    return false;
  }
  if (projectfiles::ReadHead(project.projectData, stream) != 0) {
    Add(m_ProjectPath, "not a project file: the mark \".qzpj\" is missing");
    return false;
  }
  // The tree is where the file is now, whatever root it was saved under.
  const fs::path file = fs::absolute(fs::path(m_ProjectPath)).lexically_normal();
  const fs::path folder = file.parent_path();
  std::string root = folder.parent_path().string();
  if (root.empty() || root.back() != '/') root += '/';
  std::memset(project.projectData.szRootPath, 0, sizeof(project.projectData.szRootPath));
  std::memcpy(project.projectData.szRootPath, root.data(),
              std::min(root.size(), sizeof(project.projectData.szRootPath) - 1));
  const std::string name =
      FieldString(project.projectData.szProjectName, sizeof(project.projectData.szProjectName));
  if (name != folder.filename().string()) {
    Add(m_ProjectPath, "project name \"" + name + "\" differs from its folder \"" +
                           folder.filename().string() + "\"");
  }
  return true;
}

void CProjectReader::ReadEntries(FILE* stream, CProject& project) {
  CProjectData& data = project.projectData;
  m_DeclaredTimelines = data.iTimelineCount;
  m_DeclaredRepositories = data.iRepositoryCount;
  // The entries follow the record, whose first field is its own size.
  std::fseek(stream, data.iSize, SEEK_SET);
  CProjectFileList timelines;
  CProjectFileList repositories;
  timelines.Load(stream, m_DeclaredTimelines < 0 ? 0 : m_DeclaredTimelines);
  repositories.Load(stream, m_DeclaredRepositories < 0 ? 0 : m_DeclaredRepositories);
  if (timelines.GetCount() != m_DeclaredTimelines) {
    Add(m_ProjectPath, Describe(m_DeclaredTimelines, timelines.GetCount(), "timeline entries"));
  }
  if (repositories.GetCount() != m_DeclaredRepositories) {
    Add(m_ProjectPath,
        Describe(m_DeclaredRepositories, repositories.GetCount(), "repository entries"));
  }
  data.iTimelineCount = timelines.GetCount();
  data.iRepositoryCount = repositories.GetCount();
  auto add = [this](const std::string& text) { Add(m_ProjectPath, text); };
  auto toFiles = [&project, &add](CProjectFileList& names, const char* kind,
                                  int32_t (CProject::*folder)(char*), const char* extension,
                                  std::vector<NamedFile>& out) {
    char dir[kPathBufferSize] = {};
    (project.*folder)(dir);
    for (CProjectFileData* entry : names.m_aItems) {
      if (entry == nullptr) continue;
      NamedFile file;
      file.name = FieldString(entry->szName, sizeof(entry->szName));
      if (file.name.empty()) {
        // A failed entry read leaves an empty name: no file to look for.
        add(kind + std::string(" entry ") + std::to_string(out.size() + 1) + " has no name");
        out.push_back(file);
        continue;
      }
      file.path = std::string(dir) + file.name + extension;  // dir ends with a separator
      out.push_back(file);
    }
  };
  toFiles(timelines, "timeline", &CProject::GetTimelineDir, projectnames::kTimelineExtension,
          m_Timelines);
  toFiles(repositories, "repository", &CProject::GetRepositoryDir,
          projectnames::kRepositoryExtension, m_Repositories);
}

void CProjectReader::ReadVideoMode(FILE* stream, CProject& project) {
  project.videoMode = CDeviceMode();
  const long at = std::ftell(stream);
  if (at >= FileSize(stream)) return;  // no tail: the default mode stands
  if (project.videoMode.Load(stream) != 0) {
    project.videoMode = CDeviceMode();
    Add(m_ProjectPath, "the video mode behind the entries does not load");
    return;
  }
  m_HasVideoMode = true;
}

void CProjectReader::LoadTimelines(CProject& project) {
  auto add = [this](const std::string& file, const std::string& text) { Add(file, text); };
  LoadNamed<CTimeline, CTimelineData>(
      m_Timelines, *project.pTimelineList, "timeline", kTimelineRecordSize,
      [this](const CTimelineData& raw, CTimeline& loaded, const std::string& file) {
        if (raw.iTrackCount != loaded.tracks.GetCount()) {
          Add(file, Describe(raw.iTrackCount, loaded.tracks.GetCount(), "tracks"));
        }
        if (raw.iMarkerCount != loaded.markers.GetCount()) {
          Add(file, Describe(raw.iMarkerCount, loaded.markers.GetCount(), "markers"));
        }
      },
      add);
}

void CProjectReader::LoadRepositories(CProject& project) {
  auto add = [this](const std::string& file, const std::string& text) { Add(file, text); };
  LoadNamed<CRepository, CRepositoryData>(
      m_Repositories, *project.pRepositoryList, "repository", kRepositoryRecordSize,
      [this](const CRepositoryData& raw, CRepository& loaded, const std::string& file) {
        if (raw.iComponentCount != loaded.components.GetCount()) {
          Add(file, Describe(raw.iComponentCount, loaded.components.GetCount(), "components"));
        }
      },
      add);
}

}  // namespace projecttool
