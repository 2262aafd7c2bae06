// SPDX-License-Identifier: MIT
// Keeps a user's customization of a form up to date while the user designs
// it: each step of the design center's history adds to the delta, a move of
// a thousand controls as a thousand new places, any other step as the
// difference to the form as the application built it.
#pragma once

#include "qordesign_export.h"

#include "console/qorcustomization.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>

class TQorDesignCenter;

class QORDESIGN_EXPORT TQorCustomizationRecorder : public QObject
{
    Q_OBJECT

public:
    explicit TQorCustomizationRecorder(TQorDesignCenter *Center, QObject *Parent = nullptr);
    ~TQorCustomizationRecorder() override;

    // Takes the center's stage as the application built it, then applies
    // the user's saved customization to it (if any) and records from there
    // on; what the saved delta could not keep is returned. Call it once the
    // form is built, before the user designs.
    QList<TQorCustomizationIssue> Start(const TQorCustomization &Saved = TQorCustomization());
    // Stops recording; the delta stays as it is.
    void Stop();
    bool IsRecording() const { return m_recording; }

    // What the application does not let its users change: left out of the
    // delta, and skipped when a saved one is applied.
    const TQorCustomizationLocks &Locks() const { return m_locks; }
    void SetLocks(const TQorCustomizationLocks &Locks) { m_locks = Locks; }

    // The form as the application built it, as the stream's records.
    QByteArray BaseRecords() const { return m_base; }
    // The user's customization now.
    TQorCustomization Delta() const { return m_delta; }

    // Puts the form back as the application built it: one step of the
    // history, which undo takes back.
    void ResetToDefault();

Q_SIGNALS:
    // The delta changed.
    void DeltaChanged();

private:
    void designChanged(const QList<QObject *> &Objects, const QByteArray &Property);
    QString pathOf(const QObject *Component) const;

    QPointer<TQorDesignCenter> m_center;
    QByteArray m_base;
    TQorCustomization m_delta;
    TQorCustomizationLocks m_locks;
    QMetaObject::Connection m_connection;
    bool m_recording = false;
};
