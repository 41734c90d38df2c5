#pragma once
// Process-wide objects are built in one fixed order, whatever library defines
// them. TACHYRUN_START_ORDER(slot) gives a global its slot: lower slots are
// built first, all of them before unprioritised objects, across translation
// units and static libraries; destruction runs in reverse.
//
// Each floor defines the slot constants of its own globals beside their
// declarations, so this header knows no object above it. The slots in use:
//
//   1010, 1020  config/    the configuration's registry store, the configuration
//   1030, 1040  app/       the application object, the global data lock
//   1050        video/     the id generator
//   1060        project/   the global track list (reserved until that library lands)
//   1070        app/       the global component list
//   1080, 1090  registry/  the two further registry stores
//
// A new global takes a free slot at its place in this order and is added to
// the table. The gaps of ten leave room for tests that look between two slots.

#define TACHYRUN_START_ORDER(slot) __attribute__((init_priority(slot)))
