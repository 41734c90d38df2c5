#pragma once
// Helpers of the project tool's tests: the tool run as a child process with
// its output captured, projects made by the library with known content, and
// snapshots of a folder tree to show that a command wrote nothing.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "files/AppDirectories.h"
#include "files/PathParts.h"
#include "project/Project.h"
#include "project/Repository.h"
#include "project/RepositoryList.h"
#include "project/Timeline.h"
#include "project/TimelineList.h"
#include "project/Track.h"
#include "tests/support/TempFiles.h"
#include "timeline/ComponentKind.h"

namespace tooltest {

namespace fs = std::filesystem;

struct ToolRun {
  int exitCode = -1;
  std::string out;
  std::string err;
};

inline std::string ReadText(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

inline constexpr int kRunLimitSeconds = 60;
inline constexpr int kTimedOut = 124;

// Runs program with args (no shell), stdout and stderr into files of scratch.
inline ToolRun RunProgram(const std::string& program, const std::vector<std::string>& args,
                          const std::string& scratch,
                          const std::vector<std::string>& environment = {},
                          const std::string& workDir = "") {
  const std::string outPath = scratch + "/.stdout";
  const std::string errPath = scratch + "/.stderr";
  const pid_t child = ::fork();
  if (child == 0) {
    const int out = ::open(outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    const int err = ::open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    ::dup2(out, 1);
    ::dup2(err, 2);
    for (const std::string& setting : environment) ::putenv(const_cast<char*>(setting.c_str()));
    if (!workDir.empty() && ::chdir(workDir.c_str()) != 0) ::_exit(126);
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
    argv.push_back(nullptr);
    ::execvp(program.c_str(), argv.data());
    ::_exit(127);
  }
  ToolRun run;
  int status = 0;
  // A child that hangs is killed and reported as 124, as timeout(1) does.
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(kRunLimitSeconds);
  while (::waitpid(child, &status, WNOHANG) == 0) {
    if (std::chrono::steady_clock::now() > deadline) {
      ::kill(child, SIGKILL);
      ::waitpid(child, &status, 0);
      run.exitCode = kTimedOut;
      run.err = ReadText(errPath) + "\n(killed after " + std::to_string(kRunLimitSeconds) + " s)";
      fs::remove(outPath);
      fs::remove(errPath);
      return run;
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  // A crash shows as a signal: never an exit code the tool could give.
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  run.out = ReadText(outPath);
  run.err = ReadText(errPath);
  fs::remove(outPath);
  fs::remove(errPath);
  return run;
}

// Every regular file below root with its size and bytes' checksum, and
// every folder: what a command that only reads must leave as it was.
inline std::map<std::string, std::string> TreeSnapshot(const std::string& root) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(root)) {
    const std::string name = entry.path().string();
    if (entry.is_regular_file()) {
      const std::string bytes = ReadText(name);
      files[name] =
          std::to_string(bytes.size()) + ":" + std::to_string(std::hash<std::string>{}(bytes));
    } else {
      files[name] = "folder";
    }
  }
  return files;
}

// A WAV file of silence: 8 kHz, 16-bit mono, `seconds` long, which MLT reads
// as a media file with a known length.
inline void WriteSilentWav(const std::string& path, int seconds) {
  const uint32_t rate = 8000;
  const uint32_t dataSize = rate * 2 * static_cast<uint32_t>(seconds);
  std::ofstream out(path, std::ios::binary);
  auto put32 = [&out](uint32_t v) { out.write(reinterpret_cast<const char*>(&v), 4); };
  auto put16 = [&out](uint16_t v) { out.write(reinterpret_cast<const char*>(&v), 2); };
  out.write("RIFF", 4);
  put32(36 + dataSize);
  out.write("WAVEfmt ", 8);
  put32(16);
  put16(1);
  put16(1);
  put32(rate);
  put32(rate * 2);
  put16(2);
  put16(16);
  out.write("data", 4);
  put32(dataSize);
  const std::vector<char> zeros(dataSize, 0);
  out.write(zeros.data(), static_cast<std::streamsize>(zeros.size()));
}

inline CComponent* MakeComponent(int32_t kind, double start, double end, double sourceIn,
                                 const std::string& path) {
  auto* component = new CComponent;
  component->iKind = kind;
  component->dStart = start;
  component->dEnd = end;
  component->dSourceIn = sourceIn;
  component->dSourceLength = end - start;
  std::strncpy(component->szPath, path.c_str(), sizeof(component->szPath) - 1);
  return component;
}

inline CTrack* TrackOf(CProject& project, int32_t timeline, int32_t track) {
  return project.pTimelineList->GetAt(timeline)->tracks.GetAt(track);
}

// Makes the project name under root with the library from the template of
// the build's program folder, and saves it. Its first timeline holds, on
// track 1 (video), colour:red 0-2000 ms and colour:blue 3000-5000 ms (source
// in 1000 ms); on track 2 (audio), wavPath 1000-4000 ms with a level curve
// 80 -> 40 -> 80 and a marker. A second timeline "Second" stays empty, the
// repository holds two components.
inline std::string MakeSampleProject(const std::string& root, const std::string& name,
                                     const std::string& wavPath) {
  InitAppDirectoriesFrom((std::string(TACHYRUN_TOOL_APP_DIR) + "/program").c_str(), 0);
  CProject project;
  const std::string rootText = root + "/";
  project.Create(rootText.c_str(), name.c_str());
  project.EnsureDefaultContent();
  CTrack* video = TrackOf(project, 0, 0);
  video->components.Add(MakeComponent(componentkind::kKindPicture, 0.0, 2000.0, 0.0, "colour:red"));
  video->components.Add(
      MakeComponent(componentkind::kKindPicture, 3000.0, 5000.0, 1000.0, "colour:blue"));
  CComponent* audio = MakeComponent(componentkind::kKindAudio, 1000.0, 4000.0, 0.0, wavPath);
  audio->m_Levels.Add(new CLevelPoint(kRoleStart, 1000, 80.0f));
  audio->m_Levels.Add(new CLevelPoint(kRoleInner, 2000, 40.0f));
  audio->m_Levels.Add(new CLevelPoint(kRoleEnd, 4000, 80.0f));
  audio->m_Markers.Add(new CMarkerPoint(1500, 7));
  TrackOf(project, 0, 1)->components.Add(audio);
  auto* second = new CTimeline;
  std::strncpy(second->szName, "Second", sizeof(second->szName) - 1);
  second->AddTracks(2);
  project.AddTimeline(second);
  CRepository* repository = project.pRepositoryList->GetAt(0);
  repository->components.Add(
      MakeComponent(componentkind::kKindPicture, 0.0, 1000.0, 0.0, "colour:green"));
  repository->components.Add(MakeComponent(componentkind::kKindAudio, 0.0, 4000.0, 0.0, wavPath));
  project.MarkChanged(0);
  char path[kPathBufferSize] = {};
  project.GetProjectFilePath(path);
  EXPECT_EQ(project.Save(path), 0);
  return path;
}

class ToolTest : public ::testing::Test {
 protected:
  ToolRun Tool(const std::vector<std::string>& args, const std::string& workDir = "") {
    return RunProgram(TACHYRUN_PROJECT_TOOL, args, m_Temp.Root(), {}, workDir);
  }
  std::string Scratch(const std::string& name) const { return m_Temp.Path(name); }
  std::string Sample(const std::string& name = "Sample") {
    const std::string wav = Scratch("tone.wav");
    if (!fs::exists(wav)) WriteSilentWav(wav, 6);
    fs::create_directories(Scratch("root"));
    return MakeSampleProject(Scratch("root"), name, wav);
  }

  testsupport::TempDir m_Temp;
};

}  // namespace tooltest
