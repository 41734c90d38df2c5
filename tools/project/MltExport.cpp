// export-mlt: a timeline as MLT XML. Every time is in frames of the
// project's video mode: one producer per media file, one playlist per track
// with blanks for the gaps, a tractor over the playlists, and the level
// curve of each audio component as keyframes of a volume filter on its entry.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <numeric>
#include <sstream>
#include <system_error>

#include "project/Timeline.h"
#include "project/TimelineList.h"
#include "project/Track.h"
#include "timeline/ComponentKind.h"
#include "tools/project/ProjectTool.h"

namespace projecttool {

namespace {

namespace fs = std::filesystem;

constexpr int64_t kFrameTimeUnitsPerSecond = 10000000;
// The audio level a component starts with: played as recorded.
constexpr double kUnityLevel = 80.0;
// What the volume filter is given for a level of 0: silence for any ear.
constexpr double kSilenceDb = -70.0;
constexpr const char* kColourPrefixes[] = {"colour:", "color:"};

std::string Escape(const std::string& text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&apos;";
        break;
      default:
        // Control characters have no place in XML 1.0 text.
        if (static_cast<unsigned char>(c) >= 0x20 || c == '\t') out += c;
    }
  }
  return out;
}

// The frame rate of the video mode as a fraction of whole numbers.
struct Rate {
  int64_t num = 25;
  int64_t den = 1;
  double Value() const { return static_cast<double>(num) / static_cast<double>(den); }
};

Rate RateOf(const CProject& project) {
  const double rate = FrameRateOf(project);
  Rate out;
  const int32_t frameTime = project.videoMode.iFrameTime;
  if (frameTime > 0 &&
      std::abs(kFrameTimeUnitsPerSecond / static_cast<double>(frameTime) - rate) < 1e-9) {
    const int64_t divisor = std::gcd(kFrameTimeUnitsPerSecond, static_cast<int64_t>(frameTime));
    out.num = kFrameTimeUnitsPerSecond / divisor;
    out.den = frameTime / divisor;
  }
  return out;
}

int64_t ToFrames(double ms, const Rate& rate) {
  if (!std::isfinite(ms)) return 0;
  const double frames = std::llround(ms * rate.Value() / 1000.0);
  return static_cast<int64_t>(std::clamp(frames, -1e15, 1e15));
}

std::string Profile(const CProject& project, const Rate& rate) {
  const CDeviceMode& mode = project.videoMode;
  const int64_t width = mode.iWidth > 0 && mode.iWidth <= 16384 ? mode.iWidth : 720;
  const int64_t height = mode.iHeight > 0 && mode.iHeight <= 16384 ? mode.iHeight : 576;
  int64_t displayNum = width;
  int64_t displayDen = height;
  if (mode.iAspectX > 0 && mode.iAspectY > 0 && mode.iAspectX <= 1000 && mode.iAspectY <= 1000) {
    displayNum = mode.iAspectX;
    displayDen = mode.iAspectY;
  }
  int64_t sampleNum = displayNum * height;
  int64_t sampleDen = displayDen * width;
  const int64_t sampleGcd = std::gcd(sampleNum, sampleDen);
  sampleNum /= sampleGcd;
  sampleDen /= sampleGcd;
  std::ostringstream out;
  out << "  <profile description=\"" << Escape(FieldString(mode.szDisplay, sizeof(mode.szDisplay)))
      << "\" width=\"" << width << "\" height=\"" << height << "\" progressive=\""
      << (mode.iFieldCode == kFieldProgressive ? 1 : 0) << "\" sample_aspect_num=\"" << sampleNum
      << "\" sample_aspect_den=\"" << sampleDen << "\" display_aspect_num=\"" << displayNum
      << "\" display_aspect_den=\"" << displayDen << "\" frame_rate_num=\"" << rate.num
      << "\" frame_rate_den=\"" << rate.den << "\" colorspace=\"" << (height > 576 ? 709 : 601)
      << "\"/>\n";
  return out.str();
}

// One entry of a playlist, in frames.
struct Entry {
  int64_t start = 0;  // on the timeline
  int64_t in = 0;     // in the media
  int64_t length = 0;
  std::string producer;
  std::string levels;  // keyframes of the volume filter, or empty
};

// The producers, one per media path, in the order met.
class CProducers {
 public:
  std::string IdFor(const std::string& path, int64_t lastFrame) {
    auto found = m_Ids.find(path);
    if (found == m_Ids.end()) {
      found = m_Ids.emplace(path, "producer" + std::to_string(m_Order.size())).first;
      m_Order.push_back(path);
    }
    int64_t& last = m_LastFrame[path];
    last = std::max(last, lastFrame);
    return found->second;
  }

  void Write(std::ostream& out) const {
    for (const std::string& path : m_Order) {
      out << "  <producer id=\"" << m_Ids.at(path) << "\" in=\"0\" out=\"" << m_LastFrame.at(path)
          << "\">\n";
      std::string resource = path;
      for (const char* prefix : kColourPrefixes) {
        if (path.rfind(prefix, 0) == 0) {
          resource = path.substr(std::string(prefix).size());
          out << "    <property name=\"mlt_service\">colour</property>\n";
        }
      }
      out << "    <property name=\"length\">" << m_LastFrame.at(path) + 1 << "</property>\n"
          << "    <property name=\"resource\">" << Escape(resource) << "</property>\n"
          << "  </producer>\n";
    }
  }

 private:
  std::map<std::string, std::string> m_Ids;
  std::map<std::string, int64_t> m_LastFrame;
  std::vector<std::string> m_Order;
};

double LevelDb(float value) {
  if (!(value > 0.0f)) return kSilenceDb;
  return std::max(kSilenceDb, 20.0 * std::log10(value / kUnityLevel));
}

// "frame=dB;..." over the entry's own frames, 0 to length - 1.
std::string LevelKeyframes(CComponent& component, const Entry& entry, const Rate& rate) {
  if (component.iKind != componentkind::kKindAudio || component.m_Levels.GetCount() == 0) return "";
  std::map<int64_t, double> keys;
  const int64_t last = entry.length - 1;
  for (CLevelPoint* point : component.m_Levels.m_aItems) {
    if (point == nullptr) continue;
    int64_t frame = ToFrames(static_cast<double>(point->iTime), rate) - entry.start;
    if (point->cRole == kRoleStart) frame = 0;
    if (point->cRole == kRoleEnd) frame = last;
    keys[std::clamp<int64_t>(frame, 0, last)] = LevelDb(point->fValue);
  }
  std::ostringstream out;
  out.setf(std::ios::fixed);
  out.precision(2);
  for (const auto& [frame, db] : keys) {
    if (out.tellp() > 0) out << ";";
    out << frame << "=" << db;
  }
  return out.str();
}

std::vector<Entry> TrackEntries(CTrack& track, const Rate& rate, CProducers& producers, int* cut) {
  std::vector<Entry> entries;
  std::vector<CComponent*> components;
  for (CComponent* component : track.components.m_aItems) {
    if (component != nullptr) components.push_back(component);
  }
  std::stable_sort(components.begin(), components.end(),
                   [](const CComponent* a, const CComponent* b) { return a->dStart < b->dStart; });
  int64_t cursor = 0;
  for (CComponent* component : components) {
    Entry entry;
    entry.start = std::max<int64_t>(0, ToFrames(component->dStart, rate));
    const int64_t end = ToFrames(component->dEnd, rate);
    entry.in = std::max<int64_t>(0, ToFrames(component->dSourceIn, rate));
    // A playlist plays one thing at a time: an overlap is cut off the later
    // entry's head.
    if (entry.start < cursor) {
      entry.in += cursor - entry.start;
      entry.start = cursor;
      ++*cut;
    }
    entry.length = end - entry.start;
    if (entry.length <= 0) continue;
    entry.producer = producers.IdFor(FieldString(component->szPath, sizeof(component->szPath)),
                                     entry.in + entry.length - 1);
    entry.levels = LevelKeyframes(*component, entry, rate);
    entries.push_back(entry);
    cursor = entry.start + entry.length;
  }
  return entries;
}

void WritePlaylist(std::ostream& out, size_t index, const std::vector<Entry>& entries) {
  out << "  <playlist id=\"playlist" << index << "\">\n";
  int64_t cursor = 0;
  for (const Entry& entry : entries) {
    if (entry.start > cursor) out << "    <blank length=\"" << entry.start - cursor << "\"/>\n";
    out << "    <entry producer=\"" << entry.producer << "\" in=\"" << entry.in << "\" out=\""
        << entry.in + entry.length - 1 << "\"";
    if (entry.levels.empty()) {
      out << "/>\n";
    } else {
      out << ">\n      <filter>\n"
          << "        <property name=\"mlt_service\">volume</property>\n"
          << "        <property name=\"level\">" << entry.levels << "</property>\n"
          << "      </filter>\n    </entry>\n";
    }
    cursor = entry.start + entry.length;
  }
  out << "  </playlist>\n";
}

std::string TimelineXml(CProject& project, CTimeline& timeline, int* cut) {
  const Rate rate = RateOf(project);
  CProducers producers;
  std::vector<std::vector<Entry>> playlists;
  int64_t length = 0;
  for (CTrack* track : timeline.tracks.m_aItems) {
    if (track == nullptr) continue;
    playlists.push_back(TrackEntries(*track, rate, producers, cut));
    if (!playlists.back().empty()) {
      const Entry& last = playlists.back().back();
      length = std::max(length, last.start + last.length);
    }
  }
  std::ostringstream out;
  out << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
      << "<mlt LC_NUMERIC=\"C\" version=\"7.0.0\" title=\""
      << Escape(FieldString(timeline.szName, sizeof(timeline.szName)))
      << "\" producer=\"tractor0\">\n"
      << Profile(project, rate);
  producers.Write(out);
  for (size_t i = 0; i < playlists.size(); ++i) WritePlaylist(out, i, playlists[i]);
  out << "  <tractor id=\"tractor0\"";
  if (length > 0) out << " in=\"0\" out=\"" << length - 1 << "\"";
  out << ">\n    <multitrack>\n";
  for (size_t i = 0; i < playlists.size(); ++i) {
    out << "      <track producer=\"playlist" << i << "\"/>\n";
  }
  out << "    </multitrack>\n  </tractor>\n</mlt>\n";
  return out.str();
}

// Writes text to path through a file beside it, so that a failed write
// leaves no half file behind.
bool WriteWhole(const std::string& path, const std::string& text, std::string* error) {
  const std::string staging = path + ".part";
  {
    std::ofstream out(staging, std::ios::binary | std::ios::trunc);
    if (!out) {
      *error = "cannot be written";
      return false;
    }
    out << text;
    out.flush();
    if (!out) {
      *error = "could not be written completely";
      std::remove(staging.c_str());
      return false;
    }
  }
  std::error_code code;
  fs::rename(staging, path, code);
  if (code) {
    *error = "cannot be written: " + code.message();
    std::remove(staging.c_str());
    return false;
  }
  return true;
}

}  // namespace

int RunExportMlt(const std::vector<std::string>& args) {
  const Command& command = CommandNamed("export-mlt");
  CommandLine line;
  int code = kExitOk;
  if (!ParseFor(command, args, {"--timeline", "-o"}, {}, 1, 1, &line, &code)) return code;
  if (line.values.count("-o") == 0) return UsageError(command, "-o OUT.mlt is required");
  const std::string& path = line.positional[0];
  CProject project;
  CProjectReader reader;
  if (!ReadProjectOrReport(path, project, reader)) return kExitFindings;
  const auto named = line.values.find("--timeline");
  CTimeline* timeline = named != line.values.end() ? TimelineOrReport(project, path, named->second)
                                                   : project.pTimelineList->GetAt(0);
  if (timeline == nullptr) {
    if (named == line.values.end()) {
      std::cerr << kProgramName << ": " << path << ": the project has no timeline\n";
    }
    return kExitFindings;
  }
  int cut = 0;
  const std::string xml = TimelineXml(project, *timeline, &cut);
  const std::string& out = line.values.at("-o");
  std::string error;
  if (!WriteWhole(out, xml, &error)) {
    std::cerr << kProgramName << ": " << out << ": " << error << "\n";
    return kExitFindings;
  }
  if (cut > 0) {
    std::cerr << kProgramName << ": " << cut
              << " overlapping components were cut to fit one playlist per track\n";
  }
  return FinishWithFindings(reader);
}

}  // namespace projecttool
