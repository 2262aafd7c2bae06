// SPDX-License-Identifier: MIT
// The selection lists property and component editors are enumerated for,
// on the interfaces of inspector/qorinspectorintf.h (IDesigner,
// IDesignerSelections). The design console implements IDesigner on top of
// the design manager; an application that runs editors without a console
// passes null, and every editor of the library works without one.
#pragma once

#include "qordesign_export.h"

#include "inspector/qorinspectorintf.h"

#include <QList>
#include <QObject>
#include <QPointer>

// The plain selection list. Adding and comparing go through the
// interface only.
class QORDESIGN_EXPORT TDesignerSelections : public IDesignerSelections
{
public:
    TDesignerSelections();
    ~TDesignerSelections() override;

    int Count() const override;
    QObject *Get(int Index) const override;

private:
    int Add(QObject *Item) override;
    bool Equals(const IDesignerSelections &List) const override;

    QList<QPointer<QObject>> m_items;

    friend class TQorDesignerSelections;
};

// The selection list the property lists fill with plain calls.
class QORDESIGN_EXPORT TQorDesignerSelections : public TDesignerSelections
{
public:
    // The index of the new entry.
    int Add(QObject *Item) override;
    bool Equals(const IDesignerSelections &List) const override;
};
