#pragma once
// CComponentList: the owning list of a track and of a repository. Beyond the
// common list operations it sorts by eight keys, expands a multi-stream media
// item into one linked component per stream, lays components end to end per
// line, and removes a component together with its links.
//
// A parent component has iLinkId 0; its children (the further streams of the
// same media) hold the parent's iUniqueId in iLinkId.
//
// Usage:
//   CComponentList list;
//   list.Add(new CComponent);      // the list owns it from here
//   list.ExpandStreams();          // one child per extra stream
//   list.Sort(kSortByStart, 0);    // ascending dStart, ties keep their order
//
// The sort state sits between m_iModCount and m_OuterLock (m_Extra):
// SortKey() is the last key given to Sort, -1 before the first.

#include <cstdint>

#include "core/OwningList.h"
#include "timeline/Component.h"

// The fields a component list keeps beyond the common list members.
struct ComponentListSortState {
  int32_t iSortKey = -1;  // last key given to Sort; -1: never sorted
  int32_t iSortDir = 0;   // last direction given to Sort; stored only
};

// Keys of CComponentList::Sort. Any other key keeps the order.
enum : uint32_t {
  kSortByPath = 0,
  kSortByLabel = 1,
  kSortByKind = 2,
  kSortById = 3,
  kSortByStart = 4,
  kSortByEnd = 5,
  kSortBySourceLength = 6,
  kSortBySortText = 7,
};

// Lines that LayOutLines lines up; a component on a higher line stays put.
inline constexpr int32_t kLayoutLineCount = 27;
// Audio streams of one media item that ExpandStreams makes children for.
inline constexpr int32_t kMaxAudioStreams = 16;
// Picture streams it makes children for. No media has nearly as many; the
// bound keeps a damaged record's count from allocating without end.
inline constexpr int32_t kMaxVideoStreams = 256;

class CComponentList
    : public COwningList<CComponent, ReleaseByDestructor, NoLeadFields, ComponentListSortState> {
 public:
  CComponentList() = default;
  ~CComponentList() override = default;

  int32_t SortKey() const { return m_Extra.iSortKey; }
  int32_t SortDir() const { return m_Extra.iSortDir; }

  // Inserts at index (index == count appends) and gives 0; a negative index
  // gives -1. An index past the end takes the inner lock a second time and
  // waits for itself: the caller hangs. Callers must not pass one.
  int32_t InsertAt(CComponent* component, int32_t index);
  // Takes the slot out without deleting the element; -1 at or above the count.
  int32_t Detach(int32_t index);
  // First component with this iUniqueId, or null.
  CComponent* FindById(int64_t id);
  // Removes and deletes the component `id`; with bWithLinks also its children
  // and, for a child, its parent (the parent's other children stay). Always 0.
  int32_t RemoveById(int64_t id, uint8_t bWithLinks);
  // The low 32 bits of the last id that was at least the running value.
  int32_t GetMaxIdWord();
  // Selection sort by key, always ascending; direction is only stored. Always 0.
  int32_t Sort(uint32_t key, uint32_t direction);
  // Drops the children, then makes one child per further stream of each parent.
  int32_t ExpandStreams();
  // Drops children with the fixed count and the strides of 1 and 2: the walk
  // misses the element after each removed child and after each kept parent,
  // and reading past a list that removals have shrunk throws
  // std::out_of_range (the inner lock is released on the way out).
  int32_t RemoveLinked();
  // out[0], out[1]: smallest dStart and greatest dEnd, truncated, widened to
  // [low, high] unless low equals high. -1 for a null out.
  int32_t GetTimeExtent(int64_t* out, int64_t low, int64_t high);
  // Lines components up end to end from base on each of the 27 lines, audio
  // lines after the picture lines. Takes no lock. Always 0.
  int32_t LayOutLines(int64_t base);
  // Kept in the interface for callers of the library; does nothing.
  int32_t ReservedOp(int32_t argA, int32_t argB);

 private:
  // ExpandStreams' work for one parent: appends its children to `out`.
  static void AppendStreamChildren(CComponent& parent, CPointerArray<CComponent>& out);
  // A child of parent: parent's record with a fresh id, linked to the parent.
  static CComponent* MakeChild(const CComponent& parent, int32_t line, int32_t channel);
};
