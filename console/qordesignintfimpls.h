// SPDX-License-Identifier: MIT
// The designer the library's own attribute editors use: the run-time
// designer plus the selected component and the editing of a control in
// place.
#pragma once

#include "qordesign_export.h"

#include "console/vhodesignintfimpls.h"

#include <QtPlugin>

class QORDESIGN_EXPORT IQorFormDesigner
{
    Q_DISABLE_COPY_MOVE(IQorFormDesigner)

public:
    virtual ~IQorFormDesigner();
    // The one selected component; null unless exactly one is selected.
    virtual QObject *GetSelectedComponent() const = 0;
    virtual void StartControlEmbedEdit() = 0;
    virtual void EndControlEmbedEdit() = 0;

protected:
    IQorFormDesigner() = default;
};
Q_DECLARE_INTERFACE(IQorFormDesigner, "org.qordesign.IQorFormDesigner/1.0")

class QORDESIGN_EXPORT TQorFormDesigner : public TVhoDesigner, public IQorFormDesigner
{
    Q_OBJECT
    Q_INTERFACES(IQorFormDesigner)

public:
    using TVhoDesigner::TVhoDesigner;

    QObject *GetSelectedComponent() const override;
    void StartControlEmbedEdit() override;
    void EndControlEmbedEdit() override;
};
