#pragma once
// CProject: the root of a project's persistent data. One object holds one
// open project: the head record, the timelines, the repositories, the video
// mode, one free-standing component and the undo and redo stacks.
//
// On disk a project is a folder tree under szRootPath (see the Get...Dir
// operations): the project file <name>.qzpj holds the head record and the
// names of the timelines and repositories, each of which lives in a file of
// its own below Database.
//
// Views never keep pointers into a project: they hold twin copies and
// exchange them by 64-bit id (SetTimeline, GetTrack, UpdateComponent...).
//
//   CProject project;
//   project.AddTimeline(timeline);        // the project owns it from here
//   CTimeline view;
//   project.GetTimeline(&view);           // view's iId picks the timeline
//   project.PushUndo(&view, "Move", 1);   // snapshot before the edit
//   ... edit view ...
//   project.SetTimeline(&view);           // marks the project changed
//
// Results are i32: 0 for success, -1 for failure, with no message. The
// project does not lock itself as a whole: the walks hold the list locks
// (the order is written beside the walks in ProjectWalk.h).

#include <cstdint>
#include <string>

#include "core/DataLock.h"
#include "core/Object.h"
#include "core/PointerArray.h"
#include "project/ProjectData.h"
#include "timeline/Component.h"
#include "timeline/ComponentList.h"
#include "video/DeviceMode.h"

class CProjectFileList;
class CRepository;
class CRepositoryList;
class CTimeline;
class CTimelineList;
class CTrack;
class CUndoData;

// A stack holds at most this many records; the oldest goes first.
inline constexpr int32_t kUndoStackLimit = 801;
// GetNewProjectName tries the numbers 1 up to this one.
inline constexpr int32_t kLastNewProjectNumber = 259;

class CProject : public CObject {
 public:
  // Builds the members in order; the timeline list is made before the
  // repository list. Both are never null afterwards.
  CProject();
  // Close, then both lists deleted and their pointers set to null.
  ~CProject() override;
  CProject(const CProject&) = delete;
  CProject& operator=(const CProject&) = delete;

  // --- Lifecycle -----------------------------------------------------------
  // Empties both undo stacks, bOpen = 0, clears both lists and fills all 1873
  // bytes of the head record with zero (the defaults are gone too). Always 0.
  int32_t Close();
  // An empty hook at the start of an open. Always 0.
  int32_t OnBeforeOpen();

  // --- Folders and names ---------------------------------------------------
  // Each writes a path of at most 259 characters into `out` (260 bytes). -1
  // for a null `out`, and -1 with `out` empty for a path that does not fit.
  int32_t GetRootDir(char* out);
  int32_t GetProjectDir(char* out);
  int32_t GetProjectFilePath(char* out);
  int32_t GetProjectFileName(char* out);
  int32_t GetProjectFileName(std::string* out);
  int32_t GetMediaDir(char* out);
  int32_t GetAvInDir(char* out);
  int32_t GetAvDir(char* out);
  int32_t GetAudioDir(char* out);
  int32_t GetGraphicsDir(char* out);
  int32_t GetMiscDir(char* out);
  int32_t GetDatabaseDir(char* out);
  int32_t GetRepositoryDir(char* out);
  int32_t GetTimelineDir(char* out);
  int32_t GetVersionsDir(char* out);
  int32_t GetWaveFormDir(char* out);
  int32_t GetTmpDir(char* out);
  // Makes the 14 folders of the tree one level at a time, parents first,
  // ignoring every failure; nothing for a project without a name, whose
  // folders would fall on the root's own level. Always 0.
  int32_t MakeDirectories();
  // The first "Project%d" (1 to 259) whose probe below the root does not
  // exist; 0 with `out` unchanged when all exist. -1 for null or a probe
  // that does not fit a path.
  int32_t GetNewProjectName(char* out);
  // The first "Timeline%d" without a .Qzt file in the timeline folder; the
  // disk decides, not the list. -1 for null or a probe that doesn't fit.
  int32_t GetNewTimelineName(char* out);
  // The name of kind (below 2 "Repository%d", 2 "Effects%d", 3 "DMX
  // Preset%d", else empty) for the first n whose Repository<n>.Qzr is
  // missing: the number runs across all kinds.
  int32_t GetNewRepositoryName(char* out, int32_t kind);

  // --- Undo and redo -------------------------------------------------------
  // Top record's 100 text bytes and code (each only where not null); false
  // on an empty stack, which writes nothing.
  bool GetUndoInfo(char* text, int32_t* code);
  bool GetRedoInfo(char* text, int32_t* code);
  // A copy of record on the stack; with bClearRedo the redo stack is emptied
  // first. Past 800 records the oldest is dropped. Always 0.
  int32_t PushUndoRecord(const CUndoData* record, uint8_t bClearRedo);
  int32_t PushRedoRecord(const CUndoData* record);
  // A snapshot of timeline with up to 100 bytes of text (not terminated
  // when it fills them). A null timeline changes nothing. Always 0.
  int32_t PushUndo(const CTimeline* timeline, const char* text, uint8_t bClearRedo);
  int32_t PushRedo(const CTimeline* timeline, const char* text);
  // Takes the top record off (into out when not null); false when empty.
  bool PopUndo(CUndoData* out);
  bool PopRedo(CUndoData* out);
  bool ClearUndoAndRedo();  // always true
  bool ClearRedo();         // always true
  bool ClearUndo();         // always false

  // --- Lists ---------------------------------------------------------------
  // Appends without any lock of its own and takes ownership; marks. -1 for null.
  int32_t AddTimeline(CTimeline* timeline);
  int32_t AddRepository(CRepository* repository);
  // Removes the stored twin of the argument; with bDeleteFiles 1 removes
  // <name>.Qzt, .Bk1 and .Bk2 from the timeline folder. Marks. -1 for null.
  // A twin or the stored object itself may be passed.
  int32_t RemoveTimeline(const CTimeline* timeline, uint8_t bDeleteFiles);
  // The same; with bDeleteFile 1 only <name>.Qzr goes, the backups stay.
  int32_t RemoveRepository(const CRepository* repository, uint8_t bDeleteFile);
  // Whether a timeline (repository) is named like the file of path, without
  // extension and case-blind. False for null.
  bool HasTimeline(const char* path);
  bool HasRepository(const char* path);
  // Takes and lets go of the timeline list's lock, then marks; -1 for 0.
  int32_t TouchTimelines(uint32_t value);
  // Mark the project changed; the arguments are not used. Always 0.
  int32_t MarkChanged(uint32_t value);
  int32_t MarkChanged(uint32_t valueA, uint32_t valueB);
  // Do nothing. Always 0.
  int32_t ReservedHook(uint32_t value);
  int32_t ReservedHookB(uint32_t value);
  int32_t ReservedHookC(uint32_t value);

  // --- Timelines and repositories by id ------------------------------------
  // The stored timeline with the argument's iId; nothing when there is none.
  // Setters mark only when they found it. -1 for null.
  int32_t SetTimeline(const CTimeline* timeline);
  int32_t GetTimeline(CTimeline* out);
  int32_t SetTimelineMarkers(const CTimeline* timeline);
  int32_t GetTimelineMarkers(CTimeline* out);
  // Copy fViewA, fViewB and cViewB track by track when both timelines have
  // as many tracks; never marks.
  int32_t SetTrackViews(const CTimeline* timeline);
  int32_t GetTrackViews(CTimeline* out);
  // The stored cursor cut towards zero; 0 when not found or null.
  int64_t GetTimelineCursor(const CTimeline* timeline);
  // A cursor move is no change of the project: it does not mark.
  int32_t SetTimelineCursor(const CTimeline* timeline, int64_t timeMs);
  int32_t SetRepository(const CRepository* repository);
  int32_t GetRepository(CRepository* out);

  // --- Tracks and components in all timelines ------------------------------
  // "First" below: the first match in each track (or timeline) is used and
  // the walk goes on in the next, so a twin elsewhere is still visited.
  int32_t SetTrack(const CTrack* track);  // first in each timeline; marks
  int32_t GetTrack(CTrack* out);          // first in each timeline
  // Index in the last timeline that holds it; -1 for none or null.
  int32_t GetTrackIndex(const CTrack* track);
  // First in each track takes a copy of component; marks on each match.
  int32_t UpdateComponent(const CComponent* component);
  // The free-standing component when the id is its own (no lock, no mark);
  // else every match is copied to out and marks. -1 for null.
  int32_t GetComponent(CComponent* out);
  // Each stored component takes a copy of the list element with its id and
  // marks; with bMoveTracks it moves to the track its iLine names when that
  // lies inside the timeline. -1 for null; nothing for an empty list.
  int32_t UpdateComponents(CComponentList* list, uint8_t bMoveTracks);
  // Each list element takes a copy of the stored component with its id;
  // marks on each match. -1 for null; nothing for an empty list.
  int32_t FetchComponents(CComponentList* list);
  // First in each track: the bit patterns a, b into fParamA, fParamB.
  // -1 for id 0. Marks on each match.
  int32_t SetComponentParams(uint32_t idLow, uint32_t idHigh, uint32_t a, uint32_t b);
  // First in each track: value into fParamB when which is not 0, else fParamA.
  int32_t SetComponentParam(uint32_t idLow, uint32_t idHigh, uint32_t which, uint32_t value);
  // out emptied, then copies of the component with the id and of every
  // component linked to it, from all timelines. -1 for null.
  int32_t CollectLinked(uint32_t idLow, uint32_t idHigh, CComponentList* out);
  // out emptied, then copies of the components of one timeline that cover
  // timeMs, both ends included. -1 for null.
  int32_t CollectAtTime(int64_t timelineId, CComponentList* out, int64_t timeMs);
  // out emptied, then a copy of every component. -1 for null.
  int32_t CopyAllComponents(CComponentList* out);
  // Components whose media has moved (cMediaMoved not 0).
  int32_t CountMovedMedia();
  // The largest iSerial, from 0.
  int32_t GetMaxSerial();
  // Index of the track that holds it, in the last timeline that does; -1.
  int32_t GetComponentTrackIndex(const CComponent* component);
  // The state byte `which` of the track that holds it, as a signed number;
  // kinds 5 and 6 have none (1 for which 1, else 0). 0 for null.
  int32_t GetComponentTrackFlag(const CComponent* component, uint32_t which);
  // cInUse of each repository component: 1 when a timeline component has
  // the same path (case-blind), else 0. -1 for null.
  int32_t MarkUsedMedia(CRepository* repository);

  // === Open, save, backup sets and versions (ProjectOpenSave.cpp,
  // ProjectVersions.cpp) ===================================================
  // Paths are taken from the application directory, which is current while
  // these run; the caller's current directory comes back afterwards.
  // A new project: the template Default.qzpj of the application directory
  // with Timeline1.Qzt and Repository1.Qzr beside it, saved under
  // rootPath/projectName (either may be null). Always 0.
  int32_t Create(const char* rootPath, const char* projectName);
  // Reads the project file at path (bFull 1: with its timelines,
  // repositories and video mode). A moved project takes its root from path.
  // -1 for null, no stream, a record size below 1 or above 1873, or a
  // wrong mark. A missing file is created empty (and then refused).
  int32_t Open(const char* path, uint8_t bFull);
  // Reads a set saved under another extension (a .Bk1 set, a copy): the
  // timelines and repositories with path's extension, no root check.
  int32_t OpenWithExtension(const char* path);
  // Writes the project file and every timeline and repository file, with
  // backup rotation; what it wrote is on disk when it returns (see
  // SetSaveDurability). -1 for null or a project file that can't be written,
  // and then nothing on disk has changed.
  int32_t Save(char* path);
  // RotateBackupFiles(path, bForce) when the project changed or bForce is
  // set. Always 0.
  int32_t RotateBackups(const char* path, uint8_t bForce);
  // Replaces the list by the named files of folder (null: the project's
  // folder of that kind) with extension (null or empty: .Qzt / .Qzr);
  // missing files are skipped. -1 for null names.
  int32_t LoadTimelines(CProjectFileList* names, const char* folder, const char* extension);
  int32_t LoadRepositories(CProjectFileList* names, const char* folder, const char* extension);
  // Each into the project's folder of its kind with extension (null: .Qzt /
  // .Qzr; empty: none). Always 0.
  int32_t SaveTimelines(const char* extension);
  int32_t SaveRepositories(const char* extension);
  // At least one timeline and one media repository. Always 0.
  int32_t EnsureDefaultContent();
  // Writes the state in memory as a .Bk1 set beside path; -1 when nothing
  // changed since the last one, or on failure.
  int32_t SaveBackup(const char* path);
  // The first n without a Versions/Version<n>/ folder.
  int32_t GetNextVersionNumber();
  // Copies the database files as they stand on disk to Versions/<name>/.
  int32_t CreateVersion();  // always 0
  int32_t CreateNamedVersion(const char* name);
  int32_t DeleteVersion(const char* name, uint32_t bRemoveFolders);
  int32_t DeleteVersionFiles(const char* folder, uint32_t bRemoveFolders);
  int32_t RestoreVersion(const char* folder);
  // === end of open, save, backup sets and versions ========================

  // Members, in this order.
  int32_t iModified = 0;     // 1 after an edit: the next save rotates backups
  int32_t iChangeCount = 0;  // counts edits; compared with iBackupCount only
  int32_t iBackupCount = 0;  // iChangeCount when the last backup set was written
  CProjectData projectData;  // the head record
  CDataLock lockProject;     // held while a project is created
  int32_t bOpen = 0;         // 1 while a project is held; for the application
  CComponent freeComponent;  // outside every timeline; see GetComponent
  CTimelineList* pTimelineList;
  CRepositoryList* pRepositoryList;
  CDeviceMode videoMode;
  CDataLock lockUndo;                 // guards both stacks, always with owner code 0
  CPointerArray<CUndoData> undoList;  // the last record is the top
  CPointerArray<CUndoData> redoList;

 private:
  // iModified = 1 and iChangeCount + 1, safe from concurrent walks.
  void Mark();
  bool GetStackInfo(CPointerArray<CUndoData>& stack, char* text, int32_t* code);
  void PushOnto(CPointerArray<CUndoData>& stack, const CUndoData& record);
  bool PopFrom(CPointerArray<CUndoData>& stack, CUndoData* out);
  void ClearStack(CPointerArray<CUndoData>& stack);
  // A snapshot of timeline, with text cut at 100 bytes, into record.
  static void Snapshot(CUndoData& record, const CTimeline& timeline, const char* text);
  // Removes <folder><name><extension>; nothing for a path that does not fit.
  void RemoveFolderFile(int32_t (CProject::*folder)(char*), const char* name,
                        const char* extension);
};
