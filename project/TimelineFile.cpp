// The timeline file: the record, each track with its components, the markers.

#include "core/SizedRecord.h"
#include "project/BackupRotation.h"
#include "project/DataFileIo.h"
#include "project/Timeline.h"

int32_t CTimeline::Save(FILE* stream) {
  return SaveSizedRecord(
      stream, static_cast<CTimelineData&>(*this),
      [this] {
        iTrackCount = tracks.GetCount();
        iMarkerCount = markers.GetCount();
      },
      [this, stream] {
        tracks.Save(stream);
        markers.Save(stream);
      });
}

int32_t CTimeline::Load(FILE* stream) {
  // The local record draws (and wastes) an id of its own.
  return LoadSizedRecord(
      stream, static_cast<CTimelineData&>(*this),
      [](CTimelineData& local) {
        // The flag is a whole 32-bit word here, unlike the byte of the other records.
        if (local.bTimesAreDouble == 0) {
          UpgradeTimesToDouble(local, offsetof(CTimelineData, bTimesAreDouble),
                               kTimelineIntegerTimeFields);
        }
        local.bTimesAreDouble = 1;
      },
      [this, stream](CTimelineData& local) {
        tracks.Load(stream, local.iTrackCount);
        local.iTrackCount = tracks.GetCount();
        markers.Load(stream, local.iMarkerCount);
        local.iMarkerCount = markers.GetCount();
      });
}

int32_t CTimeline::LoadFile(const char* path) {
  return LoadDataFile(path, [this](FILE* stream) { return Load(stream); });
}

int32_t CTimeline::SaveFile(const char* path) {
  return SaveDataFile(path, [this](FILE* stream) { return Save(stream); });
}

int32_t CTimeline::RotateBackups(const char* path, uint8_t bKeepMain) {
  return RotateBackupFiles(path, bKeepMain);
}

int32_t CTimeline::RotateOnly(const char* path) {
  return RotateBackups(path, 1);
}
