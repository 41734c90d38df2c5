// The program's global objects: theApp, the global data lock and the global
// component list. With the library's globals, defined in their own libraries,
// they are built in the order of platform/StartOrder.h and destroyed in
// reverse; naming them below makes them part of the program.
#include "app/AppGlobals.h"
#include "platform/StartOrder.h"

#include "app/TachyrunApp.h"
#include "core/DataLock.h"
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

namespace tachyrun {

// Start slots of the program's globals (platform/StartOrder.h).
constexpr int kStartApp = 1030;
constexpr int kStartDataLock = 1040;
constexpr int kStartComponentList = 1070;

CTachyrunApp theApp TACHYRUN_START_ORDER(kStartApp);
CDataLock g_AppDataLock TACHYRUN_START_ORDER(kStartDataLock);
// The track list global joins here, before this one, with the project library.
CComponentList g_AppComponentList TACHYRUN_START_ORDER(kStartComponentList);

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
    &g_AppComponentList,
#if TACHYRUN_HAS_REGISTRY
    &g_AppRegStore,
    &g_UserRegStore,
#endif
};
const size_t g_nProgramGlobals = sizeof(g_apProgramGlobals) / sizeof(g_apProgramGlobals[0]);

}  // namespace tachyrun
