#include "files/BufferAlloc.h"

#include <sys/mman.h>

#include <atomic>
#include <cstdio>
#include <map>
#include <mutex>

namespace {

void PrintToStderr(const char* text, const char* caption) {
  std::fprintf(stderr, "%s: %s\n", caption, text);
}

std::atomic<AllocErrorHandler> g_ErrorHandler{PrintToStderr};
std::atomic<uint32_t> g_AllocCount{0};
std::atomic<uint32_t> g_FreeCount{0};

// munmap needs the length that VirtualFree never asked for: every live
// block is remembered with its size.
std::mutex g_BlocksMutex;
// Never destroyed, so that a FreeBuffers from a static destructor still finds it.
std::map<const void*, size_t>& Blocks() {
  static auto* blocks = new std::map<const void*, size_t>;
  return *blocks;
}

// count x the rounded size in bytes; 0 when that isn't a positive number.
size_t BlockBytes(int32_t count, int32_t size, int32_t extra, int32_t alignment) {
  int64_t bytes = int64_t{size} + extra;
  if (alignment > 1 && bytes % alignment != 0) bytes = (bytes / alignment + 1) * alignment;
  if (count <= 0 || bytes <= 0) return 0;
  return static_cast<size_t>(bytes) * static_cast<size_t>(count);
}

}  // namespace

AllocErrorHandler SetAllocErrorHandler(AllocErrorHandler handler) {
  return g_ErrorHandler.exchange(handler != nullptr ? handler : PrintToStderr);
}

void* AllocBuffers(int32_t count, int32_t size, int32_t extra, int32_t alignment) {
  const size_t bytes = BlockBytes(count, size, extra, alignment);
  void* block = nullptr;
  if (bytes > 0) {
    block = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED) block = nullptr;
  }
  if (block == nullptr) {
    g_ErrorHandler.load()("Out of Memory Error!", "AllocBuffers Error");
  } else {
    std::lock_guard<std::mutex> guard(g_BlocksMutex);
    Blocks()[block] = bytes;
  }
  ++g_AllocCount;
  return block;
}

void FreeBuffers(void** block) {
  if (block == nullptr || *block == nullptr) return;
  {
    std::lock_guard<std::mutex> guard(g_BlocksMutex);
    auto found = Blocks().find(*block);
    // A pointer that isn't one of ours is left alone, as the system would
    // refuse to release it.
    if (found != Blocks().end()) {
      munmap(*block, found->second);
      Blocks().erase(found);
    }
  }
  *block = nullptr;
  ++g_FreeCount;
}

size_t GetBufferBytes(const void* block) {
  std::lock_guard<std::mutex> guard(g_BlocksMutex);
  auto found = Blocks().find(block);
  return found != Blocks().end() ? found->second : 0;
}

uint32_t GetAllocCount() {
  return g_AllocCount.load();
}
uint32_t GetFreeCount() {
  return g_FreeCount.load();
}
