// The program as a user and a script run it: exit statuses, the checks made
// before anything runs, the message without a display, output that reaches a
// pipe line by line, and JSON Lines and OpenMetrics read by real parsers.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using EnvChange = std::pair<std::string, std::optional<std::string>>;  // nullopt: unset

struct Finished {
  int iExit = -1;
  std::string strOut;
  std::string strErr;
};

std::string ReadFile(const std::string& path) {
  std::ifstream file(path);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void WriteFile(const std::string& path, const std::string& text) {
  std::ofstream(path) << text;
}

// Starts argv[0] with stdout on a pipe (returned through `outFd`) and stderr
// into `errPath`. The sanitizer's leak check reads the project's suppressions.
pid_t Start(const std::vector<std::string>& argv, const std::vector<EnvChange>& env,
            const std::string& errPath, int* outFd) {
  int fds[2];
  if (pipe(fds) != 0) return -1;
  const pid_t pid = fork();
  if (pid == 0) {
    dup2(fds[1], STDOUT_FILENO);
    const int errFd = open(errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    dup2(errFd, STDERR_FILENO);
    close(fds[0]);
    close(fds[1]);
    setenv("LSAN_OPTIONS", "suppressions=" TACHYRUN_LSAN_SUPP, 1);
    for (const auto& [name, value] : env) {
      if (value) {
        setenv(name.c_str(), value->c_str(), 1);
      } else {
        unsetenv(name.c_str());
      }
    }
    std::vector<char*> args;
    for (const std::string& a : argv) args.push_back(const_cast<char*>(a.c_str()));
    args.push_back(nullptr);
    execv(args[0], args.data());
    _exit(127);
  }
  close(fds[1]);
  *outFd = fds[0];
  return pid;
}

// What arrives on `fd` until `needle` has come, the writer closed it, or a
// minute passed without anything new.
std::string ReadUntil(int fd, const std::string& needle) {
  std::string received;
  while (received.find(needle) == std::string::npos) {
    pollfd ready{fd, POLLIN, 0};
    if (poll(&ready, 1, 60000) <= 0) break;
    char buffer[512];
    const ssize_t n = read(fd, buffer, sizeof buffer);
    if (n <= 0) break;
    received.append(buffer, n);
  }
  return received;
}

class CommandLine : public ::testing::Test {
 protected:
  std::string Path(const char* name) const { return m_Dir.filePath(name).toStdString(); }

  Finished Run(const std::string& program, std::vector<std::string> args,
               const std::vector<EnvChange>& env = {}) {
    args.insert(args.begin(), program);
    Finished done;
    int outFd = -1;
    const pid_t pid = Start(args, env, Path("stderr.txt"), &outFd);
    EXPECT_GT(pid, 0);
    char buffer[4096];
    ssize_t n;
    while ((n = read(outFd, buffer, sizeof buffer)) > 0) done.strOut.append(buffer, n);
    close(outFd);
    int status = 0;
    waitpid(pid, &status, 0);
    done.iExit = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    done.strErr = ReadFile(Path("stderr.txt"));
    return done;
  }
  Finished Tachyrun(std::vector<std::string> args, const std::vector<EnvChange>& env = {}) {
    return Run(TACHYRUN_PROGRAM, std::move(args), env);
  }
  // The parser script's view of `text`; fails the test when it can't parse.
  std::string Parsed(const char* mode, const std::string& text) {
    WriteFile(Path("output.txt"), text);
    const Finished parsed = Run(TACHYRUN_PYTHON, {TACHYRUN_PARSE_SCRIPT, mode, Path("output.txt")});
    EXPECT_EQ(parsed.iExit, 0) << parsed.strErr << "\n" << text;
    return parsed.strOut;
  }

  QTemporaryDir m_Dir;
};

TEST_F(CommandLine, EveryTestPassingExitsZeroWithOneLinePerControl) {
  const Finished done = Tachyrun({"--run", "1016,1033"});
  EXPECT_EQ(done.iExit, 0) << done.strErr;
  std::istringstream lines(done.strOut);
  std::string first, second, third;
  std::getline(lines, first);
  std::getline(lines, second);
  EXPECT_EQ(first.rfind("1016\tImg_ResizeARGB Lin Multi", 0), 0u) << first;
  EXPECT_EQ(second.rfind("1033\t1CPU  Mem copy", 0), 0u) << second;
  EXPECT_FALSE(std::getline(lines, third));
}

TEST_F(CommandLine, HelpNamesTheExitStatuses) {
  const Finished done = Tachyrun({"--help"});
  EXPECT_EQ(done.iExit, 0);
  EXPECT_NE(done.strOut.find("Exit status: 0 when every test ran with status 0; 1 when a test"),
            std::string::npos)
      << done.strOut;
  EXPECT_NE(done.strOut.find("2 for a usage error"), std::string::npos);
  EXPECT_NE(done.strOut.find("--openmetrics"), std::string::npos);
}

TEST_F(CommandLine, UsageErrorsExitTwoAndRunNothing) {
  for (const std::vector<std::string>& args : {std::vector<std::string>{"--frobnicate"},
                                               {"--run", "10x3"},
                                               {"--run", "1035"},
                                               {"--run", "1016,1020"},
                                               {"--run", "1016", "--json", "--openmetrics"},
                                               {"--run", "1016", "--image", "/tmp/x.bmp"},
                                               {"--json"}}) {
    const Finished done = Tachyrun(args);
    EXPECT_EQ(done.iExit, 2) << args[0] << " " << (args.size() > 1 ? args[1] : "");
    EXPECT_EQ(done.strErr.rfind("tachyrun: ", 0), 0u) << done.strErr;
    EXPECT_TRUE(done.strOut.empty()) << done.strOut;
  }
}

TEST_F(CommandLine, EveryImageProblemExitsTwoBeforeAnyTestRuns) {
  WriteFile(Path("garbage.bmp"), "BM but nothing after it");
  const std::vector<std::pair<std::string, std::string>> cases = {
      {Path("missing.bmp"), "does not exist"},
      {m_Dir.path().toStdString(), "can't be read: it is not a regular file"},
      {Path("garbage.bmp"), "can't be decoded as an image"},
      {"", "--image needs a file name"}};
  for (const auto& [image, why] : cases) {
    const Finished done = Tachyrun({"--run", "1016,1017", "--image", image});
    EXPECT_EQ(done.iExit, 2) << image;
    EXPECT_NE(done.strErr.find(why), std::string::npos) << done.strErr;
    EXPECT_TRUE(done.strOut.empty()) << done.strOut;  // 1016 never ran
  }
}

// Root reads any file whatever its mode, so this one needs an ordinary user.
TEST_F(CommandLine, AnUnreadableImageExitsTwo) {
  if (geteuid() == 0) GTEST_SKIP() << "root can read a file of mode 000";
  WriteFile(Path("locked.bmp"), "x");
  chmod(Path("locked.bmp").c_str(), 0);
  const Finished done = Tachyrun({"--run", "1017", "--image", Path("locked.bmp")});
  EXPECT_EQ(done.iExit, 2);
  EXPECT_NE(done.strErr.find("can't be read"), std::string::npos) << done.strErr;
}

TEST_F(CommandLine, WithoutADisplayTheDialogSaysHowToRunHeadlessAndExitsTwo) {
  const std::vector<EnvChange> noDisplay = {{"DISPLAY", std::nullopt},
                                            {"WAYLAND_DISPLAY", std::nullopt},
                                            {"QT_QPA_PLATFORM", std::nullopt}};
  const Finished dialog = Tachyrun({}, noDisplay);
  EXPECT_EQ(dialog.iExit, 2);
  EXPECT_NE(dialog.strErr.find("tachyrun: no display found"), std::string::npos) << dialog.strErr;
  EXPECT_NE(dialog.strErr.find("tachyrun --run ID[,ID...]"), std::string::npos);
  EXPECT_EQ(dialog.strErr.find("Aborted"), std::string::npos);
  // The same machine runs the tests headless.
  EXPECT_EQ(Tachyrun({"--run", "1016"}, noDisplay).iExit, 0);
}

TEST_F(CommandLine, AGpuTestWithoutADeviceExitsOne) {
  const std::vector<EnvChange> noDevice = {{"OCL_ICD_VENDORS", m_Dir.path().toStdString()}};
  const Finished done = Tachyrun({"--run", "1016,1021"}, noDevice);
  EXPECT_EQ(done.iExit, 1) << done.strOut << done.strErr;
  EXPECT_NE(done.strOut.find("1021\t"), std::string::npos);
  EXPECT_EQ(Tachyrun({"--run", "1016"}, noDevice).iExit, 0);
}

// The lock test that follows never returns, so the first line can only reach
// the pipe if it was flushed when its test ended.
TEST_F(CommandLine, EachLineReachesAPipeWhenItsTestEnds) {
  int outFd = -1;
  const pid_t pid = Start({TACHYRUN_PROGRAM, "--run", "1016,1020", "--allow-lock-test"}, {},
                          Path("stderr.txt"), &outFd);
  ASSERT_GT(pid, 0);
  const std::string received = ReadUntil(outFd, "\n");
  int status = 0;
  const pid_t ended = waitpid(pid, &status, WNOHANG);
  kill(pid, SIGKILL);
  waitpid(pid, &status, 0);
  close(outFd);
  EXPECT_EQ(ended, 0) << "the program was expected to be still inside the lock test";
  EXPECT_EQ(received.rfind("1016\tImg_ResizeARGB Lin Multi", 0), 0u) << received;
}

// The lock test never ends, so it is the test that runs longer than 2 s.
TEST_F(CommandLine, ALongTestIsNamedOnAStderrThatIsATerminalOnly) {
  int master = -1, slave = -1;
  ASSERT_EQ(openpty(&master, &slave, nullptr, nullptr, nullptr), 0);
  int outFd = -1;
  const pid_t pid = fork();
  if (pid == 0) {
    dup2(slave, STDERR_FILENO);
    close(master);
    setenv("LSAN_OPTIONS", "suppressions=" TACHYRUN_LSAN_SUPP, 1);
    execl(TACHYRUN_PROGRAM, TACHYRUN_PROGRAM, "--run", "1020", "--allow-lock-test", nullptr);
    _exit(127);
  }
  close(slave);
  const std::string notice = "tachyrun: 1020 Test is running...";
  const std::string seen = ReadUntil(master, notice);
  kill(pid, SIGKILL);
  int status = 0;
  waitpid(pid, &status, 0);
  close(master);
  EXPECT_NE(seen.find(notice), std::string::npos) << seen;

  // The same run with stderr in a file says nothing of it.
  const pid_t quiet = Start({TACHYRUN_PROGRAM, "--run", "1020", "--allow-lock-test"}, {},
                            Path("stderr.txt"), &outFd);
  ASSERT_GT(quiet, 0);
  sleep(4);
  kill(quiet, SIGKILL);
  waitpid(quiet, &status, 0);
  close(outFd);
  EXPECT_EQ(ReadFile(Path("stderr.txt")).find("is running"), std::string::npos);
}

TEST_F(CommandLine, JsonLinesStartWithTheMachineAndParseLineByLine) {
  const Finished done = Tachyrun({"--run", "1016,1005,1023", "--json"});
  ASSERT_EQ(done.iExit, 0) << done.strErr;
  EXPECT_EQ(Parsed("jsonl", done.strOut),
            "machine cores cpu kernel memory_bytes opencl_device opencl_driver utc version\n"
            "1016 0 Time Res\n"
            "1005 0 Elapsed Tot\n"
            "1023 0 \n");
}

TEST_F(CommandLine, OpenMetricsParsesStrictlyAndPromtoolReadsIt) {
  const Finished done = Tachyrun({"--run", "1016,1023", "--openmetrics"});
  ASSERT_EQ(done.iExit, 0) << done.strErr;
  const std::string parsed = Parsed("openmetrics", done.strOut);
  EXPECT_NE(parsed.find("tachyrun_machine_info gauge\n  cores="), std::string::npos) << parsed;
  EXPECT_NE(parsed.find("tachyrun_frame_ms gauge\n  label=SD-HD NCpu,test=1016 "),
            std::string::npos)
      << parsed;
  EXPECT_NE(parsed.find("tachyrun_status gauge\n  label=SD-HD NCpu,test=1016 0\n"
                        "  label=GpuW Hide,test=1023 0\n"),
            std::string::npos)
      << parsed;

  // promtool parses the same text (exit 1 on a parse error). Its lint only
  // objects to the unit in tachyrun_frame_ms, a name reports already use.
  WriteFile(Path("metrics.txt"), done.strOut);
  const Finished lint = Run("/bin/sh", {"-c", std::string(TACHYRUN_PROMTOOL) + " check metrics < " +
                                                  Path("metrics.txt")});
  EXPECT_TRUE(lint.iExit == 0 || lint.iExit == 3) << lint.iExit << lint.strOut << lint.strErr;
  const std::string problems = lint.strOut + lint.strErr;
  EXPECT_EQ(problems.find("error"), std::string::npos) << problems;
  std::istringstream lines(problems);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_EQ(line, "tachyrun_frame_ms metric names should not contain abbreviated units");
  }
}

}  // namespace
