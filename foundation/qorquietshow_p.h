// SPDX-License-Identifier: MIT
// Shows widgets on a visible parent without asking the window system
// where the pointer is for each one.
#pragma once

#include <QWidget>

#include <memory>

// Showing a widget on a visible parent makes Qt ask the window system
// where the pointer is, to send enter and leave events: a round trip to the
// X server per widget, most of the time a design of a thousand widgets
// takes to come in. Qt skips that while a widget holds the mouse grab, so
// while this lives a never-shown widget of its own (it has no window:
// nothing is grabbed on the server) holds the grab. A grab someone else
// holds is left alone; the pointer's enter and leave follow with its next
// move.
class QorQuietShow
{
public:
    explicit QorQuietShow(const QWidget *Parent)
    {
        if (QWidget::mouseGrabber() || !Parent || !Parent->isVisible())
            return;
        m_holder = std::make_unique<QWidget>();
        m_holder->grabMouse();
    }
    ~QorQuietShow()
    {
        if (m_holder && QWidget::mouseGrabber() == m_holder.get())
            m_holder->releaseMouse();
    }
    QorQuietShow(const QorQuietShow &) = delete;
    QorQuietShow &operator=(const QorQuietShow &) = delete;

private:
    std::unique_ptr<QWidget> m_holder;
};
