// SPDX-License-Identifier: MIT
#include "console/qordsnconst.h"

#include "console/qorlanguage_p.h"

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QPointer>
#include <QTranslator>
#include <QApplication>
#include <QWidget>

#include <memory>

#include <algorithm>
#include <iterator>

namespace {

struct Caption
{
    int id;
    const char *text;
};

// The captions by number; the texts are read by the translation tools.
constexpr Caption captions[] = {
    {QorDsnConst::SFlipChildren, QT_TRANSLATE_NOOP("QorDsnConst", "&Flip Children")},
    {QorDsnConst::SFlipAll, QT_TRANSLATE_NOOP("QorDsnConst", "&All")},
    {QorDsnConst::SFlipSelected, QT_TRANSLATE_NOOP("QorDsnConst", "&Selected")},
    {QorDsnConst::SPosition, QT_TRANSLATE_NOOP("QorDsnConst", "&Position")},
    {QorDsnConst::SPosAlign, QT_TRANSLATE_NOOP("QorDsnConst", "&Align...")},
    {QorDsnConst::SPosSize, QT_TRANSLATE_NOOP("QorDsnConst", "&Size...")},
    {QorDsnConst::SPosScale, QT_TRANSLATE_NOOP("QorDsnConst", "Scal&e...")},
    {QorDsnConst::SAttrib, QT_TRANSLATE_NOOP("QorDsnConst", "Attri&b...")},
    {QorDsnConst::SEvent, QT_TRANSLATE_NOOP("QorDsnConst", "&Event...")},
    {QorDsnConst::SImageListEditor, QT_TRANSLATE_NOOP("QorDsnConst", "Image List Editor")},
    {QorDsnConst::SImageListAdd, QT_TRANSLATE_NOOP("QorDsnConst", "Add")},
    {QorDsnConst::SImageListDivide, QT_TRANSLATE_NOOP("QorDsnConst", "Divide")},
    {QorDsnConst::SGraphicUnsupported, QT_TRANSLATE_NOOP("QorDsnConst", "Graphic Unsupported")},
    {QorDsnConst::SImageListEditorMenu, QT_TRANSLATE_NOOP("QorDsnConst", "Image List Editor...")},
    {QorDsnConst::SInvalidPropValue, QT_TRANSLATE_NOOP("QorDsnConst", "Invalid Property Value;")},
    {QorDsnConst::SEdit, QT_TRANSLATE_NOOP("QorDsnConst", "&Edit")},
    {QorDsnConst::SCopy, QT_TRANSLATE_NOOP("QorDsnConst", "&Copy")},
    {QorDsnConst::SCut, QT_TRANSLATE_NOOP("QorDsnConst", "&Cut")},
    {QorDsnConst::SPaste, QT_TRANSLATE_NOOP("QorDsnConst", "&Paste")},
    {QorDsnConst::SSelectAll, QT_TRANSLATE_NOOP("QorDsnConst", "Select &All")},
    {QorDsnConst::SDelete, QT_TRANSLATE_NOOP("QorDsnConst", "&Delete")},
    {QorDsnConst::SControl, QT_TRANSLATE_NOOP("QorDsnConst", "&Control")},
    {QorDsnConst::SBringToFront, QT_TRANSLATE_NOOP("QorDsnConst", "&Bring to Front")},
    {QorDsnConst::SSendToBack, QT_TRANSLATE_NOOP("QorDsnConst", "&Send to Back")},
};

// Qt tells every widget, shown or not, of a new translator; this one is
// never shown and passes the word on.
class LanguageWidget final : public QWidget
{
public:
    explicit LanguageWidget(TQorLanguageWatch *Watch)
        : m_watch(Watch)
    {
        setObjectName(QStringLiteral("qt_qor_language_watch"));
        setAttribute(Qt::WA_DontShowOnScreen);
    }

protected:
    void changeEvent(QEvent *event) override
    {
        if (event->type() == QEvent::LanguageChange && m_watch)
            Q_EMIT m_watch->LanguageChanged();
        QWidget::changeEvent(event);
    }

private:
    QPointer<TQorLanguageWatch> m_watch;
};

QPointer<TQorLanguageWatch> languageWatch;
QPointer<QWidget> languageWidget;
QPointer<QTranslator> installedTranslator;

void dropLanguageWatch()
{
    delete languageWidget.data();
    delete languageWatch.data();
}

const QString translationsDir = QStringLiteral(":/qordesign/translations");

} // namespace

namespace QorDsnConst {

QList<int> StringIds()
{
    QList<int> ids;
    for (const Caption &c : captions)
        ids.append(c.id);
    std::sort(ids.begin(), ids.end());
    return ids;
}

const char *SourceText(int Id)
{
    const auto *it = std::find_if(std::begin(captions), std::end(captions), [Id](const Caption &c) { return c.id == Id; });
    return it == std::end(captions) ? nullptr : it->text;
}

QString LoadStr(int Id)
{
    const char *text = SourceText(Id);
    return text ? QCoreApplication::translate("QorDsnConst", text) : QString();
}

} // namespace QorDsnConst

TQorLanguageWatch *QorLanguageWatch()
{
    if (!languageWatch && qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr) {
        languageWatch = new TQorLanguageWatch;
        languageWidget = new LanguageWidget(languageWatch);
        // Gone before the application: neither outlives it.
        qAddPostRoutine(dropLanguageWatch);
    }
    return languageWatch;
}

QStringList QorTranslationLanguages()
{
    QStringList languages;
    const QStringList files = QDir(translationsDir).entryList({QStringLiteral("qordesign_*.qm")}, QDir::Files, QDir::Name);
    for (const QString &file : files)
        languages.append(file.mid(10, file.size() - 13));
    return languages;
}

QTranslator *QorInstallTranslator(const QLocale &Locale)
{
    QCoreApplication *app = QCoreApplication::instance();
    if (!app)
        return nullptr;
    auto translator = std::make_unique<QTranslator>(app);
    if (!translator->load(Locale, QStringLiteral("qordesign"), QStringLiteral("_"), translationsDir))
        return nullptr;
    QorRemoveTranslator();
    installedTranslator = translator.release();
    QCoreApplication::installTranslator(installedTranslator);
    return installedTranslator;
}

void QorRemoveTranslator()
{
    if (!installedTranslator)
        return;
    QCoreApplication::removeTranslator(installedTranslator);
    delete installedTranslator.data();
}
