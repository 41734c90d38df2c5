// tachyrun-slider-demo: three bitmap sliders and the notifications they post.
// --quit-after MS closes it on its own (for a smoke test).
#include <QApplication>
#include <QCommandLineParser>
#include <QTimer>

#include "controls/demo/SliderDemo.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Bitmap slider demo"));
  parser.addHelpOption();
  const QCommandLineOption quitAfter(QStringLiteral("quit-after"),
                                     QStringLiteral("Quit after <ms> milliseconds."),
                                     QStringLiteral("ms"));
  parser.addOption(quitAfter);
  parser.process(app);

  tachyrun::CSliderDemo demo;
  demo.show();
  if (parser.isSet(quitAfter)) {
    QTimer::singleShot(parser.value(quitAfter).toInt(), &app, &QCoreApplication::quit);
  }
  return QApplication::exec();
}
