// The program's global objects, defined in one unit so that they are built in
// this order and destroyed in reverse: theApp, then the global data lock. The
// library's own globals (the registry stores, the configuration, the id
// generator, the track and component lists) join this list, in their place,
// when they are moved here from their libraries.
#include "app/TachyrunApp.h"
#include "core/DataLock.h"

namespace tachyrun {

CTachyrunApp theApp;
CDataLock g_AppDataLock;

}  // namespace tachyrun
