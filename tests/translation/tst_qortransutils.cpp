// SPDX-License-Identifier: MIT
// The translation manager: identifiers to labels and back through an
// SQLite dictionary with the cache in front, events, sets and values word
// by word, component references, class labels, and dictionaries that are
// missing, damaged or of another kind, which never stop identifiers from
// passing through.
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/vhosysutils.h"
#include "translation/qortranscache_p.h"
#include "translation/qortransutils.h"
#include "foundation/vhortti_p.h"
#include "harness/qormutator.h"

#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Row
{
    const char *kind, *type, *ident, *label;
};

// Writes a dictionary file with the rows given, in pages of PageSize bytes
// (SQLite's own choice when 0).
bool writeDictionary(const QString &file, const QList<Row> &rows, int pageSize = 0)
{
    const QString connection = QStringLiteral("writer");
    bool ok = true;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(file);
        ok = db.open();
        QSqlQuery q(db);
        if (pageSize)
            q.exec(QStringLiteral("PRAGMA page_size = %1").arg(pageSize));
        ok = ok
            && q.exec(QStringLiteral("CREATE TABLE Dictionary (TranTypeKind TEXT COLLATE NOCASE NOT NULL, TypeName TEXT "
                                     "COLLATE NOCASE NOT NULL DEFAULT '', Indent TEXT COLLATE NOCASE NOT NULL, CnLabel "
                                     "TEXT COLLATE NOCASE NOT NULL)"))
            && q.exec(QStringLiteral("CREATE INDEX DictionaryByIdent ON Dictionary (TranTypeKind, TypeName, Indent)"))
            && q.exec(QStringLiteral("CREATE INDEX DictionaryByLabel ON Dictionary (TranTypeKind, TypeName, CnLabel)"))
            && q.exec(QStringLiteral("CREATE INDEX DictionaryByEvent ON Dictionary (TranTypeKind, Indent)"));
        db.transaction();
        q.prepare(QStringLiteral("INSERT INTO Dictionary VALUES (?, ?, ?, ?)"));
        for (const Row &row : rows) {
            q.addBindValue(QString::fromUtf8(row.kind));
            q.addBindValue(QString::fromUtf8(row.type));
            q.addBindValue(QString::fromUtf8(row.ident));
            q.addBindValue(QString::fromUtf8(row.label));
            ok = ok && q.exec();
        }
        db.commit();
        db.close();
    }
    QSqlDatabase::removeDatabase(connection);
    return ok;
}

const QList<Row> sampleRows = {
    {"ENUM", "Qt::FocusPolicy", "NoFocus", "无焦点"},
    {"ENUM", "Qt::FocusPolicy", "StrongFocus", "强焦点"},
    {"ENUM", "Qt::AlignmentFlag", "AlignLeft", "左对齐"},
    {"ENUM", "Qt::AlignmentFlag", "AlignTop", "顶端对齐"},
    {"PROPNAME", "Qt::FocusPolicy", "focusPolicy", "焦点策略"},
    {"PROPNAME", "QString", "text", "文本"},
    {"CLASSVALUE", "QPushButton", "QPushButton", "按钮"},
    {"CLASSVALUE", "QFont", "QFont", "字体"},
    {"EVENT", "", "clicked", "单击"},
    {"ENUM", "bool", "True", "是"},
};

} // namespace

class tst_QorTransUtils : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_dictionary;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_dir.isValid());
        m_dictionary = m_dir.filePath(QStringLiteral("dict.sqlite"));
        QVERIFY(writeDictionary(m_dictionary, sampleRows));
    }

    void init() { QorTransCache()->SetMaxLength(0); QorTransCache()->SetMaxLength(200); }

    void withoutADictionaryIdentifiersPassThrough()
    {
        TQorTransMan man;
        QCOMPARE(man.DbFileName(), QString());
        QVERIFY(!man.OpenDb());
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"), nullptr),
                 QStringLiteral("NoFocus"));
        QCOMPARE(man.LabelToIdent(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("无焦点"), nullptr),
                 QStringLiteral("无焦点"));
        QCOMPARE(man.ClassToTransedName(&QPushButton::staticMetaObject), QStringLiteral("QPushButton"));
        QCOMPARE(man.Cache(), QorTransCache());
    }

    void aRowIsFoundInAnyCaseAndThenServedByTheCache()
    {
        TQorTransMan man(m_dictionary);
        QVERIFY(man.OpenDb());
        const int cached = man.Cache()->Count();
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("qt::focuspolicy"), QStringLiteral("nofocus"), nullptr),
                 QStringLiteral("无焦点"));
        QCOMPARE(man.Cache()->Count(), cached + 1);
        // Served from the cache: the cached answer, changed here, comes back.
        TQorTransCacheItem *item =
            man.Cache()->LocateIdent(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"), false);
        QVERIFY(item);
        item->CnLabel = QStringLiteral("cached");
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NOFOCUS"), nullptr),
                 QStringLiteral("cached"));
        QCOMPARE(man.Cache()->Count(), cached + 1);
        // A miss is asked of the dictionary every time and never cached.
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("ClickFocus"), nullptr),
                 QStringLiteral("ClickFocus"));
        QCOMPARE(man.Cache()->Count(), cached + 1);
        // And back.
        QCOMPARE(man.LabelToIdent(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("强焦点"), nullptr),
                 QStringLiteral("StrongFocus"));
        QCOMPARE(man.LabelToIdent(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("强焦点"), nullptr),
                 QStringLiteral("StrongFocus"));
        QCOMPARE(man.Cache()->Count(), cached + 2);
    }

    void anEventIsFoundByItsIdentifierAlone()
    {
        TQorTransMan man(m_dictionary);
        QCOMPARE(man.IdentToLabel(ttkEvent, QStringLiteral("AnyType"), QStringLiteral("clicked"), nullptr),
                 QStringLiteral("单击"));
        // Kept with an empty type name: a core call naming a type never
        // finds it there, and asks the dictionary (and caches) again.
        const int cached = man.Cache()->Count();
        QCOMPARE(man.IdentToLabel(ttkEvent, QStringLiteral("AnyType"), QStringLiteral("clicked"), nullptr),
                 QStringLiteral("单击"));
        QCOMPARE(man.Cache()->Count(), cached + 1);
        QVERIFY(man.Cache()->LocateIdent(ttkEvent, QString(), QStringLiteral("clicked"), false));
        // Through the type of a signal: no type name, so the cache serves.
        QPushButton button;
        PPropInfo clicked = GetPropInfo(&button, QStringLiteral("clicked"));
        QVERIFY(clicked);
        QCOMPARE(man.IdentToLabel(trPropName, clicked->PropType, QStringLiteral("clicked"), nullptr), QStringLiteral("单击"));
        QCOMPARE(man.Cache()->Count(), cached + 1);
        // Back: the text is looked for among the identifiers, the label is
        // the answer (the mirror of the other direction).
        QCOMPARE(man.LabelToIdent(ttkEvent, QString(), QStringLiteral("clicked"), nullptr), QStringLiteral("单击"));
    }

    void aSetIsTranslatedWordByWordAndAPlainWordIsNot()
    {
        TQorTransMan man(m_dictionary);
        QLabel label;
        PTypeInfo alignment = GetPropInfo(&label, QStringLiteral("alignment"))->PropType;
        QCOMPARE(man.IdentToLabel(trPropValue, alignment, QStringLiteral("[AlignLeft,AlignTop]"), nullptr),
                 QStringLiteral("[左对齐,顶端对齐]"));
        QCOMPARE(man.IdentToLabel(trPropValue, alignment, QStringLiteral("[AlignLeft, AlignBottom]"), nullptr),
                 QStringLiteral("[左对齐, AlignBottom]"));
        QCOMPARE(man.TransComplexExpression(ttkSet, alignment, QStringLiteral("AlignLeft"), true),
                 QStringLiteral("AlignLeft"));
        QCOMPARE(man.LabelToIdent(trPropValue, alignment, QStringLiteral("[左对齐,顶端对齐]"), nullptr),
                 QStringLiteral("[AlignLeft,AlignTop]"));
        // A property's name is not a set expression.
        QCOMPARE(man.LabelToIdent(trPropName, alignment, QStringLiteral("[左对齐]"), nullptr),
                 QStringLiteral("[AlignLeft]"));
    }

    void theWordWalkSkipsTheFirstCharacterAndTheTail()
    {
        const auto upper = [](PTypeInfo, const QString &in, QString &out) { out = QLatin1Char('<') + in.toUpper() + QLatin1Char('>'); };
        QCOMPARE(WalkThroughIdents(nullptr, QStringLiteral("[akTop,akLeft]"), upper), QStringLiteral("[<AKTOP>,<AKLEFT>]"));
        QCOMPARE(WalkThroughIdents(nullptr, QStringLiteral("[a, b]"), upper), QStringLiteral("[<A>, <B>]"));
        QCOMPARE(WalkThroughIdents(nullptr, QStringLiteral("(TFont)"), upper), QStringLiteral("(<TFONT>)"));
        QCOMPARE(WalkThroughIdents(nullptr, QStringLiteral("fsBold"), upper), QStringLiteral("fsBold"));
        QCOMPARE(WalkThroughIdents(nullptr, QStringLiteral("a,b"), upper), QStringLiteral("a,b"));
        QCOMPARE(WalkThroughIdents(nullptr, QStringLiteral("[x,y"), upper), QStringLiteral("[<X>,y"));
        QCOMPARE(WalkThroughIdents(nullptr, QString(), upper), QString());
    }

    void aValueWithFieldsIsLookedUpAsItsClass()
    {
        TQorTransMan man(m_dictionary);
        QPushButton button;
        PTypeInfo font = GetPropInfo(&button, QStringLiteral("font"))->PropType;
        QCOMPARE(man.IdentToLabel(trPropValue, font, QStringLiteral("[QFont]"), nullptr), QStringLiteral("[字体]"));
        QCOMPARE(man.ClassToTransedName(&QPushButton::staticMetaObject), QStringLiteral("按钮"));
        QCOMPARE(man.ClassToTransedName(&QLabel::staticMetaObject), QStringLiteral("QLabel"));
    }

    void namesAndPlainValuesUseTheTypesName()
    {
        TQorTransMan man(m_dictionary);
        QPushButton button;
        PTypeInfo focus = GetPropInfo(&button, QStringLiteral("focusPolicy"))->PropType;
        QCOMPARE(man.IdentToLabel(trPropName, focus, QStringLiteral("focusPolicy"), nullptr), QStringLiteral("焦点策略"));
        QCOMPARE(man.IdentToLabel(trPropValue, focus, QStringLiteral("StrongFocus"), nullptr), QStringLiteral("强焦点"));
        QCOMPARE(man.LabelToIdent(trPropName, focus, QStringLiteral("焦点策略"), nullptr), QStringLiteral("focusPolicy"));
        PTypeInfo flat = GetPropInfo(&button, QStringLiteral("flat"))->PropType;
        QCOMPARE(man.IdentToLabel(trPropValue, flat, QStringLiteral("True"), nullptr), QStringLiteral("是"));
        QCOMPARE(man.IdentToLabel(trPropValue, nullptr, QStringLiteral("True"), nullptr), QStringLiteral("True"));
    }

    void aComponentReferenceIsWrittenRelativeToTheComponent()
    {
        TQorTransMan man(m_dictionary);
        QWidget form1, form2;
        form1.setObjectName(QStringLiteral("Form1"));
        form2.setObjectName(QStringLiteral("Form2"));
        auto *button = new QPushButton(&form1);
        button->setObjectName(QStringLiteral("Button1"));
        InsertComponent(&form1, button);
        PTypeInfo widget = TypeInfoOf<QWidget>();
        QCOMPARE(man.IdentToLabel(trPropValue, widget, QStringLiteral("Form1.Button1"), &form1), QStringLiteral("Button1"));
        QCOMPARE(man.IdentToLabel(trPropValue, widget, QStringLiteral("Form1.Button1"), &form2),
                 QStringLiteral("Form1.Button1"));
        QCOMPARE(man.IdentToLabel(trPropValue, widget, QStringLiteral("Form1.Nothing"), &form1), QString());
        QCOMPARE(man.LabelToIdent(trPropValue, widget, QStringLiteral("Button1"), &form1), QStringLiteral("Button1"));
    }

    void theFilterTextsAreWrittenAsTheyAre()
    {
        TQorTransMan man;
        QCOMPARE(man.GenerateIdentToLabelFilterStr(ttkEnum, QStringLiteral("T'x"), QStringLiteral("a")),
                 QStringLiteral("(TranTypeKind='ENUM') and (TypeName='T'x') and (Indent='a')"));
        QCOMPARE(man.GenerateLabelToIdentFilterStr(ttkEvent, QString(), QStringLiteral("L")),
                 QStringLiteral("(TranTypeKind='EVENT') and (TypeName='') and (CnLabel='L')"));
        QCOMPARE(TypeKindStrs(tkDynArray), QStringLiteral("tkDynArray"));
        QCOMPARE(TranslateLan, tlChinese);
    }

    void theGlobalManagerLabelsClassesForTheNamingFunctions()
    {
        QCOMPARE(QorTransMan(), QorTransMan());
        QorTransMan()->SetDbFileName(m_dictionary);
        QCOMPARE(ClassToTransedName(&QPushButton::staticMetaObject), QStringLiteral("按钮"));
        QWidget form;
        QCOMPARE(GetCompUniqueCNName(&QPushButton::staticMetaObject, &form), QStringLiteral("按钮1"));
        QorTransMan()->SetDbFileName(QString());
        QCOMPARE(ClassToTransedName(&QPushButton::staticMetaObject), QStringLiteral("QPushButton"));
    }

    void aMissingOrDamagedDictionaryPassesIdentifiersAndIsTriedAgain()
    {
        const QString file = m_dir.filePath(QStringLiteral("later.sqlite"));
        TQorTransMan man(file);
        QVERIFY(!man.OpenDb());
        QVERIFY(!QFile::exists(file));
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"), nullptr),
                 QStringLiteral("NoFocus"));
        // Garbage, then a database of another kind.
        QFile garbage(file);
        QVERIFY(garbage.open(QIODevice::WriteOnly));
        garbage.write(QByteArray(4096, '\x5a'));
        garbage.close();
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"), nullptr),
                 QStringLiteral("NoFocus"));
        QCOMPARE(man.LabelToIdent(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("无焦点"), nullptr),
                 QStringLiteral("无焦点"));
        QVERIFY(QFile::remove(file));
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            db.setDatabaseName(file);
            QVERIFY(db.open());
            QSqlQuery(db).exec(QStringLiteral("CREATE TABLE Words (a TEXT)"));
            db.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("other"));
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"), nullptr),
                 QStringLiteral("NoFocus"));
        // A good dictionary in its place: found on the next look-up.
        QVERIFY(QFile::remove(file));
        QVERIFY(QFile::copy(m_dictionary, file));
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"), nullptr),
                 QStringLiteral("无焦点"));
    }

    void tenThousandDamagedDictionariesNeverBreakTheLookUps()
    {
        // Small pages keep the file, and each round, small; the damage is
        // made from a fixed seed and the round, so a failure replays.
        const QString small = m_dir.filePath(QStringLiteral("small.sqlite"));
        QVERIFY(writeDictionary(small, sampleRows, 512));
        QFile source(small);
        QVERIFY(source.open(QIODevice::ReadOnly));
        const QByteArray good = source.readAll();
        QVERIFY(good.size() >= 2048);
        QList<qsizetype> hot;
        for (qsizetype i = 0; i + 4 <= good.size(); ++i) {
            if (good.at(i) == 0 && good.at(i + 1) == 0 && good.at(i + 2) == 0)
                hot.append(i);
        }
        constexpr quint32 seed = 424242;
        // Each round writes its file anew: in memory where the system has
        // a memory file system, rather than on the disk ten thousand times.
        QTemporaryDir memory(QStringLiteral("/dev/shm/qortransutils-XXXXXX"));
        const QString file = (memory.isValid() ? memory.filePath(QStringLiteral("mutant.sqlite"))
                                               : m_dir.filePath(QStringLiteral("mutant.sqlite")));
        int translated = 0;
        constexpr int rounds = 10000;
        for (int round = 0; round < rounds; ++round) {
            const QByteArray bytes = QorMutator::mutate(good, seed, round, {}, hot);
            QFile out(file);
            QVERIFY(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
            out.write(bytes);
            out.close();
            TQorTransMan man(file);
            const QString label =
                man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("StrongFocus"), nullptr);
            // The identifier, the true label of a file that still reads, or
            // what a damaged row now says (no more than the file holds).
            const bool known = label == QStringLiteral("StrongFocus") || label == QStringLiteral("强焦点");
            if (!known && label.toUtf8().size() > bytes.size())
                QFAIL(QByteArray(QorMutator::where(seed, round, "dictionary file") + ": " + label.toUtf8()).constData());
            translated += label == QStringLiteral("强焦点");
            try {
                const QString ident =
                    man.LabelToIdent(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("无焦点"), nullptr);
                const bool knownIdent = ident == QStringLiteral("无焦点") || ident == QStringLiteral("NoFocus");
                if (!knownIdent && ident.toUtf8().size() > bytes.size())
                    QFAIL(QByteArray(QorMutator::where(seed, round, "dictionary file") + ": " + ident.toUtf8()).constData());
            } catch (const EQorError &) {
                // The label direction reports what the dictionary says.
            }
            QorTransCache()->SetMaxLength(0);
            QorTransCache()->SetMaxLength(200);
        }
        qInfo("dictionary files: %d of %d damaged copies still gave the true label", translated, rounds);
        QVERIFY(translated > 0 && translated < rounds);
    }

    void aTextLongerThanAnyLabelIsNoEntry()
    {
        // A dictionary from elsewhere may hold texts of any length.
        const QByteArray huge(70000, 'x');
        QList<Row> rows = sampleRows;
        rows.append({"ENUM", "Huge", "Long", huge.constData()});
        rows.append({"ENUM", "Huge", huge.constData(), "Short"});
        rows.append({"ENUM", "Huge", "Fine", "Good"});
        const QString file = m_dir.filePath(QStringLiteral("huge.sqlite"));
        QVERIFY(writeDictionary(file, rows));
        TQorTransMan man(file);
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Huge"), QStringLiteral("Long"), nullptr), QStringLiteral("Long"));
        QCOMPARE(man.LabelToIdent(ttkEnum, QStringLiteral("Huge"), QStringLiteral("Short"), nullptr), QStringLiteral("Short"));
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Huge"), QStringLiteral("Fine"), nullptr), QStringLiteral("Good"));
    }

    void aLockedOrDeletedDictionaryPassesIdentifiers()
    {
        const QString file = m_dir.filePath(QStringLiteral("locked.sqlite"));
        QVERIFY(QFile::copy(m_dictionary, file));
        {
            // Another program holds the file for writing.
            QSqlDatabase writer = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("locker"));
            writer.setDatabaseName(file);
            QVERIFY(writer.open());
            QSqlQuery lock(writer);
            QVERIFY(lock.exec(QStringLiteral("BEGIN EXCLUSIVE")));
            TQorTransMan man(file);
            QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"), nullptr),
                     QStringLiteral("NoFocus"));
            QVERIFY(lock.exec(QStringLiteral("ROLLBACK")));
            // Let go: found on the next look-up.
            QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"), nullptr),
                     QStringLiteral("无焦点"));
            // Deleted while open: what is open goes on answering, and a new
            // manager finds nothing and passes identifiers.
            QVERIFY(QFile::remove(file));
            QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("StrongFocus"), nullptr),
                     QStringLiteral("强焦点"));
            TQorTransMan later(file);
            QCOMPARE(later.IdentToLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("StrongFocus"), nullptr),
                     QStringLiteral("StrongFocus"));
            writer.close();
        }
        QSqlDatabase::removeDatabase(QStringLiteral("locker"));
    }

    void aDictionaryDamagedWhileOpenFailsOnlyTheLabelDirection()
    {
        // Large enough that its rows lie beyond the first pages.
        QList<Row> rows = sampleRows;
        QList<QByteArray> keep;
        for (int i = 0; i < 3000; ++i) {
            keep.append(QByteArray("Ident") + QByteArray::number(i));
            keep.append(QByteArray("Label") + QByteArray::number(i));
        }
        for (int i = 0; i < 3000; ++i)
            rows.append({"ENUM", "Big", keep[2 * i].constData(), keep[2 * i + 1].constData()});
        const QString file = m_dir.filePath(QStringLiteral("big.sqlite"));
        QVERIFY(writeDictionary(file, rows));
        TQorTransMan man(file);
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Big"), QStringLiteral("Ident10"), nullptr), QStringLiteral("Label10"));
        // Overwritten in place with garbage past its first page.
        QFile damage(file);
        QVERIFY(damage.open(QIODevice::ReadWrite));
        damage.seek(4096);
        damage.write(QByteArray(int(damage.size()) - 4096, '\x7f'));
        damage.close();
        QCOMPARE(man.IdentToLabel(ttkEnum, QStringLiteral("Big"), QStringLiteral("Ident2999"), nullptr),
                 QStringLiteral("Ident2999"));
        QVERIFY_THROWS_EXCEPTION(EQorError, man.LabelToIdent(ttkEnum, QStringLiteral("Big"), QStringLiteral("Label2999"), nullptr));
    }
};

QTEST_MAIN(tst_QorTransUtils)
#include "tst_qortransutils.moc"
