#pragma once
// Component kinds (`iKind` of a component record) and the groups that the
// timeline and the project database treat alike. One place for the numbers so
// that no switch spells them out again.

#include <cstdint>

namespace componentkind {

inline constexpr int32_t kKindAny = 0;          // matches every kind where a kind is asked for
inline constexpr int32_t kKindPicture = 1;      // picture clip bound by its source media
inline constexpr int32_t kKindAudio = 2;        // audio clip bound by its source media
inline constexpr int32_t kKindEffect = 3;       // effect item, free length
inline constexpr int32_t kKindVideoItem = 4;    // video item, its own source length is its maximum
inline constexpr int32_t kKindKeyedVideo = 5;   // video item whose key groups refit on edge changes
inline constexpr int32_t kKindDmx = 6;          // DMX item
inline constexpr int32_t kKindFurther7 = 7;     // taken by track kind 5
inline constexpr int32_t kKindFurther8 = 8;     // taken by track kind 6
inline constexpr int32_t kKindPictureLine = 9;  // free length, counts as a picture line
inline constexpr int32_t kKindRising = 10;      // free length, level curve rising 0 to 100

// Kinds whose edges are bound by the media length and whose stretch changes the speed.
constexpr bool IsMediaBound(int32_t kind) { return kind == kKindPicture || kind == kKindAudio; }

// Kinds that take a picture line of their own in the sort groups.
constexpr bool IsPictureLine(int32_t kind) {
  return kind == kKindPicture || kind == kKindEffect || kind == kKindVideoItem ||
         kind == kKindKeyedVideo || kind == kKindPictureLine;
}

}  // namespace componentkind
