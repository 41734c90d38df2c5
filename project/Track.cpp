#include "project/Track.h"

#include <cstring>

#include "core/DataLockGuard.h"
#include "core/SizedRecord.h"
#include "project/ComponentExchange.h"
#include "project/ListCopy.h"
#include "project/OwnerCodes.h"
#include "timeline/ComponentKind.h"

using namespace componentkind;
using namespace ownercode;

CTrack::~CTrack() {
  components.Clear();
}

CTrack& CTrack::CopyFrom(const CTrack& source) {
  if (&source == this) return *this;
  std::memcpy(static_cast<CTrackData*>(this), static_cast<const CTrackData*>(&source),
              sizeof(CTrackData));
  // Copying takes the source's list lock, which leaves it as it was.
  auto& from = const_cast<CTrack&>(source);
  ReplaceWithCopies(components, from.components, CopyOfComponent);
  return *this;
}

bool CTrack::AcceptsKind(int32_t componentKind) const {
  return IsTrackKindMatch(static_cast<int32_t>(iTrackKind), componentKind);
}

int32_t CTrack::SetComponent(CComponent* source) {
  return ExchangeComponent(components, source, ExchangeDirection::kIntoList,
                           kOwnerTrackSetComponent);
}

int32_t CTrack::GetComponent(CComponent* target) {
  return ExchangeComponent(components, target, ExchangeDirection::kOutOfList,
                           kOwnerTrackGetComponent);
}

int32_t CTrack::SetComponents(CComponentList* sources) {
  return ExchangeComponents(components, sources, ExchangeDirection::kIntoList,
                            kOwnerTrackSetComponentsList, kOwnerTrackSetComponents);
}

int32_t CTrack::GetComponents(CComponentList* targets) {
  return ExchangeComponents(components, targets, ExchangeDirection::kOutOfList,
                            kOwnerTrackGetComponentsList, kOwnerTrackGetComponents);
}

namespace {

// Whether a component touches or covers [from, to].
bool TouchesRange(const CComponent& component, double from, double to) {
  const bool startInside = component.dStart >= from && component.dStart <= to;
  const bool endInside = component.dEnd >= from && component.dEnd <= to;
  const bool covers = component.dStart <= from && component.dEnd >= to;
  return startInside || endInside || covers;
}

}  // namespace

int32_t CTrack::CopyComponents(CComponentList* out, const int64_t* range) {
  if (out == nullptr) return -1;
  // Order: the caller's list, then this track's.
  CDataLockGuard outLock(out->m_OuterLock, kOwnerTrackCopyComponentsOut);
  out->Clear();
  CDataLockGuard componentsLock(components.m_OuterLock, kOwnerTrackCopyComponents);
  for (CComponent* component : components.m_aItems) {
    if (component == nullptr) continue;
    if (range != nullptr &&
        !TouchesRange(*component, static_cast<double>(range[0]), static_cast<double>(range[1]))) {
      continue;
    }
    out->Add(CopyOfComponent(*component));
  }
  return 0;
}

// The block stood for the track's first 460 bytes in memory: the record and
// the head of its component list. Pointers and locks can't travel through a
// file, so the bytes behind the record go out as zeros and come in unused.
int32_t CTrack::WriteRawBlock(FILE* stream) {
  uint8_t block[kTrackRawBlockSize] = {};
  std::memcpy(block, static_cast<const CTrackData*>(this), sizeof(CTrackData));
  return WritePlainBlock(stream, block, kTrackRawBlockSize);
}

int32_t CTrack::ReadRawBlock(FILE* stream) {
  uint8_t block[kTrackRawBlockSize] = {};
  // A short read leaves the record's own bytes where the block had none.
  std::memcpy(block, static_cast<const CTrackData*>(this), sizeof(CTrackData));
  if (ReadPlainBlock(stream, block, kTrackRawBlockSize) != 0) return -1;
  std::memcpy(static_cast<CTrackData*>(this), block, sizeof(CTrackData));
  return 0;
}

bool IsTrackKindMatch(int32_t trackKind, int32_t componentKind) {
  switch (trackKind) {
    case static_cast<int32_t>(trackkind::kTrackAny):
      return true;
    case static_cast<int32_t>(trackkind::kTrackVideo):
      return componentKind == kKindPicture || componentKind == kKindVideoItem ||
             componentKind == kKindKeyedVideo;
    case static_cast<int32_t>(trackkind::kTrackAudio):
      return componentKind == kKindAudio;
    case static_cast<int32_t>(trackkind::kTrackEffect):
      return componentKind == kKindEffect;
    case static_cast<int32_t>(trackkind::kTrackDmx):
      return componentKind == kKindDmx;
    case static_cast<int32_t>(trackkind::kTrackFurther5):
      return componentKind == kKindFurther7;
    case static_cast<int32_t>(trackkind::kTrackFurther6):
      return componentKind == kKindFurther8;
    default:
      return false;
  }
}

namespace {

// The kinds that stand in for each other as picture material.
bool IsPictureGroup(int32_t kind) {
  return kind == kKindPicture || kind == kKindVideoItem || kind == kKindKeyedVideo ||
         kind == kKindPictureLine;
}

}  // namespace

bool IsComponentKindMatch(int32_t kindA, int32_t kindB) {
  if (kindA == kKindAny) return true;
  if (IsPictureGroup(kindA)) return IsPictureGroup(kindB);
  switch (kindA) {
    case kKindAudio:
    case kKindEffect:
    case kKindDmx:
    case kKindFurther7:
    case kKindFurther8:
      return kindA == kindB;
    default:
      return false;
  }
}
