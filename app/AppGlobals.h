#pragma once
// The program's global objects, in the order the program's start lists them:
// registry store and configuration, theApp, the global data lock, the id
// generator, the track list, the component list, the two further registry stores. Those of the
// libraries are defined there; this table holds them in the program.

#include <cstddef>

#include "core/DataLock.h"
#include "timeline/ComponentList.h"

class CTrackList;

namespace tachyrun {

extern CDataLock g_AppDataLock;
extern CTrackList g_AppTrackList;
extern CComponentList g_AppComponentList;
extern const void* const g_apProgramGlobals[];
extern const size_t g_nProgramGlobals;

}  // namespace tachyrun
