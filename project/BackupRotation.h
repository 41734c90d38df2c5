#pragma once
// Backup rotation: every file X.<ext> of a project keeps up to two older
// generations beside it, X.Bk1 and X.Bk2, moved along at each save.

#include <cstdint>

// Cuts path at its last dot (of the whole path, a folder's dot included) to
// a base; if base.Bk1 can be read and written it replaces base.Bk2 (unless
// that one is write-protected, when both stay). With flag 0 the main file, if
// it can be read and written, then replaces base.Bk1 and the caller writes a
// new one. Results of remove and rename are not looked at. A path whose
// names don't fit a 260-byte buffer is left alone. Always 0.
int32_t RotateBackupFiles(const char* path, uint8_t flag);
