// The subcommands that only read (info, dump, check, versions) and the
// command line: help, usage errors and exit codes.

#include <nlohmann/json.hpp>

#include "tests/tools/ProjectToolTestUtil.h"

namespace tooltest {
namespace {

using nlohmann::json;

const char* const kSubcommands[] = {"new",      "info",    "dump",    "check",     "backup",
                                    "versions", "version", "restore", "export-mlt"};

TEST_F(ToolTest, EverySubcommandHasHelpThatExitsZero) {
  for (const char* name : kSubcommands) {
    const ToolRun run = Tool({name, "--help"});
    EXPECT_EQ(run.exitCode, 0) << name;
    EXPECT_EQ(run.out.rfind(std::string("usage: tachyrun-project ") + name, 0), 0u) << run.out;
    EXPECT_TRUE(run.err.empty()) << name;
  }
  const ToolRun top = Tool({"--help"});
  EXPECT_EQ(top.exitCode, 0);
  for (const char* name : kSubcommands) EXPECT_NE(top.out.find(name), std::string::npos) << name;
}

TEST_F(ToolTest, BadCommandLinesExitTwoWithTheUsage) {
  const std::vector<std::vector<std::string>> lines = {
      {},
      {"frobnicate"},
      {"info"},
      {"info", "a", "b"},
      {"info", "--bogus", "x"},
      {"dump", "x.qzpj"},  // --json is required
      {"dump", "x.qzpj", "--json", "--timeline"},
      {"export-mlt", "x.qzpj"},  // -o is required
      {"new", "root"},
      {"new", "root", "a/b"},
      {"restore", "x.qzpj"},
      {"version", "x.qzpj", ".."},
  };
  for (const auto& line : lines) {
    const ToolRun run = Tool(line);
    EXPECT_EQ(run.exitCode, 2) << (line.empty() ? "" : line[0]);
    EXPECT_NE(run.err.find("usage: tachyrun-project"), std::string::npos) << run.err;
  }
}

TEST_F(ToolTest, InfoSummarisesTimelinesRepositoriesVersionsAndBackups) {
  const std::string path = Sample();
  const ToolRun run = Tool({"info", path});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  EXPECT_NE(run.out.find("Project:      Sample\n"), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("Root:         " + Scratch("root") + "/\n"), std::string::npos);
  EXPECT_NE(run.out.find("Timelines:    2\n"), std::string::npos);
  // The blue component ends last, at 5000 ms: 00:00:05:00 at 25 frames/s.
  EXPECT_NE(run.out.find("  Timeline1: 5 tracks, 3 components, length 00:00:05:00\n"),
            std::string::npos)
      << run.out;
  EXPECT_NE(run.out.find("    track 1: video, 2 components\n"), std::string::npos);
  EXPECT_NE(run.out.find("    track 2: audio, 1 components\n"), std::string::npos);
  EXPECT_NE(run.out.find("  Second: 2 tracks, 0 components, length 00:00:00:00\n"),
            std::string::npos);
  EXPECT_NE(run.out.find("  Repository1: media, 2 components\n"), std::string::npos);
  EXPECT_NE(run.out.find("Versions:     0\n"), std::string::npos);
  EXPECT_NE(run.out.find("Timeline1.Bk1"), std::string::npos);
}

TEST_F(ToolTest, DumpHoldsEveryRecordUnderItsFieldNames) {
  const std::string path = Sample();
  const ToolRun run = Tool({"dump", path, "--json"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const json dump = json::parse(run.out);
  EXPECT_EQ(dump["project"]["szProjectName"], "Sample");
  EXPECT_EQ(dump["project"]["szMagic"], ".qzpj");
  EXPECT_EQ(dump["project"]["iTimelineCount"], 2);
  EXPECT_EQ(dump["videoMode"]["iFrameTime"], 400000);
  EXPECT_EQ(dump["timelineEntries"],
            json::parse(R"([{"szName":"Timeline1"},{"szName":"Second"}])"));
  EXPECT_EQ(dump["repositoryEntries"], json::parse(R"([{"szName":"Repository1"}])"));
  ASSERT_EQ(dump["timelines"].size(), 2u);
  const json& first = dump["timelines"][0];
  EXPECT_EQ(first["szName"], "Timeline1");
  ASSERT_EQ(first["tracks"].size(), 5u);
  const json& blue = first["tracks"][0]["components"][1];
  EXPECT_EQ(blue["szPath"], "colour:blue");
  EXPECT_EQ(blue["dStart"], 3000.0);
  EXPECT_EQ(blue["dSourceIn"], 1000.0);
  const json& audio = first["tracks"][1]["components"][0];
  ASSERT_EQ(audio["levels"].size(), 3u);
  EXPECT_EQ(audio["levels"][1]["iTime"], 2000);
  EXPECT_EQ(audio["levels"][1]["fValue"], 40.0);
  EXPECT_EQ(audio["levels"][2]["cRole"], 2);
  ASSERT_EQ(audio["markers"].size(), 1u);
  EXPECT_EQ(audio["markers"][0]["iMarkerId"], 7);
  EXPECT_EQ(dump["repositories"][0]["components"].size(), 2u);
  EXPECT_TRUE(dump["findings"].empty());
  // Ids are whole 64-bit numbers, not rounded doubles.
  EXPECT_TRUE(first["iId"].is_number_integer());
}

TEST_F(ToolTest, DumpOfOneTimelineHoldsOnlyThatTimeline) {
  const std::string path = Sample();
  const ToolRun run = Tool({"dump", path, "--json", "--timeline", "Second"});
  ASSERT_EQ(run.exitCode, 0) << run.err;
  const json dump = json::parse(run.out);
  EXPECT_FALSE(dump.contains("project"));
  EXPECT_FALSE(dump.contains("repositories"));
  EXPECT_FALSE(dump.contains("timelineEntries"));
  ASSERT_EQ(dump["timelines"].size(), 1u);
  EXPECT_EQ(dump["timelines"][0]["szName"], "Second");
  const ToolRun missing = Tool({"dump", path, "--json", "--timeline", "Nope"});
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_NE(missing.err.find("no timeline named \"Nope\""), std::string::npos);
}

// The schema in docs/ is checked by a validator that is not ours.
ToolRun Validate(const std::string& instance, const std::string& scratch) {
  return RunProgram("/usr/bin/python3",
                    {"-m", "jsonschema", "-i", instance,
                     std::string(TACHYRUN_SOURCE_DIR) + "/docs/project-dump.schema.json"},
                    scratch);
}

TEST_F(ToolTest, DumpFollowsTheSchemaInDocs) {
  const std::string path = Sample();
  for (const std::vector<std::string>& extra :
       {std::vector<std::string>{}, std::vector<std::string>{"--timeline", "Timeline1"}}) {
    std::vector<std::string> args = {"dump", path, "--json"};
    args.insert(args.end(), extra.begin(), extra.end());
    const ToolRun run = Tool(args);
    ASSERT_EQ(run.exitCode, 0);
    testsupport::WriteFile(Scratch("dump.json"), run.out);
    const ToolRun valid = Validate(Scratch("dump.json"), m_Temp.Root());
    EXPECT_EQ(valid.exitCode, 0) << valid.out << valid.err;
  }
}

TEST_F(ToolTest, TheSchemaRefusesADumpWithAWrongField) {
  const std::string path = Sample();
  json dump = json::parse(Tool({"dump", path, "--json"}).out);
  dump["timelines"][0]["tracks"][0]["components"][0]["dStart"] = "soon";
  testsupport::WriteFile(Scratch("bad.json"), dump.dump());
  EXPECT_NE(Validate(Scratch("bad.json"), m_Temp.Root()).exitCode, 0);
  dump = json::parse(Tool({"dump", path, "--json"}).out);
  dump["timelines"][0].erase("iId");
  testsupport::WriteFile(Scratch("bad.json"), dump.dump());
  EXPECT_NE(Validate(Scratch("bad.json"), m_Temp.Root()).exitCode, 0);
}

TEST_F(ToolTest, CheckOfASoundProjectHasNoFindings) {
  const std::string path = Sample();
  const ToolRun run = Tool({"check", path});
  EXPECT_EQ(run.exitCode, 0) << run.out;
  EXPECT_EQ(run.out, path + ": no findings\n");
}

TEST_F(ToolTest, VersionsOfAProjectWithoutAnySaysSo) {
  const ToolRun run = Tool({"versions", Sample()});
  EXPECT_EQ(run.exitCode, 0);
  EXPECT_EQ(run.out, "no versions\n");
}

TEST_F(ToolTest, CommandsThatReadWriteNothing) {
  const std::string path = Sample();
  const auto before = TreeSnapshot(Scratch("root"));
  for (const std::vector<std::string>& args : {std::vector<std::string>{"info", path},
                                               {"dump", path, "--json"},
                                               {"check", path},
                                               {"versions", path},
                                               {"export-mlt", path, "-o", Scratch("out.mlt")}}) {
    EXPECT_EQ(Tool(args).exitCode, 0) << args[0];
  }
  EXPECT_EQ(TreeSnapshot(Scratch("root")), before);
}

}  // namespace
}  // namespace tooltest
