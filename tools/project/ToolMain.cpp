// tachyrun-project: looks into, checks, versions and exports projects of the
// editing library from the command line. Exit status: 0 done, 1 findings or
// a file that can't be used, 2 a command line that doesn't parse.

#include <cstring>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "tools/project/ProjectTool.h"

namespace projecttool {

const std::vector<Command>& Commands() {
  static const std::vector<Command> commands = {
      {"new", "new ROOT NAME", "Creates the project NAME under the folder ROOT from the template.",
       "The project gets at least one timeline and one media repository and is\n"
       "saved at once; the path of its project file is printed.\n",
       RunNew},
      {"info", "info PROJECT", "Prints a summary of the project file PROJECT.",
       "Name, root, video mode, each timeline with its tracks, component counts\n"
       "and length as time code, the repositories, the versions and the backups\n"
       "present. Nothing is written.\n",
       RunInfo},
      {"dump", "dump PROJECT --json [--timeline NAME]",
       "Prints every record of the project as JSON.",
       "The head record, each timeline (tracks, components with their level\n"
       "points, markers, effects and key groups) and each repository; the keys\n"
       "are the field names. --timeline NAME prints only that timeline.\n"
       "The layout is described by docs/project-dump.schema.json.\n",
       RunDump},
      {"check", "check PROJECT", "Checks the project file PROJECT and every file it names.",
       "Magic and record sizes, counts against the entries, each named file\n"
       "present and loadable, records no longer than this program's, unique ids,\n"
       "components inside their tracks. One line per finding on stdout; exit 1\n"
       "when there is any, 0 and \"PROJECT: no findings\" when there is none.\n",
       RunCheck},
      {"backup", "backup PROJECT", "Writes the project as it stands as a .Bk1 backup set.",
       "The project file and each timeline and repository file get a .Bk1 copy\n"
       "beside them; older backups move to .Bk2.\n",
       RunBackup},
      {"versions", "versions PROJECT", "Lists the versions of the project.",
       "One line per folder under Versions/ with the number of files it holds;\n"
       "the version named in the project record is marked with '*'.\n",
       RunVersions},
      {"version", "version PROJECT [NAME]", "Copies the project's database files into a version.",
       "Without NAME the version named in the project record is used, or the\n"
       "next free \"Version<n>\". The version folder is printed.\n",
       RunVersion},
      {"restore", "restore PROJECT VERSION", "Copies the files of a version back over the project.",
       "VERSION is the name of a folder under Versions/ (see 'versions').\n", RunRestore},
      {"export-mlt", "export-mlt PROJECT [--timeline NAME] -o OUT.mlt",
       "Writes a timeline as MLT XML.",
       "One producer per media file, one playlist per track with blanks for the\n"
       "gaps, a tractor over them, in frames of the project's video mode; level\n"
       "curves become keyframes of a volume filter. A media path of the form\n"
       "\"colour:NAME\" becomes a colour producer. Without --timeline the first\n"
       "timeline is written.\n",
       RunExportMlt},
  };
  return commands;
}

namespace {

int PrintUsage(std::ostream& out) {
  out << "usage: " << kProgramName << " COMMAND [ARGS] (COMMAND --help for more)\n\n";
  for (const Command& command : Commands()) {
    out << "  " << command.usage << "\n      " << command.summary << "\n";
  }
  out << "\nExit status: 0 done, 1 findings or a file that can't be used, 2 usage.\n";
  return kExitUsage;
}

}  // namespace

}  // namespace projecttool

int main(int argc, char** argv) {
  using namespace projecttool;
  if (argc < 2) return PrintUsage(std::cerr);
  const std::string name = argv[1];
  if (name == "--help" || name == "-h" || name == "help") {
    PrintUsage(std::cout);
    return kExitOk;
  }
  const std::vector<std::string> args(argv + 2, argv + argc);
  for (const Command& command : Commands()) {
    if (name != command.name) continue;
    try {
      return command.run(args);
    } catch (const std::exception& error) {
      std::cerr << kProgramName << ": " << error.what() << "\n";
      return kExitFindings;
    }
  }
  std::cerr << kProgramName << ": unknown command '" << name << "'\n";
  return PrintUsage(std::cerr);
}
