#include "measure/CpuTestFamily.h"

#include "measure/ControlCatalogue.h"

namespace tachyrun {

const CpuTestDef* FindCpuTest(int iControl) {
  const ControlDef* def = FindControl(iControl);
  return def == nullptr ? nullptr : def->pCpu;
}

}  // namespace tachyrun
