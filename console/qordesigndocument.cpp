// SPDX-License-Identifier: MIT
#include "console/qordesigndocument.h"

#include "console/qordesignrecords_p.h"

#include "console/qordesignconsole.h"
#include "console/qordesignhistory.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qorrepaintonce_p.h"
#include "foundation/qorstream.h"
#include "foundation/qorvaluecheck_p.h"

#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHash>
#include <QLockFile>
#include <QSaveFile>
#include <QScopedValueRollback>
#include <QStandardPaths>
#include <QTimer>
#include <QUuid>
#include <QWidget>

#include <algorithm>

namespace {

// A recovery file: this line, then (QDataStream, Qt 6.0) the format
// version, the original file name, the time written (UTC milliseconds) and
// the design's records.
const QByteArray kRecoveryMagic = QByteArrayLiteral("QorDesign recovery\n");
constexpr quint32 kRecoveryVersion = 1;
const QString kRecoverySuffix = QStringLiteral(".qorrecovery");
const QByteArray kRecordSignature = QByteArrayLiteral("QOR1");
// Changes that never stop coming postpone the copy at most this many
// delays.
constexpr int kMaxPostponedDelays = 4;
// A button held down is a gesture going on: the copy waits this long.
constexpr int kGestureRetryMs = 250;

struct RecoveryContent
{
    TQorRecoveryCopy copy;
    QByteArray records;
};

// Reads a recovery file; the records only when asked for.
bool readRecoveryFile(const QString &path, RecoveryContent &content, bool withRecords)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    if (file.read(kRecoveryMagic.size()) != kRecoveryMagic)
        return false;
    QDataStream in(&file);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 version = 0;
    QString original;
    qint64 written = 0;
    in >> version >> original >> written;
    if (in.status() != QDataStream::Ok || version != kRecoveryVersion)
        return false;
    if (withRecords) {
        if (file.size() - file.pos() > QorLimits::kMaxRecordBytes + 4)
            return false;
        in >> content.records;
        if (in.status() != QDataStream::Ok || !file.atEnd())
            return false;
    }
    content.copy.RecoveryFileName = path;
    content.copy.OriginalFileName = original;
    content.copy.Written = QDateTime::fromMSecsSinceEpoch(written, Qt::UTC);
    return true;
}

// The lock a document holds on the recovery file it writes: a copy whose
// lock is held belongs to a running document; the lock of a process that
// died counts as free.
std::unique_ptr<QLockFile> lockRecovery(const QString &recoveryFile)
{
    auto lock = std::make_unique<QLockFile>(recoveryFile + QStringLiteral(".lock"));
    // A running document may write into its copy for days.
    lock->setStaleLockTime(0);
    if (!lock->tryLock(0))
        return nullptr;
    return lock;
}

} // namespace

class TQorDesignDocumentPrivate
{
public:
    explicit TQorDesignDocumentPrivate(TQorDesignDocument *Q, TQorDesignCenter *C)
        : q(Q)
        , center(C)
    {
    }

    TQorDesignDocument *q;
    QPointer<TQorDesignCenter> center;
    QString fileName;
    TQorDesignDocument::TQorDocumentFormat format = TQorDesignDocument::dfBinary;
    QString error;
    QStringList skipped;
    bool lastModified = false;
    // Set while the document itself replaces or saves the design: the
    // changes it makes are no user's.
    bool busy = false;

    int autosaveDelay = 3000;
    bool autosaveEnabled = true;
    QString recoveryFolder;
    QTimer autosaveTimer;
    QElapsedTimer firstPending;
    QString session;
    std::unique_ptr<QLockFile> recoveryLock;
    QByteArray lastRecoveryRecords;
    QPointer<QWidget> watchedStage;
    QList<QMetaObject::Connection> stageConnections;

    QWidget *stage() const { return center ? center->GetDesignStage() : nullptr; }
    bool dirty() const { return center && center->GetDirty(); }

    bool fail(const QString &message)
    {
        error = message;
        qCInfo(lcQorConsole).noquote() << message;
        return false;
    }

    void checkModified()
    {
        const bool now = dirty();
        if (now == lastModified)
            return;
        lastModified = now;
        Q_EMIT q->ModifiedChanged(now);
    }

    void setFileName(const QString &name)
    {
        if (name == fileName)
            return;
        fileName = name;
        Q_EMIT q->FileNameChanged(name);
    }

    // ---- Change notifications ------------------------------------------

    void watchStage()
    {
        QWidget *s = stage();
        if (s == watchedStage)
            return;
        for (const QMetaObject::Connection &c : std::as_const(stageConnections))
            QObject::disconnect(c);
        stageConnections.clear();
        watchedStage = s;
        if (!s)
            return;
        TQorOwnerNotifier *notifier = OwnerNotifier(s);
        stageConnections.append(
            QObject::connect(notifier, &TQorOwnerNotifier::ComponentInserted, q, [this] { noteChange(); }));
        stageConnections.append(
            QObject::connect(notifier, &TQorOwnerNotifier::ComponentRemoved, q, [this] { noteChange(); }));
    }

    void noteChange()
    {
        if (busy)
            return;
        watchStage();
        checkModified();
        if (!autosaveEnabled)
            return;
        // The copy comes a delay after the last change; a stream of changes
        // that never pauses postpones it only so far.
        if (!firstPending.isValid())
            firstPending.start();
        if (!autosaveTimer.isActive() || firstPending.elapsed() < qint64(autosaveDelay) * kMaxPostponedDelays)
            autosaveTimer.start(autosaveDelay);
    }

    void autosaveDue()
    {
        if (!autosaveEnabled)
            return;
        // Not in the middle of a drag: the copy would catch it half done,
        // and the gesture would wait for the disk.
        if (busy || QGuiApplication::mouseButtons() != Qt::NoButton) {
            autosaveTimer.start(kGestureRetryMs);
            return;
        }
        firstPending.invalidate();
        watchStage();
        checkModified();
        // Some changes reach the dirty state without a notification (a
        // rename in the tree): the timer keeps looking at the same pace,
        // and a copy is written only when the design differs from it.
        if (lastModified)
            writeRecovery();
        autosaveTimer.start(autosaveDelay);
    }

    // ---- Recovery files --------------------------------------------------

    QString folder() const
    {
        if (!recoveryFolder.isEmpty())
            return recoveryFolder;
        return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QStringLiteral("/recovery");
    }

    QString recoveryPath() const
    {
        return session.isEmpty() ? QString() : QDir(folder()).filePath(session + kRecoverySuffix);
    }

    bool writeRecovery()
    {
        QWidget *s = stage();
        if (!s)
            return false;
        QByteArray records;
        try {
            records = QorDesignRecords(s);
        } catch (const EQorError &e) {
            Q_EMIT q->RecoveryFailed(e.message());
            return false;
        }
        if (recoveryLock && records == lastRecoveryRecords && QFile::exists(recoveryPath()))
            return true;
        if (!recoveryLock) {
            if (!QDir().mkpath(folder())) {
                Q_EMIT q->RecoveryFailed(TQorDesignDocument::tr("Cannot make the recovery folder %1").arg(folder()));
                return false;
            }
            if (session.isEmpty())
                session = QUuid::createUuid().toString(QUuid::Id128);
            recoveryLock = lockRecovery(recoveryPath());
            if (!recoveryLock) {
                const QString path = recoveryPath();
                session.clear();
                Q_EMIT q->RecoveryFailed(TQorDesignDocument::tr("Cannot lock the recovery file %1").arg(path));
                return false;
            }
        }
        QByteArray content = kRecoveryMagic;
        {
            QDataStream out(&content, QIODevice::WriteOnly | QIODevice::Append);
            out.setVersion(QDataStream::Qt_6_0);
            out << kRecoveryVersion << (fileName.isEmpty() ? QString() : QFileInfo(fileName).absoluteFilePath())
                << QDateTime::currentMSecsSinceEpoch() << records;
        }
        // Written aside and renamed over the last copy: a crash while
        // writing leaves the last copy whole.
        QSaveFile file(recoveryPath());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.commit()) {
            Q_EMIT q->RecoveryFailed(
                TQorDesignDocument::tr("Cannot write the recovery file %1: %2").arg(recoveryPath(), file.errorString()));
            return false;
        }
        lastRecoveryRecords = records;
        Q_EMIT q->RecoveryWritten(recoveryPath());
        return true;
    }

    void removeRecovery()
    {
        if (!session.isEmpty() && recoveryLock)
            QFile::remove(recoveryPath());
        recoveryLock.reset();
        session.clear();
        lastRecoveryRecords.clear();
        firstPending.invalidate();
    }

    // ---- Reading a design --------------------------------------------------

    // The records a file's bytes hold; throws EQorError with a reason.
    static QByteArray recordsOf(const QByteArray &content, TQorDesignDocument::TQorDocumentFormat &form)
    {
        if (!TQorDesignDocument::DetectFormat(content, &form))
            throw EReadError(TQorDesignDocument::tr("The file holds no design"));
        if (form == TQorDesignDocument::dfBinary)
            return content;
        return ComponentTextToBinary(QString::fromUtf8(content));
    }

    // Replaces the stage's design by the records' one; records that cannot
    // be read leave the design untouched.
    void replaceDesign(const QByteArray &records, QStringList &left) { QorReplaceDesign(center, records, left); }

    void refreshReplaced()
    {
        QWidget *s = stage();
        center->SetSelectedCompsSilently(TComponentList({s}));
        center->Refresh();
    }

    // The one place where the design was replaced by a file's or a recovery
    // copy's (history of the former design ends here).
    void designReplaced(const QString &name, bool dirtyAfter)
    {
        {
            // The refresh's reports are the document's own doing.
            const QScopedValueRollback quiet(busy, true);
            center->History()->Clear();
            center->SetDirty(dirtyAfter);
            refreshReplaced();
        }
        setFileName(name);
        checkModified();
        Q_EMIT q->Opened(name);
    }

    // The one place where the design was saved clean (the design's clean
    // state is here).
    void savedClean(const QString &name)
    {
        center->SetDirty(false);
        removeRecovery();
        setFileName(name);
        checkModified();
        Q_EMIT q->Saved(name);
    }
};

TQorDesignDocument::TQorDesignDocument(TQorDesignCenter *Center, QObject *Parent)
    : QObject(Parent)
    , d(std::make_unique<TQorDesignDocumentPrivate>(this, Center))
{
    d->autosaveTimer.setSingleShot(true);
    connect(&d->autosaveTimer, &QTimer::timeout, this, [this] { d->autosaveDue(); });
    if (Center) {
        const auto note = [this] { d->noteChange(); };
        connect(Center, &TQorDesignCenter::OnControlsMoved, this, note);
        connect(Center, &TQorDesignCenter::OnInspectorPropChange, this, note);
        connect(Center, &TQorDesignCenter::AfterDynInsComponent, this, note);
        connect(Center, &TQorDesignCenter::OnCompsChange, this, note);
        connect(Center, &TQorDesignCenter::DesignStateChanged, this, note);
    }
    d->watchStage();
    d->lastModified = d->dirty();
    d->autosaveTimer.start(d->autosaveDelay);
}

TQorDesignDocument::~TQorDesignDocument()
{
    // The recovery copy stays for the next start; only the lock goes.
    d->recoveryLock.reset();
}

TQorDesignCenter *TQorDesignDocument::Center() const
{
    return d->center;
}

QWidget *TQorDesignDocument::Stage() const
{
    return d->stage();
}

QString TQorDesignDocument::FileName() const
{
    return d->fileName;
}

TQorDesignDocument::TQorDocumentFormat TQorDesignDocument::Format() const
{
    return d->format;
}

void TQorDesignDocument::SetFormat(TQorDocumentFormat Value)
{
    d->format = Value;
}

bool TQorDesignDocument::Modified() const
{
    return d->dirty();
}

void TQorDesignDocument::SetModified(bool Value)
{
    if (d->center)
        d->center->SetDirty(Value);
    d->checkModified();
}

QString TQorDesignDocument::ErrorString() const
{
    return d->error;
}

QStringList TQorDesignDocument::SkippedComponents() const
{
    return d->skipped;
}

bool TQorDesignDocument::DetectFormat(const QByteArray &Content, TQorDocumentFormat *Format)
{
    TQorDocumentFormat found = dfBinary;
    if (Content.startsWith(kRecordSignature)) {
        found = dfBinary;
    } else {
        qsizetype i = Content.startsWith("\xEF\xBB\xBF") ? 3 : 0;
        while (i < Content.size() && (Content[i] == ' ' || Content[i] == '\t' || Content[i] == '\r' || Content[i] == '\n'))
            ++i;
        if (i >= Content.size() || (Content[i] != '[' && Content[i] != '{'))
            return false;
        found = dfText;
    }
    if (Format)
        *Format = found;
    return true;
}

bool TQorDesignDocument::Save()
{
    if (d->fileName.isEmpty())
        return d->fail(tr("The design has no file name yet"));
    return SaveAs(d->fileName, d->format);
}

bool TQorDesignDocument::SaveAs(const QString &FileName)
{
    return SaveAs(FileName, d->format);
}

bool TQorDesignDocument::SaveAs(const QString &FileName, TQorDocumentFormat Format)
{
    QWidget *stage = d->stage();
    if (!stage)
        return d->fail(tr("Cannot save %1: there is no design stage").arg(FileName));
    QByteArray content;
    try {
        content = QorDesignRecords(stage);
        if (Format == dfText)
            content = ComponentBinaryToText(content).toUtf8();
    } catch (const EQorError &e) {
        return d->fail(tr("Cannot save %1: %2").arg(FileName, e.message()));
    }
    // Written aside and renamed over the old file only when all of it is
    // on disk: a failure anywhere keeps the old file as it was.
    QSaveFile file(FileName);
    if (!file.open(QIODevice::WriteOnly))
        return d->fail(tr("Cannot save %1: %2").arg(FileName, file.errorString()));
    if (file.write(content) != content.size()) {
        const QString why = file.errorString();
        file.cancelWriting();
        return d->fail(tr("Cannot save %1: %2").arg(FileName, why));
    }
    if (!file.commit())
        return d->fail(tr("Cannot save %1: %2").arg(FileName, file.errorString()));
    d->format = Format;
    d->error.clear();
    d->savedClean(FileName);
    return true;
}

bool TQorDesignDocument::Open(const QString &FileName)
{
    QFile file(FileName);
    if (!file.open(QIODevice::ReadOnly))
        return d->fail(tr("Cannot open %1: %2").arg(FileName, file.errorString()));
    if (file.size() > QorLimits::kMaxTextBytes)
        return d->fail(tr("Cannot open %1: the file is larger than a design may be").arg(FileName));
    const QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return d->fail(tr("Cannot open %1: %2").arg(FileName, file.errorString()));
    file.close();

    QStringList left;
    TQorDocumentFormat form = dfBinary;
    {
        const QScopedValueRollback busy(d->busy, true);
        try {
            d->replaceDesign(d->recordsOf(content, form), left);
        } catch (const EQorError &e) {
            return d->fail(tr("Cannot open %1: %2").arg(FileName, e.message()));
        }
    }
    d->format = form;
    d->skipped = left;
    d->error.clear();
    // The work the recovery copy kept was replaced by the file's.
    d->removeRecovery();
    d->designReplaced(FileName, false);
    return true;
}

void TQorDesignDocument::Close()
{
    d->removeRecovery();
    d->setFileName(QString());
}

void TQorDesignDocument::New()
{
    QWidget *stage = Stage();
    TQorDesignManager *manager = d->center ? d->center->DesignManager() : nullptr;
    if (!stage || !manager)
        return;
    {
        const QScopedValueRollback busy(d->busy, true);
        manager->DeselectAll();
        const TQorDesignUpdateScope update(manager);
        const QList<QObject *> owned = ComponentList(stage);
        const QorRepaintOnce repaint(owned);
        // A component inside another one goes with it.
        for (QObject *component : owned) {
            if (Owner(component) == stage)
                FreeComponent(component);
        }
    }
    d->removeRecovery();
    d->designReplaced(QString(), false);
}

// ---- Recovery ----------------------------------------------------------------

int TQorDesignDocument::AutosaveDelay() const
{
    return d->autosaveDelay;
}

void TQorDesignDocument::SetAutosaveDelay(int Milliseconds)
{
    d->autosaveDelay = std::max(1, Milliseconds);
    if (d->autosaveTimer.isActive())
        d->autosaveTimer.start(d->autosaveDelay);
}

bool TQorDesignDocument::AutosaveEnabled() const
{
    return d->autosaveEnabled;
}

void TQorDesignDocument::SetAutosaveEnabled(bool Value)
{
    d->autosaveEnabled = Value;
    if (Value)
        d->autosaveTimer.start(d->autosaveDelay);
    else
        d->autosaveTimer.stop();
}

QString TQorDesignDocument::RecoveryFolder() const
{
    return d->folder();
}

void TQorDesignDocument::SetRecoveryFolder(const QString &Folder)
{
    if (Folder == d->recoveryFolder)
        return;
    // The copy in the old folder is of no use to anybody looking in the new.
    d->removeRecovery();
    d->recoveryFolder = Folder;
}

QString TQorDesignDocument::RecoveryFileName() const
{
    return d->recoveryPath();
}

bool TQorDesignDocument::WriteRecovery()
{
    if (!d->dirty())
        return false;
    return d->writeRecovery();
}

QList<TQorRecoveryCopy> TQorDesignDocument::FindRecoveryCopies() const
{
    QList<TQorRecoveryCopy> found;
    const QString own = d->recoveryPath();
    QDirIterator it(d->folder(), {QStringLiteral("*") + kRecoverySuffix}, QDir::Files);
    while (it.hasNext()) {
        const QString path = it.next();
        if (path == own)
            continue;
        if (!lockRecovery(path))
            continue;
        RecoveryContent content;
        if (readRecoveryFile(path, content, false))
            found.append(content.copy);
    }
    std::sort(found.begin(), found.end(),
              [](const TQorRecoveryCopy &a, const TQorRecoveryCopy &b) { return a.Written > b.Written; });
    return found;
}

bool TQorDesignDocument::LoadRecovery(const TQorRecoveryCopy &Copy)
{
    const QString path = Copy.RecoveryFileName;
    std::unique_ptr<QLockFile> lock = lockRecovery(path);
    if (!lock)
        return d->fail(tr("Cannot recover %1: a running design uses it").arg(path));
    RecoveryContent content;
    if (!readRecoveryFile(path, content, true))
        return d->fail(tr("Cannot recover %1: the file is damaged").arg(path));
    QStringList left;
    {
        const QScopedValueRollback busy(d->busy, true);
        try {
            d->replaceDesign(content.records, left);
        } catch (const EQorError &e) {
            return d->fail(tr("Cannot recover %1: %2").arg(path, e.message()));
        }
    }
    // The copy becomes this document's own: the next copy of the work goes
    // there, and a clean save removes it.
    d->removeRecovery();
    d->session = QFileInfo(path).completeBaseName();
    d->recoveryFolder = QFileInfo(path).absolutePath();
    d->recoveryLock = std::move(lock);
    d->lastRecoveryRecords = content.records;
    d->skipped = left;
    d->error.clear();
    d->designReplaced(content.copy.OriginalFileName, true);
    return true;
}

bool TQorDesignDocument::DiscardRecovery(const TQorRecoveryCopy &Copy)
{
    if (Copy.RecoveryFileName == d->recoveryPath()) {
        d->removeRecovery();
        return true;
    }
    std::unique_ptr<QLockFile> lock = lockRecovery(Copy.RecoveryFileName);
    if (!lock)
        return false;
    return QFile::remove(Copy.RecoveryFileName);
}
