// SPDX-License-Identifier: MIT
// Descriptors of the value types whose fields the object inspector shows
// as sub-properties (QFont, QSize, QPoint, QRect, QMargins, QSizePolicy,
// QPalette). Each is a gadget holding one value of its type, with one
// property per field, so that the fields are reflected like a class's
// properties; the type information reads and writes them through
// GetValueTypeField and SetValueTypeField.
#pragma once

#include "qordesign_export.h"

#include <QColor>
#include <QFont>
#include <QMargins>
#include <QMetaProperty>
#include <QMetaType>
#include <QPalette>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QSizePolicy>

// The descriptor of a value type, null when the type has none.
QORDESIGN_AUTOTEST_EXPORT const QMetaObject *ValueTypeDescriptor(QMetaType Type);
// The value type a descriptor describes; invalid for other classes.
QORDESIGN_AUTOTEST_EXPORT QMetaType DescribedValueType(const QMetaObject *Descriptor);
// Reads one field of a value through its descriptor; invalid when the
// value is not of the described type.
QORDESIGN_AUTOTEST_EXPORT QVariant ReadValueField(const QVariant &Value, const QMetaObject *Descriptor,
                                         const QMetaProperty &Field);
// Writes one field into a value; false (value unchanged) when the field
// does not take the field value or the value is not of the described type.
QORDESIGN_AUTOTEST_EXPORT bool WriteValueField(QVariant &Value, const QMetaObject *Descriptor,
                                      const QMetaProperty &Field, const QVariant &FieldValue);

class QORDESIGN_AUTOTEST_EXPORT TQorFontFields
{
    Q_GADGET
    Q_CLASSINFO("QorValueType", "QFont")
    Q_PROPERTY(QString family READ family WRITE setFamily)
    Q_PROPERTY(int pointSize READ pointSize WRITE setPointSize)
    Q_PROPERTY(int weight READ weight WRITE setWeight)
    Q_PROPERTY(bool bold READ bold WRITE setBold)
    Q_PROPERTY(bool italic READ italic WRITE setItalic)
    Q_PROPERTY(bool underline READ underline WRITE setUnderline)
    Q_PROPERTY(bool strikeOut READ strikeOut WRITE setStrikeOut)
    Q_PROPERTY(bool kerning READ kerning WRITE setKerning)

public:
    QFont value;

    QString family() const { return value.family(); }
    void setFamily(const QString &v) { value.setFamily(v); }
    int pointSize() const { return value.pointSize(); }
    void setPointSize(int v);
    int weight() const { return value.weight(); }
    void setWeight(int v);
    bool bold() const { return value.bold(); }
    void setBold(bool v) { value.setBold(v); }
    bool italic() const { return value.italic(); }
    void setItalic(bool v) { value.setItalic(v); }
    bool underline() const { return value.underline(); }
    void setUnderline(bool v) { value.setUnderline(v); }
    bool strikeOut() const { return value.strikeOut(); }
    void setStrikeOut(bool v) { value.setStrikeOut(v); }
    bool kerning() const { return value.kerning(); }
    void setKerning(bool v) { value.setKerning(v); }
};

class QORDESIGN_AUTOTEST_EXPORT TQorSizeFields
{
    Q_GADGET
    Q_CLASSINFO("QorValueType", "QSize")
    Q_PROPERTY(int width READ width WRITE setWidth)
    Q_PROPERTY(int height READ height WRITE setHeight)

public:
    QSize value;

    int width() const { return value.width(); }
    void setWidth(int v) { value.setWidth(v); }
    int height() const { return value.height(); }
    void setHeight(int v) { value.setHeight(v); }
};

class QORDESIGN_AUTOTEST_EXPORT TQorPointFields
{
    Q_GADGET
    Q_CLASSINFO("QorValueType", "QPoint")
    Q_PROPERTY(int x READ x WRITE setX)
    Q_PROPERTY(int y READ y WRITE setY)

public:
    QPoint value;

    int x() const { return value.x(); }
    void setX(int v) { value.setX(v); }
    int y() const { return value.y(); }
    void setY(int v) { value.setY(v); }
};

class QORDESIGN_AUTOTEST_EXPORT TQorRectFields
{
    Q_GADGET
    Q_CLASSINFO("QorValueType", "QRect")
    Q_PROPERTY(int x READ x WRITE setX)
    Q_PROPERTY(int y READ y WRITE setY)
    Q_PROPERTY(int width READ width WRITE setWidth)
    Q_PROPERTY(int height READ height WRITE setHeight)

public:
    QRect value;

    // Moving keeps the size, as the x and y of a widget's geometry do.
    int x() const { return value.x(); }
    void setX(int v) { value.moveLeft(v); }
    int y() const { return value.y(); }
    void setY(int v) { value.moveTop(v); }
    int width() const { return value.width(); }
    void setWidth(int v) { value.setWidth(v); }
    int height() const { return value.height(); }
    void setHeight(int v) { value.setHeight(v); }
};

class QORDESIGN_AUTOTEST_EXPORT TQorMarginsFields
{
    Q_GADGET
    Q_CLASSINFO("QorValueType", "QMargins")
    Q_PROPERTY(int left READ left WRITE setLeft)
    Q_PROPERTY(int top READ top WRITE setTop)
    Q_PROPERTY(int right READ right WRITE setRight)
    Q_PROPERTY(int bottom READ bottom WRITE setBottom)

public:
    QMargins value;

    int left() const { return value.left(); }
    void setLeft(int v) { value.setLeft(v); }
    int top() const { return value.top(); }
    void setTop(int v) { value.setTop(v); }
    int right() const { return value.right(); }
    void setRight(int v) { value.setRight(v); }
    int bottom() const { return value.bottom(); }
    void setBottom(int v) { value.setBottom(v); }
};

class QORDESIGN_AUTOTEST_EXPORT TQorSizePolicyFields
{
    Q_GADGET
    Q_CLASSINFO("QorValueType", "QSizePolicy")
    Q_PROPERTY(QSizePolicy::Policy horizontalPolicy READ horizontalPolicy WRITE setHorizontalPolicy)
    Q_PROPERTY(QSizePolicy::Policy verticalPolicy READ verticalPolicy WRITE setVerticalPolicy)
    Q_PROPERTY(int horizontalStretch READ horizontalStretch WRITE setHorizontalStretch)
    Q_PROPERTY(int verticalStretch READ verticalStretch WRITE setVerticalStretch)

public:
    QSizePolicy value;

    QSizePolicy::Policy horizontalPolicy() const { return value.horizontalPolicy(); }
    void setHorizontalPolicy(QSizePolicy::Policy v) { value.setHorizontalPolicy(v); }
    QSizePolicy::Policy verticalPolicy() const { return value.verticalPolicy(); }
    void setVerticalPolicy(QSizePolicy::Policy v) { value.setVerticalPolicy(v); }
    // Qt keeps stretch factors in 0..255.
    int horizontalStretch() const { return value.horizontalStretch(); }
    void setHorizontalStretch(int v) { value.setHorizontalStretch(qBound(0, v, 255)); }
    int verticalStretch() const { return value.verticalStretch(); }
    void setVerticalStretch(int v) { value.setVerticalStretch(qBound(0, v, 255)); }
};

// The colours of a palette's roles, read from the active group and written
// to all groups (what a palette set on a widget usually means).
class QORDESIGN_AUTOTEST_EXPORT TQorPaletteFields
{
    Q_GADGET
    Q_CLASSINFO("QorValueType", "QPalette")
    Q_PROPERTY(QColor window READ window WRITE setWindow)
    Q_PROPERTY(QColor windowText READ windowText WRITE setWindowText)
    Q_PROPERTY(QColor base READ base WRITE setBase)
    Q_PROPERTY(QColor alternateBase READ alternateBase WRITE setAlternateBase)
    Q_PROPERTY(QColor toolTipBase READ toolTipBase WRITE setToolTipBase)
    Q_PROPERTY(QColor toolTipText READ toolTipText WRITE setToolTipText)
    Q_PROPERTY(QColor placeholderText READ placeholderText WRITE setPlaceholderText)
    Q_PROPERTY(QColor text READ text WRITE setText)
    Q_PROPERTY(QColor button READ button WRITE setButton)
    Q_PROPERTY(QColor buttonText READ buttonText WRITE setButtonText)
    Q_PROPERTY(QColor brightText READ brightText WRITE setBrightText)
    Q_PROPERTY(QColor highlight READ highlight WRITE setHighlight)
    Q_PROPERTY(QColor highlightedText READ highlightedText WRITE setHighlightedText)
    Q_PROPERTY(QColor link READ link WRITE setLink)
    Q_PROPERTY(QColor linkVisited READ linkVisited WRITE setLinkVisited)

public:
    QPalette value;

#define QOR_PALETTE_FIELD(getter, setter, role)                                                    \
    QColor getter() const { return value.color(QPalette::Active, QPalette::role); }               \
    void setter(const QColor &v) { value.setColor(QPalette::role, v); }
    QOR_PALETTE_FIELD(window, setWindow, Window)
    QOR_PALETTE_FIELD(windowText, setWindowText, WindowText)
    QOR_PALETTE_FIELD(base, setBase, Base)
    QOR_PALETTE_FIELD(alternateBase, setAlternateBase, AlternateBase)
    QOR_PALETTE_FIELD(toolTipBase, setToolTipBase, ToolTipBase)
    QOR_PALETTE_FIELD(toolTipText, setToolTipText, ToolTipText)
    QOR_PALETTE_FIELD(placeholderText, setPlaceholderText, PlaceholderText)
    QOR_PALETTE_FIELD(text, setText, Text)
    QOR_PALETTE_FIELD(button, setButton, Button)
    QOR_PALETTE_FIELD(buttonText, setButtonText, ButtonText)
    QOR_PALETTE_FIELD(brightText, setBrightText, BrightText)
    QOR_PALETTE_FIELD(highlight, setHighlight, Highlight)
    QOR_PALETTE_FIELD(highlightedText, setHighlightedText, HighlightedText)
    QOR_PALETTE_FIELD(link, setLink, Link)
    QOR_PALETTE_FIELD(linkVisited, setLinkVisited, LinkVisited)
#undef QOR_PALETTE_FIELD
};
