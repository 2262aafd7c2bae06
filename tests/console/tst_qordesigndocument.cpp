// SPDX-License-Identifier: MIT
// Designed forms as documents: saving a stage's design and opening it again
// in both forms, saves that fail, damaged and foreign files, what opening
// does to the design system around the stage, and the recovery copy of
// unsaved work, also after a designer was killed.
#include "console/qorconsoleintf.h"
#include "console/qordesignconsole.h"
#include "console/qordesigndocument.h"
#include "designer/qormanager.h"
#include "foundation/qorclasses.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorstream.h"
#include "harness/qorguitest.h"
#include "harness/qormutator.h"
#include "harness/qorrealinput.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMetaProperty>
#include <QProcess>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <limits>
#include <memory>
#include <sys/resource.h>
#include <unistd.h>

namespace {

// A tree view that only counts what the center asks of it.
class CountingTree : public QWidget, public IQorCompTreeView
{
    Q_OBJECT
    Q_INTERFACES(IQorCompTreeView)

public:
    void SetConsoleCenter(TQorDesignCenter *) override {}
    TComponentList SelectedComps() const override { return selected; }
    void SetSelectedComps(const TComponentList &List) override { selected = List; }
    void Refresh() override { ++refreshCount; }
    bool Dirty() const override { return dirty; }
    void SetDirty(bool Value) override { dirty = Value; }
    void SetPopupMenu(QMenu *) override {}

    TComponentList selected;
    int refreshCount = 0;
    bool dirty = false;
};

// A stage with its design manager, a design center and the document.
struct Design
{
    std::unique_ptr<QWidget> stage = std::make_unique<QWidget>();
    TQorDesignManager *manager = new TQorDesignManager(stage.get());
    std::unique_ptr<TQorDesignCenter> center = std::make_unique<TQorDesignCenter>();
    std::unique_ptr<TQorDesignDocument> doc;

    explicit Design(const QString &RecoveryFolder)
    {
        stage->setObjectName(QStringLiteral("Form1"));
        stage->resize(900, 640);
        center->SetDesignManager(manager);
        manager->SetIsDesigning(true);
        doc = std::make_unique<TQorDesignDocument>(center.get());
        doc->SetRecoveryFolder(RecoveryFolder);
        doc->SetAutosaveEnabled(false);
    }
    ~Design()
    {
        doc.reset();
        manager->SetIsDesigning(false);
        center.reset();
    }
    Design(const Design &) = delete;
    Design &operator=(const Design &) = delete;

    template<class T>
    T *add(const char *name, const QRect &r, QWidget *parent = nullptr)
    {
        auto *w = new T(parent ? parent : stage.get());
        w->setObjectName(QLatin1String(name));
        w->setGeometry(r);
        InsertComponent(stage.get(), w);
        return w;
    }

    // A few components of several kinds, nested, with a timer.
    void fillSmall()
    {
        add<QPushButton>("Button1", QRect(10, 10, 80, 24))->setText(QStringLiteral("OK"));
        auto *group = add<QGroupBox>("GroupBox1", QRect(10, 50, 200, 120));
        add<QLabel>("Label1", QRect(10, 30, 100, 20), group)->setText(QStringLiteral("Name:"));
        add<QLineEdit>("LineEdit1", QRect(230, 10, 150, 24))->setText(QStringLiteral("Ada"));
        auto *timer = new QTimer;
        timer->setObjectName(QStringLiteral("Timer1"));
        timer->setInterval(250);
        InsertComponent(stage.get(), timer);
    }
};

// A control's place among its parent's components, the lowest first: the
// library's own widgets, the inner parts of composite widgets and the
// components freed but not yet destroyed do not count.
qsizetype stackingIndex(const QWidget *parent, const QWidget *control)
{
    qsizetype index = 0;
    for (const QObject *child : parent->children()) {
        if (child == control)
            return index;
        if (child->isWidgetType() && Owner(child))
            ++index;
    }
    return -1;
}

// The stage's design in lines: each owned component in owner order with its
// class, name, visual parent, geometry, place among its siblings (z-order)
// and whether it was hidden; the stage's own name first.
QStringList describe(QWidget *stage)
{
    QStringList lines{stage->objectName()};
    for (QObject *c : ComponentList(stage)) {
        QString line = QStringLiteral("%1 %2").arg(QString::fromLatin1(c->metaObject()->className()), c->objectName());
        if (auto *w = qobject_cast<QWidget *>(c)) {
            QWidget *parent = w->parentWidget();
            const QRect g = w->geometry();
            line += QStringLiteral(" in %1 at %2,%3 %4x%5 z%6%7")
                        .arg(parent ? parent->objectName() : QStringLiteral("-"))
                        .arg(g.x())
                        .arg(g.y())
                        .arg(g.width())
                        .arg(g.height())
                        .arg(parent ? stackingIndex(parent, w) : -1)
                        .arg(w->isHidden() ? QStringLiteral(" hidden") : QString());
        }
        lines.append(line);
    }
    return lines;
}

// The objects themselves: a design left untouched keeps them.
QList<QObject *> identities(QWidget *stage)
{
    return ComponentList(stage);
}

bool sameObjects(const QList<QObject *> &a, const QList<QObject *> &b)
{
    return a.size() == b.size() && std::equal(a.cbegin(), a.cend(), b.cbegin());
}

bool comparable(const QVariant &v)
{
    return v.metaType().isEqualityComparable() && v.metaType().id() != QMetaType::QIcon
        && v.metaType().id() != QMetaType::QPixmap;
}

// String properties whose texts are patterns of their own, not free text.
bool patternProperty(const QByteArray &name)
{
    static const QList<QByteArray> names = {"inputMask", "displayFormat", "html", "markdown", "styleSheet"};
    return names.contains(name);
}

// Gives each of the class's own stored properties (beyond QWidget's or
// QObject's) a value other than its default where the object keeps it, and
// every widget a tip and a disabled state. Returns how many were changed.
// A value that one property's change gave another (a list view in icon
// mode shows its selection rectangle) is not turned back to the fresh
// instance's: the stream does not keep that yet (see
// anUncheckedCheckableGroupBoxStaysUnchecked).
int giveNonDefaults(QObject *o)
{
    const QMetaObject *mo = o->metaObject();
    const std::unique_ptr<QObject> fresh(CreateRegisteredComponent(mo));
    const int from = o->isWidgetType() ? QWidget::staticMetaObject.propertyCount()
                                       : QObject::staticMetaObject.propertyCount();
    int changed = 0;
    for (int i = from; i < mo->propertyCount(); ++i) {
        const QMetaProperty p = mo->property(i);
        if (!p.isReadable() || !p.isWritable() || !p.isStored() || !p.isDesignable() || patternProperty(p.name()))
            continue;
        const QVariant before = p.read(o);
        QVariant value;
        if (p.isEnumType()) {
            if (p.isFlagType())
                continue;
            const QMetaEnum e = p.enumerator();
            for (int k = 0; k < e.keyCount(); ++k) {
                if (e.value(k) != before.toInt()) {
                    value = e.value(k);
                    break;
                }
            }
        } else {
            switch (before.metaType().id()) {
            case QMetaType::Bool:
                value = !before.toBool();
                break;
            case QMetaType::Int: {
                const int v = before.toInt();
                value = v == std::numeric_limits<int>::max() ? v - 1 : v + 1;
                break;
            }
            case QMetaType::Double:
                value = before.toDouble() + 0.5;
                break;
            case QMetaType::QString:
                value = QStringLiteral("Text of %1").arg(QString::fromLatin1(p.name()));
                break;
            default:
                break;
            }
        }
        if (!value.isValid() || value == p.read(fresh.get()))
            continue;
        const bool written = p.write(o, value);
        const QVariant after = p.read(o);
        if (written && (p.isEnumType() ? after.toInt() == value.toInt() : after == value)) {
            ++changed;
        } else {
            p.write(o, before);
        }
    }
    if (auto *w = qobject_cast<QWidget *>(o)) {
        w->setToolTip(QStringLiteral("Tip of %1").arg(o->objectName()));
        w->setStatusTip(QStringLiteral("Status of %1").arg(o->objectName()));
        w->setEnabled(false);
        changed += 3;
    }
    return changed;
}

// Each component of the loaded design against the original's: every
// writable, stored, comparable property equal. Empty when they agree, else the first
// difference.
QString differingProperty(QWidget *original, QWidget *loaded)
{
    const QList<QObject *> a = ComponentList(original);
    const QList<QObject *> b = ComponentList(loaded);
    if (a.size() != b.size())
        return QStringLiteral("component count %1 against %2").arg(a.size()).arg(b.size());
    for (qsizetype i = 0; i < a.size(); ++i) {
        const QMetaObject *mo = a.at(i)->metaObject();
        for (int p = 0; p < mo->propertyCount(); ++p) {
            const QMetaProperty property = mo->property(p);
            // What a component can be told; read-only properties follow from
            // it and from the window system (the active window).
            if (!property.isReadable() || !property.isWritable() || !property.isStored() || !property.isDesignable())
                continue;
            const QVariant va = property.read(a.at(i));
            const QVariant vb = property.read(b.at(i));
            if (comparable(va) && va != vb) {
                return QStringLiteral("%1.%2: %3 against %4")
                    .arg(a.at(i)->objectName(), QString::fromLatin1(property.name()), va.toString(), vb.toString());
            }
        }
    }
    return QString();
}

QByteArray fileBytes(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return QByteArray();
    return f.readAll();
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

// A row for each form a design is saved in.
void addFormatRows()
{
    QTest::addColumn<int>("format");
    QTest::newRow("binary") << int(TQorDesignDocument::dfBinary);
    QTest::newRow("text") << int(TQorDesignDocument::dfText);
}

// Lets the components freed meanwhile go.
void freePending()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

} // namespace

class tst_QorDesignDocument : public QorGuiTest::RealInputTestCase
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString path(const QString &name) const { return m_dir->filePath(name); }
    QString recoveryFolder() const { return m_dir->filePath(QStringLiteral("recovery")); }

    // A design that fails to save keeps its old file and stays dirty.
    void checkFailedSave(Design &design, const QString &target, const QString &oldFile, const QByteArray &oldBytes)
    {
        design.doc->SetModified(true);
        QSignalSpy saved(design.doc.get(), &TQorDesignDocument::Saved);
        QVERIFY(!design.doc->SaveAs(target, TQorDesignDocument::dfBinary));
        QVERIFY(!design.doc->ErrorString().isEmpty());
        QVERIFY2(design.doc->ErrorString().contains(target), qPrintable(design.doc->ErrorString()));
        QVERIFY(design.doc->Modified());
        QVERIFY(design.center->GetDirty());
        QCOMPARE(saved.count(), 0);
        QVERIFY(design.doc->FileName() != target);
        if (!oldFile.isEmpty())
            QCOMPARE(fileBytes(oldFile), oldBytes);
    }

    // A copy of unsaved work left by a document that went away.
    void leaveACopyBehind()
    {
        Design design(recoveryFolder());
        design.fillSmall();
        design.doc->SetModified(true);
        QVERIFY(design.doc->WriteRecovery());
    }

private Q_SLOTS:
    void init()
    {
        m_dir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_dir->isValid());
    }

    void cleanup()
    {
        freePending();
        QorGuiTest::RealInputTestCase::cleanup();
        m_dir.reset();
    }

    // Edge cases

    void aSaveOntoAFolderInTheWayFailsAndKeepsTheDesignDirty()
    {
        Design design(recoveryFolder());
        design.fillSmall();
        const QString target = path(QStringLiteral("design.qor"));
        QVERIFY(QDir().mkpath(target));
        checkFailedSave(design, target, QString(), QByteArray());
        QVERIFY(QFileInfo(target).isDir());
    }

    void aSaveUnderAFileFailsAndKeepsThatFile()
    {
        Design design(recoveryFolder());
        design.fillSmall();
        const QString file = path(QStringLiteral("plain.txt"));
        QVERIFY(writeBytes(file, "not a folder"));
        checkFailedSave(design, file + QStringLiteral("/design.qor"), file, "not a folder");
    }

    void aSaveIntoAReadOnlyFolderFailsAndKeepsTheOldFile()
    {
        if (geteuid() == 0)
            QSKIP("Folder permissions do not stop the superuser from writing");
        Design design(recoveryFolder());
        design.fillSmall();
        const QString folder = path(QStringLiteral("locked"));
        QVERIFY(QDir().mkpath(folder));
        const QString target = folder + QStringLiteral("/design.qor");
        QVERIFY(design.doc->SaveAs(target, TQorDesignDocument::dfBinary));
        const QByteArray old = fileBytes(target);
        design.add<QPushButton>("Button2", QRect(10, 200, 80, 24));
        QVERIFY(QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner));
        checkFailedSave(design, target, target, old);
        QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    }

    void aSaveThatRunsOutOfRoomKeepsTheOldFile()
    {
        // The process may write no file beyond 1 MiB: a disk that is full
        // for this design, also for the superuser.
        Design design(recoveryFolder());
        design.fillSmall();
        const QString target = path(QStringLiteral("design.qor"));
        QVERIFY(design.doc->SaveAs(target, TQorDesignDocument::dfBinary));
        const QByteArray old = fileBytes(target);
        QVERIFY(old.startsWith("QOR1"));
        design.add<QLabel>("Label2", QRect(10, 200, 80, 24))->setText(QString(1 << 20, QLatin1Char('x')));
        rlimit before{};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
        rlimit small = before;
        small.rlim_cur = 1 << 20;
        const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        design.doc->SetModified(true);
        const bool saved = design.doc->SaveAs(target, TQorDesignDocument::dfBinary);
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, previousHandler);
        QVERIFY(!saved);
        QVERIFY(!design.doc->ErrorString().isEmpty());
        QVERIFY(design.doc->Modified());
        QCOMPARE(fileBytes(target), old);
        QCOMPARE(QDir(m_dir->path()).entryList(QDir::Files), QStringList{QStringLiteral("design.qor")});
    }

    void damagedDocumentsOpenWithoutHarmToTheDesign_data()
    {
        addFormatRows();
    }

    void damagedDocumentsOpenWithoutHarmToTheDesign()
    {
        QFETCH(int, format);
        const auto form = TQorDesignDocument::TQorDocumentFormat(format);
        const QString good = path(QStringLiteral("good.qor"));
        QByteArray seed;
        {
            Design source(recoveryFolder());
            source.fillSmall();
            QVERIFY(source.doc->SaveAs(good, form));
            seed = fileBytes(good);
        }
        Design design(recoveryFolder());
        QVERIFY(design.doc->Open(good));
        const QStringList shape = describe(design.stage.get());
        QCOMPARE(shape.size(), 6);
        const QString damaged = path(QStringLiteral("damaged.qor"));
        constexpr quint32 kSeed = 0x0d0c5eed;
        int refused = 0;
        for (int i = 0; i < 500; ++i) {
            const QByteArray bytes = QorMutator::mutate(seed, kSeed + quint32(format), i);
            QVERIFY(writeBytes(damaged, bytes));
            const QList<QObject *> before = identities(design.stage.get());
            if (design.doc->Open(damaged)) {
                // Damage a reader can take is a design of its own; the good
                // one comes back for the next round.
                QVERIFY2(design.doc->Open(good), qPrintable(design.doc->ErrorString()));
                QCOMPARE(describe(design.stage.get()), shape);
            } else {
                ++refused;
                QVERIFY2(!design.doc->ErrorString().isEmpty(), qPrintable(QStringLiteral("index %1").arg(i)));
                QVERIFY2(sameObjects(identities(design.stage.get()), before), qPrintable(QStringLiteral("index %1").arg(i)));
                QVERIFY2(describe(design.stage.get()) == shape, qPrintable(QStringLiteral("index %1").arg(i)));
            }
            if (i % 50 == 49)
                freePending();
        }
        QVERIFY(refused > 250);
    }

    void foreignFilesAreRefusedWithAReason_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("a picture") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
        QTest::newRow("plain text") << QByteArray("Dear customer,\n");
        QTest::newRow("a json object of another kind") << QByteArray("{\"name\": \"x\", \"items\": [1, 2]}");
        QTest::newRow("two designs") << QByteArray();
        QTest::newRow("a button, not a stage") << QByteArray();
    }

    void foreignFilesAreRefusedWithAReason()
    {
        QFETCH(QByteArray, content);
        Design design(recoveryFolder());
        design.fillSmall();
        if (QByteArray(QTest::currentDataTag()) == "two designs")
            content = ComponentToBytes(design.stage.get()) + ComponentToBytes(design.stage.get());
        if (QByteArray(QTest::currentDataTag()) == "a button, not a stage")
            content = ComponentToBytes(FindComponent(design.stage.get(), QStringLiteral("Button1")));
        const QString file = path(QStringLiteral("foreign.qor"));
        QVERIFY(writeBytes(file, content));
        const QStringList shape = describe(design.stage.get());
        const QList<QObject *> before = identities(design.stage.get());
        design.doc->SetModified(true);
        QSignalSpy opened(design.doc.get(), &TQorDesignDocument::Opened);
        QVERIFY(!design.doc->Open(file));
        QVERIFY(design.doc->ErrorString().contains(file));
        QCOMPARE(describe(design.stage.get()), shape);
        QVERIFY(sameObjects(identities(design.stage.get()), before));
        QVERIFY(design.doc->Modified());
        QVERIFY(design.doc->FileName().isEmpty());
        QCOMPARE(opened.count(), 0);
    }

    void aMissingFileIsRefused()
    {
        Design design(recoveryFolder());
        QVERIFY(!design.doc->Open(path(QStringLiteral("nowhere.qor"))));
        QVERIFY(design.doc->ErrorString().contains(QStringLiteral("nowhere.qor")));
    }

    void componentsOfUnknownClassesAreLeftOutAndNamed()
    {
        Design source(recoveryFolder());
        source.fillSmall();
        auto *group = qobject_cast<QWidget *>(FindComponent(source.stage.get(), QStringLiteral("GroupBox1")));
        QVERIFY(group);
        // A class only another program knows, with a control inside it.
        auto *odd = source.add<QFrame>("Odd1", QRect(300, 100, 100, 100));
        source.add<QPushButton>("Inner1", QRect(5, 5, 60, 24), odd);
        QString text = ComponentBinaryToText(ComponentToBytes(source.stage.get()));
        QVERIFY(text.contains(QStringLiteral("\"QFrame\"")));
        text.replace(QStringLiteral("\"QFrame\""), QStringLiteral("\"TNotRegisteredFrame\""));
        const QString file = path(QStringLiteral("odd.qor"));
        QVERIFY(writeBytes(file, text.toUtf8()));

        Design design(recoveryFolder());
        QVERIFY2(design.doc->Open(file), qPrintable(design.doc->ErrorString()));
        QCOMPARE(design.doc->SkippedComponents(),
                 QStringList({QStringLiteral("Odd1 (TNotRegisteredFrame)"), QStringLiteral("Inner1 (QPushButton)")}));
        QVERIFY(FindComponent(design.stage.get(), QStringLiteral("Label1")));
        QVERIFY(!FindComponent(design.stage.get(), QStringLiteral("Odd1")));
        QVERIFY(!FindComponent(design.stage.get(), QStringLiteral("Inner1")));
        QCOMPARE(ComponentCount(design.stage.get()), 5);
    }

    void theStreamStillRefusesUnknownClassesByDefault()
    {
        QWidget form;
        form.setObjectName(QStringLiteral("Form1"));
        auto *frame = new QFrame(&form);
        frame->setObjectName(QStringLiteral("Frame1"));
        InsertComponent(&form, frame);
        const QString text = ComponentBinaryToText(ComponentToBytes(&form))
                                 .replace(QStringLiteral("\"QFrame\""), QStringLiteral("\"TNotRegisteredFrame\""));
        const QByteArray bytes = ComponentTextToBinary(text);
        QVERIFY_THROWS_EXCEPTION(EClassNotFound, delete ComponentFromBytes(bytes));
    }

    void theStageOfAnotherClassIsRefused()
    {
        QFrame frame;
        frame.setObjectName(QStringLiteral("Frame1"));
        const QString file = path(QStringLiteral("frame.qor"));
        QVERIFY(writeBytes(file, ComponentToBytes(&frame)));
        Design design(recoveryFolder());
        design.fillSmall();
        const QStringList shape = describe(design.stage.get());
        QVERIFY(!design.doc->Open(file));
        QVERIFY(design.doc->ErrorString().contains(QStringLiteral("QFrame")));
        QCOMPARE(describe(design.stage.get()), shape);
    }

    // The other rules

    void everyRegisteredClassSurvivesSaveAndOpen_data()
    {
        addFormatRows();
    }

    void everyRegisteredClassSurvivesSaveAndOpen()
    {
        QFETCH(int, format);
        const auto form = TQorDesignDocument::TQorDocumentFormat(format);
        Design source(recoveryFolder());
        int column = 0;
        int changed = 0;
        QStringList classes;
        for (const QMetaObject *mo : RegisteredClasses()) {
            std::unique_ptr<QObject> made(CreateRegisteredComponent(mo));
            // The library's own widgets (a palette's class button) are
            // never components of a design.
            if (IsQorDesignObject(made.get()))
                continue;
            QObject *o = made.release();
            const QString name = QStringLiteral("%1_1").arg(QString::fromLatin1(mo->className()));
            o->setObjectName(name);
            classes.append(QString::fromLatin1(mo->className()));
            if (auto *w = qobject_cast<QWidget *>(o)) {
                w->setParent(source.stage.get());
                w->setGeometry(10 + (column % 6) * 140, 10 + (column / 6) * 80, 130, 70);
                ++column;
            }
            InsertComponent(source.stage.get(), o);
            changed += giveNonDefaults(o);
        }
        QVERIFY(classes.size() >= 30);
        QVERIFY(changed > classes.size() * 3);
        // Nested controls, a page of a tab widget, and an order of the
        // owner's list and of the stacking that are not the order made.
        auto *group = qobject_cast<QGroupBox *>(FindComponent(source.stage.get(), QStringLiteral("QGroupBox_1")));
        QVERIFY(group);
        source.add<QPushButton>("InGroup", QRect(5, 20, 60, 24), group)->setText(QStringLiteral("In"));
        auto *tabs = qobject_cast<QTabWidget *>(FindComponent(source.stage.get(), QStringLiteral("QTabWidget_1")));
        QVERIFY(tabs);
        auto *page = new QWidget;
        page->setObjectName(QStringLiteral("Page1"));
        tabs->addTab(page, QStringLiteral("First"));
        InsertComponent(source.stage.get(), page);
        source.add<QLineEdit>("OnPage", QRect(5, 5, 60, 24), page);
        qobject_cast<QWidget *>(FindComponent(source.stage.get(), QStringLiteral("QPushButton_1")))->raise();
        qobject_cast<QWidget *>(FindComponent(source.stage.get(), QStringLiteral("QFrame_1")))->lower();
        SetComponentIndex(FindComponent(source.stage.get(), QStringLiteral("QLabel_1")), 0);
        SetComponentIndex(FindComponent(source.stage.get(), QStringLiteral("InGroup")), 2);
        QVERIFY(QorGuiTest::showAndActivate(source.stage.get()));
        source.doc->SetModified(true);
        const QString file = path(QStringLiteral("every.qor"));
        QVERIFY2(source.doc->SaveAs(file, form), qPrintable(source.doc->ErrorString()));
        QVERIFY(!source.doc->Modified());

        Design design(recoveryFolder());
        QVERIFY(QorGuiTest::showAndActivate(design.stage.get(), QPoint(60, 60)));
        QVERIFY2(design.doc->Open(file), qPrintable(design.doc->ErrorString()));
        QCOMPARE(design.doc->Format(), form);
        QVERIFY(design.doc->SkippedComponents().isEmpty());
        QCOMPARE(describe(design.stage.get()), describe(source.stage.get()));
        const QString difference = differingProperty(source.stage.get(), design.stage.get());
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
        for (const QString &c : std::as_const(classes)) {
            QObject *o = FindComponent(design.stage.get(), c + QStringLiteral("_1"));
            QVERIFY2(o && QString::fromLatin1(o->metaObject()->className()) == c, qPrintable(c));
        }
        // The owner order rides on the stage only while it travels.
        QVERIFY(!design.stage->property("qorComponentOrder").isValid());
        QVERIFY(!source.stage->property("qorComponentOrder").isValid());
    }

    void anUncheckedCheckableGroupBoxStaysUnchecked()
    {
        Design source(recoveryFolder());
        auto *group = source.add<QGroupBox>("GroupBox1", QRect(10, 10, 200, 100));
        group->setCheckable(true);
        group->setChecked(false);
        const QString file = path(QStringLiteral("group.qor"));
        QVERIFY(source.doc->SaveAs(file));
        Design design(recoveryFolder());
        QVERIFY(design.doc->Open(file));
        auto *loaded = qobject_cast<QGroupBox *>(FindComponent(design.stage.get(), QStringLiteral("GroupBox1")));
        QVERIFY(loaded && loaded->isCheckable());
        // A fresh group box reads as unchecked, but made checkable on
        // reading it checks itself: the value is written all the same.
        QCOMPARE(loaded->isChecked(), false);
        // Checked, it needs nothing more than being checkable.
        group->setChecked(true);
        QVERIFY(source.doc->SaveAs(file));
        Design again(recoveryFolder());
        QVERIFY(again.doc->Open(file));
        loaded = qobject_cast<QGroupBox *>(FindComponent(again.stage.get(), QStringLiteral("GroupBox1")));
        QVERIFY(loaded && loaded->isCheckable() && loaded->isChecked());
        QVERIFY(!fileBytes(file).contains("checked"));
    }

    void theFormIsTakenFromTheContentNotTheSuffix()
    {
        Design design(recoveryFolder());
        design.fillSmall();
        const QString binary = path(QStringLiteral("design.txt"));
        const QString text = path(QStringLiteral("design.qor"));
        QVERIFY(design.doc->SaveAs(binary, TQorDesignDocument::dfBinary));
        QVERIFY(design.doc->SaveAs(text, TQorDesignDocument::dfText));
        QVERIFY(fileBytes(binary).startsWith("QOR1"));
        QVERIFY(fileBytes(text).startsWith("["));
        const QStringList shape = describe(design.stage.get());

        Design other(recoveryFolder());
        QVERIFY(other.doc->Open(binary));
        QCOMPARE(other.doc->Format(), TQorDesignDocument::dfBinary);
        QCOMPARE(describe(other.stage.get()), shape);
        QVERIFY(other.doc->Open(text));
        QCOMPARE(other.doc->Format(), TQorDesignDocument::dfText);
        QCOMPARE(describe(other.stage.get()), shape);
        // Saved again in the form it was read in.
        QVERIFY(other.doc->Save());
        QVERIFY(fileBytes(text).startsWith("["));
    }

    void openingReplacesTheDesignAndRefreshesOnce()
    {
        Design source(recoveryFolder());
        source.fillSmall();
        const QString file = path(QStringLiteral("design.qor"));
        QVERIFY(source.doc->SaveAs(file, TQorDesignDocument::dfBinary));

        Design design(recoveryFolder());
        CountingTree tree;
        design.center->SetCompTreeView(&tree);
        auto *old = design.add<QPushButton>("Old1", QRect(400, 400, 80, 24));
        auto *oldGroup = design.add<QGroupBox>("OldGroup", QRect(400, 450, 200, 100));
        auto *oldInner = design.add<QLabel>("OldInner", QRect(10, 20, 60, 20), oldGroup);
        QVERIFY(QorGuiTest::showAndActivate(design.stage.get()));
        design.manager->SelectControl(old, QPoint(-1, -1), QorDesigner::csmSelect, true, false);
        QCOMPARE(design.center->SelectedComps().toList(), QList<QObject *>{old});
        const QPointer<QObject> watchOld(old), watchGroup(oldGroup), watchInner(oldInner);
        const int refreshes = tree.refreshCount;
        QSignalSpy opened(design.doc.get(), &TQorDesignDocument::Opened);
        QSignalSpy named(design.doc.get(), &TQorDesignDocument::FileNameChanged);

        QVERIFY(design.doc->Open(file));
        QCOMPARE(tree.refreshCount - refreshes, 1);
        QCOMPARE(design.center->SelectedComps().toList(), QList<QObject *>{design.stage.get()});
        QCOMPARE(design.manager->SelectedComps().toList(), QList<QObject *>{design.stage.get()});
        QCOMPARE(tree.selected.toList(), QList<QObject *>{design.stage.get()});
        QCOMPARE(describe(design.stage.get()), describe(source.stage.get()));
        QVERIFY(!design.doc->Modified());
        QCOMPARE(opened.count(), 1);
        QCOMPARE(opened.at(0).at(0).toString(), file);
        QCOMPARE(named.count(), 1);
        QCOMPARE(design.doc->FileName(), file);
        // The old components are out of sight at once and gone once the
        // event loop runs.
        QVERIFY(!oldGroup->isVisible());
        QTRY_VERIFY(!watchOld && !watchGroup && !watchInner);
        design.center->SetCompTreeView(nullptr);
    }

    void aCleanSaveMakesTheDesignClean()
    {
        Design design(recoveryFolder());
        design.fillSmall();
        QVERIFY(!design.doc->Save());
        QVERIFY(!design.doc->ErrorString().isEmpty());
        design.doc->SetModified(true);
        QSignalSpy modified(design.doc.get(), &TQorDesignDocument::ModifiedChanged);
        QSignalSpy saved(design.doc.get(), &TQorDesignDocument::Saved);
        const QString file = path(QStringLiteral("design.qor"));
        QVERIFY(design.doc->SaveAs(file));
        QVERIFY(!design.doc->Modified());
        QVERIFY(!design.center->GetDirty());
        QCOMPARE(saved.count(), 1);
        QCOMPARE(modified.count(), 1);
        QCOMPARE(modified.at(0).at(0).toBool(), false);
        QCOMPARE(design.doc->FileName(), file);
    }

    void aChangeWritesARecoveryCopyThatACleanSaveRemoves()
    {
        Design design(recoveryFolder());
        design.fillSmall();
        const QString file = path(QStringLiteral("design.qor"));
        QVERIFY(design.doc->SaveAs(file));
        design.doc->SetAutosaveDelay(50);
        design.doc->SetAutosaveEnabled(true);
        // A clean design gets no copy.
        QVERIFY(!QTest::qWaitFor([&] { return !design.doc->RecoveryFileName().isEmpty(); }, 300));
        QSignalSpy written(design.doc.get(), &TQorDesignDocument::RecoveryWritten);
        design.add<QPushButton>("Button2", QRect(10, 200, 80, 24));
        QVERIFY(design.doc->Modified());
        QTRY_VERIFY(!design.doc->RecoveryFileName().isEmpty() && QFile::exists(design.doc->RecoveryFileName()));
        const QString copy = design.doc->RecoveryFileName();
        QVERIFY(copy.startsWith(recoveryFolder()));
        // An unchanged design is not written again.
        const int writes = written.count();
        QVERIFY(!QTest::qWaitFor([&] { return written.count() > writes; }, 300));
        QVERIFY(design.doc->Save());
        QVERIFY(!QFile::exists(copy));
        QVERIFY(design.doc->RecoveryFileName().isEmpty());
    }

    void aDragGoingOnPostponesTheCopyUntilReleased()
    {
        const QString file = path(QStringLiteral("design.qor"));
        QPoint moved;
        {
            Design design(recoveryFolder());
            design.fillSmall();
            auto *button = qobject_cast<QWidget *>(FindComponent(design.stage.get(), QStringLiteral("Button1")));
            QVERIFY(design.doc->SaveAs(file));
            QVERIFY(QorGuiTest::showAndActivate(design.stage.get()));
            design.doc->SetAutosaveDelay(50);
            design.doc->SetAutosaveEnabled(true);
            QSignalSpy written(design.doc.get(), &TQorDesignDocument::RecoveryWritten);
            const QPoint from = button->geometry().center();
            RealInput::moveTo(design.stage.get(), from, 2);
            RealInput::press();
            RealInput::moveTo(design.stage.get(), from + QPoint(40, 30), 8);
            QTRY_COMPARE(design.manager->SelectedComps().toList(), QList<QObject *>{button});
            // A change comes while the button is held (the application's,
            // a timer's): the copy of it waits for the drag to end.
            design.add<QLabel>("Label9", QRect(400, 300, 60, 20));
            QVERIFY(design.doc->Modified());
            QVERIFY(!QTest::qWaitFor([&] { return written.count() > 0; }, 400));
            RealInput::release();
            QTRY_VERIFY(button->pos() != QPoint(10, 10));
            QTRY_VERIFY(written.count() > 0);
            moved = button->pos();
            QVERIFY(design.doc->WriteRecovery());
        }
        Design design(recoveryFolder());
        const QList<TQorRecoveryCopy> copies = design.doc->FindRecoveryCopies();
        QCOMPARE(copies.size(), 1);
        QVERIFY(design.doc->LoadRecovery(copies.at(0)));
        auto *button = qobject_cast<QWidget *>(FindComponent(design.stage.get(), QStringLiteral("Button1")));
        QVERIFY(button);
        QCOMPARE(button->pos(), moved);
        QVERIFY(FindComponent(design.stage.get(), QStringLiteral("Label9")));
    }

    void aFreshDocumentFindsTheCopyOfADocumentThatWentAway()
    {
        const QString file = path(QStringLiteral("design.qor"));
        QString copy;
        QStringList shape;
        {
            Design design(recoveryFolder());
            design.fillSmall();
            QVERIFY(design.doc->SaveAs(file));
            design.doc->SetAutosaveDelay(50);
            design.doc->SetAutosaveEnabled(true);
            design.add<QPushButton>("Unsaved1", QRect(10, 200, 80, 24));
            QTRY_VERIFY(!design.doc->RecoveryFileName().isEmpty() && QFile::exists(design.doc->RecoveryFileName()));
            copy = design.doc->RecoveryFileName();
            shape = describe(design.stage.get());
            // A copy some running document writes is nobody else's.
            Design other(recoveryFolder());
            QVERIFY(other.doc->FindRecoveryCopies().isEmpty());
        }
        QVERIFY(QFile::exists(copy));

        Design design(recoveryFolder());
        const QList<TQorRecoveryCopy> copies = design.doc->FindRecoveryCopies();
        QCOMPARE(copies.size(), 1);
        QCOMPARE(copies.at(0).RecoveryFileName, copy);
        QCOMPARE(copies.at(0).OriginalFileName, QFileInfo(file).absoluteFilePath());
        QVERIFY(copies.at(0).Written.isValid());
        QVERIFY(design.doc->LoadRecovery(copies.at(0)));
        QCOMPARE(describe(design.stage.get()), shape);
        QVERIFY(design.doc->Modified());
        QCOMPARE(design.doc->FileName(), QFileInfo(file).absoluteFilePath());
        // The file on disk still holds the saved design, not the recovered.
        QVERIFY(!fileBytes(file).contains("Unsaved1"));
        QVERIFY(design.doc->Save());
        QVERIFY(fileBytes(file).contains("Unsaved1"));
        QVERIFY(!QFile::exists(copy));
        QVERIFY(design.doc->FindRecoveryCopies().isEmpty());
    }

    void aCopyCanBeDiscardedAndClosingRemovesOnesOwn()
    {
        leaveACopyBehind();
        if (QTest::currentTestFailed())
            return;
        Design design(recoveryFolder());
        const QList<TQorRecoveryCopy> copies = design.doc->FindRecoveryCopies();
        QCOMPARE(copies.size(), 1);
        QVERIFY(copies.at(0).OriginalFileName.isEmpty());
        QVERIFY(design.doc->DiscardRecovery(copies.at(0)));
        QVERIFY(!QFile::exists(copies.at(0).RecoveryFileName));
        QVERIFY(design.doc->FindRecoveryCopies().isEmpty());

        design.fillSmall();
        design.doc->SetModified(true);
        QVERIFY(design.doc->WriteRecovery());
        const QString own = design.doc->RecoveryFileName();
        QVERIFY(QFile::exists(own));
        design.doc->Close();
        QVERIFY(!QFile::exists(own));
    }

    void damagedRecoveryFilesAreNotOfferedAndDoNotLoad()
    {
        leaveACopyBehind();
        if (QTest::currentTestFailed())
            return;
        Design design(recoveryFolder());
        const QList<TQorRecoveryCopy> copies = design.doc->FindRecoveryCopies();
        QCOMPARE(copies.size(), 1);
        const QByteArray whole = fileBytes(copies.at(0).RecoveryFileName);
        // Some other file in the folder, and one cut short after its header.
        QVERIFY(writeBytes(recoveryFolder() + QStringLiteral("/notes.qorrecovery"), "shopping list"));
        QVERIFY(writeBytes(copies.at(0).RecoveryFileName, whole.left(whole.size() - 100)));
        const QList<TQorRecoveryCopy> found = design.doc->FindRecoveryCopies();
        QCOMPARE(found.size(), 1);
        QCOMPARE(found.at(0).RecoveryFileName, copies.at(0).RecoveryFileName);
        design.fillSmall();
        const QStringList shape = describe(design.stage.get());
        QVERIFY(!design.doc->LoadRecovery(found.at(0)));
        QVERIFY(design.doc->ErrorString().contains(found.at(0).RecoveryFileName));
        QCOMPARE(describe(design.stage.get()), shape);
        QVERIFY(QFile::exists(found.at(0).RecoveryFileName));
    }

    void aDesignerKilledWithUnsavedWorkLeavesACopyThatLoads()
    {
        const QString file = path(QStringLiteral("killed.qor"));
        QProcess mate;
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        mate.setProcessEnvironment(env);
        mate.setProcessChannelMode(QProcess::SeparateChannels);
        mate.start(QStringLiteral(QORRECOVERYMATE), {recoveryFolder(), file});
        QVERIFY2(mate.waitForStarted(10000), qPrintable(mate.errorString()));
        QByteArray out;
        QVERIFY2(QTest::qWaitFor(
                     [&] {
                         mate.waitForReadyRead(50);
                         out += mate.readAllStandardOutput();
                         return out.contains('\n') || mate.state() == QProcess::NotRunning;
                     },
                     30000),
                 mate.readAllStandardError().constData());
        QVERIFY2(out.startsWith("ready "), QByteArray(out + mate.readAllStandardError()).constData());
        const QString copy = QString::fromLocal8Bit(out.mid(6).trimmed());
        QVERIFY(QFile::exists(copy));
        QCOMPARE(::kill(pid_t(mate.processId()), SIGKILL), 0);
        QVERIFY(mate.waitForFinished(10000));
        QCOMPARE(mate.exitStatus(), QProcess::CrashExit);

        Design design(recoveryFolder());
        const QList<TQorRecoveryCopy> copies = design.doc->FindRecoveryCopies();
        QCOMPARE(copies.size(), 1);
        QCOMPARE(copies.at(0).RecoveryFileName, copy);
        QCOMPARE(copies.at(0).OriginalFileName, QFileInfo(file).absoluteFilePath());
        QVERIFY2(design.doc->LoadRecovery(copies.at(0)), qPrintable(design.doc->ErrorString()));
        QVERIFY(FindComponent(design.stage.get(), QStringLiteral("Saved1")));
        auto *unsaved = qobject_cast<QLineEdit *>(FindComponent(design.stage.get(), QStringLiteral("Unsaved1")));
        QVERIFY(unsaved);
        QCOMPARE(unsaved->text(), QStringLiteral("not saved"));
        QVERIFY(design.doc->Modified());
        QCOMPARE(design.doc->FileName(), QFileInfo(file).absoluteFilePath());
        // The copy is this document's now: another does not find it.
        Design other(recoveryFolder());
        QVERIFY(other.doc->FindRecoveryCopies().isEmpty());
    }
};

QTEST_MAIN(tst_QorDesignDocument)
#include "tst_qordesigndocument.moc"
