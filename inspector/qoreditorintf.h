// SPDX-License-Identifier: MIT
// What property and component editors see of the designer that runs
// them: IDesigner, through which an editor asks for names, components and
// the selection, and the selection lists editors are enumerated for. The
// design console implements IDesigner on top of the design manager; an
// application that runs editors without a console passes null, and every
// editor of the library works without one.
#pragma once

#include "qordesign_export.h"

#include "foundation/vhortti.h"

#include <QList>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QString>

#include <functional>

class IDesignerSelections;

using TGetStrProc = std::function<void(const QString &)>;

class QORDESIGN_EXPORT IDesigner
{
public:
    virtual ~IDesigner();

    virtual void Activate() = 0;
    // The design was changed by an editor.
    virtual void Modified() = 0;
    virtual QString CreateMethod(const QString &Name, PTypeInfo TypeData) = 0;
    virtual QString GetMethodName(const QString &Method) = 0;
    virtual void GetMethods(PTypeInfo TypeData, const TGetStrProc &Proc) = 0;
    virtual QString GetPathAndBaseExeName() const = 0;
    virtual QString GetPrivateDirectory() const = 0;
    virtual QString GetBaseRegKey() const = 0;
    virtual QObject *GetIDEOptions() const = 0;
    virtual void GetSelections(IDesignerSelections *List) = 0;
    virtual bool MethodExists(const QString &Name) = 0;
    virtual void RenameMethod(const QString &CurName, const QString &NewName) = 0;
    virtual void SelectComponent(QObject *Instance) = 0;
    virtual void SetSelections(IDesignerSelections *List) = 0;
    virtual void ShowMethod(const QString &Name) = 0;
    virtual void GetComponentNames(PTypeInfo TypeData, const TGetStrProc &Proc) = 0;
    virtual QObject *GetComponent(const QString &Name) = 0;
    virtual QString GetComponentName(QObject *Component) = 0;
    virtual QObject *GetObject(const QString &Name) = 0;
    virtual QString GetObjectName(QObject *Instance) = 0;
    virtual void GetObjectNames(PTypeInfo TypeData, QObject *Context, const TGetStrProc &Proc) = 0;
    virtual bool MethodFromAncestor(const QString &Method) = 0;
    virtual QObject *CreateComponent(const QMetaObject *ComponentClass, QObject *Parent, int Left, int Top, int Width,
                                     int Height) = 0;
    virtual QObject *CreateCurrentComponent(QObject *Parent, const QRect &Rect) = 0;
    virtual bool IsComponentLinkable(QObject *Component) = 0;
    virtual bool IsComponentHidden(QObject *Component) = 0;
    virtual void MakeComponentLinkable(QObject *Component) = 0;
    virtual void Revert(QObject *Instance, PPropInfo PropInfo) = 0;
    virtual bool GetIsDormant() const = 0;
    virtual void GetProjectModules(const TGetStrProc &Proc) = 0;
    virtual IDesigner *GetAncestorDesigner() const = 0;
    virtual bool IsSourceReadOnly() const = 0;
    virtual QPoint GetScrollRanges(const QPoint &ScrollPosition) = 0;
    // Runs the component editor of Component.
    virtual void Edit(QObject *Component) = 0;
    virtual void ChainCall(const QString &MethodName, const QString &InstanceName, const QString &InstanceMethod,
                           PTypeInfo TypeData) = 0;
    virtual void CopySelection() = 0;
    virtual void CutSelection() = 0;
    virtual bool CanPaste() = 0;
    virtual void PasteSelection() = 0;
    virtual void DeleteSelection() = 0;
    virtual void ClearSelection() = 0;
    virtual void NoSelection() = 0;
    virtual void ModuleFileNames(QString &ImplFileName, QString &IntfFileName, QString &FormFileName) = 0;
    virtual QString GetRootClassName() const = 0;
    virtual QString UniqueName(const QString &BaseName) = 0;
    virtual QObject *GetRoot() const = 0;
    virtual Qt::KeyboardModifiers GetShiftState() const = 0;
    virtual QChar ModalEdit(QChar EditKey, QObject *ReturnWindow) = 0;
    virtual void SelectItemName(const QString &PropertyName) = 0;
    virtual void Resurrect() = 0;
    virtual QString GetActiveClassGroup() const = 0;
    virtual QString FindRootAncestor(const QString &AncestorClassName) = 0;
};

// A selection of objects as editors are enumerated for it.
class QORDESIGN_EXPORT IDesignerSelections
{
public:
    virtual ~IDesignerSelections();

    virtual int Count() const = 0;
    // Null once the object is gone.
    virtual QObject *Get(int Index) const = 0;
    virtual int Add(QObject *Item) = 0;
    // True when both hold the same objects in the same order.
    virtual bool Equals(const IDesignerSelections &List) const = 0;
};

// The plain selection list. Adding and comparing go through the
// interface only.
class QORDESIGN_EXPORT TDesignerSelections : public IDesignerSelections
{
public:
    TDesignerSelections();
    ~TDesignerSelections() override;

    int Count() const override;
    QObject *Get(int Index) const override;

private:
    int Add(QObject *Item) override;
    bool Equals(const IDesignerSelections &List) const override;

    QList<QPointer<QObject>> m_items;

    friend class TQorDesignerSelections;
};

// The selection list the property lists fill with plain calls.
class QORDESIGN_EXPORT TQorDesignerSelections : public TDesignerSelections
{
public:
    // The index of the new entry.
    int Add(QObject *Item) override;
    bool Equals(const IDesignerSelections &List) const override;
};
