#include "files/SettingsFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace {

struct FreeText {
  void operator()(char* text) const { std::free(text); }
};
using TextPtr = std::unique_ptr<char, FreeText>;

bool IsLineEnd(char c) {
  return c == '\n' || c == '\r';
}
bool IsBlank(char c) {
  return c == ' ' || c == '\t';
}

// Offset behind the head "[section]" in text[0, length), or -1. Two marks
// follow the last "[" and "]" of the current line; a ";" or a line end
// clears them, and every "]" ends one comparison.
ptrdiff_t FindSectionHead(const char* text, size_t length, const char* section) {
  const std::string head = std::string("[") + section + "]";
  size_t start = 0;
  size_t end = 0;
  for (size_t i = 0; i < length; ++i) {
    const char c = text[i];
    if (c == ';') {
      const void* lineFeed = std::memchr(text + i, '\n', length - i);
      if (lineFeed == nullptr) return -1;
      i = static_cast<const char*>(lineFeed) - text;
      start = end = 0;
    } else if (IsLineEnd(c)) {
      start = end = 0;
    } else if (c == '[') {
      start = i;
    } else if (c == ']') {
      end = i + 1;
    }
    if (end >= 1) {
      if (std::strncmp(text + start, head.c_str(), end - start) == 0) {
        return static_cast<ptrdiff_t>(end);
      }
      start = end = 0;
    }
  }
  return -1;
}

// The body of `section`, ended in place at the next "[", or null. Leading
// "[" behind the head are passed over: the body is the first token of the
// rest split at "[".
char* FindSectionBody(char* text, size_t length, const char* section) {
  const ptrdiff_t behindHead = FindSectionHead(text, length, section);
  if (behindHead < 0) return nullptr;
  char* body = text + behindHead;
  while (*body == '[') ++body;
  if (*body == '\0') return nullptr;
  if (char* next = std::strchr(body, '[')) *next = '\0';
  return body;
}

enum class Comments { kSkip, kCount };

// Walks the lines of `body` that aren't empty, in order, and returns the
// first one for which `pick` is true, or null. Comment lines are passed over
// or offered to `pick`, as `comments` says; offered comments also make a "["
// at the start of a line end the walk.
template <typename Pick>
const char* FindLine(const char* body, Comments comments, Pick pick) {
  const char* line = body;
  while (*line != '\0') {
    if (IsLineEnd(*line)) {
      ++line;
      continue;
    }
    if (comments == Comments::kCount && *line == '[') return nullptr;
    if ((comments == Comments::kCount || *line != ';') && pick(line)) return line;
    const char* lineFeed = std::strchr(line, '\n');
    if (lineFeed == nullptr) return nullptr;
    line = lineFeed + 1;
  }
  return nullptr;
}

// The text behind the line's "=", or null when the line has none.
const char* BehindEquals(const char* line) {
  for (const char* p = line; *p != '\0' && !IsLineEnd(*p); ++p) {
    if (*p == '=') return p + 1;
  }
  return nullptr;
}

// Length of the value that starts at `value`: up to its line end, and then
// only up to a terminator inside that span (a section cut at "[" ends the
// value there). -1 when no line end follows before the end of the text.
ptrdiff_t ValueLength(const char* value, const char* textEnd) {
  const char* end = value;
  while (end < textEnd && !IsLineEnd(*end)) ++end;
  if (end == textEnd) return -1;
  return static_cast<ptrdiff_t>(strnlen(value, static_cast<size_t>(end - value)));
}

// A line's name runs to the first blank, tab or "=" (and no further than
// the line).
size_t NameLength(const char* line) {
  size_t length = 0;
  while (line[length] != '\0' && !IsBlank(line[length]) && line[length] != '=' &&
         !IsLineEnd(line[length])) {
    ++length;
  }
  return length;
}

}  // namespace

CSettingsFile::CSettingsFile(const char* path) {
  if (path != nullptr && std::strlen(path) < sizeof m_szPath) std::strcpy(m_szPath, path);
}

CSettingsFile::~CSettingsFile() {
  std::free(m_pszResult);
}

char* CSettingsFile::ReadText(size_t* length) {
  // Non-blocking, so that a pipe or a device named as settings file can't
  // hold the query; only regular files have text to read.
  m_iFile = open(m_szPath, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (m_iFile < 0) return nullptr;
  struct stat info {};
  char* text = nullptr;
  if (fstat(m_iFile, &info) == 0 && S_ISREG(info.st_mode) &&
      static_cast<uint64_t>(info.st_size) <= kMaxSettingsFileSize) {
    const size_t size = static_cast<size_t>(info.st_size);
    text = static_cast<char*>(std::calloc(size + 1, 1));
    if (text != nullptr) {
      lseek(m_iFile, 0, SEEK_SET);
      const ssize_t got = read(m_iFile, text, size);
      *length = got > 0 ? static_cast<size_t>(got) : 0;
    }
  }
  close(m_iFile);
  m_iFile = -1;
  return text;
}

const char* CSettingsFile::KeepResult(const char* text, size_t length) {
  std::free(m_pszResult);
  m_pszResult = static_cast<char*>(std::calloc(length + 1, 1));
  if (m_pszResult != nullptr) std::memcpy(m_pszResult, text, length);
  return m_pszResult;
}

template <typename Result, typename Use>
Result CSettingsFile::InSection(const char* section, Result none, Use use) {
  if (section == nullptr) return none;
  size_t length = 0;
  TextPtr text(ReadText(&length));
  if (!text) return none;
  char* body = FindSectionBody(text.get(), length, section);
  return body != nullptr ? use(body, text.get() + length) : none;
}

template <typename FindLine>
const char* CSettingsFile::QueryValue(const char* section, FindLine findLine) {
  return InSection(section, static_cast<const char*>(nullptr),
                   [&](const char* body, const char* textEnd) -> const char* {
                     const char* line = findLine(body);
                     const char* value = line != nullptr ? BehindEquals(line) : nullptr;
                     if (value == nullptr) return nullptr;
                     while (IsBlank(*value)) ++value;
                     const ptrdiff_t length = ValueLength(value, textEnd);
                     return length >= 0 ? KeepResult(value, static_cast<size_t>(length)) : nullptr;
                   });
}

const char* CSettingsFile::ValueOf(const char* section, const char* key) {
  if (key == nullptr) return nullptr;
  const size_t keyLength = std::strlen(key);
  return QueryValue(section, [&](const char* body) {
    return FindLine(body, Comments::kSkip,
                    [&](const char* line) { return std::strncmp(line, key, keyLength) == 0; });
  });
}

const char* CSettingsFile::ValueAt(const char* section, int32_t index) {
  return QueryValue(section, [&](const char* body) {
    int32_t count = 0;
    return FindLine(body, Comments::kSkip, [&](const char*) { return ++count == index; });
  });
}

namespace {

// The converted value, or the default for no value and an empty one.
template <typename T>
T ValueOr(const char* value, T defaultValue, T (*convert)(const char*)) {
  return value != nullptr && *value != '\0' ? convert(value) : defaultValue;
}

const char* AsText(const char* value) {
  return value;
}

bool IsOn(const char* value) {
  return std::strcmp(value, "ON") == 0 || std::strcmp(value, "TRUE") == 0;
}

// atoi: strtol cut to 32 bits.
int32_t ToInt(const char* value) {
  return static_cast<int32_t>(std::strtol(value, nullptr, 10));
}

float ToFloat(const char* value) {
  return static_cast<float>(std::strtod(value, nullptr));
}

}  // namespace

const char* CSettingsFile::GetString(const char* section, const char* key,
                                     const char* defaultValue) {
  return ValueOr(ValueOf(section, key), defaultValue, AsText);
}

const char* CSettingsFile::GetStringAt(const char* section, int32_t index,
                                       const char* defaultValue) {
  return ValueOr(ValueAt(section, index), defaultValue, AsText);
}

int32_t CSettingsFile::GetInt(const char* section, const char* key, int32_t defaultValue) {
  return ValueOr(ValueOf(section, key), defaultValue, ToInt);
}

int32_t CSettingsFile::GetIntAt(const char* section, int32_t index, int32_t defaultValue) {
  return ValueOr(ValueAt(section, index), defaultValue, ToInt);
}

bool CSettingsFile::GetBool(const char* section, const char* key, bool defaultValue) {
  return ValueOr(ValueOf(section, key), defaultValue, IsOn);
}

bool CSettingsFile::GetBoolAt(const char* section, int32_t index, bool defaultValue) {
  return ValueOr(ValueAt(section, index), defaultValue, IsOn);
}

float CSettingsFile::GetFloat(const char* section, const char* key, float defaultValue) {
  return ValueOr(ValueOf(section, key), defaultValue, ToFloat);
}

float CSettingsFile::GetFloatAt(const char* section, int32_t index, float defaultValue) {
  return ValueOr(ValueAt(section, index), defaultValue, ToFloat);
}

const char* CSettingsFile::GetKeyName(const char* section, int32_t index) {
  static const char kNone[] = "";
  const char* name =
      InSection(section, static_cast<const char*>(nullptr),
                [&](const char* body, const char*) -> const char* {
                  int32_t count = 0;
                  const char* line = FindLine(body, Comments::kCount,
                                              [&](const char*) { return ++count == index; });
                  return line != nullptr ? KeepResult(line, NameLength(line)) : nullptr;
                });
  return name != nullptr ? name : kNone;
}

int32_t CSettingsFile::CountKeys(const char* section) {
  return InSection(section, int32_t{0}, [](const char* body, const char*) {
    int32_t count = 0;
    FindLine(body, Comments::kSkip, [&](const char*) {
      ++count;
      return false;
    });
    return count;
  });
}
