#pragma once
// The check of an --image file before any test runs: the effect test itself
// takes whatever it is given and renders an empty source for a bad file, so a
// headless run checks first and stops with a usage error.

#include <string>

namespace tachyrun {

// Empty when `strPath` names a readable file that decodes as an image; else
// why not, as one sentence for the user.
std::string ImageFileProblem(const std::string& strPath);

}  // namespace tachyrun
