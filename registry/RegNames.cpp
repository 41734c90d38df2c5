#include "registry/RegNames.h"

#include <locale.h>
#include <wchar.h>
#include <wctype.h>

#include <climits>
#include <cstring>

namespace {

locale_t Utf8Locale() {
  // Built once; C.UTF-8 is part of the C library, so this holds everywhere
  // the store runs. Without it, only ASCII letters fold.
  static const locale_t loc = newlocale(LC_CTYPE_MASK, "C.UTF-8", static_cast<locale_t>(0));
  return loc;
}

char AsciiUpper(char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c;
}

}  // namespace

std::string FoldRegName(std::string_view name) {
  std::string folded;
  folded.reserve(name.size());
  const locale_t loc = Utf8Locale();
  mbstate_t state{};
  size_t i = 0;
  while (i < name.size()) {
    const unsigned char c = static_cast<unsigned char>(name[i]);
    if (c < 0x80 || loc == static_cast<locale_t>(0)) {
      folded.push_back(AsciiUpper(name[i]));
      ++i;
      continue;
    }
    wchar_t wc = 0;
    std::memset(&state, 0, sizeof state);
    const locale_t old = uselocale(loc);
    const size_t used = mbrtowc(&wc, name.data() + i, name.size() - i, &state);
    if (used == 0 || used > name.size() - i) {
      uselocale(old);
      folded.push_back(name[i]);  // not UTF-8: compare the byte as it is
      ++i;
      continue;
    }
    char out[MB_LEN_MAX];
    std::memset(&state, 0, sizeof state);
    const size_t made =
        wcrtomb(out, static_cast<wchar_t>(towupper_l(static_cast<wint_t>(wc), loc)), &state);
    uselocale(old);
    if (made == static_cast<size_t>(-1)) {
      folded.append(name.data() + i, used);
    } else {
      folded.append(out, made);
    }
    i += used;
  }
  return folded;
}

bool SplitRegPath(std::string_view path, size_t maxName, std::vector<std::string_view>* names) {
  names->clear();
  if (path.size() > 1 && path.back() == '\\') path.remove_suffix(1);
  if (path.empty()) return true;
  while (true) {
    const size_t cut = path.find('\\');
    const std::string_view name = path.substr(0, cut);
    if (name.empty() || name.size() > maxName || names->size() == kMaxRegDepth) return false;
    names->push_back(name);
    if (cut == std::string_view::npos) return true;
    path.remove_prefix(cut + 1);
  }
}
