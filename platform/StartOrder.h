#pragma once
// The process-wide objects are built in one fixed order, whatever library
// defines them: the configuration's registry store, the configuration, the
// application, the global data lock, the id generator, the global track list,
// the global component list, then the two further registry stores. The
// priorities order their constructors across translation units and static
// libraries (lower first, all before unprioritised objects); destruction runs
// in reverse. The gaps leave room for tests that look between two of them.

#define TACHYRUN_START_ORDER(slot) __attribute__((init_priority(slot)))

namespace platform {

inline constexpr int kStartCfgRegStore = 1010;
inline constexpr int kStartGlobalCfg = 1020;
inline constexpr int kStartApp = 1030;
inline constexpr int kStartDataLock = 1040;
inline constexpr int kStartUniqueIds = 1050;
inline constexpr int kStartTrackList = 1060;
inline constexpr int kStartComponentList = 1070;
inline constexpr int kStartAppRegStore = 1080;
inline constexpr int kStartUserRegStore = 1090;

}  // namespace platform
