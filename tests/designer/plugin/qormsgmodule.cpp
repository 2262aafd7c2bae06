// SPDX-License-Identifier: MIT
// A module that uses the design messages, as a host application's plugin
// would; the design message test loads two of them.
#include "designer/qordesigner_p.h"
#include "designer/qordesigner.h"

#include <QString>

extern "C" Q_DECL_EXPORT quint32 qorModuleMessageNumber(const char *name)
{
    return QorRegisterWindowMessage(QString::fromUtf8(name));
}

// The twelve numbers as this module sees the library's variables.
extern "C" Q_DECL_EXPORT void qorModuleMessageVariables(quint32 *out)
{
    const quint32 numbers[12] = {QORM_SizerMoved, QORM_SizerMoveEnd, QORM_SizerMoveStart,
                                 QORM_ControlSelected, QORM_ControlSelectedAtPos,
                                 QORN_SelCtrlChanged, QORN_CtrlMoved, QORN_SelCtrlMoved,
                                 QORN_StartInlineEdit, QORN_EndInlineEdit, QORN_DynCompCreated,
                                 QORN_DelSelCtrls};
    for (int i = 0; i < 12; ++i)
        out[i] = numbers[i];
}

extern "C" Q_DECL_EXPORT const char *qorModuleName()
{
    return QOR_MODULE_NAME;
}
