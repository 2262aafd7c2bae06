// SPDX-License-Identifier: MIT
// Translation rows on a dictionary of 100,000 rows: a look-up the cache
// serves, a dictionary look-up that finds its row and one that finds
// nothing, each beside a plain scan of the same rows in memory for the
// same key; opening the file for the first look-up beside reading its
// bytes; and the inspector's value refresh with labels beside the same
// refresh without.
#include "qorbench.h"

#include "inspector/qorinspector.h"
#include "inspector/qortransinspector.h"
#include "translation/qortranscache_p.h"
#include "translation/qortransutils.h"

#include <QFile>
#include <QPushButton>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <vector>

namespace {

constexpr int Rows = 100000;

struct Entry
{
    QString kind, type, ident, label;
};

std::vector<Entry> makeEntries()
{
    std::vector<Entry> entries;
    entries.reserve(Rows);
    const QStringList kinds = {QStringLiteral("ENUM"), QStringLiteral("PROPNAME"), QStringLiteral("CLASSVALUE")};
    for (int i = 0; i < Rows; ++i)
        entries.push_back({kinds[i % 3], QStringLiteral("Type%1").arg(i % 500), QStringLiteral("Ident%1").arg(i),
                           QStringLiteral("标签%1").arg(i)});
    return entries;
}

bool writeDictionary(const QString &file, const std::vector<Entry> &entries)
{
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("benchwriter"));
        db.setDatabaseName(file);
        QSqlQuery q(db);
        ok = db.open()
            && q.exec(QStringLiteral("CREATE TABLE Dictionary (TranTypeKind TEXT COLLATE NOCASE NOT NULL, TypeName TEXT "
                                     "COLLATE NOCASE NOT NULL DEFAULT '', Indent TEXT COLLATE NOCASE NOT NULL, CnLabel "
                                     "TEXT COLLATE NOCASE NOT NULL)"))
            && db.transaction() && q.prepare(QStringLiteral("INSERT INTO Dictionary VALUES (?, ?, ?, ?)"));
        for (const Entry &e : entries) {
            q.addBindValue(e.kind);
            q.addBindValue(e.type);
            q.addBindValue(e.ident);
            q.addBindValue(e.label);
            ok = ok && q.exec();
        }
        ok = ok && db.commit()
            && q.exec(QStringLiteral("CREATE INDEX DictionaryByIdent ON Dictionary (TranTypeKind, TypeName, Indent, CnLabel)"))
            && q.exec(QStringLiteral("CREATE INDEX DictionaryByLabel ON Dictionary (TranTypeKind, TypeName, CnLabel, Indent)"))
            && q.exec(QStringLiteral("CREATE INDEX DictionaryByEvent ON Dictionary (TranTypeKind, Indent, CnLabel)"));
        db.close();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("benchwriter"));
    return ok;
}

// The plain way: every row compared until the key is found.
int scan(const std::vector<Entry> &entries, const QString &kind, const QString &type, const QString &ident)
{
    for (size_t i = 0; i < entries.size(); ++i) {
        const Entry &e = entries[i];
        if (e.ident.compare(ident, Qt::CaseInsensitive) == 0 && e.type.compare(type, Qt::CaseInsensitive) == 0
            && e.kind.compare(kind, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

TTransTypeKind kindOf(int i)
{
    return i % 3 == 0 ? ttkEnum : i % 3 == 1 ? ttkPropName : ttkClassValue;
}

QList<BenchRow> runTranslation()
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("big.sqlite"));
    const std::vector<Entry> entries = makeEntries();
    if (!writeDictionary(file, entries))
        qFatal("bench translation: cannot write the dictionary");
    QList<BenchRow> rows;
    TQorTransMan man(file);
    TQorTransCache *cache = man.Cache();
    volatile int sink = 0;

    // Served by the cache: the key was asked for once before.
    {
        const int i = Rows / 2;
        const Entry &e = entries[size_t(i)];
        man.IdentToLabel(kindOf(i), e.type, e.ident, nullptr);
        QString label;
        const BenchPair pair = benchInTurn(
            200, nullptr, [&] { label = man.IdentToLabel(kindOf(i), e.type, e.ident, nullptr); },
            [&] { sink = sink + scan(entries, e.kind, e.type, e.ident); });
        if (label != e.label)
            qFatal("bench translation: wrong label");
        rows.append({QStringLiteral("translation.hit"), pair.ms, QStringLiteral("scan_100k_to_key"), pair.floorMs});
    }
    // Found in the dictionary: a key the cache does not hold.
    {
        int next = 1000;
        int i = 0, asked = 0;
        QString label;
        const BenchPair pair = benchInTurn(
            200, [&] { i = Rows / 2 + (next += 7); },
            [&] {
                asked = i;
                label = man.IdentToLabel(kindOf(i), entries[size_t(i)].type, entries[size_t(i)].ident, nullptr);
            },
            [&] { sink = sink + scan(entries, entries[size_t(i)].kind, entries[size_t(i)].type, entries[size_t(i)].ident); });
        if (label != entries[size_t(asked)].label)
            qFatal("bench translation: wrong label on a miss");
        rows.append({QStringLiteral("translation.miss_found"), pair.ms, QStringLiteral("scan_100k_to_key"), pair.floorMs});
    }
    // Not in the dictionary: every row is compared by the scan.
    {
        int next = 0;
        QString ident, askedIdent;
        QString label;
        const BenchPair pair = benchInTurn(
            200, [&] { ident = QStringLiteral("Absent%1").arg(++next); },
            [&] {
                askedIdent = ident;
                label = man.IdentToLabel(ttkEnum, QStringLiteral("Type1"), ident, nullptr);
            },
            [&] { sink = sink + scan(entries, QStringLiteral("ENUM"), QStringLiteral("Type1"), ident); });
        if (label != askedIdent)
            qFatal("bench translation: an absent key was translated");
        rows.append({QStringLiteral("translation.miss_absent"), pair.ms, QStringLiteral("scan_100k_all"), pair.floorMs});
    }
    // Opening the file for the first look-up.
    {
        const Entry &e = entries[10];
        QString label;
        QByteArray bytes;
        const BenchPair pair = benchInTurn(
            20, [&] { cache->SetMaxLength(0); cache->SetMaxLength(200); },
            [&] {
                TQorTransMan fresh(file);
                label = fresh.IdentToLabel(kindOf(10), e.type, e.ident, nullptr);
            },
            [&] {
                QFile f(file);
                if (f.open(QIODevice::ReadOnly))
                    bytes = f.readAll();
            });
        if (label != e.label || bytes.isEmpty())
            qFatal("bench translation: first look-up failed");
        rows.append({QStringLiteral("translation.open_100k"), pair.ms, QStringLiteral("read_file_bytes"), pair.floorMs});
    }
    // The inspector's values with and without the shipped labels.
    {
        const QString shipped = QStringLiteral(QORDESIGN_DICT_DB);
        QorTransMan()->SetDbFileName(shipped);
        QPushButton button(QStringLiteral("OK"));
        TQorObjInspector translated, plain;
        translated.SetActiveComponent(&button);
        plain.SetActiveComponent(&button);
        QorTranslateInspector(&translated);
        translated.RefreshValues();
        const BenchPair pair = benchInTurn(50, nullptr, [&] { translated.RefreshValues(); }, [&] { plain.RefreshValues(); });
        QorTransMan()->SetDbFileName(QString());
        rows.append({QStringLiteral("translation.inspector_refresh"), pair.ms, QStringLiteral("refresh_untranslated"),
                     pair.floorMs});
    }
    return rows;
}

const BenchRegistrar registrar("translation", runTranslation, {QStringLiteral("translation.hit"), QStringLiteral("translation.miss_found"), QStringLiteral("translation.miss_absent"), QStringLiteral("translation.open_100k"), QStringLiteral("translation.inspector_refresh")});

} // namespace
