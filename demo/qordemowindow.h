// The demo designer's main window.
#pragma once
#include <QMainWindow>
class QorDemoWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit QorDemoWindow(QWidget *parent = nullptr);
};
