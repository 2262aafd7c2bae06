// SPDX-License-Identifier: MIT
// The design commands as actions: an application puts them into its own
// menus and tool bars, links each to its design center, and gives them
// their shortcuts and icons (the constructors set only the caption, and
// the hint of the commands on selected controls). Each action enables
// itself by the center's state, at once when the selection, the center's
// or the design manager's enabled state or the stage's visibility changes,
// and carries out its command through the center or its design manager.
//
//   auto *copy = new TQorDesignEditCopy(window);
//   copy->SetConsoleCenter(center);
//   copy->setShortcut(QKeySequence::Copy);
//   editMenu->addAction(copy);
//
// A command that marks the design dirty does so even when it changed
// nothing (a paste of an empty clipboard, a cancelled dialog); Select All
// never does. An error a command meets (aligning a single control with
// equal spacing) is reported through OnError, or in a message box when
// nothing is connected to it; it never reaches the event loop.
#pragma once

#include "qordesign_export.h"

#include <QAction>
#include <QPointer>

class TQorDesignCenter;

class QORDESIGN_EXPORT TQorDesignAction : public QAction
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")
    Q_PROPERTY(TQorDesignCenter *ConsoleCenter READ ConsoleCenter WRITE SetConsoleCenter)
    Q_PROPERTY(bool DisableIfNoHandler READ DisableIfNoHandler WRITE SetDisableIfNoHandler)
    Q_PROPERTY(QString Hint READ Hint WRITE SetHint)
    Q_MOC_INCLUDE("console/qordesignconsole.h")

public:
    explicit TQorDesignAction(QObject *Owner = nullptr);
    ~TQorDesignAction() override;

    // The center the action judges and works through. The action follows
    // the center's state from now on and judges itself at once.
    TQorDesignCenter *ConsoleCenter() const { return m_consoleCenter; }
    void SetConsoleCenter(TQorDesignCenter *Center);
    // The flag that gates UpdateTarget; set by default.
    bool DisableIfNoHandler() const { return m_disableIfNoHandler; }
    void SetDisableIfNoHandler(bool Value) { m_disableIfNoHandler = Value; }
    // "short|long": the short part becomes the tool tip, the long one the
    // status tip; a hint without "|" is both.
    QString Hint() const { return m_hint; }
    void SetHint(const QString &Value);

    // True when the command can run now: a center is linked and enabled,
    // its design manager is linked and enabled, and the manager's stage
    // exists and is visible.
    virtual bool JudgeEnabled() const;
    // Enables the action by JudgeEnabled; true: the update is handled.
    virtual bool Update();
    // Enables the action for a target (a control the action would work
    // on): by the flag and the stage's visibility.
    virtual void UpdateTarget(QObject *Target);
    // Runs the command: OnExecute, then the design is marked dirty.
    // Triggering the action calls it.
    virtual bool Execute();
    // True when the command may change the design: triggered, it becomes
    // one step of the center's history. False for the commands that only
    // read or select.
    virtual bool ChangesDesign() const { return true; }

Q_SIGNALS:
    // The command runs (before its work for the edit commands, after it
    // for the commands on selected controls).
    void OnExecute(QObject *Sender);
    // A command failed; Message says why.
    void OnError(QObject *Sender, const QString &Message);

protected:
    // Sets the caption from a caption number, and again whenever the
    // language changes, as long as nobody gave the action another text.
    // With CaptionHint the hint is the caption twice ("caption|caption").
    void SetCaptionId(int Id, bool CaptionHint = false);

private:
    void triggeredByUser();
    void retranslate();

    QPointer<TQorDesignCenter> m_consoleCenter;
    QMetaObject::Connection m_centerConnection;
    bool m_disableIfNoHandler = true;
    int m_captionId = 0;
    bool m_hintFromCaption = false;
    QString m_caption;
    QString m_hint;
};

// The base of the edit commands.
class QORDESIGN_EXPORT TQorDesignEditAction : public TQorDesignAction
{
    Q_OBJECT

public:
    using TQorDesignAction::TQorDesignAction;

protected:
    // A place for an application's own subclass; the library leaves it.
    QObject *FEditControl = nullptr;
};

// The base of the commands on components.
class QORDESIGN_EXPORT TQorDesignCompAction : public TQorDesignAction
{
    Q_OBJECT

public:
    using TQorDesignAction::TQorDesignAction;

protected:
    // A place for an application's own subclass; the library leaves it.
    QObject *FComponent = nullptr;
};

// The base of the commands on the selected controls: enabled while
// anything is selected; the hint repeats the caption.
class QORDESIGN_EXPORT TQorDesignSelCtrlAction : public TQorDesignCompAction
{
    Q_OBJECT

public:
    using TQorDesignCompAction::TQorDesignCompAction;
    bool JudgeEnabled() const override;
};

// Copies the selection. Enabled while something other than the stage is
// selected first.
class QORDESIGN_EXPORT TQorDesignEditCopy : public TQorDesignEditAction
{
    Q_OBJECT

public:
    explicit TQorDesignEditCopy(QObject *Owner = nullptr);
    bool JudgeEnabled() const override;
    void UpdateTarget(QObject *Target) override;
    bool Execute() override;
    bool ChangesDesign() const override { return false; }
};

// Copies the selection, then deletes it.
class QORDESIGN_EXPORT TQorDesignEditCut : public TQorDesignEditCopy
{
    Q_OBJECT

public:
    explicit TQorDesignEditCut(QObject *Owner = nullptr);
    // Judged and updated by the copy rule.
    bool Execute() override;
    bool ChangesDesign() const override { return true; }
};

class QORDESIGN_EXPORT TQorDesignEditPaste : public TQorDesignEditAction
{
    Q_OBJECT

public:
    explicit TQorDesignEditPaste(QObject *Owner = nullptr);
    bool Execute() override;
};

// Selects every control of the stage; leaves the design clean.
class QORDESIGN_EXPORT TQorDesignEditSelAll : public TQorDesignEditAction
{
    Q_OBJECT

public:
    explicit TQorDesignEditSelAll(QObject *Owner = nullptr);
    bool Execute() override;
    bool ChangesDesign() const override { return false; }
};

// Deletes the selection (never the stage).
class QORDESIGN_EXPORT TQorDesignEditDelSel : public TQorDesignEditAction
{
    Q_OBJECT

public:
    explicit TQorDesignEditDelSel(QObject *Owner = nullptr);
    bool JudgeEnabled() const override;
    bool Execute() override;
};

class QORDESIGN_EXPORT TQorDesignSelCtrlBringToFront : public TQorDesignSelCtrlAction
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit TQorDesignSelCtrlBringToFront(QObject *Owner = nullptr);
    bool Execute() override;
};

class QORDESIGN_EXPORT TQorDesignSelCtrlSendToBack : public TQorDesignSelCtrlAction
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit TQorDesignSelCtrlSendToBack(QObject *Owner = nullptr);
    bool Execute() override;
};

// Mirrors the children of each selected control.
class QORDESIGN_EXPORT TQorDesignSelCtrlFlipSelChildren : public TQorDesignSelCtrlAction
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit TQorDesignSelCtrlFlipSelChildren(QObject *Owner = nullptr);
    bool Execute() override;
};

// Mirrors the children of the stage.
class QORDESIGN_EXPORT TQorDesignSelCtrlFlipAllChildren : public TQorDesignSelCtrlAction
{
    Q_OBJECT

public:
    Q_INVOKABLE explicit TQorDesignSelCtrlFlipAllChildren(QObject *Owner = nullptr);
    bool Execute() override;
};

// Asks how to align in the align dialog.
class QORDESIGN_EXPORT TQorDesignSelCtrlPositionAlign : public TQorDesignSelCtrlAction
{
    Q_OBJECT

public:
    explicit TQorDesignSelCtrlPositionAlign(QObject *Owner = nullptr);
    bool Execute() override;
};

// Asks for the sizes in the size dialog.
class QORDESIGN_EXPORT TQorDesignSelCtrlPositionSize : public TQorDesignSelCtrlAction
{
    Q_OBJECT

public:
    explicit TQorDesignSelCtrlPositionSize(QObject *Owner = nullptr);
    bool Execute() override;
};

// Asks for the factor in the scale dialog.
class QORDESIGN_EXPORT TQorDesignSelCtrlPositionScale : public TQorDesignSelCtrlAction
{
    Q_OBJECT

public:
    explicit TQorDesignSelCtrlPositionScale(QObject *Owner = nullptr);
    bool Execute() override;
};

// Undoes the last step of the center's history ("Undo Delete"); enabled
// while there is one.
class QORDESIGN_EXPORT TQorDesignEditUndo : public TQorDesignEditAction
{
    Q_OBJECT

public:
    explicit TQorDesignEditUndo(QObject *Owner = nullptr);
    bool JudgeEnabled() const override;
    bool Update() override;
    bool Execute() override;
    bool ChangesDesign() const override { return false; }
};

// Redoes the step undone last; enabled while there is one.
class QORDESIGN_EXPORT TQorDesignEditRedo : public TQorDesignEditAction
{
    Q_OBJECT

public:
    explicit TQorDesignEditRedo(QObject *Owner = nullptr);
    bool JudgeEnabled() const override;
    bool Update() override;
    bool Execute() override;
    bool ChangesDesign() const override { return false; }
};
