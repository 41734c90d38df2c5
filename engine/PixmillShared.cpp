// The shared library carries the whole backend archive; this unit only gives
// the target a source of its own.
#include "engine/Pixmill.h"
