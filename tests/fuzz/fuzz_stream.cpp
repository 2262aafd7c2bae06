// SPDX-License-Identifier: MIT
// The binary component stream: read onto a form, and through the text form
// and back.
#include "qorfuzz.h"
#include "qorfuzzfixture_p.h"

#include "foundation/qorcomponents.h"
#include "foundation/qorerror.h"
#include "foundation/qorstream.h"

#include <QBuffer>
#include <QLabel>
#include <QWidget>

namespace {

// Runs Read; false when it threw one of the library's errors, which is
// the reader's ordinary answer to damaged input.
template<typename Read>
bool readSucceeds(Read &&ReadIt)
{
    try {
        ReadIt();
        return true;
    } catch (const EQorError &) {
        return false;
    }
}

void requireOutcome(bool Read, const QorFormSnapshot &Before, QWidget *Form, const char *Where)
{
    if (Read)
        QorFuzzCheckAddedAndRemove(Before, Form, Form, Where);
    else
        QorFuzzRequireUnchanged(Before, QorSnapshot(Form, Form), Where);
}

} // namespace

void QorFuzzReadOntoForm(const QByteArray &Records)
{
    QWidget *form = QorFuzzForm();
    const QorFormSnapshot before = QorSnapshot(form, form);

    bool read = readSucceeds([&] {
        QBuffer buffer;
        buffer.setData(Records);
        buffer.open(QIODevice::ReadOnly);
        ReadComponents(buffer, form, form);
    });
    requireOutcome(read, before, form, "ReadComponents");

    read = readSucceeds([&] { ComponentFromBytes(Records, nullptr, form, form); });
    requireOutcome(read, before, form, "ComponentFromBytes");

    // Into a widget the form already has, which has a child of its own: a
    // failed read leaves both as they were.
    auto *instance = new QWidget(form);
    instance->setObjectName(QStringLiteral("Instance1"));
    instance->setGeometry(250, 60, 120, 90);
    auto *inner = new QLabel(QStringLiteral("Inner"), instance);
    inner->setObjectName(QStringLiteral("InstanceLabel1"));
    InsertComponent(form, instance);
    InsertComponent(form, inner);
    const QorFormSnapshot withInstance = QorSnapshot(form, form);
    read = readSucceeds([&] { ComponentFromBytes(Records, instance, form, nullptr); });
    if (!read)
        QorFuzzRequireUnchanged(withInstance, QorSnapshot(form, form), "ComponentFromBytes into a widget");
    // The widget goes with whatever the read gave it.
    QorFuzzCheckAddedAndRemove(before, form, form, "ComponentFromBytes into a widget");
}

int QorFuzzStream(const uint8_t *Data, size_t Size)
{
    const QByteArray bytes = QorFuzzBytes(Data, Size);
    QorFuzzReadOntoForm(bytes);

    // Records that decode have a text form, and it reads back into the
    // same bytes. Names and texts travel as UTF-8: a stream holding bytes
    // that are not UTF-8 comes back with the replacement character in
    // their place, and only from then on exactly.
    QString text;
    try {
        text = ComponentBinaryToText(bytes);
    } catch (const EQorError &) {
        return 0;
    }
    QByteArray back;
    try {
        back = ComponentTextToBinary(text);
    } catch (const EQorError &e) {
        QorFuzzRequire(false, QStringLiteral("the text of readable records does not read back: %1").arg(e.message()));
    }
    if (!text.contains(QChar(QChar::ReplacementCharacter)))
        QorFuzzRequire(back == bytes, QStringLiteral("records read back from their text differ from the records"));
    QString again;
    try {
        again = ComponentBinaryToText(back);
    } catch (const EQorError &e) {
        QorFuzzRequire(false, QStringLiteral("records made from a text do not decode: %1").arg(e.message()));
    }
    QorFuzzRequire(again == text, QStringLiteral("the text form changes on a second trip through the records"));
    return 0;
}

int QorFuzzStreamText(const uint8_t *Data, size_t Size)
{
    const QString text = QString::fromUtf8(QorFuzzBytes(Data, Size));
    QByteArray records;
    try {
        records = ComponentTextToBinary(text);
    } catch (const EQorError &) {
        return 0;
    }
    // What the writer made from a text decodes, and its text makes the
    // same records again.
    QByteArray again;
    try {
        again = ComponentTextToBinary(ComponentBinaryToText(records));
    } catch (const EQorError &e) {
        QorFuzzRequire(false, QStringLiteral("records made from a text do not go through the text again: %1").arg(e.message()));
    }
    QorFuzzRequire(again == records, QStringLiteral("records change on a trip through their text"));
    // The text form is the easy way for the fuzzer into the component
    // reader: values of every type, deep trees, names that clash.
    QorFuzzReadOntoForm(records);
    return 0;
}
