// SPDX-License-Identifier: MIT
// The class images and the tree's glyphs compiled into the library: one for
// every class the registry offers and every component of the library, each
// sharp at device pixel ratio 2, found for subclasses through their
// ancestors, none for names that have none.
#include "browsing/qorcomptreeview.h"
#include "browsing/qorimages.h"
#include "browsing/qorpallete.h"
#include "console/qordesignconsole.h"
#include "console/qordesignpopupmenu.h"
#include "designer/qormanager.h"
#include "foundation/qorclasses.h"
#include "inspector/qorinspector.h"

#include <QAbstractButton>
#include <QDateEdit>
#include <QPushButton>
#include <QSet>
#include <QTest>
#include <QTimer>

// A button of the application's own: it has no image but its ancestor's.
class TAppButton : public QPushButton
{
    Q_OBJECT

public:
    using QPushButton::QPushButton;
};

// A non-visual class of the application's own, of no imaged ancestry.
class TAppService : public QObject
{
    Q_OBJECT
};

namespace {

const QString classesDir = QStringLiteral(":/qordesign/images/classes/");
const QString glyphsDir = QStringLiteral(":/qordesign/images/glyphs/");

QImage normalized(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// The picture stored in the library's resources.
QImage storedImage(const QString &file)
{
    const QImage image(file);
    return image.isNull() ? image : normalized(image);
}

QImage iconImage(const QIcon &icon, int side, qreal ratio)
{
    return normalized(icon.pixmap(QSize(side, side), ratio).toImage());
}

const QStringList libraryClasses = {
    QStringLiteral("TQorDesignCenter"),       QStringLiteral("TQorCompTreeView"),
    QStringLiteral("TQorDesignManager"),      QStringLiteral("TQorDesignCompPopupMenu"),
    QStringLiteral("TQorDesignCompPopupMenuEx"), QStringLiteral("TQorDefDesignCompPopupMenu"),
    QStringLiteral("TQorObjInspector"),       QStringLiteral("TQorClassesImageList"),
    QStringLiteral("TQorCompPalleteToolBar"), QStringLiteral("TQorCompPalleteTab")};

const QStringList glyphNames = {QStringLiteral("GlyphDefEmpty"), QStringLiteral("GlyphDefComp"),
                                QStringLiteral("GlyphDefControl"), QStringLiteral("GlyphDefForm")};

// The stock classes the registry offers: every registered class that is
// not one of the library's own objects.
QStringList registeredStockClasses()
{
    QStringList names;
    for (const QMetaObject *mo : RegisteredClasses())
        if (mo->indexOfClassInfo("QorDesignObject") < 0)
            names.append(QString::fromLatin1(mo->className()));
    return names;
}

} // namespace

class tst_QorImages : public QObject
{
    Q_OBJECT

private:
    // One data row per name, named after it.
    static void addNameRows(const QStringList &names)
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : names)
            QTest::newRow(qPrintable(name)) << name;
    }

    // Checks an icon against its two stored files: the 1x picture at ratio
    // 1, the @2x picture (not an enlargement) at ratio 2.
    void checkSharpAtBothRatios(const QIcon &icon, const QString &dir, const QString &name, int side)
    {
        QVERIFY2(!icon.isNull(), qPrintable(name));
        const QImage one = storedImage(dir + name + QStringLiteral(".png"));
        const QImage two = storedImage(dir + name + QStringLiteral("@2x.png"));
        QCOMPARE(one.size(), QSize(side, side));
        QCOMPARE(two.size(), QSize(side * 2, side * 2));

        const QPixmap normal = icon.pixmap(QSize(side, side), 1.0);
        QCOMPARE(normal.size(), QSize(side, side));
        QCOMPARE(normal.devicePixelRatio(), 1.0);
        QVERIFY(iconImage(icon, side, 1.0) == one);

        const QPixmap sharp = icon.pixmap(QSize(side, side), 2.0);
        QCOMPARE(sharp.devicePixelRatio(), 2.0);
        QCOMPARE(sharp.size(), QSize(side * 2, side * 2));
        QCOMPARE(sharp.deviceIndependentSize(), QSizeF(side, side));
        QVERIFY(iconImage(icon, side, 2.0) == two);
    }

    // Some pixels are opaque and they are of more than one colour.
    void checkDrawn(const QImage &image)
    {
        int opaque = 0;
        QSet<QRgb> colours;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                if (qAlpha(pixel) == 255) {
                    ++opaque;
                    colours.insert(pixel);
                }
            }
        QVERIFY2(opaque >= image.width() * image.height() / 10, qPrintable(QString::number(opaque)));
        QVERIFY2(colours.size() > 1, qPrintable(QString::number(colours.size())));
    }

private Q_SLOTS:
    // Edge cases
    void aNullClassHasNoImage() { QVERIFY(QorClassImage(static_cast<const QMetaObject *>(nullptr)).isNull()); }

    void aNameWithoutImageGivesANullIcon()
    {
        QVERIFY(QorClassImage(QString()).isNull());
        QVERIFY(QorClassImage(QStringLiteral("QNoSuchWidget")).isNull());
        QVERIFY(QorClassImage(QStringLiteral("TAppButton")).isNull());
        // Exact names only: no folding of case, no file names.
        QVERIFY(QorClassImage(QStringLiteral("qpushbutton")).isNull());
        QVERIFY(QorClassImage(QStringLiteral("QPushButton@2x")).isNull());
        QVERIFY(QorClassImage(QStringLiteral("QPushButton.png")).isNull());
        // Class images and glyphs are apart.
        QVERIFY(QorClassImage(QStringLiteral("GlyphDefForm")).isNull());
        QVERIFY(QorGlyph(QStringLiteral("QPushButton")).isNull());
    }

    void anUnknownGlyphIsNull()
    {
        QVERIFY(QorGlyph(QString()).isNull());
        QVERIFY(QorGlyph(QStringLiteral("GlyphDefNothing")).isNull());
        QVERIFY(QorGlyph(QStringLiteral("glyphdefform")).isNull());
        QVERIFY(QorGlyph(QStringLiteral("GlyphDefForm@2x")).isNull());
    }

    void aClassOfNoImagedAncestryHasNoImage()
    {
        QVERIFY(QorClassImage(&QObject::staticMetaObject).isNull());
        QVERIFY(QorClassImage(&TAppService::staticMetaObject).isNull());
    }

    void aSubclassShowsItsNearestAncestorsImage()
    {
        const QImage button = storedImage(classesDir + QStringLiteral("QPushButton.png"));
        QVERIFY(iconImage(QorClassImage(&TAppButton::staticMetaObject), 24, 1.0) == button);
        // A date edit is a date-time edit with an image of its own.
        const QImage dateEdit = storedImage(classesDir + QStringLiteral("QDateEdit.png"));
        QVERIFY(dateEdit != storedImage(classesDir + QStringLiteral("QDateTimeEdit.png")));
        QVERIFY(iconImage(QorClassImage(&QDateEdit::staticMetaObject), 24, 1.0) == dateEdit);
        // An abstract button has none: it shows the widget.
        QVERIFY(iconImage(QorClassImage(&QAbstractButton::staticMetaObject), 24, 1.0)
                == storedImage(classesDir + QStringLiteral("QWidget.png")));
    }

    void aSubclassIsSharpAtRatioTwoToo()
    {
        checkSharpAtBothRatios(QorClassImage(&TAppButton::staticMetaObject), classesDir, QStringLiteral("QPushButton"),
                               24);
    }

    // Other rules
    void everyRegisteredStockClassHasAnImage_data()
    {
        const QStringList names = registeredStockClasses();
        QVERIFY(names.contains(QStringLiteral("QPushButton")));
        QVERIFY(names.contains(QStringLiteral("QTimer")));
        addNameRows(names);
    }

    void everyRegisteredStockClassHasAnImage()
    {
        QFETCH(QString, name);
        const QMetaObject *mo = GetClass(name);
        QVERIFY(mo);
        // Its very own, not an ancestor's.
        QVERIFY(!QorClassImage(name).isNull());
        QVERIFY(iconImage(QorClassImage(mo), 24, 1.0) == storedImage(classesDir + name + QStringLiteral(".png")));
        checkSharpAtBothRatios(QorClassImage(mo), classesDir, name, 24);
    }

    void theLibrarysComponentsHaveImages_data() { addNameRows(libraryClasses); }

    void theLibrarysComponentsHaveImages()
    {
        QFETCH(QString, name);
        checkSharpAtBothRatios(QorClassImage(name), classesDir, name, 24);
    }

    void theImagesAreFoundByTheLibrarysClasses()
    {
        // The names are those of the classes themselves.
        const QMetaObject *classes[] = {&TQorDesignCenter::staticMetaObject,
                                        &TQorCompTreeView::staticMetaObject,
                                        &TQorDesignManager::staticMetaObject,
                                        &TQorDesignCompPopupMenu::staticMetaObject,
                                        &TQorDesignCompPopupMenuEx::staticMetaObject,
                                        &TQorDefDesignCompPopupMenu::staticMetaObject,
                                        &TQorObjInspector::staticMetaObject,
                                        &TQorCompPalleteToolBar::staticMetaObject,
                                        &TQorCompPalleteTab::staticMetaObject};
        for (const QMetaObject *mo : classes) {
            const QString name = QString::fromLatin1(mo->className());
            QVERIFY2(libraryClasses.contains(name), qPrintable(name));
            QVERIFY2(iconImage(QorClassImage(mo), 24, 1.0) == storedImage(classesDir + name + QStringLiteral(".png")),
                     qPrintable(name));
        }
    }

    void theFourGlyphsExist_data() { addNameRows(glyphNames); }

    void theFourGlyphsExist()
    {
        QFETCH(QString, name);
        checkSharpAtBothRatios(QorGlyph(name), glyphsDir, name, 16);
        checkDrawn(storedImage(glyphsDir + name + QStringLiteral(".png")));
        checkDrawn(storedImage(glyphsDir + name + QStringLiteral("@2x.png")));
    }

    void thePalettesPointerExists()
    {
        const QString dir = QStringLiteral(":/qordesign/images/palette/");
        checkSharpAtBothRatios(QorPaletteImage(QStringLiteral("Deselector")), dir, QStringLiteral("Deselector"), 24);
        checkDrawn(storedImage(dir + QStringLiteral("Deselector.png")));
        QVERIFY(QorPaletteImage(QStringLiteral("deselector")).isNull());
        QVERIFY(QorPaletteImage(QStringLiteral("GlyphDefForm")).isNull());
    }

    void theNamesAreTheImagedClassesSorted()
    {
        const QStringList names = QorClassImageNames();
        QStringList expected = registeredStockClasses() + libraryClasses;
        expected.sort();
        QCOMPARE(names, expected);
        for (const QString &name : names)
            QVERIFY2(!QorClassImage(name).isNull(), qPrintable(name));
    }

    void everyImageIsDrawnAndNoTwoAreAlike()
    {
        QHash<QByteArray, QString> seen;
        const QStringList names = QorClassImageNames() + glyphNames;
        for (const QString &name : names) {
            const QString dir = glyphNames.contains(name) ? glyphsDir : classesDir;
            for (const QString &suffix : {QStringLiteral(".png"), QStringLiteral("@2x.png")}) {
                const QImage image = storedImage(dir + name + suffix);
                QVERIFY2(!image.isNull(), qPrintable(name + suffix));
                checkDrawn(image);
                const QByteArray bits(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
                QVERIFY2(!seen.contains(bits), qPrintable(name + suffix + QStringLiteral(" = ") + seen.value(bits)));
                seen.insert(bits, name + suffix);
            }
        }
    }

    void theTwoRatiosShowTheSamePicture()
    {
        // The @2x file is the same drawing: scaled down it comes close to
        // the 1x file, pixel by pixel.
        const QStringList names = QorClassImageNames();
        for (const QString &name : names) {
            const QImage one = storedImage(classesDir + name + QStringLiteral(".png"));
            const QImage halved = normalized(storedImage(classesDir + name + QStringLiteral("@2x.png"))
                                                 .scaled(one.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
            qint64 difference = 0;
            for (int y = 0; y < one.height(); ++y)
                for (int x = 0; x < one.width(); ++x) {
                    const QRgb a = one.pixel(x, y);
                    const QRgb b = halved.pixel(x, y);
                    difference += qAbs(qRed(a) - qRed(b)) + qAbs(qGreen(a) - qGreen(b)) + qAbs(qBlue(a) - qBlue(b))
                                  + qAbs(qAlpha(a) - qAlpha(b));
                }
            // Mean difference per channel under a tenth of the range.
            QVERIFY2(difference < qint64(one.width()) * one.height() * 4 * 25,
                     qPrintable(name + u' ' + QString::number(difference)));
        }
    }

    void theIconsAreMadeOnce()
    {
        // Look-ups share one icon rather than loading the files again.
        QCOMPARE(QorClassImage(QStringLiteral("QTimer")).cacheKey(), QorClassImage(&QTimer::staticMetaObject).cacheKey());
        QCOMPARE(QorGlyph(QStringLiteral("GlyphDefForm")).cacheKey(), QorGlyph(QStringLiteral("GlyphDefForm")).cacheKey());
    }
};

QTEST_MAIN(tst_QorImages)
#include "tst_qorimages.moc"
