// SPDX-License-Identifier: MIT
// A piece of work the design surface asks for many times in a burst (once
// per control moved, shown or freed) and runs once, at the next turn of
// the event loop.
#pragma once

#include <QMetaObject>
#include <QObject>

#include <utility>

// Runs Work once at the next turn of the event loop, however often it is
// asked for before then; Queued is true while a run is waiting. Nothing
// runs when Context is destroyed first, so Queued must live as long.
template<class Work>
void QorRunOnceLater(QObject *Context, bool &Queued, Work &&work)
{
    if (Queued)
        return;
    Queued = true;
    QMetaObject::invokeMethod(
        Context,
        [&Queued, work = std::forward<Work>(work)] {
            Queued = false;
            work();
        },
        Qt::QueuedConnection);
}
