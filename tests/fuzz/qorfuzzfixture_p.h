// SPDX-License-Identifier: MIT
// What the fuzz targets share: the application object, the form every
// reader reads onto, and the snapshot of that form's owner and widget tree
// that tells whether a read that failed left it exactly as it was.
#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QRect>
#include <QString>

#include <cstddef>
#include <cstdint>

class QObject;
class QWidget;

// Creates the application once (offscreen unless a platform is chosen),
// for the fuzz build; the replay's test program has its own.
void QorFuzzEnsureApplication();

// The form the stream and clipboard targets read onto: owner and parent of
// what is read, holding a few components of its own (a button, a group box
// with a label, a line edit and a timer) whose names the seeds reuse, so
// that name clashes are among what the fuzzer meets. Made once and reused.
QWidget *QorFuzzForm();

// One object as the snapshot sees it.
struct QorObjectState
{
    QPointer<QObject> object;
    const QObject *address = nullptr;
    QString name;
    QByteArray className;
    const QObject *parent = nullptr;
    QRect geometry;
    bool hidden = false;

    bool operator==(const QorObjectState &Other) const;
};

// The owner's components in their order, and every object of the parent's
// tree depth first.
struct QorFormSnapshot
{
    QList<QorObjectState> components;
    QList<QorObjectState> tree;
};

QorFormSnapshot QorSnapshot(QObject *Owner, QObject *Parent);
// Empty when equal, else the first difference in words.
QString QorSnapshotDifference(const QorFormSnapshot &Before, const QorFormSnapshot &After);

// Stops the process with Why when a property the target checks is broken:
// libFuzzer keeps the input as a crash.
void QorFuzzRequire(bool Condition, const QString &Why);
// Stops when After differs from Before.
void QorFuzzRequireUnchanged(const QorFormSnapshot &Before, const QorFormSnapshot &After, const char *Where);

// After a read that succeeded (wholly or partly): the components that were
// there are still there, unchanged and first; the new ones come after them.
// Deletes the new ones, and requires that this brings back the snapshot.
void QorFuzzCheckAddedAndRemove(const QorFormSnapshot &Before, QObject *Owner, QObject *Parent, const char *Where);

// Runs the deletions that were deferred (a clipboard paste discards what
// it could not keep with deleteLater).
void QorFuzzFlushDeletes();

inline QByteArray QorFuzzBytes(const uint8_t *Data, size_t Size)
{
    return QByteArray(reinterpret_cast<const char *>(Data), qsizetype(Size));
}

// Reads the records onto the form as a form file or a clone is read: all
// of them through ReadComponents, the first alone through
// ComponentFromBytes (also into an existing widget of the form), each
// time requiring the form unchanged after a failure, and after a success
// the form's own components unchanged and the new ones removable.
void QorFuzzReadOntoForm(const QByteArray &Records);
