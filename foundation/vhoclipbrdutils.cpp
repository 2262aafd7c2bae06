#include "foundation/vhoclipbrdutils.h"

#include "foundation/qorerror.h"
#include "foundation/qorstream.h"

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QMimeData>
#include <QWidget>
#include <QtEndian>

#include <cstring>
#include <memory>

namespace {

constexpr int kHeaderSize = 8;

void writeWithChildren(QBuffer &Buffer, QObject *Component, bool WithChildren)
{
    WriteComponent(Buffer, Component);
    if (!WithChildren || !Component->isWidgetType())
        return;
    for (QObject *child : DesignChildren(Component)) {
        if (child->isWidgetType())
            writeWithChildren(Buffer, child, true);
    }
}

// Where the record after the one at Offset starts: by its length when its
// header is sound, else at the next signature further on.
qsizetype nextRecord(const QByteArray &Bytes, qsizetype Offset)
{
    if (Offset + kHeaderSize <= Bytes.size() && std::memcmp(Bytes.constData() + Offset, "QOR1", 4) == 0) {
        const quint32 length = qFromBigEndian<quint32>(Bytes.constData() + Offset + 4);
        if (qsizetype(length) <= Bytes.size() - Offset - kHeaderSize)
            return Offset + kHeaderSize + qsizetype(length);
    }
    const qsizetype next = Bytes.indexOf("QOR1", Offset + 1);
    return next < 0 ? Bytes.size() : next;
}

// Frees a pasted component that could not be kept; a widget leaves its
// parent at once, before events reach it again.
void discard(QObject *Component)
{
    if (auto *w = qobject_cast<QWidget *>(Component)) {
        w->hide();
        w->setParent(nullptr);
    }
    Component->deleteLater();
}

} // namespace

QString CF_QorComponents()
{
    return QStringLiteral("application/x-qor-components");
}

void TVhoClipboard::SetComponents(const TComponentList &Components, bool WithChildren)
{
    const QList<QObject *> list = Components.toList();
    if (list.isEmpty())
        return;
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    for (QObject *component : list)
        writeWithChildren(buffer, component, WithChildren);
    buffer.close();
    auto *data = new QMimeData;
    data->setData(CF_QorComponents(), bytes);
    QGuiApplication::clipboard()->setMimeData(data);
}

bool TVhoClipboard::HasComponents() const
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    return data && data->hasFormat(CF_QorComponents());
}

QObject *TVhoClipboard::GetComponents(QObject *Owner, QWidget *Parent, int DX, int DY)
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    // Read once: on X an owner that is slow to answer gives inconsistent
    // answers to several questions.
    const QByteArray bytes = data ? data->data(CF_QorComponents()) : QByteArray();
    if (bytes.isEmpty())
        return nullptr;
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QObject *last = nullptr;
    while (buffer.pos() < buffer.size()) {
        const qsizetype start = buffer.pos();
        QObject *component = nullptr;
        try {
            component = ReadComponent(buffer, nullptr, Parent, nullptr);
        } catch (const EQorError &) {
            buffer.seek(nextRecord(bytes, start));
            continue;
        }
        try {
            if (auto *w = qobject_cast<QWidget *>(component); w && Parent) {
                int left = w->x(), top = w->y();
                // The pasted widget itself stands at its stored place, so it
                // always moves at least one step.
                auto occupied = [Parent, &left, &top] {
                    for (QObject *child : Parent->children()) {
                        auto *c = qobject_cast<QWidget *>(child);
                        if (c && !c->isWindow() && c->x() == left && c->y() == top)
                            return true;
                    }
                    return false;
                };
                while (occupied()) {
                    left += DX;
                    top += DY;
                    if (DX == 0 && DY == 0)
                        break;
                }
                w->move(left, top);
            }
            if (Owner)
                InsertComponent(Owner, component);
            last = component;
        } catch (const EQorError &) {
            discard(component);
        }
    }
    return last;
}

TVhoClipboard *VhoClipboard()
{
    static TVhoClipboard clipboard;
    return &clipboard;
}
