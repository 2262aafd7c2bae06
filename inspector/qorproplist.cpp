// SPDX-License-Identifier: MIT
#include "inspector/qorproplist.h"

#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qortypinfo.h"
#include "foundation/vhosysutils.h"
#include "inspector/qorinspector.h"
#include "foundation/vhortti_p.h"

#include <QVarLengthArray>
#include <QWidget>

#include <algorithm>

namespace {

QList<QObject *> plain(const QList<QPointer<QObject>> &Objects)
{
    QList<QObject *> list;
    list.reserve(Objects.size());
    for (const QPointer<QObject> &object : Objects)
        list.append(object.data());
    return list;
}

QList<QPointer<QObject>> guarded(const QList<QObject *> &Objects)
{
    QList<QPointer<QObject>> list;
    list.reserve(Objects.size());
    for (QObject *object : Objects)
        list.append(object);
    return list;
}

bool isEvent(PPropInfo Info)
{
    return Info && Info->PropType && Info->PropType->Kind == tkMethod;
}

bool isClassRow(PPropInfo Info)
{
    return Info && Info->PropType && Info->PropType->Kind == tkClass;
}

// A component class: the class chain reaches QObject.
bool isComponentClass(PTypeInfo PTI)
{
    return IsComponentPTI(PTI);
}

PTypeInfo boolType()
{
    return TypeInfoOf<bool>();
}

// The properties of a window: on a control inside a form they do nothing
// (its title, its icon, its opacity...), always read the same (minimized,
// modal) or repeat another property (its frame geometry is its geometry).
bool isWindowProperty(const QString &Name)
{
    static const QStringList names = {
        QStringLiteral("windowTitle"),    QStringLiteral("windowIcon"),     QStringLiteral("windowIconText"),
        QStringLiteral("windowModality"), QStringLiteral("windowOpacity"),  QStringLiteral("windowModified"),
        QStringLiteral("windowFilePath"), QStringLiteral("fullScreen"),     QStringLiteral("minimized"),
        QStringLiteral("maximized"),      QStringLiteral("isActiveWindow"), QStringLiteral("modal"),
        QStringLiteral("frameGeometry"),  QStringLiteral("frameSize"),      QStringLiteral("normalGeometry"),
    };
    return names.contains(Name);
}

// A control: a widget that is not a window and is a component of a form.
// The form itself keeps its window's properties even while it sits inside
// the designing application's window, since it is a window when it runs.
bool isControl(const QObject *Object)
{
    const auto *widget = qobject_cast<const QWidget *>(Object);
    return widget && !widget->isWindow() && Owner(widget);
}

} // namespace

// ---- TObjInspecList ----------------------------------------------------

TObjInspecList::TObjInspecList() = default;
TObjInspecList::~TObjInspecList() = default;

void TObjInspecList::AppendToStrings(TValueListStrings *)
{
}

QString TObjInspecList::IdentToLabel(PTypeInfo PTI, const QString &Ident, TTransRole Role)
{
    QString result = Ident;
    if (m_translate && m_onTranslateIdent)
        m_onTranslateIdent(this, PTI, Ident, Role, result);
    return result;
}

QString TObjInspecList::LabelToIdent(PTypeInfo PTI, const QString &Label, TTransRole Role)
{
    QString result = Label;
    if (m_translate && m_onTranslateToIdent)
        m_onTranslateToIdent(this, PTI, Label, Role, result);
    return result;
}

void TObjInspecList::UpdateOutputList()
{
}

void TObjInspecList::AppendToValueListStrings()
{
}

void TObjInspecList::CopyDetailsFrom(TObjInspecList *)
{
}

void TObjInspecList::CopyDetailFromUpperLevel(TObjInspecList *)
{
}

void TObjInspecList::SetValueListStrings(TValueListStrings *Strings)
{
    if (m_valueListStrings == Strings)
        return;
    m_valueListStrings = Strings;
    if (m_autoUpdateOutput)
        UpdateOutputList();
}

void TObjInspecList::SetAutoUpdateOutput(bool Value)
{
    m_autoUpdateOutput = Value;
}

void TObjInspecList::SetTranslate(bool Value)
{
    if (m_translate == Value)
        return;
    m_translate = Value;
    UpdateOutputList();
}

// ---- TObjInspecPropList ------------------------------------------------

TObjInspecPropList::TObjInspecPropList(QObject *BasedObject, bool ListPropEditors)
    : TObjInspecPropList(BasedObject, ListPropEditors, nullptr, Deferred{})
{
    UpdateList();
}

TObjInspecPropList::TObjInspecPropList(QObject *BasedObject, bool ListPropEditors, QObject *OwnerObject, Deferred)
    : m_ownerObject(OwnerObject)
    , m_listPropEditors(ListPropEditors)
{
    if (BasedObject)
        m_basedObjects.append(BasedObject);
    if (OwnerObject)
        m_ownerObjects.append(OwnerObject);
}

TObjInspecPropList::~TObjInspecPropList()
{
    TObjInspecPropList::Clear();
}

void TObjInspecPropList::Clear()
{
    m_items.clear();
}

TObjInspecPropertyItem *TObjInspecPropList::GetPropertyItems(int Index) const
{
    return Index >= 0 && Index < Count() ? m_items[size_t(Index)].get() : nullptr;
}

void TObjInspecPropList::SetPropertyItems(int Index, TObjInspecPropertyItem *Item)
{
    if (Index >= 0 && Index < Count())
        m_items[size_t(Index)].reset(Item);
}

int TObjInspecPropList::IndexOfPropInfo(PPropInfo PropInfo) const
{
    for (int i = 0; i < Count(); ++i) {
        if (m_items[size_t(i)]->GetPropInfoRef() == PropInfo)
            return i;
    }
    return -1;
}

int TObjInspecPropList::IndexOfPropName(const QString &Name) const
{
    for (int i = 0; i < Count(); ++i) {
        if (m_items[size_t(i)]->GetPropName().compare(Name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

TObjInspecPropertyItem *TObjInspecPropList::GetPropItemsByInfo(PPropInfo PropInfo) const
{
    return GetPropertyItems(IndexOfPropInfo(PropInfo));
}

TObjInspecPropertyItem *TObjInspecPropList::GetPropItemsByName(const QString &Name) const
{
    const int index = IndexOfPropName(Name);
    if (index < 0)
        throw EQorError(QStringLiteral("List index out of bounds (%1): no property %2").arg(index).arg(Name));
    return m_items[size_t(index)].get();
}

void TObjInspecPropList::SetPropItemsByInfo(PPropInfo PropInfo, TObjInspecPropertyItem *Item)
{
    SetPropertyItems(IndexOfPropInfo(PropInfo), Item);
}

void TObjInspecPropList::SetPropItemsByName(const QString &Name, TObjInspecPropertyItem *Item)
{
    SetPropertyItems(IndexOfPropName(Name), Item);
}

QObject *TObjInspecPropList::GetBasedObject() const
{
    return m_basedObjects.isEmpty() ? nullptr : m_basedObjects.first().data();
}

QList<QObject *> TObjInspecPropList::GetBasedObjects() const
{
    return plain(m_basedObjects);
}

void TObjInspecPropList::SetBasedObject(QObject *Object)
{
    m_basedObjects.clear();
    if (Object)
        m_basedObjects.append(Object);
    UpdateList();
}

void TObjInspecPropList::SetBasedObjects(const QList<QObject *> &Objects)
{
    m_basedObjects = guarded(Objects);
    UpdateList();
}

void TObjInspecPropList::AddBasedObject(QObject *Object)
{
    m_basedObjects.append(Object);
}

QObject *TObjInspecPropList::GetOwnerObject() const
{
    if (!m_ownerObjects.isEmpty())
        return m_ownerObjects.first().data();
    return m_ownerObject.data();
}

void TObjInspecPropList::SetOwnerObject(QObject *Component)
{
    m_ownerObject = Component;
    m_ownerObjects.clear();
    m_ownerObjects.append(Component);
}

QList<QObject *> TObjInspecPropList::GetOwnerObjects() const
{
    return plain(m_ownerObjects);
}

void TObjInspecPropList::SetOwnerObjects(const QList<QObject *> &Components)
{
    m_ownerObjects = guarded(Components);
}

void TObjInspecPropList::AddObjectToOwnerObjects(QObject *Component, bool ToFront)
{
    m_ownerObjects.clear();
    if (ToFront)
        m_ownerObjects.prepend(Component);
    else
        m_ownerObjects.append(Component);
}

void TObjInspecPropList::ClearOwnerObjects()
{
    m_ownerObjects.clear();
}

void TObjInspecPropList::UpdateList()
{
    QObject *first = GetBasedObject();
    if (!first)
        return;
    m_classInformation.SetPTI(TypeInfoOfClass(InstanceClass(first)));
    ListAllProps();
}

void TObjInspecPropList::ListAllProps()
{
    QObject *first = GetBasedObject();
    if (!first)
        return;
    Clear();
    QList<QObject *> objects;
    for (QObject *object : plain(m_basedObjects)) {
        if (object)
            objects.append(object);
    }
    const QList<PPropInfo> &props = m_classInformation.PropAndEventList();
    auto *ex = dynamic_cast<TObjInspecPropListEx *>(this);
    const bool controls = std::any_of(objects.begin(), objects.end(), isControl);
    // Whether a property is shared is a question for each class once.
    QList<QObject *> oneOfEachClass;
    QVarLengthArray<const QMetaObject *, 8> classes;
    for (QObject *object : std::as_const(objects)) {
        const QMetaObject *cls = InstanceClass(object);
        if (std::find(classes.begin(), classes.end(), cls) == classes.end()) {
            classes.append(cls);
            oneOfEachClass.append(object);
        }
    }
    for (PPropInfo prop : props) {
        if (oneOfEachClass.size() > 1 && !PropInfoInComps(prop, oneOfEachClass))
            continue;
        if (controls && isWindowProperty(prop->Name))
            continue;
        auto item = std::make_unique<TObjInspecPropertyItem>(first, prop);
        if (ex)
            item->SetObjInspecPropList(ex);
        item->SetBasedObjects(m_basedObjects);
        item->SetOwnerObject(GetOwnerObject());
        item->SetOwnerObjects(plain(m_ownerObjects));
        item->RefreshEx(false);
        m_items.push_back(std::move(item));
    }
    if (m_listPropEditors)
        ListAllPropEditors();
}

void TObjInspecPropList::ListAllPropEditors()
{
    TQorDesignerSelections selections;
    for (QObject *object : plain(m_basedObjects)) {
        if (object)
            selections.Add(object);
    }
    GetComponentProperties(selections, TTypeKinds::all(), m_designer,
                           [this](const TPropertyEditorRef &Editor) { GetPropEditor(Editor); });
}

void TObjInspecPropList::GetPropEditor(const TPropertyEditorRef &Editor)
{
    if (!Editor)
        return;
    if (TObjInspecPropertyItem *row = GetPropItemsByInfo(Editor->GetPropInfo()))
        row->SetPropEditor(Editor);
}

void TObjInspecPropList::UpdateOwnerObject()
{
    for (const auto &item : m_items)
        item->SetOwnerObject(GetOwnerObject());
    UpdateList();
}

// ---- TObjInspecPropListEx ----------------------------------------------

TObjInspecPropListEx::TObjInspecPropListEx(QObject *BasedObject, bool ListPropEditors)
    : TObjInspecPropList(BasedObject, ListPropEditors,
                         BasedObject && !qobject_cast<TQorValueObject *>(BasedObject) ? Owner(BasedObject) : nullptr,
                         Deferred{})
{
    UpdateList();
    m_propertyFilterStyles = pfProperty;
    SetTranslate(true);
}

TObjInspecPropListEx::~TObjInspecPropListEx() = default;

void TObjInspecPropListEx::SetBasedObject(QObject *Object)
{
    if (!GetOwnerObject() && Object && !qobject_cast<TQorValueObject *>(Object))
        SetOwnerObject(Owner(Object));
    TObjInspecPropList::SetBasedObject(Object);
}

bool TObjInspecPropListEx::CheckIfOutputThisProp(TObjInspecPropertyItem *Item)
{
    if (!Item)
        return false;
    const QString name = Item->GetPropName();
    const bool event = isEvent(Item->GetPropInfoRef());
    const QStringList &output = event ? m_outputEventNames : m_outputPropNames;
    const QStringList &concealed = event ? m_concealedEventNames : m_concealedPropNames;
    if (output.isEmpty()) {
        if (!concealed.isEmpty() && concealed.contains(name, Qt::CaseInsensitive))
            return false;
    } else if (!output.contains(name, Qt::CaseInsensitive)) {
        return false;
    }
    if (Item->PropEditor() && !(Item->PropEditor()->GetAttributes() & paMultiSelect)) {
        int based = 0;
        for (const QPointer<QObject> &object : m_basedObjects)
            based += !object.isNull();
        if (based > 1)
            return false;
    }
    return m_propertyFilterStyles.testFlag(event ? pfEvent : pfProperty);
}

QString TObjInspecPropListEx::GetIndentStrs(int Index) const
{
    TObjInspecPropertyItem *item = GetPropertyItems(Index);
    if (!item)
        return {};
    return GetObjInspecIndentStr(m_level, item->GetExpandable(), item->GetExpanded());
}

QString TObjInspecPropListEx::GetPropNameDisplayLabels(int Index) const
{
    TObjInspecPropertyItem *item = GetPropertyItems(Index);
    return item ? GetIndentStrs(Index) + item->GetPropName() : QString();
}

TObjInspecPropertyItem *TObjInspecPropListEx::GetPropertyItemsByLabel(const QString &Label) const
{
    QString name = Label.trimmed();
    if (!name.isEmpty() && !name.at(0).isLetter() && name.at(0) != QLatin1Char('_'))
        name.remove(0, 1);
    return GetPropItemsByName(name);
}

void TObjInspecPropListEx::SetPropertyItemsByLabel(const QString &Label, TObjInspecPropertyItem *Item)
{
    QString name = Label.trimmed();
    if (!name.isEmpty() && !name.at(0).isLetter() && name.at(0) != QLatin1Char('_'))
        name.remove(0, 1);
    SetPropItemsByName(name, Item);
}

void TObjInspecPropListEx::GetPropEditorEnumValues(const QString &Value)
{
    m_enumValues.append(Value);
}

QString TObjInspecPropListEx::IdentToLabel(PTypeInfo PTI, const QString &Ident, TTransRole Role)
{
    if (!m_translate)
        return Ident;
    QString result = TObjInspecList::IdentToLabel(PTI, Ident, Role);
    if (result == Ident && PTI && isComponentClass(PTI) && Role == trPropValue)
        result = NsNameToNsCnName(Ident, GetOwnerObject());
    return result;
}

QString TObjInspecPropListEx::LabelToIdent(PTypeInfo PTI, const QString &Label, TTransRole Role)
{
    if (!m_translate)
        return Label;
    QString result = TObjInspecList::LabelToIdent(PTI, Label, Role);
    if (result == Label && PTI && isComponentClass(PTI) && Role == trPropValue)
        result = NsCnNameToNsName(Label, GetOwnerObject());
    return result;
}

void TObjInspecPropListEx::setItemProps(TValueListStrings *Strings, int Line, TObjInspecPropertyItem *Item)
{
    TItemProp props;
    const PTypeInfo type = Item->GetPropTypeInfoRef();
    const bool componentType = isComponentClass(type);
    const TPropertyEditorRef &editor = Item->PropEditor();
    if ((Item->GetHasValueList() && !editor) || componentType) {
        props.EditStyle = esPickList;
        for (const QString &value : Item->ValueList())
            props.PickList.append(IdentToLabel(type, value, trPropValue));
        props.ReadOnly = false;
    }
    if (editor) {
        const TPropertyAttributes attributes = editor->GetAttributes();
        if (attributes & paDialog)
            props.EditStyle = esEllipsis;
        if (props.EditStyle == esSimple && !componentType && (attributes & (paValueList | paSortList))) {
            m_enumValues.clear();
            editor->GetValues([this](const QString &Value) { GetPropEditorEnumValues(Value); });
            if (attributes & paSortList)
                m_enumValues.sort(Qt::CaseInsensitive);
            for (const QString &value : m_enumValues)
                props.PickList.append(IdentToLabel(type, value, trPropValue));
            props.EditStyle = esPickList;
        }
        if ((attributes & paReadOnly) && !componentType)
            props.ReadOnly = true;
    }
    // A value with fields is typed through its editor when the editor
    // reads its text back; without an editor only its fields are edited.
    if (isClassRow(Item->GetPropInfoRef()) && !componentType && !editor)
        props.ReadOnly = true;
    if (isEvent(Item->GetPropInfoRef())) {
        props.EditStyle = esSimple;
        props.ReadOnly = true;
    }
    if (!Item->GetPropWritable()) {
        props.EditStyle = esSimple;
        props.PickList.clear();
        props.ReadOnly = true;
        props.Locked = true;
    }
    Strings->SetItemProps(Line, props);
}

void TObjInspecPropListEx::AppendToStrings(TValueListStrings *Strings)
{
    if (!Strings)
        return;
    for (int i = 0; i < Count(); ++i) {
        TObjInspecPropertyItem *item = GetPropertyItems(i);
        if (!CheckIfOutputThisProp(item))
            continue;
        const PTypeInfo type = item->GetPropTypeInfoRef();
        const QString name = GetIndentStrs(i) + IdentToLabel(type, item->GetPropName(), trPropName);
        // Strings that make their values when read are spared the values
        // of the lines nobody looks at.
        const int line = Strings->ValueMaker() ? Strings->AddPending(name, item)
                                               : Strings->AddObject(name + QLatin1Char('=') + ValueTextOf(item), item);
        if (Strings == m_valueListStrings)
            setItemProps(Strings, line, item);
        if (item->GetExpanded() && item->SubList()) {
            item->SubList()->CopyDetailFromUpperLevel(this);
            item->SubList()->AppendToStrings(Strings);
        }
    }
}

QString TObjInspecPropListEx::ValueTextOf(TObjInspecPropertyItem *Item)
{
    if (!Item)
        return {};
    QString value;
    if (Item->PropEditor() && !(isClassRow(Item->GetPropInfoRef()) && Item->GetHasValueList()))
        value = Item->PropEditor()->GetValue();
    else
        value = Item->GetPropValueStr();
    return IdentToLabel(Item->GetPropTypeInfoRef(), value, trPropValue);
}

QString ObjInspecValueText(TObject *Object)
{
    if (auto *item = dynamic_cast<TObjInspecPropertyItem *>(Object))
        return item->PropList() ? item->PropList()->ValueTextOf(item) : item->GetPropValueStr();
    if (auto *element = dynamic_cast<TSetItemConst *>(Object)) {
        const QString set = element->BasedProperty() ? element->BasedProperty()->GetPropValueStr() : QString();
        return BoolToStr(set.contains(element->GetValueString()), true);
    }
    return {};
}

void TObjInspecPropListEx::AppendToValueListStrings()
{
    AppendToStrings(m_valueListStrings);
}

void TObjInspecPropListEx::StartFillList()
{
    if (m_valueListStrings)
        m_valueListStrings->BeginUpdate();
    m_filling = true;
}

void TObjInspecPropListEx::EndFillList()
{
    m_filling = false;
    if (m_valueListStrings)
        m_valueListStrings->EndUpdate();
}

void TObjInspecPropListEx::CreateOutputInspecStringList()
{
    StartFillList();
    if (m_inspector) {
        m_inspector->RefreshOutput();
    } else if (m_valueListStrings) {
        m_valueListStrings->Clear();
        AppendToValueListStrings();
    }
    EndFillList();
}

void TObjInspecPropListEx::AppendOutputInspecStringList()
{
    StartFillList();
    AppendToValueListStrings();
    EndFillList();
}

void TObjInspecPropListEx::UpdateOutputList()
{
    if (m_upperList) {
        m_upperList->UpdateOutputList();
        return;
    }
    CreateOutputInspecStringList();
}

void TObjInspecPropListEx::CopyDetailsFrom(TObjInspecList *List)
{
    auto *from = dynamic_cast<TObjInspecPropListEx *>(List);
    if (!from)
        return;
    m_autoUpdateOutput = from->m_autoUpdateOutput;
    m_propertyFilterStyles = from->m_propertyFilterStyles;
    m_valueListStrings = from->m_valueListStrings;
    m_level = from->m_level;
    m_upperList = from->m_upperList;
    m_translate = from->m_translate;
    m_onTranslateIdent = from->m_onTranslateIdent;
    m_onTranslateToIdent = from->m_onTranslateToIdent;
    m_concealedPropNames = from->m_concealedPropNames;
    m_outputEventNames = from->m_outputEventNames;
    m_outputPropNames = from->m_outputPropNames;
    m_concealedEventNames = from->m_concealedEventNames;
    m_inspector = from->m_inspector;
}

void TObjInspecPropListEx::CopyDetailFromUpperLevel(TObjInspecList *List)
{
    if (!List)
        return;
    CopyDetailsFrom(List);
    m_level = List->Level() + 1;
    m_upperList = List->UpperList() ? List->UpperList() : List;
}

void TObjInspecPropListEx::SetPropertyFilterStyles(TPropertyFilterStyles Value)
{
    if (m_propertyFilterStyles == Value)
        return;
    m_propertyFilterStyles = Value;
    if (m_autoUpdateOutput)
        UpdateOutputList();
}

void TObjInspecPropListEx::SetConcealedPropNames(const QStringList &Names)
{
    m_concealedPropNames = Names;
    UpdateOutputList();
}

void TObjInspecPropListEx::SetOutputEventNames(const QStringList &Names)
{
    m_outputEventNames = Names;
    UpdateOutputList();
}

void TObjInspecPropListEx::SetOutputPropNames(const QStringList &Names)
{
    m_outputPropNames = Names;
    UpdateOutputList();
}

void TObjInspecPropListEx::SetConcealedEventNames(const QStringList &Names)
{
    m_concealedEventNames = Names;
    UpdateOutputList();
}

// ---- TObjInspecPropertyItem --------------------------------------------

TObjInspecPropertyItem::TObjInspecPropertyItem(QObject *Object, const QString &PropName)
    : TPropertyDetailEx(Object, PropName)
{
}

TObjInspecPropertyItem::TObjInspecPropertyItem(QObject *Object, PPropInfo PropInfo)
    : TPropertyDetailEx(Object, PropInfo)
{
}

TObjInspecPropertyItem::~TObjInspecPropertyItem() = default;

QList<QObject *> TObjInspecPropertyItem::GetOwnerObjects() const
{
    return plain(m_ownerObjects);
}

void TObjInspecPropertyItem::SetOwnerObjects(const QList<QObject *> &Components)
{
    m_ownerObjects = guarded(Components);
}

QString TObjInspecPropertyItem::GetPropValueStr() const
{
    PPropInfo info = GetPropInfoRef();
    if (isEvent(info))
        return {};
    if (isClassRow(info) && isComponentClass(info->PropType)) {
        QObject *held = GetPropValueObject();
        if (held) {
            QObject *based = GetBasedObject();
            return CompToNSName(held, Owner(held), based && !qobject_cast<TQorValueObject *>(based) ? Owner(based) : nullptr);
        }
        return {};
    }
    return TPropertyDetailEx::GetPropValueStr();
}

void TObjInspecPropertyItem::SetPropValueStr(const QString &Text)
{
    TPropertyDetailEx::SetPropValueStr(Text);
    PPropInfo info = GetPropInfoRef();
    if (Text != GetPropValueStr() && isClassRow(info) && isComponentClass(info->PropType)) {
        SetPropValueObject(NSNameToComp(Text, m_ownerObject));
        Refresh();
    }
}

void TObjInspecPropertyItem::Refresh()
{
    RefreshEx(true);
}

void TObjInspecPropertyItem::RefreshEx(bool UpdateOutput)
{
    TPropertyDetailEx::Refresh();
    PPropInfo info = GetPropInfoRef();
    if (GetHasValueList()) {
        m_valueList.clear();
        const PTypeInfo type = info->PropType;
        if (TEnumInformation::IsEnumExType(type) && !(isClassRow(info) && m_ownerObject)) {
            m_valueList = GetEnumInformation().EnumNames();
        } else if (isClassRow(info) && m_ownerObject) {
            const QMetaObject *cls = type->TypeData.ClassType;
            auto addFrom = [&](QObject *Entry) {
                if (!Entry)
                    return;
                for (QObject *component : ComponentList(Entry)) {
                    if (!component->metaObject()->inherits(cls) || IsQorDesignObject(component)
                        || component->objectName().trimmed().isEmpty())
                        continue;
                    m_valueList.append(CompToNSName(component, Entry, m_ownerObject));
                }
            };
            addFrom(m_ownerObject);
            const QList<QObject *> owners = plain(m_ownerObjects);
            for (int i = 1; i < owners.size(); ++i)
                addFrom(owners[i]);
        }
    }
    if (GetExpanded()) {
        if (info->PropType->Kind == tkClass) {
            auto sub = std::make_unique<TObjInspecPropListEx>(GetPropValueObject(), false);
            sub->CopyDetailFromUpperLevel(m_propList);
            m_subList = std::move(sub);
        } else if (info->PropType->Kind == tkSet) {
            auto sub = std::make_unique<TObjInspecSetExpandList>(this);
            sub->CopyDetailsFromUpperLevel(m_propList);
            m_subList = std::move(sub);
        }
    } else {
        m_subList.reset();
    }
    if (UpdateOutput && m_propList && m_propList->AutoUpdateOutput())
        m_propList->UpdateOutputList();
}

bool TObjInspecPropertyItem::GetExpandable() const
{
    PPropInfo info = GetPropInfoRef();
    if (!info)
        return false;
    if (info->PropType->Kind == tkSet)
        return true;
    if (info->PropType->Kind == tkClass)
        return GetPropValueObject() != nullptr;
    return false;
}

bool TObjInspecPropertyItem::GetExpanded() const
{
    return m_expanded && GetExpandable();
}

void TObjInspecPropertyItem::SetExpanded(bool Value)
{
    m_expanded = Value;
    Refresh();
}

bool TObjInspecPropertyItem::GetHasValueList() const
{
    PPropInfo info = GetPropInfoRef();
    if (!info)
        return false;
    if (TEnumInformation::IsEnumExType(info->PropType))
        return true;
    return isClassRow(info) && isComponentClass(info->PropType) && m_ownerObject;
}

// ---- TObjInspecSetExpandList -------------------------------------------

TObjInspecSetExpandList::TObjInspecSetExpandList(TObjInspecPropertyItem *SetRow)
{
    SetBasedProperty(SetRow);
}

TObjInspecSetExpandList::~TObjInspecSetExpandList()
{
    TObjInspecSetExpandList::Clear();
}

void TObjInspecSetExpandList::Clear()
{
    m_items.clear();
}

void TObjInspecSetExpandList::SetBasedProperty(TObjInspecPropertyItem *Row)
{
    m_basedProperty = Row;
    UpdateList();
}

void TObjInspecSetExpandList::UpdateList()
{
    if (m_basedProperty)
        ListAllItemConsts();
}

void TObjInspecSetExpandList::ListAllItemConsts()
{
    Clear();
    const int count = int(m_basedProperty->GetEnumInformation().EnumNames().size());
    for (int i = 0; i < count; ++i)
        m_items.push_back(std::make_unique<TSetItemConst>(m_basedProperty, i));
}

TSetItemConst *TObjInspecSetExpandList::GetSetItemConsts(int Index) const
{
    return Index >= 0 && Index < Count() ? m_items[size_t(Index)].get() : nullptr;
}

QString TObjInspecSetExpandList::GetIndentStr() const
{
    return GetObjInspecIndentStr(m_level, false, false);
}

void TObjInspecSetExpandList::AppendToStrings(TValueListStrings *Strings)
{
    if (!Strings || !m_basedProperty)
        return;
    const QString setText = m_basedProperty->GetPropValueStr();
    const PTypeInfo elementType = m_basedProperty->GetEnumInformation().PTI();
    TItemProp props;
    props.EditStyle = esPickList;
    props.PickList = {IdentToLabel(boolType(), BoolToStr(true, true), trPropValue),
                      IdentToLabel(boolType(), BoolToStr(false, true), trPropValue)};
    for (const auto &element : m_items) {
        const QString ident = element->GetValueString();
        const bool included = setText.contains(ident);
        const QString value = IdentToLabel(boolType(), BoolToStr(included, true), trPropValue);
        const QString name = GetIndentStr() + IdentToLabel(elementType, ident, trPropName);
        const int line = Strings->AddObject(QStringLiteral("%1=%2").arg(name, value), element.get());
        Strings->SetItemProps(line, props);
    }
}

void TObjInspecSetExpandList::CopyDetailsFrom(TObjInspecList *List)
{
    if (!List)
        return;
    m_autoUpdateOutput = List->AutoUpdateOutput();
    m_valueListStrings = List->ValueListStrings();
    m_level = List->Level();
    m_upperList = List->UpperList();
    m_onTranslateIdent = List->OnTranslateIdent();
    m_onTranslateToIdent = List->OnTranslateToIdent();
}

void TObjInspecSetExpandList::CopyDetailsFromUpperLevel(TObjInspecList *List)
{
    CopyDetailsFrom(List);
    m_level += 1;
}
