// SPDX-License-Identifier: MIT
#include "console/qorcustomizationrecorder.h"

#include "console/qordesignconsole.h"
#include "console/qordesignhistory.h"
#include "console/qordesignrecords_p.h"
#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"

#include <QCoreApplication>
#include <QHash>
#include <QWidget>

TQorCustomizationRecorder::TQorCustomizationRecorder(TQorDesignCenter *Center, QObject *Parent)
    : QObject(Parent)
    , m_center(Center)
{
}

TQorCustomizationRecorder::~TQorCustomizationRecorder() = default;

QList<TQorCustomizationIssue> TQorCustomizationRecorder::Start(const TQorCustomization &Saved)
{
    Stop();
    QWidget *stage = m_center ? m_center->GetDesignStage() : nullptr;
    if (!stage)
        throw EQorError(QCoreApplication::translate("TQorCustomizationRecorder", "There is no design stage"));
    m_base = TQorCustomization::FormRecords(stage);
    QList<TQorCustomizationIssue> issues;
    if (Saved.IsEmpty()) {
        m_delta.Clear();
    } else {
        issues = Saved.Apply(stage, m_locks);
        // What the saved delta kept, said against this version's form.
        m_delta = TQorCustomization::Diff(m_base, stage, m_locks);
        m_center->Refresh();
    }
    m_connection = connect(m_center->History(), &TQorDesignHistory::DesignChanged, this,
                           &TQorCustomizationRecorder::designChanged);
    m_recording = true;
    Q_EMIT DeltaChanged();
    return issues;
}

void TQorCustomizationRecorder::Stop()
{
    disconnect(m_connection);
    m_recording = false;
}

QString TQorCustomizationRecorder::pathOf(const QObject *Component) const
{
    const QWidget *stage = m_center ? m_center->GetDesignStage() : nullptr;
    QString path;
    for (const QObject *at = Component; at != stage;) {
        if (at->objectName().isEmpty())
            return QString();
        path = path.isEmpty() ? at->objectName() : at->objectName() + QLatin1Char('.') + path;
        at = Owner(const_cast<QObject *>(at));
        // Owned by no one on the way up: not a component of the form.
        if (!at)
            return QString();
    }
    return path;
}

void TQorCustomizationRecorder::designChanged(const QList<QObject *> &Objects, const QByteArray &Property)
{
    QWidget *stage = m_center ? m_center->GetDesignStage() : nullptr;
    if (!stage)
        return;
    if (Objects.isEmpty() || Property.isEmpty()) {
        try {
            m_delta = TQorCustomization::Diff(m_base, stage, m_locks);
        } catch (const EQorError &error) {
            qCWarning(lcQorConsole).noquote() << "The customization could not follow the design:" << error.message();
        }
        Q_EMIT DeltaChanged();
        return;
    }
    // A move of many controls of one class: the class's name is made once.
    QHash<const QMetaObject *, QString> classNames;
    for (QObject *object : Objects) {
        if (!object)
            continue;
        const bool form = object == stage;
        const QString path = form ? QString(QLatin1String("")) : pathOf(object);
        if (!form && path.isEmpty())
            continue;
        const QMetaObject *meta = object->metaObject();
        if (m_locks.IsPropertyLocked(path, meta, Property))
            continue;
        auto name = classNames.find(meta);
        if (name == classNames.end())
            name = classNames.insert(meta, QString::fromLatin1(meta->className()));
        m_delta.SetPropertyValue(path, *name, Property, object->property(Property.constData()));
    }
    Q_EMIT DeltaChanged();
}

void TQorCustomizationRecorder::ResetToDefault()
{
    if (!m_center || !m_center->GetDesignStage())
        return;
    m_center->BeginDesignChange(QCoreApplication::translate("TQorCustomizationRecorder", "Reset to Default"));
    try {
        QStringList skipped;
        QorReplaceDesign(m_center, m_base, skipped, true);
    } catch (const EQorError &error) {
        qCWarning(lcQorConsole).noquote() << "The form could not be put back:" << error.message();
    }
    m_center->EndDesignChange();
    m_center->Refresh();
}
