#include "qordemowindow.h"
QorDemoWindow::QorDemoWindow(QWidget *parent) : QMainWindow(parent) {}
