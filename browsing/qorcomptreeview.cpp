// SPDX-License-Identifier: MIT
#include "browsing/qorcomptreeview.h"

#include "browsing/qorclassesman.h"
#include "console/qordesignconsole.h"

TQorCompTreeView::TQorCompTreeView(QWidget *Parent)
    : QTreeWidget(Parent)
{
    setHeaderHidden(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setIconSize(QSize(16, 16));
}

TQorCompTreeView::~TQorCompTreeView() = default;

void TQorCompTreeView::SetConsoleCenter(TQorDesignCenter *Center) { m_center = Center; }
void TQorCompTreeView::SetSelectedComps(const TComponentList &List) { m_selectedComps = List; }
void TQorCompTreeView::Refresh() {}
void TQorCompTreeView::SetPopupMenu(QMenu *) {}
void TQorCompTreeView::SetClassList(TQorDesignClassList *Value) { m_classList = Value; }
void TQorCompTreeView::SetRootControl(QWidget *Value) { m_rootControl = Value; }
void TQorCompTreeView::SetCompFilterStyles(TCompFilterStyles Value) { m_filter = Value; }
void TQorCompTreeView::SetShowKnownCompsOnly(bool Value) { m_showKnownCompsOnly = Value; }
void TQorCompTreeView::RefreshImageList() {}
void TQorCompTreeView::GenerateTree() {}
void TQorCompTreeView::ReSelectComps() {}
int TQorCompTreeView::GetClassIndex(const QMetaObject *) const { return -1; }
bool TQorCompTreeView::CompsIsKnown(const QObject *) const { return true; }
bool TQorCompTreeView::CheckIfOutputThisComp(QObject *) const { return true; }
QTreeWidgetItem *TQorCompTreeView::FindComponentNode(const QObject *) const { return nullptr; }
QObject *TQorCompTreeView::NodeComponent(const QTreeWidgetItem *) const { return nullptr; }
int TQorCompTreeView::NodeImageIndex(const QTreeWidgetItem *) const { return -1; }
void TQorCompTreeView::MoveSelCompIndexesUp(int) {}
void TQorCompTreeView::MoveSelCompIndexesDown(int) {}
void TQorCompTreeView::ImportImagesFrom(const TQorClassesImageList *, int) {}
