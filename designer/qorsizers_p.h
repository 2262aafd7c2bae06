// SPDX-License-Identifier: MIT
// The design manager's list of sizers, the sizer that lies behind the
// stage and resizes it, and the overlay that paints the marks of a
// multiple selection's hidden sizers.
#pragma once

#include "designer/qordesigner_p.h"
#include "designer/qorsizers.h"

#include <QHash>
#include <QPointer>

#include <memory>
#include <vector>

// The sizers of one design manager, in selection order; owns them.
class QORDESIGN_AUTOTEST_EXPORT TQorSizerList
{
public:
    explicit TQorSizerList(TQorDesignManager *Manager = nullptr);
    ~TQorSizerList();
    TQorSizerList(const TQorSizerList &) = delete;
    TQorSizerList &operator=(const TQorSizerList &) = delete;

    TQorDesignManager *DesignManager() const { return m_manager; }
    void SetDesignManager(TQorDesignManager *Manager) { m_manager = Manager; }

    int Count() const { return int(m_sizers.size()); }
    TQorSizer *Sizers(int Index) const;
    // Index of the sizer bound to Control, -1 if none (a hash look-up).
    int GetControlIndex(const QWidget *Control) const;
    TQorSizer *SizerOf(const QWidget *Control) const;

    // A new sizer for Control, made with Owner as its QObject owner
    // (Owner, not Control, decides its lifetime) and appended; -1 when
    // CheckExists and Control has a sizer already.
    int AddControl(QWidget *Control, QObject *Owner, bool CheckExists);
    int AddSizer(TQorSizer *Sizer);
    void DelSizer(int Index);
    void DelControl(const QWidget *Control);
    void DelAllUnSibling(TQorSizer *Sizer);
    void DelUnassignedSizers();
    void ClearSizer();
    // Deletes each selected control once and frees every sizer.
    void RemoveAllSizerAndCtrls();
    void BroadcastMessageToAllSizers(quint32 Msg, quintptr WParam, qintptr LParam);
    void NotifyMoved();
    void NotifySizerModified();
    void UpdateAllSizerMode();
    // Shows or hides each sizer's marks as its mode and its control's
    // visibility call for.
    void UpdateAllShapes();
    // Puts the shown sizers and the overlay back above the controls.
    void RaiseMarks();
    void RepaintAllSizers();
    void RepaintSizers();
    void SetAllEnabled(bool Value);

    // The overlay that paints the marks of hidden sizers; null until a
    // sizer needs it.
    TQorSizerOverlay *Overlay() const { return m_overlay; }
    // Frees the overlay (designing ends): the stage keeps nothing of the
    // list's.
    void ReleaseOverlay();
    // Marks a sizer's marks for repainting on the overlay.
    void InvalidateMarks(const TQorSizer *Sizer, const QRect &OldBounds);
    // The sizer last given the input focus: where keys for the selection go.
    TQorSizer *KeySizer() const;
    void SetKeySizer(TQorSizer *Sizer) { m_keySizer = Sizer; }
    // Gives the keys of the selection to the stage unless it or a shown
    // sizer has them: the sizers of a multiple selection are hidden, and
    // the design's window filter hands the stage's keys to KeySizer().
    void TakeKeyboard();

private:
    void reindex();
    void freeSizer(TQorSizer *Sizer);
    void keepKeyboard(TQorSizer *Sizer);
    void giveStageFocus();
    // Keeps a freed sizer for the next selection (or destroys it when
    // there is no overlay to keep it under).
    void retire(TQorSizer *Sizer);
    TQorSizer *takeSpare();
    void ClearSpare();
    void forgetOverlay(TQorSizerOverlay *Overlay);
    TQorSizerOverlay *overlayFor(QWidget *Parent);

    TQorDesignManager *m_manager;
    std::vector<TQorSizer *> m_sizers;
    QHash<const QWidget *, TQorSizer *> m_byControl;
    QPointer<TQorSizerOverlay> m_overlay;
    QPointer<TQorSizer> m_keySizer;
    // Delete went down alone and nothing joined it yet.
    bool m_deleteArmed = false;
    // Sizers kept for later selections: ready ones, and ones kept in this
    // turn of the event loop.
    std::vector<QPointer<TQorSizer>> m_spare;
    std::vector<QPointer<TQorSizer>> m_fresh;
    bool m_promoteQueued = false;
    // The mode every sizer has now, so that adding a sizer to a multiple
    // selection does not revisit the others.
    bool m_multi = false;

    friend class TQorSizer;
    friend class TQorSizerOverlay;
};

// The sizer of the design stage: it lies in the stage's parent behind the
// stage, so only its border and handles around the stage can be reached.
class QORDESIGN_AUTOTEST_EXPORT TQorStageSizer : public TQorSizer
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")
    Q_PROPERTY(QorDesigner::TQorStageSizerMode StageSizerMode READ StageSizerMode WRITE SetStageSizerMode)

public:
    explicit TQorStageSizer(QWidget *Parent = nullptr);

    TQorStageSizerMode StageSizerMode() const { return m_stageSizerMode; }
    void SetStageSizerMode(TQorStageSizerMode Mode) { m_stageSizerMode = Mode; }

    void BindToControl() override;
    qintptr WmNcHitTest(const QPoint &Pos) const override;
    void UpdateBounds() override;

protected:
    void PaintMarks(QPainter &Painter) const override;
    QRegion MarksRegion() const override;

private:
    TQorStageSizerMode m_stageSizerMode = ssmNormal;
};

// Paints the marks of every hidden sizer of a list in one pass; takes no
// input.
class QORDESIGN_AUTOTEST_EXPORT TQorSizerOverlay : public QWidget
{
    Q_OBJECT
    Q_CLASSINFO("QorDesignObject", "true")

public:
    TQorSizerOverlay(TQorSizerList *List, QWidget *Parent);
    ~TQorSizerOverlay() override;

    void Detach() { m_list = nullptr; }
    // Marks an area for repainting at the next turn of the event loop.
    void MarkDirty(const QRect &Rect);
    void FlushDirty();

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    TQorSizerList *m_list;
    std::vector<QRect> m_dirty;
    bool m_raiseQueued = false;
    QPointer<QWidget> m_watchedWindow;
};
