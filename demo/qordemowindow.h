// SPDX-License-Identifier: MIT
// The demo designer's main window: the design stage in the middle, the
// palette and the component tree on the left, the inspector on the right.
#pragma once

#include "console/qorcustomization.h"
#include "designer/qordesignintf.h"

#include <QMainWindow>

#include <memory>

class QAction;
class QCheckBox;
class QMenu;
class QToolBar;
class QTranslator;
class TQorDefDesignCompPopupMenu;
class TQorDesignAction;
class TQorDesignDocument;
class TQorCustomizationRecorder;
class TQorCustomizationStore;
class QTabBar;
class TQorClassesImageList;
class TQorCompPalleteTab;
class TQorCompPalleteToolBar;
class TQorCompTreeView;
class TQorDesignClassList;
class TQorDesignCenter;
class TQorDesignManager;
class TQorObjInspector;
class QWidget;

class QorDemoWindow : public QMainWindow
{
    Q_OBJECT

public:
    // What the stage holds at the start: the sample customer form, or
    // nothing at all (a stage to be filled, as the benchmark fills it).
    enum class StartStage { Sample, Empty };

    explicit QorDemoWindow(QWidget *parent = nullptr, StartStage start = StartStage::Sample);
    ~QorDemoWindow() override;

    // The form the user designs.
    QWidget *stage() const { return m_stage; }
    // The stage's components; F2 renames the current one, Alt+Up and
    // Alt+Down move the selected ones in their owner's order.
    TQorCompTreeView *componentTree() const { return m_tree; }
    // The palette: the pages as tabs above the tool bar of their classes.
    TQorCompPalleteToolBar *paletteBar() const { return m_paletteBar; }
    TQorCompPalleteTab *paletteTabs() const { return m_paletteTabs; }
    // The classes the palette offers, on their pages, with their images.
    TQorDesignClassList *classList() const { return m_classes.get(); }
    // Rename, Move Up and Move Down of the Edit menu.
    QAction *renameAction() const { return m_renameAction; }
    TQorDesignAction *undoAction() const { return m_undoAction; }
    TQorDesignAction *redoAction() const { return m_redoAction; }
    QAction *moveUpAction() const { return m_moveUpAction; }
    QAction *moveDownAction() const { return m_moveDownAction; }
    // The object inspector: the properties (or events) of the components
    // chosen in the tree or on the stage.
    TQorObjInspector *inspector() const { return m_inspector; }
    // "Properties" and "Events" above the inspector.
    QTabBar *inspectorSwitch() const { return m_inspectorSwitch; }
    // Shows the inspector's names and values and the palette's classes
    // with the Chinese dictionary's labels.
    QCheckBox *chineseSwitch() const { return m_chineseSwitch; }
    void setChinese(bool On);
    // The Chinese dictionary the demo uses; "" when none is found.
    static QString dictionaryFile();
    // The design manager of the stage and the switch that turns designing
    // on and off.
    TQorDesignManager *designManager() const { return m_manager; }
    // The design center that joins the stage, the tree, the palette and
    // the inspector.
    TQorDesignCenter *designCenter() const { return m_center; }
    QAction *designAction() const { return m_designAction; }
    // The design commands of the menus and the tool bar: the library's
    // actions, in the order copy, cut, paste, select all, delete, bring to
    // front, send to back, flip selected, flip all, align, size, scale.
    QList<TQorDesignAction *> designActions() const { return m_designActions; }
    // What a right click on the stage or the tree opens.
    TQorDefDesignCompPopupMenu *designPopupMenu() const { return m_popupMenu; }
    QToolBar *designToolBar() const { return m_tools; }
    // Grows the stage to hold every control on it (it never shrinks).
    void fitStageToControls();

    // The design as a document (File menu): its file, its unsaved-changes
    // mark in the title, its recovery copy.
    TQorDesignDocument *document() const;
    QMenu *fileMenu() const { return m_fileMenu; }
    // Opens a design file; false (after telling the user) when it fails.
    bool openFile(const QString &FileName);
    // Asks whether to keep unsaved work first: true when the work may go
    // (saved or discarded), false when the user cancelled. Changes to the
    // customized sample form are kept without asking.
    bool maybeKeepWork();
    // Offers the newest recovery copy found; true when it was loaded.
    bool offerRecovery();
    // The window's place and docks as the last run left them.
    void restoreLayout();
    QStringList recentFiles() const;

    // The user's customization of the sample form, kept as a delta over the
    // form of the version the demo plays: recorded while the user designs,
    // stored per user, form and version in StoreFile (the settings folder
    // when empty) when the window goes or the version changes, and applied
    // when a version of the form is built. Off until this is called: the
    // window then rebuilds the sample form as Version and applies what is
    // stored. False (after telling the user) when the store cannot be opened.
    bool startCustomizing(int Version, const QString &StoreFile = QString());
    // The version of the sample form the window shows (0: not customizing).
    int formVersion() const { return m_formVersion; }
    TQorCustomizationRecorder *customizationRecorder() const { return m_recorder; }
    // Keeps the user's changes in the store; false when that failed.
    bool keepCustomization();
    // What the last applied customization could not keep.
    QList<TQorCustomizationIssue> customizationIssues() const { return m_customizationIssues; }

Q_SIGNALS:
    // The component tree was built anew from the stage.
    void componentTreeRebuilt();

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QWidget *createStage();
    // The sample customer form, as the given version of the program builds
    // it, onto an empty stage.
    void buildSampleForm(QWidget *Stage, int Version);
    void createCustomizeMenu();
    void switchFormVersion(int Version);
    void createFileMenu();
    void updateTitle();
    void newDesign();
    void openDesign();
    void saveDesign();
    void saveDesignAs();
    void importUi();
    void exportUi();
    void quit();
    void rememberFile(const QString &FileName);
    QString lastFolder() const;
    void fillRecentMenu();
    void fillClassList();
    void createMenus(QWidget *StageArea);
    // The window's own texts, in the language of the installed translators.
    void retranslate();

    StartStage m_start = StartStage::Sample;
    int m_formVersion = 0;
    TQorCustomizationRecorder *m_recorder = nullptr;
    std::unique_ptr<TQorCustomizationStore> m_customizations;
    QList<TQorCustomizationIssue> m_customizationIssues;
    QMenu *m_customizeMenu = nullptr;
    QAction *m_version1Action = nullptr;
    QAction *m_version2Action = nullptr;
    QAction *m_resetAction = nullptr;
    QAction *m_changesAction = nullptr;
    QWidget *m_stage = nullptr;
    std::unique_ptr<TQorClassesImageList> m_images;
    std::unique_ptr<TQorDesignClassList> m_classes;
    int m_deselectorImage = -1;
    TQorCompPalleteToolBar *m_paletteBar = nullptr;
    TQorCompPalleteTab *m_paletteTabs = nullptr;
    QWidget *m_paletteHolder = nullptr;
    TQorCompTreeView *m_tree = nullptr;
    QAction *m_renameAction = nullptr;
    TQorDesignAction *m_undoAction = nullptr;
    TQorDesignDocument *m_document = nullptr;
    QMenu *m_fileMenu = nullptr;
    QMenu *m_recentMenu = nullptr;
    QAction *m_newAction = nullptr;
    QAction *m_openAction = nullptr;
    QAction *m_saveAction = nullptr;
    QAction *m_saveAsAction = nullptr;
    QAction *m_importAction = nullptr;
    QAction *m_exportAction = nullptr;
    QAction *m_quitAction = nullptr;
    TQorDesignAction *m_redoAction = nullptr;
    QAction *m_moveUpAction = nullptr;
    QAction *m_moveDownAction = nullptr;
    TQorObjInspector *m_inspector = nullptr;
    QTabBar *m_inspectorSwitch = nullptr;
    QCheckBox *m_chineseSwitch = nullptr;
    TQorDesignManager *m_manager = nullptr;
    QAction *m_designAction = nullptr;
    TQorDesignCenter *m_center = nullptr;
    QToolBar *m_tools = nullptr;
    QList<TQorDesignAction *> m_designActions;
    TQorDefDesignCompPopupMenu *m_popupMenu = nullptr;
    QMenu *m_arrangeMenu = nullptr;
    QMenu *m_flipMenu = nullptr;
    QMenu *m_componentMenu = nullptr;
    QTranslator *m_demoTranslator = nullptr;
};
