// SPDX-License-Identifier: MIT
// Designed forms as documents: the design of a design center's stage saved
// to a file and opened again, in the component stream's binary records or
// their readable text, and a recovery copy of unsaved work written in the
// background, which the next start of the application finds after a crash.
#pragma once

#include "qordesign_export.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>

class QWidget;
class TQorDesignCenter;

// A recovery copy another run of the application (or another document of
// this one) left behind.
struct QORDESIGN_EXPORT TQorRecoveryCopy
{
    // The recovery file itself.
    QString RecoveryFileName;
    // The document the unsaved work belonged to; empty for a design that
    // was never saved.
    QString OriginalFileName;
    // When the copy was written.
    QDateTime Written;

    bool isNull() const { return RecoveryFileName.isEmpty(); }
};

class TQorDesignDocumentPrivate;

// The document of the stage a design center designs. Open and save report
// failure by their result and ErrorString(), never by an exception, so
// that an application may call them straight from a menu. A failed save
// keeps the file that was there and the design dirty; a failed open keeps
// the current design as it was.
//
// While the design is dirty the document writes a recovery copy into
// RecoveryFolder(), AutosaveDelay() after the last change (and at that pace
// while changes keep coming); a clean save, opening a file, Close() and
// DiscardRecovery() remove it. Destroying the document keeps it: an
// application that quits without asking the user leaves the work to be
// recovered on its next start.
class QORDESIGN_EXPORT TQorDesignDocument : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")
    // The file the design was last opened from or saved to; empty for a
    // new design.
    Q_PROPERTY(QString FileName READ FileName NOTIFY FileNameChanged)
    // The form the next Save() writes.
    Q_PROPERTY(TQorDocumentFormat Format READ Format WRITE SetFormat)
    // Whether the design holds changes that are not saved: the design
    // center's dirty state.
    Q_PROPERTY(bool Modified READ Modified WRITE SetModified NOTIFY ModifiedChanged)
    // Milliseconds from the last change to the recovery copy.
    Q_PROPERTY(int AutosaveDelay READ AutosaveDelay WRITE SetAutosaveDelay)
    Q_PROPERTY(bool AutosaveEnabled READ AutosaveEnabled WRITE SetAutosaveEnabled)
    // Where recovery copies are written and found.
    Q_PROPERTY(QString RecoveryFolder READ RecoveryFolder WRITE SetRecoveryFolder)

public:
    enum TQorDocumentFormat {
        dfBinary, // the component stream's records
        dfText    // their readable text
    };
    Q_ENUM(TQorDocumentFormat)

    explicit TQorDesignDocument(TQorDesignCenter *Center, QObject *Parent = nullptr);
    ~TQorDesignDocument() override;

    TQorDesignCenter *Center() const;
    // The stage the center's design manager designs; null without one.
    QWidget *Stage() const;

    QString FileName() const;
    TQorDocumentFormat Format() const;
    void SetFormat(TQorDocumentFormat Value);
    bool Modified() const;
    void SetModified(bool Value);

    // ---- Files ----
    // Saves to FileName(); false without a file name.
    bool Save();
    // Saves to the file in the form given, and takes the file name and the
    // form on success.
    bool SaveAs(const QString &FileName, TQorDocumentFormat Format);
    // Saves to the file in the document's form.
    bool SaveAs(const QString &FileName);
    // Replaces the design by the file's. The form is read from the content.
    // Components of classes the class registry does not know are left out
    // (SkippedComponents() names them); the stage's own class must be the
    // one the file holds, and registered.
    bool Open(const QString &FileName);
    // Forgets the file name and the recovery copy; the design stays.
    void Close();
    // A new design: every component of the stage goes, the file name and
    // the recovery copy are forgotten, the history starts afresh and the
    // design is clean.
    void New();
    // The error of the last Save, SaveAs, Open or LoadRecovery that failed.
    QString ErrorString() const;
    // The components the last Open or LoadRecovery left out, "Name (Class)".
    QStringList SkippedComponents() const;

    // The form a file's bytes hold; false when they are no design.
    static bool DetectFormat(const QByteArray &Content, TQorDocumentFormat *Format);

    // ---- Recovery ----
    int AutosaveDelay() const;
    void SetAutosaveDelay(int Milliseconds);
    bool AutosaveEnabled() const;
    void SetAutosaveEnabled(bool Value);
    // By default the folder "recovery" in the application's local data
    // location.
    QString RecoveryFolder() const;
    void SetRecoveryFolder(const QString &Folder);
    // The recovery file this document writes; empty before the first one.
    QString RecoveryFileName() const;
    // Writes the recovery copy now when the design is dirty; true when a
    // copy of the current design is on disk afterwards.
    bool WriteRecovery();
    // The copies in RecoveryFolder() that no running document is writing,
    // newest first.
    QList<TQorRecoveryCopy> FindRecoveryCopies() const;
    // Replaces the design by the copy's, as Open does, but the design stays
    // dirty and takes the copy's original file name; this document goes on
    // writing its recovery into that copy.
    bool LoadRecovery(const TQorRecoveryCopy &Copy);
    // Removes a copy nobody writes.
    bool DiscardRecovery(const TQorRecoveryCopy &Copy);

Q_SIGNALS:
    void FileNameChanged(const QString &FileName);
    void ModifiedChanged(bool Modified);
    // A clean save to the file.
    void Saved(const QString &FileName);
    // The design was replaced by the file's (or by a recovery copy's, with
    // its original file name, possibly empty).
    void Opened(const QString &FileName);
    // A recovery copy was written.
    void RecoveryWritten(const QString &RecoveryFileName);
    // A recovery copy could not be written; the next change tries again.
    void RecoveryFailed(const QString &Error);

private:
    friend class TQorDesignDocumentPrivate;
    std::unique_ptr<TQorDesignDocumentPrivate> const d;
};
