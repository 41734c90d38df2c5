#pragma once
// Reads a project from disk for the project tool without writing a byte:
// the head record, the name entries, each timeline and repository file and
// the video mode behind the entries. What does not read as this program
// writes it becomes a finding (file, text), not a failure, so that `check`
// can list them all and the other commands can say what they could not use.
//
// The library's own Open makes the project's folders and may create a
// missing file: a tool that only looks must not do either, so the reading
// is done here with the library's record loaders on read-only streams.

#include <cstdint>
#include <string>
#include <vector>

#include "project/Project.h"

namespace projecttool {

struct Finding {
  std::string file;  // the file it is about
  std::string text;  // what is wrong, one line
};

// One named file of the project: its name entry and what became of it.
struct NamedFile {
  std::string name;
  std::string path;
  bool loaded = false;
};

class CProjectReader {
 public:
  // Reads the project file at path and everything it names into project
  // (which is closed first). False when the project file itself can't be
  // used (missing, not a regular file, bad size or mark): there is then
  // nothing to show, and findings say why. Any other damage is a finding
  // and leaves the rest readable.
  bool Read(const std::string& path, CProject& project);

  const std::vector<Finding>& Findings() const { return m_Findings; }
  const std::vector<NamedFile>& Timelines() const { return m_Timelines; }
  const std::vector<NamedFile>& Repositories() const { return m_Repositories; }
  const std::string& ProjectPath() const { return m_ProjectPath; }
  // Counts as the head record declares them, before they were checked.
  int32_t DeclaredTimelines() const { return m_DeclaredTimelines; }
  int32_t DeclaredRepositories() const { return m_DeclaredRepositories; }
  // Whether a video mode followed the entries (else the default stands).
  bool HasVideoMode() const { return m_HasVideoMode; }

 private:
  void Add(const std::string& file, const std::string& text);
  bool ReadHead(FILE* stream, CProject& project);
  void ReadEntries(FILE* stream, CProject& project);
  void ReadVideoMode(FILE* stream, CProject& project);
  void LoadTimelines(CProject& project);
  void LoadRepositories(CProject& project);

  std::string m_ProjectPath;
  std::vector<Finding> m_Findings;
  std::vector<NamedFile> m_Timelines;
  std::vector<NamedFile> m_Repositories;
  int32_t m_DeclaredTimelines = 0;
  int32_t m_DeclaredRepositories = 0;
  bool m_HasVideoMode = false;
};

// Why path can't be read as a regular file, or empty when it can.
std::string UnreadableReason(const std::string& path);

// The text of a fixed field that may fill its last byte.
std::string FieldString(const char* field, size_t size);

}  // namespace projecttool
