// SPDX-License-Identifier: MIT
#include "browsing/qorimages.h"

#include <QDir>
#include <QHash>
#include <QMetaObject>

namespace {

const QString imagesRoot = QStringLiteral(":/qordesign/images/");

// The icons of one folder of the resources, by base name. Built once from
// the folder's listing, so a look-up never touches the resource tree.
struct ImageFolder
{
    QHash<QString, QIcon> icons;
    QStringList names;

    ImageFolder(const QString &folder, int side)
    {
        const QString path = imagesRoot + folder + u'/';
        const QStringList files = QDir(path).entryList({QStringLiteral("*.png")}, QDir::Files, QDir::Name);
        for (const QString &file : files) {
            const QString base = file.chopped(4);
            if (base.endsWith(QLatin1String("@2x")))
                continue;
            icons.insert(base, load(path + base, side));
            names.append(base);
        }
        names.sort();
    }

    static QIcon load(const QString &pathAndBase, int side)
    {
        QIcon icon;
        // No size given: QIcon would pass it on to an @2x file it adds by
        // itself; without one it reads each file's own size.
        icon.addFile(pathAndBase + QStringLiteral(".png"));
        // QIcon looks for the @2x file itself only while the application's
        // own device pixel ratio is above 1, which it is not on most
        // screens nor under Xvfb: a window moved to a 2x screen would get an
        // enlarged picture. Both files go in, unless QIcon found it already.
        const QSize doubled(side * 2, side * 2);
        if (!icon.availableSizes().contains(doubled))
            icon.addFile(pathAndBase + QStringLiteral("@2x.png"));
        return icon;
    }
};

const ImageFolder &classImages()
{
    static const ImageFolder folder(QStringLiteral("classes"), 24);
    return folder;
}

const ImageFolder &glyphs()
{
    static const ImageFolder folder(QStringLiteral("glyphs"), 16);
    return folder;
}

const ImageFolder &paletteImages()
{
    static const ImageFolder folder(QStringLiteral("palette"), 24);
    return folder;
}

} // namespace

QIcon QorClassImage(const QMetaObject *Class)
{
    const ImageFolder &images = classImages();
    for (const QMetaObject *mo = Class; mo; mo = mo->superClass()) {
        const auto it = images.icons.constFind(QString::fromLatin1(mo->className()));
        if (it != images.icons.cend())
            return *it;
    }
    return QIcon();
}

QIcon QorClassImage(const QString &ClassName)
{
    return classImages().icons.value(ClassName);
}

QIcon QorGlyph(const QString &Name)
{
    return glyphs().icons.value(Name);
}

QIcon QorPaletteImage(const QString &Name)
{
    return paletteImages().icons.value(Name);
}

QStringList QorClassImageNames()
{
    return classImages().names;
}
