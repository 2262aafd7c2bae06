// SPDX-License-Identifier: MIT
// The component clipboard: designed components copied to the system
// clipboard as component stream records, and pasted back into a form,
// placed so that a pasted control does not land exactly on top of
// another one. Other programs using the library read and write the same
// format, so components travel between them.
#pragma once

#include "qordesign_export.h"

#include "foundation/qorcomponents.h"

#include <QString>

class QObject;
class QWidget;

// The clipboard format of the component records.
QORDESIGN_EXPORT QString CF_QorComponents();

// The copied widgets as the text Qt Designer puts on the clipboard: a
// ".ui" document whose top-level widget "__qt_fake_top_level" holds one
// widget element per widget (with its child widgets), the properties that
// differ from a new instance's written in Designer's elements. Components
// that are not widgets are left out.
QORDESIGN_EXPORT QString DesignerTextOf(const QList<QObject *> &Components);
// Widgets made from such a text (each top-level widget element, with its
// children) through the class registry, with Parent; unknown classes and
// properties are skipped. Throws EReadError for text that is not such a
// document.
QORDESIGN_EXPORT QList<QWidget *> WidgetsFromDesignerText(const QString &Text, QWidget *Parent);

class QORDESIGN_EXPORT TVhoClipboard
{
public:
    // Puts one record per component, in list order, on the clipboard
    // (replacing what it held); with WithChildren, each widget's child
    // widgets follow it, depth first. An empty list leaves the clipboard
    // as it was.
    void SetComponents(const TComponentList &Components, bool WithChildren);
    // Also puts the widgets among them on the clipboard as Qt Designer's
    // text, so that a paste into Qt Designer creates them.
    // Reads every record on the clipboard and answers the last component
    // read; null when the clipboard holds none. Without records, widgets
    // copied in Qt Designer (its text) are pasted, named uniquely in Owner. Pasted widgets get Parent
    // and move by (DX, DY) until no child of Parent has its corner; Owner,
    // when given, owns each. A record that cannot be read, or a component
    // that cannot be placed or owned (a name the owner has already), is
    // skipped and reading goes on with the next record.
    QObject *GetComponents(QObject *Owner, QWidget *Parent, int DX, int DY);
    // True when the clipboard holds component records.
    bool HasComponents() const;

    // When set, a pasted component whose name Owner already has (or that
    // has none) gets the first free name of its class instead of being
    // skipped. Off by default; the design center turns it on for its
    // paste.
    bool RenameDuplicates() const { return m_renameDuplicates; }
    void SetRenameDuplicates(bool Value) { m_renameDuplicates = Value; }

private:
    bool m_renameDuplicates = false;
};

// The one clipboard object of the process.
QORDESIGN_EXPORT TVhoClipboard *VhoClipboard();
