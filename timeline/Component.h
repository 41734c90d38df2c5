#pragma once
// One item of a timeline or repository: its record, its level curve, its
// markers and its effects, with the edge arithmetic that keeps an edited edge
// on a frame and inside the source media.

#include <cstdint>
#include <cstdio>

#include "core/DataLock.h"
#include "core/Object.h"
#include "timeline/ComponentData.h"
#include "timeline/EffectList.h"
#include "timeline/LevelPointList.h"
#include "timeline/MarkerPointList.h"

class CComponent : public CComponentData, public CObject {
 public:
  CComponent() = default;
  ~CComponent() override;
  CComponent(const CComponent&) = delete;
  CComponent& operator=(const CComponent&) = delete;

  // Deep copy, identity included: a copy has its source's iUniqueId.
  CComponent& CopyFrom(CComponent& source);

  // The record with its counts filled, then levels, effects and markers.
  int32_t Save(FILE* stream);
  // -1 for a null stream, a short read or a record above 1001 bytes, with
  // the object unchanged. Files from before the double times are upgraded.
  int32_t Load(FILE* stream);

  // Edge edits, in frames of the default rate; each returns the new edge in
  // whole milliseconds. Picture and audio clips (kinds 1, 2) stay inside
  // their media; the others are free length and restart their source at 0.
  int64_t SetEnd(int64_t time);
  int64_t SetStart(int64_t time);
  // Moves an edge and, for kinds 1 and 2, changes fSpeed instead of the used source.
  int64_t StretchEnd(int64_t time);
  int64_t StretchStart(int64_t time);

  int64_t GetTimelineMaxLength() const;
  int64_t GetSourceMaxLength() const;
  // Source frame shown at a timeline time; GetFileFrame adds dSourceBase.
  int64_t GetSourceFrame(double time) const;
  int64_t GetFileFrame(double time) const;

  // Gives kinds 2, 6 and 10 their first curve when they have none.
  int32_t InitDefaultLevels();
  // Fits every key group curve to GetSourceMaxLength.
  int32_t RefitKeyGroups();
  // Drops inner level points outside the used source, looking at every
  // second point only.
  int32_t TrimLevelPoints();
  // Reads the extension of path and nothing more; always 0.
  int32_t IdentifyFile(const char* path);

  CDataLock m_Lock;  // constructed and destroyed, otherwise unused
  CLevelPointList m_Levels;
  CMarkerPointList m_Markers;
  CEffectList m_Effects;
  int32_t iLine = 0;  // lane within the track's layout; not persistent
  int32_t iRuntimeA = 0;
  int32_t iRuntimeB = 0;  // carried into the sort data of a component list
  int32_t iRuntimeC = 0;
  int32_t aRuntimeFlags[3] = {1, 1, 1};
  int32_t aRuntimeWords[4] = {};
  int32_t iRuntimeD = 0;
  int32_t iRuntimeE = 0;

 private:
  // Calls FitToLength on every key group curve of every effect (kind 5).
  void FitKeyGroupsTo(int64_t length);
  int64_t SetFreeEnd(int64_t frames, int64_t startFrames);
};

// Speed of a stretched picture or audio clip: the used source over the new
// timeline length, narrowed to float; 1.0 for a timeline length of 0.
float StretchSpeed(double sourceLength, double timelineLength);
