// The program's global objects: theApp, the global data lock, the global
// track list and the global component list. With the library's globals, defined in their own
// libraries, they are built in the order of platform/StartOrder.h and destroyed in reverse; naming
// them below makes them part of the program.
#include "app/AppGlobals.h"

#include "app/TachyrunApp.h"
#include "core/DataLock.h"
#include "platform/StartOrder.h"
#include "timeline/ComponentList.h"
#include "config/GlobalCfg.h"
#include "video/UniqueIdGenerator.h"
#include "registry/RegStore.h"
#include "project/TrackList.h"

namespace tachyrun {

// Start slots of the program's globals (platform/StartOrder.h).
constexpr int kStartApp = 1030;
constexpr int kStartDataLock = 1040;
constexpr int kStartComponentList = 1070;

CTachyrunApp theApp TACHYRUN_START_ORDER(kStartApp);
CDataLock g_AppDataLock TACHYRUN_START_ORDER(kStartDataLock);
CTrackList g_AppTrackList TACHYRUN_START_ORDER(kStartTrackList);
CComponentList g_AppComponentList TACHYRUN_START_ORDER(kStartComponentList);

// In the order the program's start lists them.
const void* const g_apProgramGlobals[] = {
    &g_CfgRegStore,
    &g_GlobalCfg,
    &theApp,
    &g_AppDataLock,
    &g_UniqueIdGenerator,
    &g_AppTrackList,
    &g_AppComponentList,
    &g_AppRegStore,
    &g_UserRegStore,
};
const size_t g_nProgramGlobals = sizeof(g_apProgramGlobals) / sizeof(g_apProgramGlobals[0]);

}  // namespace tachyrun
