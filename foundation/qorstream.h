// SPDX-License-Identifier: MIT
// The component stream: the binary record that holds one component with its
// stored properties and the components it owns, as the clipboard, cloning and
// form files use it, and a readable text form of those records.
#pragma once

#include "qordesign_export.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

class QIODevice;
class QObject;
class QWidget;

// Writes one component record: signature, class name, name, the stored
// properties whose values differ from a fresh instance of the class, dynamic
// properties, then the components it owns nested under their visual parents.
QORDESIGN_EXPORT void WriteComponent(QIODevice &Stream, QObject *Component);

// Reads one record from the stream's position and leaves the position right
// after it.
// Instance == nullptr: creates the root through the class registry.
// Instance != nullptr: reads the properties and children into that existing
//   object, whose class must be exactly the record's class (else EReadError,
//   Instance unchanged).
// Parent: the parent a widget root gets while it is read.
// Owner: when not null, the root is inserted into it at the end.
// Returns the root. Throws EReadError or EClassNotFound (and EComponentError
// from the insertion into Owner); on any error nothing that was read stays
// alive.
QORDESIGN_EXPORT QObject *ReadComponent(QIODevice &Stream, QObject *Instance = nullptr,
                                        QWidget *Parent = nullptr, QObject *Owner = nullptr);

// As ReadComponent, but a component whose class the class registry does not
// know is left out, with everything nested in it, instead of failing the
// read with EClassNotFound; each component left out is appended to Skipped
// as "Name (Class)" (nested ones too, in record order), and only when the
// read succeeds. The root's class must be known.
QORDESIGN_EXPORT QObject *ReadComponentSkipping(QIODevice &Stream, QStringList &Skipped, QObject *Instance = nullptr,
                                                QWidget *Parent = nullptr, QObject *Owner = nullptr);

// Reads every record from the stream's position to its end, each as
// ReadComponent with the same Parent and Owner. On an error the roots already
// read are destroyed and the error is rethrown.
QORDESIGN_EXPORT QList<QObject *> ReadComponents(QIODevice &Stream, QWidget *Parent = nullptr,
                                                 QObject *Owner = nullptr);

// One record as bytes.
QORDESIGN_EXPORT QByteArray ComponentToBytes(QObject *Component);

// Reads the one record the bytes hold; bytes after it are an EReadError.
QORDESIGN_EXPORT QObject *ComponentFromBytes(const QByteArray &Bytes, QObject *Instance = nullptr,
                                             QWidget *Parent = nullptr, QObject *Owner = nullptr);

// The readable text form (indented JSON, one object per record) of one or
// more concatenated records, and back. Damaged input throws EReadError.
QORDESIGN_EXPORT QString ComponentBinaryToText(const QByteArray &Records);
QORDESIGN_EXPORT QByteArray ComponentTextToBinary(const QString &Text);
