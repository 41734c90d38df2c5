#pragma once
// The template a new project starts from: Default.qzpj with Timeline1.Qzt
// and Repository1.Qzr beside it, in the application directory (see
// CProject::Create). The build writes it beside the program with the small
// tool tachyrun_make_template, which calls this.

#include <cstdint>

// Writes the three files into folder (replacing what stands there, with no
// backups): a record without root or name, so that opening the template
// makes no folders; one timeline "Timeline1" of the configured default
// length and track set; one media repository "Repository1"; the default
// video mode. 0, or -1 for a null folder or a file that can't be written.
int32_t WriteProjectTemplate(const char* folder);
