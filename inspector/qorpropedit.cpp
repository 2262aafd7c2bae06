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
    , m_count(size_t(std::max(PropCount, 0)))
{
}

// What GetComponentProperties hands every editor of one selection: the
// selection's objects, shared.
struct TPropertyEditorEntries
{
    static bool Share(TPropertyEditor &Editor, const std::shared_ptr<std::vector<QPointer<QObject>>> &Objects)
    {
        if (Editor.m_objects || Objects->size() != Editor.m_count)
            return false;
        Editor.m_objects = Objects;
        return true;
    }
    // Slots[i] is the index in Infos of object i's descriptor.
    static void SetInfos(TPropertyEditor &Editor, const std::vector<quint16> &Slots, const QVarLengthArray<PPropInfo, 8> &Infos)
    {
        if (Infos.size() == 1) {
            Editor.m_uniformInfo = Infos.front();
            Editor.m_infos.clear();
            return;
        }
        Editor.m_infos.resize(Editor.m_count);
        for (size_t i = 0; i < Editor.m_count && i < Slots.size(); ++i)
            Editor.m_infos[i] = Infos[Slots[i]];
    }
};

TPropertyEditor::~TPropertyEditor() = default;

TPropertyAttributes TPropertyEditor::GetAttributes() const
{
    return paMultiSelect | paRevertable;
}

namespace {

// Reads one property of many objects into one buffer of the property's
// type: comparing a selection of thousands then costs their getters, not a
// variant made and freed per object. Types the buffer cannot serve (a
// variant property, a type without equality, value objects) are left to
// the variant path.
class TRawValues
{
public:
    explicit TRawValues(QMetaType Type)
        : m_type(Type)
    {
        if (Type.isValid() && Type != QMetaType::fromType<QVariant>() && Type.iface()->equals) {
            m_first = Type.create();
            m_own = Type.create();
        }
    }
    ~TRawValues()
    {
        m_type.destroy(m_first);
        m_type.destroy(m_own);
    }
    TRawValues(const TRawValues &) = delete;
    TRawValues &operator=(const TRawValues &) = delete;

    bool usable() const { return m_first && m_own; }
    // Reads into the first buffer, or into the other one and compares.
    // False when the object cannot be read this way.
    bool read(QObject *Object, PPropInfo Info, bool First, bool &Equal)
    {
        if (!Info || Info->Property.metaType() != m_type || Object->metaObject() != Info->OwnerClass)
            return false;
        void *target = First ? m_first : m_own;
        int status = -1;
        QVariant unused;
        void *argv[] = {target, &unused, &status};
        // A class made by moc reads its own properties in its static
        // function; going there at once spares the walk down the class chain
        // that the instance's virtual call takes for every object.
        const QMetaObject *enclosing = Info->Property.enclosingMetaObject();
        if (enclosing && enclosing->d.static_metacall)
            enclosing->d.static_metacall(Object, QMetaObject::ReadProperty, Info->Property.relativePropertyIndex(), argv);
        else
            QMetaObject::metacall(Object, QMetaObject::ReadProperty, Info->Property.propertyIndex(), argv);
        if (argv[0] != target || status != -1)
            return false;
        Equal = First || m_type.equals(m_first, m_own);
        return true;
    }

private:
    QMetaType m_type;
    void *m_first = nullptr;
    void *m_own = nullptr;
};

// Whether the live objects of an editor hold equal values; the first of
// them comes back in First (-1 when none is alive).
bool equalValues(const TPropertyEditor &Editor, int &First)
{
    First = -1;
    PPropInfo firstInfo = Editor.GetPropInfo(0);
    TRawValues raw(firstInfo ? firstInfo->Property.metaType() : QMetaType());
    QVariant value;
    bool rawFirst = false;
    for (int i = 0; i < Editor.PropCount(); ++i) {
        QObject *object = Editor.GetComponent(i);
        if (!object)
            continue;
        PPropInfo info = Editor.GetPropInfo(i);
        if (First < 0)
            First = i;
        bool equal = false;
        if (raw.usable() && (First == i || rawFirst) && raw.read(object, info, First == i, equal)) {
            if (First == i)
                rawFirst = true;
            else if (!equal)
                return false;
            continue;
        }
        // The variant path, from here on for every object.
        if (rawFirst) {
            value = GetPropValue(Editor.GetComponent(First), Editor.GetPropInfo(First));
            rawFirst = false;
        }
        const QVariant own = GetPropValue(object, info);
        if (First == i)
            value = own;
        else if (own.metaType() != value.metaType() || own != value)
            return false;
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
    for (size_t i = 0; m_objects && i < m_count; ++i) {
        if (QObject *object = (*m_objects)[i])
            SetPropertyValueStr(object, infoAt(i), Value);
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
    if (Index < 0 || size_t(Index) >= m_count)
        return;
    if (!m_objects)
        m_objects = std::make_shared<std::vector<QPointer<QObject>>>(m_count);
    if ((*m_objects)[size_t(Index)].data() != Instance) {
        if (m_objects.use_count() > 1)
            m_objects = std::make_shared<std::vector<QPointer<QObject>>>(*m_objects);
        (*m_objects)[size_t(Index)] = Instance;
    }
    if (m_infos.empty()) {
        if (PropInfo == m_uniformInfo)
            return;
        if (m_count == 1) {
            m_uniformInfo = PropInfo;
            return;
        }
        m_infos.assign(m_count, m_uniformInfo);
    }
    m_infos[size_t(Index)] = PropInfo;
}

QObject *TPropertyEditor::GetComponent(int Index) const
{
    return m_objects && Index >= 0 && size_t(Index) < m_count ? (*m_objects)[size_t(Index)].data() : nullptr;
}

PPropInfo TPropertyEditor::GetPropInfo(int Index) const
{
    return Index >= 0 && size_t(Index) < m_count ? infoAt(size_t(Index)) : nullptr;
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
    for (size_t i = 0; m_objects && i < m_count; ++i) {
        if (QObject *object = (*m_objects)[i])
            SetOrdProp(object, infoAt(i), Value);
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
    for (size_t i = 0; m_objects && i < m_count; ++i) {
        if (QObject *object = (*m_objects)[i])
            SetPropValue(object, infoAt(i), Value);
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
    TClassInformation info;
    info.SetPTI(TypeInfoOfClass(InstanceClass(first)));
    auto shared = std::make_shared<std::vector<QPointer<QObject>>>(objects.begin(), objects.end());
    // A selection of many objects holds few classes: each object gets the
    // slot of its class, and each class's own descriptor of a property is
    // looked up once.
    QVarLengthArray<const QMetaObject *, 8> classes;
    QList<QObject *> oneOfEachClass;
    std::vector<quint16> slots(size_t(objects.size()));
    for (int i = 0; i < objects.size(); ++i) {
        const QMetaObject *cls = InstanceClass(objects[i]);
        auto known = std::find(classes.begin(), classes.end(), cls);
        if (known == classes.end()) {
            classes.append(cls);
            oneOfEachClass.append(objects[i]);
            known = classes.end() - 1;
        }
        slots[size_t(i)] = quint16(known - classes.begin());
    }
    for (PPropInfo prop : info.PropAndEventList()) {
        if (!Filter.contains(prop->PropType->Kind) || !PropInfoInComps(prop, oneOfEachClass))
            continue;
        TPropertyEditorRef editor = CreatePropertyEditor(Designer, first, prop, int(objects.size()));
        if (!editor)
            continue;
        QVarLengthArray<PPropInfo, 8> own;
        for (QObject *representative : std::as_const(oneOfEachClass))
            own.append(InstancePropInfo(representative, prop));
        if (TPropertyEditorEntries::Share(*editor, shared)) {
            TPropertyEditorEntries::SetInfos(*editor, slots, own);
        } else {
            for (int i = 0; i < objects.size(); ++i)
                editor->SetPropEntry(i, objects[i], own[slots[size_t(i)]]);
        }
        editor->Initialize();
        Proc(editor);
    }
}
