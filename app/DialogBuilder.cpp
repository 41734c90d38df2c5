#include "app/DialogBuilder.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace tachyrun {
namespace {

constexpr int kIconPixels = 32;

QWidget* MakeControl(QDialog& dialog, const ControlTemplate& c, const QIcon& icon) {
  switch (c.eKind) {
    case ControlKind::DefaultButton:
    case ControlKind::Button: {
      auto* button = new QPushButton(QString::fromUtf8(c.szText), &dialog);
      button->setDefault(c.eKind == ControlKind::DefaultButton);
      return button;
    }
    case ControlKind::Edit: {
      auto* edit = new QLineEdit(&dialog);
      edit->setReadOnly(c.bReadOnly);
      edit->setFrame(true);
      return edit;
    }
    case ControlKind::Static:
      return new QLabel(QString::fromUtf8(c.szText), &dialog);
    case ControlKind::Icon: {
      auto* label = new QLabel(&dialog);
      label->setPixmap(icon.pixmap(kIconPixels, kIconPixels));
      return label;
    }
  }
  return nullptr;
}

}  // namespace

QFont DialogFont() {
  QFont font(QString::fromUtf8(kDialogFontFamily));
  font.setPointSize(kDialogFontPoints);
  return font;
}

std::map<int, QWidget*> BuildDialog(QDialog& dialog, const DialogTemplate& tmpl,
                                    const QIcon& icon) {
  dialog.setWindowTitle(QString::fromUtf8(tmpl.szCaption));
  // Caption, system menu, modal frame: no minimise or maximise box.
  dialog.setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                        Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
  dialog.setFont(DialogFont());
  const DialogBaseUnits units = BaseUnitsOf(dialog.font());
  dialog.setFixedSize(MapDialogRect(units, 0, 0, tmpl.cx, tmpl.cy).size());

  std::map<int, QWidget*> controls;
  for (const ControlTemplate& c : tmpl.controls) {
    QWidget* widget = MakeControl(dialog, c, icon);
    widget->setObjectName(QString::number(c.iId));
    QRect rect = MapDialogRect(units, c.x, c.y, c.cx, c.cy);
    if (c.eKind == ControlKind::Icon) rect.setSize(QSize(kIconPixels, kIconPixels));
    widget->setGeometry(rect);
    widget->setEnabled(c.bEnabled);
    // Hidden controls are created hidden; visible ones show with the dialog.
    if (!c.bVisible) widget->setVisible(false);
    if (c.iId != kIdStaticNone) controls[c.iId] = widget;
  }
  return controls;
}

}  // namespace tachyrun
