// tachyrun_make_template FOLDER: writes the template of new projects
// (Default.qzpj, Timeline1.Qzt, Repository1.Qzr) into FOLDER, which the
// build sets to the program's own folder.

#include <cstdio>

#include "project/ProjectTemplate.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s FOLDER\n", argv[0]);
    return 2;
  }
  if (WriteProjectTemplate(argv[1]) != 0) {
    std::fprintf(stderr, "%s: could not write the project template into %s\n", argv[0], argv[1]);
    return 1;
  }
  return 0;
}
