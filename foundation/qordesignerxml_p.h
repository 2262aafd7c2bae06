// SPDX-License-Identifier: MIT
// Property values in Qt Designer's XML: the writer and reader shared by the
// clipboard's Designer text and the form files (".ui"). The clipboard keeps
// to the plain value kinds; a form file also carries fonts, size policies,
// cursors, dates and times.
#pragma once

#include <QVariant>

class QMetaProperty;
class QObject;
class QWidget;
class QXmlStreamReader;
class QXmlStreamWriter;

namespace QorDesignerXml {

enum class Dialect {
    // The text the component clipboard offers and pastes.
    ClipboardText,
    // A form file: the clipboard's kinds and the richer values Qt Designer
    // keeps in a form.
    FormFile,
};

// Writes one <property> element per stored, designable, writable property
// of Widget whose value differs from a new instance of its class (all of
// them for a class the registry does not make), the geometry always unless
// WithGeometry is false. objectName is the element's own attribute.
void writeProperties(QXmlStreamWriter &Xml, QWidget *Widget, Dialect Kinds, bool WithGeometry = true);

// Reads the value element Xml stands on into a variant for Property; an
// invalid variant for a value the dialect does not take or that does not
// fit the property.
QVariant readValue(QXmlStreamReader &Xml, const QMetaProperty &Property, Dialect Kinds);

// Reads the <property> element Xml stands on into Object and leaves Xml on
// its end; a property the object does not have, or a value that cannot be
// read or written, is skipped (and reported to the clipboard's category).
void readProperty(QXmlStreamReader &Xml, QObject *Object, Dialect Kinds);

// Widgets, layouts and items nest without a limit in the text: deeper than
// any form the reading stops with EReadError, before the stack runs out.
void checkDepth(int Depth);

} // namespace QorDesignerXml
