// SPDX-License-Identifier: MIT
// The designer the library's own attribute editors use: the run-time
// designer plus the selected component and the editing of a control in
// place.
#pragma once

#include "qordesign_export.h"

#include "console/qorconsoleintf.h"
#include "console/vhodesignintfimpls.h"


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
