// list-timelines PROJECT: opens a Tachyrun project with the installed
// library and prints each of its timelines with its tracks and components.
// Built against an installed tree, once through find_package(Tachyrun) and
// once through pkg-config (see README.md beside it).

#include <cstdio>
#include <cstring>

#include "engine/Pixmill.h"
#include "files/AppDirectories.h"
#include "project/Project.h"
#include "project/Timeline.h"
#include "project/TimelineList.h"
#include "project/Track.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s PROJECT.qzpj\n", argv[0]);
    return 2;
  }
  // The library finds its template and folders from the program's place.
  InitAppDirectories(0);
  CProject project;
  if (project.Open(argv[1], 1) != 0) {
    std::fprintf(stderr, "%s: cannot open %s\n", argv[0], argv[1]);
    return 1;
  }
  std::printf("%.*s: %d timelines\n", static_cast<int>(sizeof(project.projectData.szProjectName)),
              project.projectData.szProjectName, project.pTimelineList->GetCount());
  for (int32_t i = 0; i < project.pTimelineList->GetCount(); ++i) {
    CTimeline* timeline = project.pTimelineList->GetAt(i);
    int32_t components = 0;
    for (int32_t t = 0; t < timeline->tracks.GetCount(); ++t) {
      components += timeline->tracks.GetAt(t)->components.GetCount();
    }
    std::printf("%.*s: %d tracks, %d components\n", static_cast<int>(sizeof(timeline->szName)),
                timeline->szName, timeline->tracks.GetCount(), components);
  }
  // The picture engine comes with the library.
  const int engine = InitConverterLib();
  std::printf("pixmill: %s\n", engine == 0 ? "ready" : "failed");
  ReleaseConverterLib();
  return engine == 0 ? 0 : 1;
}
