// Saving and loading a track with its components, inside a timeline file.

#include "core/SizedRecord.h"
#include "project/Track.h"

int32_t CTrack::Save(FILE* stream) {
  return SaveSizedRecord(
      stream, static_cast<CTrackData&>(*this), [this] { iComponentCount = components.GetCount(); },
      [this, stream] { components.Save(stream); });
}

int32_t CTrack::Load(FILE* stream) {
  // The local record draws (and wastes) an id of its own.
  return LoadSizedRecord(
      stream, static_cast<CTrackData&>(*this),
      [](CTrackData& local) {
        UpgradeTimesToDouble(local, offsetof(CTrackData, bTimesAreDouble), kTrackIntegerTimeFields);
      },
      [this, stream](CTrackData& local) {
        components.Load(stream, local.iComponentCount);
        local.iComponentCount = components.GetCount();
      });
}
