// SPDX-License-Identifier: MIT
// Qt Designer's form files (".ui"): the designed form written as a form
// that Qt Designer opens and uic compiles, and forms made in Qt Designer
// read onto the stage, their layouts turned into absolute positions.
#pragma once

#include "qordesign_export.h"

#include <QString>
#include <QStringList>

class QWidget;

// The form designed on Stage (the widget that owns the designed
// components) as the text of a form file: Stage becomes the form's
// top-level widget, named after it, with its size; every widget it owns is
// one widget element, nested under its visual parent, siblings in stacking
// order (bottom first); a tab widget's, tool box's or stacked widget's
// pages carry their titles. Only the values that differ from a new
// instance of the class are written (the geometry always). Classes that
// are not Qt's own are declared as custom widgets based on their nearest
// Qt class. Components that are not widgets are left out: a form file
// holds widgets only.
QORDESIGN_EXPORT QString UiTextOf(QWidget *Stage);

// Writes UiTextOf(Stage) to the file, replacing it only once the whole
// text is written: on a failure the file keeps what it held and EQorError
// tells what went wrong.
QORDESIGN_EXPORT void ExportUiFile(QWidget *Stage, const QString &FileName);

// Reads a form file's text onto Stage, beside what Stage holds already:
// each widget of the form is made through the class registry, placed where
// the form's layouts put it at the form's size (the layouts themselves are
// not kept), and owned by Stage under a name no other component of Stage
// has (a taken name gets the first free number of its stem). Spacers are
// not kept. Widgets of classes the registry does not make (custom widgets
// of other programs, unknown classes) are skipped with everything they
// hold; the answer lists each as "name (Class)", in the order of the text.
// Throws EReadError for text that is no form (damaged XML, another root
// element, nesting too deep, too long); Stage is then as it was.
QORDESIGN_EXPORT QStringList ImportUiText(const QString &Text, QWidget *Stage);

// ImportUiText on the text of a file; a file that cannot be read throws
// EReadError too.
QORDESIGN_EXPORT QStringList ImportUiFile(const QString &FileName, QWidget *Stage);
