// SPDX-License-Identifier: MIT
// Where users' customizations live: a small SQLite file holding one delta
// per user, form and application version, read back for the version that
// asks (or the newest older one), and single customizations exported to
// files and imported from them.
#pragma once

#include "qordesign_export.h"

#include "console/qorcustomization.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <memory>

// One stored customization, as listed.
struct QORDESIGN_EXPORT TQorCustomizationInfo
{
    QString User;
    QString Form;
    QString Version;
    // The delta's bytes.
    qint64 Size = 0;
    // When it was written (UTC).
    QDateTime Written;
};

class TQorCustomizationStorePrivate;

// The store reports failure by its results and ErrorString(), never by an
// exception, so that an application may call it from anywhere. Each write
// is one transaction: a write that fails leaves the delta stored before.
// Versions compare by their numbers ("1.10" after "1.9") when they are
// version numbers, else as texts.
class QORDESIGN_EXPORT TQorCustomizationStore
{
public:
    TQorCustomizationStore();
    ~TQorCustomizationStore();
    TQorCustomizationStore(const TQorCustomizationStore &) = delete;
    TQorCustomizationStore &operator=(const TQorCustomizationStore &) = delete;

    // Opens the store's file, making it when it is not there. False, with
    // the reason in ErrorString(), for a file that is damaged, locked or no
    // database.
    bool Open(const QString &FileName);
    void Close();
    bool IsOpen() const;
    QString FileName() const;
    QString ErrorString() const;
    // How long a write waits for another program holding the file.
    void SetBusyTimeout(int Milliseconds);

    // Every stored customization, optionally of one user and one form, in
    // user, form and version order.
    QList<TQorCustomizationInfo> List(const QString &User = QString(), const QString &Form = QString());

    bool Write(const QString &User, const QString &Form, const QString &Version, const TQorCustomization &Delta);
    // The bytes must be a delta (TQorCustomization::ToBytes); others are
    // refused.
    bool WriteBytes(const QString &User, const QString &Form, const QString &Version, const QByteArray &Bytes);

    // The user's customization of the form for the version, or, when that
    // version has none, the newest one written for an older version;
    // FoundVersion says which. False when there is none (ErrorString()
    // empty) or it cannot be read (ErrorString() says why).
    bool Read(const QString &User, const QString &Form, const QString &Version, TQorCustomization &Delta,
              QString *FoundVersion = nullptr);
    bool ReadBytes(const QString &User, const QString &Form, const QString &Version, QByteArray &Bytes,
                   QString *FoundVersion = nullptr);

    // False when there was nothing to remove or it failed.
    bool Remove(const QString &User, const QString &Form, const QString &Version);

    // One stored customization (found as Read finds it) to a file, and a
    // file's customization into the store.
    bool Export(const QString &User, const QString &Form, const QString &Version, const QString &FileName);
    bool Import(const QString &FileName, const QString &User, const QString &Form, const QString &Version);

    // A customization to a file and back, written through QSaveFile. The
    // reader throws EReadError, naming the file, for a file that is damaged
    // or holds no customization.
    static bool ExportToFile(const TQorCustomization &Delta, const QString &FileName, QString *ErrorString = nullptr);
    static TQorCustomization ImportFromFile(const QString &FileName);

private:
    std::unique_ptr<TQorCustomizationStorePrivate> d;
};
