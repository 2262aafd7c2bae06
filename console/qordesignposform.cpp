// SPDX-License-Identifier: MIT
#include "console/qordesignposform_p.h"

#include <QFont>

void QorSetUpArrangeDialog(QDialog *Dialog)
{
    // A form file holds a font in points; the dialog's is given in pixels.
    QFont font(QStringLiteral("Arial"));
    font.setPixelSize(11);
    Dialog->setFont(font);
    Dialog->setFixedSize(Dialog->size());
}
