// SPDX-License-Identifier: MIT
// The fuzz targets over every reader of outside data (component stream,
// its text form, clipboard records, Qt Designer's text, the dictionary
// file, the dictionary tool's CSV and XML sources), each one function that libFuzzer drives in the fuzz build and the
// regression replay drives in the test suite.
#pragma once

#include <QList>

#include <cstddef>
#include <cstdint>

using QorFuzzFunction = int (*)(const uint8_t *Data, size_t Size);

struct QorFuzzTarget
{
    const char *name;
    QorFuzzFunction run;
    // Inputs longer than this are not worth the time of one run; libFuzzer
    // gets it as -max_len and the replay cuts inputs to it the same way.
    size_t maxLength;
};

int QorFuzzStream(const uint8_t *Data, size_t Size);
int QorFuzzStreamText(const uint8_t *Data, size_t Size);
int QorFuzzClipboard(const uint8_t *Data, size_t Size);
int QorFuzzDesignerText(const uint8_t *Data, size_t Size);
int QorFuzzDictionary(const uint8_t *Data, size_t Size);
int QorFuzzDictCsv(const uint8_t *Data, size_t Size);
int QorFuzzDictXml(const uint8_t *Data, size_t Size);

// Every target, by the name of its corpus folder.
const QList<QorFuzzTarget> &QorFuzzTargets();
