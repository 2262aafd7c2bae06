// SPDX-License-Identifier: MIT
// The library's pictures: an image for each class a designer offers (Qt's
// stock widgets, QTimer and the library's own components) and the glyphs
// of the component tree's nodes. They are compiled into the library under
// :/qordesign/images (classes/<ClassName>.png, glyphs/<Name>.png), each with
// an @2x file that the icons below carry for screens of device pixel ratio 2.
#pragma once

#include "qordesign_export.h"

#include <QIcon>
#include <QString>
#include <QStringList>

struct QMetaObject;

// The image of a class, 24 by 24: the class's own, else that of its nearest
// ancestor that has one (a QPushButton subclass shows the button). A null
// icon when no class on the way up has one, and for a null Class.
QORDESIGN_EXPORT QIcon QorClassImage(const QMetaObject *Class);

// The image of the class of exactly that name (case-sensitive); a null icon
// when it has none.
QORDESIGN_EXPORT QIcon QorClassImage(const QString &ClassName);

// A glyph of the component tree, 16 by 16: "GlyphDefEmpty" (a node of no
// kind), "GlyphDefComp" (a non-visual component), "GlyphDefControl" (a
// control) or "GlyphDefForm" (a form). A null icon for any other name.
QORDESIGN_EXPORT QIcon QorGlyph(const QString &Name);

// An image of the palette, 24 by 24: "Deselector" (the pointer that
// chooses no class). A null icon for any other name.
QORDESIGN_EXPORT QIcon QorPaletteImage(const QString &Name);

// The names of the classes that have an image, sorted.
QORDESIGN_EXPORT QStringList QorClassImageNames();
