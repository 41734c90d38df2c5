#pragma once
// Read-only access to a plain text file of "[section]" heads and
// "key = value" lines. Nothing is parsed ahead or cached: every query opens
// the file, reads all of it into a fresh buffer, searches that, copies the
// answer out and frees the buffer, so an edit on disk shows at the next query.
//
// The rules of the format, as the searches apply them:
// - a head "[name]" is found anywhere in the text, matched with case; a ";"
//   starts a comment up to the line's end in that search;
// - a section's body runs from behind its head to the next "[", wherever
//   that stands, a "[" inside a value included;
// - a line starting with ";" is a comment, empty lines are passed over;
// - a key matches every line that starts with it ("Size" also finds
//   "SizeX=5", whichever comes first);
// - a value starts behind the "=" and its blanks and tabs and ends at the
//   line's LF or CR; blanks at its end stay;
// - a line without "=", or a last line without a line feed, has no value.
// Missing file, section, key and an empty value all give the default.

#include <cstddef>
#include <cstdint>

#include "files/PathParts.h"

// Files above this size are not read: a settings file is a few kilobytes,
// and every query reads it whole.
inline constexpr size_t kMaxSettingsFileSize = 64u << 20;

class CSettingsFile {
 public:
  // Remembers `path` (at most kPathBufferSize - 1 characters; a longer or
  // null path is remembered as empty, so that every query finds no file
  // instead of opening a cut path).
  explicit CSettingsFile(const char* path);
  ~CSettingsFile();
  CSettingsFile(const CSettingsFile&) = delete;
  CSettingsFile& operator=(const CSettingsFile&) = delete;

  // The value of `key` in `section`, or `defaultValue` (the same pointer).
  // The value lives in m_pszResult until the next query of this object
  // that finds a value or a name.
  const char* GetString(const char* section, const char* key, const char* defaultValue);
  // The same for the index-th entry (from 1) that is neither empty nor a
  // comment.
  const char* GetStringAt(const char* section, int32_t index, const char* defaultValue);

  // atoi of the value.
  int32_t GetInt(const char* section, const char* key, int32_t defaultValue);
  int32_t GetIntAt(const char* section, int32_t index, int32_t defaultValue);

  // True for exactly "ON" and "TRUE" (with case); any other value is false.
  bool GetBool(const char* section, const char* key, bool defaultValue);
  bool GetBoolAt(const char* section, int32_t index, bool defaultValue);

  // atof of the value, narrowed to float.
  float GetFloat(const char* section, const char* key, float defaultValue);
  float GetFloatAt(const char* section, int32_t index, float defaultValue);

  // The name of the index-th line of `section` that isn't empty; comment
  // lines count here. The name runs to the first blank, tab or "=". An
  // empty text when there is no such line.
  const char* GetKeyName(const char* section, int32_t index);

  // Lines of `section` that are neither empty nor comments; 0 for a missing
  // file or section.
  int32_t CountKeys(const char* section);

  char* m_pszResult = nullptr;  // last string result, owned; null at the start
  int32_t m_iFile = -1;         // descriptor while a query reads the file, else -1
  char m_szPath[kPathBufferSize] = {};

 private:
  // A fresh zero-terminated copy of the whole file (free it), or null.
  char* ReadText(size_t* length);
  // Reads the file and gives the body of `section` (ended in place at its
  // "[") and the end of the text to `use`; `none` when either is missing.
  template <typename Result, typename Use>
  Result InSection(const char* section, Result none, Use use);
  // The value of the line that `findLine` picks in the body of `section`,
  // copied into m_pszResult; null when there is no value.
  template <typename FindLine>
  const char* QueryValue(const char* section, FindLine findLine);
  const char* ValueOf(const char* section, const char* key);
  const char* ValueAt(const char* section, int32_t index);
  // Replaces m_pszResult by a copy of `length` characters of `text`.
  const char* KeepResult(const char* text, size_t length);
};
