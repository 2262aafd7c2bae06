// SPDX-License-Identifier: MIT
// The form the console's tests design: a stage with its design manager and
// a design center linked to it, and the steps every such test takes
// (placing a component, designing, selecting).
#pragma once

#include "console/qordesignconsole.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "harness/qorguitest.h"

#include <QWidget>

#include <initializer_list>
#include <memory>

namespace QorConsoleTest {

struct StageFixture
{
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();
    TQorDesignManager *manager = new TQorDesignManager(form.get());
    std::unique_ptr<TQorDesignCenter> center = std::make_unique<TQorDesignCenter>();

    explicit StageFixture(const QSize &Size)
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(Size);
    }
    ~StageFixture() { center.reset(); }
    StageFixture(const StageFixture &) = delete;
    StageFixture &operator=(const StageFixture &) = delete;

    // Names and places a widget and makes it a component of the stage.
    void place(QWidget *w, const char *name, const QRect &r)
    {
        w->setObjectName(QLatin1String(name));
        w->setGeometry(r);
        InsertComponent(form.get(), w);
    }
    // Designing on, the form shown with the keyboard.
    bool design()
    {
        manager->SetIsDesigning(true);
        return QorGuiTest::showAndActivate(form.get(), QPoint(20, 20));
    }
    // Selects the controls through the design manager, which tells the
    // center.
    void select(std::initializer_list<QWidget *> Controls)
    {
        bool first = true;
        for (QWidget *control : Controls) {
            manager->SelectControl(control, QPoint(-1, -1), first ? QorDesigner::csmSelect : QorDesigner::csmAdd,
                                   true, false);
            first = false;
        }
    }
    QList<QObject *> selection() const { return center->SelectedComps().toList(); }
};

} // namespace QorConsoleTest
