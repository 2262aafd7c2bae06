// SPDX-License-Identifier: MIT
// The rows of the object inspector. A property list holds one row per
// published property (and event) the selected objects share, attaches each
// row's property editor, decides which rows are shown (filter styles and
// the four name lists), expands set rows into one row per element and
// class rows into a nested list of the held object's properties, turns
// identifiers into display labels through the translate events, and writes
// the shown rows as "name=value" lines, each carrying its row, into the
// strings the inspector's grid shows.
#pragma once

#include "qordesign_export.h"

#include "inspector/qorpropdetail.h"
#include "inspector/qorpropedit.h"
#include "inspector/qorvaluelist.h"
#include "translation/qortransutils.h"

#include <QFlags>
#include <QList>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class TObjInspecList;
class TObjInspecPropListEx;
class TObjInspecPropertyItem;
class TVhoObjInspector;

enum TPropertyFilterStyle { pfProperty = 0x1, pfEvent = 0x2 };
Q_DECLARE_FLAGS(TPropertyFilterStyles, TPropertyFilterStyle)
Q_DECLARE_OPERATORS_FOR_FLAGS(TPropertyFilterStyles)

// Maps one text (Src) to another (Dest, which arrives holding Src).
using TRttiTranslateEvent =
    std::function<void(TObjInspecList *Sender, PTypeInfo PTI, const QString &Src, TTransRole TransRole, QString &Dest)>;

// The common part of the property lists and the set-element lists.
class QORDESIGN_EXPORT TObjInspecList
{
public:
    TObjInspecList();
    virtual ~TObjInspecList();
    TObjInspecList(const TObjInspecList &) = delete;
    TObjInspecList &operator=(const TObjInspecList &) = delete;

    virtual int Count() const = 0;
    virtual void Clear() = 0;

    virtual void AppendToStrings(TValueListStrings *Strings);
    virtual QString IdentToLabel(PTypeInfo PTI, const QString &Ident, TTransRole Role);
    virtual QString LabelToIdent(PTypeInfo PTI, const QString &Label, TTransRole Role);
    virtual void UpdateOutputList();
    virtual void AppendToValueListStrings();
    virtual void CopyDetailsFrom(TObjInspecList *List);
    virtual void CopyDetailFromUpperLevel(TObjInspecList *List);

    const TRttiTranslateEvent &OnTranslateToIdent() const { return m_onTranslateToIdent; }
    void SetOnTranslateToIdent(const TRttiTranslateEvent &Event) { m_onTranslateToIdent = Event; }
    const TRttiTranslateEvent &OnTranslateIdent() const { return m_onTranslateIdent; }
    void SetOnTranslateIdent(const TRttiTranslateEvent &Event) { m_onTranslateIdent = Event; }
    TValueListStrings *ValueListStrings() const { return m_valueListStrings; }
    void SetValueListStrings(TValueListStrings *Strings);
    int Level() const { return m_level; }
    void SetLevel(int Value) { m_level = Value; }
    bool AutoUpdateOutput() const { return m_autoUpdateOutput; }
    void SetAutoUpdateOutput(bool Value);
    TObjInspecList *UpperList() const { return m_upperList; }
    void SetUpperList(TObjInspecList *List) { m_upperList = List; }
    bool Translate() const { return m_translate; }
    void SetTranslate(bool Value);

protected:
    TRttiTranslateEvent m_onTranslateToIdent;
    TRttiTranslateEvent m_onTranslateIdent;
    QPointer<TValueListStrings> m_valueListStrings;
    int m_level = 0;
    bool m_autoUpdateOutput = false;
    TObjInspecList *m_upperList = nullptr;
    bool m_translate = false;
};

// The rows of the published properties of one or more objects.
class QORDESIGN_EXPORT TObjInspecPropList : public TObjInspecList
{
public:
    TObjInspecPropList(QObject *BasedObject, bool ListPropEditors);
    ~TObjInspecPropList() override;

    int Count() const override { return int(m_items.size()); }
    void Clear() override;

    TObjInspecPropertyItem *GetPropertyItems(int Index) const;
    void SetPropertyItems(int Index, TObjInspecPropertyItem *Item);
    int IndexOfPropInfo(PPropInfo PropInfo) const;
    // Compared without regard to case.
    int IndexOfPropName(const QString &Name) const;
    TObjInspecPropertyItem *GetPropItemsByInfo(PPropInfo PropInfo) const;
    // Throws EQorError for a name no row has.
    TObjInspecPropertyItem *GetPropItemsByName(const QString &Name) const;
    void SetPropItemsByInfo(PPropInfo PropInfo, TObjInspecPropertyItem *Item);
    void SetPropItemsByName(const QString &Name, TObjInspecPropertyItem *Item);

    QObject *GetBasedObject() const;
    QList<QObject *> GetBasedObjects() const;
    virtual void SetBasedObject(QObject *Object);
    void SetBasedObjects(const QList<QObject *> &Objects);
    void AddBasedObject(QObject *Object);
    // The component that owns the edited ones (names are resolved in it).
    QObject *GetOwnerObject() const;
    void SetOwnerObject(QObject *Component);
    QList<QObject *> GetOwnerObjects() const;
    void SetOwnerObjects(const QList<QObject *> &Components);
    void AddObjectToOwnerObjects(QObject *Component, bool ToFront);
    void ClearOwnerObjects();
    bool ListPropEditors() const { return m_listPropEditors; }
    // The designer the property editors are made for; may be null.
    IDesigner *Designer() const { return m_designer; }
    void SetDesigner(IDesigner *Designer) { m_designer = Designer; }
    TClassInformation &ClassInformation() { return m_classInformation; }

    virtual void ListAllProps();
    virtual void ListAllPropEditors();
    virtual void UpdateList();
    virtual void UpdateOwnerObject();
    // The row of the editor's property takes the editor.
    void GetPropEditor(const TPropertyEditorRef &Editor);
    void GetPropEditors(const TPropertyEditorRef &Editor) { GetPropEditor(Editor); }

protected:
    // For subclasses that build the rows themselves once constructed.
    struct Deferred
    {
    };
    TObjInspecPropList(QObject *BasedObject, bool ListPropEditors, QObject *OwnerObject, Deferred);

    std::vector<std::unique_ptr<TObjInspecPropertyItem>> m_items;
    TClassInformation m_classInformation;
    QPointer<QObject> m_ownerObject;
    QList<QPointer<QObject>> m_basedObjects;
    bool m_listPropEditors;
    QList<QPointer<QObject>> m_ownerObjects;
    IDesigner *m_designer = nullptr;
};

// The property list the inspector shows: filters, name lists, labels and
// the output lines.
class QORDESIGN_EXPORT TObjInspecPropListEx : public TObjInspecPropList
{
public:
    TObjInspecPropListEx(QObject *BasedObject, bool ListPropEditors);
    ~TObjInspecPropListEx() override;

    void AppendToStrings(TValueListStrings *Strings) override;
    QString IdentToLabel(PTypeInfo PTI, const QString &Ident, TTransRole Role) override;
    QString LabelToIdent(PTypeInfo PTI, const QString &Label, TTransRole Role) override;
    void UpdateOutputList() override;
    void AppendToValueListStrings() override;
    void CopyDetailsFrom(TObjInspecList *List) override;
    void CopyDetailFromUpperLevel(TObjInspecList *List) override;
    void SetBasedObject(QObject *Object) override;
    virtual bool CheckIfOutputThisProp(TObjInspecPropertyItem *Item);

    bool Filling() const { return m_filling; }
    void StartFillList();
    void EndFillList();
    void CreateOutputInspecStringList();
    void AppendOutputInspecStringList();
    QString GetIndentStrs(int Index) const;
    QString GetPropNameDisplayLabels(int Index) const;
    TObjInspecPropertyItem *GetPropertyItemsByLabel(const QString &Label) const;
    void SetPropertyItemsByLabel(const QString &Label, TObjInspecPropertyItem *Item);
    // What a property editor's GetValues hands over.
    void GetPropEditorEnumValues(const QString &Value);
    // The value text of one of this list's rows, as its line shows it:
    // through the row's editor, labelled.
    QString ValueTextOf(TObjInspecPropertyItem *Item);

    TPropertyFilterStyles PropertyFilterStyles() const { return m_propertyFilterStyles; }
    void SetPropertyFilterStyles(TPropertyFilterStyles Value);
    TVhoObjInspector *Inspector() const { return m_inspector; }
    void SetInspector(TVhoObjInspector *Inspector) { m_inspector = Inspector; }
    const QStringList &ConcealedPropNames() const { return m_concealedPropNames; }
    void SetConcealedPropNames(const QStringList &Names);
    const QStringList &OutputEventNames() const { return m_outputEventNames; }
    void SetOutputEventNames(const QStringList &Names);
    const QStringList &OutputPropNames() const { return m_outputPropNames; }
    void SetOutputPropNames(const QStringList &Names);
    const QStringList &ConcealedEventNames() const { return m_concealedEventNames; }
    void SetConcealedEventNames(const QStringList &Names);
    const QStringList &EnumValues() const { return m_enumValues; }

private:
    void setItemProps(TValueListStrings *Strings, int Line, TObjInspecPropertyItem *Item);

    bool m_filling = false;
    TPropertyFilterStyles m_propertyFilterStyles = pfProperty;
    QStringList m_enumValues;
    TVhoObjInspector *m_inspector = nullptr;
    QStringList m_concealedPropNames;
    QStringList m_outputEventNames;
    QStringList m_outputPropNames;
    QStringList m_concealedEventNames;
};

// One row: a property of the edited objects, with its nested list when
// expanded, the identifiers it offers and its property editor.
class QORDESIGN_EXPORT TObjInspecPropertyItem : public TPropertyDetailEx
{
public:
    TObjInspecPropertyItem(QObject *Object, const QString &PropName);
    TObjInspecPropertyItem(QObject *Object, PPropInfo PropInfo);
    ~TObjInspecPropertyItem() override;

    QString GetPropValueStr() const override;
    void SetPropValueStr(const QString &Text) override;
    void Refresh() override;
    virtual void RefreshEx(bool UpdateOutput);

    bool GetExpandable() const;
    bool GetExpanded() const;
    void SetExpanded(bool Value);
    bool GetHasValueList() const;
    QObject *GetOwnerObject() const { return m_ownerObject; }
    void SetOwnerObject(QObject *Component) { m_ownerObject = Component; }
    QList<QObject *> GetOwnerObjects() const;
    void SetOwnerObjects(const QList<QObject *> &Components);
    TObjInspecPropListEx *PropList() const { return m_propList; }
    void SetObjInspecPropList(TObjInspecPropListEx *List) { m_propList = List; }
    const QStringList &ValueList() const { return m_valueList; }
    void SetValueList(const QStringList &List) { m_valueList = List; }
    TObjInspecList *SubList() const { return m_subList.get(); }
    const TPropertyEditorRef &PropEditor() const { return m_propEditor; }
    void SetPropEditor(const TPropertyEditorRef &Editor) { m_propEditor = Editor; }

private:
    std::unique_ptr<TObjInspecList> m_subList;
    bool m_expanded = false;
    QStringList m_valueList;
    QPointer<QObject> m_ownerObject;
    QList<QPointer<QObject>> m_ownerObjects;
    TObjInspecPropListEx *m_propList = nullptr;
    TPropertyEditorRef m_propEditor;
};

// The value text of a line's object (a row or a set element), as the line
// shows it; "" for anything else. The inspector's grid makes its pending
// values with it.
QORDESIGN_EXPORT QString ObjInspecValueText(TObject *Object);

// The elements of an expanded set row, one line each with "True"/"False".
class QORDESIGN_EXPORT TObjInspecSetExpandList : public TObjInspecList
{
public:
    explicit TObjInspecSetExpandList(TObjInspecPropertyItem *SetRow);
    ~TObjInspecSetExpandList() override;

    int Count() const override { return int(m_items.size()); }
    void Clear() override;
    void AppendToStrings(TValueListStrings *Strings) override;
    void CopyDetailsFrom(TObjInspecList *List) override;
    virtual void CopyDetailsFromUpperLevel(TObjInspecList *List);
    void CopyDetailFromUpperLevel(TObjInspecList *List) override { CopyDetailsFromUpperLevel(List); }
    virtual void UpdateList();

    TObjInspecPropertyItem *BasedProperty() const { return m_basedProperty; }
    void SetBasedProperty(TObjInspecPropertyItem *Row);
    void ListAllItemConsts();
    TSetItemConst *GetSetItemConsts(int Index) const;
    QString GetIndentStr() const;

private:
    std::vector<std::unique_ptr<TSetItemConst>> m_items;
    TObjInspecPropertyItem *m_basedProperty = nullptr;
};
