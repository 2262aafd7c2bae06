// Uses the installed library: a design message, the class registry and the
// ownership of components; prints what it found.
#include <designer/qordesigner.h>
#include <foundation/qorclasses.h>
#include <foundation/qorcomponents.h>

#include <QApplication>
#include <QPushButton>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QWidget form;
    QObject *button = CreateRegisteredComponent(QStringLiteral("QPushButton"));
    button->setObjectName(QStringLiteral("Button1"));
    static_cast<QWidget *>(button)->setParent(&form);
    InsertComponent(&form, button);
    std::printf("sizer-moved=%u same=%d\n", QORM_SizerMoved,
                int(QorRegisterWindowMessage(QStringLiteral("qor.sizermovedmsg")) == QORM_SizerMoved));
    std::printf("owned=%d first=%s\n", ComponentCount(&form),
                qPrintable(Components(&form, 0)->objectName()));
    return 0;
}
