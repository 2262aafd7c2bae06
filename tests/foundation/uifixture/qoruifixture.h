// SPDX-License-Identifier: MIT
// A small designed form, built the same way by the program that exports it
// as a form file while the tests build and by the test that compiles that
// file with uic: what the form holds is written here once.
#pragma once

#include "foundation/qorcomponents.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRect>
#include <QTabWidget>

#include <vector>

struct FixturePart
{
    const char *name;
    const char *className;
    QRect geometry; // empty for a page, which its container places
};

inline const std::vector<FixturePart> &fixtureParts()
{
    static const std::vector<FixturePart> parts{
        {"OkButton", "QPushButton", QRect(12, 200, 90, 28)},
        {"NameLabel", "QLabel", QRect(12, 14, 70, 22)},
        {"NameEdit", "QLineEdit", QRect(90, 14, 160, 24)},
        {"OptionsBox", "QGroupBox", QRect(12, 48, 238, 70)},
        {"VerboseCheck", "QCheckBox", QRect(10, 26, 120, 24)},
        {"Pages", "QTabWidget", QRect(260, 14, 200, 160)},
        {"FirstPage", "QWidget", QRect()},
        {"SecondPage", "QWidget", QRect()},
        {"PageButton", "QPushButton", QRect(8, 8, 100, 26)},
    };
    return parts;
}

// Builds the form on Stage, which owns every part.
inline void buildFixtureForm(QWidget *Stage)
{
    Stage->setObjectName(QStringLiteral("FixtureForm"));
    Stage->resize(480, 240);
    const auto place = [Stage](QWidget *Widget, const char *Name, QWidget *Parent) {
        Widget->setObjectName(QString::fromLatin1(Name));
        Widget->setParent(Parent);
        for (const FixturePart &part : fixtureParts()) {
            if (qstrcmp(part.name, Name) == 0 && !part.geometry.isEmpty())
                Widget->setGeometry(part.geometry);
        }
        InsertComponent(Stage, Widget);
    };
    auto *ok = new QPushButton(QStringLiteral("OK"));
    ok->setDefault(true);
    place(ok, "OkButton", Stage);
    auto *label = new QLabel(QStringLiteral("Name:"));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    place(label, "NameLabel", Stage);
    auto *edit = new QLineEdit;
    edit->setMaxLength(40);
    edit->setEchoMode(QLineEdit::Password);
    place(edit, "NameEdit", Stage);
    auto *box = new QGroupBox(QStringLiteral("Options"));
    place(box, "OptionsBox", Stage);
    auto *check = new QCheckBox(QStringLiteral("Verbose"));
    check->setChecked(true);
    place(check, "VerboseCheck", box);
    auto *tabs = new QTabWidget;
    place(tabs, "Pages", Stage);
    auto *first = new QWidget;
    first->setObjectName(QStringLiteral("FirstPage"));
    tabs->addTab(first, QStringLiteral("First"));
    InsertComponent(Stage, first);
    auto *second = new QWidget;
    second->setObjectName(QStringLiteral("SecondPage"));
    tabs->addTab(second, QStringLiteral("Second"));
    InsertComponent(Stage, second);
    place(new QPushButton(QStringLiteral("On a page")), "PageButton", second);
}
