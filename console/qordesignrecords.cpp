// SPDX-License-Identifier: MIT
#include "console/qordesignrecords_p.h"

#include "console/qordesignconsole.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorquietshow_p.h"
#include "foundation/qorrepaintonce_p.h"
#include "foundation/qorstream.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QHash>
#include <QPointer>
#include <QVariant>
#include <QWidget>

#include <algorithm>
#include <memory>

namespace {

// The stage's owner order travels beside the components: the stream
// writes them in the order of the visual tree (and so keeps the z-order),
// which after a reordering in the component tree is not the order the stage
// lists them in.
const char *const kOrderProperty = "qorComponentOrder";

// Takes a design manager's center away while it lives.
class CenterUnlinked
{
public:
    explicit CenterUnlinked(TQorDesignManager *Manager)
        : m_manager(Manager)
        , m_center(Manager->ConsoleCenter())
    {
        Manager->SetConsoleCenter(nullptr);
    }
    ~CenterUnlinked()
    {
        if (m_manager)
            m_manager->SetConsoleCenter(m_center);
    }
    CenterUnlinked(const CenterUnlinked &) = delete;
    CenterUnlinked &operator=(const CenterUnlinked &) = delete;

private:
    QPointer<TQorDesignManager> m_manager;
    IQorDesignCenter *m_center;
};

// Puts the stage's components back into the owner order the record
// carried, and takes the order off the stage.
void restoreOwnerOrder(QWidget *Stage)
{
    const QVariant stored = Stage->property(kOrderProperty);
    if (!stored.isValid())
        return;
    Stage->setProperty(kOrderProperty, QVariant());
    if (stored.metaType() != QMetaType::fromType<QStringList>())
        return;
    const QList<QObject *> owned = ComponentList(Stage);
    QHash<QString, QObject *> byName;
    byName.reserve(owned.size());
    for (QObject *component : owned)
        byName.insert(component->objectName().toCaseFolded(), component);
    QList<QObject *> wanted;
    wanted.reserve(owned.size());
    for (const QString &name : stored.value<QStringList>()) {
        if (QObject *component = byName.take(name.toCaseFolded()))
            wanted.append(component);
    }
    if (std::equal(wanted.cbegin(), wanted.cend(), owned.cbegin(),
                   owned.cbegin() + std::min(owned.size(), wanted.size())))
        return;
    for (qsizetype i = 0; i < wanted.size(); ++i)
        SetComponentIndex(wanted.at(i), int(i));
}

// True for an object below the stage that is not the stage's child: it is
// freed with the child it is in.
bool insideOther(const QObject *Object, const QObject *Stage)
{
    const QObject *parent = Object->parent();
    if (parent == Stage)
        return false;
    for (; parent; parent = parent->parent()) {
        if (parent == Stage)
            return true;
    }
    return false;
}

} // namespace

QByteArray QorDesignRecords(QWidget *Stage)
{
    const QList<QObject *> owned = ComponentList(Stage);
    if (owned.size() < 2)
        return ComponentToBytes(Stage);
    QStringList order;
    order.reserve(owned.size());
    for (const QObject *component : owned)
        order.append(component->objectName());
    const QVariant before = Stage->property(kOrderProperty);
    Stage->setProperty(kOrderProperty, order);
    QByteArray records;
    try {
        records = ComponentToBytes(Stage);
    } catch (...) {
        Stage->setProperty(kOrderProperty, before);
        throw;
    }
    Stage->setProperty(kOrderProperty, before);
    return records;
}

void QorReplaceDesign(TQorDesignCenter *Center, const QByteArray &Records, QStringList &Skipped, bool Trusted)
{
    QWidget *stage = Center ? Center->GetDesignStage() : nullptr;
    TQorDesignManager *manager = Center ? Center->DesignManager() : nullptr;
    if (!stage || !manager)
        throw EQorError(QCoreApplication::translate("TQorDesignDocument", "There is no design stage"));
    if (!Trusted) {
        QBuffer buffer;
        buffer.setData(Records);
        buffer.open(QIODevice::ReadOnly);
        QStringList aside;
        const std::unique_ptr<QObject> scratch(ReadComponentSkipping(buffer, aside));
        if (!buffer.atEnd())
            throw EReadError(QCoreApplication::translate("TQorDesignDocument", "The file holds more than one design"));
        if (scratch->metaObject() != stage->metaObject())
            throw EReadError(QCoreApplication::translate("TQorDesignDocument", "The file holds a design of class %1, the stage is a %2")
                                 .arg(QString::fromLatin1(scratch->metaObject()->className()),
                                      QString::fromLatin1(stage->metaObject()->className())));
    }

    // The center hears of the new design once, at the end, rather than of
    // every component that goes and comes; the manager reports what it held
    // back when the update ends, to nobody.
    const CenterUnlinked unlinked(manager);
    manager->DeselectAll();
    const QList<QObject *> oldList = ComponentList(stage);
    QList<QPointer<QObject>> old(oldList.cbegin(), oldList.cend());
    QList<QPointer<QWidget>> shown;
    const TQorDesignUpdateScope update(manager);
    const QorRepaintOnce repaint(oldList);
    // The old components leave the stage's list, so that their names are
    // free, and stay whole until the new design is in.
    for (QObject *component : oldList) {
        RemoveComponent(stage, component);
        if (auto *w = qobject_cast<QWidget *>(component); w && w->parentWidget() == stage && !w->isHidden()) {
            shown.append(w);
            w->hide();
        }
    }
    try {
        QBuffer buffer;
        buffer.setData(Records);
        buffer.open(QIODevice::ReadOnly);
        const QorQuietShow quiet(stage);
        ReadComponentSkipping(buffer, Skipped, stage);
        restoreOwnerOrder(stage);
    } catch (...) {
        // The stream gave the stage back its former state; the old
        // components come back in their order.
        for (const QPointer<QObject> &component : std::as_const(old)) {
            if (component)
                InsertComponent(stage, component);
        }
        for (const QPointer<QWidget> &w : std::as_const(shown)) {
            if (w)
                w->show();
        }
        throw;
    }
    // Each old component inside another goes with it.
    for (const QPointer<QObject> &component : std::as_const(old)) {
        if (component && !Owner(component) && !insideOther(component, stage))
            FreeComponent(component);
    }
}
