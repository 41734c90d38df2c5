#pragma once
// Builds the widgets of a dialog template on a Qt dialog: the dialog font,
// the fixed client size and each control at its mapped geometry, in template
// order (which is the Tab order). objectName of a control is its id.

#include <QDialog>
#include <QIcon>
#include <map>

#include "app/DialogTemplate.h"
#include "app/DialogUnits.h"

namespace tachyrun {

// The pinned dialog font.
QFont DialogFont();

// Sets caption, font, fixed size and window flags of `dialog` and creates
// its controls; returns them by id (statics without id are not listed).
std::map<int, QWidget*> BuildDialog(QDialog& dialog, const DialogTemplate& tmpl, const QIcon& icon);

}  // namespace tachyrun
