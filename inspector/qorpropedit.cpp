// SPDX-License-Identifier: MIT
#include "inspector/qorpropedit.h"

#include "foundation/qortypinfo.h"
#include "inspector/qorpropdetail.h"
#include "foundation/vhortti_p.h"

#include <QHash>
#include <QPointer>
#include <QVarLengthArray>
#include <QWidget>

#include <algorithm>

namespace {

struct Registration
{
    PTypeInfo type;
    const QMetaObject *componentClass;
    QString name;
    TPropertyEditorFactory factory;
};

std::vector<Registration> &registrations()
{
    static std::vector<Registration> list;
    return list;
}

QHash<int, TPropertyEditorFactory> &kindEditors()
{
    static QHash<int, TPropertyEditorFactory> editors;
    return editors;
}

QPointer<QWidget> &dialogParent()
{
    static QPointer<QWidget> parent;
    return parent;
}

// How many classes lie between a class and the root: the deeper, the
// more specific.
int depthOf(const QMetaObject *cls)
{
    int depth = 0;
    for (; cls; cls = cls->superClass())
        ++depth;
    return depth;
}

// How well a registered type fits a property's type: -1 not at all.
int typeFit(PTypeInfo registered, PTypeInfo actual)
{
    if (!registered)
        return 0;
    if (!actual)
        return -1;
    if (registered == actual)
        return 1000;
    if (registered->Kind == tkClass && actual->Kind == tkClass && registered->TypeData.ClassType
        && actual->TypeData.ClassType && actual->TypeData.ClassType->inherits(registered->TypeData.ClassType))
        return depthOf(registered->TypeData.ClassType);
    return -1;
}

} // namespace

// ---- TPropertyEditor ---------------------------------------------------

TPropertyEditor::TPropertyEditor(IDesigner *Designer, int PropCount)
    : m_designer(Designer)
    , m_propList(size_t(std::max(PropCount, 0)), {nullptr, nullptr})
{
}

TPropertyEditor::~TPropertyEditor() = default;

TPropertyAttributes TPropertyEditor::GetAttributes() const
{
    return paMultiSelect | paRevertable;
}

namespace {

// Whether the live objects of an editor hold equal values; the first of
// them comes back in First (-1 when none is alive).
bool equalValues(const TPropertyEditor &Editor, int &First)
{
    First = -1;
    QVariant value;
    for (int i = 0; i < Editor.PropCount(); ++i) {
        QObject *object = Editor.GetComponent(i);
        if (!object)
            continue;
        const QVariant own = GetPropValue(object, Editor.GetPropInfo(i));
        if (First < 0) {
            First = i;
            value = own;
        } else if (own.metaType() != value.metaType() || own != value) {
            return false;
        }
    }
    return true;
}

} // namespace

bool TPropertyEditor::TextFollowsValue() const
{
    return false;
}

QString TPropertyEditor::GetValue() const
{
    int alike = -1;
    if (PropCount() > 1 && TextFollowsValue() && equalValues(*this, alike))
        return alike < 0 ? QString() : GetValueAt(alike);
    // Several objects that disagree show nothing, as the value texts do.
    QString result;
    bool first = true;
    for (int i = 0; i < PropCount(); ++i) {
        if (!GetComponent(i))
            continue;
        const QString text = GetValueAt(i);
        if (first) {
            result = text;
            first = false;
        } else if (text != result) {
            return {};
        }
    }
    return result;
}

QString TPropertyEditor::GetValueAt(int Index) const
{
    QObject *object = GetComponent(Index);
    return object ? GetPropertyValueStr(object, GetPropInfo(Index)) : QString();
}

void TPropertyEditor::SetValue(const QString &Value)
{
    for (const auto &[object, info] : m_propList) {
        if (object)
            SetPropertyValueStr(object.data(), info, Value);
    }
    Modified();
}

void TPropertyEditor::GetValues(const TGetStrProc &) const
{
}

void TPropertyEditor::GetProperties(const TGetPropProc &) const
{
}

void TPropertyEditor::Edit()
{
}

QString TPropertyEditor::GetName() const
{
    PPropInfo info = GetPropInfo(0);
    return info ? info->Name : QString();
}

void TPropertyEditor::Initialize()
{
}

bool TPropertyEditor::AllEqual() const
{
    int alike = -1;
    if (PropCount() > 1 && TextFollowsValue() && equalValues(*this, alike))
        return true;
    QString text;
    bool first = true;
    for (int i = 0; i < PropCount(); ++i) {
        if (!GetComponent(i))
            continue;
        const QString own = GetValueAt(i);
        if (first) {
            text = own;
            first = false;
        } else if (own != text) {
            return false;
        }
    }
    return true;
}

void TPropertyEditor::SetPropEntry(int Index, QObject *Instance, PPropInfo PropInfo)
{
    if (Index >= 0 && size_t(Index) < m_propList.size())
        m_propList[size_t(Index)] = {Instance, PropInfo};
}

QObject *TPropertyEditor::GetComponent(int Index) const
{
    return Index >= 0 && size_t(Index) < m_propList.size() ? m_propList[size_t(Index)].first.data() : nullptr;
}

PPropInfo TPropertyEditor::GetPropInfo(int Index) const
{
    return Index >= 0 && size_t(Index) < m_propList.size() ? m_propList[size_t(Index)].second : nullptr;
}

PTypeInfo TPropertyEditor::GetPropType() const
{
    PPropInfo info = GetPropInfo(0);
    return info ? info->PropType : nullptr;
}

QString TPropertyEditor::GetStrValue() const
{
    QObject *first = GetComponent(0);
    return first ? GetStrProp(first, GetPropInfo(0)) : QString();
}

void TPropertyEditor::SetStrValue(const QString &Value)
{
    SetVarValue(Value);
}

qint64 TPropertyEditor::GetOrdValue() const
{
    QObject *first = GetComponent(0);
    return first ? GetOrdProp(first, GetPropInfo(0)) : 0;
}

void TPropertyEditor::SetOrdValue(qint64 Value)
{
    for (const auto &[object, info] : m_propList) {
        if (object)
            SetOrdProp(object.data(), info, Value);
    }
    Modified();
}

double TPropertyEditor::GetFloatValue() const
{
    QObject *first = GetComponent(0);
    return first ? GetFloatProp(first, GetPropInfo(0)) : 0.0;
}

void TPropertyEditor::SetFloatValue(double Value)
{
    SetVarValue(Value);
}

QVariant TPropertyEditor::GetVarValue() const
{
    QObject *first = GetComponent(0);
    return first ? GetPropValue(first, GetPropInfo(0)) : QVariant();
}

void TPropertyEditor::SetVarValue(const QVariant &Value)
{
    for (const auto &[object, info] : m_propList) {
        if (object)
            SetPropValue(object.data(), info, Value);
    }
    Modified();
}

void TPropertyEditor::Modified()
{
    if (m_designer)
        m_designer->Modified();
}

QWidget *TPropertyEditor::DialogParent()
{
    return dialogParent();
}

void TPropertyEditor::SetDialogParent(QWidget *Parent)
{
    dialogParent() = Parent;
}

// ---- Registry ----------------------------------------------------------

void RegisterPropertyEditor(PTypeInfo PropertyType, const QMetaObject *ComponentClass, const QString &PropertyName,
                            TPropertyEditorFactory Factory)
{
    if (Factory)
        registrations().push_back({PropertyType, ComponentClass, PropertyName, std::move(Factory)});
}

void SetKindPropertyEditor(TTypeKind Kind, TPropertyEditorFactory Factory)
{
    kindEditors().insert(int(Kind), std::move(Factory));
}

void UnregisterPropertyEditors(const QMetaObject *ComponentClass)
{
    auto &list = registrations();
    list.erase(std::remove_if(list.begin(), list.end(),
                              [ComponentClass](const Registration &r) { return r.componentClass == ComponentClass; }),
               list.end());
}

TPropertyEditorRef CreatePropertyEditor(IDesigner *Designer, const QObject *Instance, PPropInfo PropInfo,
                                        int PropCount)
{
    if (!Instance || !PropInfo)
        return {};
    const QMetaObject *cls = InstanceClass(Instance);
    const Registration *best = nullptr;
    std::tuple<int, int, int> bestRank{-1, -1, -1};
    for (const Registration &r : registrations()) {
        if (!r.name.isEmpty() && r.name.compare(PropInfo->Name, Qt::CaseInsensitive) != 0)
            continue;
        if (r.componentClass && !cls->inherits(r.componentClass))
            continue;
        const int fit = typeFit(r.type, PropInfo->PropType);
        if (fit < 0)
            continue;
        const std::tuple<int, int, int> rank{r.name.isEmpty() ? 0 : 1, r.componentClass ? depthOf(r.componentClass) : 0,
                                             fit};
        // ">=": the later of equal registrations wins.
        if (!best || rank >= bestRank) {
            best = &r;
            bestRank = rank;
        }
    }
    if (best)
        return best->factory(Designer, PropCount);
    const auto kind = kindEditors().constFind(int(PropInfo->PropType ? PropInfo->PropType->Kind : tkUnknown));
    if (kind != kindEditors().constEnd())
        return (*kind)(Designer, PropCount);
    return std::make_shared<TPropertyEditor>(Designer, PropCount);
}

void GetComponentProperties(const IDesignerSelections &Components, TTypeKinds Filter, IDesigner *Designer,
                            const TGetPropProc &Proc)
{
    QList<QObject *> objects;
    for (int i = 0; i < Components.Count(); ++i) {
        if (QObject *object = Components.Get(i))
            objects.append(object);
    }
    if (objects.isEmpty() || !Proc)
        return;
    QObject *first = objects.first();
    QList<const QMetaObject *> classes;
    classes.reserve(objects.size());
    for (QObject *object : std::as_const(objects))
        classes.append(InstanceClass(object));
    TClassInformation info;
    info.SetPTI(TypeInfoOfClass(InstanceClass(first)));
    // Whether a property is shared is a question for each class once.
    QList<QObject *> oneOfEachClass;
    QVarLengthArray<const QMetaObject *, 8> seen;
    for (int i = 0; i < objects.size(); ++i) {
        if (std::find(seen.begin(), seen.end(), classes[i]) == seen.end()) {
            seen.append(classes[i]);
            oneOfEachClass.append(objects[i]);
        }
    }
    for (PPropInfo prop : info.PropAndEventList()) {
        if (!Filter.contains(prop->PropType->Kind) || !PropInfoInComps(prop, oneOfEachClass))
            continue;
        TPropertyEditorRef editor = CreatePropertyEditor(Designer, first, prop, int(objects.size()));
        if (!editor)
            continue;
        // A selection of many objects holds few classes: each class's own
        // descriptor is looked up once.
        QVarLengthArray<std::pair<const QMetaObject *, PPropInfo>, 8> own;
        for (int i = 0; i < objects.size(); ++i) {
            const QMetaObject *cls = classes[i];
            auto known = std::find_if(own.begin(), own.end(), [cls](const auto &entry) { return entry.first == cls; });
            if (known == own.end()) {
                own.append({cls, InstancePropInfo(objects[i], prop)});
                known = own.end() - 1;
            }
            editor->SetPropEntry(i, objects[i], known->second);
        }
        editor->Initialize();
        Proc(editor);
    }
}
