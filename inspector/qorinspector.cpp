// SPDX-License-Identifier: MIT
#include "inspector/qorinspector.h"

#include "foundation/qorerror.h"
#include "foundation/qorlogging_p.h"
#include "foundation/qorrepaintonce_p.h"
#include "foundation/qortypinfo.h"
#include "foundation/vhortti_p.h"

#include <QLabel>
#include <QScopeGuard>

#include <exception>

IQorInspectorCenter::~IQorInspectorCenter() = default;

// ---- TVhoObjInspector --------------------------------------------------

TVhoObjInspector::TVhoObjInspector(QWidget *Parent)
    : TVhoValueListEditor(Parent)
    , m_propList(std::make_unique<TObjInspecPropListEx>(nullptr, true))
    , m_errorLabel(new QLabel(this))
{
    m_propList->SetValueListStrings(Strings());
    m_propList->SetInspector(this);
    m_propList->SetAutoUpdateOutput(true);
    // A value is read from the objects when its line is shown (or asked
    // for): a hundred objects cost a property read each per line.
    Strings()->SetValueMaker([](TObject *Object) {
        // Made while the grid paints: a failing read shows an empty value
        // rather than leave the paint.
        try {
            return ObjInspecValueText(Object);
        } catch (const std::exception &error) {
            qCInfo(lcQorInspector).noquote() << "Showed an empty value: reading it failed -"
                                             << QString::fromUtf8(error.what());
            return QString();
        }
    });
    OnEditButtonClick = [this](QObject *Sender) { EditButtonClick(Sender); };
    OnKeyDown = [this](QObject *Sender, int &Key, Qt::KeyboardModifiers Shift) { SelfKeyDown(Sender, Key, Shift); };
    m_errorLabel->setObjectName(QStringLiteral("qor_inspector_error"));
    m_errorLabel->setWordWrap(true);
    m_errorLabel->setAutoFillBackground(true);
    m_errorLabel->setMargin(4);
    QPalette warning = m_errorLabel->palette();
    warning.setColor(QPalette::Window, QColor(0xff, 0xf0, 0xc0));
    warning.setColor(QPalette::WindowText, QColor(0xa0, 0x00, 0x00));
    m_errorLabel->setPalette(warning);
    m_errorLabel->hide();
}

TVhoObjInspector::~TVhoObjInspector()
{
    // The rows go before the strings that carry them.
    m_propList.reset();
}

IQorInspectorCenter *TVhoObjInspector::center() const
{
    return qobject_cast<IQorInspectorCenter *>(m_consoleCenter.data());
}

// ---- Selection ----

QObject *TVhoObjInspector::ActiveComponent() const
{
    QObject *first = m_propList->GetBasedObject();
    return first && !qobject_cast<TQorValueObject *>(first) ? first : nullptr;
}

void TVhoObjInspector::SetActiveComponent(QObject *Component)
{
    if (Component == m_propList->GetBasedObject() && m_propList->GetBasedObjects().size() <= 1)
        return;
    if (IQorInspectorCenter *c = center())
        m_propList->SetDesigner(c->InspectorDesigner());
    m_propList->SetBasedObject(Component);
    watchComponents();
    Q_EMIT OnChangeActiveComponent(this);
    RelateComponentChanged();
}

void TVhoObjInspector::SetActiveComponents(const TComponentList &Components)
{
    SetActiveComponents(Components.toList());
}

void TVhoObjInspector::SetActiveComponents(const QList<QObject *> &Objects)
{
    if (Objects == m_propList->GetBasedObjects())
        return;
    if (IQorInspectorCenter *c = center())
        m_propList->SetDesigner(c->InspectorDesigner());
    m_propList->SetBasedObjects(Objects);
    watchComponents();
    Q_EMIT OnChangeActiveComponent(this);
    RelateComponentChanged();
}

void TVhoObjInspector::AddActiveComponent(QObject *Component)
{
    m_propList->AddBasedObject(Component);
    m_propList->UpdateList();
    watchComponents();
    Q_EMIT OnChangeActiveComponent(this);
    RelateComponentChanged();
}

void TVhoObjInspector::ClearActiveComponents()
{
    SetActiveComponents(QList<QObject *>());
}

QList<QObject *> TVhoObjInspector::GetActiveComponents() const
{
    return m_propList->GetBasedObjects();
}

// A shown component that is freed (by the application, or along with its
// parent) leaves the inspector's list: the lines are rebuilt for the rest
// once control returns to the event loop, so that freeing many costs one
// rebuild and none happens inside a destructor.
void TVhoObjInspector::watchComponents()
{
    // A connection stays until its component dies, so a component shown
    // again (a select-all of thousands, repeated) is not connected again.
    for (QObject *component : GetActiveComponents()) {
        if (component && !m_watched.contains(component)) {
            m_watched.insert(component);
            connect(component, &QObject::destroyed, this, &TVhoObjInspector::componentDestroyed);
        }
    }
}

void TVhoObjInspector::componentDestroyed(QObject *Component)
{
    m_watched.remove(Component);
    if (m_dropPending)
        return;
    m_dropPending = true;
    QMetaObject::invokeMethod(this, &TVhoObjInspector::dropDestroyedComponents, Qt::QueuedConnection);
}

void TVhoObjInspector::dropDestroyedComponents()
{
    m_dropPending = false;
    QList<QObject *> alive = GetActiveComponents();
    if (alive.removeAll(nullptr) == 0)
        return;
    // An empty selection keeps the rows it had; rows of components that
    // are gone are dropped here.
    if (alive.isEmpty())
        m_propList->Clear();
    SetActiveComponents(alive);
}

QObject *TVhoObjInspector::OwnerComponent() const
{
    return m_propList->GetOwnerObject();
}

void TVhoObjInspector::SetOwnerComponent(QObject *Component)
{
    if (Component == m_propList->GetOwnerObject())
        return;
    m_propList->SetOwnerObject(Component);
    Q_EMIT OnChangeOwnerComponent(this);
    RelateComponentChanged();
}

void TVhoObjInspector::SetOwnerComponents(const QList<QObject *> &Components)
{
    m_propList->SetOwnerObjects(Components);
    Q_EMIT OnChangeOwnerComponent(this);
    RelateComponentChanged();
}

void TVhoObjInspector::ClearOwnerComponents()
{
    m_propList->ClearOwnerObjects();
}

QList<QObject *> TVhoObjInspector::GetOwnerComponents() const
{
    return m_propList->GetOwnerObjects();
}

void TVhoObjInspector::SetConsoleCenter(QObject *Center)
{
    m_consoleCenter = Center;
    if (IQorInspectorCenter *c = center())
        SetActiveComponents(c->InspectorSelection());
}

void TVhoObjInspector::SetPropList(std::unique_ptr<TObjInspecPropListEx> List)
{
    if (!List)
        return;
    m_propList = std::move(List);
    m_propList->SetValueListStrings(Strings());
    m_propList->SetInspector(this);
    RelateComponentChanged();
}

// ---- Rows ----

TObjInspecPropertyItem *TVhoObjInspector::GetCurrPropItem() const
{
    return dynamic_cast<TObjInspecPropertyItem *>(Strings()->Objects(Row()));
}

int TVhoObjInspector::GetPropRow(PPropInfo PropInfo) const
{
    for (int i = 0; i < Strings()->Count(); ++i) {
        auto *item = dynamic_cast<TObjInspecPropertyItem *>(Strings()->Objects(i));
        if (item && item->GetPropInfoRef() == PropInfo)
            return i;
    }
    return -1;
}

TClassInformation *TVhoObjInspector::GetClassInformation() const
{
    return &m_propList->ClassInformation();
}

// ---- Position ----

int TVhoObjInspector::GetCurrItemIndex()
{
    m_savedItemIndex = Row();
    return m_savedItemIndex;
}

void TVhoObjInspector::SetCurrItemIndex(int Index)
{
    if (RowCount() == 0)
        return;
    Index = std::clamp(Index, 0, RowCount() - 1);
    SetRow(Index);
    m_savedItemIndex = Index;
}

void TVhoObjInspector::ReturnToOldPos()
{
    SetCurrItemIndex(m_savedItemIndex);
}

// ---- Display ----

void TVhoObjInspector::RelateComponentChanged()
{
    clearError();
    Refresh();
}

void TVhoObjInspector::Refresh()
{
    // A grid with lines always has a current one: the first until the
    // user picks another.
    const int remembered = std::max(Row(), 0);
    m_refreshing = true;
    if (RowCount() > 0)
        SetRow(0);
    RefreshOutput();
    if (RowCount() > 0)
        SetRow(remembered >= 0 && remembered < RowCount() ? remembered : RowCount() - 1);
    m_refreshing = false;
}

void TVhoObjInspector::RefreshOutput()
{
    StartFillList();
    m_propList->AppendOutputInspecStringList();
    Q_EMIT OnRefresh(this);
    EndFillList();
}

void TVhoObjInspector::StartFillList()
{
    Strings()->BeginUpdate();
    Strings()->Clear();
}

void TVhoObjInspector::EndFillList()
{
    Strings()->EndUpdate();
}

void TVhoObjInspector::RefreshValues()
{
    if (!ActiveComponent() && m_propList->GetBasedObjects().isEmpty())
        return;
    TValueListStrings *strings = Strings();
    // The lines in view are read again now, and repainted where a value
    // changed; the others are read when they come into view.
    const QRect view = viewport()->rect();
    int first = isVisible() ? rowAt(view.top()) : -1;
    int last = isVisible() ? rowAt(view.bottom()) : -1;
    if (first >= 0 && last < 0)
        last = strings->Count() - 1;
    for (int i = 0; i < strings->Count(); ++i) {
        if (i >= first && i <= last && first >= 0)
            strings->SetValueFromIndex(i, strings->ValueMaker()(strings->Objects(i)));
        else
            strings->SetValuePending(i);
    }
}

// ---- Editing ----

void TVhoObjInspector::PropertyValueChanged(int Row)
{
    if (m_refreshing || !m_propList || Row < 0 || Row >= Strings()->Count() || m_propList->Filling())
        return;
    TObject *object = Strings()->Objects(Row);
    bool changed = false;
    QString propName;
    // A value written to many controls repaints their container once.
    const QorRepaintOnce repaint(m_propList->GetBasedObjects());
    if (auto *element = dynamic_cast<TSetItemConst *>(object)) {
        // Writing the set rebuilds its element rows: this one among them.
        if (element->BasedProperty())
            propName = element->BasedProperty()->GetPropName();
        const QString text =
            m_propList->LabelToIdent(TypeInfoOf<bool>(), Strings()->ValueFromIndex(Row).trimmed(), trPropValue);
        bool include;
        if (text.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
            include = true;
        else if (text.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
            include = false;
        else
            include = StrToBool(text);
        changed = ChangeSetValueStr(element, include);
    } else if (auto *item = dynamic_cast<TObjInspecPropertyItem *>(object)) {
        propName = item->GetPropName();
        const QString text =
            m_propList->LabelToIdent(item->GetPropTypeInfoRef(), Strings()->ValueFromIndex(Row), trPropValue);
        const PPropInfo info = item->GetPropInfoRef();
        const bool classWithList = info && info->PropType->Kind == tkClass && item->GetHasValueList();
        if (item->PropEditor() && !classWithList) {
            if (item->PropEditor()->GetValue() != text) {
                item->PropEditor()->SetValue(text);
                changed = true;
            }
        } else if (item->GetPropValueStr() != text) {
            item->SetPropValueStr(text);
            changed = true;
        }
    }
    if (!changed)
        return;
    Q_EMIT OnPropNameChanged(this, propName);
    m_modified = true;
    if (IQorInspectorCenter *c = center())
        c->SetDirty(true);
    if (!Strings()->ItemProps(Row).ReadOnly)
        RefreshValues();
    if (IQorInspectorCenter *c = center())
        c->InspectorPropChanged();
}

void TVhoObjInspector::ValidateLine(int Row)
{
    if (Row < 0 || Row >= RowCount() || !m_propList)
        return;
    QString propName;
    bool topLevel = false;
    if (auto *item = dynamic_cast<TObjInspecPropertyItem *>(Strings()->Objects(Row))) {
        propName = item->GetPropName();
        topLevel = m_propList->GetPropItemsByName(propName) == item;
    }
    // A refused value leaves the line with the objects' values back, and
    // no object changed.
    const QList<QObject *> objects = m_propList->GetBasedObjects();
    guarded(propName, [this, Row] { PropertyValueChanged(Row); }, topLevel ? &objects : nullptr);
}

void TVhoObjInspector::DoOnValidate()
{
    if (Row() >= 0 && m_propList)
        ValidateLine(Row());
}

void TVhoObjInspector::InplaceEditorOnChange(QObject *)
{
    // The pick is written to the line by the editor and validated once the
    // editor is done with it.
}

void TVhoObjInspector::InplaceEditorOnKeyPress(QObject *Sender, int &Key)
{
    TVhoValueListEditor::InplaceEditorOnKeyPress(Sender, Key);
}

void TVhoObjInspector::SelfKeyDown(QObject *, int &Key, Qt::KeyboardModifiers)
{
    if (Key == Qt::Key_Return)
        DoOnValidate();
}

void TVhoObjInspector::KeyDown(int &Key, Qt::KeyboardModifiers Shift)
{
    TVhoValueListEditor::KeyDown(Key, Shift);
    if (Key == Qt::Key_Return)
        DoOnValidate();
    else if (Key == Qt::Key_Escape)
        clearError();
}

void TVhoObjInspector::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    // The view hands the open editor's text over here, before the line
    // changes; its check comes after, so a value refused on the way out
    // still shows.
    TVhoValueListEditor::currentChanged(current, previous);
    if (!m_refreshing && current.isValid() && previous.isValid() && current.row() != previous.row())
        clearError();
}

void TVhoObjInspector::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    TVhoValueListEditor::closeEditor(editor, hint);
    if (hint == QAbstractItemDelegate::RevertModelCache)
        clearError();
}

void TVhoObjInspector::EditButtonClick(QObject *)
{
    TObjInspecPropertyItem *item = GetCurrPropItem();
    if (!item || !item->PropEditor())
        return;
    const PPropInfo info = item->GetPropInfoRef();
    if (info && info->PropType->Kind == tkMethod)
        return;
    guarded(item->GetPropName(), [this, item] {
        TPropertyEditor::SetDialogParent(this);
        item->PropEditor()->Edit();
    });
    RefreshValues();
    if (IQorInspectorCenter *c = center())
        c->InspectorPropChanged();
}

void TVhoObjInspector::LeftButtonDown(const QPoint &Point)
{
    const QModelIndex index = indexAt(Point);
    if (index.isValid() && index.row() >= 0 && index.column() >= 0)
        SetRow(index.row());
    toggleAtMarker(Point);
}

bool TVhoObjInspector::toggleAtMarker(const QPoint &Point)
{
    const QModelIndex index = indexAt(Point);
    if (!index.isValid() || index.column() != 0 || !MarkerRect(index.row()).contains(Point))
        return false;
    // The model's rows are the lines: a valid index names one of them.
    Q_ASSERT(index.row() < Strings()->Count());
    auto *item = dynamic_cast<TObjInspecPropertyItem *>(Strings()->Objects(index.row()));
    if (!item || !item->GetExpandable())
        return false;
    const int row = index.row();
    item->SetExpanded(!item->GetExpanded());
    SetCurrItemIndex(row);
    return true;
}

void TVhoObjInspector::DoubleClicked(const QPoint &Point)
{
    // Each click on a marker opens or closes the row, the second click of
    // a double click too.
    if (toggleAtMarker(Point))
        return;
    TObjInspecPropertyItem *item = GetCurrPropItem();
    if (!item)
        return;
    if (item->GetExpandable()) {
        const int row = Row();
        item->SetExpanded(!item->GetExpanded());
        SetCurrItemIndex(row);
        return;
    }
    if (item->PropEditor() && (item->PropEditor()->GetAttributes() & paDialog)) {
        guarded(item->GetPropName(), [this, item] {
            TPropertyEditor::SetDialogParent(this);
            item->PropEditor()->Edit();
        });
        RefreshValues();
    }
}

// ---- Pass-through settings ----

TPropertyFilterStyles TVhoObjInspector::PropertyFilterStyles() const
{
    return m_propList->PropertyFilterStyles();
}

void TVhoObjInspector::SetPropertyFilterStyles(TPropertyFilterStyles Value)
{
    m_propList->SetPropertyFilterStyles(Value);
}

bool TVhoObjInspector::AutoUpdateOutput() const
{
    return m_propList->AutoUpdateOutput();
}

void TVhoObjInspector::SetAutoUpdateOutput(bool Value)
{
    m_propList->SetAutoUpdateOutput(Value);
}

QStringList TVhoObjInspector::OutputPropNames() const
{
    return m_propList->OutputPropNames();
}

void TVhoObjInspector::SetOutputPropNames(const QStringList &Names)
{
    m_propList->SetOutputPropNames(Names);
}

QStringList TVhoObjInspector::ConcealedPropNames() const
{
    return m_propList->ConcealedPropNames();
}

void TVhoObjInspector::SetConcealedPropNames(const QStringList &Names)
{
    m_propList->SetConcealedPropNames(Names);
}

QStringList TVhoObjInspector::OutputEventNames() const
{
    return m_propList->OutputEventNames();
}

void TVhoObjInspector::SetOutputEventNames(const QStringList &Names)
{
    m_propList->SetOutputEventNames(Names);
}

QStringList TVhoObjInspector::ConcealedEventNames() const
{
    return m_propList->ConcealedEventNames();
}

void TVhoObjInspector::SetConcealedEventNames(const QStringList &Names)
{
    m_propList->SetConcealedEventNames(Names);
}

bool TVhoObjInspector::Translate() const
{
    return m_propList->Translate();
}

void TVhoObjInspector::SetTranslate(bool Value)
{
    m_propList->SetTranslate(Value);
}

TRttiTranslateEvent TVhoObjInspector::OnTranslateIdent() const
{
    return m_propList->OnTranslateIdent();
}

void TVhoObjInspector::SetOnTranslateIdent(const TRttiTranslateEvent &Event)
{
    m_propList->SetOnTranslateIdent(Event);
}

TRttiTranslateEvent TVhoObjInspector::OnTranslateToIdent() const
{
    return m_propList->OnTranslateToIdent();
}

void TVhoObjInspector::SetOnTranslateToIdent(const TRttiTranslateEvent &Event)
{
    m_propList->SetOnTranslateToIdent(Event);
}

// ---- Refused values ----

void TVhoObjInspector::showError(const QString &PropName, const QString &Message)
{
    m_lastError = tr("Invalid Property Value; %1").arg(Message);
    m_errorLabel->setText(m_lastError);
    placeErrorLabel();
    m_errorLabel->show();
    m_errorLabel->raise();
    RefreshValues();
    Q_EMIT PropertyValueRejected(PropName, Message);
}

void TVhoObjInspector::guarded(const QString &PropName, const std::function<void()> &Change,
                               const QList<QObject *> *Objects)
{
    // What the change does to the design is one step of the center's
    // history, named by the property.
    IQorInspectorCenter *c = center();
    if (c && Objects)
        c->BeginPropertyChange(*Objects, PropName);
    else if (c)
        c->BeginDesignChange(PropName);
    const auto end = qScopeGuard([this] {
        if (IQorInspectorCenter *now = center())
            now->EndDesignChange();
    });
    QString refusal;
    try {
        Change();
        clearError();
        return;
    } catch (const EQorError &error) {
        refusal = error.message();
    } catch (const std::exception &error) {
        refusal = QString::fromUtf8(error.what());
    }
    qCInfo(lcQorInspector).noquote() << "Refused a value of property" << PropName << "-" << refusal;
    showError(PropName, refusal);
}

void TVhoObjInspector::clearError()
{
    m_lastError.clear();
    m_errorLabel->hide();
}

void TVhoObjInspector::placeErrorLabel()
{
    const QRect area = viewport()->geometry();
    const int height = m_errorLabel->heightForWidth(area.width());
    const int h = std::max(height, m_errorLabel->sizeHint().height());
    m_errorLabel->setGeometry(area.left(), area.bottom() + 1 - h, area.width(), h);
}

void TVhoObjInspector::resizeEvent(QResizeEvent *event)
{
    TVhoValueListEditor::resizeEvent(event);
    if (m_errorLabel->isVisible())
        placeErrorLabel();
}
