// SPDX-License-Identifier: MIT
// The designer the library's own attribute editors use: the run-time
// designer plus the selected component and the editing of a control in
// place.
#pragma once

#include "qordesign_export.h"

#include "console/vhodesignintfimpls.h"

class QORDESIGN_EXPORT IQorFormDesigner
{
public:
    virtual ~IQorFormDesigner();
    // The one selected component; null unless exactly one is selected.
    virtual QObject *GetSelectedComponent() const = 0;
    virtual void StartControlEmbedEdit() = 0;
    virtual void EndControlEmbedEdit() = 0;
};

class QORDESIGN_EXPORT TQorFormDesigner : public TVhoDesigner, public IQorFormDesigner
{
    Q_OBJECT

public:
    using TVhoDesigner::TVhoDesigner;

    QObject *GetSelectedComponent() const override;
    void StartControlEmbedEdit() override;
    void EndControlEmbedEdit() override;
};
