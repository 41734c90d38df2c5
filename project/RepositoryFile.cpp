// The repository file: the record, then the components. No older format.

#include "core/SizedRecord.h"
#include "project/BackupRotation.h"
#include "project/DataFileIo.h"
#include "project/Repository.h"

int32_t CRepository::Save(FILE* stream) {
  return SaveSizedRecord(
      stream, static_cast<CRepositoryData&>(*this),
      [this] { iComponentCount = components.GetCount(); },
      [this, stream] { components.Save(stream); });
}

int32_t CRepository::Load(FILE* stream) {
  // The local record draws (and wastes) an id of its own.
  return LoadSizedRecord(stream, static_cast<CRepositoryData&>(*this), NoRecordHook{},
                         [this, stream](CRepositoryData& local) {
                           components.Load(stream, local.iComponentCount);
                           local.iComponentCount = components.GetCount();
                         });
}

int32_t CRepository::LoadFile(const char* path) {
  return LoadDataFile(path, [this](FILE* stream) { return Load(stream); });
}

int32_t CRepository::SaveFile(const char* path) {
  return SaveDataFile(path, [this](FILE* stream) { return Save(stream); });
}

int32_t CRepository::RotateBackups(const char* path, uint8_t bKeepMain) {
  return RotateBackupFiles(path, bKeepMain);
}

int32_t CRepository::RotateOnly(const char* path) {
  return RotateBackups(path, 1);
}
