// SPDX-License-Identifier: MIT
#include "console/qorcompeditors.h"

#include "console/qordesignintfimpls.h"
#include "designer/qormanager.h"
#include "foundation/qorcomponents.h"
#include "foundation/vhosysutils.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QScopeGuard>
#include <QToolBox>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <vector>

namespace {

struct Registration
{
    const QMetaObject *componentClass;
    TComponentEditorFactory factory;
};

std::vector<Registration> &registrations()
{
    static std::vector<Registration> list;
    return list;
}

int depthOf(const QMetaObject *cls)
{
    int depth = 0;
    for (; cls; cls = cls->superClass())
        ++depth;
    return depth;
}

// The owner new parts of a component join: its own owner, else the
// designer's stage.
QObject *ownerFor(QObject *Component, IDesigner *Designer)
{
    if (QObject *owner = Owner(Component))
        return owner;
    auto *designer = dynamic_cast<TVhoDesigner *>(Designer);
    return designer ? designer->GetDesignStage() : nullptr;
}

} // namespace

// ---- TComponentEditor --------------------------------------------------

TComponentEditor::TComponentEditor(QObject *Component, IDesigner *Designer)
    : m_component(Component)
    , m_designer(Designer)
{
}

TComponentEditor::~TComponentEditor() = default;

int TComponentEditor::GetVerbCount() const
{
    return 0;
}

QString TComponentEditor::GetVerb(int) const
{
    return {};
}

void TComponentEditor::ExecuteVerb(int)
{
}

void TComponentEditor::Edit()
{
    if (GetVerbCount() > 0)
        ExecuteVerb(0);
}

void RegisterComponentEditor(const QMetaObject *ComponentClass, TComponentEditorFactory Factory)
{
    if (ComponentClass && Factory)
        registrations().push_back({ComponentClass, std::move(Factory)});
}

void UnregisterComponentEditors(const QMetaObject *ComponentClass)
{
    auto &list = registrations();
    list.erase(std::remove_if(list.begin(), list.end(),
                              [ComponentClass](const Registration &r) { return r.componentClass == ComponentClass; }),
               list.end());
}

TComponentEditorRef GetComponentEditor(QObject *Component, IDesigner *Designer)
{
    if (!Component)
        return {};
    const Registration *best = nullptr;
    for (const Registration &r : registrations()) {
        if (Component->metaObject()->inherits(r.componentClass)
            && (!best || depthOf(r.componentClass) >= depthOf(best->componentClass)))
            best = &r;
    }
    return best ? best->factory(Component, Designer) : std::make_shared<TComponentEditor>(Component, Designer);
}

// ---- Pages -------------------------------------------------------------

int TQorPagesEditor::GetVerbCount() const
{
    return 4;
}

QString TQorPagesEditor::GetVerb(int Index) const
{
    static const char *const verbs[] = {
        QT_TRANSLATE_NOOP("TQorPagesEditor", "Add Page"), QT_TRANSLATE_NOOP("TQorPagesEditor", "Delete Page"),
        QT_TRANSLATE_NOOP("TQorPagesEditor", "Next Page"), QT_TRANSLATE_NOOP("TQorPagesEditor", "Previous Page")};
    return Index >= 0 && Index < 4 ? QCoreApplication::translate("TQorPagesEditor", verbs[Index]) : QString();
}

void TQorPagesEditor::ExecuteVerb(int Index)
{
    QObject *component = Component();
    auto *tabs = qobject_cast<QTabWidget *>(component);
    auto *stack = qobject_cast<QStackedWidget *>(component);
    auto *box = qobject_cast<QToolBox *>(component);
    if (!tabs && !stack && !box)
        return;
    const int count = tabs ? tabs->count() : stack ? stack->count() : box->count();
    const int current = tabs ? tabs->currentIndex() : stack ? stack->currentIndex() : box->currentIndex();
    auto setCurrent = [&](int i) {
        if (tabs)
            tabs->setCurrentIndex(i);
        else if (stack)
            stack->setCurrentIndex(i);
        else
            box->setCurrentIndex(i);
    };
    switch (Index) {
    case 0: {
        QObject *owner = ownerFor(component, Designer());
        auto *page = new QWidget;
        page->setObjectName(owner ? GetUniqueName(QStringLiteral("Page"), owner) : QStringLiteral("Page1"));
        const QString title = page->objectName();
        const int at = tabs ? tabs->addTab(page, title) : stack ? stack->addWidget(page) : box->addItem(page, title);
        if (owner)
            InsertComponent(owner, page);
        setCurrent(at);
        break;
    }
    case 1: {
        if (count == 0 || current < 0)
            return;
        QWidget *page = tabs ? tabs->widget(current) : stack ? stack->widget(current) : box->widget(current);
        if (tabs)
            tabs->removeTab(current);
        else if (stack)
            stack->removeWidget(page);
        else
            box->removeItem(current);
        page->hide();
        page->setParent(nullptr);
        page->deleteLater();
        break;
    }
    case 2:
        if (count > 0)
            setCurrent((current + 1) % count);
        break;
    case 3:
        if (count > 0)
            setCurrent((current - 1 + count) % count);
        break;
    default:
        return;
    }
    if (Designer())
        Designer()->Modified();
}

// ---- Items -------------------------------------------------------------

int TQorItemsEditor::GetVerbCount() const
{
    return 1;
}

QString TQorItemsEditor::GetVerb(int Index) const
{
    return Index == 0 ? QCoreApplication::translate("TQorItemsEditor", "Edit Items...") : QString();
}

QString TQorItemsEditor::ItemsText() const
{
    QStringList lines;
    QObject *component = Component();
    if (auto *list = qobject_cast<QListWidget *>(component)) {
        for (int i = 0; i < list->count(); ++i)
            lines.append(list->item(i)->text());
    } else if (auto *combo = qobject_cast<QComboBox *>(component)) {
        for (int i = 0; i < combo->count(); ++i)
            lines.append(combo->itemText(i));
    } else if (auto *tree = qobject_cast<QTreeWidget *>(component)) {
        for (int i = 0; i < tree->topLevelItemCount(); ++i)
            lines.append(tree->topLevelItem(i)->text(0));
    } else if (auto *table = qobject_cast<QTableWidget *>(component)) {
        for (int r = 0; r < table->rowCount(); ++r) {
            QStringList cells;
            for (int c = 0; c < table->columnCount(); ++c)
                cells.append(table->item(r, c) ? table->item(r, c)->text() : QString());
            lines.append(cells.join(QLatin1Char('\t')));
        }
    }
    return lines.join(QLatin1Char('\n'));
}

void TQorItemsEditor::SetItemsText(const QString &Text)
{
    const QStringList lines = Text.isEmpty() ? QStringList() : Text.split(QLatin1Char('\n'));
    QObject *component = Component();
    if (auto *list = qobject_cast<QListWidget *>(component)) {
        list->clear();
        list->addItems(lines);
    } else if (auto *combo = qobject_cast<QComboBox *>(component)) {
        combo->clear();
        combo->addItems(lines);
    } else if (auto *tree = qobject_cast<QTreeWidget *>(component)) {
        tree->clear();
        for (const QString &line : lines)
            tree->addTopLevelItem(new QTreeWidgetItem({line}));
    } else if (auto *table = qobject_cast<QTableWidget *>(component)) {
        int columns = 1;
        for (const QString &line : lines)
            columns = std::max(columns, int(line.count(QLatin1Char('\t'))) + 1);
        table->clear();
        table->setRowCount(int(lines.size()));
        table->setColumnCount(std::max(columns, table->columnCount()));
        for (int r = 0; r < lines.size(); ++r) {
            const QStringList cells = lines[r].split(QLatin1Char('\t'));
            for (int c = 0; c < cells.size(); ++c)
                table->setItem(r, c, new QTableWidgetItem(cells[c]));
        }
    }
}

void TQorItemsEditor::ExecuteVerb(int Index)
{
    if (Index != 0 || !Component())
        return;
    QDialog dialog;
    dialog.setObjectName(QStringLiteral("QorItemsDialog"));
    dialog.setWindowTitle(QCoreApplication::translate("TQorItemsEditor", "Items of %1").arg(Component()->objectName()));
    auto *layout = new QVBoxLayout(&dialog);
    auto *text = new QPlainTextEdit(&dialog);
    text->setObjectName(QStringLiteral("Items"));
    text->setPlainText(ItemsText());
    layout->addWidget(text, 1);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
    dialog.resize(320, 260);
    if (dialog.exec() != QDialog::Accepted || !Component())
        return;
    SetItemsText(text->toPlainText());
    if (Designer())
        Designer()->Modified();
}

// ---- Registration ------------------------------------------------------

namespace {

void registerLibraryEditors()
{
    for (const QMetaObject *cls : {&QTabWidget::staticMetaObject, &QStackedWidget::staticMetaObject,
                                   &QToolBox::staticMetaObject})
        RegisterComponentEditor<TQorPagesEditor>(cls);
    for (const QMetaObject *cls : {&QListWidget::staticMetaObject, &QComboBox::staticMetaObject,
                                   &QTreeWidget::staticMetaObject, &QTableWidget::staticMetaObject})
        RegisterComponentEditor<TQorItemsEditor>(cls);
    // A double click on a designed component runs its editor's Edit.
    TQorDesignManager::SetDefaultComponentEditorLauncher([](TQorDesignManager *Manager, QObject *Component) {
        TQorFormDesigner designer(Manager);
        TComponentEditorRef editor = GetComponentEditor(Component, &designer);
        if (!editor || editor->GetVerbCount() == 0)
            return false;
        // What the editor changes is one step of the center's history.
        IQorDesignCenter *center = Manager ? Manager->ConsoleCenter() : nullptr;
        if (center)
            center->BeginDesignChange(editor->GetVerb(0));
        const auto end = qScopeGuard([center] {
            if (center)
                center->EndDesignChange();
        });
        editor->Edit();
        return true;
    });
}
Q_CONSTRUCTOR_FUNCTION(registerLibraryEditors)

} // namespace
