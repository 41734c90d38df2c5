#pragma once
// CSaveSet: the files of one project save, written so that a crash at any
// moment leaves the last completed save readable, either from the main files
// or from the .Bk1 set beside them.
//
// Stage writes each new file under a side name (path + ".New"); the main
// files are not touched. Commit then moves the generations in three passes
// over all staged files: .Bk1 to .Bk2; a hard link of the main file as .Bk1
// (the main file stays in place); the staged file renamed over the main
// file. Until the first rename the main set is the old save; from then on the
// .Bk1 set is. The end state is that of a plain rotation: .Bk2 the former
// .Bk1, .Bk1 the former main file, the main file the new one.
//
// A marker file (the project file's path + ".Commit") stands while the
// renames run. A save that finds it knows that the main set may be a mix of
// two saves and that the .Bk1 set is the last whole one: it then leaves all
// backups as they are, so that the whole set is not rotated away.
//
//   CSaveSet set(projectFile + kCommitSuffix);
//   if (!set.Stage(path, true, false, [&](FILE* s) { return Write(s); })) ...
//   set.Commit();
//
// With durability on (the default) every staged file is flushed to the disk
// before it is renamed, and each folder after its renames, so that what a
// save wrote survives a power loss too. No byte of a file changes for it.

#include <cstdio>
#include <functional>
#include <string>
#include <utility>
#include <vector>

// Process-wide: whether saves wait for the disk. On by default; tools and
// benchmarks that don't need it may switch it off.
void SetSaveDurability(bool durable);
bool IsSaveDurable();

// The name a file is staged under before a save commits it.
inline constexpr const char* kStagedSuffix = ".New";
// The marker beside a project file while a save's renames run.
inline constexpr const char* kCommitSuffix = ".Commit";

// Whether the last save to projectFile was stopped during its renames: its
// main set may then mix two saves, and its .Bk1 set is the last whole one.
bool IsSaveInterrupted(const char* projectFile);

class CSaveSet {
 public:
  explicit CSaveSet(std::string markerPath) : m_MarkerPath(std::move(markerPath)) {}
  // Removes staged files that were never committed.
  ~CSaveSet();
  CSaveSet(const CSaveSet&) = delete;
  CSaveSet& operator=(const CSaveSet&) = delete;

  // Writes path's new content through write into the staged file. rotate:
  // the main file moves on to .Bk1 at the commit. keepTail: the staged file
  // starts as a copy of the main file, so that a shorter new content leaves
  // the old tail behind it, as an overwrite in place would. False when the
  // main file exists but can't be written, or the staged file can't be
  // made or write says false; nothing is kept then. A path staged twice
  // keeps the second content.
  bool Stage(const std::string& path, bool rotate, bool keepTail,
             const std::function<bool(FILE*)>& write);
  // Moves every staged file into place as described above.
  void Commit();

 private:
  struct Entry {
    std::string path;
    bool rotate;
  };
  static std::string Staged(const std::string& path) { return path + kStagedSuffix; }
  std::string m_MarkerPath;
  std::vector<Entry> m_Entries;
  bool m_bCommitted = false;
};
