// SPDX-License-Identifier: MIT
#include "browsing/qordsnsysreg.h"

// The tree's header needs the design center declared.
#include "console/qordesignconsole.h"

#include "browsing/qorclassesman.h"
#include "browsing/qorcomptreeview.h"
#include "browsing/qorpallete.h"
#include "console/qordesignactions.h"
#include "console/qordesignpopupmenu.h"
#include "designer/qormanager.h"
#include "inspector/qorinspector.h"

#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <vector>

namespace {

// One page or category: its name and its classes in registration order.
struct Group
{
    QString Name;
    QList<const QMetaObject *> Classes;
    const QMetaObject *Resource = nullptr;
};

// The pages or the categories, in the order they were first registered.
// Few groups of a few classes each: plain lists searched in order.
class GroupList
{
public:
    const Group *find(const QString &Name) const
    {
        const qsizetype i = indexOf(Name);
        return i >= 0 ? &m_groups[size_t(i)] : nullptr;
    }

    // The classes of a group; none for an unknown name.
    QList<const QMetaObject *> classes(const QString &Name) const
    {
        const Group *g = find(Name);
        return g ? g->Classes : QList<const QMetaObject *>();
    }

    // Appends the classes no group holds yet; the group is made when new.
    Group &add(const QString &Name, const QList<const QMetaObject *> &Classes)
    {
        qsizetype i = indexOf(Name);
        if (i < 0) {
            m_groups.push_back(Group{Name, {}, nullptr});
            i = qsizetype(m_groups.size()) - 1;
        }
        Group &target = m_groups[size_t(i)];
        for (const QMetaObject *c : Classes) {
            if (c && !holds(c))
                target.Classes.append(c);
        }
        return target;
    }

    QStringList names() const
    {
        QStringList result;
        for (const Group &g : m_groups)
            result.append(g.Name);
        return result;
    }

    void clear() { m_groups.clear(); }

private:
    qsizetype indexOf(const QString &Name) const
    {
        auto found = std::find_if(m_groups.begin(), m_groups.end(), [&](const Group &g) { return g.Name == Name; });
        return found != m_groups.end() ? qsizetype(found - m_groups.begin()) : -1;
    }

    bool holds(const QMetaObject *Class) const
    {
        return std::any_of(m_groups.begin(), m_groups.end(), [&](const Group &g) { return g.Classes.contains(Class); });
    }

    std::vector<Group> m_groups;
};

struct Registry
{
    QMutex Lock;
    GroupList Pages;
    GroupList Categories;
};

Registry &registry()
{
    static Registry instance;
    return instance;
}

} // namespace

void Register()
{
    RegisterComponents(QStringLiteral("QOR-DesignSys"), {&TQorDesignCenter::staticMetaObject});
    RegisterComponents(QStringLiteral("QOR-DesignSys"), {&TQorCompTreeView::staticMetaObject});
    RegisterComponents(QStringLiteral("QOR-DesignSys"), {&TQorDesignManager::staticMetaObject});
    RegisterComponents(QStringLiteral("QOR-DesignSys"),
                       {&TQorDesignCompPopupMenu::staticMetaObject, &TQorDesignCompPopupMenuEx::staticMetaObject,
                        &TQorDefDesignCompPopupMenu::staticMetaObject});
    RegisterComponents(QStringLiteral("QOR-DesignSys"), {&TQorObjInspector::staticMetaObject});
    RegisterComponents(QStringLiteral("QOR-DesignSys"),
                       {&TQorClassesImageList::staticMetaObject, &TQorCompPalleteToolBar::staticMetaObject,
                        &TQorCompPalleteTab::staticMetaObject});
    RegisterActions(QStringLiteral("QOR Design Actions"),
                    {&TQorDesignEditCopy::staticMetaObject, &TQorDesignEditCut::staticMetaObject,
                     &TQorDesignEditPaste::staticMetaObject, &TQorDesignEditSelAll::staticMetaObject,
                     &TQorDesignEditDelSel::staticMetaObject, &TQorDesignSelCtrlBringToFront::staticMetaObject,
                     &TQorDesignSelCtrlSendToBack::staticMetaObject,
                     &TQorDesignSelCtrlFlipSelChildren::staticMetaObject,
                     &TQorDesignSelCtrlFlipAllChildren::staticMetaObject,
                     &TQorDesignSelCtrlPositionAlign::staticMetaObject,
                     &TQorDesignSelCtrlPositionSize::staticMetaObject,
                     &TQorDesignSelCtrlPositionScale::staticMetaObject},
                    nullptr);
}

void RegisterComponents(const QString &Page, const QList<const QMetaObject *> &Classes)
{
    Registry &r = registry();
    const QMutexLocker locker(&r.Lock);
    r.Pages.add(Page, Classes);
}

void RegisterActions(const QString &Category, const QList<const QMetaObject *> &Classes, const QMetaObject *Resource)
{
    Registry &r = registry();
    const QMutexLocker locker(&r.Lock);
    Group &category = r.Categories.add(Category, Classes);
    if (!category.Resource)
        category.Resource = Resource;
}

QStringList RegisteredComponentPages()
{
    Registry &r = registry();
    const QMutexLocker locker(&r.Lock);
    return r.Pages.names();
}

QList<const QMetaObject *> RegisteredComponents(const QString &Page)
{
    Registry &r = registry();
    const QMutexLocker locker(&r.Lock);
    return r.Pages.classes(Page);
}

QStringList RegisteredActionCategories()
{
    Registry &r = registry();
    const QMutexLocker locker(&r.Lock);
    return r.Categories.names();
}

QList<const QMetaObject *> RegisteredActions(const QString &Category)
{
    Registry &r = registry();
    const QMutexLocker locker(&r.Lock);
    return r.Categories.classes(Category);
}

const QMetaObject *RegisteredActionResource(const QString &Category)
{
    Registry &r = registry();
    const QMutexLocker locker(&r.Lock);
    const Group *category = r.Categories.find(Category);
    return category ? category->Resource : nullptr;
}

void UnRegisterComponentsAndActions()
{
    Registry &r = registry();
    const QMutexLocker locker(&r.Lock);
    r.Pages.clear();
    r.Categories.clear();
}
