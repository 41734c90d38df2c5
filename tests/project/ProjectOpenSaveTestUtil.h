#pragma once
// Helpers of the open, save, backup and version tests: a scratch tree with
// its own application directory, projects filled in one call, and
// comparisons of whole projects by the bytes each part saves.

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "files/AppDirectories.h"
#include "project/Project.h"
#include "project/ProjectFileList.h"
#include "project/RepositoryList.h"
#include "project/TimelineList.h"
#include "tests/project/ProjectObjectTestUtil.h"
#include "tests/support/TempFiles.h"

namespace opensavetest {

namespace fs = std::filesystem;

// The bytes an object's Save(FILE*) writes.
template <class T>
std::vector<uint8_t> SavedBytes(T& object) {
  FILE* stream = std::tmpfile();
  object.Save(stream);
  std::vector<uint8_t> bytes(static_cast<size_t>(std::ftell(stream)));
  std::rewind(stream);
  const size_t read = std::fread(bytes.data(), 1, bytes.size(), stream);
  bytes.resize(read);
  std::fclose(stream);
  return bytes;
}

inline CRepository* MakeRepository(const char* name, int32_t kind, int32_t components) {
  auto* repository = new CRepository;
  std::strncpy(repository->szName, name, sizeof(repository->szName) - 1);
  repository->iRepositoryKind = kind;
  for (int32_t k = 0; k < components; ++k) {
    repository->components.Add(projecttest::MakeComponent(k * 10.0, k * 10.0 + 5.0, "media.wav"));
  }
  return repository;
}

// Every part of two projects the same: head record, timelines and
// repositories by their saved bytes, video mode.
inline void ExpectSameProject(CProject& a, CProject& b) {
  EXPECT_EQ(std::memcmp(&a.projectData, &b.projectData, sizeof(CProjectData)), 0);
  ASSERT_EQ(a.pTimelineList->GetCount(), b.pTimelineList->GetCount());
  for (int32_t i = 0; i < a.pTimelineList->GetCount(); ++i) {
    EXPECT_EQ(SavedBytes(*a.pTimelineList->GetAt(i)), SavedBytes(*b.pTimelineList->GetAt(i)))
        << "timeline " << i;
  }
  ASSERT_EQ(a.pRepositoryList->GetCount(), b.pRepositoryList->GetCount());
  for (int32_t i = 0; i < a.pRepositoryList->GetCount(); ++i) {
    EXPECT_EQ(SavedBytes(*a.pRepositoryList->GetAt(i)), SavedBytes(*b.pRepositoryList->GetAt(i)))
        << "repository " << i;
  }
  EXPECT_EQ(SavedBytes(a.videoMode), SavedBytes(b.videoMode));
}

// A scratch tree: app/ is the application directory, root/ the root of the
// projects; the current directory is the scratch folder itself, and comes
// back at the end.
class OpenSaveTest : public ::testing::Test {
 protected:
  void SetUp() override {
    m_Saved = fs::current_path();
    m_Base = fs::canonical(m_Temp.Root()).string() + "/";
    fs::create_directories(App());
    fs::create_directories(Root());
    InitAppDirectoriesFrom((App() + "/program").c_str(), 0);
    fs::current_path(m_Base);
  }
  void TearDown() override { fs::current_path(m_Saved); }

  std::string App() const { return m_Base + "app"; }
  std::string Root() const { return m_Base + "root/"; }
  std::string ProjectFile(const char* name = "Show") const {
    return Root() + name + "/" + name + ".qzpj";
  }
  std::string TimelineFile(const char* timeline, const char* name = "Show",
                           const char* extension = ".Qzt") const {
    return Root() + name + "/Database/Timeline/" + timeline + extension;
  }
  std::string RepositoryFile(const char* repository, const char* name = "Show",
                             const char* extension = ".Qzr") const {
    return Root() + name + "/Database/Repository/" + repository + extension;
  }

  // A project under Root() with `timelines` timelines (tracks x components)
  // and two repositories, a video mode of its own and some opaque fields.
  void Fill(CProject& project, const char* name = "Show", int32_t timelines = 3,
            int32_t tracks = 2, int32_t components = 4) {
    projecttest::PlaceProject(project, Root(), name);
    project.projectData.iSize = kProjectRecordSize;
    std::memcpy(project.projectData.szMagic, kProjectMagic, sizeof(project.projectData.szMagic));
    project.projectData.iOpaqueA = 11;
    project.projectData.iOpaqueF = 1;
    project.projectData.aOpaqueBlock[3][2] = 99;
    for (int32_t t = 0; t < timelines; ++t) {
      const std::string timelineName = "Timeline" + std::to_string(t + 1);
      CTimeline* timeline = projecttest::MakeTimeline(timelineName.c_str(), tracks, components);
      timeline->dLengthMs = 60000.0 + t;
      timeline->markers.Add(new CMarkerPoint(1000 + t, t));
      project.AddTimeline(timeline);
    }
    project.AddRepository(MakeRepository("Repository1", 1, 3));
    project.AddRepository(MakeRepository("Effects2", 2, 1));
    project.videoMode.iWidth = 1920;
    project.videoMode.iHeight = 1080;
  }

  bool SaveTo(CProject& project, const std::string& path) {
    std::vector<char> buffer(path.begin(), path.end());
    buffer.push_back('\0');
    return project.Save(buffer.data()) == 0;
  }

  testsupport::TempDir m_Temp;
  fs::path m_Saved;
  std::string m_Base;
};

}  // namespace opensavetest
