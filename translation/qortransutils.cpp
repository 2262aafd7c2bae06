// SPDX-License-Identifier: MIT
#include "translation/qortransutils.h"

#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "translation/qortranscache_p.h"
#include "foundation/vhortti_p.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QMutex>
#include <QSet>
#include <QMetaObject>
#include <QObject>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>

#include <sqlite3.h>

TTranslateLan TranslateLan = tlChinese;

namespace {

// The naming functions below this layer reach the class labels through
// this object, so that a dictionary attached here renames new components
// without their callers changing.
class TransedClassLabels final : public IQorClassLabels
{
public:
    QString ClassLabel(const QMetaObject *AClass) const override { return ClassToTransedName(AClass); }
};

const TransedClassLabels transedClassLabels;

void installClassLabels()
{
    SetClassLabels(&transedClassLabels);
}
Q_CONSTRUCTOR_FUNCTION(installClassLabels)

// The dictionary compares without regard to case in ASCII letters only.
QString asciiLower(const QString &Text)
{
    QString lower = Text;
    for (QChar &c : lower) {
        if (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            c = QChar(c.unicode() + 32);
    }
    return lower;
}

std::unique_ptr<TQorTransMan> &globalManager()
{
    static std::unique_ptr<TQorTransMan> manager;
    return manager;
}

// The dictionary a manager could not open, by the manager's connection:
// every look-up tries to open it again, and it is reported once, until the
// manager is given another file or the file opens.
struct UnreadableReports
{
    QMutex mutex;
    QHash<QString, QString> fileByConnection;
};

UnreadableReports &unreadableReports()
{
    // Never destroyed: a manager may go after the statics do.
    static auto *reports = new UnreadableReports;
    return *reports;
}

void reportUnreadable(const QString &Connection, const QString &FileName, const char *Why)
{
    UnreadableReports &reports = unreadableReports();
    const QMutexLocker lock(&reports.mutex);
    auto it = reports.fileByConnection.find(Connection);
    if (it != reports.fileByConnection.end() && *it == FileName)
        return;
    reports.fileByConnection.insert(Connection, FileName);
    qCInfo(lcQorTranslation).noquote() << "Dictionary" << FileName << "not used:" << Why
                                       << "- texts stay untranslated";
}

void forgetUnreadable(const QString &Connection)
{
    UnreadableReports &reports = unreadableReports();
    const QMutexLocker lock(&reports.mutex);
    reports.fileByConnection.remove(Connection);
}

} // namespace

QString TypeKindStrs(TTypeKind Kind)
{
    return TypeKindToString(Kind);
}

// ---- The dictionary ----------------------------------------------------

// The look-ups of an open dictionary, prepared on the connection's own
// SQLite handle (a look-up through Qt's query objects costs several times
// the search itself), and the keys it does not hold: the dictionary is
// opened read-only, so a key it lacks stays absent as long as it is open,
// and most values an inspector shows (numbers, texts) are not in it.
struct TQorTransMan::Queries
{
    sqlite3 *db = nullptr;
    QHash<QString, sqlite3_stmt *> byKey;
    QSet<QString> absent;
    static constexpr qsizetype maxAbsent = 20000;

    ~Queries()
    {
        for (sqlite3_stmt *statement : std::as_const(byKey))
            sqlite3_finalize(statement);
    }
};

namespace {

// A dictionary file may come from anywhere: a text longer than any label is
// taken as no entry rather than copied (SQLite itself allows a billion
// bytes).
constexpr int kMaxDictTextBytes = 64 * 1024;

void bindText(sqlite3_stmt *Statement, int Index, const QString &Text)
{
    sqlite3_bind_text16(Statement, Index, Text.utf16(), int(Text.size() * sizeof(char16_t)), SQLITE_TRANSIENT);
}

QString columnText(sqlite3_stmt *Statement, int Column)
{
    const auto *text = static_cast<const char16_t *>(sqlite3_column_text16(Statement, Column));
    const int bytes = sqlite3_column_bytes16(Statement, Column);
    return text ? QString::fromUtf16(text, bytes / int(sizeof(char16_t))) : QString();
}

} // namespace

TQorTransMan::TQorTransMan(const QString &DbFileName)
    : m_cache(QorTransCache())
    , m_connection(QStringLiteral("qortransman-%1").arg(quintptr(this), 0, 16))
{
    if (!DbFileName.trimmed().isEmpty())
        SetDbFileName(DbFileName);
}

TQorTransMan::~TQorTransMan()
{
    closeDb();
    forgetUnreadable(m_connection);
}

void TQorTransMan::closeDb()
{
    // The statements go before the connection they were made on.
    m_queries.reset();
    if (m_open)
        ++m_generation;
    m_open = false;
    if (QSqlDatabase::contains(m_connection)) {
        {
            QSqlDatabase db = QSqlDatabase::database(m_connection, false);
            db.close();
        }
        QSqlDatabase::removeDatabase(m_connection);
    }
}

void TQorTransMan::SetDbFileName(const QString &Value)
{
    if (Value.compare(m_dbFileName, Qt::CaseInsensitive) == 0)
        return;
    m_dbFileName = Value;
    forgetUnreadable(m_connection);
    closeDb();
    if (!Value.trimmed().isEmpty())
        OpenDb();
}

bool TQorTransMan::OpenDb()
{
    if (m_open)
        return true;
    if (m_dbFileName.trimmed().isEmpty())
        return false;
    // Qt's SQL drivers need the application object; and a file that is not
    // there would be created by SQLite, so it is looked for first.
    if (!QCoreApplication::instance())
        return false;
    if (!QFileInfo(m_dbFileName).isFile()) {
        reportUnreadable(m_connection, m_dbFileName, "there is no such file");
        return false;
    }
    closeDb();
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connection);
        db.setDatabaseName(m_dbFileName);
        db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY"));
        if (db.open()) {
            // A damaged file or one of another kind opens, and fails here.
            QSqlQuery probe(db);
            // The shared lock is kept after the first read: a look-up then
            // takes no lock and reads no header of its own.
            probe.exec(QStringLiteral("PRAGMA locking_mode = EXCLUSIVE"));
            // Pages are read through a memory map: a look-up makes no
            // system call however large the dictionary.
            probe.exec(QStringLiteral("PRAGMA mmap_size = 268435456"));
            ok = probe.exec(QStringLiteral("SELECT TranTypeKind, TypeName, Indent, CnLabel FROM Dictionary LIMIT 1"));
        }
    }
    if (!ok) {
        closeDb();
        reportUnreadable(m_connection, m_dbFileName, "it is damaged, locked or not a dictionary");
        return false;
    }
    m_queries = std::make_unique<Queries>();
    const QVariant handle = QSqlDatabase::database(m_connection, false).driver()->handle();
    if (handle.isValid() && qstrcmp(handle.typeName(), "sqlite3*") == 0)
        m_queries->db = *static_cast<sqlite3 *const *>(handle.constData());
    if (!m_queries->db) {
        closeDb();
        reportUnreadable(m_connection, m_dbFileName, "Qt's SQLite driver gave no SQLite handle");
        return false;
    }
    forgetUnreadable(m_connection);
    m_open = true;
    ++m_generation;
    return true;
}

bool TQorTransMan::locate(TTransTypeKind Kind, const QString *TypeName, const char *KeyColumn, const QString &Key,
                          QString &Indent, QString &CnLabel)
{
    const QString kind = TransTypeKindStrs(Kind);
    const QString sqlKey = QLatin1String(KeyColumn) + (TypeName ? QLatin1String("+type") : QLatin1String(""));
    const QString absentKey = sqlKey + QLatin1Char('\x1f') + kind + QLatin1Char('\x1f')
        + (TypeName ? asciiLower(*TypeName) : QString()) + QLatin1Char('\x1f') + asciiLower(Key);
    if (m_queries->absent.contains(absentKey))
        return false;
    sqlite3_stmt *statement = m_queries->byKey.value(sqlKey);
    if (!statement) {
        const QByteArray sql = QStringLiteral("SELECT Indent, CnLabel FROM Dictionary WHERE TranTypeKind = ? COLLATE NOCASE%1"
                                              " AND %2 = ? COLLATE NOCASE LIMIT 1")
                                   .arg(TypeName ? QStringLiteral(" AND TypeName = ? COLLATE NOCASE") : QString(),
                                        QLatin1String(KeyColumn))
                                   .toUtf8();
        if (sqlite3_prepare_v2(m_queries->db, sql.constData(), int(sql.size()), &statement, nullptr) != SQLITE_OK) {
            const QString error = QString::fromUtf8(sqlite3_errmsg(m_queries->db));
            sqlite3_finalize(statement);
            throw EQorError(QStringLiteral("Dictionary %1: %2").arg(m_dbFileName, error));
        }
        m_queries->byKey.insert(sqlKey, statement);
    }
    int at = 1;
    bindText(statement, at++, kind);
    if (TypeName)
        bindText(statement, at++, *TypeName);
    bindText(statement, at, Key);
    const int step = sqlite3_step(statement);
    const bool found = step == SQLITE_ROW && sqlite3_column_bytes(statement, 0) <= kMaxDictTextBytes
        && sqlite3_column_bytes(statement, 1) <= kMaxDictTextBytes;
    if (found) {
        Indent = columnText(statement, 0);
        CnLabel = columnText(statement, 1);
    }
    const QString error = step == SQLITE_ROW || step == SQLITE_DONE ? QString() : QString::fromUtf8(sqlite3_errmsg(m_queries->db));
    sqlite3_reset(statement);
    sqlite3_clear_bindings(statement);
    if (!error.isEmpty())
        throw EQorError(QStringLiteral("Dictionary %1: %2").arg(m_dbFileName, error));
    if (!found) {
        if (m_queries->absent.size() >= Queries::maxAbsent)
            m_queries->absent.clear();
        m_queries->absent.insert(absentKey);
    }
    return found;
}

// ---- Core look-ups -----------------------------------------------------

QString TQorTransMan::IdentToLabel(TTransTypeKind Kind, TTypeKind, const QString &TypeName, const QString &Ident,
                                   QObject *)
{
    if (!OpenDb())
        return Ident;
    if (TQorTransCacheItem *item = m_cache->LocateIdent(Kind, TypeName, Ident, true))
        return item->CnLabel;
    try {
        QString indent, label;
        const bool event = Kind == ttkEvent;
        if (!locate(Kind, event ? nullptr : &TypeName, "Indent", Ident, indent, label))
            return Ident;
        m_cache->AddItem(TransTypeKindStrs(Kind), event ? QString() : TypeName, Ident, label);
        return label;
    } catch (const EQorError &error) {
        // The identifier stands for its label: an inspector keeps working
        // on a dictionary that fails under it.
        qCInfo(lcQorTranslation).noquote() << "Left untranslated:" << Ident << "-" << error.message();
        return Ident;
    }
}

QString TQorTransMan::LabelToIdent(TTransTypeKind Kind, TTypeKind, const QString &TypeName, const QString &CnLabel,
                                   QObject *)
{
    if (!OpenDb())
        return CnLabel;
    if (TQorTransCacheItem *item = m_cache->LocateLabel(Kind, TypeName, CnLabel, true))
        return item->Indent;
    QString indent, label;
    if (Kind == ttkEvent) {
        // The mirror of the identifier direction, column for column: the
        // text is looked for among the identifiers and the label is the
        // answer.
        if (!locate(Kind, nullptr, "Indent", CnLabel, indent, label))
            return CnLabel;
        m_cache->AddItem(TransTypeKindStrs(Kind), QString(), label, CnLabel);
        return label;
    }
    if (!locate(Kind, &TypeName, "CnLabel", CnLabel, indent, label))
        return CnLabel;
    m_cache->AddItem(TransTypeKindStrs(Kind), TypeName, indent, CnLabel);
    return indent;
}

QString TQorTransMan::IdentToLabel(TTransTypeKind Kind, const QString &TypeName, const QString &Ident,
                                   QObject *Component)
{
    return IdentToLabel(Kind, tkUnknown, TypeName, Ident, Component);
}

QString TQorTransMan::LabelToIdent(TTransTypeKind Kind, const QString &TypeName, const QString &CnLabel,
                                   QObject *Component)
{
    return LabelToIdent(Kind, tkUnknown, TypeName, CnLabel, Component);
}

// ---- Type-driven look-ups ----------------------------------------------

QString TQorTransMan::IdentToLabel(TTransTypeKind Kind, PTypeInfo PTI, const QString &Ident, bool PassTypeKind,
                                   QObject *Component)
{
    if (!PTI)
        return Ident;
    const TTypeKind typeKind = PassTypeKind ? PTI->Kind : tkUnknown;
    if (PTI->Kind == tkMethod)
        return IdentToLabel(ttkEvent, typeKind, QString(), Ident, Component);
    if (PTI->Kind == tkSet && Kind != ttkPropName)
        return TransComplexExpression(ttkSet, PTI, Ident, true);
    const bool component = IsComponentPTI(PTI);
    if (Kind != ttkClassValue && PTI->Kind == tkClass && !component && Kind != ttkPropName)
        return TransComplexExpression(ttkClass, PTI, Ident, true);
    if (component && Kind != ttkPropName)
        return NsNameToNsCnName(Ident, Component);
    return IdentToLabel(Kind, typeKind, PTI->Name, Ident, Component);
}

QString TQorTransMan::LabelToIdent(TTransTypeKind Kind, PTypeInfo PTI, const QString &CnLabel, bool PassTypeKind,
                                   QObject *Component)
{
    if (!PTI)
        return CnLabel;
    const TTypeKind typeKind = PassTypeKind ? PTI->Kind : tkUnknown;
    if (PTI->Kind == tkMethod)
        return LabelToIdent(ttkEvent, typeKind, QString(), CnLabel, Component);
    if (PTI->Kind == tkSet)
        return TransComplexExpression(ttkSet, PTI, CnLabel, false);
    if (!IsComponentPTI(PTI) || Kind == ttkPropName)
        return LabelToIdent(Kind, typeKind, PTI->Name, CnLabel, Component);
    return NsCnNameToNsName(CnLabel, Component);
}

QString TQorTransMan::IdentToLabel(TTransRole Role, PTypeInfo PTI, const QString &Ident, QObject *Component)
{
    return IdentToLabel(Role == trPropName ? ttkPropName : ttkEnum, PTI, Ident, false, Component);
}

QString TQorTransMan::LabelToIdent(TTransRole Role, PTypeInfo PTI, const QString &CnLabel, QObject *Component)
{
    return LabelToIdent(Role == trPropName ? ttkPropName : ttkEnum, PTI, CnLabel, false, Component);
}

QString TQorTransMan::ClassToTransedName(const QMetaObject *AClass)
{
    if (!AClass)
        return {};
    const QString name = QorClassName(AClass);
    return IdentToLabel(ttkClassValue, tkUnknown, name, name, nullptr);
}

// ---- Expressions -------------------------------------------------------

QString WalkThroughIdents(PTypeInfo APTI, const QString &Expr, const TIdentsWalkThroughProc &Proc)
{
    // Positions count from 1, as the walk is described; the first
    // character is taken for an opening bracket and never starts a word.
    QString s = Expr;
    qsizetype last = 1;
    qsizetype p = 1;
    while (p <= s.size()) {
        if (!IsSeperatorChar(s.at(p - 1))) {
            ++p;
            continue;
        }
        if (p <= last + 1) {
            last = p;
            ++p;
            continue;
        }
        const QString word = s.mid(last, p - 1 - last);
        QString replacement;
        Proc(APTI, word, replacement);
        s.replace(last, word.size(), replacement);
        p = last + 1 + replacement.size();
        last = last + replacement.size();
    }
    return s;
}

QString TQorTransMan::TransComplexExpression(TTransTypeKind Kind, PTypeInfo PTI, const QString &Expr, bool ToLabel)
{
    using namespace std::placeholders;
    switch (Kind) {
    case ttkSet: {
        PTypeData data = GetTypeData(PTI);
        PTypeInfo element = data ? data->CompType : nullptr;
        return WalkThroughIdents(element, Expr,
                                 ToLabel ? TIdentsWalkThroughProc(std::bind(&TQorTransMan::ExSetIdentToLabel, this, _1, _2, _3))
                                         : TIdentsWalkThroughProc(std::bind(&TQorTransMan::ExSetLabelToIdent, this, _1, _2, _3)));
    }
    case ttkClass:
        return WalkThroughIdents(PTI, Expr,
                                 ToLabel ? TIdentsWalkThroughProc(std::bind(&TQorTransMan::ExClassIdentToLabel, this, _1, _2, _3))
                                         : TIdentsWalkThroughProc(std::bind(&TQorTransMan::ExClassLabelToIdent, this, _1, _2, _3)));
    default:
        return Expr;
    }
}

void TQorTransMan::ExSetIdentToLabel(PTypeInfo APTI, const QString &Input, QString &Output)
{
    Output = IdentToLabel(ttkEnum, APTI, Input, false, nullptr);
}

void TQorTransMan::ExSetLabelToIdent(PTypeInfo APTI, const QString &Input, QString &Output)
{
    Output = LabelToIdent(ttkEnum, APTI, Input, false, nullptr);
}

void TQorTransMan::ExClassIdentToLabel(PTypeInfo APTI, const QString &Input, QString &Output)
{
    Output = IdentToLabel(ttkClassValue, APTI, Input, false, nullptr);
}

void TQorTransMan::ExClassLabelToIdent(PTypeInfo APTI, const QString &Input, QString &Output)
{
    Output = LabelToIdent(ttkClassValue, APTI, Input, false, nullptr);
}

QString TQorTransMan::GenerateIdentToLabelFilterStr(TTransTypeKind Kind, const QString &TypeName,
                                                    const QString &Ident) const
{
    return QStringLiteral("(TranTypeKind='%1') and (TypeName='%2') and (Indent='%3')")
        .arg(TransTypeKindStrs(Kind), TypeName, Ident);
}

QString TQorTransMan::GenerateLabelToIdentFilterStr(TTransTypeKind Kind, const QString &TypeName,
                                                    const QString &CnLabel) const
{
    return QStringLiteral("(TranTypeKind='%1') and (TypeName='%2') and (CnLabel='%3')")
        .arg(TransTypeKindStrs(Kind), TypeName, CnLabel);
}

// ---- The unit's globals ------------------------------------------------

TQorTransMan *QorTransMan()
{
    std::unique_ptr<TQorTransMan> &manager = globalManager();
    if (!manager) {
        manager = std::make_unique<TQorTransMan>();
        // Its database connection goes with the application object, while
        // Qt's SQL machinery is still there.
        if (QCoreApplication::instance())
            qAddPostRoutine([] { globalManager().reset(); });
    }
    return manager.get();
}

QString ClassToTransedName(const QMetaObject *AClass)
{
    return QorTransMan()->ClassToTransedName(AClass);
}

QString GetCompTransedName(QObject *Comp, QObject *Owner)
{
    Q_UNUSED(Owner);
    return Comp ? Comp->objectName() : QString();
}
