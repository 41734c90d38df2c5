#pragma once
// Cleaning and splitting the short texts that name things and that come
// from text tables: upper-casing, trimming, line cleaning, comma fields.
// Free functions on plain char buffers owned by the caller. The work
// buffers behind them are limits: a longer text is cut there, never overrun.
// Null arguments make a function do nothing (and return 0 where it counts).

#include <cstddef>
#include <cstdint>

// Limits of the work buffers, terminator included.
inline constexpr size_t kTrimBufferSize = 2000;
inline constexpr size_t kCleanLineBufferSize = 500;

// The byte 0xB3, a vertical box-drawing line of the old console code page;
// names taken from text tables may carry it, so it counts as a blank.
inline constexpr unsigned char kBoxLine = 0xB3;

// ASCII upper case; every other byte stays as it is.
char UpperAscii(char c);

// Copies `text` upper-cased into `out`; nothing else changes, trailing
// blanks included. `out` is a path buffer (260 bytes): at most 259
// characters are written. `out` may be `text`.
void UpperCopy(char* out, const char* text);

// Trims `text` in place; it never grows. Only its first 1,999 characters are
// kept. The text first ends at its first carriage return or 0xB3 at index 1
// or above; then trailing blanks, carriage returns, line feeds and 0xB3 are
// cut back to the last other byte at index 1 or above; then leading blanks,
// 0xB3 and tabs go. When only the first character is non-blank, nothing is
// cut behind it: "A   " stays "A   ". Callers compare names this way, so the
// oddity stays.
void TrimBlanks(char* text);

// Cleans one line in place: each tab becomes four blanks, "|" is dropped, the
// byte 0xA7 and the byte after it (a two-byte formatting mark) are dropped,
// and the text ends at its first line break. Returns the number of bytes
// written, the terminators put in for line breaks included. Since tabs widen
// the text, it must lie in a buffer of kCleanLineBufferSize bytes; at most
// 499 bytes are written.
int32_t CleanTextLine(char* text);

// Copies the field of `text` that starts at *position into `out`, up to the
// next comma, line break or terminator, and never at or past index `limit`.
// A comma that ends the field is stepped over; a line break is not, so the
// next call yields an empty field at the same place. *position is moved on,
// `out` is terminated and trimmed by TrimBlanks, and the count copied before
// trimming comes back. `out` must hold limit - *position + 1 bytes; it may be
// `text` itself when *position is 0. A negative position or one past the end
// of `text` yields an empty field and stays.
int32_t NextCommaField(int32_t* position, int32_t limit, char* out, const char* text);
