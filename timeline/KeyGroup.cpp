#include "timeline/KeyGroup.h"

#include "core/DataLockGuard.h"
#include "core/SizedRecord.h"

CKeyGroup& CKeyGroup::CopyFrom(CKeyGroup& source) {
  if (&source == this) return *this;
  static_cast<CKeyGroupData&>(*this) = source;
  cRuntime = source.cRuntime;
  // This curve's outer lock first, then the source's.
  CDataLockGuard targetOuter(m_Levels.m_OuterLock, 0);
  m_Levels.Clear();
  CDataLockGuard sourceOuter(source.m_Levels.m_OuterLock, 0);
  m_Levels.CopyPointsFrom(source.m_Levels);
  return *this;
}

int32_t CKeyGroup::Save(FILE* stream) {
  return SaveSizedRecord(
      stream, static_cast<CKeyGroupData&>(*this), [this] { iLevelCount = m_Levels.GetCount(); },
      [this, stream] { m_Levels.Save(stream); });
}

int32_t CKeyGroup::Load(FILE* stream) {
  return LoadSizedRecord(
      stream, static_cast<CKeyGroupData&>(*this), NoRecordHook{},
      [this, stream](CKeyGroupData& local) { m_Levels.Load(stream, local.iLevelCount); });
}
