#include "qordemowindow.h"
#include <QApplication>
int main(int argc, char **argv) { QApplication app(argc, argv); QorDemoWindow w; w.show(); return 0; }
