// The program's global objects: theApp, the global data lock, the global
// track list and the global component list. With the library's globals, defined in their own
// libraries, they are built in the order of platform/StartOrder.h and destroyed in reverse; naming
// them below makes them part of the program.
#include "app/AppGlobals.h"

#include "app/TachyrunApp.h"
#include "core/DataLock.h"
#include "platform/StartOrder.h"
#include "timeline/ComponentList.h"
#if TACHYRUN_HAS_CONFIG
#include "config/GlobalCfg.h"
#endif
#if TACHYRUN_HAS_VIDEO
#include "video/UniqueIdGenerator.h"
#endif
#if TACHYRUN_HAS_REGISTRY
#include "registry/RegStore.h"
#endif
#if TACHYRUN_HAS_PROJECT
#include "project/TrackList.h"
#endif

namespace tachyrun {

CTachyrunApp theApp TACHYRUN_START_ORDER(platform::kStartApp);
CDataLock g_AppDataLock TACHYRUN_START_ORDER(platform::kStartDataLock);
#if TACHYRUN_HAS_PROJECT
CTrackList g_AppTrackList TACHYRUN_START_ORDER(platform::kStartTrackList);
#endif
CComponentList g_AppComponentList TACHYRUN_START_ORDER(platform::kStartComponentList);

// In the order the program's start lists them.
const void* const g_apProgramGlobals[] = {
#if TACHYRUN_HAS_CONFIG
    &g_CfgRegStore,
    &g_GlobalCfg,
#endif
    &theApp,
    &g_AppDataLock,
#if TACHYRUN_HAS_VIDEO
    &g_UniqueIdGenerator,
#endif
#if TACHYRUN_HAS_PROJECT
    &g_AppTrackList,
#endif
    &g_AppComponentList,
#if TACHYRUN_HAS_REGISTRY
    &g_AppRegStore,
    &g_UserRegStore,
#endif
};
const size_t g_nProgramGlobals = sizeof(g_apProgramGlobals) / sizeof(g_apProgramGlobals[0]);

}  // namespace tachyrun
