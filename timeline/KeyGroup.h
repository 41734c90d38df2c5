#pragma once
// One animated parameter of an effect: its name, scale and curve. The curve
// runs from 0 to the effect's length.

#include <cstdint>
#include <cstdio>

#include "core/DataLock.h"
#include "core/Object.h"
#include "timeline/KeyGroupData.h"
#include "timeline/LevelPointList.h"

class CKeyGroup : public CObject, public CKeyGroupData {
 public:
  CKeyGroup() = default;

  // Record bytes, runtime byte and a clone of every curve point.
  CKeyGroup& CopyFrom(CKeyGroup& source);

  // The record (iLevelCount filled from the curve), then the curve's points.
  int32_t Save(FILE* stream);
  // A record that fails to read gives -1 and no curve is read.
  int32_t Load(FILE* stream);

  uint8_t cRuntime = 0;  // cloned, otherwise unread
  CDataLock m_Lock;      // constructed and destroyed, otherwise unused
  CLevelPointList m_Levels;
};
