// SPDX-License-Identifier: MIT
// The designer that property and component editors talk to at run time:
// IDesigner on top of the design manager. A few of its operations do real
// work (names, components, the selection, the clipboard, creating a
// component); the rest answer the empty value, as there is no development
// environment behind them.
#pragma once

#include "qordesign_export.h"

#include "designer/qormanager.h"
#include "inspector/qoreditorintf.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

class QORDESIGN_EXPORT TVhoDesigner : public QObject, public IDesigner
{
    Q_OBJECT
    Q_INTERFACES(IDesigner)
    Q_PROPERTY(bool IsDormant READ GetIsDormant)
    Q_PROPERTY(QWidget *DesignStage READ GetDesignStage WRITE SetDesignStage)
    Q_PROPERTY(TQorDesignManager *Designer READ Designer WRITE SetDesigner)

public:
    explicit TVhoDesigner(TQorDesignManager *DesignManager = nullptr);
    ~TVhoDesigner() override;

    TQorDesignManager *Designer() const { return m_designManager; }
    void SetDesigner(TQorDesignManager *DesignManager) { m_designManager = DesignManager; }
    // The manager's stage when there is a manager, else the one set here.
    QWidget *GetDesignStage() const;
    void SetDesignStage(QWidget *Stage) { m_designStage = Stage; }

    void Activate() override;
    void Modified() override;
    QString CreateMethod(const QString &Name, PTypeInfo TypeData) override;
    QString GetMethodName(const QString &Method) override;
    void GetMethods(PTypeInfo TypeData, const TGetStrProc &Proc) override;
    QString GetPathAndBaseExeName() const override;
    QString GetPrivateDirectory() const override;
    QString GetBaseRegKey() const override;
    QObject *GetIDEOptions() const override;
    void GetSelections(IDesignerSelections *List) override;
    bool MethodExists(const QString &Name) override;
    void RenameMethod(const QString &CurName, const QString &NewName) override;
    void SelectComponent(QObject *Instance) override;
    void SetSelections(IDesignerSelections *List) override;
    void ShowMethod(const QString &Name) override;
    void GetComponentNames(PTypeInfo TypeData, const TGetStrProc &Proc) override;
    QObject *GetComponent(const QString &Name) override;
    QString GetComponentName(QObject *Component) override;
    QObject *GetObject(const QString &Name) override;
    QString GetObjectName(QObject *Instance) override;
    void GetObjectNames(PTypeInfo TypeData, QObject *Context, const TGetStrProc &Proc) override;
    bool MethodFromAncestor(const QString &Method) override;
    QObject *CreateComponent(const QMetaObject *ComponentClass, QObject *Parent, int Left, int Top, int Width,
                             int Height) override;
    QObject *CreateCurrentComponent(QObject *Parent, const QRect &Rect) override;
    bool IsComponentLinkable(QObject *Component) override;
    bool IsComponentHidden(QObject *Component) override;
    void MakeComponentLinkable(QObject *Component) override;
    void Revert(QObject *Instance, PPropInfo PropInfo) override;
    bool GetIsDormant() const override;
    void GetProjectModules(const TGetStrProc &Proc) override;
    IDesigner *GetAncestorDesigner() const override;
    bool IsSourceReadOnly() const override;
    QPoint GetScrollRanges(const QPoint &ScrollPosition) override;
    void Edit(QObject *Component) override;
    void ChainCall(const QString &MethodName, const QString &InstanceName, const QString &InstanceMethod,
                   PTypeInfo TypeData) override;
    void CopySelection() override;
    void CutSelection() override;
    bool CanPaste() override;
    void PasteSelection() override;
    void DeleteSelection() override;
    void ClearSelection() override;
    // Deletes the selected controls, not only their selection.
    void NoSelection() override;
    void ModuleFileNames(QString &ImplFileName, QString &IntfFileName, QString &FormFileName) override;
    QString GetRootClassName() const override;
    QString UniqueName(const QString &BaseName) override;
    // The first selected component (not the stage); null when none is.
    QObject *GetRoot() const override;
    Qt::KeyboardModifiers GetShiftState() const override;
    QChar ModalEdit(QChar EditKey, QObject *ReturnWindow) override;
    void SelectItemName(const QString &PropertyName) override;
    void Resurrect() override;
    QString GetActiveClassGroup() const override;
    QString FindRootAncestor(const QString &AncestorClassName) override;

protected:
    QPointer<QWidget> m_designStage;
    QPointer<TQorDesignManager> m_designManager;
};
