// SPDX-License-Identifier: MIT
// What the three arrange dialogs (alignment, size, scale) have in common:
// the look their forms cannot carry, and the one instance of each that the
// library keeps.
#pragma once

#include <QCoreApplication>
#include <QDialog>
#include <QPointer>

// After the form is set up: the dialog's font, and its client size fixed
// at the form's.
void QorSetUpArrangeDialog(QDialog *Dialog);

// The library's one dialog of class T, made on first use without a parent
// and kept, so that it opens with what was chosen last time. It goes with
// the application object: no widget may outlive that, nor stay behind as a
// leak when the program ends.
template<class T>
T *QorSharedArrangeDialog()
{
    static QPointer<T> dialog;
    if (!dialog) {
        dialog = new T;
        // Kept hidden between uses, not left behind by its user.
        dialog->setProperty("qorKeptByLibrary", true);
        qAddPostRoutine([] { delete dialog.data(); });
    }
    return dialog;
}
