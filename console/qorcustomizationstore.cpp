// SPDX-License-Identifier: MIT
// The customization store on SQLite's own interface, as the translation
// manager reads its dictionary: one table, one row per user, form and
// application version.
#include "console/qorcustomizationstore.h"

#include "foundation/qorerror.h"
#include "foundation/qorvaluecheck_p.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QVersionNumber>

#include <sqlite3.h>

#include <algorithm>

namespace {

const char *const kSchema = "CREATE TABLE IF NOT EXISTS QorCustomization ("
                            " UserName TEXT NOT NULL, FormName TEXT NOT NULL, Version TEXT NOT NULL,"
                            " Delta BLOB NOT NULL, Written INTEGER NOT NULL,"
                            " PRIMARY KEY (UserName, FormName, Version))";

// A statement that finalizes itself.
class Statement
{
public:
    Statement(sqlite3 *Db, const char *Sql)
    {
        if (sqlite3_prepare_v2(Db, Sql, -1, &m_statement, nullptr) != SQLITE_OK) {
            sqlite3_finalize(m_statement);
            m_statement = nullptr;
        }
    }
    ~Statement() { sqlite3_finalize(m_statement); }
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    bool ok() const { return m_statement != nullptr; }
    sqlite3_stmt *get() const { return m_statement; }
    void bind(int Index, const QString &Text)
    {
        sqlite3_bind_text16(m_statement, Index, Text.utf16(), int(Text.size() * sizeof(char16_t)), SQLITE_TRANSIENT);
    }
    void bind(int Index, const QByteArray &Bytes)
    {
        sqlite3_bind_blob(m_statement, Index, Bytes.constData(), int(Bytes.size()), SQLITE_TRANSIENT);
    }
    void bind(int Index, qint64 Value) { sqlite3_bind_int64(m_statement, Index, Value); }
    // The key of one stored delta, as ?1, ?2 and ?3.
    void bindKey(const QString &User, const QString &Form, const QString &Version)
    {
        bind(1, User);
        bind(2, Form);
        bind(3, Version);
    }
    int step() { return sqlite3_step(m_statement); }
    QString text(int Column) const
    {
        const auto *text = static_cast<const char16_t *>(sqlite3_column_text16(m_statement, Column));
        return QString(reinterpret_cast<const QChar *>(text), sqlite3_column_bytes16(m_statement, Column) / 2);
    }
    QByteArray blob(int Column) const
    {
        const void *data = sqlite3_column_blob(m_statement, Column);
        return QByteArray(static_cast<const char *>(data), sqlite3_column_bytes(m_statement, Column));
    }

private:
    sqlite3_stmt *m_statement = nullptr;
};

// Orders versions by their numbers when both are version numbers.
bool versionLess(const QString &A, const QString &B)
{
    qsizetype endA = 0;
    qsizetype endB = 0;
    const QVersionNumber a = QVersionNumber::fromString(A, &endA);
    const QVersionNumber b = QVersionNumber::fromString(B, &endB);
    if (!a.isNull() && !b.isNull() && endA == A.size() && endB == B.size())
        return a < b;
    return A < B;
}

} // namespace

class TQorCustomizationStorePrivate
{
public:
    sqlite3 *db = nullptr;
    QString fileName;
    QString error;
    int busyTimeout = 5000;

    ~TQorCustomizationStorePrivate() { close(); }

    void close()
    {
        if (db)
            sqlite3_close_v2(db);
        db = nullptr;
    }

    bool fail(const QString &What)
    {
        error = db ? What.arg(QString::fromUtf8(sqlite3_errmsg(db))) : What.arg(QCoreApplication::translate("TQorCustomizationStore", "the store is not open"));
        return false;
    }

    bool exec(const char *Sql)
    {
        return sqlite3_exec(db, Sql, nullptr, nullptr, nullptr) == SQLITE_OK;
    }

    // The stored version to read for Version: itself, or the newest older.
    bool findVersion(const QString &User, const QString &Form, const QString &Version, QString &Found)
    {
        Statement s(db, "SELECT Version FROM QorCustomization WHERE UserName = ?1 AND FormName = ?2");
        if (!s.ok())
            return fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store cannot be read: %1"));
        s.bind(1, User);
        s.bind(2, Form);
        QStringList versions;
        int step;
        while ((step = s.step()) == SQLITE_ROW)
            versions.append(s.text(0));
        if (step != SQLITE_DONE)
            return fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store cannot be read: %1"));
        Found.clear();
        for (const QString &v : std::as_const(versions)) {
            if (v == Version) {
                Found = v;
                return true;
            }
            if (!versionLess(Version, v) && (Found.isNull() || versionLess(Found, v)))
                Found = v;
        }
        return true;
    }
};

TQorCustomizationStore::TQorCustomizationStore()
    : d(std::make_unique<TQorCustomizationStorePrivate>())
{
}

TQorCustomizationStore::~TQorCustomizationStore() = default;

bool TQorCustomizationStore::Open(const QString &FileName)
{
    Close();
    d->error.clear();
    d->fileName = FileName;
    const QByteArray path = QFile::encodeName(FileName);
    if (sqlite3_open_v2(path.constData(), &d->db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr) != SQLITE_OK) {
        d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store %1 cannot be opened: %2").arg(FileName, QStringLiteral("%1")));
        d->close();
        return false;
    }
    sqlite3_busy_timeout(d->db, d->busyTimeout);
    // A damaged file, or one that is no database, opens and fails here.
    if (!d->exec(kSchema) || !d->exec("SELECT count(*) FROM QorCustomization")) {
        d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store %1 cannot be opened: %2").arg(FileName, QStringLiteral("%1")));
        d->close();
        return false;
    }
    return true;
}

void TQorCustomizationStore::Close()
{
    d->close();
}

bool TQorCustomizationStore::IsOpen() const
{
    return d->db != nullptr;
}

QString TQorCustomizationStore::FileName() const
{
    return d->fileName;
}

QString TQorCustomizationStore::ErrorString() const
{
    return d->error;
}

void TQorCustomizationStore::SetBusyTimeout(int Milliseconds)
{
    d->busyTimeout = Milliseconds;
    if (d->db)
        sqlite3_busy_timeout(d->db, Milliseconds);
}

QList<TQorCustomizationInfo> TQorCustomizationStore::List(const QString &User, const QString &Form)
{
    QList<TQorCustomizationInfo> out;
    d->error.clear();
    if (!d->db) {
        d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store cannot be read: %1"));
        return out;
    }
    Statement s(d->db, "SELECT UserName, FormName, Version, length(Delta), Written FROM QorCustomization"
                       " WHERE (?1 IS NULL OR UserName = ?1) AND (?2 IS NULL OR FormName = ?2)");
    if (!s.ok()) {
        d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store cannot be read: %1"));
        return out;
    }
    if (!User.isNull())
        s.bind(1, User);
    if (!Form.isNull())
        s.bind(2, Form);
    int step;
    while ((step = s.step()) == SQLITE_ROW) {
        TQorCustomizationInfo info;
        info.User = s.text(0);
        info.Form = s.text(1);
        info.Version = s.text(2);
        info.Size = sqlite3_column_int64(s.get(), 3);
        info.Written = QDateTime::fromMSecsSinceEpoch(sqlite3_column_int64(s.get(), 4), Qt::UTC);
        out.append(info);
    }
    if (step != SQLITE_DONE)
        d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store cannot be read: %1"));
    std::sort(out.begin(), out.end(), [](const TQorCustomizationInfo &a, const TQorCustomizationInfo &b) {
        if (a.User != b.User)
            return a.User < b.User;
        if (a.Form != b.Form)
            return a.Form < b.Form;
        return versionLess(a.Version, b.Version);
    });
    return out;
}

bool TQorCustomizationStore::Write(const QString &User, const QString &Form, const QString &Version,
                                   const TQorCustomization &Delta)
{
    return WriteBytes(User, Form, Version, Delta.ToBytes());
}

bool TQorCustomizationStore::WriteBytes(const QString &User, const QString &Form, const QString &Version,
                                        const QByteArray &Bytes)
{
    d->error.clear();
    if (!d->db)
        return d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization cannot be written: %1"));
    try {
        TQorCustomization::FromBytes(Bytes);
    } catch (const EQorError &error) {
        d->error = QCoreApplication::translate("TQorCustomizationStore", "The customization cannot be written: %1").arg(error.message());
        return false;
    }
    if (!d->exec("BEGIN IMMEDIATE"))
        return d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization cannot be written: %1"));
    Statement s(d->db, "INSERT OR REPLACE INTO QorCustomization (UserName, FormName, Version, Delta, Written)"
                       " VALUES (?1, ?2, ?3, ?4, ?5)");
    bool ok = s.ok();
    if (ok) {
        s.bindKey(User, Form, Version);
        s.bind(4, Bytes);
        s.bind(5, QDateTime::currentMSecsSinceEpoch());
        ok = s.step() == SQLITE_DONE;
    }
    if (ok)
        ok = d->exec("COMMIT");
    if (!ok) {
        d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization cannot be written: %1"));
        d->exec("ROLLBACK");
    }
    return ok;
}

bool TQorCustomizationStore::ReadBytes(const QString &User, const QString &Form, const QString &Version,
                                       QByteArray &Bytes, QString *FoundVersion)
{
    d->error.clear();
    if (!d->db)
        return d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store cannot be read: %1"));
    QString found;
    if (!d->findVersion(User, Form, Version, found))
        return false;
    if (found.isNull())
        return false;
    Statement s(d->db, "SELECT Delta FROM QorCustomization WHERE UserName = ?1 AND FormName = ?2 AND Version = ?3");
    if (!s.ok())
        return d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store cannot be read: %1"));
    s.bindKey(User, Form, found);
    if (s.step() != SQLITE_ROW)
        return d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization store cannot be read: %1"));
    Bytes = s.blob(0);
    if (FoundVersion)
        *FoundVersion = found;
    return true;
}

bool TQorCustomizationStore::Read(const QString &User, const QString &Form, const QString &Version,
                                  TQorCustomization &Delta, QString *FoundVersion)
{
    QByteArray bytes;
    if (!ReadBytes(User, Form, Version, bytes, FoundVersion))
        return false;
    try {
        Delta = TQorCustomization::FromBytes(bytes);
    } catch (const EQorError &error) {
        d->error = QCoreApplication::translate("TQorCustomizationStore", "The stored customization of %1 for %2 is damaged: %3").arg(Form, User, error.message());
        return false;
    }
    return true;
}

bool TQorCustomizationStore::Remove(const QString &User, const QString &Form, const QString &Version)
{
    d->error.clear();
    if (!d->db)
        return d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization cannot be removed: %1"));
    Statement s(d->db, "DELETE FROM QorCustomization WHERE UserName = ?1 AND FormName = ?2 AND Version = ?3");
    if (!s.ok())
        return d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization cannot be removed: %1"));
    s.bindKey(User, Form, Version);
    if (s.step() != SQLITE_DONE)
        return d->fail(QCoreApplication::translate("TQorCustomizationStore", "The customization cannot be removed: %1"));
    return sqlite3_changes(d->db) > 0;
}

bool TQorCustomizationStore::Export(const QString &User, const QString &Form, const QString &Version,
                                    const QString &FileName)
{
    TQorCustomization delta;
    if (!Read(User, Form, Version, delta)) {
        if (d->error.isEmpty())
            d->error = QCoreApplication::translate("TQorCustomizationStore", "There is no customization of %1 for %2").arg(Form, User);
        return false;
    }
    return ExportToFile(delta, FileName, &d->error);
}

bool TQorCustomizationStore::Import(const QString &FileName, const QString &User, const QString &Form,
                                    const QString &Version)
{
    d->error.clear();
    TQorCustomization delta;
    try {
        delta = ImportFromFile(FileName);
    } catch (const EQorError &error) {
        d->error = error.message();
        return false;
    }
    return Write(User, Form, Version, delta);
}

bool TQorCustomizationStore::ExportToFile(const TQorCustomization &Delta, const QString &FileName, QString *ErrorString)
{
    const QByteArray bytes = Delta.ToBytes();
    QSaveFile file(FileName);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        if (ErrorString)
            *ErrorString = QCoreApplication::translate("TQorCustomizationStore", "Cannot write the customization file %1: %2").arg(FileName, file.errorString());
        return false;
    }
    return true;
}

TQorCustomization TQorCustomizationStore::ImportFromFile(const QString &FileName)
{
    QFile file(FileName);
    if (!file.open(QIODevice::ReadOnly))
        throw EReadError(QCoreApplication::translate("TQorCustomizationStore", "Cannot open the customization file %1: %2").arg(FileName, file.errorString()));
    if (file.size() > QorLimits::kMaxRecordBytes)
        throw EReadError(QCoreApplication::translate("TQorCustomizationStore", "The file %1 is too large to hold a customization").arg(FileName));
    const QByteArray bytes = file.readAll();
    try {
        return TQorCustomization::FromBytes(bytes);
    } catch (const EQorError &error) {
        throw EReadError(QCoreApplication::translate("TQorCustomizationStore", "The file %1 holds no customization that can be read: %2").arg(FileName, error.message()));
    }
}
