#pragma once
// Lookup in a table of per-control definitions (rows with an iControl).

#include <span>

namespace tachyrun {

template <class Def>
const Def* FindByControl(std::span<const Def> defs, int iControl) {
  for (const Def& def : defs) {
    if (def.iControl == iControl) return &def;
  }
  return nullptr;
}

}  // namespace tachyrun
