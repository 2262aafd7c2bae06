// SPDX-License-Identifier: MIT
// Tells the library's non-widget objects (the design actions) that the
// application's language changed: Qt tells widgets only.
#pragma once

#include "qordesign_export.h"

#include <QObject>

class QORDESIGN_AUTOTEST_EXPORT TQorLanguageWatch : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    // A translator was installed or removed.
    void LanguageChanged();
};

// The one watch of the process; null once the application is gone.
QORDESIGN_AUTOTEST_EXPORT TQorLanguageWatch *QorLanguageWatch();
