// The stream and line operations of CComponentList: children per media
// stream, their removal, and the end-to-end layout of each line.

#include <algorithm>

#include "time/TimeMath.h"
#include "timeline/ComponentKind.h"
#include "timeline/ComponentList.h"

namespace {

using componentkind::IsPictureLine;
using componentkind::kKindAudio;

// Additions on lines and channels of odd records wrap instead of overflowing.
int32_t WrapAdd(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) + static_cast<uint32_t>(b));
}

}  // namespace

int32_t CComponentList::RemoveLinked() {
  m_InnerLock.Acquire(0);
  const int32_t count = GetCount();
  int32_t index = 0;
  while (index < count) {
    // Once removals shrank the list this read throws, lock still held.
    CComponent* component = m_aItems.GetAt(index);
    if (component != nullptr && component->iLinkId != 0) {
      delete component;
      m_aItems.RemoveAt(index);
      index += 1;
    } else {
      index += 2;
    }
  }
  m_InnerLock.Release();
  return 0;
}

CComponent* CComponentList::MakeChild(const CComponent& parent, int32_t line, int32_t channel) {
  CComponent* child = new CComponent;
  child->AssignKeepId(parent);
  child->iLinkId = parent.iUniqueId;
  child->iLine = line;
  child->iChannelIndex = channel;
  return child;
}

void CComponentList::AppendStreamChildren(CComponent& parent, CPointerArray<CComponent>& out) {
  // Packed fields: read by value.
  const int32_t audioStreams = std::min(int32_t{parent.iAudioStreams}, kMaxAudioStreams);
  const int32_t videoStreams = std::min(int32_t{parent.iVideoStreams}, kMaxVideoStreams);
  if (parent.iKind != kKindAudio) {
    // Picture item: stream 0 is the parent; then further picture streams,
    // then every audio stream on the lines that follow.
    int32_t line = 0;
    for (int32_t k = 0; k < videoStreams; ++k) {
      if (k != 0) {
        CComponent* child = MakeChild(parent, line, k);
        child->iVideoIndex = k;
        out.Add(child);
      }
      line = WrapAdd(line, 1);
    }
    for (int32_t k = 0; k < audioStreams; ++k) {
      CComponent* child = MakeChild(parent, line, k);
      child->iKind = kKindAudio;
      child->iAudioIndex = k;
      line = WrapAdd(line, 1);
      child->InitDefaultLevels();
      out.Add(child);
    }
    return;
  }
  // Audio item: the parent itself is stream 0.
  for (int32_t k = 1; k < audioStreams; ++k) {
    CComponent* child = MakeChild(parent, k, k);
    child->iAudioIndex = k;
    child->InitDefaultLevels();
    out.Add(child);
  }
}

int32_t CComponentList::ExpandStreams() {
  RemoveLinked();
  m_InnerLock.Acquire(0);
  CPointerArray<CComponent> contents;
  for (CComponent* component : m_aItems) {
    contents.Add(component);
    if (component != nullptr && component->iLinkId == 0) AppendStreamChildren(*component, contents);
  }
  m_aItems.RemoveAll();
  for (CComponent* component : contents) m_aItems.Add(component);
  contents.RemoveAll();
  m_InnerLock.Release();
  return 0;
}

int32_t CComponentList::LayOutLines(int64_t base) {
  int64_t position[kLayoutLineCount];
  std::fill(std::begin(position), std::end(position), base);

  int32_t pictureLines = 0;
  for (const CComponent* component : m_aItems) {
    if (component == nullptr || !IsPictureLine(component->iKind)) continue;
    const int32_t next = WrapAdd(component->iLine, 1);
    if (next > pictureLines) pictureLines = next;
  }
  for (CComponent* component : m_aItems) {
    if (component != nullptr && component->iKind == kKindAudio) {
      component->iLine = WrapAdd(component->iChannelIndex, pictureLines);
    }
  }
  for (CComponent* component : m_aItems) {
    // Lines outside 0..26 (a negative one only from an odd record) stay put.
    if (component == nullptr || component->iLine < 0 || component->iLine >= kLayoutLineCount) {
      continue;
    }
    int64_t& linePosition = position[component->iLine];
    const double p = static_cast<double>(linePosition);
    component->dStart += p;
    component->dEnd += p;
    linePosition = timemath::TruncToI64(component->dEnd - component->dStart + p);
  }
  return 0;
}
