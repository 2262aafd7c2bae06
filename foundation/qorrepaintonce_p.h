// SPDX-License-Identifier: MIT
// Holds the repainting of a container while a command changes many of the
// widgets in it, so the container is repainted once afterwards.
#pragma once

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QWidget>

// While alive, every parent holding at least kFrom of the given widgets has
// its updates held; they are given back, with one repaint of each parent,
// when it goes (also when the command fails with an exception). Marking a
// thousand areas one by one builds a region of a thousand rectangles that
// every painting, the selection marks' included, is then clipped to.
class QorRepaintOnce
{
public:
    static constexpr qsizetype kFrom = 64;

    explicit QorRepaintOnce(const QList<QObject *> &Objects)
    {
        if (Objects.size() < kFrom)
            return;
        QHash<QWidget *, qsizetype> counts;
        for (QObject *object : Objects) {
            if (!object || !object->isWidgetType())
                continue;
            QWidget *parent = static_cast<QWidget *>(object)->parentWidget();
            if (parent && ++counts[parent] == kFrom && parent->isVisible() && parent->updatesEnabled()) {
                parent->setUpdatesEnabled(false);
                m_held.append(parent);
            }
        }
    }

    ~QorRepaintOnce()
    {
        for (const QPointer<QWidget> &parent : std::as_const(m_held)) {
            if (parent)
                parent->setUpdatesEnabled(true);
        }
    }

    QorRepaintOnce(const QorRepaintOnce &) = delete;
    QorRepaintOnce &operator=(const QorRepaintOnce &) = delete;

private:
    QList<QPointer<QWidget>> m_held;
};
