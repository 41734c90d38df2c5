#include "timeline/Effect.h"

#include <cstring>

#include "core/DataLockGuard.h"
#include "core/SizedRecord.h"

int32_t CEffect::EffectHook(int32_t /*a*/, int32_t /*b*/) {
  return 0;
}

int32_t CEffect::SetLength(int64_t length) {
  if (length == 0) return -1;
  iLength = length;
  return 0;
}

int32_t CEffect::AddKeyGroup(const char* name, float a, float b, float startValue, float endValue) {
  if (!name) return -1;
  CKeyGroup* group = new CKeyGroup();
  // A 40-character name fills the field with no terminator.
  std::strncpy(group->szKeyName, name, sizeof(group->szKeyName));
  group->fKeyParamA = a;
  group->fKeyParamB = b;
  group->fStartValue = startValue;
  group->fEndValue = endValue;
  group->m_Levels.Add(new CLevelPoint(kRoleStart, 0, startValue));
  group->m_Levels.Add(new CLevelPoint(kRoleEnd, iLength, endValue));
  m_KeyGroups.Add(group);
  return m_KeyGroups.GetCount();
}

CEffect& CEffect::CopyFrom(CEffect& source) {
  if (&source == this) return *this;
  static_cast<CEffectData&>(*this) = source;
  m_Extra = source.m_Extra;
  cRuntime = source.cRuntime;
  // This list's outer lock first, then the source's.
  CDataLockGuard targetOuter(m_KeyGroups.m_OuterLock, 0);
  m_KeyGroups.Clear();
  CDataLockGuard sourceOuter(source.m_KeyGroups.m_OuterLock, 0);
  for (int32_t i = 0; i < source.m_KeyGroups.m_aItems.GetSize(); ++i) {
    CKeyGroup* group = source.m_KeyGroups.m_aItems.GetAt(i);
    if (!group) continue;
    CKeyGroup* copy = new CKeyGroup();
    copy->CopyFrom(*group);
    m_KeyGroups.Add(copy);
  }
  return *this;
}

int32_t CEffect::Save(FILE* stream) {
  return SaveSizedRecord(
      stream, static_cast<CEffectData&>(*this),
      [this] {
        iKeyGroupCount = m_KeyGroups.GetCount();
        cExtraFollows = 1;
        cEffectByte = 0;
      },
      [this, stream] {
        if (WritePlainBlock(stream, &m_Extra, sizeof(m_Extra)) != 0) return -1;
        m_KeyGroups.Save(stream);
        return 0;
      });
}

int32_t CEffect::Load(FILE* stream) {
  CEffectExtra extra;  // stays zero when the file holds no block
  return LoadSizedRecord(
      stream, static_cast<CEffectData&>(*this),
      [&extra, stream](CEffectData& local) {
        if (local.cExtraFollows == 0) return 0;
        return ReadPlainBlock(stream, &extra, sizeof(extra));
      },
      [this, &extra, stream](CEffectData& local) {
        m_KeyGroups.Load(stream, local.iKeyGroupCount);
        m_Extra = extra;
      });
}
