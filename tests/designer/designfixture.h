// SPDX-License-Identifier: MIT
// What the design surface's tests share: a form with a control of each kind
// designed through a design manager, a design center that records what the
// manager tells it, and small geometry helpers. Used by the proxies', the
// sizers', the manager's and the surface's tests.
#pragma once

#include "designer/qordesigner_p.h"
#include "designer/qormanager.h"
#include "harness/qorguitest.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTextEdit>

#include <memory>

namespace QorDesignFixture {

// A design center that records what the manager tells it and offers a
// class for insertion.
class FakeCenter final : public IQorDesignCenter
{
public:
    const QMetaObject *chosen = nullptr;
    int selChanged = 0;
    int selMoved = 0;
    int created = 0;
    QList<QObject *> modified;

    void DesignerSelCompChanged() override { ++selChanged; }
    void DesignerSelCompMoved() override { ++selMoved; }
    void SetDirty(bool) override {}
    void DesignStageCompsModified(QObject *Component, TQorCompOperation) override { modified.append(Component); }
    const QMetaObject *GetPalleteSelectedClass() const override { return chosen; }
    void DynCompCreated(QObject *) override
    {
        ++created;
        chosen = nullptr;
    }
    void DelSelCtrls() override {}
    void RefreshCompTree() override {}
};

template<class T>
T *placed(QWidget *parent, const char *name, const QRect &geometry)
{
    auto *w = new T(parent);
    w->setObjectName(QLatin1String(name));
    w->setGeometry(geometry);
    return w;
}

// The form every test designs: three buttons in a row, a group box with a
// button and a label, a line edit, a spin box, a combo box, a text edit
// and a tab widget with two pages.
struct Form
{
    std::unique_ptr<QWidget> form;
    QPushButton *b1, *b2, *b3, *b4, *b5;
    QGroupBox *group;
    QLabel *label;
    QLineEdit *edit;
    QSpinBox *spin;
    QComboBox *combo;
    QTextEdit *text;
    QTabWidget *tabs;
    QWidget *page1, *page2;
    TQorDesignManager *manager;

    Form()
        : form(std::make_unique<QWidget>())
    {
        form->setObjectName(QStringLiteral("Form1"));
        form->resize(640, 480);
        b1 = placed<QPushButton>(form.get(), "Button1", QRect(20, 20, 80, 30));
        b2 = placed<QPushButton>(form.get(), "Button2", QRect(120, 20, 80, 30));
        b3 = placed<QPushButton>(form.get(), "Button3", QRect(220, 20, 80, 30));
        group = placed<QGroupBox>(form.get(), "GroupBox1", QRect(20, 100, 220, 160));
        b4 = placed<QPushButton>(group, "Button4", QRect(20, 30, 80, 30));
        label = placed<QLabel>(group, "Label1", QRect(20, 90, 80, 20));
        label->setText(QStringLiteral("Label"));
        edit = placed<QLineEdit>(form.get(), "Edit1", QRect(320, 20, 120, 24));
        spin = placed<QSpinBox>(form.get(), "Spin1", QRect(460, 20, 80, 24));
        combo = placed<QComboBox>(form.get(), "Combo1", QRect(320, 60, 120, 24));
        combo->addItems({QStringLiteral("one"), QStringLiteral("two")});
        text = placed<QTextEdit>(form.get(), "Memo1", QRect(460, 60, 150, 80));
        tabs = placed<QTabWidget>(form.get(), "Tabs1", QRect(300, 180, 300, 200));
        page1 = new QWidget;
        page1->setObjectName(QStringLiteral("Page1"));
        page2 = new QWidget;
        page2->setObjectName(QStringLiteral("Page2"));
        tabs->addTab(page1, QStringLiteral("First"));
        tabs->addTab(page2, QStringLiteral("Second"));
        b5 = placed<QPushButton>(page1, "Button5", QRect(10, 10, 80, 30));
        manager = new TQorDesignManager(form.get());
    }

    bool design()
    {
        manager->SetIsDesigning(true);
        return QorGuiTest::showAndActivate(form.get());
    }

    QList<QObject *> selected() const { return manager->SelectedComps().toList(); }
};

// The rectangle grown by the given margin on every side: where a sizer
// lies around its control.
inline QRect outside(const QRect &r, int by)
{
    return r.adjusted(-by, -by, by, by);
}

} // namespace QorDesignFixture
