// SPDX-License-Identifier: MIT
#include "qorfuzz.h"

// Inputs past 16 KiB add time and little else: the seeds are a few KiB.
const QList<QorFuzzTarget> &QorFuzzTargets()
{
    static const QList<QorFuzzTarget> targets{
        {"stream", QorFuzzStream, 16384},
        {"streamtext", QorFuzzStreamText, 16384},
        {"clipboard", QorFuzzClipboard, 16384},
        {"designertext", QorFuzzDesignerText, 16384},
        {"dictionary", QorFuzzDictionary, 16384},
        {"dictcsv", QorFuzzDictCsv, 16384},
        {"dictxml", QorFuzzDictXml, 16384},
    };
    return targets;
}
