#pragma once
// Dialog units to pixels through the base units of the dialog's font, the way
// dialog templates are laid out: baseX from the average width of the Latin
// letters, baseY from the font height.

#include <QFont>
#include <QRect>

namespace tachyrun {

struct DialogBaseUnits {
  int iBaseX;
  int iBaseY;
};

DialogBaseUnits BaseUnitsOf(const QFont& font);
// a * b / c rounded half away from zero, as dialog mapping rounds; 0 for c <= 0.
int MulDivRound(int a, int b, int c);
QRect MapDialogRect(const DialogBaseUnits& units, int x, int y, int cx, int cy);

}  // namespace tachyrun
