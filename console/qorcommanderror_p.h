// SPDX-License-Identifier: MIT
// How a design command that fails is reported: the commands run from menus
// and shortcuts, where an exception must not reach the event loop.
#pragma once

#include "qordesign_export.h"

#include <QString>

#include <functional>

class QWidget;

// Runs Command; returns the message of an exception it threw, or an empty
// text when it ran through.
QORDESIGN_AUTOTEST_EXPORT QString QorRunCaught(const std::function<void()> &Command);

// Shows what a command met in a warning box over the stage's window
// (object name "QorDesignCommandError"), without waiting for the user.
QORDESIGN_AUTOTEST_EXPORT void QorShowCommandError(QWidget *Stage, const QString &Command, const QString &Message);
