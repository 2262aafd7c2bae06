// SPDX-License-Identifier: MIT
// The translation cache: bounded by its maximum length with the least used
// answers dropped first, look-ups counted, frequencies aged past the
// maximum count, and a model of it checked over random operations.
#include "foundation/qorerror.h"
#include "translation/qortranscache_p.h"

#include <QRandomGenerator>
#include <QTest>

#include <map>

namespace {

QString key(int i)
{
    return QStringLiteral("ident%1").arg(i);
}

// A cache holding Count answers, the i-th asked for i times more (with no
// ageing while it fills).
void fill(TQorTransCache &cache, int count)
{
    cache.SetMaxEnvokedCount(1 << 30);
    for (int i = 0; i < count; ++i)
        cache.AddItem(QStringLiteral("ENUM"), QStringLiteral("T"), key(i), QStringLiteral("L%1").arg(i));
    for (int i = 0; i < count; ++i) {
        for (int n = 0; n < i; ++n)
            cache.LocateIdent(QStringLiteral("ENUM"), QStringLiteral("T"), key(i), true);
    }
}

// Whether the cache holds an answer, found without a counted look-up.
bool holds(const TQorTransCache &cache, const QString &ident)
{
    for (int i = 0; i < cache.Count(); ++i) {
        if (cache.TransItems(i)->Indent == ident)
            return true;
    }
    return false;
}

} // namespace

class tst_QorTransCache : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewCacheIsEmptyWithItsLimits()
    {
        TQorTransCache cache;
        QCOMPARE(cache.Count(), 0);
        QCOMPARE(cache.EnvokedCount(), 0);
        QCOMPARE(cache.MaxLength(), 200);
        QCOMPARE(cache.MaxEnvokedCount(), 4000);
        QCOMPARE(TransTypeKindStrs(ttkClassValue), QStringLiteral("CLASSVALUE"));
        QCOMPARE(TransTypeKindStrs(ttkEvent), QStringLiteral("EVENT"));
        QVERIFY(QorTransCache() == QorTransCache());
    }

    void theTwoHundredAndFirstEntryDropsTheTwoLeastUsed()
    {
        TQorTransCache cache;
        fill(cache, 200);
        QCOMPARE(cache.Count(), 200);
        QVERIFY(holds(cache, key(0)) && holds(cache, key(1)));
        cache.AddItem(QStringLiteral("ENUM"), QStringLiteral("T"), QStringLiteral("newcomer"), QStringLiteral("N"));
        QCOMPARE(cache.Count(), 199);
        // ident0 and the newcomer were used once each, every other entry
        // more often: those two go.
        QVERIFY(!holds(cache, key(0)));
        QVERIFY(!holds(cache, QStringLiteral("newcomer")));
        QVERIFY(holds(cache, key(1)));
        QVERIFY(holds(cache, key(2)));
        QVERIFY(holds(cache, key(199)));
        // Sorted by use: the most used is last.
        QCOMPARE(cache.TransItems(cache.Count() - 1)->Indent, key(199));
    }

    void aSmallerMaximumLeavesOneFewer()
    {
        TQorTransCache cache;
        fill(cache, 50);
        cache.SetMaxLength(10);
        QCOMPARE(cache.Count(), 9);
        for (int i = 41; i < 50; ++i)
            QVERIFY(holds(cache, key(i)));
        cache.SetMaxLength(20);
        QCOMPARE(cache.Count(), 9);
    }

    void aLookUpThatFindsNothingStillCounts()
    {
        TQorTransCache cache;
        cache.AddItem(QStringLiteral("ENUM"), QStringLiteral("T"), QStringLiteral("a"), QStringLiteral("A"));
        QCOMPARE(cache.EnvokedCount(), 1);
        QCOMPARE(cache.LocateIdent(QStringLiteral("ENUM"), QStringLiteral("T"), QStringLiteral("zzz"), true), -1);
        QCOMPARE(cache.LocateLabel(QStringLiteral("ENUM"), QStringLiteral("T"), QStringLiteral("zzz"), true), -1);
        QCOMPARE(cache.LocateIdent(ttkSet, QStringLiteral("T"), QStringLiteral("a"), true), nullptr);
        QCOMPARE(cache.EnvokedCount(), 4);
    }

    void pastTheMaximumCountEveryCallWipesTheFrequencies()
    {
        TQorTransCache cache;
        cache.AddItem(QStringLiteral("ENUM"), QStringLiteral("T"), QStringLiteral("a"), QStringLiteral("A"));
        cache.AddItem(QStringLiteral("ENUM"), QStringLiteral("T"), QStringLiteral("b"), QStringLiteral("B"));
        while (cache.EnvokedCount() < 4000)
            cache.LocateIdent(QStringLiteral("ENUM"), QStringLiteral("T"), QStringLiteral("a"), true);
        QCOMPARE(cache.TransItems(0)->Frequency, 3999);
        // The 4001st counted call.
        QCOMPARE(cache.LocateIdent(QStringLiteral("ENUM"), QStringLiteral("T"), QStringLiteral("b"), true), 1);
        QCOMPARE(cache.TransItems(0)->Frequency, 0);
        QCOMPARE(cache.TransItems(1)->Frequency, 1);
        QCOMPARE(cache.LocateIdent(QStringLiteral("ENUM"), QStringLiteral("T"), QStringLiteral("a"), true), 0);
        QCOMPARE(cache.TransItems(0)->Frequency, 1);
        QCOMPARE(cache.TransItems(1)->Frequency, 0);
        QCOMPARE(cache.EnvokedCount(), 4002);
    }

    void theKindsTextMatchesInAnyCase()
    {
        TQorTransCache cache;
        cache.AddItem(QStringLiteral("ENUM"), QStringLiteral("Qt::FocusPolicy"), QStringLiteral("NoFocus"),
                      QStringLiteral("无焦点"));
        QCOMPARE(cache.LocateIdent(QStringLiteral("enum"), QStringLiteral("qt::focuspolicy"), QStringLiteral("NOFOCUS"), true), 0);
        QCOMPARE(cache.LocateLabel(QStringLiteral("Enum"), QStringLiteral("Qt::FocusPolicy"), QStringLiteral("无焦点"), true), 0);
        TQorTransCacheItem *item = cache.LocateIdent(ttkEnum, QStringLiteral("Qt::FOCUSPOLICY"), QStringLiteral("nofocus"), false);
        QVERIFY(item);
        QCOMPARE(item->CnLabel, QStringLiteral("无焦点"));
        QCOMPARE(item->Frequency, 3);
        QCOMPARE(cache.LocateLabel(ttkEnum, QStringLiteral("Qt::FocusPolicy"), QStringLiteral("无焦点"), false)->Indent,
                 QStringLiteral("NoFocus"));
    }

    void itemsAreReplacedRemovedAndCheckedByIndex()
    {
        TQorTransCache cache;
        fill(cache, 3);
        auto fresh = std::make_unique<TQorTransCacheItem>();
        fresh->Indent = QStringLiteral("fresh");
        std::unique_ptr<TQorTransCacheItem> old = cache.SetTransItems(1, std::move(fresh));
        QCOMPARE(old->Indent, key(1));
        QCOMPARE(cache.TransItems(1)->Indent, QStringLiteral("fresh"));
        cache.IncItemFrequency(1);
        QCOMPARE(cache.TransItems(1)->Frequency, 1);
        cache.RemoveItem(0);
        QCOMPARE(cache.Count(), 2);
        QVERIFY_THROWS_EXCEPTION(EQorError, cache.TransItems(2));
        QVERIFY_THROWS_EXCEPTION(EQorError, cache.RemoveItem(-1));
        QVERIFY_THROWS_EXCEPTION(EQorError, cache.IncItemFrequency(5));
        cache.EmptyAllFrequencies();
        QCOMPARE(cache.TransItems(0)->Frequency + cache.TransItems(1)->Frequency, 0);
    }

    // The cache against a plain model of its rules, over random additions,
    // look-ups in both directions and changes of the maximum.
    void aModelAgreesOverAThousandRandomOperations()
    {
        TQorTransCache cache;
        cache.SetMaxLength(20);
        cache.SetMaxEnvokedCount(300);
        std::map<QString, int> model; // identifier -> frequency
        int envoked = 0, maxLength = 20;
        QRandomGenerator random(20261125);
        auto count = [&] {
            ++envoked;
            if (envoked > 300)
                for (auto &[ident, frequency] : model)
                    frequency = 0;
        };
        // The cache chooses among equally used entries; the model accepts
        // its choice when every dropped entry was no more used than any kept.
        auto adopt = [&](size_t expected) {
            QCOMPARE(size_t(cache.Count()), expected);
            std::map<QString, int> kept;
            for (int i = 0; i < cache.Count(); ++i) {
                const QString ident = cache.TransItems(i)->Indent;
                QVERIFY(model.count(ident));
                kept[ident] = model[ident];
            }
            int maxDropped = -1, minKept = INT_MAX;
            for (const auto &[ident, frequency] : model) {
                if (kept.count(ident))
                    minKept = std::min(minKept, frequency);
                else
                    maxDropped = std::max(maxDropped, frequency);
            }
            QVERIFY(maxDropped <= minKept);
            model = kept;
        };
        for (int op = 0; op < 1000; ++op) {
            const int choice = random.bounded(100);
            const QString ident = key(random.bounded(40));
            if (choice < 35) {
                // Added after a miss, as the manager does.
                const int before = cache.EnvokedCount();
                const bool present = holds(cache, ident);
                QCOMPARE(cache.EnvokedCount(), before);
                if (present)
                    continue;
                cache.AddItem(QStringLiteral("ENUM"), QStringLiteral("T"), ident, QStringLiteral("L") + ident);
                count();
                model[ident] = 1;
                if (model.size() > size_t(maxLength))
                    adopt(model.size() - (model.size() - maxLength + 1));
            } else if (choice < 85) {
                const bool inc = random.bounded(2) == 0;
                const bool byLabel = random.bounded(2) == 0;
                const int index = byLabel ? cache.LocateLabel(QStringLiteral("enum"), QStringLiteral("t"), QStringLiteral("L") + ident, inc)
                                          : cache.LocateIdent(QStringLiteral("enum"), QStringLiteral("t"), ident.toUpper(), inc);
                count();
                QCOMPARE(index >= 0, model.count(ident) == 1);
                if (index >= 0) {
                    QCOMPARE(cache.TransItems(index)->Indent, ident);
                    if (inc)
                        ++model[ident];
                }
            } else if (choice < 90) {
                maxLength = 10 + random.bounded(20);
                cache.SetMaxLength(maxLength);
                if (model.size() > size_t(maxLength))
                    adopt(model.size() - (model.size() - maxLength + 1));
            } else {
                // Nothing changes the cache but the calls above.
                QCOMPARE(size_t(cache.Count()), model.size());
            }
            QCOMPARE(cache.EnvokedCount(), envoked);
            for (int i = 0; i < cache.Count(); ++i)
                QCOMPARE(cache.TransItems(i)->Frequency, model[cache.TransItems(i)->Indent]);
        }
        QVERIFY(envoked > 300);
    }
};

QTEST_MAIN(tst_QorTransCache)
#include "tst_qortranscache.moc"
