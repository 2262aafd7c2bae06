// SPDX-License-Identifier: MIT
// What the object inspector needs of the design center it reports to.
// The design console implements it; the inspector finds it on the object
// it was given as its center.
#pragma once

#include "qordesign_export.h"

#include "foundation/qorcomponents.h"

#include <QtPlugin>

class IDesigner;

// What the inspector needs of the design center it reports to.
class QORDESIGN_EXPORT IQorInspectorCenter
{
    Q_DISABLE_COPY_MOVE(IQorInspectorCenter)

public:
    virtual ~IQorInspectorCenter();

    virtual void SetDirty(bool Value) = 0;
    // A value was changed through the inspector.
    virtual void InspectorPropChanged() = 0;
    // The objects the center has selected.
    virtual TComponentList InspectorSelection() const = 0;
    // The designer property editors are made for; may be null.
    virtual IDesigner *InspectorDesigner() const = 0;

protected:
    IQorInspectorCenter() = default;
};
Q_DECLARE_INTERFACE(IQorInspectorCenter, "org.qordesign.IQorInspectorCenter/1.0")
