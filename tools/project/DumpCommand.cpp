// dump --json: every record of a project as JSON whose keys are the field
// names of the records. Reserved and carried-but-unused byte blocks are left
// out; everything with a meaning is in.

#include <iostream>
#include <nlohmann/json.hpp>

#include "project/Repository.h"
#include "project/RepositoryList.h"
#include "project/Timeline.h"
#include "project/TimelineList.h"
#include "project/Track.h"
#include "tools/project/ProjectTool.h"

namespace projecttool {

namespace {

using nlohmann::json;

// Fields of packed records may sit at any address: they are copied out
// before the JSON library binds a reference to them.
template <class T>
T Copy(T value) {
  return value;
}

// The key is the field's own name.
#define TACHYRUN_JSON_FIELD(out, record, field) (out)[#field] = Copy((record).field)
#define TACHYRUN_JSON_TEXT(out, record, field) \
  (out)[#field] = FieldString((record).field, sizeof((record).field))

// Text from a file may hold any bytes: what is not UTF-8 is replaced
// rather than refused, so a damaged name still dumps.
constexpr auto kTextErrors = json::error_handler_t::replace;

json LevelPoints(CLevelPointList& points) {
  json out = json::array();
  for (CLevelPoint* point : points.m_aItems) {
    if (point == nullptr) continue;
    json p;
    TACHYRUN_JSON_FIELD(p, *point, iTime);
    TACHYRUN_JSON_FIELD(p, *point, fValue);
    TACHYRUN_JSON_FIELD(p, *point, cRole);
    TACHYRUN_JSON_FIELD(p, *point, cFade);
    TACHYRUN_JSON_FIELD(p, *point, cFadeKeep);
    out.push_back(p);
  }
  return out;
}

json Markers(CMarkerPointList& markers) {
  json out = json::array();
  for (CMarkerPoint* marker : markers.m_aItems) {
    if (marker == nullptr) continue;
    json m;
    TACHYRUN_JSON_FIELD(m, *marker, iTime);
    TACHYRUN_JSON_FIELD(m, *marker, iMarkerId);
    out.push_back(m);
  }
  return out;
}

json Effects(CEffectList& effects) {
  json out = json::array();
  for (CEffect* effect : effects.m_aItems) {
    if (effect == nullptr) continue;
    json e;
    TACHYRUN_JSON_FIELD(e, *effect, iEffectKind);
    TACHYRUN_JSON_FIELD(e, *effect, iLength);
    TACHYRUN_JSON_FIELD(e, *effect, iKeyGroupCount);
    TACHYRUN_JSON_FIELD(e, *effect, iEffectParam);
    TACHYRUN_JSON_FIELD(e, *effect, cExtraFollows);
    json groups = json::array();
    for (CKeyGroup* group : effect->m_KeyGroups.m_aItems) {
      if (group == nullptr) continue;
      json g;
      TACHYRUN_JSON_TEXT(g, *group, szKeyName);
      TACHYRUN_JSON_FIELD(g, *group, fKeyParamA);
      TACHYRUN_JSON_FIELD(g, *group, fKeyParamB);
      TACHYRUN_JSON_FIELD(g, *group, iLevelCount);
      TACHYRUN_JSON_FIELD(g, *group, fKeyParamC);
      TACHYRUN_JSON_FIELD(g, *group, fStartValue);
      TACHYRUN_JSON_FIELD(g, *group, fEndValue);
      TACHYRUN_JSON_FIELD(g, *group, cKeyByteA);
      TACHYRUN_JSON_FIELD(g, *group, cKeyByteB);
      g["levels"] = LevelPoints(group->m_Levels);
      groups.push_back(g);
    }
    e["keyGroups"] = groups;
    out.push_back(e);
  }
  return out;
}

json Component(CComponent& component) {
  json c;
  TACHYRUN_JSON_FIELD(c, component, iRecordSize);
  TACHYRUN_JSON_FIELD(c, component, iUniqueId);
  TACHYRUN_JSON_FIELD(c, component, iKind);
  TACHYRUN_JSON_TEXT(c, component, szLabel);
  TACHYRUN_JSON_FIELD(c, component, cMediaMoved);
  TACHYRUN_JSON_FIELD(c, component, dSourceIn);
  TACHYRUN_JSON_FIELD(c, component, dSourceLength);
  TACHYRUN_JSON_FIELD(c, component, fSpeed);
  TACHYRUN_JSON_FIELD(c, component, dStart);
  TACHYRUN_JSON_FIELD(c, component, dEnd);
  TACHYRUN_JSON_FIELD(c, component, dSourceBase);
  TACHYRUN_JSON_FIELD(c, component, iLinkId);
  TACHYRUN_JSON_FIELD(c, component, iSortFieldB);
  TACHYRUN_JSON_FIELD(c, component, iSortFieldA);
  TACHYRUN_JSON_TEXT(c, component, szPath);
  TACHYRUN_JSON_FIELD(c, component, dTimeA);
  TACHYRUN_JSON_FIELD(c, component, iAudioStreams);
  TACHYRUN_JSON_FIELD(c, component, iVideoStreams);
  TACHYRUN_JSON_FIELD(c, component, iAudioIndex);
  TACHYRUN_JSON_FIELD(c, component, dTimeB);
  TACHYRUN_JSON_FIELD(c, component, dMediaLength);
  TACHYRUN_JSON_TEXT(c, component, szSortText);
  TACHYRUN_JSON_FIELD(c, component, iLevelCount);
  TACHYRUN_JSON_FIELD(c, component, fLevelMax);
  TACHYRUN_JSON_FIELD(c, component, cLevelBase);
  TACHYRUN_JSON_FIELD(c, component, fParamA);
  TACHYRUN_JSON_FIELD(c, component, fParamB);
  TACHYRUN_JSON_FIELD(c, component, iVideoIndex);
  TACHYRUN_JSON_FIELD(c, component, iChannelIndex);
  TACHYRUN_JSON_FIELD(c, component, iEffectCount);
  TACHYRUN_JSON_FIELD(c, component, cReverse);
  TACHYRUN_JSON_FIELD(c, component, iSerial);
  TACHYRUN_JSON_FIELD(c, component, iMarkerCount);
  TACHYRUN_JSON_FIELD(c, component, fParamC);
  TACHYRUN_JSON_FIELD(c, component, cTimesAreDouble);
  TACHYRUN_JSON_FIELD(c, component, cInUse);
  TACHYRUN_JSON_FIELD(c, component, cMoveState);
  c["levels"] = LevelPoints(component.m_Levels);
  c["markers"] = Markers(component.m_Markers);
  c["effects"] = Effects(component.m_Effects);
  return c;
}

json Components(CComponentList& components) {
  json out = json::array();
  for (CComponent* component : components.m_aItems) {
    if (component != nullptr) out.push_back(Component(*component));
  }
  return out;
}

json Track(CTrack& track) {
  json t;
  TACHYRUN_JSON_FIELD(t, track, iSize);
  TACHYRUN_JSON_FIELD(t, track, iId);
  TACHYRUN_JSON_FIELD(t, track, iTrackKind);
  TACHYRUN_JSON_FIELD(t, track, dStartMs);
  TACHYRUN_JSON_FIELD(t, track, dLengthMs);
  TACHYRUN_JSON_FIELD(t, track, fFactor);
  TACHYRUN_JSON_FIELD(t, track, iSizeY);
  TACHYRUN_JSON_FIELD(t, track, cState0);
  TACHYRUN_JSON_FIELD(t, track, cState1);
  TACHYRUN_JSON_FIELD(t, track, cState2);
  TACHYRUN_JSON_FIELD(t, track, cState3);
  TACHYRUN_JSON_FIELD(t, track, iComponentCount);
  TACHYRUN_JSON_FIELD(t, track, fViewA);
  TACHYRUN_JSON_FIELD(t, track, fViewB);
  TACHYRUN_JSON_FIELD(t, track, cViewA);
  TACHYRUN_JSON_FIELD(t, track, cViewB);
  TACHYRUN_JSON_FIELD(t, track, bTimesAreDouble);
  t["components"] = Components(track.components);
  return t;
}

json Timeline(CTimeline& timeline) {
  json t;
  TACHYRUN_JSON_FIELD(t, timeline, iSize);
  TACHYRUN_JSON_FIELD(t, timeline, iId);
  TACHYRUN_JSON_TEXT(t, timeline, szName);
  TACHYRUN_JSON_FIELD(t, timeline, dStartMs);
  TACHYRUN_JSON_FIELD(t, timeline, dLengthMs);
  TACHYRUN_JSON_FIELD(t, timeline, dRangeFromMs);
  TACHYRUN_JSON_FIELD(t, timeline, dRangeToMs);
  TACHYRUN_JSON_FIELD(t, timeline, iTimeZoom);
  TACHYRUN_JSON_FIELD(t, timeline, iValue50);
  TACHYRUN_JSON_FIELD(t, timeline, iTrackCount);
  TACHYRUN_JSON_FIELD(t, timeline, iValue30A);
  TACHYRUN_JSON_FIELD(t, timeline, iValue30B);
  TACHYRUN_JSON_FIELD(t, timeline, dCursorMs);
  TACHYRUN_JSON_FIELD(t, timeline, iMarkerCount);
  TACHYRUN_JSON_FIELD(t, timeline, bTimesAreDouble);
  json tracks = json::array();
  for (CTrack* track : timeline.tracks.m_aItems) {
    if (track != nullptr) tracks.push_back(Track(*track));
  }
  t["tracks"] = tracks;
  t["markers"] = Markers(timeline.markers);
  return t;
}

json Repository(CRepository& repository) {
  json r;
  TACHYRUN_JSON_FIELD(r, repository, iSize);
  TACHYRUN_JSON_FIELD(r, repository, iId);
  TACHYRUN_JSON_TEXT(r, repository, szName);
  TACHYRUN_JSON_FIELD(r, repository, iRepositoryKind);
  TACHYRUN_JSON_FIELD(r, repository, iComponentCount);
  r["components"] = Components(repository.components);
  return r;
}

json Head(const CProjectData& data) {
  json h;
  TACHYRUN_JSON_FIELD(h, data, iSize);
  TACHYRUN_JSON_TEXT(h, data, szMagic);
  TACHYRUN_JSON_FIELD(h, data, iOpaqueA);
  TACHYRUN_JSON_FIELD(h, data, iOpaqueB);
  TACHYRUN_JSON_TEXT(h, data, szProjectName);
  TACHYRUN_JSON_TEXT(h, data, szRootPath);
  TACHYRUN_JSON_FIELD(h, data, iTimelineCount);
  TACHYRUN_JSON_FIELD(h, data, iRepositoryCount);
  TACHYRUN_JSON_FIELD(h, data, iOpaqueC);
  TACHYRUN_JSON_FIELD(h, data, iOpaqueD);
  TACHYRUN_JSON_FIELD(h, data, iOpaqueE);
  TACHYRUN_JSON_FIELD(h, data, iOpaqueF);
  TACHYRUN_JSON_TEXT(h, data, szVersionName);
  json view;
  TACHYRUN_JSON_FIELD(view, data.viewData, fViewA);
  TACHYRUN_JSON_FIELD(view, data.viewData, fViewB);
  TACHYRUN_JSON_FIELD(view, data.viewData, cViewA);
  TACHYRUN_JSON_FIELD(view, data.viewData, fViewC);
  TACHYRUN_JSON_FIELD(view, data.viewData, fViewD);
  TACHYRUN_JSON_FIELD(view, data.viewData, cViewB);
  TACHYRUN_JSON_FIELD(view, data.viewData, cViewC);
  h["viewData"] = view;
  return h;
}

json VideoMode(const CDeviceMode& mode) {
  json m;
  TACHYRUN_JSON_FIELD(m, mode, dwId0);
  TACHYRUN_JSON_FIELD(m, mode, dwId1);
  TACHYRUN_JSON_TEXT(m, mode, szCode);
  TACHYRUN_JSON_TEXT(m, mode, szDisplay);
  TACHYRUN_JSON_TEXT(m, mode, szExtra);
  TACHYRUN_JSON_FIELD(m, mode, iWidth);
  TACHYRUN_JSON_FIELD(m, mode, iHeight);
  TACHYRUN_JSON_FIELD(m, mode, iFrameTime);
  TACHYRUN_JSON_FIELD(m, mode, iFrameTime2);
  TACHYRUN_JSON_FIELD(m, mode, iFieldCode);
  TACHYRUN_JSON_FIELD(m, mode, cEnabled);
  TACHYRUN_JSON_FIELD(m, mode, cTableFlag);
  TACHYRUN_JSON_FIELD(m, mode, iAspectX);
  TACHYRUN_JSON_FIELD(m, mode, iAspectY);
  TACHYRUN_JSON_FIELD(m, mode, iFrameTime3);
  TACHYRUN_JSON_FIELD(m, mode, iOutputA);
  TACHYRUN_JSON_FIELD(m, mode, iOutputB);
  TACHYRUN_JSON_FIELD(m, mode, cOutputA);
  TACHYRUN_JSON_FIELD(m, mode, cOutputB);
  return m;
}

#undef TACHYRUN_JSON_FIELD
#undef TACHYRUN_JSON_TEXT

// The name entries of the project file, as read (a failed read leaves an
// empty name).
json Entries(const std::vector<NamedFile>& files) {
  json out = json::array();
  for (const NamedFile& file : files) out.push_back({{"szName", file.name}});
  return out;
}

json Findings(const std::vector<Finding>& findings) {
  json out = json::array();
  for (const Finding& finding : findings)
    out.push_back({{"file", finding.file}, {"text", finding.text}});
  return out;
}

}  // namespace

int RunDump(const std::vector<std::string>& args) {
  const Command& command = CommandNamed("dump");
  CommandLine line;
  int code = kExitOk;
  if (!ParseFor(command, args, {"--timeline"}, {"--json"}, 1, 1, &line, &code)) return code;
  if (line.flags.count("--json") == 0) return UsageError(command, "--json is required");
  CProject project;
  CProjectReader reader;
  if (!ReadProjectOrReport(line.positional[0], project, reader)) return kExitFindings;
  json out;
  const auto only = line.values.find("--timeline");
  if (only != line.values.end()) {
    CTimeline* timeline = TimelineOrReport(project, line.positional[0], only->second);
    if (timeline == nullptr) return kExitFindings;
    out["timelines"] = json::array({Timeline(*timeline)});
  } else {
    out["project"] = Head(project.projectData);
    out["timelineEntries"] = Entries(reader.Timelines());
    out["repositoryEntries"] = Entries(reader.Repositories());
    out["videoMode"] = VideoMode(project.videoMode);
    json timelines = json::array();
    for (CTimeline* timeline : project.pTimelineList->m_aItems) {
      if (timeline != nullptr) timelines.push_back(Timeline(*timeline));
    }
    out["timelines"] = timelines;
    json repositories = json::array();
    for (CRepository* repository : project.pRepositoryList->m_aItems) {
      if (repository != nullptr) repositories.push_back(Repository(*repository));
    }
    out["repositories"] = repositories;
  }
  out["findings"] = Findings(reader.Findings());
  std::cout << out.dump(2, ' ', false, kTextErrors) << "\n";
  return reader.Findings().empty() ? kExitOk : kExitFindings;
}

}  // namespace projecttool
