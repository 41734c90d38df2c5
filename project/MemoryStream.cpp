#include "project/MemoryStream.h"

#include <cstring>

CMemoryStream::CMemoryStream() {
  cookie_io_functions_t functions{};
  functions.read = &CMemoryStream::ReadCookie;
  functions.write = &CMemoryStream::WriteCookie;
  functions.seek = &CMemoryStream::SeekCookie;
  functions.close = nullptr;
  m_pStream = ::fopencookie(this, "w+", functions);
}

CMemoryStream::~CMemoryStream() {
  if (m_pStream != nullptr) std::fclose(m_pStream);
}

ssize_t CMemoryStream::ReadCookie(void* cookie, char* buffer, size_t size) {
  auto* self = static_cast<CMemoryStream*>(cookie);
  if (self->m_Position >= self->m_Data.size()) return 0;
  const size_t count = std::min(size, self->m_Data.size() - self->m_Position);
  std::memcpy(buffer, self->m_Data.data() + self->m_Position, count);
  self->m_Position += count;
  return static_cast<ssize_t>(count);
}

ssize_t CMemoryStream::WriteCookie(void* cookie, const char* buffer, size_t size) {
  auto* self = static_cast<CMemoryStream*>(cookie);
  // As on a file, a write past the end fills the gap with zeros.
  if (self->m_Position + size > self->m_Data.size()) self->m_Data.resize(self->m_Position + size);
  std::memcpy(self->m_Data.data() + self->m_Position, buffer, size);
  self->m_Position += size;
  return static_cast<ssize_t>(size);
}

int CMemoryStream::SeekCookie(void* cookie, off64_t* offset, int whence) {
  auto* self = static_cast<CMemoryStream*>(cookie);
  off64_t base = 0;
  if (whence == SEEK_CUR) base = static_cast<off64_t>(self->m_Position);
  if (whence == SEEK_END) base = static_cast<off64_t>(self->m_Data.size());
  const off64_t target = base + *offset;
  if (target < 0) return -1;
  self->m_Position = static_cast<size_t>(target);
  *offset = target;
  return 0;
}

void CMemoryStream::Clear() {
  if (m_pStream != nullptr) std::fflush(m_pStream);
  m_Data.clear();
  m_Position = 0;
  if (m_pStream != nullptr) std::rewind(m_pStream);
}

bool CMemoryStream::ReadFrom(FILE* file) {
  if (m_pStream == nullptr || file == nullptr) return false;
  if (std::fseek(file, 0, SEEK_END) != 0) return false;
  const long size = std::ftell(file);
  if (size < 0 || size > kLargestInMemory) return false;
  std::rewind(file);
  std::fflush(m_pStream);
  m_Data.resize(static_cast<size_t>(size));
  if (size > 0 && std::fread(m_Data.data(), 1, m_Data.size(), file) != m_Data.size()) {
    return false;
  }
  std::rewind(m_pStream);
  return true;
}

bool CMemoryStream::WriteTo(FILE* file) {
  if (m_pStream == nullptr || file == nullptr) return false;
  if (std::fflush(m_pStream) != 0) return false;
  std::rewind(file);
  return m_Data.empty() || std::fwrite(m_Data.data(), 1, m_Data.size(), file) == m_Data.size();
}
