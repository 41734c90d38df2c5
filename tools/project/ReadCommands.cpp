// info and check: the two subcommands that only read.

#include <algorithm>
#include <iostream>
#include <map>
#include <sstream>

#include "project/Repository.h"
#include "project/RepositoryList.h"
#include "project/Timeline.h"
#include "project/TimelineList.h"
#include "project/Track.h"
#include "tools/project/ProjectScan.h"
#include "tools/project/ProjectTool.h"

namespace projecttool {

namespace {

const char* TrackKindName(uint32_t kind) {
  static const char* const names[] = {"any", "video", "audio", "effect", "dmx", "kind 5", "kind 6"};
  return kind < std::size(names) ? names[kind] : "unknown kind";
}

const char* RepositoryKindName(int32_t kind) {
  static const char* const names[] = {"any", "media", "effects", "dmx presets"};
  return kind >= 0 && kind < static_cast<int32_t>(std::size(names)) ? names[kind] : "unknown kind";
}

std::string ModeName(const CDeviceMode& mode) {
  const std::string name = FieldString(mode.szDisplay, sizeof(mode.szDisplay));
  return name.empty() ? "(no name)" : name;
}

int32_t ComponentCount(CTimeline& timeline) {
  int32_t count = 0;
  for (CTrack* track : timeline.tracks.m_aItems) {
    if (track != nullptr) count += track->components.GetCount();
  }
  return count;
}

// The end of the last component, in ms.
double TimelineEnd(CTimeline& timeline) {
  double end = 0.0;
  for (CTrack* track : timeline.tracks.m_aItems) {
    if (track == nullptr) continue;
    for (CComponent* component : track->components.m_aItems) {
      if (component != nullptr) end = std::max(end, double{component->dEnd});
    }
  }
  return end;
}

void PrintInfo(CProject& project, const CProjectReader& reader) {
  const double rate = FrameRateOf(project);
  const CProjectData& data = project.projectData;
  const CDeviceMode& mode = project.videoMode;
  std::cout << "Project:      " << FieldString(data.szProjectName, sizeof(data.szProjectName))
            << "\n"
            << "File:         " << reader.ProjectPath() << "\n"
            << "Root:         " << FieldString(data.szRootPath, sizeof(data.szRootPath)) << "\n"
            << "Video mode:   " << ModeName(mode) << " (" << mode.iWidth << "x" << mode.iHeight
            << ", " << rate << " frames/s"
            << (reader.HasVideoMode() ? "" : ", default: none stored") << ")\n";
  std::cout << "Timelines:    " << project.pTimelineList->GetCount() << "\n";
  for (CTimeline* timeline : project.pTimelineList->m_aItems) {
    if (timeline == nullptr) continue;
    std::cout << "  " << FieldString(timeline->szName, sizeof(timeline->szName)) << ": "
              << timeline->tracks.GetCount() << " tracks, " << ComponentCount(*timeline)
              << " components, length " << TimeCodeText(TimelineEnd(*timeline), rate) << "\n";
    int32_t index = 0;
    for (CTrack* track : timeline->tracks.m_aItems) {
      if (track == nullptr) continue;
      std::cout << "    track " << ++index << ": " << TrackKindName(track->iTrackKind) << ", "
                << track->components.GetCount() << " components\n";
    }
  }
  std::cout << "Repositories: " << project.pRepositoryList->GetCount() << "\n";
  for (CRepository* repository : project.pRepositoryList->m_aItems) {
    if (repository == nullptr) continue;
    std::cout << "  " << FieldString(repository->szName, sizeof(repository->szName)) << ": "
              << RepositoryKindName(repository->iRepositoryKind) << ", "
              << repository->components.GetCount() << " components\n";
  }
  const std::vector<VersionFolder> versions = ListVersions(project);
  std::cout << "Versions:     " << versions.size() << "\n";
  for (const VersionFolder& version : versions) std::cout << "  " << version.name << "\n";
  const std::vector<std::string> backups = ListBackups(project);
  std::cout << "Backups:      " << backups.size() << "\n";
  for (const std::string& backup : backups) std::cout << "  " << backup << "\n";
}

// Ids seen so far, and where.
class CIdCheck {
 public:
  void See(int64_t id, const std::string& where, const std::string& file,
           std::vector<Finding>& findings) {
    auto [at, fresh] = m_Seen.emplace(id, where);
    if (!fresh) {
      findings.push_back(
          {file, "id " + std::to_string(id) + " of " + where + " is also the id of " + at->second});
    }
  }

 private:
  std::map<int64_t, std::string> m_Seen;
};

void CheckComponent(CTrack& track, CComponent& component, const std::string& where,
                    const std::string& file, std::vector<Finding>& findings) {
  std::ostringstream problem;
  if (!(component.dStart >= 0.0))
    problem << "starts before 0 (" << component.dStart << " ms)";
  else if (!(component.dEnd >= component.dStart)) {
    problem << "ends (" << component.dEnd << " ms) before it starts (" << component.dStart
            << " ms)";
  } else if (!track.AcceptsKind(component.iKind)) {
    problem << "is of kind " << component.iKind << ", which a " << TrackKindName(track.iTrackKind)
            << " track does not take";
  }
  if (!problem.str().empty()) findings.push_back({file, where + " " + problem.str()});
}

void CheckTimelines(const CProjectReader& reader, CProject& project,
                    std::vector<Finding>& findings) {
  CIdCheck timelineIds;
  CIdCheck trackIds;
  CIdCheck componentIds;
  size_t fileIndex = 0;
  for (CTimeline* timeline : project.pTimelineList->m_aItems) {
    if (timeline == nullptr) continue;
    // Loaded timelines keep the order of their entries.
    while (fileIndex < reader.Timelines().size() && !reader.Timelines()[fileIndex].loaded)
      ++fileIndex;
    const std::string file =
        fileIndex < reader.Timelines().size() ? reader.Timelines()[fileIndex++].path : "";
    const std::string name = FieldString(timeline->szName, sizeof(timeline->szName));
    timelineIds.See(timeline->iId, "timeline \"" + name + "\"", file, findings);
    int32_t trackNumber = 0;
    for (CTrack* track : timeline->tracks.m_aItems) {
      if (track == nullptr) continue;
      const std::string trackWhere =
          "track " + std::to_string(++trackNumber) + " of \"" + name + "\"";
      trackIds.See(track->iId, trackWhere, file, findings);
      int32_t componentNumber = 0;
      for (CComponent* component : track->components.m_aItems) {
        if (component == nullptr) continue;
        const std::string where =
            "component " + std::to_string(++componentNumber) + " of " + trackWhere;
        componentIds.See(component->iUniqueId, where, file, findings);
        CheckComponent(*track, *component, where, file, findings);
      }
    }
  }
}

void CheckRepositories(const CProjectReader& reader, CProject& project,
                       std::vector<Finding>& findings) {
  CIdCheck repositoryIds;
  size_t fileIndex = 0;
  for (CRepository* repository : project.pRepositoryList->m_aItems) {
    if (repository == nullptr) continue;
    while (fileIndex < reader.Repositories().size() && !reader.Repositories()[fileIndex].loaded) {
      ++fileIndex;
    }
    const std::string file =
        fileIndex < reader.Repositories().size() ? reader.Repositories()[fileIndex++].path : "";
    const std::string name = FieldString(repository->szName, sizeof(repository->szName));
    repositoryIds.See(repository->iId, "repository \"" + name + "\"", file, findings);
    CIdCheck componentIds;
    int32_t number = 0;
    for (CComponent* component : repository->components.m_aItems) {
      if (component == nullptr) continue;
      componentIds.See(component->iUniqueId,
                       "component " + std::to_string(++number) + " of \"" + name + "\"", file,
                       findings);
    }
  }
}

}  // namespace

int RunInfo(const std::vector<std::string>& args) {
  CommandLine line;
  int code = kExitOk;
  if (!ParseFor(CommandNamed("info"), args, {}, {}, 1, 1, &line, &code)) return code;
  CProject project;
  CProjectReader reader;
  if (!ReadProjectOrReport(line.positional[0], project, reader)) return kExitFindings;
  PrintInfo(project, reader);
  return FinishWithFindings(reader);
}

int RunCheck(const std::vector<std::string>& args) {
  CommandLine line;
  int code = kExitOk;
  if (!ParseFor(CommandNamed("check"), args, {}, {}, 1, 1, &line, &code)) return code;
  CProject project;
  CProjectReader reader;
  const bool readable = reader.Read(line.positional[0], project);
  std::vector<Finding> findings = reader.Findings();
  if (readable) {
    CheckTimelines(reader, project, findings);
    CheckRepositories(reader, project, findings);
  }
  if (findings.empty()) {
    std::cout << line.positional[0] << ": no findings\n";
    return kExitOk;
  }
  PrintFindings(findings, std::cout);
  return kExitFindings;
}

}  // namespace projecttool
