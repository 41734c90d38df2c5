// tachyrun-graphs: lists the graphs that running programs registered and
// prints the text of one, as an outside viewer of live graphs would.

#include <dirent.h>
#include <signal.h>
#include <sys/types.h>

#include <algorithm>
#include <cerrno>
#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "graph/GraphRegistration.h"

namespace {

constexpr int kOk = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

constexpr const char* kHelp =
    "Usage: tachyrun-graphs [COMMAND]\n"
    "\n"
    "Lists the media graphs that running programs registered, and prints one.\n"
    "\n"
    "Commands:\n"
    "  list          one line per graph: its name, then \"running\" or \"gone\"\n"
    "                (the process that registered it has ended); the default\n"
    "  show NAME     the text of the graph NAME, as listed, e.g.\n"
    "                'FilterGraph c8a3b2c0 pid 00003039'\n"
    "  folder        the folder that holds the registrations\n"
    "  --help        this text\n"
    "\n"
    "The folder is $XDG_RUNTIME_DIR/tachyrun/graphs, else /tmp/tachyrun-<uid>/graphs.\n"
    "A graph's text is what gst-launch-1.0 reads: elements with their names and\n"
    "changed properties, then one link per line.\n"
    "\n"
    "Exit status: 0 done, 1 no such graph or the folder can't be read, 2 bad usage.\n";

int Fail(const std::string& message, int status = kFailed) {
  std::fprintf(stderr, "tachyrun-graphs: %s\n", message.c_str());
  return status;
}

// Whether `name` is a registration name, and the process id it carries.
bool ParseName(const std::string& name, uint32_t* processId) {
  uintptr_t address = 0;
  int used = 0;
  if (std::sscanf(name.c_str(), "FilterGraph %" SCNxPTR " pid %" SCNx32 "%n", &address, processId,
                  &used) != 2 ||
      static_cast<size_t>(used) != name.size()) {
    return false;
  }
  return GraphRegistrationName(reinterpret_cast<const void*>(address), *processId) == name;
}

bool ProcessRuns(uint32_t processId) {
  return kill(static_cast<pid_t>(processId), 0) == 0 || errno == EPERM;
}

int List() {
  const std::string folder = GraphRegistrationFolder();
  DIR* dir = opendir(folder.c_str());
  if (!dir) {
    if (errno == ENOENT) return kOk;  // nothing was ever registered
    return Fail("can't read " + folder + ": " + std::strerror(errno));
  }
  std::vector<std::string> names;
  while (const dirent* entry = readdir(dir)) {
    uint32_t processId = 0;
    if (ParseName(entry->d_name, &processId)) names.push_back(entry->d_name);
  }
  closedir(dir);
  std::sort(names.begin(), names.end());
  for (const std::string& name : names) {
    uint32_t processId = 0;
    ParseName(name, &processId);
    std::printf("%s\t%s\n", name.c_str(), ProcessRuns(processId) ? "running" : "gone");
  }
  return kOk;
}

int Show(const std::string& name) {
  uint32_t processId = 0;
  if (!ParseName(name, &processId)) {
    return Fail("'" + name + "' is not a graph name like 'FilterGraph c8a3b2c0 pid 00003039'",
                kUsage);
  }
  std::ifstream file(GraphRegistrationFolder() + "/" + name, std::ios::binary);
  if (!file) return Fail("no graph named '" + name + "' (see tachyrun-graphs list)");
  std::ostringstream text;
  text << file.rdbuf();
  std::fputs(text.str().c_str(), stdout);
  return kOk;
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::string> args(argv + 1, argv + argc);
  if (args.empty() || (args.size() == 1 && args[0] == "list")) return List();
  if (args[0] == "--help" || args[0] == "-h") {
    std::fputs(kHelp, stdout);
    return kOk;
  }
  if (args.size() == 2 && args[0] == "show") return Show(args[1]);
  if (args.size() == 1 && args[0] == "folder") {
    std::printf("%s\n", GraphRegistrationFolder().c_str());
    return kOk;
  }
  return Fail("unknown command (see tachyrun-graphs --help)", kUsage);
}
