// SPDX-License-Identifier: MIT
#include "browsing/qorclassesman.h"

#include "foundation/qorlogging_p.h"
#include "translation/qortransutils.h"

#include <algorithm>

namespace {

TQorDesignClassList *defaultList = nullptr;

} // namespace

TQorDesignClassInformation::TQorDesignClassInformation() = default;
TQorDesignClassInformation::~TQorDesignClassInformation() = default;

// ---- TQorClassesImageList ---------------------------------------------------

TQorClassesImageList::TQorClassesImageList(QObject *Parent)
    : QObject(Parent)
    , m_size(24, 24)
{
}

int TQorClassesImageList::Add(const QIcon &Icon)
{
    m_icons.append(Icon);
    return int(m_icons.size()) - 1;
}

QIcon TQorClassesImageList::Icon(int Index) const
{
    return m_icons.value(Index);
}

// ---- TQorDesignClassList ------------------------------------------------------

TQorDesignClassList::TQorDesignClassList() = default;

TQorDesignClassList::~TQorDesignClassList()
{
    ClearClasses();
    if (defaultList == this)
        defaultList = nullptr;
}

const QMetaObject *TQorDesignClassList::Classes(int Index) const
{
    const TQorDesignClassInformation *info = ClassInfos(Index);
    return info ? info->ClassTypeRef() : nullptr;
}

void TQorDesignClassList::SetClasses(int Index, const QMetaObject *Class)
{
    if (TQorDesignClassInformation *info = ClassInfos(Index))
        info->SetPTI(TypeInfoOfClass(Class));
}

TQorDesignClassInformation *TQorDesignClassList::ClassInfos(int Index) const
{
    return Index >= 0 && Index < Count() ? m_items[size_t(Index)].get() : nullptr;
}

void TQorDesignClassList::SetClassInfos(int Index, const TQorDesignClassInformation *Info)
{
    TQorDesignClassInformation *entry = ClassInfos(Index);
    if (entry && Info)
        entry->SetPTI(Info->PTI());
}

void TQorDesignClassList::SetAutoRegister(bool Value)
{
    if (Value == m_autoRegister)
        return;
    m_autoRegister = Value;
    if (Value)
        RegisterAllClasses();
}

int TQorDesignClassList::AddClass(const QMetaObject *Class, const QString &Pallete, int ImageIndex, bool Unique,
                                  bool Register, TComponentFactory Factory)
{
    if (!Class || (Unique && ClassExists(Class)))
        return -1;
    auto info = std::make_unique<TQorDesignClassInformation>();
    info->SetPTI(TypeInfoOfClass(Class));
    info->ImageIndex = ImageIndex;
    info->Pallete = Pallete;
    m_items.push_back(std::move(info));
    if (Factory) {
        // Kept for registering later, should AutoRegister come on then.
        m_factories.emplace_back(Class, Factory);
    }
    if (m_autoRegister && Register)
        registerClass(Class, Factory);
    return Count() - 1;
}

int TQorDesignClassList::AddClassInfo(TQorDesignClassInformation *Info)
{
    if (!Info)
        return -1;
    m_items.emplace_back(Info);
    if (m_autoRegister)
        registerClass(Info->ClassTypeRef(), {});
    return Count() - 1;
}

int TQorDesignClassList::ClassIndex(const QMetaObject *Class) const
{
    for (int i = 0; i < Count(); ++i) {
        if (m_items[size_t(i)]->ClassTypeRef() == Class)
            return i;
    }
    return -1;
}

int TQorDesignClassList::ClassInfoIndex(const TQorDesignClassInformation *Info) const
{
    for (int i = 0; i < Count(); ++i) {
        if (m_items[size_t(i)].get() == Info)
            return i;
    }
    return -1;
}

void TQorDesignClassList::DelClass(const QMetaObject *Class)
{
    const int index = ClassIndex(Class);
    if (index >= 0)
        DelClassInfo(index);
}

void TQorDesignClassList::DelClassInfo(int Index)
{
    if (Index >= 0 && Index < Count())
        m_items.erase(m_items.begin() + Index);
}

void TQorDesignClassList::ClearClasses()
{
    // The last down to the second are freed; the first leaves the list
    // alive (the list has always done so), and goes with the list.
    while (m_items.size() > 1)
        m_items.pop_back();
    if (!m_items.empty()) {
        m_keptFirsts.push_back(std::move(m_items.front()));
        m_items.clear();
    }
}

void TQorDesignClassList::RegisterAllClasses()
{
    for (const auto &info : m_items)
        registerClass(info->ClassTypeRef(), {});
}

void TQorDesignClassList::FillPalleteStrings(QStringList &Strings, bool SkipEmpty) const
{
    Strings.clear();
    for (const auto &info : m_items) {
        if (SkipEmpty && info->Pallete.isEmpty())
            continue;
        if (!Strings.contains(info->Pallete, Qt::CaseInsensitive))
            Strings.append(info->Pallete);
    }
}

void TQorDesignClassList::registerClass(const QMetaObject *Class, const TComponentFactory &Factory)
{
    // A class already in the registry keeps its factory.
    if (!Class || GetClass(QLatin1String(Class->className())) == Class)
        return;
    TComponentFactory factory = Factory;
    if (!factory) {
        const auto it = std::find_if(m_factories.cbegin(), m_factories.cend(),
                                     [Class](const auto &entry) { return entry.first == Class; });
        if (it != m_factories.cend())
            factory = it->second;
    }
    if (!factory && Class->constructorCount() > 0)
        factory = [Class]() -> QObject * { return Class->newInstance(); };
    if (!factory) {
        qCInfo(lcQorConsole).noquote() << "Class" << Class->className()
                                       << "not registered: no factory and no invokable constructor";
        return;
    }
    RegisterClass(Class, factory);
}

TQorDesignClassList *DefDesignClassList()
{
    return defaultList;
}

void SetDefDesignClassList(TQorDesignClassList *List)
{
    defaultList = List;
}

QString GetClassLabel(const QMetaObject *Class)
{
    if (!Class)
        return {};
    const QString label = ClassToTransedName(Class);
    return label.isEmpty() ? QLatin1String(Class->className()) : label;
}
