// SPDX-License-Identifier: MIT
// The stage's whole design as the component stream's records, and the
// design put back from such records: what documents save and open, and
// what the history keeps of a change.
#pragma once

#include <QByteArray>
#include <QStringList>

class QWidget;
class TQorDesignCenter;

// The stage's record with every component it owns nested in it, and its
// owner order.
QByteArray QorDesignRecords(QWidget *Stage);

// Replaces the design on the center's stage by the one the records hold.
// Records from outside (not Trusted) are read once aside first: records
// that cannot be read throw EQorError and leave the design untouched.
// Records this program wrote itself skip that; should they still fail, the
// former components come back. Components of classes the registry does not
// know are left out and listed in Skipped. The center hears of nothing
// meanwhile: the caller refreshes it.
void QorReplaceDesign(TQorDesignCenter *Center, const QByteArray &Records, QStringList &Skipped,
                      bool Trusted = false);
