// SPDX-License-Identifier: MIT
#include "console/qordesignactions.h"

#include "console/qorcommanderror_p.h"

#include "console/qordesignconsole.h"
#include "console/qordesignposalignform.h"
#include "console/qordesignposscaleform.h"
#include "console/qordesignpossizeform.h"
#include "console/qordsnconst.h"
#include "console/qorlanguage_p.h"
#include "designer/qormanager.h"
#include "foundation/qorclasses.h"
#include "foundation/qorlogging_p.h"

#include <QCoreApplication>
#include <QUndoStack>


using namespace QorDesigner;

namespace {

// The design manager of an action's center, or null.
TQorDesignManager *managerOf(const TQorDesignAction *Action)
{
    TQorDesignCenter *center = Action->ConsoleCenter();
    return center ? center->DesignManager() : nullptr;
}

bool stageVisible(const TQorDesignAction *Action)
{
    TQorDesignCenter *center = Action->ConsoleCenter();
    QWidget *stage = center ? center->GetDesignStage() : nullptr;
    return stage && stage->isVisible();
}

// The center's selection holds at least one component.
bool anySelected(const TQorDesignAction *Action)
{
    TQorDesignCenter *center = Action->ConsoleCenter();
    return center && !center->SelectedComps().isEmpty();
}

// The edit rule of copy, cut and delete: something other than the stage
// is selected first.
bool editRule(const TQorDesignAction *Action)
{
    TQorDesignCenter *center = Action->ConsoleCenter();
    const TComponentList &selected = center->SelectedComps();
    QObject *first = selected.First();
    return first && first != center->GetDesignStage();
}

// The classes forms may hold and the stream reads back.
void registerActionClasses()
{
    RegisterClass<TQorDesignSelCtrlBringToFront>();
    RegisterClass<TQorDesignSelCtrlSendToBack>();
    RegisterClass<TQorDesignSelCtrlFlipSelChildren>();
    RegisterClass<TQorDesignSelCtrlFlipAllChildren>();
}
Q_CONSTRUCTOR_FUNCTION(registerActionClasses)

} // namespace

// ---- TQorDesignAction ----------------------------------------------------

TQorDesignAction::TQorDesignAction(QObject *Owner)
    : QAction(Owner)
{
    // Judged at once: without a center nothing can run.
    setEnabled(false);
    connect(this, &QAction::triggered, this, &TQorDesignAction::triggeredByUser);
}

TQorDesignAction::~TQorDesignAction() = default;

void TQorDesignAction::SetConsoleCenter(TQorDesignCenter *Center)
{
    if (Center == m_consoleCenter)
        return;
    disconnect(m_centerConnection);
    m_consoleCenter = Center;
    if (Center)
        m_centerConnection = connect(Center, &TQorDesignCenter::DesignStateChanged, this, [this] { Update(); });
    Update();
}

void TQorDesignAction::SetHint(const QString &Value)
{
    m_hint = Value;
    m_hintFromCaption = false;
    const qsizetype bar = Value.indexOf(QLatin1Char('|'));
    setToolTip(bar < 0 ? Value : Value.left(bar));
    setStatusTip(bar < 0 ? Value : Value.mid(bar + 1));
}

bool TQorDesignAction::JudgeEnabled() const
{
    TQorDesignCenter *center = ConsoleCenter();
    if (!center || !center->GetEnabled())
        return false;
    TQorDesignManager *manager = center->DesignManager();
    if (!manager || !manager->Enabled())
        return false;
    QWidget *stage = manager->DesignStage();
    return stage && stage->isVisible();
}

bool TQorDesignAction::Update()
{
    setEnabled(JudgeEnabled());
    return true;
}

void TQorDesignAction::UpdateTarget(QObject *)
{
    setEnabled(m_disableIfNoHandler && ConsoleCenter());
    if (m_disableIfNoHandler)
        setEnabled(stageVisible(this));
}

bool TQorDesignAction::Execute()
{
    const bool handled = isSignalConnected(QMetaMethod::fromSignal(&TQorDesignAction::OnExecute));
    Q_EMIT OnExecute(this);
    if (TQorDesignCenter *center = ConsoleCenter())
        center->SetDirty(true);
    return handled;
}

void TQorDesignAction::SetCaptionId(int Id, bool CaptionHint)
{
    if (m_captionId == 0) {
        if (TQorLanguageWatch *watch = QorLanguageWatch())
            connect(watch, &TQorLanguageWatch::LanguageChanged, this, &TQorDesignAction::retranslate);
    }
    m_captionId = Id;
    m_caption = QorDsnConst::LoadStr(Id);
    setText(m_caption);
    if (CaptionHint) {
        SetHint(m_caption + QLatin1Char('|') + m_caption);
        m_hintFromCaption = true;
    }
}

void TQorDesignAction::retranslate()
{
    // An application that gave the action a text of its own keeps it.
    if (text() != m_caption)
        return;
    const bool captionHint = m_hintFromCaption && m_hint == m_caption + QLatin1Char('|') + m_caption;
    SetCaptionId(m_captionId, captionHint);
}

void TQorDesignAction::triggeredByUser()
{
    // Nothing a command throws goes on into the event loop. What it
    // changed is one step of the history, named by the action.
    QPointer<TQorDesignCenter> center = ConsoleCenter();
    const bool recorded = center && ChangesDesign();
    if (recorded)
        center->BeginDesignChange(text());
    const QString failure = QorRunCaught([this] { Execute(); });
    if (recorded && center)
        center->EndDesignChange();
    if (failure.isEmpty())
        return;
    if (isSignalConnected(QMetaMethod::fromSignal(&TQorDesignAction::OnError))) {
        qCInfo(lcQorConsole).noquote() << "Command" << text() << "failed:" << failure;
        Q_EMIT OnError(this, failure);
        return;
    }
    QorShowCommandError(center ? center->GetDesignStage() : nullptr, text(), failure);
}

// ---- Selected controls ------------------------------------------------------

bool TQorDesignSelCtrlAction::JudgeEnabled() const
{
    return TQorDesignCompAction::JudgeEnabled() && anySelected(this);
}

// ---- Edit commands -------------------------------------------------------------

TQorDesignEditCopy::TQorDesignEditCopy(QObject *Owner)
    : TQorDesignEditAction(Owner)
{
    SetCaptionId(QorDsnConst::SCopy);
}

bool TQorDesignEditCopy::JudgeEnabled() const
{
    return TQorDesignEditAction::JudgeEnabled() && editRule(this);
}

void TQorDesignEditCopy::UpdateTarget(QObject *Target)
{
    TQorDesignEditAction::UpdateTarget(Target);
    if (DisableIfNoHandler())
        setEnabled(anySelected(this));
}

bool TQorDesignEditCopy::Execute()
{
    const bool handled = TQorDesignEditAction::Execute();
    if (TQorDesignCenter *center = ConsoleCenter())
        center->CopySelComps();
    return handled;
}

TQorDesignEditCut::TQorDesignEditCut(QObject *Owner)
    : TQorDesignEditCopy(Owner)
{
    SetCaptionId(QorDsnConst::SCut);
}

bool TQorDesignEditCut::Execute()
{
    const bool handled = TQorDesignEditCopy::Execute();
    if (TQorDesignCenter *center = ConsoleCenter())
        center->DelSelCtrls();
    return handled;
}

TQorDesignEditPaste::TQorDesignEditPaste(QObject *Owner)
    : TQorDesignEditAction(Owner)
{
    SetCaptionId(QorDsnConst::SPaste);
}

bool TQorDesignEditPaste::Execute()
{
    const bool handled = TQorDesignEditAction::Execute();
    if (TQorDesignCenter *center = ConsoleCenter())
        center->PasteComps();
    return handled;
}

TQorDesignEditSelAll::TQorDesignEditSelAll(QObject *Owner)
    : TQorDesignEditAction(Owner)
{
    SetCaptionId(QorDsnConst::SSelectAll);
}

bool TQorDesignEditSelAll::Execute()
{
    // Selecting changes nothing of the design: no OnExecute, no dirty mark.
    if (TQorDesignCenter *center = ConsoleCenter())
        center->SelectAllControls();
    return true;
}

TQorDesignEditDelSel::TQorDesignEditDelSel(QObject *Owner)
    : TQorDesignEditAction(Owner)
{
    SetCaptionId(QorDsnConst::SDelete);
}

bool TQorDesignEditDelSel::JudgeEnabled() const
{
    return TQorDesignEditAction::JudgeEnabled() && editRule(this);
}

bool TQorDesignEditDelSel::Execute()
{
    const bool handled = TQorDesignEditAction::Execute();
    if (TQorDesignCenter *center = ConsoleCenter())
        center->DelSelCtrls();
    return handled;
}

// ---- Commands on the selected controls --------------------------------------------

TQorDesignSelCtrlBringToFront::TQorDesignSelCtrlBringToFront(QObject *Owner)
    : TQorDesignSelCtrlAction(Owner)
{
    SetCaptionId(QorDsnConst::SBringToFront, true);
}

bool TQorDesignSelCtrlBringToFront::Execute()
{
    if (TQorDesignManager *manager = managerOf(this))
        manager->BringSelCtrlsToFront();
    return TQorDesignSelCtrlAction::Execute();
}

TQorDesignSelCtrlSendToBack::TQorDesignSelCtrlSendToBack(QObject *Owner)
    : TQorDesignSelCtrlAction(Owner)
{
    SetCaptionId(QorDsnConst::SSendToBack, true);
}

bool TQorDesignSelCtrlSendToBack::Execute()
{
    if (TQorDesignManager *manager = managerOf(this))
        manager->SendSelCtrlsToBack();
    return TQorDesignSelCtrlAction::Execute();
}

TQorDesignSelCtrlFlipSelChildren::TQorDesignSelCtrlFlipSelChildren(QObject *Owner)
    : TQorDesignSelCtrlAction(Owner)
{
    SetCaptionId(QorDsnConst::SFlipSelected, true);
}

bool TQorDesignSelCtrlFlipSelChildren::Execute()
{
    if (TQorDesignManager *manager = managerOf(this))
        manager->FlipChildren(fcSelected);
    return TQorDesignSelCtrlAction::Execute();
}

TQorDesignSelCtrlFlipAllChildren::TQorDesignSelCtrlFlipAllChildren(QObject *Owner)
    : TQorDesignSelCtrlAction(Owner)
{
    SetCaptionId(QorDsnConst::SFlipAll, true);
}

bool TQorDesignSelCtrlFlipAllChildren::Execute()
{
    if (TQorDesignManager *manager = managerOf(this))
        manager->FlipChildren(fcAll);
    return TQorDesignSelCtrlAction::Execute();
}

TQorDesignSelCtrlPositionAlign::TQorDesignSelCtrlPositionAlign(QObject *Owner)
    : TQorDesignSelCtrlAction(Owner)
{
    SetCaptionId(QorDsnConst::SPosAlign, true);
}

bool TQorDesignSelCtrlPositionAlign::Execute()
{
    TDialogPosAlign *dialog = QorDialogPosAlign();
    if (dialog && dialog->Execute()) {
        if (TQorDesignManager *manager = managerOf(this))
            manager->SetSelCtrlDesignAligment(dialog->GetHorizontalAlignment(), dialog->GetVerticalAlignment());
    }
    return TQorDesignSelCtrlAction::Execute();
}

TQorDesignSelCtrlPositionSize::TQorDesignSelCtrlPositionSize(QObject *Owner)
    : TQorDesignSelCtrlAction(Owner)
{
    SetCaptionId(QorDsnConst::SPosSize, true);
}

bool TQorDesignSelCtrlPositionSize::Execute()
{
    TDialogPosSize *dialog = QorDialogPosSize();
    if (dialog && dialog->Execute()) {
        if (TQorDesignManager *manager = managerOf(this))
            manager->SetSelCtrlDesignSize(dialog->GetWidthSizeStyle(), dialog->GetHeightSizeStyle(),
                                          dialog->GetWidthSize(), dialog->GetHeightSize());
    }
    return TQorDesignSelCtrlAction::Execute();
}

TQorDesignSelCtrlPositionScale::TQorDesignSelCtrlPositionScale(QObject *Owner)
    : TQorDesignSelCtrlAction(Owner)
{
    SetCaptionId(QorDsnConst::SPosScale, true);
}

bool TQorDesignSelCtrlPositionScale::Execute()
{
    TDialogPosScale *dialog = QorDialogPosScale();
    if (dialog && dialog->Execute()) {
        if (TQorDesignManager *manager = managerOf(this))
            manager->ScaleControls(dialog->GetScaleFactor(), dialog->GetScaleStyle());
    }
    return TQorDesignSelCtrlAction::Execute();
}

// ---- History -------------------------------------------------------------------

namespace {

QUndoStack *historyOf(const TQorDesignAction *Action)
{
    TQorDesignCenter *center = Action->ConsoleCenter();
    return center ? center->UndoStack() : nullptr;
}

// "Undo Move", or "Undo" alone with nothing to undo.
QString historyCaption(const char *Command, const QString &Step)
{
    const QString command = QCoreApplication::translate("TQorDesignHistory", Command);
    return Step.isEmpty() ? command : QCoreApplication::translate("TQorDesignHistory", "%1 %2").arg(command, Step);
}

} // namespace

TQorDesignEditUndo::TQorDesignEditUndo(QObject *Owner)
    : TQorDesignEditAction(Owner)
{
    setText(historyCaption(QT_TRANSLATE_NOOP("TQorDesignHistory", "&Undo"), QString()));
    if (TQorLanguageWatch *watch = QorLanguageWatch())
        connect(watch, &TQorLanguageWatch::LanguageChanged, this, [this] { Update(); });
}

bool TQorDesignEditUndo::JudgeEnabled() const
{
    QUndoStack *stack = historyOf(this);
    return TQorDesignEditAction::JudgeEnabled() && stack && stack->canUndo();
}

bool TQorDesignEditUndo::Update()
{
    QUndoStack *stack = historyOf(this);
    setText(historyCaption(QT_TRANSLATE_NOOP("TQorDesignHistory", "&Undo"), stack ? stack->undoText() : QString()));
    return TQorDesignEditAction::Update();
}

bool TQorDesignEditUndo::Execute()
{
    if (QUndoStack *stack = historyOf(this); stack && stack->canUndo())
        stack->undo();
    return true;
}

TQorDesignEditRedo::TQorDesignEditRedo(QObject *Owner)
    : TQorDesignEditAction(Owner)
{
    setText(historyCaption(QT_TRANSLATE_NOOP("TQorDesignHistory", "&Redo"), QString()));
    if (TQorLanguageWatch *watch = QorLanguageWatch())
        connect(watch, &TQorLanguageWatch::LanguageChanged, this, [this] { Update(); });
}

bool TQorDesignEditRedo::JudgeEnabled() const
{
    QUndoStack *stack = historyOf(this);
    return TQorDesignEditAction::JudgeEnabled() && stack && stack->canRedo();
}

bool TQorDesignEditRedo::Update()
{
    QUndoStack *stack = historyOf(this);
    setText(historyCaption(QT_TRANSLATE_NOOP("TQorDesignHistory", "&Redo"), stack ? stack->redoText() : QString()));
    return TQorDesignEditAction::Update();
}

bool TQorDesignEditRedo::Execute()
{
    if (QUndoStack *stack = historyOf(this); stack && stack->canRedo())
        stack->redo();
    return true;
}
