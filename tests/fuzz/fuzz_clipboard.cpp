// SPDX-License-Identifier: MIT
// The clipboard: component records pasted onto a form, and Qt Designer's
// text read as widgets, directly and pasted.
#include "qorfuzz.h"
#include "qorfuzzfixture_p.h"

#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/vhoclipbrdutils.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QWidget>

namespace {

// A paste keeps what it can read and skips the rest, so it never fails as
// a whole: what was on the form stays as it was and first, and the last
// component it answers is one the form now owns.
void pasteOntoForm(const char *Where)
{
    QWidget *form = QorFuzzForm();
    for (const bool rename : {false, true}) {
        const QorFormSnapshot before = QorSnapshot(form, form);
        VhoClipboard()->SetRenameDuplicates(rename);
        QObject *last = VhoClipboard()->GetComponents(form, form, 8, 6);
        VhoClipboard()->SetRenameDuplicates(false);
        QorFuzzFlushDeletes();
        QorFuzzRequire(!last || Owner(last) == form,
                       QStringLiteral("%1 answered a component the form does not own").arg(QLatin1String(Where)));
        QorFuzzCheckAddedAndRemove(before, form, form, Where);
    }
}

QList<QObject *> objectsOf(const QList<QWidget *> &Widgets)
{
    return QList<QObject *>(Widgets.begin(), Widgets.end());
}

void deleteAll(const QList<QWidget *> &Widgets)
{
    for (QWidget *w : Widgets)
        delete w;
}

} // namespace

int QorFuzzClipboard(const uint8_t *Data, size_t Size)
{
    auto *data = new QMimeData;
    data->setData(CF_QorComponents(), QorFuzzBytes(Data, Size));
    QGuiApplication::clipboard()->setMimeData(data);
    pasteOntoForm("A paste of records");
    return 0;
}

int QorFuzzDesignerText(const uint8_t *Data, size_t Size)
{
    const QString text = QString::fromUtf8(QorFuzzBytes(Data, Size));
    QWidget *form = QorFuzzForm();
    const QorFormSnapshot before = QorSnapshot(form, form);
    QList<QWidget *> widgets;
    try {
        widgets = WidgetsFromDesignerText(text, form);
    } catch (const EQorError &) {
        QorFuzzRequireUnchanged(before, QorSnapshot(form, form), "A failed WidgetsFromDesignerText");
    }
    if (!widgets.isEmpty()) {
        for (QWidget *w : std::as_const(widgets))
            QorFuzzRequire(w->parentWidget() == form, QStringLiteral("a widget read from Designer's text is not on the parent"));
        // What the reader made, written as Designer's text, reads back into
        // widgets that write the same text.
        const QString written = DesignerTextOf(objectsOf(widgets));
        QList<QWidget *> again;
        try {
            again = WidgetsFromDesignerText(written, form);
        } catch (const EQorError &e) {
            QorFuzzRequire(false, QStringLiteral("Designer's text of read widgets does not read: %1").arg(e.message()));
        }
        const QString rewritten = DesignerTextOf(objectsOf(again));
        deleteAll(again);
        deleteAll(widgets);
        QorFuzzRequire(rewritten == written,
                       QStringLiteral("widgets read from their Designer text write another text:\n%1\n---\n%2").arg(written, rewritten));
    }
    QorFuzzRequireUnchanged(before, QorSnapshot(form, form), "WidgetsFromDesignerText and the deletion of its widgets");

    QGuiApplication::clipboard()->setText(text);
    pasteOntoForm("A paste of Designer's text");
    return 0;
}
