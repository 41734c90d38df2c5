// check on damaged projects, and every command on files that are not
// projects at all: each finding named with its file, exit 1, no crash, and
// nothing written by a command that only reads.

#include <sys/stat.h>

#include <cstdint>

#include "project/ProjectData.h"
#include "project/TimelineData.h"
#include "tests/tools/ProjectToolTestUtil.h"

namespace tooltest {
namespace {

// Overwrites bytes of file at offset.
void Patch(const std::string& file, size_t offset, const void* bytes, size_t count) {
  std::vector<uint8_t> data = testsupport::ReadFile(file);
  ASSERT_LE(offset + count, data.size());
  std::memcpy(data.data() + offset, bytes, count);
  testsupport::WriteFile(file, data);
}

void PatchInt(const std::string& file, size_t offset, int32_t value) {
  Patch(file, offset, &value, sizeof(value));
}

class CheckTest : public ToolTest {
 protected:
  void SetUp() override { m_Path = Sample(); }
  std::string TimelineFile(const std::string& name) const {
    return Scratch("root/Sample/Database/Timeline/" + name + ".Qzt");
  }
  std::string RepositoryFile(const std::string& name) const {
    return Scratch("root/Sample/Database/Repository/" + name + ".Qzr");
  }
  // check must report exactly one finding line about file containing text.
  void ExpectFinding(const std::string& file, const std::string& text) {
    const ToolRun run = Tool({"check", m_Path});
    EXPECT_EQ(run.exitCode, 1) << run.out << run.err;
    EXPECT_NE(run.out.find(file + ": "), std::string::npos) << run.out;
    EXPECT_NE(run.out.find(text), std::string::npos) << run.out;
  }
  std::string m_Path;
};

TEST_F(CheckTest, AWrongMarkIsFound) {
  Patch(m_Path, offsetof(CProjectData, szMagic), "junk!", 5);
  ExpectFinding(m_Path, "the mark \".qzpj\" is missing");
}

TEST_F(CheckTest, AProjectRecordLongerThanOursIsFound) {
  PatchInt(m_Path, offsetof(CProjectData, iSize), kProjectRecordSize + 1);
  ExpectFinding(m_Path, "record size 1874, this program's is 1873");
}

TEST_F(CheckTest, ARecordSizePastTheFileEndIsFound) {
  std::vector<uint8_t> data = testsupport::ReadFile(m_Path);
  data.resize(600);
  testsupport::WriteFile(m_Path, data);
  ExpectFinding(m_Path, "runs past the end of the file");
}

TEST_F(CheckTest, CountsAgainstEntriesAreFound) {
  // The entry reads run into the video mode behind the one repository
  // entry, and what they fail to read stays empty.
  PatchInt(m_Path, offsetof(CProjectData, iRepositoryCount), 3);
  ExpectFinding(m_Path, "repository entry 2 has no name");
  ExpectFinding(m_Path, "the video mode behind the entries does not load");
}

TEST_F(CheckTest, AMissingTimelineFileIsFound) {
  fs::remove(TimelineFile("Second"));
  ExpectFinding(TimelineFile("Second"), "timeline \"Second\": does not exist");
}

TEST_F(CheckTest, AMissingRepositoryFileIsFound) {
  fs::remove(RepositoryFile("Repository1"));
  ExpectFinding(RepositoryFile("Repository1"), "does not exist");
}

TEST_F(CheckTest, ATruncatedTimelineFileIsFound) {
  std::vector<uint8_t> data = testsupport::ReadFile(TimelineFile("Second"));
  data.resize(100);
  testsupport::WriteFile(TimelineFile("Second"), data);
  ExpectFinding(TimelineFile("Second"), "too short for its record");
}

TEST_F(CheckTest, ATimelineRecordLongerThanOursIsFound) {
  PatchInt(TimelineFile("Second"), 0, kTimelineRecordSize + 100);
  ExpectFinding(TimelineFile("Second"), "record size 1128, this program's is 1028");
}

TEST_F(CheckTest, TrackCountsAgainstTheTracksHeldAreFound) {
  // The record follows the file's four-byte size prefix.
  PatchInt(TimelineFile("Timeline1"), 4 + offsetof(CTimelineData, iTrackCount), 9);
  ExpectFinding(TimelineFile("Timeline1"), "bytes short of the records its counts declare");
}

TEST_F(CheckTest, ATimelineThatNoLongerLoadsIsFound) {
  // Cut inside the first track: the record is whole, its lists are not.
  std::vector<uint8_t> data = testsupport::ReadFile(TimelineFile("Timeline1"));
  data.resize(4 + kTimelineRecordSize + 10);
  testsupport::WriteFile(TimelineFile("Timeline1"), data);
  const ToolRun run = Tool({"check", m_Path});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.out.find(TimelineFile("Timeline1") + ": "), std::string::npos) << run.out;
}

TEST_F(CheckTest, DuplicateIdsAndComponentsOutsideTheirTracksAreFound) {
  {
    CProject project;
    ASSERT_EQ(project.Open(m_Path.c_str(), 1), 0);
    CTrack* video = TrackOf(project, 0, 0);
    video->components.GetAt(1)->iUniqueId = video->components.GetAt(0)->iUniqueId;
    CComponent* audio = TrackOf(project, 0, 1)->components.GetAt(0);
    audio->dEnd = audio->dStart - 10.0;
    // An audio component on the video track.
    video->components.Add(MakeComponent(componentkind::kKindAudio, 6000.0, 7000.0, 0.0, "a.wav"));
    // A second timeline with the first one's id.
    project.pTimelineList->GetAt(1)->iId = project.pTimelineList->GetAt(0)->iId;
    project.MarkChanged(0);
    ASSERT_EQ(project.Save(m_Path.data()), 0);
  }
  const ToolRun run = Tool({"check", m_Path});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.out.find("component 2 of track 1 of \"Timeline1\" is also the id of component 1 "
                         "of track 1 of \"Timeline1\""),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("component 1 of track 2 of \"Timeline1\" ends (990 ms) before it "
                         "starts (1000 ms)"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("component 3 of track 1 of \"Timeline1\" is of kind 2, which a video "
                         "track does not take"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("timeline \"Second\" is also the id of timeline \"Timeline1\""),
            std::string::npos)
      << run.out;
}

TEST_F(CheckTest, ComponentsStartingBeforeZeroAreFound) {
  {
    CProject project;
    ASSERT_EQ(project.Open(m_Path.c_str(), 1), 0);
    TrackOf(project, 0, 0)->components.GetAt(0)->dStart = -40.0;
    project.MarkChanged(0);
    ASSERT_EQ(project.Save(m_Path.data()), 0);
  }
  ExpectFinding(TimelineFile("Timeline1"), "starts before 0 (-40 ms)");
}

// Files that are no projects, given to every command.
class HostileFileTest : public ToolTest {
 protected:
  void ExpectRefusedByEveryCommand(const std::string& file, const std::string& reason) {
    const auto before = TreeSnapshot(m_Temp.Root());
    const std::vector<std::vector<std::string>> commands = {
        {"info", file},
        {"dump", file, "--json"},
        {"check", file},
        {"versions", file},
        {"backup", file},
        {"version", file},
        {"version", file, "V"},
        {"restore", file, "Version1"},
        {"export-mlt", file, "-o", Scratch("out.mlt")}};
    for (const auto& args : commands) {
      const ToolRun run = Tool(args);
      EXPECT_EQ(run.exitCode, 1) << args[0] << " on " << file;
      const std::string named = args[0] == "check" ? run.out : run.err;
      EXPECT_NE(named.find(file + ": "), std::string::npos) << args[0] << ": " << named;
      EXPECT_NE(named.find(reason), std::string::npos) << args[0] << ": " << named;
    }
    EXPECT_EQ(TreeSnapshot(m_Temp.Root()), before);
  }
};

TEST_F(HostileFileTest, AMissingFile) {
  ExpectRefusedByEveryCommand(Scratch("none.qzpj"), "does not exist");
}

TEST_F(HostileFileTest, AnEmptyFile) {
  testsupport::WriteFile(Scratch("empty.qzpj"), std::string());
  ExpectRefusedByEveryCommand(Scratch("empty.qzpj"), "too short to hold a project record");
}

TEST_F(HostileFileTest, ADirectory) {
  fs::create_directories(Scratch("folder.qzpj"));
  ExpectRefusedByEveryCommand(Scratch("folder.qzpj"), "is a directory");
}

TEST_F(HostileFileTest, AFifoIsNeverWaitedOn) {
  ASSERT_EQ(::mkfifo(Scratch("pipe.qzpj").c_str(), 0644), 0);
  ExpectRefusedByEveryCommand(Scratch("pipe.qzpj"), "is not a regular file");
}

TEST_F(HostileFileTest, RandomBytes) {
  std::vector<uint8_t> bytes(5000);
  uint32_t state = 12345;
  for (uint8_t& byte : bytes) {
    state = state * 1664525u + 1013904223u;
    byte = static_cast<uint8_t>(state >> 24);
  }
  testsupport::WriteFile(Scratch("noise.qzpj"), bytes);
  ExpectRefusedByEveryCommand(Scratch("noise.qzpj"), "record size");
}

TEST_F(HostileFileTest, AnotherFileWithTheRightSize) {
  std::vector<uint8_t> bytes(3000, 0);
  const int32_t size = kProjectRecordSize;
  std::memcpy(bytes.data(), &size, sizeof(size));
  testsupport::WriteFile(Scratch("other.qzpj"), bytes);
  ExpectRefusedByEveryCommand(Scratch("other.qzpj"), "the mark \".qzpj\" is missing");
}

// A project file whose head is sound but whose entries and tail are noise:
// the reader must stay bounded whatever counts the head declares.
TEST_F(HostileFileTest, HugeCountsBehindASoundHead) {
  const std::string path = Sample();
  PatchInt(path, offsetof(CProjectData, iTimelineCount), 0x7fffffff);
  PatchInt(path, offsetof(CProjectData, iRepositoryCount), -5);
  const ToolRun run = Tool({"check", path});
  EXPECT_EQ(run.exitCode, 1);
  EXPECT_NE(run.out.find("declares 2147483647 timeline entries"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("declares -5 repository entries, holds 0"), std::string::npos) << run.out;
}

}  // namespace
}  // namespace tooltest
