#pragma once
// CRepository: a named bin of components (media, effects or DMX presets),
// stored in a file of its own (<name>.Qzr): the record, then the components.
// Its lock and its list stand in the reverse order of CTrack's.

#include <cstdint>
#include <cstdio>

#include "core/DataLock.h"
#include "core/Object.h"
#include "project/RepositoryData.h"
#include "timeline/ComponentList.h"

class CRepository : public CRepositoryData, public CObject {
 public:
  CRepository() = default;
  // Deletes all components first.
  ~CRepository() override;
  CRepository(const CRepository&) = delete;
  CRepository& operator=(const CRepository&) = delete;

  // The sized record (prefix 964, iComponentCount refreshed), then the
  // components. -1 for a null stream or a body that wasn't written.
  int32_t Save(FILE* stream);
  // -1 for a null stream, a failed read or a record above 964 bytes, with the
  // object unchanged. No upgrade step.
  int32_t Load(FILE* stream);
  // As the timeline's: 0 whatever Load gave; -1 for a null or over-long path
  // or no stream.
  int32_t LoadFile(const char* path);
  int32_t SaveFile(const char* path);
  // RotateBackupFiles(path, bKeepMain). Always 0.
  int32_t RotateBackups(const char* path, uint8_t bKeepMain);
  // Moves .Bk1 to .Bk2 only. Always 0.
  int32_t RotateOnly(const char* path);

  // Record copied, components replaced by deep copies; ids stay.
  CRepository& CopyFrom(const CRepository& source);
  // New ids for the repository and each component; links are left alone.
  // Always 0.
  int32_t RenewIds();
  // Whether this repository's kind takes components of this kind.
  bool AcceptsKind(int32_t componentKind) const;

  // Component exchange by iUniqueId with a caller's copies. -1 for null.
  int32_t SetComponent(CComponent* source);
  int32_t SetComponents(CComponentList* sources);
  int32_t GetComponent(CComponent* target);
  int32_t GetComponents(CComponentList* targets);
  // Does nothing. Always 0.
  int32_t ReservedHook(uint32_t value);

  CDataLock lockRepository;  // taken only by the project's MarkUsedMedia
  CComponentList components;
};
