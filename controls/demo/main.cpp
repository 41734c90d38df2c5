// tachyrun-slider-demo: three bitmap sliders and the notifications they post.
#include <QApplication>

#include "controls/demo/SliderDemo.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  tachyrun::CSliderDemo demo;
  demo.show();
  return QApplication::exec();
}
