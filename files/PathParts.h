#pragma once
// Splitting paths held in plain char buffers. The separator is the
// platform's (platform::kPathSeparator). Every output here is a path buffer
// of kPathBufferSize bytes: at most 259 characters and the terminator are
// written, so a longer path is cut rather than overrun. A null argument makes
// a function do nothing.
//
// The splitters share one backward scan from the last character down to
// index 1; index 0 is never examined, so ".txt" has no extension and "/x"
// no directory part.

#include <cstddef>

// The size of every path buffer of the library.
inline constexpr size_t kPathBufferSize = 260;

// Copies at most kPathBufferSize - 1 characters of `text` into `out` and
// terminates it. `out` may be `text` itself.
void CopyPathText(char* out, const char* text);

// `out` = `path` up to and including its last separator; the whole path
// when there is none. "/dir/file" gives "/dir/".
void GetPathPart(const char* path, char* out);

// `out` = the text behind the last separator; the whole path when there is
// none.
void GetFileNamePart(const char* path, char* out);

// `out` = the text from the last dot on, with the dot; empty when there is
// none. The dot search does not stop at a separator: "C:/a.b/c" gives
// ".b/c". Callers rely on this, so it stays.
void GetExtensionPart(const char* path, char* out);

// Ends `path` at its last dot, in place ("C:/a.b/c" becomes "C:/a").
void CutExtension(char* path);
