// SPDX-License-Identifier: MIT
// The dictionary file the translation manager opens: any bytes as the
// SQLite file, then the look-ups the inspector and the palette make.
#include "qorfuzz.h"
#include "qorfuzzfixture_p.h"

#include "foundation/qorerror.h"
#include "translation/qortranscache_p.h"
#include "translation/qortransutils.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMetaProperty>
#include <QPushButton>
#include <QTemporaryDir>

#include <functional>
#include <memory>

namespace {

// One folder for the run, in memory where the system has it: each input
// is written as a file there.
QString dictionaryFile()
{
    static std::unique_ptr<QTemporaryDir> dir;
    if (!dir) {
        const QString shm = QStringLiteral("/dev/shm");
        dir = std::make_unique<QTemporaryDir>(QDir(shm).exists() ? shm + QStringLiteral("/qorfuzz-XXXXXX")
                                                                 : QDir::tempPath() + QStringLiteral("/qorfuzz-XXXXXX"));
    }
    return dir->filePath(QStringLiteral("dictionary.sqlite"));
}

PTypeInfo propertyType(const QMetaObject &Class, const char *Name)
{
    return TypeInfoOfProperty(Class.property(Class.indexOfProperty(Name)));
}

// A look-up from identifier to label never fails, and asking again (now
// answered by the cache) gives the same label.
void requireStableLabel(const std::function<QString()> &LookUp, const char *What)
{
    const QString first = LookUp();
    const QString second = LookUp();
    QorFuzzRequire(first == second,
                   QStringLiteral("%1 gave \"%2\", then \"%3\"").arg(QLatin1String(What), first, second));
}

// The label direction may fail with the library's error on a damaged
// dictionary; that is its answer.
void labelToIdent(const std::function<QString()> &LookUp)
{
    try {
        LookUp();
    } catch (const EQorError &) {
    }
}

} // namespace

int QorFuzzDictionary(const uint8_t *Data, size_t Size)
{
    const QString path = dictionaryFile();
    {
        QFile file(path);
        QorFuzzRequire(file.open(QIODevice::WriteOnly | QIODevice::Truncate)
                           && file.write(reinterpret_cast<const char *>(Data), qint64(Size)) == qint64(Size),
                       QStringLiteral("the dictionary file cannot be written"));
    }
    // Answers of an earlier input must not hide this one's.
    TQorTransCache *cache = QorTransCache();
    while (cache->Count() > 0)
        cache->RemoveItem(cache->Count() - 1);

    TQorTransMan manager(path);
    if (!manager.OpenDb()) {
        // Most inputs are no dictionary. The manager tries to open the file
        // again on every look-up, so one look-up is what such a file gets:
        // the identifier passes through.
        QorFuzzRequire(manager.ClassToTransedName(&QPushButton::staticMetaObject) == QLatin1String("QPushButton"),
                       QStringLiteral("a dictionary that does not open translates"));
        return 0;
    }
    const QMetaObject &label = QLabel::staticMetaObject;
    requireStableLabel([&] { return manager.ClassToTransedName(&QPushButton::staticMetaObject); }, "a class label");
    requireStableLabel([&] { return manager.IdentToLabel(trPropName, propertyType(QWidget::staticMetaObject, "geometry"), QStringLiteral("geometry"), nullptr); },
                       "a property name");
    requireStableLabel([&] { return manager.IdentToLabel(ttkEvent, QString(), QStringLiteral("clicked"), nullptr); }, "an event");
    requireStableLabel([&] { return manager.IdentToLabel(trPropValue, propertyType(label, "alignment"), QStringLiteral("[AlignLeft,AlignTop]"), nullptr); },
                       "a set's value");
    requireStableLabel([&] { return manager.IdentToLabel(trPropValue, propertyType(label, "textFormat"), QStringLiteral("RichText"), nullptr); },
                       "an enumeration's value");
    requireStableLabel([&] { return manager.IdentToLabel(trPropValue, propertyType(label, "font"), QStringLiteral("(Sans,9)"), nullptr); },
                       "a value with fields");
    labelToIdent([&] { return manager.LabelToIdent(trPropName, propertyType(QWidget::staticMetaObject, "geometry"), QStringLiteral("几何"), nullptr); });
    labelToIdent([&] { return manager.LabelToIdent(ttkEvent, QString(), QStringLiteral("单击"), nullptr); });
    labelToIdent([&] { return manager.LabelToIdent(trPropValue, propertyType(label, "alignment"), QStringLiteral("[左对齐,顶端对齐]"), nullptr); });
    return 0;
}
