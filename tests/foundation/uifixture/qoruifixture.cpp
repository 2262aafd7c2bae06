// SPDX-License-Identifier: MIT
// Writes the fixture form as a form file while the tests build; the form
// file test compiles what it wrote with uic.
#include "qoruifixture.h"

#include "foundation/qorerror.h"
#include "foundation/qoruifile.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: qoruifixture FILE.ui\n");
        return 2;
    }
    QWidget stage;
    buildFixtureForm(&stage);
    try {
        ExportUiFile(&stage, QString::fromLocal8Bit(argv[1]));
    } catch (const EQorError &error) {
        std::fprintf(stderr, "qoruifixture: %s\n", error.what());
        return 1;
    }
    return 0;
}
