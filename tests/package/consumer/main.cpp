// SPDX-License-Identifier: MIT
// Uses the installed library: a design message, the class registry, the
// ownership of components, and a design center joining a design manager
// and an inspector; prints what it found.
#include <console/qordesignconsole.h>
#include <designer/qordesigner.h>
#include <designer/qormanager.h>
#include <foundation/qorclasses.h>
#include <foundation/qorcomponents.h>
#include <inspector/qorinspector.h>

#include <QApplication>
#include <QPushButton>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QWidget form;
    form.setObjectName(QStringLiteral("Form1"));
    QObject *button = CreateRegisteredComponent(QStringLiteral("QPushButton"));
    button->setObjectName(QStringLiteral("Button1"));
    static_cast<QWidget *>(button)->setParent(&form);
    InsertComponent(&form, button);
    std::printf("sizer-moved=%u same=%d\n", QORM_SizerMoved,
                int(QorRegisterWindowMessage(QStringLiteral("qor.sizermovedmsg")) == QORM_SizerMoved));
    std::printf("owned=%d first=%s\n", ComponentCount(&form),
                qPrintable(Components(&form, 0)->objectName()));

    auto *manager = new TQorDesignManager(&form);
    TQorObjInspector inspector;
    TQorDesignCenter center;
    center.SetObjInspector(&inspector);
    center.SetDesignManager(manager);
    std::printf("center-stage=%s inspecting=%s\n", qPrintable(center.GetDesignStage()->objectName()),
                qPrintable(inspector.ActiveComponent() ? inspector.ActiveComponent()->objectName() : QString()));
    return 0;
}
