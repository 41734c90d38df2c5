#pragma once
// Icon 128 of the program, drawn at 48, 32 and 16 pixels.

#include <QIcon>

namespace tachyrun {

QIcon LoadAppIcon();

}  // namespace tachyrun
