// SPDX-License-Identifier: MIT
#include "console/qordesignintfimpls.h"

#include "designer/qormanager.h"

IQorFormDesigner::~IQorFormDesigner() = default;

QObject *TQorFormDesigner::GetSelectedComponent() const
{
    if (!m_designManager || m_designManager->SelectedComps().Count() != 1)
        return nullptr;
    return m_designManager->SelectedComps().First();
}

void TQorFormDesigner::StartControlEmbedEdit()
{
    if (GetSelectedComponent())
        m_designManager->StartEmbedEdit();
}

void TQorFormDesigner::EndControlEmbedEdit()
{
    if (m_designManager)
        m_designManager->EndEmbedEdit();
}
