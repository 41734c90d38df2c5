#include "app/DialogUnits.h"

#include <QFontMetrics>

namespace tachyrun {

DialogBaseUnits BaseUnitsOf(const QFont& font) {
  const QFontMetrics metrics(font);
  const int iAdvance = metrics.horizontalAdvance(
      QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
  return DialogBaseUnits{(iAdvance / 26 + 1) / 2, metrics.height()};
}

int MulDivRound(int a, int b, int c) {
  if (c <= 0) return 0;  // only positive divisors (4 and 8) are used
  const long long llProduct = static_cast<long long>(a) * b;
  const long long llHalf = c / 2;
  return static_cast<int>(llProduct >= 0 ? (llProduct + llHalf) / c : (llProduct - llHalf) / c);
}

QRect MapDialogRect(const DialogBaseUnits& units, int x, int y, int cx, int cy) {
  return QRect(MulDivRound(x, units.iBaseX, 4), MulDivRound(y, units.iBaseY, 8),
               MulDivRound(cx, units.iBaseX, 4), MulDivRound(cy, units.iBaseY, 8));
}

}  // namespace tachyrun
