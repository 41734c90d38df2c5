#pragma once
// CMemoryStream: a FILE* over a growable buffer in memory, with the seeks,
// positions and reads of a file. The records of a timeline or repository
// are written and read at absolute positions; on a real file each such seek
// costs a system call (a write stream flushes, a read stream drops its
// buffer), on this stream it costs a copy. Whole files go through it: read
// in with one read, written out with one write, byte for byte the same.

#include <sys/types.h>

#include <cstddef>
#include <cstdio>
#include <vector>

class CMemoryStream {
 public:
  // Files larger than this are not taken into memory; the caller works on
  // the file itself then.
  static constexpr long kLargestInMemory = 256L * 1024 * 1024;

  CMemoryStream();
  ~CMemoryStream();
  CMemoryStream(const CMemoryStream&) = delete;
  CMemoryStream& operator=(const CMemoryStream&) = delete;

  // The stream, positioned at its start; null when it couldn't be made.
  FILE* Stream() const { return m_pStream; }
  // Empties the content, keeping the memory for the next one.
  void Clear();
  // Replaces the content by the whole of file (read from its start) and
  // goes back to the start. False for a file that can't be read or is larger
  // than kLargestInMemory.
  bool ReadFrom(FILE* file);
  // Writes the whole content to file from its start. False when not all of
  // it was written.
  bool WriteTo(FILE* file);

 private:
  static ssize_t ReadCookie(void* cookie, char* buffer, size_t size);
  static ssize_t WriteCookie(void* cookie, const char* buffer, size_t size);
  static int SeekCookie(void* cookie, off64_t* offset, int whence);

  std::vector<char> m_Data;
  size_t m_Position = 0;
  FILE* m_pStream = nullptr;
};
