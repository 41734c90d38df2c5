#pragma once
// Comparing names the way users type them: without regard to case or outer
// blanks, and only over the first 199 characters. Results are those of
// strcmp (negative, 0, positive). A null text compares as an empty one.

// Upper-cased, trimmed (TrimBlanks) copies of the first 199 characters of
// each, compared.
int CompareNames(const char* a, const char* b);

// Like CompareNames, then `a` is cut at its first comma (within its first
// 150 characters) and both are cut at their first blank: only the first
// words count. Only `a` is cut at a comma, so CompareFirstWords("x,y", "x")
// is 0 but CompareFirstWords("x", "x,y") is not; table lookups depend on
// that, so it stays.
int CompareFirstWords(const char* a, const char* b);
