#include "timeline/Component.h"

#include "timeline/ComponentKind.h"

#include <cctype>
#include <cstring>

CComponent::~CComponent() {
  m_Levels.Clear();
  m_Effects.Clear(0);
  m_Markers.Clear();
}

namespace {

// Clears `target` and clones every element of `source` into it, each list
// under its outer lock (this one first).
template <class List, class Copy>
void CopyList(List& target, List& source, Copy copy) {
  target.m_OuterLock.Acquire(0);
  target.Clear();
  source.m_OuterLock.Acquire(0);
  for (int32_t i = 0; i < source.m_aItems.GetSize(); ++i) {
    auto* element = source.m_aItems.GetAt(i);
    if (element) target.m_aItems.Add(copy(*element));
  }
  source.m_OuterLock.Release();
  target.m_OuterLock.Release();
}

}  // namespace

CComponent& CComponent::CopyFrom(CComponent& source) {
  if (&source == this) return *this;
  static_cast<CComponentData&>(*this) = source;  // identity included
  iLine = source.iLine;
  iRuntimeA = source.iRuntimeA;
  iRuntimeB = source.iRuntimeB;
  iRuntimeC = source.iRuntimeC;
  std::memcpy(aRuntimeFlags, source.aRuntimeFlags, sizeof(aRuntimeFlags));
  std::memcpy(aRuntimeWords, source.aRuntimeWords, sizeof(aRuntimeWords));
  iRuntimeD = source.iRuntimeD;
  iRuntimeE = source.iRuntimeE;
  CopyList(m_Levels, source.m_Levels, [](const CLevelPoint& p) { return p.Clone(); });
  CopyList(m_Effects, source.m_Effects, [](CEffect& e) {
    CEffect* copy = new CEffect();
    copy->CopyFrom(e);
    return copy;
  });
  CopyList(m_Markers, source.m_Markers, [](const CMarkerPoint& m) { return m.Clone(); });
  return *this;
}

int32_t CComponent::InitDefaultLevels() {
  float startValue = 0.0f;
  float endValue = 0.0f;
  float levelMax = 100.0f;
  int32_t base = -1;  // -1: the scale's middle stays as it is
  switch (iKind) {
    case componentkind::kKindAudio:
      startValue = 80.0f, endValue = 80.0f, base = 0;
      break;
    case componentkind::kKindDmx:
      levelMax = 255.0f, startValue = 80.0f, endValue = 128.0f, base = 128;
      break;
    case componentkind::kKindRising:
      startValue = 0.0f, endValue = 100.0f;
      break;
    default:
      return 0;
  }
  m_Levels.m_OuterLock.Acquire(0);
  if (m_Levels.GetCount() == 0) {
    fLevelMax = levelMax;
    if (base >= 0) cLevelBase = static_cast<uint8_t>(base);
    // Both at 0: start and end points follow the owner's times later.
    m_Levels.Add(new CLevelPoint(kRoleStart, 0, startValue));
    m_Levels.Add(new CLevelPoint(kRoleEnd, 0, endValue));
  }
  m_Levels.m_OuterLock.Release();
  return 0;
}

namespace {

template <class Fn>
void ForEachKeyGroup(CEffectList& effects, Fn fn) {
  for (int32_t e = 0; e < effects.m_aItems.GetSize(); ++e) {
    CEffect* effect = effects.m_aItems.GetAt(e);
    if (!effect) continue;
    CKeyGroupList& groups = effect->m_KeyGroups;
    for (int32_t g = 0; g < groups.m_aItems.GetSize(); ++g) {
      CKeyGroup* group = groups.m_aItems.GetAt(g);
      if (group) fn(*group);
    }
  }
}

}  // namespace

void CComponent::FitKeyGroupsTo(int64_t length) {
  ForEachKeyGroup(m_Effects, [length](CKeyGroup& group) { group.m_Levels.FitToLength(length); });
}

int32_t CComponent::RefitKeyGroups() {
  m_Effects.m_OuterLock.Acquire(0);
  const int64_t length = GetSourceMaxLength();
  ForEachKeyGroup(m_Effects, [length](CKeyGroup& group) {
    group.m_Levels.FitToLength(length);
    group.m_Levels.SetEndTimes(0, length);
  });
  m_Effects.m_OuterLock.Release();
  return 0;
}

int32_t CComponent::TrimLevelPoints() {
  m_Levels.m_OuterLock.Acquire(0);
  const double first = dSourceIn;
  const double last = dSourceIn + dSourceLength;
  for (int32_t i = 0; i < m_Levels.GetCount(); ++i) {
    const CLevelPoint* p = m_Levels.GetAt(i);
    if (p && p->cRole == kRoleInner &&
        (static_cast<double>(p->iTime) < first || static_cast<double>(p->iTime) > last)) {
      m_Levels.RemoveAt(i);
    } else {
      ++i;
    }
    // The loop's own step then skips the neighbour: one call looks at about
    // every second point, and that stride is kept.
  }
  m_Levels.m_OuterLock.Release();
  return 0;
}

int32_t CComponent::IdentifyFile(const char* path) {
  if (!path || std::strlen(path) < 2) return 0;
  const char* dot = std::strrchr(path, '.');
  if (!dot) return 0;
  // The extension is only looked at; a bounded copy keeps long names safe.
  char extension[260] = {};
  std::strncpy(extension, dot + 1, sizeof(extension) - 1);
  for (char* c = extension; *c; ++c)
    *c = static_cast<char>(std::toupper(static_cast<unsigned char>(*c)));
  return 0;
}
