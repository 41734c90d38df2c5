#pragma once
// Page-level buffer blocks: `count` buffers of one rounded size in a single
// anonymous mapping, zeroed by the system. A failed allocation is the one
// place where the library speaks: it hands "Out of Memory Error!" with the
// caption "AllocBuffers Error" to a replaceable handler (stderr by default;
// a GUI installs a message box).

#include <cstddef>
#include <cstdint>

// Shows a failure message; `text` and `caption` are the library's own.
using AllocErrorHandler = void (*)(const char* text, const char* caption);

// Installs `handler` (null: the stderr default) and returns the one before.
AllocErrorHandler SetAllocErrorHandler(AllocErrorHandler handler);

// One block of count x n bytes, n = size + extra rounded up to a multiple
// of `alignment` when that is above 1. Null, after the message, when the
// block can't be had (a product of 0 or below included). Counts every call.
void* AllocBuffers(int32_t count, int32_t size, int32_t extra, int32_t alignment);

// Releases *block when it isn't null, sets it to null and counts the call,
// so that a block can't be freed twice. A null *block changes nothing.
void FreeBuffers(void** block);

// Bytes of a block that AllocBuffers gave and FreeBuffers hasn't released
// (count x rounded size); 0 for any other pointer.
size_t GetBufferBytes(const void* block);

// Calls of AllocBuffers, and calls of FreeBuffers that freed, so far.
uint32_t GetAllocCount();
uint32_t GetFreeCount();
