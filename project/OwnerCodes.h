#pragma once
// Owner codes of every acquire in the project database: the diagnostic number
// a look at a stuck lock reads. Letters name the lock: L the timeline list's
// outer lock, R the repository list's, T a timeline's own lock, K its track
// list's outer lock, C a component list handed in by the caller.

#include <cstdint>

namespace ownercode {

inline constexpr int32_t kOwnerList = 0;  // a list's own operations; copies; lockRepository

// Tracks and repositories.
inline constexpr int32_t kOwnerTrackLookup = 1;            // track's lock: GetStateAtTime, GetGapAt
inline constexpr int32_t kOwnerTrackLookupComponents = 2;  // then its component list
inline constexpr int32_t kOwnerTrackSetComponent = 4;
inline constexpr int32_t kOwnerTrackSetComponentsList = 5;  // C
inline constexpr int32_t kOwnerTrackSetComponents = 6;      // also CTrackList::RenewIds
inline constexpr int32_t kOwnerTrackGetComponent = 8;
inline constexpr int32_t kOwnerTrackCopyComponentsOut = 9;  // C
inline constexpr int32_t kOwnerTrackCopyComponents = 10;
inline constexpr int32_t kOwnerTrackGetComponentsList = 14;  // C
inline constexpr int32_t kOwnerTrackGetComponents = 15;
inline constexpr int32_t kOwnerAddTracks = 17;            // K
inline constexpr int32_t kOwnerAddConfiguredTracks = 18;  // K
inline constexpr int32_t kOwnerRepositorySetComponent = 20;
inline constexpr int32_t kOwnerRepositorySetComponentsList = 21;  // C
inline constexpr int32_t kOwnerRepositorySetComponents = 22;
inline constexpr int32_t kOwnerRepositoryGetComponent = 24;       // also CRepository::RenewIds
inline constexpr int32_t kOwnerRepositoryGetComponentsList = 25;  // C
inline constexpr int32_t kOwnerRepositoryGetComponents = 26;

// The project object.
inline constexpr int32_t kOwnerCreate = 27;               // lockProject
inline constexpr int32_t kOwnerCloseTimelines = 29;       // L
inline constexpr int32_t kOwnerCloseRepositories = 30;    // R
inline constexpr int32_t kOwnerSaveTimelines = 31;        // L: Save, SaveBackup
inline constexpr int32_t kOwnerSaveRepositories = 32;     // R: Save, SaveBackup
inline constexpr int32_t kOwnerLoadRepositories = 33;     // R
inline constexpr int32_t kOwnerSaveRepositoryFiles = 34;  // R
inline constexpr int32_t kOwnerLoadTimelines = 35;        // L
inline constexpr int32_t kOwnerSaveTimelineFiles = 36;    // L
inline constexpr int32_t kOwnerRemoveRepository = 38;     // R
inline constexpr int32_t kOwnerSetTimeline = 41;          // L: SetTimelineMarkers, SetTimeline
inline constexpr int32_t kOwnerSetRepository =
    42;  // R or L: SetRepository, HasTimeline, HasRepository
inline constexpr int32_t kOwnerGetTrackViews = 43;      // L
inline constexpr int32_t kOwnerSetTrackViews = 44;      // L
inline constexpr int32_t kOwnerGetTimelineCursor = 45;  // L
inline constexpr int32_t kOwnerSetTimelineCursor = 46;  // L
inline constexpr int32_t kOwnerGetTimeline = 47;        // L: GetTimelineMarkers, GetTimeline
inline constexpr int32_t kOwnerGetRepository = 48;      // R
inline constexpr int32_t kOwnerSetComponentParamsL = 49;
inline constexpr int32_t kOwnerSetComponentParamsT = 50;
inline constexpr int32_t kOwnerSetComponentParamsK = 51;
inline constexpr int32_t kOwnerSetComponentParamL = 52;
inline constexpr int32_t kOwnerSetComponentParamT = 53;
inline constexpr int32_t kOwnerSetComponentParamK = 54;
inline constexpr int32_t kOwnerUpdateComponentsC = 55;
inline constexpr int32_t kOwnerUpdateComponentsL = 56;  // also MarkUsedMedia
inline constexpr int32_t kOwnerUpdateComponentsT = 57;  // also MarkUsedMedia
inline constexpr int32_t kOwnerUpdateComponentsK = 58;  // also MarkUsedMedia
inline constexpr int32_t kOwnerCollectC = 59;           // CollectLinked, CollectAtTime
inline constexpr int32_t kOwnerCollectL = 60;
inline constexpr int32_t kOwnerCollectT = 61;
inline constexpr int32_t kOwnerCollectK = 62;
inline constexpr int32_t kOwnerGetMaxSerialL = 63;
inline constexpr int32_t kOwnerGetMaxSerialT = 64;
inline constexpr int32_t kOwnerGetMaxSerialK = 65;
inline constexpr int32_t kOwnerFetchComponentsC = 66;
inline constexpr int32_t kOwnerFetchComponentsL = 67;
inline constexpr int32_t kOwnerFetchComponentsT = 68;
inline constexpr int32_t kOwnerFetchComponentsK = 69;
inline constexpr int32_t kOwnerMovedMediaL = 70;  // CountMovedMedia, UpdateComponent
inline constexpr int32_t kOwnerMovedMediaT = 71;
inline constexpr int32_t kOwnerMovedMediaK = 72;
inline constexpr int32_t kOwnerGetComponentL = 73;  // CProject::GetComponent
inline constexpr int32_t kOwnerGetComponentT = 74;
inline constexpr int32_t kOwnerGetComponentK = 75;
inline constexpr int32_t kOwnerCopyAllComponentsC = 76;  // K is taken with 0
inline constexpr int32_t kOwnerCopyAllComponentsL = 77;
inline constexpr int32_t kOwnerCopyAllComponentsT = 78;
inline constexpr int32_t kOwnerSetTrackL = 79;
inline constexpr int32_t kOwnerSetTrackT = 80;
inline constexpr int32_t kOwnerSetTrackK = 81;
inline constexpr int32_t kOwnerGetTrackL = 82;
inline constexpr int32_t kOwnerGetTrackT = 83;
inline constexpr int32_t kOwnerGetTrackK = 84;
inline constexpr int32_t kOwnerGetTrackIndexL = 85;  // K with 0
inline constexpr int32_t kOwnerGetTrackIndexT = 86;
inline constexpr int32_t kOwnerComponentTrackIndexL = 88;  // K with 0
inline constexpr int32_t kOwnerComponentTrackIndexT = 89;
inline constexpr int32_t kOwnerComponentTrackFlagT = 91;  // L and K with 0
inline constexpr int32_t kOwnerRemoveTimeline = 92;       // L
inline constexpr int32_t kOwnerTouchTimelines = 93;       // L
inline constexpr int32_t kOwnerEnsureDefaultL = 95;
inline constexpr int32_t kOwnerEnsureDefaultR = 132;

}  // namespace ownercode
